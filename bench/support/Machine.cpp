#include "bench/support/Machine.h"

#include "bench/support/BareOdbc.h"
#include "support/PrivateServer.h"

#include <QDate>
#include <QFile>
#include <QSysInfo>
#include <QThread>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

QStringList linesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n') : QStringList();
}

// What follows the colon on the first line that begins with `key`.
QString valueOf(const QString& path, const QString& key) {
    for (const QString& line : linesOf(path))
        if (line.startsWith(key))
            return line.section(u':', 1).trimmed();
    return u"unknown"_s;
}

QString memory() {
    constexpr double kibibytesPerGibibyte = 1024.0 * 1024.0;
    const double kibibytes = valueOf(u"/proc/meminfo"_s, u"MemTotal"_s).section(u' ', 0, 0).toDouble();
    return QString::number(kibibytes / kibibytesPerGibibyte, 'f', 1) + u" GiB"_s;
}

QString setting(test::PrivateServer& server, const QString& name) {
    return name + u" "_s + server.query(u"SELECT @@"_s + name)[0][0];
}

} // namespace

QString machineText(test::PrivateServer& server) {
    constexpr int loadFigures = 3;
    QStringList lines;
    lines << u"Day: "_s + QDate::currentDate().toString(Qt::ISODate);
    lines << u"Processor: %1, %2 cores"_s.arg(valueOf(u"/proc/cpuinfo"_s, u"model name"_s))
                 .arg(QThread::idealThreadCount());
    lines << u"Memory: "_s + memory();
    lines << u"System: "_s + QSysInfo::prettyProductName() + u", kernel "_s + QSysInfo::kernelVersion();
    lines << u"Load before the run: "_s +
                 linesOf(u"/proc/loadavg"_s).value(0).split(u' ').mid(0, loadFigures).join(u' ');
    lines << u"Server: "_s + server.query(u"SELECT VERSION()"_s)[0][0] + u" over a unix socket; "_s +
                 QStringList{setting(server, u"innodb_buffer_pool_size"_s),
                             setting(server, u"tmp_table_size"_s), setting(server, u"sort_buffer_size"_s),
                             setting(server, u"innodb_flush_log_at_trx_commit"_s)}
                     .join(u", "_s);
    lines << u"Driver: "_s + BareOdbc().driver();
    lines << u"Qt "_s + QString::fromLatin1(qVersion()) + u", compiler "_s +
                 QString::fromLatin1(__VERSION__) + u", release build"_s;
    return u"- "_s + lines.join(u"\n- "_s) + u'\n';
}

} // namespace tarvessa::bench

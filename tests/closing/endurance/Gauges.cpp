#include "closing/endurance/Gauges.h"

#include "support/PrivateServer.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

qint64 residentKb() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ')[0].toLongLong();
    return 0;
}

int entriesOf(const QString& folder) {
    return static_cast<int>(
        QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

} // namespace

Gauges Gauges::read(PrivateServer& server) {
    Gauges gauges;
    gauges.residentKb = tarvessa::test::residentKb();
#ifdef __GLIBC__
    const auto heap = mallinfo2();
    gauges.heapKb = static_cast<qint64>((heap.uordblks + heap.hblkhd) / 1024);
#endif
    gauges.handles = entriesOf(u"/proc/self/fd"_s);
    gauges.threads = entriesOf(u"/proc/self/task"_s);
    gauges.windows = static_cast<int>(QApplication::topLevelWidgets().size());
    gauges.serverStatements = server.query(u"SHOW GLOBAL STATUS LIKE 'Prepared_stmt_count'"_s)[0][1].toInt();
    gauges.connections =
        server
            .query(u"SELECT COUNT(*) FROM information_schema.processlist WHERE user = '%1'"_s.arg(
                server.user()))[0][0]
            .toInt();
    return gauges;
}

} // namespace tarvessa::test

#include "closing/ClosingJournal.h"

#include "base/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QMap>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::closingjournal {

namespace {

const QString closingPrefix = u"Fechamento"_s;
const QString conversionPrefix = u"Conversao"_s;
const QString suffix = u".andamento"_s;

using Entries = QMap<QString, QString>;

QString pathOf(const QString& prefix, qint32 number) {
    return programFolder() + u'/' + prefix + QString::number(number) + suffix;
}

bool write(const QString& path, const QList<std::pair<QString, QString>>& entries) {
    // Always a new file: a link or file already at this path is never followed or written to.
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    QByteArray bytes;
    for (const auto& [name, value] : entries)
        bytes += (name + u'=' + value + u'\n').toUtf8();
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    file.close();
    if (!written)
        file.remove();
    return written;
}

Entries read(const QString& path) {
    constexpr qint64 longest = 4096;
    QFile file(path);
    Entries entries;
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return entries;
    for (const QString& line : QString::fromUtf8(file.read(longest)).split(u'\n')) {
        const qsizetype equals = line.indexOf(u'=');
        if (equals > 0)
            entries.insert(line.first(equals), line.sliced(equals + 1));
    }
    return entries;
}

QList<qint32> numbersWith(const QString& prefix) {
    QList<qint32> numbers;
    const QStringList names =
        QDir(programFolder()).entryList({prefix + u'*' + suffix}, QDir::Files, QDir::NoSort);
    for (const QString& name : names) {
        bool whole = false;
        const qint32 number =
            name.sliced(prefix.size(), name.size() - prefix.size() - suffix.size()).toInt(&whole);
        if (whole)
            numbers.append(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace

bool begin(const Sale& sale) {
    return write(pathOf(closingPrefix, sale.nrPedido), {{u"PV"_s, QString::number(sale.nrPedido)},
                                                        {u"FORMA"_s, sale.formaPG},
                                                        {u"VALOR"_s, sale.valor.ponto().trimmed()},
                                                        {u"VENCTO"_s, sale.vencto.toString(Qt::ISODate)},
                                                        {u"CLIENTE"_s, sale.nomeCli}});
}

void end(qint32 number) {
    QFile::remove(pathOf(closingPrefix, number));
}

std::optional<Sale> find(qint32 number) {
    const Entries entries = read(pathOf(closingPrefix, number));
    const QDate due = QDate::fromString(entries.value(u"VENCTO"_s), Qt::ISODate);
    // A note cut short by a full disk is none.
    if (entries.value(u"PV"_s).toInt() != number || !due.isValid() || !entries.contains(u"CLIENTE"_s))
        return std::nullopt;
    return Sale{number, entries.value(u"FORMA"_s), Dinheiro::dePonto(entries.value(u"VALOR"_s)), due,
                entries.value(u"CLIENTE"_s)};
}

QList<qint32> all() {
    return numbersWith(closingPrefix);
}

bool beginConversion(const Conversion& conversion) {
    return write(
        pathOf(conversionPrefix, conversion.document),
        {{u"DAV"_s, QString::number(conversion.document)}, {u"PV"_s, QString::number(conversion.number)}});
}

void endConversion(qint32 document) {
    QFile::remove(pathOf(conversionPrefix, document));
}

QList<Conversion> conversions() {
    QList<Conversion> found;
    for (const qint32 document : numbersWith(conversionPrefix)) {
        const qint32 number = read(pathOf(conversionPrefix, document)).value(u"PV"_s).toInt();
        if (number > 0)
            found.append({document, number});
    }
    return found;
}

} // namespace tarvessa::closingjournal

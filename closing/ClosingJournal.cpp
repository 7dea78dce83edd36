#include "closing/ClosingJournal.h"

#include "base/ProgramFolder.h"
#include "base/RuntimeError.h"

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

QString pathOf(const QString& prefix, const QString& name) {
    return programFolder() + u'/' + prefix + name + suffix;
}

QByteArray bytesOf(const QList<std::pair<QString, QString>>& entries) {
    QByteArray bytes;
    for (const auto& [name, value] : entries)
        bytes += (name + u'=' + value + u'\n').toUtf8();
    return bytes;
}

// A link or file already at this path is never followed or written to.
bool openNew(QFile& file, const QString& path) {
    file.setFileName(path);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
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

QStringList pathsWith(const QString& prefix) {
    const QDir folder(programFolder());
    QStringList paths;
    for (const QString& name : folder.entryList({prefix + u'*' + suffix}, QDir::Files, QDir::Name))
        paths.append(folder.filePath(name));
    return paths;
}

qint32 closingIn(const Entries& entries) {
    return entries.value(u"PV"_s).toInt();
}

// A note cut short by a full disk, or spoilt by hand, is none: the database is asked instead.
std::optional<Sale> saleIn(const Entries& entries) {
    const QString method = entries.value(u"FORMA"_s);
    const QString value = entries.value(u"VALOR"_s);
    const QDate due = QDate::fromString(entries.value(u"VENCTO"_s), Qt::ISODate);
    if (method.isEmpty() || value.isEmpty() || !due.isValid() || !entries.contains(u"CLIENTE"_s))
        return std::nullopt;
    try {
        return Sale{closingIn(entries), method, Dinheiro::dePonto(value), due, entries.value(u"CLIENTE"_s)};
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

Conversion conversionIn(const QString& path) {
    const Entries entries = read(path);
    return {entries.value(u"DAV"_s).toInt(), entries.value(u"PV"_s).toInt()};
}

} // namespace

ClosingNote::~ClosingNote() {
    if (m_file.isOpen())
        m_file.remove();
}

bool ClosingNote::begin(const Sale& sale) {
    if (!m_file.isOpen() && !create(sale.nrPedido))
        return false;
    if (m_older.remove(sale.nrPedido))
        forget(sale.nrPedido);
    QByteArray bytes = bytesOf({{u"PV"_s, QString::number(sale.nrPedido)},
                                {u"FORMA"_s, sale.formaPG},
                                {u"VALOR"_s, sale.valor.ponto().trimmed()},
                                {u"VENCTO"_s, sale.vencto.toString(Qt::ISODate)},
                                {u"CLIENTE"_s, sale.nomeCli}});
    // Nothing of a longer note before it may stay behind it.
    const qsizetype length = bytes.size();
    if (length < m_length)
        bytes.append(m_length - length, '\n');
    m_length = length;
    return m_file.seek(0) && m_file.write(bytes) == bytes.size();
}

void ClosingNote::end() {
    const QByteArray none = bytesOf({{u"PV"_s, u"0"_s}});
    if (m_file.isOpen() && m_file.seek(0))
        m_file.write(none);
}

void ClosingNote::keep() {
    m_file.close();
}

bool ClosingNote::create(qint32 number) {
    m_older.clear();
    for (const QString& path : pathsWith(closingPrefix)) {
        if (const qint32 noted = closingIn(read(path)))
            m_older.insert(noted);
        else
            QFile::remove(path); // its program ended between two closings
    }
    m_length = 0;
    // The file of a batch that was cut bears the number of its first pre-sale, which may be this one.
    constexpr int mostLeft = 100;
    const QString name = QString::number(number);
    for (int i = 1; i <= mostLeft; ++i)
        if (openNew(m_file, pathOf(closingPrefix, i == 1 ? name : name + u'-' + QString::number(i))))
            return true;
    return false;
}

void forget(qint32 number) {
    for (const QString& path : pathsWith(closingPrefix))
        if (closingIn(read(path)) == number)
            QFile::remove(path);
}

std::optional<Sale> find(qint32 number) {
    for (const QString& path : pathsWith(closingPrefix)) {
        const Entries entries = read(path);
        if (closingIn(entries) == number)
            if (const std::optional<Sale> sale = saleIn(entries))
                return sale;
    }
    return std::nullopt;
}

QList<qint32> all() {
    QSet<qint32> numbers;
    for (const QString& path : pathsWith(closingPrefix))
        if (const qint32 number = closingIn(read(path)))
            numbers.insert(number);
    QList<qint32> sorted(numbers.begin(), numbers.end());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

bool beginConversion(const Conversion& conversion) {
    const QString path = pathOf(conversionPrefix, QString::number(conversion.document));
    QFile::remove(path);
    QFile file;
    const QByteArray bytes = bytesOf(
        {{u"DAV"_s, QString::number(conversion.document)}, {u"PV"_s, QString::number(conversion.number)}});
    if (openNew(file, path) && file.write(bytes) == bytes.size())
        return true;
    file.remove();
    return false;
}

void endConversion(qint32 document) {
    QFile::remove(pathOf(conversionPrefix, QString::number(document)));
}

qint32 numberGivenTo(qint32 document) {
    const Conversion begun = conversionIn(pathOf(conversionPrefix, QString::number(document)));
    return begun.document == document ? begun.number : 0;
}

QList<Conversion> conversions() {
    QList<Conversion> found;
    for (const QString& path : pathsWith(conversionPrefix)) {
        const Conversion conversion = conversionIn(path);
        if (conversion.document > 0 && conversion.number > 0)
            found.append(conversion);
    }
    return found;
}

} // namespace tarvessa::closingjournal

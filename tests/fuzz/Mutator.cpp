#include "fuzz/Mutator.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

const QList<QByteArray> values = {
    "0",        "1",          "5",        "12.5",          "190",     "277",       "9999",
    "true",     "false",      "#12AB9F",  "left",          "right",   "centre",    "cut",
    "shrink",   "sum",        "count",    "report",        "initial", "value",     "A5",
    "Letter",   "Valor1",     "texto1",   "Titulo",        "page",    "pages",     "Letra",
    "Vendedor", "###,##0.00", "0.0#",     "dd/mm/yyyy",    "#",       "1 + 2 * 3", "Valor1 / Valor2",
    "-(-(1))",  "1 / 0",      "{Titulo}", "{Valor1|0.00}", "{{",      "{",         "SELECT 1",
    ""};

const QStringList pieces = {
    u"A"_s, u"ção"_s, u"É"_s, u"ñ"_s,  u" "_s,  u"  "_s,  u"0"_s,  u"12"_s,
    u"-"_s, u"+"_s,   u"="_s, u"@"_s,  u";"_s,  u"\""_s,  u"´"_s,  u"%"_s,
    u"_"_s, u"("_s,   u")"_s, u"*"_s,  u"."_s,  u","_s,   u"\t"_s, u"\n"_s,
    u"<"_s, u"&"_s,   u"#"_s, u"--"_s, u"/*"_s, u"PÃO"_s, u"DE"_s, u"SUPERMERCADOS"_s};

} // namespace

QByteArray Mutator::damaged(QByteArray bytes, const QByteArray& other) {
    for (int changes = 1 + below(4); changes > 0 && !bytes.isEmpty(); --changes) {
        const int at = below(static_cast<int>(bytes.size()));
        const int length = 1 + below(once(4) ? 400 : 8);
        switch (below(6)) {
        case 0:
            bytes[at] = static_cast<char>(below(256));
            break;
        case 1:
            bytes.remove(at, length);
            break;
        case 2:
            bytes.insert(at, bytes.mid(at, length));
            break;
        case 3:
            bytes.insert(at, other.mid(below(static_cast<int>(other.size())), length));
            break;
        case 4:
            bytes.truncate(at);
            break;
        default:
            bytes.insert(at, QByteArray(qsizetype{20} * length, "(-<{\"0"[below(6)]));
        }
    }
    return bytes;
}

QByteArray Mutator::varied(const QByteArray& xml) {
    // What stands in quotes, and texts between elements.
    static const QRegularExpression part(u"(?<=\")[^\"<>]*(?=\")|(?<=>)[^<>]*\\S[^<>]*(?=<)"_s);
    const QString whole = QString::fromUtf8(xml);
    QString result;
    qsizetype from = 0;
    for (auto it = part.globalMatch(whole); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (!once(60))
            continue;
        result += whole.sliced(from, match.capturedStart() - from);
        result += once(5) ? text(20).toHtmlEscaped() : QString::fromUtf8(oneOf(values));
        from = match.capturedEnd();
    }
    return (result + whole.sliced(from)).toUtf8();
}

QString Mutator::text(int longest) {
    QString result;
    const int length = below(longest + 1);
    while (result.size() < length)
        result += once(40) ? QString(QChar(static_cast<char16_t>(1 + below(0xD7FF)))) : oneOf(pieces);
    return result.first(length);
}

QString Mutator::number() {
    QString result = once(3) ? u"-"_s : QString();
    for (int digits = 1 + below(once(4) ? 20 : 9); digits > 0; --digits)
        result += QChar(u'0' + below(10));
    if (once(3))
        return result;
    result += u'.';
    for (int decimals = 1 + below(once(4) ? 6 : 4); decimals > 0; --decimals)
        result += QChar(u'0' + below(10));
    return result;
}

} // namespace tarvessa::test

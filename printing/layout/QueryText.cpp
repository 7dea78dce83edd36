#include "printing/layout/QueryText.h"

#include "printing/layout/QueryScanner.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

bool isWord(QStringView token, QStringView word) {
    return token.compare(word, Qt::CaseInsensitive) == 0;
}

// In a query these words mean a change of data, except as a function (REPLACE(...)) and as the name of a
// column after a point.
bool isChange(QStringView before, QStringView word, QStringView after) {
    constexpr std::array<QStringView, 4> changes = {u"INSERT", u"UPDATE", u"DELETE", u"REPLACE"};
    return before != u"." && after != u"(" &&
           std::any_of(changes.begin(), changes.end(),
                       [word](QStringView change) { return isWord(word, change); });
}

bool isNameOf(QStringView token, QStringView column) {
    if (token.size() > 2 && token.startsWith(u'`'))
        token = token.sliced(1, token.size() - 2);
    return isWord(token, column);
}

// The value of a whole number or a plain quoted text; empty for anything else.
QStringView constant(QStringView token) {
    if (token.size() >= 2 && token.startsWith(u'\'') && token.endsWith(u'\'') && !token.contains(u'\\'))
        return token.sliced(1, token.size() - 2);
    const bool isNumber =
        std::all_of(token.begin(), token.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return isNumber ? token : QStringView();
}

} // namespace

QString queryProblem(QStringView sql) {
    QueryScanner scanner(sql);
    QStringView before = scanner.next();
    if (!isWord(before, u"SELECT") && !isWord(before, u"WITH"))
        return u"a consulta deve começar com SELECT ou WITH"_s;
    QStringView token = scanner.next();
    while (!token.isEmpty()) {
        const QStringView after = scanner.next();
        if (token == u";" && !after.isEmpty())
            return u"a consulta deve ser um único comando"_s;
        if (isWord(token, u"INTO"))
            return u"a consulta não pode gravar (INTO)"_s;
        if (isChange(before, token, after))
            return u"a consulta não pode alterar dados (%1)"_s.arg(token.toString().toUpper());
        before = token;
        token = after;
    }
    if (scanner.hasExecutableComment())
        return u"a consulta não pode ter comentários executáveis (/*! */)"_s;
    return {};
}

QString comparedValue(QStringView sql, QStringView column) {
    QueryScanner scanner(sql);
    QStringView result;
    for (QStringView token = scanner.next(); !token.isEmpty(); token = scanner.next()) {
        if (!isNameOf(token, column))
            continue;
        token = scanner.next();
        if (token != u"=")
            continue;
        const QStringView value = constant(scanner.next());
        if (value.isEmpty() || (!result.isEmpty() && result != value))
            return {};
        result = value;
    }
    return result.toString();
}

} // namespace tarvessa::report

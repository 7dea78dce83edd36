#include "printing/layout/QueryScanner.h"

namespace tarvessa::report {

namespace {

// The server treats characters beyond ASCII, including no-break spaces, as parts of words.
bool isWordCharacter(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c.unicode() >= 0x80;
}

bool isBlank(QChar c) {
    return c.unicode() <= u' ';
}

} // namespace

QStringView QueryScanner::next() {
    skipBlanksAndComments();
    if (atEnd())
        return {};
    const qsizetype start = m_at;
    const QChar first = m_sql[m_at++];
    if (isWordCharacter(first))
        while (!atEnd() && isWordCharacter(m_sql[m_at]))
            ++m_at;
    else if (first == u'\'' || first == u'"' || first == u'`')
        skipQuoted(first);
    return m_sql.sliced(start, m_at - start);
}

void QueryScanner::skipBlanksAndComments() {
    while (!atEnd()) {
        if (isBlank(m_sql[m_at])) {
            ++m_at;
        } else if (startsWith(u"/*")) {
            m_hasExecutableComment |= startsWith(u"/*!") || startsWith(u"/*M!");
            m_at += 2;
            skipPast(u"*/");
        } else if (m_sql[m_at] == u'#' || startsDashComment()) {
            skipPast(u"\n");
        } else {
            return;
        }
    }
}

// Two dashes begin a comment only before a blank: "5--3" is a subtraction.
bool QueryScanner::startsDashComment() const {
    return startsWith(u"--") && (m_at + 2 >= m_sql.size() || isBlank(m_sql[m_at + 2]));
}

void QueryScanner::skipPast(QStringView end) {
    const qsizetype found = m_sql.indexOf(end, m_at);
    m_at = found < 0 ? m_sql.size() : found + end.size();
}

// A doubled quote ends one quoted text and begins another, so it needs no case of its own.
void QueryScanner::skipQuoted(QChar quote) {
    while (!atEnd()) {
        const QChar c = m_sql[m_at++];
        if (c == quote)
            return;
        if (c == u'\\' && quote != u'`' && !atEnd())
            ++m_at;
    }
}

} // namespace tarvessa::report

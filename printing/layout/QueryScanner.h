#pragma once

#include <QStringView>

namespace tarvessa::report {

/// Goes through a SQL text token by token: words and numbers, quoted texts and names with their quotes,
/// single symbols. Blanks and comments are skipped. The text must outlive the scanner and its tokens.
class QueryScanner {
  public:
    explicit QueryScanner(QStringView sql) : m_sql(sql) {}

    /// The next token; empty at the end.
    QStringView next();

    /// True when a comment that the server executes ("/*! ... */") has been passed.
    bool hasExecutableComment() const { return m_hasExecutableComment; }

  private:
    bool atEnd() const { return m_at >= m_sql.size(); }
    bool startsWith(QStringView text) const { return m_sql.sliced(m_at).startsWith(text); }
    bool startsDashComment() const;
    void skipBlanksAndComments();
    void skipPast(QStringView end);
    void skipQuoted(QChar quote);

    QStringView m_sql;
    qsizetype m_at = 0;
    bool m_hasExecutableComment = false;
};

} // namespace tarvessa::report

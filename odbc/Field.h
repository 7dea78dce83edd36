#pragma once

#include <QString>

namespace tarvessa::odbc {

/// One cell of a result: NULL, or the text the database gives for it ("1234.50", "2024-02-29", "12:34:56").
class Field {
  public:
    Field() = default;
    explicit Field(QString text) : m_null(false), m_text(std::move(text)) {}

    bool isNull() const { return m_null; }

    /// The text as stored; empty for NULL.
    const QString& text() const { return m_text; }

    /// The whole number at the start of the text, cut at its decimals; 0 for NULL and for no number.
    /// Raises RuntimeError (overflow) beyond 64 bits.
    qint64 integer() const;

  private:
    bool m_null = true;
    QString m_text;
};

} // namespace tarvessa::odbc

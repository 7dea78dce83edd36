#pragma once

#include "base/Dinheiro.h"

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

    /// The number with four places, halves to even; 0 for NULL and for an empty text. A double's exponent
    /// form
    /// ("5.55e-17") is a number like any other. Raises RuntimeError (type mismatch) for any other text, and
    /// (overflow) beyond the four-place range.
    Dinheiro decimal() const { return Dinheiro::dePonto(m_text); }

    /// The whole number at the start of the text, cut at its decimals; 0 for NULL and for no number.
    /// Raises RuntimeError (overflow) beyond 64 bits.
    qint64 integer() const;

  private:
    bool m_null = true;
    QString m_text;
};

} // namespace tarvessa::odbc

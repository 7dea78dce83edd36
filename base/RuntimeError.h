#pragma once

#include <QString>

#include <exception>

namespace tarvessa {

/// Numbers of the errors that the program itself raises; a database error carries the driver's own number.
enum class ErrorNumber {
    Overflow = 6,
    DivisionByZero = 11,
    TypeMismatch = 13,
    FileNotFound = 53,
    PermissionDenied = 70,
    FileNotWritable = 75,
    ObjectRequired = 424,
    InvalidLayout = 20515,
    NoCurrentRecord = 3021,
    NoSuchColumn = 3265,
    ConnectionClosed = 3704,
};

/// A run-time error: what a handler cannot go on from. The guard shows it as the error report and the
/// operation ends there. Texts are in Portuguese, as the operator reads them.
class RuntimeError : public std::exception {
  public:
    RuntimeError(ErrorNumber number, const QString& text);

    /// `sqlState` and `statement` as the driver gave and the program sent them; both may be empty.
    RuntimeError(int number, const QString& text, const QString& sqlState, const QString& statement);

    const char* what() const noexcept override { return m_utf8.constData(); }

    int number() const { return m_number; }
    const QString& text() const { return m_text; }
    const QString& sqlState() const { return m_sqlState; }
    const QString& statement() const { return m_statement; }

    /// The same error, its text led by what the program was working on ("Pré-venda 0001234").
    RuntimeError about(const QString& subject) const;

    /// True when the connection to the database is gone or could not be made.
    bool isConnectionLost() const;

    /// True for an object that the program itself lacks: after the report the program ends.
    bool endsProgram() const { return m_number == static_cast<int>(ErrorNumber::ObjectRequired); }

  private:
    int m_number;
    QString m_text;
    QString m_sqlState;
    QString m_statement;
    QByteArray m_utf8;
};

} // namespace tarvessa

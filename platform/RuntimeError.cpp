#include "platform/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Client-side numbers for "server has gone away" and "lost connection during query".
constexpr int serverGone = 2006;
constexpr int connectionLostInQuery = 2013;

} // namespace

RuntimeError::RuntimeError(ErrorNumber number, const QString& text)
    : RuntimeError(static_cast<int>(number), text, {}, {}) {
}

RuntimeError::RuntimeError(int number, const QString& text, const QString& sqlState, const QString& statement)
    : m_number(number), m_text(text), m_sqlState(sqlState), m_statement(statement), m_utf8(text.toUtf8()) {
}

bool RuntimeError::isConnectionLost() const {
    return m_sqlState.startsWith("08"_L1) || m_number == serverGone || m_number == connectionLostInQuery ||
           m_number == static_cast<int>(ErrorNumber::ConnectionClosed);
}

} // namespace tarvessa

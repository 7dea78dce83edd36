#include "base/RuntimeError.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The numbers of client library and server for a connection that is gone or cannot be had; not all of them
// come with an SQLSTATE that says so.
constexpr std::array connectionLost = {
    1053, // server is shutting down
    1927, // killed
    2002, // no server behind the socket
    2003, // no server at the address
    2005, // unknown host
    2006, // server has gone away
    2013, // lost during a query, or no answer in time
    2055, // lost, with the system's reason
    4031, // ended by the server after a time without a statement
    5013, // read error
    5014, // write error
};

} // namespace

RuntimeError::RuntimeError(ErrorNumber number, const QString& text)
    : RuntimeError(static_cast<int>(number), text, {}, {}) {
}

RuntimeError::RuntimeError(int number, const QString& text, const QString& sqlState, const QString& statement)
    : m_number(number), m_text(text), m_sqlState(sqlState), m_statement(statement), m_utf8(text.toUtf8()) {
}

RuntimeError RuntimeError::about(const QString& subject) const {
    return {m_number, subject + u": "_s + m_text, m_sqlState, m_statement};
}

bool RuntimeError::isConnectionLost() const {
    return m_sqlState.startsWith("08"_L1) || m_sqlState == "HYT01"_L1 ||
           m_number == static_cast<int>(ErrorNumber::ConnectionClosed) ||
           std::find(connectionLost.begin(), connectionLost.end(), m_number) != connectionLost.end();
}

} // namespace tarvessa

#pragma once

#include "odbc/Handles.h"

#include <QByteArrayList>

namespace tarvessa::bench {

/// Statements sent one after the other with nothing but ODBC calls: one statement handle used over and over,
/// rows fetched one by one, every cell read as text.
class BareOdbc {
  public:
    /// Connects to the data source QDX. Raises RuntimeError.
    BareOdbc();
    ~BareOdbc();
    BareOdbc(const BareOdbc&) = delete;
    BareOdbc& operator=(const BareOdbc&) = delete;

    /// Sends the statements (UTF-8) and reads all their rows. Raises RuntimeError.
    void run(const QByteArrayList& statements);

  private:
    odbc::EnvironmentHandle m_environment;
    odbc::ConnectionHandle m_connection;
    odbc::StatementHandle m_statement;
};

} // namespace tarvessa::bench

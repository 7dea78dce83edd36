#pragma once

#include "odbc/Handles.h"

#include <QByteArrayList>
#include <QString>

#include <vector>

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

    /// The driver's own name and version.
    QString driver() const;

    /// Sends the statements (UTF-8) and reads all their rows. Raises RuntimeError.
    void run(const QByteArrayList& statements);

    /// Sends one statement and fetches its rows, if it has any, in blocks of 256 into bound buffers, the way
    /// that costs the driver least; nobody looks at them. Raises RuntimeError.
    void readInBlocks(const QByteArray& sql);

  private:
    QString information(SQLUSMALLINT kind) const;
    void send(const QByteArray& sql);
    SQLSMALLINT columns();

    odbc::EnvironmentHandle m_environment;
    odbc::ConnectionHandle m_connection;
    std::vector<char> m_cells; // of a block, kept for the next one
    std::vector<SQLLEN> m_lengths;
    odbc::StatementHandle m_statement;
};

} // namespace tarvessa::bench

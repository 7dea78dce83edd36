#pragma once

#include "bench/support/Table.h"

#include <QStringList>

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// The reports' tables as the sample had them before engine and indexes were chosen by measurement: staging
/// tables of InnoDB, both with an index on Codigo1, and fiscal lines found by kind and day. Puts them back at
/// the end.
class FormerSchema {
  public:
    /// Rewrites the staging tables, empty, and the index of the fiscal lines. Raises TestError.
    explicit FormerSchema(test::PrivateServer& server);
    ~FormerSchema();
    FormerSchema(const FormerSchema&) = delete;
    FormerSchema& operator=(const FormerSchema&) = delete;

  private:
    test::PrivateServer& m_server;
};

/// What the former schema costs a report: its statements sent by the client over both schemas. `report` names
/// it, `goal` says how many times faster the present schema is to be, 0 for no goal. Raises
/// std::runtime_error when the two leave other rows in the staging tables or in the targets, TestError.
Row schemaRow(test::PrivateServer& server, const QString& report, const QStringList& statements, double goal);

} // namespace tarvessa::bench

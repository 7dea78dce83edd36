#pragma once

#include "odbc/ResultSet.h"
#include "ui/ShellHost.h"

#include <memory>

namespace tarvessa {

/// The one database connection of the process, open from start-up to the end.
extern odbc::Connection Connection;

/// The primary result set, filled by AbreRS, and the secondary one, filled by AbreRS2, for walking one query
/// while another runs. Every call replaces the earlier result.
extern odbc::ResultSet rs;
extern odbc::ResultSet rs2;

/// What the last AbreRS answered, stored by its callers.
extern bool TemRegistro;

/// The desktop's shell, made next to the connection.
extern std::unique_ptr<ShellHost> Shell;

/// Makes Shell, then opens Connection on the data source "dsn=QDX". False after the one message that the
/// database cannot be reached: the program must then end. The reason goes to the standard error, on Windows
/// to the debug output.
bool IniciaBanco();

/// Releases rs, rs2, Connection and Shell.
void EncerraBanco();

/// Runs a query into rs; true when it has at least one row. Raises RuntimeError.
bool AbreRS(const QString& sql);

/// The same into rs2.
bool AbreRS2(const QString& sql);

/// A result of a routine's own on the shared connection, with the same settings. Raises RuntimeError.
odbc::ResultSet NovoRS(const QString& sql);

/// Runs a statement that changes data and reads nothing back. Gives how many records it changed, those that
/// had these values already not counted by most data sources; -1 when the driver cannot tell. Raises
/// RuntimeError.
qint64 Executa(const QString& sql);

/// The text of a field without blanks around it; "" for NULL.
QString NuloVazio(const odbc::Field& campo);

} // namespace tarvessa

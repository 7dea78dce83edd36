#include "core/AcessoDados.h"

#include "base/DebugOutput.h"
#include "base/RuntimeError.h"
#include "base/Text.h"
#include "ui/MessageBoxes.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

odbc::Connection Connection;
odbc::ResultSet rs;
odbc::ResultSet rs2;
bool TemRegistro = false;
std::unique_ptr<ShellHost> Shell;

bool IniciaBanco() {
    Shell = std::make_unique<ShellHost>();
    try {
        Connection.open(u"dsn=QDX"_s);
    } catch (const RuntimeError& error) {
        tellDeveloper(
            u"A conexão com dsn=QDX não foi aberta: %1 [%2, %3]"_s.arg(error.text(), error.sqlState())
                .arg(error.number()));
        boxes::inform(nullptr, u"Não foi possível conectar ao banco de dados. Verifique!!!"_s);
        return false;
    }
    return true;
}

void EncerraBanco() {
    rs.close();
    rs2.close();
    Connection.close();
    Shell.reset();
}

bool AbreRS(const QString& sql) {
    rs.open(Connection, sql);
    return !rs.atEnd();
}

bool AbreRS2(const QString& sql) {
    rs2.open(Connection, sql);
    return !rs2.atEnd();
}

odbc::ResultSet NovoRS(const QString& sql) {
    odbc::ResultSet proprio;
    proprio.open(Connection, sql);
    return proprio;
}

qint64 Executa(const QString& sql) {
    return Connection.execute(sql);
}

QString NuloVazio(const odbc::Field& campo) {
    return trimBlanks(campo.text());
}

} // namespace tarvessa

#include "support/StatementLog.h"

#include "support/PrivateServer.h"
#include "support/TestError.h"

namespace tarvessa::teste {

namespace {

bool branco(QChar c) {
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

QString comoNoServidor(const QString& sql) {
    qsizetype inicio = 0;
    qsizetype fim = sql.size();
    while (inicio < fim && branco(sql[inicio])) {
        ++inicio;
    }
    while (fim > inicio && (branco(sql[fim - 1]) || sql[fim - 1] == QLatin1Char(';'))) {
        --fim;
    }
    return sql.mid(inicio, fim - inicio);
}

} // namespace

StatementLog::StatementLog(PrivateServer& servidor) : m_servidor(servidor), m_conexao(servidor.socket()) {
    liga();
    marca();
}

// As it comes, the log table has no order of its own, no index, and loses characters of four bytes.
// The server allows it to be changed while logging is off. Test programs that share a server may
// come here together, hence the lock.
void StatementLog::liga() {
    if (m_conexao.consulta(QStringLiteral("SELECT GET_LOCK('tarvessa_general_log', 60)")) !=
        QList<QStringList>{{QStringLiteral("1")}}) {
        throw TestError(QStringLiteral("the general log is being prepared by another program for too long"));
    }
    const bool pronto =
        !m_conexao
             .consulta(QStringLiteral("SELECT 1 FROM information_schema.columns WHERE table_schema = "
                                      "'mysql' AND table_name = 'general_log' AND column_name = 'ordem'"))
             .isEmpty();
    if (!pronto) {
        m_conexao.executa(
            QStringLiteral("SET GLOBAL general_log = 0; ALTER TABLE mysql.general_log ENGINE = MyISAM, "
                           "MODIFY argument MEDIUMTEXT CHARACTER SET utf8mb4 NOT NULL, "
                           "ADD COLUMN ordem BIGINT UNSIGNED NOT NULL AUTO_INCREMENT PRIMARY KEY"));
    }
    m_conexao.executa(QStringLiteral("SET GLOBAL log_output = 'TABLE'; SET GLOBAL general_log = 1; "
                                     "DO RELEASE_LOCK('tarvessa_general_log')"));
}

void StatementLog::marca() {
    m_marca =
        m_conexao.consulta(QStringLiteral("SELECT COALESCE(MAX(ordem), 0) FROM mysql.general_log"))[0][0];
}

QStringList StatementLog::textos() {
    const auto linhas = m_conexao.consulta(
        QStringLiteral("SELECT argument FROM mysql.general_log WHERE ordem > %1 AND command_type IN "
                       "('Query', 'Execute') AND SUBSTRING_INDEX(user_host, '[', 1) = '%2' ORDER BY ordem")
            .arg(m_marca, m_servidor.usuario()));
    QStringList textos;
    for (const QStringList& linha : linhas) {
        if (!daConexao(linha[0])) {
            textos += linha[0];
        }
    }
    return textos;
}

QStringList StatementLog::esperado(const QStringList& sqls) {
    QStringList textos;
    for (const QString& sql : sqls) {
        textos += comoNoServidor(sql);
    }
    return textos;
}

bool StatementLog::daConexao(const QString& sql) const {
    static const QStringList DoDriver{
        QStringLiteral("SET SESSION SQL_AUTO_IS_NULL=0"), QStringLiteral("SET autocommit=1"),
        QStringLiteral("SET session_track_schema= ON"),
        QStringLiteral("SET session_track_system_variables='autocommit,tx_isolation'")};
    return DoDriver.contains(sql) || sql == comoNoServidor(m_servidor.initStmt());
}

} // namespace tarvessa::teste

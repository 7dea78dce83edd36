#include "support/StatementLog.h"

#include "support/PrivateServer.h"
#include "support/TestError.h"

namespace tarvessa::test {

namespace {

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

QString asServerWrites(const QString& sql) {
    qsizetype start = 0;
    qsizetype end = sql.size();
    while (start < end && isBlank(sql[start])) {
        ++start;
    }
    while (end > start && (isBlank(sql[end - 1]) || sql[end - 1] == QLatin1Char(';'))) {
        --end;
    }
    return sql.mid(start, end - start);
}

} // namespace

StatementLog::StatementLog(PrivateServer& server) : m_server(server), m_connection(server.socket()) {
    connect();
    mark();
}

// As it comes, the log table has no order of its own, no index, and loses characters of four bytes.
// The server allows it to be changed while logging is off. Test programs that share a server may
// come here together, hence the lock.
void StatementLog::connect() {
    if (m_connection.query(QStringLiteral("SELECT GET_LOCK('tarvessa_general_log', 60)")) !=
        QList<QStringList>{{QStringLiteral("1")}}) {
        throw TestError(QStringLiteral("the general log is being prepared by another program for too long"));
    }
    const bool ready =
        !m_connection
             .query(QStringLiteral("SELECT 1 FROM information_schema.columns WHERE table_schema = "
                                   "'mysql' AND table_name = 'general_log' AND column_name = 'ordem'"))
             .isEmpty();
    if (!ready) {
        m_connection.execute(
            QStringLiteral("SET GLOBAL general_log = 0; ALTER TABLE mysql.general_log ENGINE = MyISAM, "
                           "MODIFY argument MEDIUMTEXT CHARACTER SET utf8mb4 NOT NULL, "
                           "ADD COLUMN ordem BIGINT UNSIGNED NOT NULL AUTO_INCREMENT PRIMARY KEY"));
    }
    m_connection.execute(QStringLiteral("SET GLOBAL log_output = 'TABLE'; SET GLOBAL general_log = 1; "
                                        "DO RELEASE_LOCK('tarvessa_general_log')"));
}

void StatementLog::mark() {
    m_mark =
        m_connection.query(QStringLiteral("SELECT COALESCE(MAX(ordem), 0) FROM mysql.general_log"))[0][0];
}

QStringList StatementLog::texts() {
    const auto rows = m_connection.query(
        QStringLiteral("SELECT argument FROM mysql.general_log WHERE ordem > %1 AND command_type IN "
                       "('Query', 'Execute') AND SUBSTRING_INDEX(user_host, '[', 1) = '%2' ORDER BY ordem")
            .arg(m_mark, m_server.user()));
    QStringList texts;
    for (const QStringList& row : rows) {
        if (!fromConnection(row[0])) {
            texts += row[0];
        }
    }
    return texts;
}

QStringList StatementLog::expected(const QStringList& sqls) {
    QStringList texts;
    for (const QString& sql : sqls) {
        texts += asServerWrites(sql);
    }
    return texts;
}

bool StatementLog::fromConnection(const QString& sql) const {
    static const QStringList FromDriver{
        QStringLiteral("SET SESSION SQL_AUTO_IS_NULL=0"), QStringLiteral("SET autocommit=1"),
        QStringLiteral("SET session_track_schema= ON"),
        QStringLiteral("SET session_track_system_variables='autocommit,tx_isolation'")};
    return FromDriver.contains(sql) || sql == asServerWrites(m_server.initStmt());
}

} // namespace tarvessa::test

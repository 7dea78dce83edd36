#include "support/AdminConnection.h"

#include "support/TestError.h"

#include <mariadb/mysql.h>

namespace tarvessa::test {

class AdminConnection::Session {
  public:
    explicit Session(const QString& socket) : m_mysql(mysql_init(nullptr)) {
        mysql_options(m_mysql, MYSQL_SET_CHARSET_NAME, "utf8mb4");
        // A test may have killed and restarted the server in between.
        const my_bool reconnect = 1;
        mysql_options(m_mysql, MYSQL_OPT_RECONNECT, &reconnect);
        const QByteArray path = socket.toLocal8Bit();
        if (mysql_real_connect(m_mysql, "localhost", "root", "", nullptr, 0, path.constData(),
                               CLIENT_MULTI_STATEMENTS) == nullptr) {
            const QString text = QString::fromUtf8(mysql_error(m_mysql));
            mysql_close(m_mysql);
            throw TestError(QStringLiteral("%1: %2").arg(socket, text));
        }
    }
    ~Session() { mysql_close(m_mysql); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    MYSQL* mysql() const { return m_mysql; }

    [[noreturn]] void fail(const QByteArray& sql) const {
        throw TestError(QStringLiteral("%1 %2: %3")
                            .arg(mysql_errno(m_mysql))
                            .arg(QString::fromUtf8(mysql_error(m_mysql)), QString::fromUtf8(sql.left(400))));
    }

  private:
    MYSQL* m_mysql;
};

AdminConnection::AdminConnection(const QString& address) : m_session(std::make_unique<Session>(address)) {
}

AdminConnection::~AdminConnection() = default;

void AdminConnection::select(const QString& database) {
    if (mysql_select_db(m_session->mysql(), database.toUtf8().constData()) != 0) {
        m_session->fail("USE " + database.toUtf8());
    }
}

void AdminConnection::execute(const QString& sql) {
    MYSQL* const mysql = m_session->mysql();
    const QByteArray text = sql.toUtf8();
    int state = mysql_real_query(mysql, text.constData(), static_cast<unsigned long>(text.size()));
    while (state == 0) {
        if (MYSQL_RES* rows = mysql_store_result(mysql)) {
            mysql_free_result(rows);
        }
        state = mysql_next_result(mysql);
    }
    // -1 says that there are no more results, anything above that the next statement failed.
    if (state > 0) {
        m_session->fail(text);
    }
}

QList<QStringList> AdminConnection::query(const QString& sql) {
    MYSQL* const mysql = m_session->mysql();
    const QByteArray text = sql.toUtf8();
    if (mysql_real_query(mysql, text.constData(), static_cast<unsigned long>(text.size())) != 0) {
        m_session->fail(text);
    }
    MYSQL_RES* result = mysql_store_result(mysql);
    if (result == nullptr) {
        throw TestError(QStringLiteral("not one query with rows: %1").arg(sql));
    }
    QList<QStringList> rows;
    const unsigned columns = mysql_num_fields(result);
    while (MYSQL_ROW row = mysql_fetch_row(result)) {
        const unsigned long* lengths = mysql_fetch_lengths(result);
        QStringList cells;
        for (unsigned i = 0; i < columns; ++i) {
            cells +=
                row[i] == nullptr ? QString() : QString::fromUtf8(row[i], static_cast<qsizetype>(lengths[i]));
        }
        rows += cells;
    }
    mysql_free_result(result);
    if (mysql_more_results(mysql) != 0) {
        while (mysql_next_result(mysql) == 0) {
            mysql_free_result(mysql_store_result(mysql));
        }
        throw TestError(QStringLiteral("more than one statement: %1").arg(sql));
    }
    return rows;
}

} // namespace tarvessa::test

#include "support/AdminConnection.h"

#include "support/TestError.h"

#include <mariadb/mysql.h>

namespace tarvessa::teste {

class AdminConnection::Sessao {
  public:
    explicit Sessao(const QString& socket) : m_mysql(mysql_init(nullptr)) {
        mysql_options(m_mysql, MYSQL_SET_CHARSET_NAME, "utf8mb4");
        const QByteArray caminho = socket.toLocal8Bit();
        if (mysql_real_connect(m_mysql, "localhost", "root", "", nullptr, 0, caminho.constData(),
                               CLIENT_MULTI_STATEMENTS) == nullptr) {
            const QString texto = QString::fromUtf8(mysql_error(m_mysql));
            mysql_close(m_mysql);
            throw TestError(QStringLiteral("%1: %2").arg(socket, texto));
        }
    }
    ~Sessao() { mysql_close(m_mysql); }
    Sessao(const Sessao&) = delete;
    Sessao& operator=(const Sessao&) = delete;

    MYSQL* mysql() const { return m_mysql; }

    [[noreturn]] void falha(const QByteArray& sql) const {
        throw TestError(QStringLiteral("%1 %2: %3")
                            .arg(mysql_errno(m_mysql))
                            .arg(QString::fromUtf8(mysql_error(m_mysql)), QString::fromUtf8(sql.left(400))));
    }

  private:
    MYSQL* m_mysql;
};

AdminConnection::AdminConnection(const QString& endereco) : m_sessao(std::make_unique<Sessao>(endereco)) {
}

AdminConnection::~AdminConnection() = default;

void AdminConnection::seleciona(const QString& banco) {
    if (mysql_select_db(m_sessao->mysql(), banco.toUtf8().constData()) != 0) {
        m_sessao->falha("USE " + banco.toUtf8());
    }
}

void AdminConnection::executa(const QString& sql) {
    MYSQL* const mysql = m_sessao->mysql();
    const QByteArray texto = sql.toUtf8();
    int estado = mysql_real_query(mysql, texto.constData(), static_cast<unsigned long>(texto.size()));
    while (estado == 0) {
        if (MYSQL_RES* linhas = mysql_store_result(mysql)) {
            mysql_free_result(linhas);
        }
        estado = mysql_next_result(mysql);
    }
    // -1 says that there are no more results, anything above that the next statement failed.
    if (estado > 0) {
        m_sessao->falha(texto);
    }
}

QList<QStringList> AdminConnection::consulta(const QString& sql) {
    MYSQL* const mysql = m_sessao->mysql();
    const QByteArray texto = sql.toUtf8();
    if (mysql_real_query(mysql, texto.constData(), static_cast<unsigned long>(texto.size())) != 0) {
        m_sessao->falha(texto);
    }
    MYSQL_RES* resultado = mysql_store_result(mysql);
    if (resultado == nullptr) {
        throw TestError(QStringLiteral("not one query with rows: %1").arg(sql));
    }
    QList<QStringList> linhas;
    const unsigned colunas = mysql_num_fields(resultado);
    while (MYSQL_ROW linha = mysql_fetch_row(resultado)) {
        const unsigned long* tamanhos = mysql_fetch_lengths(resultado);
        QStringList celulas;
        for (unsigned i = 0; i < colunas; ++i) {
            celulas += linha[i] == nullptr ? QString()
                                           : QString::fromUtf8(linha[i], static_cast<qsizetype>(tamanhos[i]));
        }
        linhas += celulas;
    }
    mysql_free_result(resultado);
    if (mysql_more_results(mysql) != 0) {
        while (mysql_next_result(mysql) == 0) {
            mysql_free_result(mysql_store_result(mysql));
        }
        throw TestError(QStringLiteral("more than one statement: %1").arg(sql));
    }
    return linhas;
}

} // namespace tarvessa::teste

#include "support/AdminConnection.h"

#include "support/Soquete.h"
#include "support/TestError.h"

#include <QFile>
#include <QList>
#include <array>
#include <cstdint>

#define SQL_NOUNICODEMAP // a call without W is the narrow one
#include <windows.h>

#include <sql.h>
#include <sqlext.h>

namespace tarvessa::teste {

namespace {

QString primeiroDiagnostico(SQLSMALLINT tipo, SQLHANDLE alca) {
    std::array<SQLCHAR, 6> estado{};
    std::array<SQLCHAR, 1024> texto{};
    SQLINTEGER numero = 0;
    SQLSMALLINT tamanho = 0;
    SQLGetDiagRec(tipo, alca, 1, estado.data(), &numero, texto.data(), texto.size(), &tamanho);
    return QStringLiteral("%1 %2").arg(numero).arg(QString::fromUtf8(reinterpret_cast<char*>(texto.data())));
}

/// The end of the quoted text or comment that begins at `inicio`; `inicio` itself where none begins.
qsizetype fimDoTrecho(const QString& sql, qsizetype inicio) {
    const QChar c = sql[inicio];
    const auto ate = [&](const QString& marca) {
        const qsizetype achado = sql.indexOf(marca, inicio + 1);
        return achado < 0 ? sql.size() : achado + marca.size();
    };
    if (c == u'#' || QStringView(sql).mid(inicio).startsWith(u"-- ") ||
        QStringView(sql).mid(inicio).startsWith(u"--\n")) {
        return ate(QStringLiteral("\n"));
    }
    if (c != u'\'' && c != u'"' && c != u'`') {
        return inicio;
    }
    for (qsizetype i = inicio + 1; i < sql.size(); ++i) {
        if (sql[i] == u'\\' && c != u'`') {
            ++i;
        } else if (sql[i] == c) {
            return i + 1;
        }
    }
    return sql.size();
}

/// The statements of `sql`, which are separated by ";", without comments. The driver would take the text
/// apart its own way. A trigger has such separators inside and stands alone.
QList<QByteArray> comandosDe(const QString& sql) {
    if (sql.startsWith(QStringLiteral("CREATE TRIGGER"))) {
        return {sql.toUtf8()};
    }
    QList<QByteArray> comandos;
    QString atual;
    for (qsizetype i = 0; i < sql.size();) {
        const qsizetype fim = fimDoTrecho(sql, i);
        if (fim > i) {
            if (sql[i] != u'#' && sql[i] != u'-') {
                atual += QStringView(sql).mid(i, fim - i);
            }
            i = fim;
            continue;
        }
        if (sql[i] == u';') {
            comandos += atual.trimmed().toUtf8();
            atual.clear();
        } else {
            atual += sql[i];
        }
        ++i;
    }
    comandos += atual.trimmed().toUtf8();
    comandos.removeAll(QByteArray());
    return comandos;
}

/// The driver that the server's own data source names.
QByteArray driver() {
    QFile arquivo(qEnvironmentVariable("TARVESSA_TEST_SERVER") + QStringLiteral("/odbc.ini"));
    if (arquivo.open(QIODevice::ReadOnly)) {
        for (const QByteArray& linha : arquivo.readAll().split('\n')) {
            if (linha.startsWith("Driver")) {
                return linha.mid(linha.indexOf('=') + 1).trimmed();
            }
        }
    }
    throw TestError(QStringLiteral("no driver in %1").arg(arquivo.fileName()));
}

} // namespace

class AdminConnection::Sessao {
  public:
    explicit Sessao(const QString& endereco) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_ambiente);
        SQLSetEnvAttr(m_ambiente, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_ambiente, &m_conexao);
        QByteArray fonte =
            "DRIVER=" + driver() + ";UID=root;PWD=" + qgetenv("TARVESSA_TEST_PASSWORD") + ";CHARSET=utf8mb4;";
        fonte += soquete::linhasDaFonte(endereco).join(QLatin1Char(';')).remove(QLatin1Char(' ')).toUtf8();
        if (!SQL_SUCCEEDED(SQLDriverConnect(m_conexao, nullptr, reinterpret_cast<SQLCHAR*>(fonte.data()),
                                            SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT))) {
            const QString texto = primeiroDiagnostico(SQL_HANDLE_DBC, m_conexao);
            libera();
            throw TestError(QStringLiteral("%1: %2").arg(endereco, texto));
        }
        SQLAllocHandle(SQL_HANDLE_STMT, m_conexao, &m_comando);
        SQLSetStmtAttr(m_comando, SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQL_NOSCAN_ON), 0);
    }
    ~Sessao() {
        SQLFreeHandle(SQL_HANDLE_STMT, m_comando);
        SQLDisconnect(m_conexao);
        libera();
    }
    Sessao(const Sessao&) = delete;
    Sessao& operator=(const Sessao&) = delete;

    /// Sends one statement.
    void envia(QByteArray sql) {
        const SQLRETURN codigo = SQLExecDirect(m_comando, reinterpret_cast<SQLCHAR*>(sql.data()),
                                               static_cast<SQLINTEGER>(sql.size()));
        if (!SQL_SUCCEEDED(codigo) && codigo != SQL_NO_DATA) {
            const QString texto = primeiroDiagnostico(SQL_HANDLE_STMT, m_comando);
            solta();
            throw TestError(QStringLiteral("%1: %2").arg(texto, QString::fromUtf8(sql.left(400))));
        }
    }

    void solta() { SQLFreeStmt(m_comando, SQL_CLOSE); }

    SQLSMALLINT colunas() const {
        SQLSMALLINT quantas = 0;
        SQLNumResultCols(m_comando, &quantas);
        return quantas;
    }

    bool anda() { return SQL_SUCCEEDED(SQLFetch(m_comando)); }

    QString celula(SQLSMALLINT coluna) const {
        char nada = 0;
        SQLLEN bytes = 0;
        SQLGetData(m_comando, static_cast<SQLUSMALLINT>(coluna), SQL_C_CHAR, &nada, 0, &bytes);
        if (bytes == SQL_NULL_DATA) {
            return {};
        }
        QByteArray texto(static_cast<qsizetype>(bytes) + 1, '\0');
        SQLGetData(m_comando, static_cast<SQLUSMALLINT>(coluna), SQL_C_CHAR, texto.data(), texto.size(),
                   &bytes);
        texto.chop(1);
        // An empty text is no NULL.
        return texto.isEmpty() ? QStringLiteral("") : QString::fromUtf8(texto);
    }

  private:
    void libera() {
        SQLFreeHandle(SQL_HANDLE_DBC, m_conexao);
        SQLFreeHandle(SQL_HANDLE_ENV, m_ambiente);
    }

    SQLHENV m_ambiente = SQL_NULL_HENV;
    SQLHDBC m_conexao = SQL_NULL_HDBC;
    SQLHSTMT m_comando = SQL_NULL_HSTMT;
};

AdminConnection::AdminConnection(const QString& endereco) : m_sessao(std::make_unique<Sessao>(endereco)) {
}

AdminConnection::~AdminConnection() = default;

void AdminConnection::seleciona(const QString& banco) {
    executa(QStringLiteral("USE `%1`").arg(banco));
}

void AdminConnection::executa(const QString& sql) {
    for (const QByteArray& comando : comandosDe(sql)) {
        // The driver allows no change of character set, and the connection has the right one.
        if (comando == "SET NAMES utf8mb4") {
            continue;
        }
        m_sessao->envia(comando);
        m_sessao->solta();
    }
}

QList<QStringList> AdminConnection::consulta(const QString& sql) {
    const QList<QByteArray> comandos = comandosDe(sql);
    if (comandos.size() != 1) {
        throw TestError(QStringLiteral("not one statement: %1").arg(sql));
    }
    m_sessao->envia(comandos.first());
    const SQLSMALLINT colunas = m_sessao->colunas();
    if (colunas == 0) {
        m_sessao->solta();
        throw TestError(QStringLiteral("not a query with rows: %1").arg(sql));
    }
    QList<QStringList> linhas;
    while (m_sessao->anda()) {
        QStringList celulas;
        for (SQLSMALLINT i = 1; i <= colunas; ++i) {
            celulas += m_sessao->celula(i);
        }
        linhas += celulas;
    }
    m_sessao->solta();
    return linhas;
}

} // namespace tarvessa::teste

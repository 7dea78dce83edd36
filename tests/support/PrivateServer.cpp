#include "support/PrivateServer.h"

#include "support/AdminConnection.h"
#include "support/Soquete.h"
#include "support/TestError.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#ifndef _WIN32
#include <odbcinst.h>
#endif

namespace tarvessa::teste {

namespace {

constexpr auto Script = TARVESSA_SOURCE_DIR "/tools/private-server";
constexpr auto Schema = TARVESSA_SOURCE_DIR "/demo/schema.sql";
constexpr int EsperaDoScriptMs = 180000;
constexpr int EsperaDasConexoesMs = 10000;
#ifdef _WIN32
const auto Host = QStringLiteral("127.0.0.1"); // as the server sees the program
#else
const auto Host = QStringLiteral("localhost");
#endif

QString executaScript(const QStringList& argumentos) {
    QProcess processo;
    processo.start(QString::fromUtf8(Script), argumentos, QIODevice::ReadOnly);
    if (!processo.waitForFinished(EsperaDoScriptMs) || processo.exitStatus() != QProcess::NormalExit ||
        processo.exitCode() != 0) {
        throw TestError(QStringLiteral("private-server %1: %2 %3")
                            .arg(argumentos.join(QLatin1Char(' ')), processo.errorString(),
                                 QString::fromLocal8Bit(processo.readAllStandardError())));
    }
    return QString::fromLocal8Bit(processo.readAllStandardOutput()).trimmed();
}

QByteArray leArquivo(const QString& caminho) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) {
        throw TestError(QStringLiteral("%1: %2").arg(caminho, arquivo.errorString()));
    }
    return arquivo.readAll();
}

/// The driver's path as the server's own data source has it.
QString driverDe(const QString& odbcIni) {
    for (const QByteArray& linha : leArquivo(odbcIni).split('\n')) {
        const qsizetype igual = linha.indexOf('=');
        if (igual > 0 && linha.left(igual).trimmed() == "Driver") {
            return QString::fromLocal8Bit(linha.mid(igual + 1).trimmed());
        }
    }
    throw TestError(QStringLiteral("no driver in %1").arg(odbcIni));
}

#ifdef _WIN32

// The driver manager is the one below Wine, which reads the file that this variable named when the program
// started; packaging/windows/test gives each program a file of its own.
QString arquivoDaFonte(const QTemporaryDir& /*pasta*/) {
    return qEnvironmentVariable("ODBCINI");
}

void entrega(const QString& /*odbcIni*/) {
}

QString enderecoDe(const QString& /*servidor*/) {
    return qEnvironmentVariable("TARVESSA_TEST_ADDRESS");
}

#else

QString arquivoDaFonte(const QTemporaryDir& pasta) {
    return pasta.filePath(QStringLiteral("odbc.ini"));
}

// The driver manager keeps what it has read for some seconds; only a write through its own library makes it
// forget.
void entrega(const QString& odbcIni) {
    qputenv("ODBCINI", QFile::encodeName(odbcIni));
    if (SQLWritePrivateProfileString("QDX", "Description", "Test", "odbc.ini") == 0) {
        throw TestError(QStringLiteral("%1 was not taken by the driver manager").arg(odbcIni));
    }
}

QString enderecoDe(const QString& servidor) {
    return executaScript({QStringLiteral("socket"), servidor});
}

#endif

/// Letters and digits only: the name stands in a grant, where "_" would match any character.
QString nomeUnico() {
    return QStringLiteral("teste%1x%2")
        .arg(QCoreApplication::applicationPid())
        .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

} // namespace

/// A server that lives as long as this object.
class PrivateServer::OwnServer {
  public:
    explicit OwnServer(const QString& pasta) : m_pasta(pasta) {
        // Watched first, so that a test program which crashes does not leave its server behind.
        executaScript(
            {QStringLiteral("watch"), m_pasta, QString::number(QCoreApplication::applicationPid())});
        executaScript({QStringLiteral("start"), m_pasta, QStringLiteral("--"),
                       QStringLiteral("--innodb-flush-log-at-trx-commit=0")});
    }
    ~OwnServer() {
        try {
            executaScript({QStringLiteral("stop"), m_pasta});
        } catch (const TestError& erro) {
            qWarning("%s", erro.what());
        }
    }
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

  private:
    QString m_pasta;
};

PrivateServer::PrivateServer()
    : m_servidor(qEnvironmentVariable("TARVESSA_TEST_SERVER")), m_nome(nomeUnico()),
      m_esquema(leArquivo(QString::fromUtf8(Schema))),
      m_initStmt(QStringLiteral("SET sql_mode='NO_ENGINE_SUBSTITUTION'")),
      m_haviaOdbcIni(qEnvironmentVariableIsSet("ODBCINI")), m_odbcIniAnterior(qgetenv("ODBCINI")) {
    if (!m_pasta.isValid()) {
        throw TestError(m_pasta.errorString());
    }
    if (m_servidor.isEmpty()) {
        m_servidor = m_pasta.filePath(QStringLiteral("servidor"));
        m_proprio = std::make_unique<OwnServer>(m_servidor);
    }
    m_socket = enderecoDe(m_servidor);
    m_socketDaFonte = m_socket;
    m_driver = driverDe(m_servidor + QStringLiteral("/odbc.ini"));
    m_conexao = std::make_unique<AdminConnection>(m_socket);
    // The same leniency as the program's own connection, so that odd rows can be prepared.
    m_conexao->executa(m_initStmt);
    m_conexao->executa(
        QStringLiteral("CREATE USER '%1'@'%2'; GRANT ALL ON `%1`.* TO '%1'@'%2'").arg(m_nome, Host));
    recria();
    gravaFonteDeDados();
}

PrivateServer::~PrivateServer() {
    restauraAmbiente();
    try {
        m_conexao->executa(QStringLiteral("DROP DATABASE `%1`; DROP USER '%1'@'%2'").arg(m_nome, Host));
    } catch (const TestError& erro) {
        qWarning("%s", erro.what());
    }
}

void PrivateServer::usaCharset(const QString& charset) {
    m_charset = charset;
    gravaFonteDeDados();
}

void PrivateServer::usaSocket(const QString& socket) {
    m_socketDaFonte = socket;
    gravaFonteDeDados();
}

void PrivateServer::usaInitStmt(const QString& sql) {
    m_initStmt = sql;
    gravaFonteDeDados();
}

void PrivateServer::executa(const QString& sql) {
    m_conexao->executa(sql);
}

QList<QStringList> PrivateServer::consulta(const QString& sql) {
    return m_conexao->consulta(sql);
}

void PrivateServer::recria() {
    m_conexao->executa(
        QStringLiteral("DROP DATABASE IF EXISTS `%1`; CREATE DATABASE `%1` CHARACTER SET utf8mb4")
            .arg(m_nome));
    m_conexao->seleciona(m_nome);
    m_conexao->executa(QString::fromUtf8(m_esquema));
}

void PrivateServer::mataConexoesDoPrograma() {
    m_conexao->executa(QStringLiteral("KILL CONNECTION USER '%1'@'%2'").arg(m_nome, Host));
    QElapsedTimer relogio;
    relogio.start();
    const QString restantes =
        QStringLiteral("SELECT id FROM information_schema.processlist WHERE user = '%1'").arg(m_nome);
    while (!m_conexao->consulta(restantes).isEmpty()) {
        if (relogio.elapsed() > EsperaDasConexoesMs) {
            throw TestError(QStringLiteral("the program's connections do not end"));
        }
        QThread::msleep(5);
    }
}

void PrivateServer::gravaFonteDeDados() {
    const QString caminho = arquivoDaFonte(m_pasta);
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw TestError(QStringLiteral("%1: %2").arg(caminho, arquivo.errorString()));
    }
    QStringList linhas{QStringLiteral("[QDX]"), QStringLiteral("Driver = ") + m_driver,
                       QStringLiteral("DATABASE = ") + m_nome, QStringLiteral("UID = ") + m_nome,
                       QStringLiteral("USER = ") + m_nome};
    linhas += soquete::linhasDaFonte(m_socketDaFonte);
    if (!m_charset.isEmpty()) {
        linhas += QStringLiteral("CHARSET = ") + m_charset;
    }
    if (!m_initStmt.isEmpty()) {
        linhas += QStringLiteral("INITSTMT = ") + m_initStmt;
    }
    arquivo.write(linhas.join(QLatin1Char('\n')).toLocal8Bit() + '\n');
    arquivo.close();
    entrega(caminho);
}

void PrivateServer::restauraAmbiente() {
    if (m_haviaOdbcIni) {
        qputenv("ODBCINI", m_odbcIniAnterior);
    } else {
        qunsetenv("ODBCINI");
    }
}

} // namespace tarvessa::teste

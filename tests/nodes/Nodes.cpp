#include "nodes/Nodes.h"

#include "support/AdminConnection.h"
#include "support/TestError.h"

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

const auto script = QStringLiteral(TARVESSA_SOURCE_DIR "/demo/cluster");
constexpr int commandMs = 60000;
constexpr int backMs = 180000;

} // namespace

QString Nodes::command(const QStringList& arguments) {
    QProcess process;
    process.start(script, arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(commandMs) || process.exitCode() != 0)
        throw TestError(u"cluster %1: %2"_s.arg(arguments.join(u' '),
                                                QString::fromLocal8Bit(process.readAllStandardError())));
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

Nodes::Nodes() {
    for (int node = 1; node <= count; ++node)
        m_sockets.append(command({u"socket"_s, QString::number(node)}));
}

Nodes::~Nodes() {
    if (m_back.state() != QProcess::NotRunning)
        m_back.waitForFinished(backMs);
}

void Nodes::execute(int node, const QString& sql) const {
    AdminConnection connection(m_sockets[node - 1]);
    connection.execute(u"SET NAMES utf8mb4; USE tarvessa; "_s + sql);
}

QString Nodes::value(int node, const QString& sql) const {
    AdminConnection connection(m_sockets[node - 1]);
    connection.execute(u"SET wsrep_sync_wait = 1; USE tarvessa"_s);
    const QList<QStringList> rows = connection.query(sql);
    return rows.isEmpty() ? u"(no row)"_s : rows[0][0];
}

QString Nodes::value(const QString& sql) const {
    for (int node = 1; node <= count; ++node)
        if (node != m_missing)
            return value(node, sql);
    throw TestError(u"no node is left"_s);
}

QList<int> Nodes::withSessions() const {
    QList<int> nodes;
    for (int node = 1; node <= count; ++node) {
        if (node == m_missing)
            continue;
        AdminConnection connection(m_sockets[node - 1]);
        if (connection.query(
                u"SELECT COUNT(*) FROM information_schema.processlist WHERE user = 'tarvessa'"_s)[0][0] !=
            u"0")
            nodes.append(node);
    }
    return nodes;
}

void Nodes::kill(int node) {
    m_missing = node;
    command({u"kill"_s, QString::number(node)});
}

void Nodes::bringBack(int node) {
    m_back.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_back.start(script, {u"back"_s, QString::number(node)}, QIODevice::ReadOnly);
}

bool Nodes::isOneMissing() {
    if (m_missing != 0 && m_back.state() == QProcess::NotRunning && m_back.program() == script) {
        if (m_back.exitCode() != 0)
            throw TestError(u"node %1 does not come back"_s.arg(m_missing));
        m_missing = 0;
        m_back.setProgram({});
    }
    return m_missing != 0;
}

} // namespace tarvessa::test

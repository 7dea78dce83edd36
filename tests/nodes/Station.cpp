#include "nodes/Station.h"

#include "support/TestError.h"

#include <QDir>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

constexpr int startMs = 60000;
constexpr int endMs = 30000;

} // namespace

Station::Station(const QString& name, const QString& odbcIni) : m_name(name) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ODBCINI"_s, odbcIni);
    // A folder without programs: logs open in the program's own viewer.
    environment.insert(u"PATH"_s, m_folder.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    // The platform without a display warns at every window.
    environment.insert(u"QT_LOGGING_RULES"_s, u"default.warning=false"_s);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(TARVESSA_STATION), {m_folder.path()});
    m_command = u"start"_s;
    if (!m_process.waitForReadyRead(startMs) || m_process.readLine().trimmed() != "ready")
        throw TestError(name + u" did not start"_s);
    m_command.clear();
}

Station::~Station() {
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(endMs))
        m_process.kill();
    m_process.waitForFinished();
}

void Station::tell(const QString& command) {
    m_command = command;
    m_process.write(command.toUtf8() + '\n');
}

std::optional<QJsonObject> Station::answer() {
    m_process.waitForReadyRead(1);
    if (m_process.canReadLine()) {
        m_command.clear();
        return QJsonDocument::fromJson(m_process.readLine()).object();
    }
    if (m_process.state() == QProcess::NotRunning)
        throw TestError(m_name + u" has ended"_s);
    return std::nullopt;
}

} // namespace tarvessa::test

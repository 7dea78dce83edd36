#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <optional>

namespace tarvessa::test {

/// A workstation in a process of its own, with a program folder of its own. It does one thing at a time.
class Station {
  public:
    /// Starts it on the data source of that file and waits until the panel is there. Raises TestError.
    Station(const QString& name, const QString& odbcIni);
    ~Station();
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    QString name() const { return m_name; }

    /// Tells the operator what to do; the station must be idle.
    void tell(const QString& command);
    bool isIdle() const { return m_command.isEmpty(); }
    /// What it is doing, empty when idle.
    QString command() const { return m_command; }

    /// What the operator saw when the command had ended; nothing while it runs. Raises TestError when the
    /// process has ended.
    std::optional<QJsonObject> answer();

  private:
    QString m_name;
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_command;
};

} // namespace tarvessa::test

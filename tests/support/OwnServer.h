#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tarvessa::test {

/// A private server that a test may kill, stop and start again. While it lives, a PrivateServer made by this
/// process is a database on it, whatever server the environment names. Not for Windows, where the server runs
/// outside.
class OwnServer {
  public:
    /// Starts it with these options of the server in `folder`, by default a temporary one. Raises TestError.
    explicit OwnServer(const QStringList& options = {}, const QString& folder = {});
    ~OwnServer();
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

    /// Ends the process as a power cut would, and returns when it is gone.
    void kill() const;
    /// Starts it again on its data. Raises TestError.
    void start() const;
    /// Holds the process as it is, with every thread, before it returns; lets it go on.
    void hold() const;
    void release() const;

  private:
    qint64 pid() const;
    void run(const QStringList& arguments) const;

    QProcessEnvironment m_environment; // a test may take the program's commands away later
    QTemporaryDir m_temporary;
    QString m_folder;
    QStringList m_options;
    QByteArray m_previousServer;
};

} // namespace tarvessa::test

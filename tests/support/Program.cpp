#include "support/Program.h"

#include "support/TestError.h"

#ifdef _WIN32
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <windows.h>
#else
#include <QProcess>
#endif

namespace tarvessa::test {

namespace {

constexpr int TimeoutMs = 60000;

} // namespace

#ifdef _WIN32

namespace {

QByteArray hostSide(QString text) {
    if (text.startsWith(QStringLiteral("Z:"))) {
        text = text.mid(2).replace(QLatin1Char('\\'), QLatin1Char('/'));
    }
    return '\'' + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")).toUtf8() + '\'';
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Starts the shell of the machine below; nobody learns when it ends.
bool startScript(const QString& path) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    std::wstring line =
        (QStringLiteral("sh ") + QString::fromUtf8(hostSide(path)).remove(u'\'')).toStdWString();
    return CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                          &process) != 0;
}

} // namespace

ProgramEnd runProgram(const QString& name, const QStringList& arguments) {
    const QTemporaryDir folder;
    const QByteArray base = hostSide(folder.path());
    QByteArray script = name.toUtf8();
    for (const QString& argument : arguments) {
        script += ' ' + hostSide(argument);
    }
    script += " >" + base + "/out 2>" + base + "/err\necho $? >" + base + "/end.new\nmv " + base +
              "/end.new " + base + "/end\n";
    QFile file(folder.filePath(QStringLiteral("script")));
    if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size()) {
        return {};
    }
    file.close();
    if (!startScript(file.fileName())) {
        return {};
    }
    QElapsedTimer timer;
    timer.start();
    const QString end = folder.filePath(QStringLiteral("end"));
    while (!QFile::exists(end)) {
        if (timer.elapsed() > TimeoutMs) {
            return {};
        }
        QThread::msleep(5);
    }
    return {contents(end).trimmed().toInt(), contents(folder.filePath(QStringLiteral("out"))),
            contents(folder.filePath(QStringLiteral("err")))};
}

#else

ProgramEnd runProgram(const QString& name, const QStringList& arguments) {
    QProcess process;
    process.start(name, arguments);
    const bool ended = process.waitForFinished(TimeoutMs) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

#endif

QByteArray outputOf(const QString& name, const QStringList& arguments) {
    const ProgramEnd end = runProgram(name, arguments);
    if (end.exitCode != 0)
        throw TestError(name + QStringLiteral(": ") + QString::fromUtf8(end.errors));
    return end.output;
}

QString pdfText(const QString& file) {
    return QString::fromUtf8(
        outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                               QStringLiteral("UTF-8"), file, QStringLiteral("-")}));
}

} // namespace tarvessa::test

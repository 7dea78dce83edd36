#include "ui/ShellHost.h"

#include "ui/TextViewer.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QProcess>
#include <QStandardPaths>

#ifdef _WIN32
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

#ifdef _WIN32

bool openWithDesktop(const QString& path) {
    const std::wstring parameters = (u"\""_s + QDir::toNativeSeparators(path) + u"\""_s).toStdWString();
    const auto result =
        ShellExecuteW(nullptr, L"open", L"notepad.exe", parameters.c_str(), nullptr, SW_SHOWMAXIMIZED);
    return reinterpret_cast<INT_PTR>(result) > 32; // values up to 32 are error codes
}

#else

constexpr int viewerQueryMs = 3000;

// xdg-open does not report whether it found a viewer, so the desktop is asked for one first.
bool openWithDesktop(const QString& path) {
    if (QStandardPaths::findExecutable(u"xdg-open"_s).isEmpty())
        return false;
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/plain"_s});
    if (!query.waitForFinished(viewerQueryMs) || query.readAllStandardOutput().trimmed().isEmpty())
        return false;
    return QProcess::startDetached(u"xdg-open"_s, {path});
}

#endif

} // namespace

void ShellHost::sendKeys(const QString& keys) {
    QWidget* target = QApplication::focusWidget();
    if (!target || keys != u"{TAB}")
        return;
    QApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, u"\t"_s));
    QApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier, u"\t"_s));
}

void ShellHost::openText(const QString& path) {
    if (!openWithDesktop(path))
        TextViewer::open(path);
}

} // namespace tarvessa

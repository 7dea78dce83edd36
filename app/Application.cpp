#include "app/Application.h"

#include "ui/ErrorReport.h"
#include "ui/Pictures.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#ifdef _WIN32
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace tarvessa {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(u"Tarvessa"_s);
    setApplicationVersion(QStringLiteral(TARVESSA_VERSION));
#ifdef _WIN32
    // A long operation runs to its end on the one thread; its window is neither greyed out nor replaced
    // meanwhile.
    DisableProcessWindowsGhosting();
#endif
    setWindowIcon(pictures::application());
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    auto* texts = new QTranslator(this);
    // Beside the program where it is packaged so, otherwise where Qt is installed.
    if (texts->load(u"qtbase_pt_BR"_s, applicationDirPath() + u"/translations"_s) ||
        texts->load(u"qtbase_pt_BR"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(texts);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeError& error) {
        showErrorReport(activeWindow(), error);
    }
    return true;
}

} // namespace tarvessa

#include "ui/Manual.h"

#include "base/ProgramFolder.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tarvessa::manual {

namespace {

// Boxes have F1 too: a box that says there is no manual must not bring up another one.
bool telling = false;

void tell(QWidget* window, const QString& text) {
    if (telling)
        return;
    const QScopedValueRollback rollback(telling, true);
    boxes::inform(window, text);
}

// Each page has a file of its own that leads to it: not every desktop passes an anchor on to its browser.
void open(QWidget* window, const QString& page) {
    const QString path = programFolder() + u"/manual/tela/"_s + page + u".html"_s;
    if (!QFileInfo(path).isReadable())
        tell(window, u"O manual não foi encontrado: falta o arquivo %1. Instale o programa novamente. "
                     "Verifique!!!"_s.arg(QDir::toNativeSeparators(path)));
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        tell(window, u"Não há um navegador que abra o manual: %1. Verifique!!!"_s.arg(
                         QDir::toNativeSeparators(path)));
}

} // namespace

void opensAt(QWidget* window, const QString& page) {
    auto* key = new QShortcut(Qt::Key_F1, window);
    onSignal(key, &QShortcut::activated, window, [window, page] { open(window, page); });
}

} // namespace tarvessa::manual

#include "ui/TextViewer.h"

#include "ui/Manual.h"

#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tarvessa {

void TextViewer::open(const QString& path) {
    auto* viewer = new TextViewer(path);
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->showMaximized();
    viewer->activateWindow();
}

TextViewer::TextViewer(const QString& path) {
    setObjectName(u"TextViewer"_s);
    setWindowTitle(QFileInfo(path).fileName());
    auto* text = new QPlainTextEdit(this);
    text->setReadOnly(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setAccessibleName(windowTitle());
    QFile file(path);
    text->setPlainText(file.open(QIODevice::ReadOnly | QIODevice::Text)
                           ? QString::fromUtf8(file.readAll())
                           : u"Não foi possível ler %1: %2"_s.arg(path, file.errorString()));
    setCentralWidget(text);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    manual::opensAt(this, u"painel"_s);
    resize(800, 600);
}

} // namespace tarvessa

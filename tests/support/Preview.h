#pragma once

#include "support/TestError.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QTimer>

namespace tarvessa::test {

/// The report preview that is open; null for none.
inline QWidget* openPreview() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (window->inherits("tarvessa::report::PreviewWindow") && window->isVisible())
            return window;
    return nullptr;
}

/// The file name that the open preview proposes for a PDF. Nothing is saved. Raises TestError without a
/// preview and when it asks for no name.
inline QString proposedFileName() {
    QWidget* preview = openPreview();
    if (!preview)
        throw TestError(QStringLiteral("no preview is open"));
    QString name;
    QTimer::singleShot(0, preview, [&name] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            name = dialog->selectedFiles().constFirst().section(u'/', -1);
            dialog->reject();
        }
    });
    preview->findChild<QAction*>(QStringLiteral("SavePdf"))->trigger();
    if (name.isEmpty())
        throw TestError(QStringLiteral("the preview has asked for no file name"));
    return name;
}

} // namespace tarvessa::test

#pragma once

#include "support/ModalHelper.h"
#include "support/TestError.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QProcess>
#include <QTest>

namespace tarvessa::test {

/// What another program reads in an XLSX file: its sheets, the cell below and right of which it scrolls,
/// the columns' widths and the cells row by row, null for an empty one. Raises TestError.
inline QJsonObject readXlsx(const QString& path) {
    QProcess reader;
    // The system's own Python: another one in the PATH lacks the reading package.
    reader.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral(TARVESSA_SOURCE_DIR "/tests/support/read-xlsx"), path});
    constexpr int patienceMs = 60000;
    if (!reader.waitForFinished(patienceMs) || reader.exitCode() != 0)
        throw TestError(QStringLiteral("%1 cannot be read: %2")
                            .arg(path, QString::fromUtf8(reader.readAllStandardError())));
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

/// A cell as "kind:value", numbers as JSON has them; empty for an empty one. Row and column from 0.
inline QString xlsxCell(const QJsonObject& book, int row, int column) {
    const QJsonObject cell = book[QStringLiteral("rows")].toArray()[row].toArray()[column].toObject();
    if (cell.isEmpty())
        return {};
    const QJsonValue value = cell[QStringLiteral("value")];
    return cell[QStringLiteral("kind")].toString() + u':' +
           (value.isDouble() ? QString::number(value.toDouble(), 'g', 15) : value.toString());
}

/// The cells of a row, as xlsxCell has them.
inline QStringList xlsxRow(const QJsonObject& book, int row) {
    QStringList cells;
    const auto count = static_cast<int>(book[QStringLiteral("rows")].toArray()[row].toArray().size());
    for (int column = 0; column < count; ++column)
        cells.append(xlsxCell(book, row, column));
    return cells;
}

/// Lets the operator answer the question for a file with this path, and take note of where it is; `proposed`
/// gets the name that was proposed. Announced to `modals`.
inline void expectSaving(ModalHelper& modals, const QString& path, QString* proposed = nullptr) {
    modals.onOpen([path, proposed](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        QVERIFY(dialog);
        if (proposed)
            *proposed = QFileInfo(dialog->selectedFiles().constFirst()).fileName();
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });
    modals.expect(QStringLiteral("A grade foi gravada em:\n") + path, QMessageBox::Ok);
}

} // namespace tarvessa::test

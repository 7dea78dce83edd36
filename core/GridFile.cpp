#include "core/GridFile.h"

#include "base/FileName.h"
#include "core/GridSheet.h"
#include "sheets/CsvFile.h"
#include "sheets/XlsxFile.h"
#include "ui/BusyPointer.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui/grid/Grid.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QString xlsxKind = u"Planilha (*.xlsx)"_s;
const QString csvKind = u"Dados separados por \";\" (*.csv)"_s;

QString& lastFolder() {
    static QString folder;
    return folder;
}

QString suffixOf(const QString& kind) {
    return kind == csvKind ? u"csv"_s : u"xlsx"_s;
}

// Empty when the operator gives up.
QString askPath(QWidget* parent, const QString& name) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog dialog(parent, u"Salvar grade"_s, lastFolder().isEmpty() ? documents : lastFolder());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({xlsxKind, csvKind});
    dialog.setDefaultSuffix(suffixOf(xlsxKind));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& kind) {
        dialog.setDefaultSuffix(suffixOf(kind));
        const QString chosen = dialog.selectedFiles().value(0);
        if (!chosen.isEmpty())
            dialog.selectFile(QFileInfo(chosen).completeBaseName() + u'.' + suffixOf(kind));
    });
    dialog.selectFile(fileNameFor(name) + u'.' + suffixOf(xlsxKind));
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString path = dialog.selectedFiles().constFirst();
    lastFolder() = QFileInfo(path).absolutePath();
    return path;
}

void save(Grid* grid, const QString& name) {
    if (grid->rows() == 1) {
        boxes::inform(grid, u"A grade está vazia. Verifique!!!"_s);
        return;
    }
    const QString path = askPath(grid, name);
    if (path.isEmpty())
        return;
    {
        const BusyPointer busy;
        const GridSheet sheet(*grid);
        if (path.endsWith(u".csv"_s, Qt::CaseInsensitive))
            sheet::saveCsv(sheet, path);
        else
            sheet::saveXlsx(sheet, path);
    }
    boxes::inform(grid, u"A grade foi gravada em:\n"_s + path);
}

} // namespace

void offerSaving(Grid* grid, std::function<QString()> name) {
    onSignal(grid, &Grid::saveRequested, grid, [grid, name = std::move(name)] { save(grid, name()); });
}

} // namespace tarvessa

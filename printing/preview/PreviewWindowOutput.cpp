#include "printing/preview/PreviewWindow.h"

#include "base/FileName.h"
#include "printing/output/CsvFile.h"
#include "printing/output/PdfFile.h"
#include "printing/output/Printing.h"
#include "printing/output/XlsxFile.h"
#include "ui/BusyPointer.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

void PreviewWindow::print() {
    readAll();
    QPrinter printer(QPrinter::HighResolution);
    preparePrinter(printer);
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_report->pageCount());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                      QAbstractPrintDialog::PrintCurrentPage | QAbstractPrintDialog::PrintCollateCopies);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_choices->printer = printer.printerName();
    m_choices->range = printer.printRange();
    m_choices->firstPage = printer.fromPage();
    m_choices->lastPage = printer.toPage();
    int first = 0;
    int last = m_report->pageCount() - 1;
    if (printer.printRange() == QPrinter::CurrentPage) {
        first = last = m_view->page();
    } else if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = qMin(printer.fromPage() - 1, last);
        last = qBound(first, printer.toPage() - 1, last);
    }
    const BusyPointer busy;
    report::print(*m_report, printer, first, last);
    tell(u"Relatório enviado para a impressora."_s);
}

void PreviewWindow::preparePrinter(QPrinter& printer) const {
    if (QPrinterInfo::availablePrinterNames().contains(m_choices->printer))
        printer.setPrinterName(m_choices->printer);
    printer.setDocName(m_report->title());
    QPageLayout page(m_report->layout().page);
    page.setMargins({});
    printer.setPageLayout(page);
    printer.setFullPage(true);
    const bool hasRange =
        m_choices->range != QPrinter::PageRange || m_choices->lastPage <= m_report->pageCount();
    if (hasRange) {
        printer.setPrintRange(m_choices->range);
        printer.setFromTo(m_choices->firstPage, m_choices->lastPage);
    }
}

void PreviewWindow::savePdf() {
    save(u"Salvar como PDF"_s, u"pdf"_s, u"Documento PDF (*.pdf)"_s, report::savePdf);
}

void PreviewWindow::saveCsv() {
    save(u"Salvar dados (CSV)"_s, u"csv"_s, u"Dados separados por \";\" (*.csv)"_s, report::saveCsv);
}

void PreviewWindow::saveXlsx() {
    save(u"Salvar dados (XLSX)"_s, u"xlsx"_s, u"Planilha (*.xlsx)"_s, report::saveXlsx);
}

void PreviewWindow::save(const QString& title, const QString& suffix, const QString& kind,
                         void (*write)(Report& report, const QString& path)) {
    const QString path = askFileName(title, suffix, kind);
    if (path.isEmpty())
        return;
    readAll();
    const BusyPointer busy;
    write(*m_report, path);
    tell(u"Gravado: %1"_s.arg(path));
}

QString PreviewWindow::askFileName(const QString& title, const QString& suffix, const QString& kind) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog dialog(this, title, m_choices->folder.isEmpty() ? documents : m_choices->folder, kind);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(fileNameFor(m_fileName) + u'.' + suffix);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString path = dialog.selectedFiles().constFirst();
    m_choices->folder = QFileInfo(path).absolutePath();
    return path;
}

} // namespace tarvessa::report

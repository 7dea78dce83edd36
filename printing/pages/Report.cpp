#include "printing/pages/Report.h"

#include "base/RuntimeError.h"
#include "printing/output/CsvFile.h"
#include "printing/output/PainterSink.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr qsizetype rowsAtOnce = 256;

class TextCollector : public PageSink {
  public:
    explicit TextCollector(std::vector<PlacedText>& texts) : m_texts(texts) {}
    void text(const PlacedText& text) override { m_texts.push_back(text); }
    void line(const Line& /*line*/) override {}
    void box(const Box& /*box*/) override {}

  private:
    std::vector<PlacedText>& m_texts;
};

class NoSink : public PageSink {
  public:
    void text(const PlacedText& /*text*/) override {}
    void line(const Line& /*line*/) override {}
    void box(const Box& /*box*/) override {}
};

} // namespace

Report::Report(Layout layout, const QString& connectionString, const QString& query,
               const FormulaValues& formulas, QDateTime printed)
    : m_layout(std::move(layout)), m_data(connectionString, query),
      m_values(m_layout, m_data, formulas, std::move(printed)), m_fonts(m_layout.fonts),
      m_paginator(m_layout, m_values, m_fonts, m_data), m_composer(m_layout, m_values, m_fonts, m_paginator) {
}

void Report::readRows(qsizetype rows) {
    if (m_failure)
        std::rethrow_exception(m_failure);
    try {
        m_data.read(rows);
        m_paginator.advance();
    } catch (...) {
        m_failure = std::current_exception();
        throw;
    }
}

void Report::readPage() {
    const int known = pageCount();
    while (!complete() && pageCount() == known)
        readRows(rowsAtOnce);
}

void Report::readFor(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!complete() && !timer.hasExpired(milliseconds))
        readRows(rowsAtOnce);
}

void Report::readAll() {
    while (!complete())
        readRows(rowsAtOnce);
}

void Report::paint(QPainter& painter, int page) const {
    PainterSink sink(painter, m_fonts);
    m_composer.compose(page, sink);
}

std::vector<PlacedText> Report::texts(int page) const {
    std::vector<PlacedText> result;
    TextCollector sink(result);
    m_composer.compose(page, sink);
    return result;
}

void Report::savePdf(const QString& path) {
    readAll();
    QSaveFile file(path);
    const auto fail = [&] {
        throw RuntimeError(ErrorNumber::FileNotWritable,
                           u"Não foi possível gravar %1: %2"_s.arg(path, file.errorString()));
    };
    if (!file.open(QIODevice::WriteOnly))
        fail();
    {
        QPdfWriter writer(&file);
        writer.setTitle(m_layout.title);
        writer.setResolution(dotsPerInch);
        QPageLayout paper(m_layout.page);
        paper.setMargins({});
        writer.setPageLayout(paper);
        QPainter painter(&writer);
        for (int page = 0; page < pageCount(); ++page) {
            if (page > 0)
                writer.newPage();
            paint(painter, page);
        }
    }
    if (!file.commit())
        fail();
}

void Report::saveCsv(const QString& path) {
    readAll();
    CsvFile(m_layout, m_data).save(path);
}

void Report::print(QPrinter& printer, int first, int last) {
    readAll();
    // A page that fails would leave those before it on the printer: all are tried first.
    NoSink nowhere;
    for (int page = first; page <= last; ++page)
        m_composer.compose(page, nowhere);
    printer.setDocName(m_layout.title);
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        throw RuntimeError(ErrorNumber::FileNotWritable,
                           u"A impressora %1 não aceitou a impressão."_s.arg(printer.printerName()));
    const QSizeF paper = printer.pageLayout().fullRectPixels(printer.resolution()).size();
    const QSizeF page = m_layout.paper();
    const double scale = qMin(paper.width() / page.width(), paper.height() / page.height());
    painter.scale(scale, scale);
    const bool backwards = printer.pageOrder() == QPrinter::LastPageFirst;
    const int copies = printer.supportsMultipleCopies() ? 1 : qMax(1, printer.copyCount());
    const int pages = last - first + 1;
    for (int i = 0; i < pages * copies; ++i) {
        if (i > 0 && !printer.newPage())
            throw RuntimeError(ErrorNumber::FileNotWritable, u"A impressora interrompeu a impressão."_s);
        const int step = printer.collateCopies() ? i % pages : i / copies;
        paint(painter, backwards ? last - step : first + step);
    }
}

} // namespace tarvessa::report

#include "printing/pages/Report.h"

#include <QElapsedTimer>

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

std::vector<PlacedText> Report::texts(int page) const {
    std::vector<PlacedText> result;
    TextCollector sink(result);
    m_composer.compose(page, sink);
    return result;
}

} // namespace tarvessa::report

#include "closing/BatchProgress.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int fewRows = 5;
// Repainting for every row would slow the batch down.
constexpr qint64 repaintIntervalMs = 200;
// The first rows say little about the others.
constexpr int rowsToTell = 10;
constexpr qint64 msToTell = 5000;

} // namespace

BatchProgress::BatchProgress(QWidget* parent) : QProgressBar(parent) {
    setObjectName(u"progresso"_s);
    setAccessibleName(u"Andamento do processo"_s);
    setAlignment(Qt::AlignCenter);
    setMinimumWidth(fontMetrics().horizontalAdvance(u"Pré-venda 00000 de 00000 · cerca de 00 min"_s));
    hide();
}

QString BatchProgress::timeLeft(qint64 elapsedMs, int done, int rows) {
    if (elapsedMs < msToTell || done < rowsToTell)
        return {};
    constexpr qint64 second = 1000;
    constexpr qint64 minute = 60;
    constexpr qint64 step = 5;
    const qint64 seconds = elapsedMs * (rows - done) / done / second;
    if (seconds < minute)
        return u"%1 s"_s.arg((seconds / step + 1) * step);
    return u"%1 min"_s.arg((seconds + minute / 2) / minute);
}

BatchProgress::Run::Run(BatchProgress* progress, int rows, const QString& kind)
    : m_progress(progress), m_text(kind + u" %v de %m"_s), m_rows(rows) {
    m_sinceBegin.start();
    m_progress->setFormat(m_text);
    m_progress->setRange(0, rows);
    m_progress->setValue(0);
    m_progress->setVisible(rows > fewRows);
}

BatchProgress::Run::~Run() {
    m_progress->hide();
}

void BatchProgress::Run::enter(int row) {
    if (!m_progress->isVisible() || (m_sincePaint.isValid() && m_sincePaint.elapsed() < repaintIntervalMs))
        return;
    const QString left = timeLeft(m_sinceBegin.elapsed(), row - 1, m_rows);
    m_progress->setFormat(left.isEmpty() ? m_text : m_text + u" · cerca de "_s + left);
    m_progress->setValue(row);
    m_progress->repaint();
    m_sincePaint.restart();
}

} // namespace tarvessa

#include "closing/BatchProgress.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int fewRows = 5;
// Repainting for every row would slow the batch down.
constexpr qint64 repaintIntervalMs = 200;

} // namespace

BatchProgress::BatchProgress(QWidget* parent) : QProgressBar(parent) {
    setObjectName(u"progresso"_s);
    setAccessibleName(u"Andamento do processo"_s);
    setAlignment(Qt::AlignCenter);
    hide();
}

BatchProgress::Run::Run(BatchProgress* progress, int rows, const QString& kind) : m_progress(progress) {
    m_progress->setFormat(kind + u" %v de %m"_s);
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
    m_progress->setValue(row);
    m_progress->repaint();
    m_sincePaint.restart();
}

} // namespace tarvessa

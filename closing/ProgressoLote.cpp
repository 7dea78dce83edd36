#include "closing/ProgressoLote.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr int punhado = 5;
// Painting more often than the eye follows would only slow the batch down.
constexpr qint64 entrePinturasMs = 200;

} // namespace

ProgressoLote::ProgressoLote(QWidget* parent) : QProgressBar(parent) {
    setObjectName(u"progresso"_s);
    setAccessibleName(u"Andamento do processo"_s);
    setAlignment(Qt::AlignCenter);
    hide();
}

ProgressoLote::Lote::Lote(ProgressoLote* progresso, int linhas, const QString& documento)
    : m_progresso(progresso) {
    m_progresso->setFormat(documento + u" %v de %m"_s);
    m_progresso->setRange(0, linhas);
    m_progresso->setValue(0);
    m_progresso->setVisible(linhas > punhado);
}

ProgressoLote::Lote::~Lote() {
    m_progresso->hide();
}

void ProgressoLote::Lote::linha(int numero) {
    if (!m_progresso->isVisible() ||
        (m_desdeAPintura.isValid() && m_desdeAPintura.elapsed() < entrePinturasMs))
        return;
    m_progresso->setValue(numero);
    m_progresso->repaint();
    m_desdeAPintura.restart();
}

} // namespace tarvessa

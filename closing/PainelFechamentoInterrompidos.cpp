// Closings that were cut: the question at the start, the count in the status bar, the window.

#include "base/Operation.h"
#include "base/RuntimeError.h"
#include "closing/FechamentosInterrompidos.h"
#include "closing/ListedPeriod.h"
#include "closing/PainelFechamento.h"
#include "ui/PlainText.h"
#include "ui_PainelFechamento.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace tarvessa {

// The operator has not asked for anything yet, so a failure is shown in the status bar instead of a box. The
// batch queries again before it closes anything, and reports errors.
void PainelFechamento::procuraInterrompidos() {
    m_seeksAtStart = false;
    try {
        mostraInterrompidos(static_cast<int>(interruptedclosings::find(firstListedDay()).size() +
                                             interruptedclosings::strandedNotes().size()));
    } catch (const RuntimeError& error) {
        m_interrupted->setText(u"Fechamentos interrompidos: não foi possível consultar (F7)"_s);
        plain::setToolTip(m_interrupted, error.text());
        m_interrupted->show();
    }
}

void PainelFechamento::abreInterrompidos() {
    mostraJanela(true);
}

void PainelFechamento::abreInterrompidosSeHouver() {
    mostraJanela(false);
}

void PainelFechamento::mostraJanela(bool mesmoVazia) {
    m_seeksInterrupted = false;
    if (!m_settings)
        m_settings = ClosingSettings::read();
    FechamentosInterrompidos window(firstListedDay(), *m_settings, this);
    window.carrega();
    if (mesmoVazia || window.quantidade() > 0) {
        window.exec();
        Operation::renew();
    }
    mostraInterrompidos(window.quantidade());
    if (window.concluiu() && m_layout == Layout::Pv)
        recarregaPvs();
}

void PainelFechamento::mostraInterrompidos(int quantos) {
    m_interrupted->setToolTip({});
    m_interrupted->setText(quantos == 1 ? u"1 fechamento interrompido (F7)"_s
                                        : u"%1 fechamentos interrompidos (F7)"_s.arg(quantos));
    m_interrupted->setVisible(quantos > 0);
}

} // namespace tarvessa

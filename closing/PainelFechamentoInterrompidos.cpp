// Closings that were cut: the question at the start, the count in the status bar, the window.

#include "base/RuntimeError.h"
#include "closing/FechamentosInterrompidos.h"
#include "closing/ListedPeriod.h"
#include "closing/PainelFechamento.h"
#include "ui_PainelFechamento.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace tarvessa {

// The operator has not asked for anything yet, so a failure is shown in the status bar instead of a box. The
// batch queries again before it closes anything, and reports errors.
void PainelFechamento::procuraInterrompidos() {
    try {
        mostraInterrompidos(static_cast<int>(interruptedclosings::find(firstListedDay()).size() +
                                             interruptedclosings::strandedNotes().size()));
    } catch (const RuntimeError& error) {
        m_interrupted->setText(u"Fechamentos interrompidos: não foi possível consultar (F7)"_s);
        m_interrupted->setToolTip(error.text().toHtmlEscaped());
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
    if (!m_settings)
        m_settings = ClosingSettings::read();
    FechamentosInterrompidos window(firstListedDay(), *m_settings, this);
    window.carrega();
    m_connectionWasLost = false;
    if (mesmoVazia || window.quantidade() > 0)
        window.exec();
    mostraInterrompidos(window.quantidade());
    if (window.concluiu() && m_layout == Layout::Pv)
        listaPvs();
}

void PainelFechamento::mostraInterrompidos(int quantos) {
    m_interrupted->setToolTip({});
    m_interrupted->setText(quantos == 1 ? u"1 fechamento interrompido (F7)"_s
                                        : u"%1 fechamentos interrompidos (F7)"_s.arg(quantos));
    m_interrupted->setVisible(quantos > 0);
}

} // namespace tarvessa

// Start-up of the targets screen: seller lists and period.

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/Periodo.h"
#include "targets/MetasQuadro.h"
#include "ui/DateBox.h"
#include "ui_MetasQuadro.h"

#include <QAbstractItemView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// The form limits the list's own width; its drop-down shows the longest name whole.
void widenDropDown(QComboBox* list) {
    list->view()->setMinimumWidth(list->view()->sizeHintForColumn(0) +
                                  list->view()->verticalScrollBar()->sizeHint().width());
}

} // namespace

void MetasQuadro::Form_Load() {
    carregaVendedores();
    m_period->mesCorrente();
    ui->Vendedores2->setCurrentIndex(0);
    AjustaGrid();
}

void MetasQuadro::carregaVendedores() {
    ui->Vendedores2->addItem(u"(Todos)"_s);
    TemRegistro = AbreRS(u"Select * from Vendedores WHERE Ativo = 'S' order by Vendedor"_s);
    for (; !rs.atEnd(); rs.moveNext()) {
        const Dinheiro codigo(rs.field(u"codigovend").integer());
        const QString item = rs.field(u"vendedor").text() + u"   <<"_s + Formata(codigo, u"000") + u">>"_s;
        ui->Vendedores->addItem(item);
        ui->Vendedores2->addItem(item);
    }
    rs.close();
    for (QComboBox* list : {ui->Vendedores, ui->Vendedores2})
        widenDropDown(list);
    // Adding the first seller has made it the chosen one.
    ui->Vendedores->setCurrentIndex(-1);
}

} // namespace tarvessa

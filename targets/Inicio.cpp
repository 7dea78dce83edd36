// Start-up of the targets screen: seller lists and period.

#include "core/AcessoDados.h"
#include "core/Numeros.h"
#include "core/Periodo.h"
#include "platform/DateBox.h"
#include "targets/MetasQuadro.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void MetasQuadro::Form_Load() {
    carregaVendedores();
    m_periodo->mesCorrente();
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
    ui->Vendedores->setCurrentIndex(-1); // the first seller added became the chosen one
}

} // namespace tarvessa

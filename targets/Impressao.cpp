// Printing of the board.

#include "core/Periodo.h"
#include "core/PrintLayout.h"
#include "core/Staging.h"
#include "targets/Colunas.h"
#include "targets/MetasQuadro.h"
#include "ui/BusyLabel.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void MetasQuadro::Command2_Click() {
    {
        const BusyLabel aguarde(ui->Label7);
        fillStaging(u"Truncate Relat2"_s, insertsDoQuadro());
    }
    printLayout(u"Metas.RPT"_s, {u"Titulo='PERÍODO DE "_s + m_periodo->inicioTela() + u" A "_s +
                                 m_periodo->fimTela() + u"'"_s});
    clearFormulas(1);
}

// Everything is staged as displayed, the empty and the totals lines too; a seller's line goes into the rows
// below it.
QStringList MetasQuadro::insertsDoQuadro() const {
    QStringList inserts;
    QString vendedor;
    for (int linha = 1; linha < ui->Grid2->rows(); ++linha) {
        const auto celula = [this, linha](int coluna) { return ui->Grid2->text(linha, coluna); };
        if (celula(colunasQuadro::Codigo).isEmpty() && !celula(colunasQuadro::Descricao).isEmpty() &&
            celula(colunasQuadro::Meta).isEmpty()) {
            vendedor = celula(colunasQuadro::Descricao);
            continue;
        }
        QString valores = u"'"_s + vendedor + u"'"_s;
        for (int coluna = 0; coluna < ui->Grid2->columns(); ++coluna)
            valores += u", '"_s + celula(coluna) + u"'"_s;
        inserts.append(
            u"Insert into relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) "
            "Values ("_s +
            valores + u")"_s);
    }
    return inserts;
}

} // namespace tarvessa

// Printing of the board.

#include "core/Periodo.h"
#include "core/PrintLayout.h"
#include "core/Rotinas.h"
#include "core/Staging.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "ui/BusyLabel.h"
#include "ui_MetasQuadro.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {
using namespace metasquadro::grid2;
}

void MetasQuadro::imprime() {
    {
        const BusyLabel wait(ui->Label7);
        fillStaging(u"Truncate Relat2"_s, boardInserts());
    }
    printLayout(
        u"Metas.RPT"_s, u"Metas - "_s + m_period->inFileName(),
        {u"Titulo='PERÍODO DE "_s + m_period->inicioTela() + u" A "_s + m_period->fimTela() + u"'"_s});
    clearFormulas(1);
}

// Every line is staged as displayed, the empty ones and the totals too, except a seller's line: it goes into
// the rows that follow it.
QStringList MetasQuadro::boardInserts() const {
    QStringList inserts;
    QString vendedor;
    for (int row = 1; row < ui->Grid2->rows(); ++row) {
        const auto cell = [this, row](int column) { return ui->Grid2->text(row, column); };
        if (cell(Codigo).isEmpty() && !cell(Descricao).isEmpty() && cell(Meta).isEmpty()) {
            vendedor = cell(Descricao);
            continue;
        }
        QString values = u"'"_s + LimpaTexto(vendedor) + u"'"_s;
        for (int column = 0; column < ui->Grid2->columns(); ++column)
            values += u", '"_s + LimpaTexto(cell(column)) + u"'"_s;
        inserts.append(
            u"Insert into relat2 (codigo1,codigo2,texto1,texto2,texto3,texto4,texto5,texto6,texto7) "
            "Values ("_s +
            values + u")"_s);
    }
    return inserts;
}

} // namespace tarvessa

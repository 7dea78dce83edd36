// Checking the listed pre-sales against the price tables and correcting them.

#include "base/Numeros.h"
#include "closing/BatchProgress.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "core/AcessoDados.h"
#include "core/ArquivoLog.h"
#include "core/Esquema.h"
#include "ui/BusyLabel.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui_PainelFechamento.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Column of `produtos` by price table; table 0 has none, its customers buy at any price.
constexpr std::array<QStringView, 5> priceColumns = {u"", u"Venda", u"Venda2", u"Venda3", u"Venda4"};

// Empty for table 0 and for a text that does not name a price table.
QString priceColumn(const QString& tabela) {
    const Dinheiro table = ValorNumerico(tabela);
    if (table.negativo() || table >= Dinheiro(std::ssize(priceColumns)) || table != Dinheiro(table.inteiro()))
        return {};
    return priceColumns[static_cast<size_t>(table.inteiro())].toString();
}

/// Gives each of the lines its price (`orcamento`); true as soon as one was corrected, also when a later one
/// raises RuntimeError.
void correctLines(odbc::ResultSet& lines, bool& corrected) {
    for (; !lines.atEnd(); lines.moveNext()) {
        const QString price = lines.field(u"Vnd").decimal().ponto();
        Executa(u"Update Orcamento Set Unitario="_s + price + u", TotalPed=Round(quantidade*"_s + price +
                u",2) , UnitarioPAF = "_s + price + u", TotalPaf = Round(quantidade * "_s + price +
                u", 2) Where ID="_s + lines.field(esquema::orcamento::id).text());
        corrected = true;
    }
}

} // namespace

void PainelFechamento::analisaPrecos() {
    if (!boxes::ask(this, u"Deseja realmente o processo desta função?"_s, QMessageBox::Question))
        return;
    QStringList corrected;
    bool complete = guarded(this, [&] { corrigePrecos(corrected); });
    if (!corrected.isEmpty()) {
        // The prices are stored by now: a log that cannot be written must not keep the texts from the screen.
        guarded(this, [&] { gravaLogDePrecos(corrected); });
        boxes::inform(this, u"PEDIDOS COM PREÇOS CORRIGIDOS:\n\n"_s + corrected.join(u'\n') + u'\n');
    }
    complete = complete && guarded(this, [this] { listaPvs(); });
    // The listed totals are not those of the corrected documents: none of them may be closed.
    if (!complete && !corrected.isEmpty())
        emptyList();
}

/// Adds one text per pre-sale in which a price was corrected; those before an error are in the list as well.
void PainelFechamento::corrigePrecos(QStringList& corrected) {
    const BusyLabel wait(ui->Label1, u"AGUARDE PROCESSO"_s);
    BatchProgress::Run run(m_progress, ui->Grid1->rows() - 1, u"Pré-venda"_s);
    for (int row = 1; row < ui->Grid1->rows(); ++row) {
        run.enter(row);
        corrigePv(row, corrected);
    }
}

void PainelFechamento::corrigePv(int row, QStringList& corrected) {
    const QString column = priceColumn(ui->Grid1->text(row, painelfechamento::Tabela));
    if (column.isEmpty())
        return;
    const QString pedido = ui->Grid1->text(row, painelfechamento::Pedido);
    TemRegistro = AbreRS(u"Select o.id, o.nrpedido, o.tipooperacao, o.unitario, p."_s + column +
                         u" as Vnd From orcamento as o Left Join produtos as p ON o.codigo=p.codfabr Where "
                         "o.nrpedido="_s +
                         pedido + u" and o.TipoOperacao='"_s + ui->Grid1->text(row, painelfechamento::Tipo) +
                         u"' and o.unitario <> p."_s + column + u" and p."_s + column + u"<> 0"_s);
    bool anyCorrected = false;
    const auto note = qScopeGuard([&] {
        if (anyCorrected)
            corrected.append(u"PV Nº "_s + pedido + u" - "_s +
                             ui->Grid1->text(row, painelfechamento::Cliente));
    });
    correctLines(rs, anyCorrected);
    rs.close();
}

void PainelFechamento::gravaLogDePrecos(const QStringList& corrected) {
    ArquivoLog log;
    log.cria(u"LogTarvessa.log"_s);
    for (const QString& pv : corrected)
        log.linha(pv);
    log.linha({});
}

} // namespace tarvessa

// Checking the listed pre-sales against the price tables and correcting them.

#include "base/Numeros.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "closing/ProgressoLote.h"
#include "core/AcessoDados.h"
#include "core/ArquivoLog.h"
#include "core/Esquema.h"
#include "ui/BusyLabel.h"
#include "ui/Guard.h"
#include "ui/MessageBoxes.h"
#include "ui_PainelFechamento.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Column of `produtos` by price table; table 0 has none, its customers buy at any price.
constexpr std::array<QStringView, 5> colunasDePreco = {u"", u"Venda", u"Venda2", u"Venda3", u"Venda4"};

// Empty for table 0 and for what is no price table.
QString colunaDePreco(const QString& tabela) {
    const Dinheiro valor = ValorNumerico(tabela);
    if (valor.negativo() || valor >= Dinheiro(std::ssize(colunasDePreco)) ||
        valor != Dinheiro(valor.inteiro()))
        return {};
    return colunasDePreco[static_cast<size_t>(valor.inteiro())].toString();
}

} // namespace

void PainelFechamento::Command5_Click() {
    if (!boxes::ask(this, u"Deseja realmente o processo desta função?"_s, QMessageBox::Question))
        return;
    QStringList corrigidos;
    bool completa = guarded(this, [&] { corrigePrecos(corrigidos); });
    if (completa && !corrigidos.isEmpty()) {
        // The prices are stored by now: a log that cannot be written must not keep the list from the screen.
        guarded(this, [&] { gravaLogDePrecos(corrigidos); });
        boxes::inform(this, u"PEDIDOS COM PREÇOS CORRIGIDOS:\n\n"_s + corrigidos.join(u'\n') + u'\n');
    }
    completa = completa && guarded(this, [this] { Command3_Click(); });
    // The totals on the screen are not those of the corrected documents: none of them may be closed.
    if (!completa && !corrigidos.isEmpty())
        esvaziaLista();
}

/// Adds the pre-sales in which a price was corrected, one text each; what was added before an error stands.
void PainelFechamento::corrigePrecos(QStringList& corrigidos) {
    const BusyLabel espera(ui->Label1, u"AGUARDE PROCESSO"_s);
    ProgressoLote::Lote lote(m_progresso, ui->Grid1->rows() - 1, u"Pré-venda"_s);
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha) {
        lote.linha(linha);
        corrigeLinha(linha, corrigidos);
    }
}

void PainelFechamento::corrigeLinha(int linha, QStringList& corrigidos) {
    const QString coluna = colunaDePreco(ui->Grid1->text(linha, colunas::Tabela));
    if (coluna.isEmpty())
        return;
    TemRegistro = AbreRS(u"Select o.id, o.nrpedido, o.tipooperacao, o.unitario, p."_s + coluna +
                         u" as Vnd From orcamento as o Left Join produtos as p ON o.codigo=p.codfabr Where "
                         "o.nrpedido="_s +
                         ui->Grid1->text(linha, colunas::Pedido) + u" and o.TipoOperacao='"_s +
                         ui->Grid1->text(linha, colunas::Tipo) + u"' and o.unitario <> p."_s + coluna +
                         u" and p."_s + coluna + u"<> 0"_s);
    bool corrigida = false;
    for (; !rs.atEnd(); rs.moveNext()) {
        const QString preco = Dinheiro::dePonto(rs.field(u"Vnd").text()).ponto();
        Executa(u"Update Orcamento Set Unitario="_s + preco + u", TotalPed=Round(quantidade*"_s + preco +
                u",2) , UnitarioPAF = "_s + preco + u", TotalPaf = Round(quantidade * "_s + preco +
                u", 2) Where ID="_s + rs.field(esquema::orcamento::id).text());
        if (!corrigida)
            corrigidos.append(u"PV Nº "_s + ui->Grid1->text(linha, colunas::Pedido) + u" - "_s +
                              ui->Grid1->text(linha, colunas::Cliente));
        corrigida = true;
    }
    rs.close();
}

void PainelFechamento::gravaLogDePrecos(const QStringList& pedidos) {
    ArquivoLog arquivo;
    arquivo.cria(u"LogTarvessa.log"_s);
    for (const QString& pedido : pedidos)
        arquivo.linha(pedido);
    arquivo.linha({});
}

} // namespace tarvessa

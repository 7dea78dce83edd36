// The batch that closes the selected pre-sales.

#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "closing/ProgressoLote.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Rotinas.h"
#include "ui/MessageBoxes.h"
#include "ui_PainelFechamento.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// A CNPJ has 14 digits, a CPF 11; anything shorter than this is a private person or no document at all.
constexpr qsizetype digitosDeEmpresa = 12;

QDate vencimento(Dinheiro prazo) {
    const QDate data = Hoje().addDays(prazo.inteiro());
    constexpr int ultimoAno = 9999;
    if (!data.isValid() || data.year() > ultimoAno)
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o prazo de %1 dias é grande demais."_s.arg(prazo.inteiro()));
    return data;
}

} // namespace

void PainelFechamento::Command4_Click() {
    // Without the settings the accounts would be wrong, and so might be the stock.
    if (!m_configurado)
        throw RuntimeError(ErrorNumber::NoCurrentRecord,
                           u"As configurações da empresa não foram lidas ao abrir: nada pode ser encerrado. "
                           "Corrija o cadastro da empresa e inicie o programa novamente."_s);
    m_logFechamento.cria(u"LogFechamento.txt"_s);
    m_logFechamento.linha(u"LOG DE FECHAMENTO:"_s);
    m_logFechamento.linha(u"------------------"_s);
    m_logFechamento.linha({});
    if (ValorNumerico(ui->Text1->text()).zero()) {
        boxes::inform(this, u"Não há Pré-Venda selecionada. Verifique!!!"_s);
        return;
    }
    boxes::inform(this, u"Lembrando que os pedidos de cliente com CPF serão cancelados."_s);

    bool houveErro = false;
    {
        ProgressoLote::Lote lote(m_progresso, ui->Grid1->rows() - 1, u"Pré-venda"_s);
        for (int linha = 1; linha < ui->Grid1->rows(); ++linha) {
            lote.linha(linha);
            if (!fechaLinha(linha))
                houveErro = true;
        }
    }
    m_logFechamento.fecha();

    if (houveErro) {
        boxes::inform(this,
                      u"Processo encerrado com alguns pedidos com erro de processamento. Na sequência será "
                      "aberto um arquivo com as mensagens de erros."_s);
        Shell->openText(m_logFechamento.caminho());
    } else {
        boxes::inform(this, u"Processamento efetuado com sucesso."_s);
    }
    Command3_Click();
}

/// True when the row was closed or left alone, false when it was refused.
bool PainelFechamento::fechaLinha(int linha) {
    const QString pedido = ui->Grid1->text(linha, colunas::Pedido);
    TemRegistro = AbreRS(u"Select CNPJ_CPF From Clientes Where Codigo='"_s +
                         ui->Grid1->text(linha, colunas::CodigoCli) + u"'"_s);
    const bool clienteExiste = TemRegistro;
    const QString documento =
        clienteExiste ? SoNumeros(rs.field(esquema::clientes::cnpjCpf).text()) : QString();
    rs.close();
    if (clienteExiste && documento.size() < digitosDeEmpresa) {
        Executa(u"Update Orcamento Set SituacaoOrc='X', databaixa='"_s + TextoSQL(Hoje()) +
                u"' Where nrpedido="_s + pedido + u" And TipoOperacao='P'"_s);
        registraRecusa(linha, u" - O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s);
        return false;
    }
    if (!ui->Grid1->isTicked(linha) || m_encerradas.contains(ValorInteiro(pedido)))
        return true;
    if (m_iniciadas.contains(ValorInteiro(pedido))) {
        registraRecusa(linha, u" - FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s);
        return false;
    }
    // Without a customer record nobody could be charged; it is never taken for a person.
    if (!clienteExiste) {
        registraRecusa(linha, u" - CLIENTE NÃO CADASTRADO."_s);
        return false;
    }
    const bool pagamento = formaValida(linha);
    const bool estoque = temEstoque(linha);
    if (pagamento && estoque) {
        FechaPV(ValorInteiro(pedido), ui->Grid1->text(linha, colunas::FormaPagto),
                ValorNumerico(ui->Grid1->text(linha, colunas::Total)),
                vencimento(ValorNumerico(ui->Grid1->text(linha, colunas::DiasVenc))),
                ui->Grid1->text(linha, colunas::Cliente));
        return true;
    }
    if (!pagamento)
        registraRecusa(linha, u" - FORMA DE PAGAMENTO INVÁLIDA."_s);
    if (!estoque)
        registraRecusa(linha, u" - O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s);
    return false;
}

// A method that is not cash-like needs a term; a cash-like one takes any that is not negative; one that is
// not in the list is invalid, and so is one whose name would break the statements half-way.
bool PainelFechamento::formaValida(int linha) const {
    const QString forma = ui->Grid1->text(linha, colunas::FormaPagto);
    const int item = ui->Combo1->findText(forma, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (item < 0 || LimpaTexto(forma) != forma)
        return false;
    const bool avista = ui->Combo1->itemData(item).toInt() == 1;
    const Dinheiro prazo = ValorNumerico(ui->Grid1->text(linha, colunas::DiasVenc));
    return avista ? !prazo.negativo() : prazo > Dinheiro();
}

bool PainelFechamento::temEstoque(int linha) {
    TemRegistro =
        AbreRS(u"SELECT o.codigo, SUM(o.quantidade) as quantidade, ifnull(p.quantidade+p.quantidade2,0) AS "
               u"estoque  FROM "
               "orcamento AS o left join produtos AS p ON o.codigo=p.codfabr WHERE Nrpedido="_s +
               ui->Grid1->text(linha, colunas::Pedido) + u" AND tipoOperacao='P' GROUP BY codigo"_s);
    bool suficiente = true;
    for (; !rs.atEnd(); rs.moveNext())
        if (Dinheiro::dePonto(rs.field(esquema::orcamento::quantidade).text()) >
            Dinheiro::dePonto(rs.field(u"estoque").text()))
            suficiente = false;
    rs.close();
    return suficiente;
}

void PainelFechamento::registraRecusa(int linha, const QString& motivo) {
    m_logFechamento.linha(u"PRÉ-VENDA: "_s +
                          Formata(ValorNumerico(ui->Grid1->text(linha, colunas::Pedido)), u"0000000") +
                          motivo);
}

} // namespace tarvessa

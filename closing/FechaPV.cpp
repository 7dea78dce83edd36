// What the closing of one pre-sale writes.

#include "base/Datas.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "base/Textos.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/Rotinas.h"
#include "ui/BusyPointer.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr size_t contaDoCaixa = 0;
constexpr size_t contaAReceber = 4;
constexpr int letrasDoNomeNoCaixa = 50;

qint16 codigoVend(const odbc::Field& campo) {
    const qint64 codigo = campo.integer();
    if (codigo > std::numeric_limits<qint16>::max() || codigo < std::numeric_limits<qint16>::min())
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o código de vendedor %1 é grande demais."_s.arg(codigo));
    return static_cast<qint16>(codigo);
}

bool formaAvista(const QString& formaPG) {
    TemRegistro = AbreRS(u"SELECT avista FROM Finalizadoras WHERE Descricao = '"_s + formaPG + u"'"_s);
    const bool avista = TemRegistro && rs.field(esquema::finalizadoras::avista).text() == esquema::sim;
    rs.close();
    return avista;
}

// Letters, not UTF-16 units: half a character would be stored as a question mark.
QString primeirasLetras(const QString& texto, int quantas) {
    qsizetype fim = 0;
    for (int letra = 0; letra < quantas && fim < texto.size(); ++letra)
        fim += texto[fim].isHighSurrogate() ? 2 : 1;
    return texto.left(fim);
}

QString comandoCaixa(qint32 nrPedido, const QString& nomeCli, const QString& formaPG, Dinheiro valor,
                     const QString& conta) {
    const QString numero = Formata(Dinheiro(nrPedido), u"#000,000");
    return u"insert into caixa Set cd_cta='"_s + conta + u"', DataCx='"_s + TextoSQL(Hoje()) +
           u"', Historico= 'PEDIDO Nº "_s + numero + u"-"_s +
           SemBrancos(primeirasLetras(nomeCli, letrasDoNomeNoCaixa)) + u"', Valor="_s + valor.ponto() +
           u", Finaliza1='"_s + formaPG + u"', ValorFin1="_s + valor.ponto() + u", CodigoLanc='PED:"_s +
           numero + u"', NrCaixa=0, USUARIO='PAINEL PV'"_s;
}

} // namespace

void PainelFechamento::FechaPV(qint32 nrPedido, const QString& formaPG, Dinheiro valor, QDate vencto,
                               const QString& nomeCli) {
    const BusyPointer ponteiro;
    const QString numero = QString::number(nrPedido);
    // A name with an apostrophe must not stop the closing between stock and receivable.
    const QString nome = LimpaTexto(nomeCli);
    const QString hoje = TextoSQL(Hoje());

    TemRegistro =
        AbreRS(u"select * from orcamento where NrPedido="_s + numero + u" AND tipoOperacao = 'P'"_s);
    const qint16 vendedor = codigoVend(rs.field(esquema::orcamento::vendedor));
    const QString codigoCli = rs.field(esquema::orcamento::codigoCli).text();
    const QString hora = Agora().toString(u"HH:mm"_s);
    m_iniciadas.insert(nrPedido);
    if (!m_pafEcf)
        baixaEstoqueDaPV(nrPedido);
    rs.close();

    Executa(u" UPDATE orcamento SET SituacaoOrc='B', DataBaixa= '"_s + hoje + u"', Horario='"_s + hora +
            u"', status='B'"_s + u" WHERE NrPedido="_s + numero + u" AND tipoOperacao = 'P'"_s);
    Executa(u"Update orcamento_controle Set NrCaixa=0, Status='B', Fechamento='"_s + hoje + u" "_s + hora +
            u":00' WHERE NrPedido="_s + numero + u" AND tipoOperacao = 'P'"_s);
    const bool avista = formaAvista(formaPG);
    Executa(comandoReceber(nrPedido, codigoCli, nome, formaPG, valor, vencto, vendedor, avista));
    Executa(comandoCaixa(nrPedido, nome, formaPG, valor, m_contaCTB[contaDoCaixa]));
    Executa(u"UPDATE Empresa SET UltimaPV="_s + numero);
    m_iniciadas.remove(nrPedido);
    m_encerradas.insert(nrPedido);
}

// Walks the lines in rs; the deduction queries through a result of its own.
void PainelFechamento::baixaEstoqueDaPV(qint32 nrPedido) {
    const QString tela = u"FECHAMENTO DA PV Nº "_s + QString::number(nrPedido);
    for (; !rs.atEnd(); rs.moveNext()) {
        const QString codigo = rs.field(esquema::orcamento::codigo).text();
        if (!codigo.startsWith(esquema::notaDoPedido))
            BaixaEstoque(SemBrancos(codigo),
                         Dinheiro::dePonto(rs.field(esquema::orcamento::quantidade).text()), tela);
    }
}

QString PainelFechamento::comandoReceber(qint32 nrPedido, const QString& codigoCli, const QString& nomeCli,
                                         const QString& formaPG, Dinheiro valor, QDate vencto,
                                         qint16 vendedor, bool avista) const {
    const bool cartao = formaPG == esquema::cartao;
    const bool cheque = formaPG.first(qMin(formaPG.size(), esquema::cheque.size())) == esquema::cheque;
    const bool comoDinheiro =
        formaPG == esquema::outros || formaPG == esquema::ticket || formaPG == esquema::dinheiro || avista;
    const bool liquidadoNoVencimento = cartao || cheque;
    const bool emAberto = !liquidadoNoVencimento && !comoDinheiro;

    const QString hoje = TextoSQL(Hoje());
    const QString vence = liquidadoNoVencimento || emAberto ? TextoSQL(vencto) : hoje;
    const QString baixa = emAberto ? u", '1901-01-01', 0.00, 'A', '"_s
                                   : u", '"_s + vence + u"', "_s + valor.ponto() + u", 'B', '"_s;
    const QString conta = m_contaCTB[liquidadoNoVencimento || emAberto ? contaAReceber : contaDoCaixa];
    return u"INSERT INTO `areceber` (`CodigoCli`, `NomeCli`, `Emissao`, `Vencto`, `Valor`, `Historico`, "
           "`Nr_Pedido`, `DataBaixa`, `ValorPago`, `SitBaixa`, `TipoPag`, "_s +
           (cartao ? u"TipoCartao, "_s : QString()) + u"CodigoVend, CodigoMec, ContaCTB) VALUES ('"_s +
           codigoCli + u"', '"_s + nomeCli + u"', '"_s + hoje + u"', '"_s + vence + u"', "_s + valor.ponto() +
           u", 'REF.: PRÉ VENDA Nº"_s + QString::number(nrPedido) + u"', "_s + QString::number(nrPedido) +
           baixa + formaPG + u"', "_s + (cartao ? u"'C-', "_s : QString()) + QString::number(vendedor) +
           u", 0, '"_s + conta + u"')"_s;
}

} // namespace tarvessa

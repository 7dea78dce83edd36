// Turning DAVs into pre-sales, and the numbers they get.

#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "closing/ProgressoLote.h"
#include "closing/TravaDeNumeracao.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "ui/Guard.h"
#include "ui_PainelFechamento.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// An empty counter would give every document the same number and merge them all.
qint32 numeroDoContador(const odbc::Field& campo) {
    if (campo.isNull())
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           u"Tipos incompatíveis: o contador de documentos da empresa está vazio."_s);
    const qint64 numero = campo.integer();
    if (numero > std::numeric_limits<qint32>::max() || numero < std::numeric_limits<qint32>::min())
        throw RuntimeError(ErrorNumber::Overflow,
                           u"Estouro: o contador de documentos chegou a %1."_s.arg(numero));
    return static_cast<qint32>(numero);
}

qint32 proximaPv() {
    const TravaDeNumeracao trava;
    Executa(u"UPDATE empresa SET contadorPV = contadorPV+1"_s);
    TemRegistro = AbreRS(u"SELECT contadorPV FROM empresa"_s);
    const qint32 numero = numeroDoContador(rs.field(esquema::empresa::contadorPv));
    rs.close();
    return numero;
}

} // namespace

void PainelFechamento::Command2_Click() {
    if (!guarded(this, [this] { converteSelecionados(); })) {
        // Ticks and total show what is still to be converted.
        TotalSelecionado();
        return;
    }
    ui->Grid1->setRows(1);
    TotalSelecionado();
    ui->Command2->setEnabled(false);
    ui->Command3->setEnabled(true);
}

void PainelFechamento::converteSelecionados() {
    ProgressoLote::Lote lote(m_progresso, ui->Grid1->rows() - 1, u"DAV"_s);
    for (int linha = 1; linha < ui->Grid1->rows(); ++linha) {
        lote.linha(linha);
        if (!ui->Grid1->isTicked(linha))
            continue;
        converteDav(ValorInteiro(ui->Grid1->text(linha, colunas::Pedido)));
        ui->Grid1->setTicked(linha, false);
    }
}

void PainelFechamento::converteDav(qint32 numero) {
    const QString dav = QString::number(numero);
    if (!m_numerosDados.contains(numero))
        m_numerosDados.insert(numero, proximaPv());
    const QString pv = QString::number(m_numerosDados.value(numero));
    Executa(u"UPDATE orcamento SET TipoOperacao = 'P', nrPedido = '"_s + pv +
            u"',situacaoorc = 'A' WHERE nrpedido ="_s + dav + u" and TipoOperacao = 'D'"_s);
    Executa(u"UPDATE observacao set nrpedido="_s + pv + u" , tipoOperacao = 'P' WHERE nrpedido ="_s + dav +
            u" and TipoOperacao = 'D'"_s);
}

qint32 PainelFechamento::Orcamento_NumeroPedido(const QString& tipo) {
    const bool dav = tipo == esquema::dav;
    const TravaDeNumeracao trava;
    Executa(dav ? u"UPDATE empresa SET ultpedido = ultpedido+1"_s
                : u"UPDATE empresa SET contadorPV = contadorPV+1"_s);
    TemRegistro = AbreRS(u"SELECT ultpedido,contadorPV FROM empresa"_s);
    const qint32 numero =
        numeroDoContador(rs.field(dav ? esquema::empresa::ultPedido : esquema::empresa::contadorPv));
    rs.close();
    return numero;
}

} // namespace tarvessa

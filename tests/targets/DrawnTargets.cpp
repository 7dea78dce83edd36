#include "targets/DrawnTargets.h"

#include "support/PrivateServer.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

constexpr int quantasVendas = 1200;
constexpr int quantasDevolucoes = 300;
constexpr quint32 semente = 20240315;

QString decimal(qint64 v, int casas) {
    const qint64 unidade = casas == 3 ? 1000 : 100;
    return u"%1.%2"_s.arg(v / unidade).arg(v % unidade, casas, 10, QChar(u'0'));
}

struct Dia {
    bool noPeriodo;
    QString texto;
};

Dia sorteiaDia(QRandomGenerator& sorte) {
    if (sorte.bounded(4) == 0)
        return {false, sorte.bounded(2) == 0 ? u"2024-02-29"_s : u"2024-03-16"_s};
    return {true, u"2024-03-%1"_s.arg(sorte.bounded(1, 16), 2, 10, QChar(u'0'))};
}

QString comPontos(qint64 inteiro) {
    QString texto = QString::number(inteiro);
    for (qsizetype i = texto.size() - 3; i > 0; i -= 3)
        texto.insert(i, u'.');
    return texto;
}

QString quantidade(qint64 milesimos) {
    const QString inteiro = comPontos(milesimos / 1000);
    return milesimos % 1000 == 0 ? inteiro : inteiro + u",%1"_s.arg(milesimos % 1000, 3, 10, QChar(u'0'));
}

QString dinheiro(qint64 centavos) {
    return comPontos(centavos / 100) + u",%1"_s.arg(centavos % 100, 2, 10, QChar(u'0'));
}

QString percentual(qint64 parte, qint64 todo) {
    const qint64 centesimos = (parte * 20000 + todo) / (2 * todo);
    QString decimais = u"%1"_s.arg(centesimos % 100, 2, 10, QChar(u'0'));
    if (decimais.endsWith(u'0'))
        decimais.chop(1);
    return QString::number(centesimos / 100) + u',' + decimais + u'%';
}

} // namespace

DrawnTargets::Conta& DrawnTargets::Conta::operator+=(const Conta& b) {
    meta += b.meta;
    vendido += b.vendido;
    total += b.total;
    devolvido += b.devolvido;
    return *this;
}

DrawnTargets::DrawnTargets(PrivateServer& servidor) {
    QStringList linhas;
    for (int p = 0; p < produtos; ++p)
        linhas.append(u"('%1', '%2', 'S')"_s.arg(codigo(p), descricao(p)));
    servidor.execute(u"INSERT INTO produtos (codfabr, descricao, ativo) VALUES "_s + linhas.join(u','));
    sorteiaMetas(servidor);
    sorteiaVendas(servidor);
    sorteiaDevolucoes(servidor);
}

QString DrawnTargets::codigo(int produto) {
    return u"K%1"_s.arg(produto, 3, 10, QChar(u'0'));
}

QString DrawnTargets::descricao(int produto) {
    return u"ITEM %1"_s.arg(produto);
}

QStringList DrawnTargets::celulas(const QString& codigo, const QString& descricao, const Conta& conta) {
    const bool vendeu = conta.vendido > 0;
    return {codigo,
            descricao,
            quantidade(conta.meta),
            quantidade(conta.vendido),
            vendeu ? percentual(conta.vendido, conta.meta) : u"0,0%"_s,
            dinheiro(conta.total),
            quantidade(conta.devolvido),
            vendeu && conta.devolvido > 0 ? percentual(conta.devolvido, conta.vendido) : u"0,0%"_s};
}

// Two thirds of all pairs have a target.
void DrawnTargets::sorteiaMetas(PrivateServer& servidor) {
    QRandomGenerator sorte(semente);
    QStringList linhas;
    for (int v = 1; v <= vendedores; ++v)
        for (int p = 0; p < produtos; ++p) {
            if (sorte.bounded(3) == 0)
                continue;
            const qint64 meta = sorte.bounded(1, 300000);
            m_contas[{v, p}].meta = meta;
            linhas.append(u"(%1, '%2', %3)"_s.arg(v).arg(codigo(p), decimal(meta, 3)));
        }
    servidor.execute(u"INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) VALUES "_s +
                     linhas.join(u','));
}

void DrawnTargets::sorteiaVendas(PrivateServer& servidor) {
    QRandomGenerator sorte(semente + 1);
    QStringList notas;
    QStringList itens;
    for (int i = 1; i <= quantasVendas; ++i) {
        const int v = sorte.bounded(1, vendedores + 1);
        const int p = sorte.bounded(produtos);
        const qint64 vendido = sorte.bounded(1, 60000);
        const qint64 total = sorte.bounded(1, 500000);
        const Dia dia = sorteiaDia(sorte);
        const bool saida = sorte.bounded(6) > 0;
        const bool valida = sorte.bounded(6) > 0;
        notas.append(u"(%1, '1', %2)"_s.arg(i).arg(v));
        itens.append(u"(%1, '1', '%2', '%3', '%4', '%5', 'X', %6, %7)"_s.arg(
            QString::number(i), dia.texto, saida ? u"S"_s : u"E"_s, valida ? u"N"_s : u"S"_s, codigo(p),
            decimal(vendido, 3), decimal(total, 2)));
        const auto conta = m_contas.find({v, p});
        if (dia.noPeriodo && saida && valida && conta != m_contas.end()) {
            conta->second.vendido += vendido;
            conta->second.total += total;
        }
    }
    servidor.execute(u"INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor) VALUES "_s + notas.join(u','));
    servidor.execute(u"INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, codigo, "
                     "descricao, quantunit, totalvenda) VALUES "_s +
                     itens.join(u','));
}

void DrawnTargets::sorteiaDevolucoes(PrivateServer& servidor) {
    QRandomGenerator sorte(semente + 2);
    QStringList linhas;
    for (int i = 0; i < quantasDevolucoes; ++i) {
        const int v = sorte.bounded(1, vendedores + 1);
        const int p = sorte.bounded(produtos);
        const qint64 devolvido = sorte.bounded(1, 20000);
        const Dia dia = sorteiaDia(sorte);
        const bool baixada = sorte.bounded(5) > 0;
        linhas.append(u"('%1', %2, %3, '%4', '%5')"_s.arg(
            codigo(p), QString::number(v), decimal(devolvido, 3), baixada ? u"B"_s : u"A"_s, dia.texto));
        const auto conta = m_contas.find({v, p});
        if (dia.noPeriodo && baixada && conta != m_contas.end())
            conta->second.devolvido += devolvido;
    }
    servidor.execute(u"INSERT INTO Orcamento_Troca (codigo, Vendedor, quantidade, situacaoorc, databaixa) "
                     "VALUES "_s +
                     linhas.join(u','));
}

} // namespace tarvessa::test

#include "closing/Cenario.h"

#include "base/Datas.h"
#include "support/PrivateServer.h"

using namespace Qt::StringLiterals;

namespace tarvessa::teste {

namespace {

QString literal(const Valor& valor) {
    if (!valor)
        return u"NULL"_s;
    QString texto = *valor;
    texto.replace(u'\\', u"\\\\"_s).replace(u'\'', u"''"_s);
    return u'\'' + texto + u'\'';
}

QString valores(const QList<Valor>& colunas) {
    QStringList textos;
    for (const Valor& coluna : colunas)
        textos.append(literal(coluna));
    return u'(' + textos.join(u", "_s) + u')';
}

} // namespace

void Cenario::empresa(const Valor& contaCtb1, const Valor& pafEcf) {
    m_servidor.executa(u"INSERT INTO empresa (ContaCTB1, PAF_ECF) VALUES "_s + valores({contaCtb1, pafEcf}));
}

void Cenario::forma(const QString& descricao, const Valor& avista) {
    m_servidor.executa(u"INSERT INTO Finalizadoras (ID, Descricao, avista) "
                       "SELECT COALESCE(MAX(ID), 0) + 1, %1, %2 FROM Finalizadoras"_s.arg(literal(descricao),
                                                                                          literal(avista)));
}

void Cenario::formas() {
    for (const QString& descricao : {u"DINHEIRO"_s, u"PIX"_s})
        forma(descricao, u"S"_s);
    for (const QString& descricao :
         {u"CARTÃO"_s, u"CHEQUE"_s, u"CHEQUE PRÉ"_s, u"TICKET"_s, u"BOLETO"_s, u"OUTROS"_s})
        forma(descricao, u"N"_s);
}

void Cenario::cliente(const Cliente& cliente) {
    m_servidor.executa(
        u"INSERT INTO clientes (codigo, nome, cidade, prazo, formapg, colunapreco, CNPJ_CPF) VALUES "_s +
        valores({cliente.codigo, cliente.nome, cliente.cidade, cliente.prazo, cliente.formaPg,
                 cliente.colunaPreco, cliente.cnpjCpf}));
}

void Cenario::produto(const Produto& produto) {
    m_servidor.executa(u"INSERT INTO produtos (codfabr, quantidade, quantidade2) VALUES "_s +
                       valores({produto.codigo, produto.estoque, produto.estoque2}));
}

void Cenario::ficha(const QString& composto, const QList<Componente>& componentes) {
    for (const Componente& componente : componentes)
        m_servidor.executa(u"INSERT INTO FichaTecnica (codigoprod, codigo, quantidade) VALUES "_s +
                           valores({composto, componente.codigo, componente.quantidade}));
}

void Cenario::documento(const Documento& documento) {
    const QString pedido = QString::number(documento.pedido);
    const QString abertura = TextoSQL(Hoje().addDays(-documento.diasAtras));
    QStringList linhas;
    for (const Linha& linha : documento.linhas)
        linhas.append(
            valores({pedido, documento.tipo, documento.situacao, documento.cliente, documento.nomeVendedor,
                     documento.vendedor, abertura, linha.codigo, linha.quantidade, linha.total}));
    m_servidor.executa(
        u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, Vendedor, "
        "dataabertura, codigo, quantidade, totalped) VALUES "_s +
        linhas.join(u", "_s) + u"; INSERT INTO orcamento_controle (NrPedido, tipoOperacao) VALUES "_s +
        valores({pedido, documento.tipo}));
}

void Cenario::basico() {
    empresa();
    formas();
    cliente({.codigo = u"C1"_s});
    produto({.codigo = u"P1"_s});
}

// Only tables that hold something: emptying one costs the server many times what looking into it does.
void Cenario::esvazia() {
    for (const QString& tabela : tabelas())
        if (!m_servidor.consulta(u"SELECT 1 FROM `%1` LIMIT 1"_s.arg(tabela)).isEmpty())
            m_servidor.executa(u"TRUNCATE TABLE `%1`"_s.arg(tabela));
}

QMap<QString, QList<QStringList>> Cenario::retrato() {
    QMap<QString, QList<QStringList>> todas;
    for (const QString& tabela : tabelas())
        todas.insert(tabela, m_servidor.consulta(u"SELECT * FROM `%1` ORDER BY 1, 2"_s.arg(tabela)));
    return todas;
}

QStringList Cenario::tabelas() {
    QStringList nomes;
    for (const QStringList& linha : m_servidor.consulta(u"SHOW TABLES"_s))
        nomes.append(linha[0]);
    return nomes;
}

} // namespace tarvessa::teste

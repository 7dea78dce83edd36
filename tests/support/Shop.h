#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarvessa::test {

class PrivateServer;

/// A column's value as text; nothing for NULL.
using Valor = std::optional<QString>;

/// A customer: by default a company that buys on a 30-day bill.
struct Cliente {
    QString codigo;
    Valor nome = QStringLiteral("PADARIA MODELO");
    Valor cidade = QStringLiteral("CAMPINAS");
    Valor prazo = QStringLiteral("30");
    Valor formaPg = QStringLiteral("BOLETO");
    Valor colunaPreco = QStringLiteral("1");
    Valor cnpjCpf = QStringLiteral("12.345.678/0001-95");
    Valor fantasia = {};
    QString outros = {}; ///< further assignments, such as "ativocad='N'"
};

/// A product with its shop stock, its second stock and the prices of the four tables.
struct Produto {
    QString codigo;
    Valor estoque = QStringLiteral("100");
    Valor estoque2 = QStringLiteral("0");
    Valor descricao = {};
    QList<Valor> precos = {};
};

/// A component of a technical sheet, quantity per unit of the composed product.
struct Componente {
    QString codigo;
    Valor quantidade = QStringLiteral("1");
};

/// A line of a document. With a unit price the total is quantity times price, rounded to cents.
struct Linha {
    QString codigo = QStringLiteral("P1");
    Valor quantidade = QStringLiteral("1");
    Valor total = QStringLiteral("10.00");
    Valor unitario = {};
};

/// A line of that quantity at that unit price.
inline Linha aoPreco(const QString& codigo, const QString& quantidade, const QString& unitario) {
    return {.codigo = codigo, .quantidade = quantidade, .unitario = unitario};
}

/// A sales document with its control row: by default an open pre-sale of yesterday.
struct Documento {
    int pedido;
    Valor cliente = QStringLiteral("C1");
    QString tipo = QStringLiteral("P");
    QString situacao = QStringLiteral("A");
    Valor nomeVendedor = QStringLiteral("ANA");
    Valor vendedor = QStringLiteral("7");
    int diasAtras = 1; ///< before the program's own today
    QList<Linha> linhas = {Linha{}};
    bool controle = true;
};

/// A fiscal line, as far as the reports look at one; amounts in point form.
struct LinhaFiscal {
    int nota = 1;
    QString data = QStringLiteral("2024-02-10");
    QString entrsai = QStringLiteral("S");
    QString cfop = QStringLiteral("5102");
    QString codigo = QStringLiteral("P1");
    QString descricao = QStringLiteral("PÃO FRANCÊS");
    QString totalVenda = QStringLiteral("10.00");
    QString valorItem = QStringLiteral("10.00");
    QString cnpj = QStringLiteral("11");
    QString cancelado = QStringLiteral("N");
    QString serie = QStringLiteral("1");
};

/// A line of an invoice of its own; by default one that the targets' progress counts.
struct Venda {
    int vendedor;
    Valor produto;
    Valor quantidade = QStringLiteral("1");
    Valor total = QStringLiteral("10.00");
    QString emissao = QStringLiteral("2024-03-10");
    QString entrSai = QStringLiteral("S");
    QString cancelado = QStringLiteral("N");
};

/// Goods returned by a customer; by default settled ones.
struct Devolucao {
    int vendedor;
    QString produto;
    Valor quantidade = QStringLiteral("1");
    QString baixa = QStringLiteral("2024-03-10");
    QString situacao = QStringLiteral("B");
    Valor cliente = {};
    Valor custo = QStringLiteral("1");
};

/// Writes the rows of a test into the database of a private server, and reads what became of them. Texts may
/// hold any character; assignments (`outros`) go into the statement as they are. All of it raises TestError
/// when the server refuses.
class Shop {
  public:
    explicit Shop(PrivateServer& server) : m_server(server) {}

    /// The row of `empresa`.
    void empresa(const Valor& contaCtb1 = QStringLiteral("1.01/1.02/2.01/2.02/1.05"),
                 const Valor& pafEcf = QStringLiteral("NAO"));

    /// One payment method; its ID follows the last one's.
    void forma(const QString& descricao, const Valor& avista);

    /// The usual methods: DINHEIRO and PIX are cash methods, the others are not.
    void formas();

    void cliente(const Cliente& cliente);
    void produto(const Produto& produto);
    /// A product by its description, with the columns' own defaults otherwise.
    void produto(const QString& codigo, const Valor& descricao, const QString& outros = {});
    /// So many products "PRODUTO 001" and so on, codes from 1 in 13 digits.
    void produtos(int quantidade);
    void ficha(const QString& composto, const QList<Componente>& componentes);
    void documento(const Documento& documento);
    /// One open pre-sale line of PV 1, one unit at 1.00 unless `outros` says otherwise; gives its id.
    QString linhaAberta(const QString& codigo, const QString& cliente, const QString& outros = {});

    void vendedor(int codigo, const Valor& nome, const QString& ativo = QStringLiteral("S"));
    /// A seller with two commission rates.
    void vendedor(int codigo, const Valor& nome, const Valor& comissEsp1, const Valor& comissEsp2);
    void meta(int vendedor, const QString& produto, const Valor& quantidade);
    void nota(int numero, int vendedor, const QString& razSoc, const QString& serie = QStringLiteral("1"));
    void linhaFiscal(const LinhaFiscal& linha);
    void venda(const Venda& venda);
    void devolucao(const Devolucao& devolucao);

    /// The company, the usual methods, customer C1 and product P1: what a document of defaults needs.
    void basico();
    /// The company with its counters (the last PV 100, the last order 500) and the methods DINHEIRO, CARTÃO,
    /// BOLETO, PIX and CHEQUE PRÉ: what conversion, editing and the document view need.
    void basicoDosDocumentos();
    /// Sellers ANA (1) and BRUNO (2), products PAO FRANCES (P1), PAO DOCE (P2), LEITE (P3): what targets
    /// need.
    void basicoDasMetas();
    /// Some hundred customers, sellers, products, invoices, returns and exchanges in and around February
    /// 2024, the same for the same seed.
    void movimento(quint32 seed);

    /// Empties every table and starts its generated keys anew.
    void esvazia();

    /// Every row of every table, by table name.
    QMap<QString, QList<QStringList>> retrato();

    /// Every target as seller, product, quantity, sold, value, returned; in the order of seller and product.
    QList<QStringList> metas();

    /// The staged rows in the order written: codigo1, codigo2, texto1 to texto7.
    QList<QStringList> estagio();

    /// One value; a null text for NULL, "(no row)" for none.
    QString valor(const QString& sql);

  private:
    QStringList tabelas();

    PrivateServer& m_server;
    int m_nota = 0;
};

} // namespace tarvessa::test

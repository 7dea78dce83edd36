#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarvessa::teste {

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
};

/// A product with its shop stock and its second stock.
struct Produto {
    QString codigo;
    Valor estoque = QStringLiteral("100");
    Valor estoque2 = QStringLiteral("0");
};

/// A component of a technical sheet, quantity per unit of the composed product.
struct Componente {
    QString codigo;
    Valor quantidade = QStringLiteral("1");
};

/// A line of a document.
struct Linha {
    QString codigo = QStringLiteral("P1");
    Valor quantidade = QStringLiteral("1");
    Valor total = QStringLiteral("10.00");
};

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
};

/// Builds the rows of a test in the database of a private server, and takes pictures of what became of them.
/// All of it raises TestError when the server refuses.
class Cenario {
  public:
    explicit Cenario(PrivateServer& servidor) : m_servidor(servidor) {}

    /// The row of `empresa`.
    void empresa(const Valor& contaCtb1 = QStringLiteral("1.01/1.02/2.01/2.02/1.05"),
                 const Valor& pafEcf = QStringLiteral("NAO"));

    /// One payment method; its ID follows the last one's.
    void forma(const QString& descricao, const Valor& avista);

    /// The usual methods: DINHEIRO and PIX are cash methods, the others are not.
    void formas();

    void cliente(const Cliente& cliente);
    void produto(const Produto& produto);
    void ficha(const QString& composto, const QList<Componente>& componentes);
    void documento(const Documento& documento);

    /// The company, the usual methods, customer C1 and product P1: what a document of defaults needs.
    void basico();

    /// Empties every table and starts its generated keys anew.
    void esvazia();

    /// Every row of every table, by table name.
    QMap<QString, QList<QStringList>> retrato();

  private:
    QStringList tabelas();

    PrivateServer& m_servidor;
};

} // namespace tarvessa::teste

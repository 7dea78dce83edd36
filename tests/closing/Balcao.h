#pragma once

#include "closing/PainelFechamento.h"
#include "support/PrivateServer.h"
#include "support/StatementLog.h"
#include "ui/grid/Grid.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <memory>
#include <optional>

namespace tarvessa::teste {

/// One line of a document: product code, quantity and unit price in point form.
struct Item {
    QString codigo;
    QString quantidade;
    QString unitario;
};

/// The real panel on a database of its own, and hands to work it: clicks go to the middle of the cell, keys
/// to whatever has the focus. Rows count from 1, as the grid's do.
class Balcao {
  public:
    Balcao();
    ~Balcao();

    /// An empty database but for the company (counters 100 and 500) and the payment methods DINHEIRO and PIX
    /// (cash), CARTÃO, BOLETO and CHEQUE PRÉ.
    void zera();

    void cliente(const QString& codigo, const QString& nome, int prazo, const QString& forma,
                 const QString& tabela);
    /// Prices of the four tables in point form, or "NULL".
    void produto(const QString& codigo, const QStringList& precos);
    /// An open document of today, sold by the seller to the customer.
    void documento(const QString& tipo, int numero, const QString& cliente, const QString& vendedor,
                   const QList<Item>& itens);
    /// A pre-sale of one line, which the price check leaves alone.
    void preVenda(int numero, const QString& cliente) {
        documento(QStringLiteral("P"), numero, cliente, QStringLiteral("ANA"),
                  {{QStringLiteral("X"), QStringLiteral("1"), QStringLiteral("10")}});
    }

    /// Starts the panel, shows it and waits until it has the focus. The log begins after that.
    void abre();
    /// Closes panel and connection.
    void fecha();

    PainelFechamento& painel() { return *m_painel; }
    Grid* grade() const { return m_painel->findChild<Grid*>(QStringLiteral("Grid1")); }
    QPushButton* botao(const char* nome) const;
    QLineEdit* editor() const { return m_painel->findChild<QLineEdit*>(QStringLiteral("TextGrid")); }
    QComboBox* combo() const { return m_painel->findChild<QComboBox*>(QStringLiteral("Combo1")); }
    QString celula(int linha, int coluna) const { return grade()->text(linha, coluna); }
    /// The total of the selected rows as shown.
    QString total() const { return m_painel->findChild<QLineEdit*>(QStringLiteral("Text1"))->text(); }
    /// True when the grid has the focus, or gets it back as soon as the window does.
    bool focoNaGrade() const { return m_painel->focusWidget() == grade(); }
    /// The row that shows the document; 0 for none.
    int linhaDe(int numero) const;

    /// Where the cell lies on the window that holds grid and editors.
    QRect lugar(int linha, int coluna) const;
    void clica(int linha, int coluna);
    void clica(const char* nomeDoBotao);
    void duploClique(int linha, int coluna);
    static void tecla(Qt::Key tecla, Qt::KeyboardModifiers modificador = Qt::NoModifier);
    static void digita(const QString& texto);

    /// What the server received since `abre` or `marca`.
    QStringList textos() { return m_log->textos(); }
    void marca() { m_log->marca(); }

    /// One value; a null text for NULL, "(nenhuma linha)" for none.
    QString valor(const QString& sql);
    QList<QStringList> linhas(const QString& sql) { return servidor.consulta(sql); }

    PrivateServer servidor;

  private:
    QPoint naJanela(int linha, int coluna) const;

    std::unique_ptr<PainelFechamento> m_painel;
    std::optional<StatementLog> m_log;
};

} // namespace tarvessa::teste

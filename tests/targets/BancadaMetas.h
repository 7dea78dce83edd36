#pragma once

#include "support/PrivateServer.h"

#include <QList>
#include <QSize>
#include <QStringList>
#include <QTemporaryDir>
#include <QWidget>

#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;

namespace tarvessa {
class Grid;
class MetasQuadro;
class ReportControl;
} // namespace tarvessa

namespace tarvessa::teste {

/// A column's value as text; nothing for NULL.
using Valor = std::optional<QString>;

/// A line of an invoice of its own; by default one that the progress counts.
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
};

/// A workbench for the targets screen: a database, the clock at 15/03/2024, the report control, and the
/// screen itself, shown and active.
class BancadaMetas {
  public:
    BancadaMetas();
    ~BancadaMetas();
    BancadaMetas(const BancadaMetas&) = delete;
    BancadaMetas& operator=(const BancadaMetas&) = delete;

    PrivateServer& servidor() { return m_servidor; }

    /// Closes the screen and its connection, empties the database, makes the report control anew.
    void arruma();

    // Rows
    void vendedor(int codigo, const Valor& nome, const QString& ativo = QStringLiteral("S"));
    void produto(const QString& codigo, const Valor& descricao);
    void meta(int vendedor, const QString& produto, const Valor& quantidade);
    void venda(const Venda& venda);
    void devolucao(const Devolucao& devolucao);

    /// Sellers ANA (1) and BRUNO (2), products PAO FRANCES (P1), PAO DOCE (P2), LEITE (P3).
    void basico();

    /// Every target as seller, product, quantity, sold, value, returned; in the order of seller and product.
    QList<QStringList> metas();

    /// The staged rows in the order written: codigo1, codigo2, texto1 to texto7.
    QList<QStringList> estagio();

    // The screen
    /// A size at which all columns can be seen; the display of the tests is smaller than usual desktops.
    static constexpr QSize telaGrande{940, 560};

    void abre();
    void fecha();
    MetasQuadro* tela() const { return m_tela.get(); }
    ReportControl* relatorio() const { return m_relatorio.get(); }

    template <typename Controle = QWidget>
    Controle* controle(const QString& nome) const {
        return janela()->findChild<Controle*>(nome);
    }
    QLineEdit* caixa(const QString& nome) const;
    QComboBox* lista(const QString& nome) const;
    Grid* grade(const QString& nome) const;

    /// The product code that a product box holds.
    QString tag(const QString& nome) const;

    /// Texts of a data row.
    QStringList linha(const QString& grade, int linha) const;
    QList<QStringList> linhas(const QString& grade) const;

    /// The row of a product on a grid where it stands once: rows come in the database's order. 0 for none.
    int linhaDe(const QString& grade, const QString& codigo) const;

    // As the operator does it
    /// A key to the control that has the focus, and what it leads to.
    void tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores = Qt::NoModifier) const;

    /// Types a text into the control that has the focus.
    void digita(const QString& texto) const;

    /// Puts a text in the place of the focused box's own, by the clipboard.
    void cola(const QString& texto) const;

    /// Chooses the item of the list that begins with `inicio`, by key.
    void escolhe(const QString& lista, const QString& inicio) const;

    /// Enters a product into the box and leaves it with Enter.
    void entraProduto(const QString& caixa, const QString& texto) const;

    /// A left click on a cell or a button.
    void clica(const QString& grade, int linha, int coluna) const;
    void aperta(const QString& botao) const;

    /// Goes to a tab by its shortcut; 0 or 1.
    void vaiParaAba(int aba) const;

    /// Types both bounds, dd/mm/yyyy.
    void periodo(const QString& inicio, const QString& fim) const;

    /// The name of the control that has the focus; empty for none.
    static QString foco();

    /// Lets everything happen that is under way; a box that closed gives the screen back its activity, as the
    /// desktop would do.
    void processa() const;

  private:
    QWidget* janela() const;

    QTemporaryDir m_pasta;
    PrivateServer m_servidor;
    std::unique_ptr<ReportControl> m_relatorio;
    std::unique_ptr<MetasQuadro> m_tela;
    int m_nota = 0;
};

} // namespace tarvessa::teste

#pragma once

#include "support/PrivateServer.h"
#include "support/StatementLog.h"

#include <QString>

class QWidget;

namespace tarvessa {
class Grid;
}

namespace tarvessa::teste {

/// A workbench for the product screens: a database with one Empresa row, the program's connection to it, and
/// what the server received.
class Balcao {
  public:
    Balcao();
    ~Balcao();
    Balcao(const Balcao&) = delete;
    Balcao& operator=(const Balcao&) = delete;

    PrivateServer& servidor() { return m_servidor; }

    /// Back to an empty database with its Empresa row, no statement seen.
    void arruma();

    /// Ends the program's connection and opens it anew.
    void reconecta();

    /// One active product; `outros` are further assignments, such as "Venda=2.5".
    void produto(const QString& codigo, const QString& descricao, const QString& outros = {});

    /// So many products "PRODUTO 001" and so on, codes from 1 in 13 digits.
    void produtos(int quantidade);

    /// One open pre-sale line, one unit at 1.00 unless `outros` says otherwise; gives its id.
    QString linha(const QString& codigo, const QString& cliente, const QString& outros = {});
    void cliente(const QString& codigo, const QString& nome, const QString& outros = {});

    /// The statements since the last call or `arruma`.
    QStringList comandos();

    /// Forgets the statements so far.
    void marca() { m_log.marca(); }

  private:
    PrivateServer m_servidor;
    StatementLog m_log;
};

/// Shows a form and gives it the focus as a window manager would.
bool mostra(QWidget* form);

/// A real left click on a cell; row 0 is the header.
void clica(Grid* grade, int linha, int coluna);

/// Texts of one data row.
QStringList celulas(Grid* grade, int linha);

/// Puts a text into the focused control through the clipboard.
void cola(QWidget* controle, const QString& texto);

} // namespace tarvessa::teste

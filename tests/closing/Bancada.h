#pragma once

#include "closing/Cenario.h"
#include "support/PrivateServer.h"

#include <QMessageBox>
#include <QTemporaryDir>

#include <memory>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace tarvessa {
class Grid;
class PainelFechamento;
} // namespace tarvessa

namespace tarvessa::teste {

/// The messages of a closing.
namespace mensagens {
extern const QString nadaSelecionado;
extern const QString lembrete;
extern const QString comErros;
extern const QString sucesso;
extern const QString semRegistro;
extern const QString semConexao;
/// What every error report says, and what it adds when the connection is gone.
extern const QString erroDeExecucao;
extern const QString inicieNovamente;
} // namespace mensagens

/// A workbench for the closing panel: a database, the clock at 15/03/2024 14:07:09, the program's folder in a
/// temporary place, a desktop without a text viewer, and the panel itself.
class Bancada {
  public:
    Bancada();
    ~Bancada();
    Bancada(const Bancada&) = delete;
    Bancada& operator=(const Bancada&) = delete;

    PrivateServer& servidor() { return m_servidor; }
    Cenario& cenario() { return m_cenario; }

    /// Ends the panel, its connection and any text viewer, and empties database and folder.
    void arruma();

    /// Starts the program up as main() does. True when Form_Load said so; the panel is then shown and active.
    bool abre();

    /// Ends the panel and its connection.
    void fecha();

    // The panel's controls; the panel must be open.
    PainelFechamento* painel() const { return m_painel.get(); }
    Grid* grade() const;
    QPushButton* botao(const QString& nome) const;
    QComboBox* formas() const;
    QString total() const;

    /// Texts of one data row, from column 0 to 10, and of one column over all data rows.
    QStringList linha(int linha) const;
    QStringList coluna(int coluna) const;

    /// A real left click on a cell; row 0 is the header.
    void clica(int linha, int coluna) const;
    void duploClique(int linha, int coluna) const;

    /// A real click on an enabled button.
    void aperta(const QString& nome) const;

    // What the program left in its folder
    QString pastaDoPrograma() const { return m_pasta.filePath(QStringLiteral("programa")); }
    QString caminhoDoLog() const { return pastaDoPrograma() + QStringLiteral("/LogFechamento.txt"); }

    /// The closing log byte for byte; null when there is none.
    QByteArray log() const;

    /// What a log with these lines after its header is, byte for byte.
    static QByteArray logCom(const QStringList& linhas);

    /// The text shown by the program's own text viewer; null when it is not open.
    static QString textoDoVisualizador();

    /// The folder in which the program finds what it starts: empty, so that it finds nothing.
    QString pastaDeComandos() const { return m_pasta.filePath(QStringLiteral("comandos")); }

  private:
    static void fechaVisualizadores();

    QTemporaryDir m_pasta;
    PrivateServer m_servidor;
    Cenario m_cenario;
    QByteArray m_caminhoAnterior;
    std::unique_ptr<PainelFechamento> m_painel;
};

} // namespace tarvessa::teste

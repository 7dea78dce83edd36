#pragma once

#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <functional>

namespace tarvessa::teste {

/// Answers the modal windows that a test is about to cause, in the order in which they were
/// announced, while the code under test sits in their exec(). Create one per test, announce, act,
/// then check `confere()`. A window that nobody announced is recorded and closed, so that the test
/// fails instead of hanging.
class ModalHelper : public QObject {
    Q_OBJECT

  public:
    /// A message box that came up.
    struct Caixa {
        QString titulo;
        QMessageBox::Icon icone;
        QString texto;
        QString informativo;
        QString detalhes;
        QMessageBox::StandardButtons botoes;
    };

    ModalHelper();

    /// Announces a message box with exactly this text and the button to click; NoButton for Escape.
    void espera(const QString& texto, QMessageBox::StandardButton resposta);

    /// Announces a message box whose text, informative text or details contain `trecho`.
    void esperaContendo(const QString& trecho, QMessageBox::StandardButton resposta);

    /// Announces a modal window that is no message box. `acao` operates it and brings about its end;
    /// boxes that it causes are announced after it. A window still open after `acao` is an error.
    void aoAbrir(std::function<void(QWidget*)> acao);

    /// Every message box so far, announced or not, in order.
    QList<Caixa> caixas() const { return m_caixas; }

    /// Empty when exactly the announced windows came, in order, and all had the buttons asked for;
    /// otherwise what went wrong first.
    QString confere() const;

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    struct Anunciada {
        enum class Tipo { CaixaIgual, CaixaContendo, Janela } tipo;
        QString texto;
        QMessageBox::StandardButton resposta;
        std::function<void(QWidget*)> acao;
    };

    void observa();
    void trata(QWidget* janela);
    void trataCaixa(QMessageBox* caixa);
    void trataJanela(QWidget* janela);
    void fecha(QWidget* janela);
    void anotaErro(const QString& erro);
    static bool corresponde(const Anunciada& anunciada, const Caixa& caixa);

    QTimer m_relogio;
    QList<Anunciada> m_anunciadas;
    QList<Caixa> m_caixas;
    QList<QPointer<QWidget>> m_emTratamento; // until they hide
    QString m_erro;
};

} // namespace tarvessa::teste

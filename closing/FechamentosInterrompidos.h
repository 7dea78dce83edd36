#pragma once

#include "closing/InterruptedClosings.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FechamentosInterrompidos;
}

namespace tarvessa {

/// The closings that were cut, on whatever station: what each has written and what is missing, to be
/// concluded or left alone one by one. Writes what a closing writes, and each conclusion to `LogRetomada.txt`
/// in the program's folder.
class FechamentosInterrompidos : public QDialog {
    Q_OBJECT

  public:
    /// `since` is the first day of the listed period.
    FechamentosInterrompidos(QDate since, const ClosingSettings& settings, QWidget* parent);
    ~FechamentosInterrompidos() override;

    /// Asks the database. Raises RuntimeError.
    void carrega();

    /// How many there are, conversions included.
    int quantidade() const;

    /// True when anything was concluded.
    bool concluiu() const { return m_concluded; }

  private:
    void mostraLista();
    void mostraAtual();
    void Command1_Click();
    void Command2_Click();
    void conclui(const InterruptedClosing& shown);
    void concluiConversao(const interruptedclosings::StrandedNotes& shown);
    bool confirma(const InterruptedClosing& shown);
    const InterruptedClosing* fechamentoAtual() const;
    const interruptedclosings::StrandedNotes* conversaoAtual() const;

    std::unique_ptr<Ui::FechamentosInterrompidos> ui;
    QDate m_since;
    const ClosingSettings& m_settings;
    QList<InterruptedClosing> m_closings;
    QList<interruptedclosings::StrandedNotes> m_conversions;
    bool m_concluded = false;
    QSet<qint32>
        m_leftAlone; // numbers the operator has decided to leave as they are, until the window closes
};

} // namespace tarvessa

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QStringList>

class QMessageBox;
class QPushButton;

namespace tarvessa {
class FechamentosInterrompidos;
class MetasQuadro;
class PainelFechamento;
} // namespace tarvessa

namespace tarvessa::test {

/// An operator in front of the panel: presses what he is told to, answers every box with its first choice,
/// concludes whatever the window of interrupted closings shows, and computes the targets when their board
/// opens.
class Operator : public QObject {
    Q_OBJECT

  public:
    explicit Operator(PainelFechamento& panel);

    /// Runs one command: "press" and a button's name, "interrupted" or "targets". Gives what the operator
    /// saw: "boxes" (texts), "rows" (documents listed), "enabled" (buttons that can be pressed), "waiting"
    /// (the status bar tells of interrupted closings), "unclear" (interrupted closings that the window does
    /// not conclude).
    QJsonObject run(const QStringList& command);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void answer(QMessageBox* box);
    void conclude(FechamentosInterrompidos* window);
    void compute(MetasQuadro* board);
    bool hasStopped() const;
    static void closeViewers();

    PainelFechamento& m_panel;
    QStringList m_boxes;
    QStringList m_unclear;
};

} // namespace tarvessa::test

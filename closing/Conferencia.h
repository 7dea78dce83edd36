#pragma once

#include "closing/ClosingRehearsal.h"
#include "ui/BusyPointer.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class Conferencia;
}

namespace tarvessa {

/// What the batch would do with each listed pre-sale at this moment. Asks the database in slices between
/// which the window lives, so that Escape can end it; writes nothing.
class Conferencia : public QDialog {
    Q_OBJECT

  public:
    /// The list in the order of the batch; the row of `pedido` becomes the current one.
    Conferencia(QList<ListedPv> pvs, ClosingRehearsal rehearsal, QString pedido, QWidget* parent);
    ~Conferencia() override;

    /// The number of the pre-sale that the operator went to; empty when the window was just closed.
    QString chosenPedido() const { return m_chosen; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    enum class End { Complete, Cancelled, Failed };

    void setUpGrids();
    void shareKeys();
    bool keyInGrid(const QWidget* control, int key);
    void rehearseSlice();
    void finish(End end);
    void showSituation(End end);
    void showTotals();
    void showList();
    void showDetail();
    void mark(int row, const RehearsedPv& rehearsed);
    void goToPv();
    void escape();
    bool isRunning() const { return m_pointer.has_value(); }

    std::unique_ptr<Ui::Conferencia> ui;
    QList<ListedPv> m_pvs;
    ClosingRehearsal m_rehearsal;
    QList<RehearsedPv> m_rehearsed; // the first ones of the list
    QTimer m_slice;
    std::optional<BusyPointer> m_pointer; // while it asks
    QString m_pedido;                     // the current row's, over a change of the filter
    QString m_chosen;
};

} // namespace tarvessa

#pragma once

#include <QLabel>

namespace tarvessa {

/// Shows a label while it lives, painted at once although the form is busy.
class BusyLabel {
  public:
    explicit BusyLabel(QLabel* label) : m_label(label) {
        m_label->show();
        m_label->repaint();
    }
    ~BusyLabel() { m_label->hide(); }
    BusyLabel(const BusyLabel&) = delete;
    BusyLabel& operator=(const BusyLabel&) = delete;

    /// Hides the label and lets it keep its place in the form; called once when the form is made.
    static void prepare(QLabel* label) {
        QSizePolicy policy = label->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        label->setSizePolicy(policy);
        label->hide();
    }

  private:
    QLabel* m_label;
};

} // namespace tarvessa

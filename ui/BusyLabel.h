#pragma once

#include <QLabel>
#include <QLayout>

namespace tarvessa {

/// Tells the operator by a label that the form is busy, for as long as it lives. The label is painted at
/// once, because nothing else will be until the work is done.
class BusyLabel {
  public:
    /// Shows a label that is otherwise hidden.
    explicit BusyLabel(QLabel* label) : BusyLabel(label, label->text()) {}

    /// Shows `text` on the label; afterwards it has its caption again.
    BusyLabel(QLabel* label, const QString& text)
        : m_label(label), m_caption(label->text()), m_wasHidden(label->isHidden()) {
        m_label->setText(text);
        m_label->show();
        // The text may need more room than the caption.
        if (text != m_caption && m_label->parentWidget()->layout())
            m_label->parentWidget()->layout()->activate();
        m_label->repaint();
    }
    ~BusyLabel() {
        m_label->setText(m_caption);
        m_label->setHidden(m_wasHidden);
    }
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
    QString m_caption;
    bool m_wasHidden;
};

} // namespace tarvessa

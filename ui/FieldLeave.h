#pragma once

#include <QObject>

class QWidget;

namespace tarvessa {

/// Tells when a field is left: the focus moves to another control of the same form, by key or mouse. The
/// field is not left when the focus goes to a message box, to a drop-down or popup of the field, to another
/// window or program, or when the form closes.
class FieldLeave : public QObject {
    Q_OBJECT

  public:
    /// Watches `field`, which owns this object.
    explicit FieldLeave(QWidget* field);

  Q_SIGNALS:
    void left();

  private:
    void focusChanged(QWidget* old, QWidget* now);

    QWidget* m_field;
};

} // namespace tarvessa

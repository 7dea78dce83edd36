#pragma once

#include <QObject>

class QWidget;

namespace tarvessa {

/// Tells when a field is left: the focus went to another control of the same form, by key or mouse. A message
/// box, a drop-down or popup of the field, another window, another program or the closing of the form is no
/// leaving.
class FieldLeave : public QObject {
    Q_OBJECT

  public:
    /// Watches `field` for as long as it lives.
    explicit FieldLeave(QWidget* field);

  Q_SIGNALS:
    void left();

  private:
    void focusChanged(QWidget* old, QWidget* now);

    QWidget* m_field;
};

} // namespace tarvessa

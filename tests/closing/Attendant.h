#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>

class QWidget;

namespace tarvessa::test {

/// Attends to whatever comes up while the program works, as long as it lives: answers every message box, with
/// Yes where it is a question, and operates the modal windows that it has been told about. Any other window
/// is closed. For tests in which nobody can say beforehand what will come; see ModalHelper for the others.
class Attendant : public QObject {
  public:
    using Action = std::function<void(QWidget*)>;

    Attendant();

    /// Operates windows of this object name from now on; a window still open after `action` is closed.
    void operate(const QString& name, const Action& action) { m_actions.insert(name, action); }

    /// The texts of the boxes answered so far with all that they tell beside, and the object names of the
    /// windows operated or closed.
    const QStringList& texts() const { return m_texts; }
    const QStringList& windows() const { return m_windows; }

    /// Whether a box has come that tells `part`.
    bool hasSeen(const QString& part) const { return m_texts.join(u'\n').contains(part); }

    void forget();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void attend(QWidget* window);

    QHash<QString, Action> m_actions;
    QStringList m_texts;
    QStringList m_windows;
};

} // namespace tarvessa::test

#pragma once

#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <functional>

namespace tarvessa::test {

/// Answers the modal windows that a test is about to cause, in the order in which they were
/// announced, while the code under test sits in their exec(). Create one per test, announce, act,
/// then check `problem()`. A window that nobody announced is recorded and closed, so that the test
/// fails instead of hanging.
class ModalHelper : public QObject {
    Q_OBJECT

  public:
    /// A message box that came up.
    struct Box {
        QString title;
        QMessageBox::Icon icon;
        QString text;
        QString informative;
        QString details;
        QMessageBox::StandardButtons buttons;
    };

    ModalHelper();

    /// Announces a message box with exactly this text and the button to click; NoButton for Escape.
    void expect(const QString& text, QMessageBox::StandardButton answer);

    /// Announces a message box whose text, informative text or details contain `part`.
    void expectContaining(const QString& part, QMessageBox::StandardButton answer);

    /// Announces a modal window that is no message box, or a report preview. `action` operates it and brings
    /// about its end; boxes that it causes are announced after it. A window still open after `action` is an
    /// error.
    void onOpen(std::function<void(QWidget*)> action);

    /// Every message box so far, announced or not, in order.
    QList<Box> boxes() const { return m_boxes; }

    /// Empty when exactly the announced windows came, in order, and all had the buttons asked for;
    /// otherwise what went wrong first.
    QString problem() const;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    struct Announced {
        enum class Kind { EqualBox, BoxContaining, Window } kind;
        QString text;
        QMessageBox::StandardButton answer;
        std::function<void(QWidget*)> action;
    };

    void watch();
    void handle(QWidget* window);
    void handleBox(QMessageBox* box);
    void handleWindow(QWidget* window);
    void close(QWidget* window);
    void noteError(const QString& error);
    static bool matches(const Announced& announced, const Box& box);

    QTimer m_timer;
    QList<Announced> m_announced;
    QList<Box> m_boxes;
    QList<QPointer<QWidget>> m_handled; // until they hide
    QString m_error;
};

} // namespace tarvessa::test

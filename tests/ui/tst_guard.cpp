#include "support/ModalHelper.h"
#include "ui/BusyPointer.h"
#include "ui/Guard.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Handlers run through the guard.
class TstGuard : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void handlerThatEndsWellShowsNothing();
    void errorEndsTheHandlerAndIsReportedOnce();
    void formStaysUsableAfterAnError();
    void signalArgumentsReachTheHandler();
    void handlerGoesWithItsForm();
    void errorInsideANestedHandlerIsReportedThere();
    void otherExceptionsPass();
    void whatTheHandlerHeldIsReleased();

  private:
    struct GuardedForm : QWidget {
        QPushButton* button = new QPushButton(this);
        QLineEdit* field = new QLineEdit(this);
    };

    static void failure() { throw RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s); }

    std::unique_ptr<GuardedForm> m_form;
};

void TstGuard::init() {
    m_form = std::make_unique<GuardedForm>();
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TstGuard::cleanup() {
    m_form.reset();
}

void TstGuard::handlerThatEndsWellShowsNothing() {
    ModalHelper boxes;
    int times = 0;
    onSignal(m_form->button, &QPushButton::clicked, m_form.get(), [&](bool) { ++times; });
    m_form->button->click();
    m_form->button->click();
    QCOMPARE(times, 2);
    QVERIFY(boxes.boxes().isEmpty());
}

void TstGuard::errorEndsTheHandlerAndIsReportedOnce() {
    ModalHelper boxes;
    boxes.expect(u"Erro em tempo de execução 11:\n\nDivisão por zero."_s, QMessageBox::Ok);
    QStringList steps;
    onSignal(m_form->button, &QPushButton::clicked, m_form.get(), [&](bool) {
        steps += u"antes"_s;
        failure();
        steps += u"depois"_s;
    });
    m_form->button->click();
    QCOMPARE(steps, QStringList{u"antes"_s});
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(boxes.boxes().size(), 1);
}

void TstGuard::formStaysUsableAfterAnError() {
    ModalHelper boxes;
    boxes.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    int times = 0;
    onSignal(m_form->button, &QPushButton::clicked, m_form.get(), [&](bool) {
        if (++times == 1)
            failure();
    });
    QTest::mouseClick(m_form->button, Qt::LeftButton);
    QTest::mouseClick(m_form->button, Qt::LeftButton);
    QCOMPARE(times, 2);
    QCOMPARE(boxes.problem(), QString());
    QVERIFY(m_form->isVisible());
    QVERIFY(m_form->isEnabled());
}

void TstGuard::signalArgumentsReachTheHandler() {
    QStringList texts;
    onSignal(m_form->field, &QLineEdit::textChanged, m_form.get(),
             [&](const QString& text) { texts += text; });
    m_form->field->setText(u"PÃO"_s);
    QCOMPARE(texts, QStringList{u"PÃO"_s});
}

void TstGuard::handlerGoesWithItsForm() {
    QPushButton other;
    int times = 0;
    onSignal(&other, &QPushButton::clicked, m_form.get(), [&](bool) { ++times; });
    other.click();
    m_form.reset();
    other.click();
    QCOMPARE(times, 1);
}

void TstGuard::errorInsideANestedHandlerIsReportedThere() {
    ModalHelper boxes;
    boxes.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    QStringList steps;
    onSignal(m_form->field, &QLineEdit::textChanged, m_form.get(), [](const QString&) { failure(); });
    onSignal(m_form->button, &QPushButton::clicked, m_form.get(), [&](bool) {
        m_form->field->setText(u"x"_s);
        steps += u"depois"_s;
    });
    m_form->button->click();
    QCOMPARE(steps, QStringList{u"depois"_s});
    QCOMPARE(boxes.problem(), QString());
}

void TstGuard::otherExceptionsPass() {
    ModalHelper boxes;
    QVERIFY_THROWS_EXCEPTION(std::logic_error, guarded(m_form.get(), [] { throw std::logic_error("x"); }));
    QCOMPARE(boxes.problem(), QString());
}

void TstGuard::whatTheHandlerHeldIsReleased() {
    ModalHelper boxes;
    boxes.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    bool busy = false;
    guarded(m_form.get(), [&] {
        const BusyPointer waiting;
        busy = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
        failure();
    });
    QVERIFY(busy);
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(boxes.problem(), QString());
}

QTEST_MAIN(TstGuard)
#include "tst_guard.moc"

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
    struct Form : QWidget {
        QPushButton* botao = new QPushButton(this);
        QLineEdit* campo = new QLineEdit(this);
    };

    static void falha() { throw RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s); }

    std::unique_ptr<Form> m_form;
};

void TstGuard::init() {
    m_form = std::make_unique<Form>();
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TstGuard::cleanup() {
    m_form.reset();
}

void TstGuard::handlerThatEndsWellShowsNothing() {
    ModalHelper caixas;
    int vezes = 0;
    onSignal(m_form->botao, &QPushButton::clicked, m_form.get(), [&](bool) { ++vezes; });
    m_form->botao->click();
    m_form->botao->click();
    QCOMPARE(vezes, 2);
    QVERIFY(caixas.boxes().isEmpty());
}

void TstGuard::errorEndsTheHandlerAndIsReportedOnce() {
    ModalHelper caixas;
    caixas.expect(u"Erro em tempo de execução 11:\n\nDivisão por zero."_s, QMessageBox::Ok);
    QStringList passos;
    onSignal(m_form->botao, &QPushButton::clicked, m_form.get(), [&](bool) {
        passos += u"antes"_s;
        falha();
        passos += u"depois"_s;
    });
    m_form->botao->click();
    QCOMPARE(passos, QStringList{u"antes"_s});
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(caixas.boxes().size(), 1);
}

void TstGuard::formStaysUsableAfterAnError() {
    ModalHelper caixas;
    caixas.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    int vezes = 0;
    onSignal(m_form->botao, &QPushButton::clicked, m_form.get(), [&](bool) {
        if (++vezes == 1)
            falha();
    });
    QTest::mouseClick(m_form->botao, Qt::LeftButton);
    QTest::mouseClick(m_form->botao, Qt::LeftButton);
    QCOMPARE(vezes, 2);
    QCOMPARE(caixas.problem(), QString());
    QVERIFY(m_form->isVisible());
    QVERIFY(m_form->isEnabled());
}

void TstGuard::signalArgumentsReachTheHandler() {
    QStringList textos;
    onSignal(m_form->campo, &QLineEdit::textChanged, m_form.get(),
             [&](const QString& texto) { textos += texto; });
    m_form->campo->setText(u"PÃO"_s);
    QCOMPARE(textos, QStringList{u"PÃO"_s});
}

void TstGuard::handlerGoesWithItsForm() {
    QPushButton outro;
    int vezes = 0;
    onSignal(&outro, &QPushButton::clicked, m_form.get(), [&](bool) { ++vezes; });
    outro.click();
    m_form.reset();
    outro.click();
    QCOMPARE(vezes, 1);
}

void TstGuard::errorInsideANestedHandlerIsReportedThere() {
    ModalHelper caixas;
    caixas.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    QStringList passos;
    onSignal(m_form->campo, &QLineEdit::textChanged, m_form.get(), [](const QString&) { falha(); });
    onSignal(m_form->botao, &QPushButton::clicked, m_form.get(), [&](bool) {
        m_form->campo->setText(u"x"_s);
        passos += u"depois"_s;
    });
    m_form->botao->click();
    QCOMPARE(passos, QStringList{u"depois"_s});
    QCOMPARE(caixas.problem(), QString());
}

void TstGuard::otherExceptionsPass() {
    ModalHelper caixas;
    QVERIFY_THROWS_EXCEPTION(std::logic_error, guarded(m_form.get(), [] { throw std::logic_error("x"); }));
    QCOMPARE(caixas.problem(), QString());
}

void TstGuard::whatTheHandlerHeldIsReleased() {
    ModalHelper caixas;
    caixas.expectContaining(u"Divisão por zero."_s, QMessageBox::Ok);
    bool ocupado = false;
    guarded(m_form.get(), [&] {
        const BusyPointer espera;
        ocupado = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
        falha();
    });
    QVERIFY(ocupado);
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(caixas.problem(), QString());
}

QTEST_MAIN(TstGuard)
#include "tst_guard.moc"

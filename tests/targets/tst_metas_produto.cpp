#include "products/PesquisaProduto.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "targets/MetasQuadro.h"
#include "targets/TargetsBench.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString unregistered = u"Descrição não cadastrada. Verifique!!!"_s;

QString sqlCodigo(const QString& codigo) {
    return u"Select CodFabr, Descricao from produtos where CodFabr='"_s + codigo + u"'"_s;
}

} // namespace

/// The product boxes of both tabs: tag, text and what leaving them does.
class TstMetasProduto : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
        b->open();
    }

    void found_data();
    void found();
    void notFoundIsSpeltPerTab_data();
    void notFoundIsSpeltPerTab();
    void severalAndOneChosen_data();
    void severalAndOneChosen();
    void severalAndNoneChosen();
    void emptyTextClearsTheTag();
    void leavingAgainSearchesAgain();
    void foundButGone();
    void oddDescriptionIsShownLetterByLetter();
    void longDescriptionIsShownFromItsStart();
    void codeWithAnApostrophe();
    void leavingByClickOnAButton();
    void leavingByChangingTheTab();
    void noSearchForABoxOrAnotherWindow();
    void noSearchOnClosing();
    void gotFocusSelectsAll();
    void failingSearch();

  private:
    void toTab(const QString& field);

    std::unique_ptr<TargetsBench> b;
};

namespace {

void bothFields() {
    QTest::addColumn<QString>("field");
    QTest::newRow("tab 0") << u"Descricao"_s;
    QTest::newRow("tab 1") << u"Descricao2"_s;
}

} // namespace

void TstMetasProduto::toTab(const QString& field) {
    if (field == u"Descricao2")
        b->goToTab(1);
}

void TstMetasProduto::found_data() {
    bothFields();
}

void TstMetasProduto::found() {
    QFETCH(QString, field);
    toTab(field);
    StatementLog log(b->server());
    b->enterProduct(field, u"leite"_s);
    QCOMPARE(b->box(field)->text(), u"LEITE"_s);
    QCOMPARE(b->tag(field), u"P3"_s);
    QCOMPARE(log.texts(), StatementLog::expected(
                              {u"Select * from Produtos where (Descricao like '%LEITE%' or CodFabr like "
                               "'%LEITE%') and ativo='S' order by Descricao"_s,
                               sqlCodigo(u"P3"_s)}));
}

void TstMetasProduto::notFoundIsSpeltPerTab_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("message");
    QTest::newRow("tab 0") << u"Descricao"_s << u"Descricao inexistente. Verifique!!!"_s;
    QTest::newRow("tab 1") << u"Descricao2"_s << u"Descrição inexistente. Verifique!!!"_s;
}

void TstMetasProduto::notFoundIsSpeltPerTab() {
    QFETCH(QString, field);
    QFETCH(QString, message);
    toTab(field);
    b->enterProduct(field, u"LEITE"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expect(unregistered, QMessageBox::Ok);
    boxes.expect(message, QMessageBox::Ok);
    b->enterProduct(field, u"NADA"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(boxes.boxes()[1].title, u"Atenção!!!"_s);
    QCOMPARE(boxes.boxes()[1].icon, QMessageBox::Information);
    QCOMPARE(b->box(field)->text(), QString());
    QCOMPARE(b->tag(field), QString());
    QCOMPARE(log.texts().last(), sqlCodigo({}));
}

void TstMetasProduto::severalAndOneChosen_data() {
    bothFields();
}

void TstMetasProduto::severalAndOneChosen() {
    QFETCH(QString, field);
    toTab(field);
    ModalHelper boxes;
    boxes.onOpen([](QWidget* selection) {
        QTest::keyClick(selection->focusWidget(), Qt::Key_Down);
        QTest::keyClick(selection->focusWidget(), Qt::Key_Return);
    });
    b->enterProduct(field, u"PAO"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->tag(field), u"P1"_s);
    QCOMPARE(b->box(field)->text(), u"PAO FRANCES"_s);
}

void TstMetasProduto::severalAndNoneChosen() {
    ModalHelper boxes;
    boxes.onOpen([](QWidget* selection) { QTest::keyClick(selection->focusWidget(), Qt::Key_Escape); });
    boxes.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"PAO"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(b->box(u"Descricao"_s)->text(), QString());
    QVERIFY(b->screen()->isVisible());
}

void TstMetasProduto::emptyTextClearsTheTag() {
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    StatementLog log(b->server());
    b->enterProduct(u"Descricao"_s, {});
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(log.texts(), QStringList());
}

void TstMetasProduto::leavingAgainSearchesAgain() {
    b->enterProduct(u"Descricao"_s, u"P3"_s);
    b->box(u"Descricao"_s)->setFocus();
    StatementLog log(b->server());
    b->key(Qt::Key_Return);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
    QCOMPARE(log.texts().size(), 2);
    QCOMPARE(log.texts().last(), sqlCodigo(u"P3"_s));
}

// The product vanishes between the search and the reading of its code.
void TstMetasProduto::foundButGone() {
    ModalHelper boxes;
    boxes.onOpen([this](QWidget* selection) {
        b->server().execute(u"DELETE FROM produtos"_s);
        QTest::keyClick(selection->focusWidget(), Qt::Key_Return);
    });
    boxes.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"PAO"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
}

void TstMetasProduto::oddDescriptionIsShownLetterByLetter() {
    b->shop().produto(u"Z9"_s, u"Copo d'água \"½\" Ñandú"_s);
    b->enterProduct(u"Descricao"_s, u"Z9"_s);
    QCOMPARE(b->box(u"Descricao"_s)->text(), u"Copo d'água \"½\" Ñandú"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"Z9"_s);
}

void TstMetasProduto::longDescriptionIsShownFromItsStart() {
    b->shop().produto(u"Z9"_s, u"PRODUTO DE NOME LONGO "_s.repeated(5).trimmed());
    b->enterProduct(u"Descricao"_s, u"Z9"_s);
    QCOMPARE(b->box(u"Descricao"_s)->cursorPosition(), 0);
}

void TstMetasProduto::codeWithAnApostrophe() {
    b->shop().produto(u"Z'9"_s, u"TESTE"_s);
    ModalHelper boxes;
    boxes.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"TESTE"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QVERIFY(b->screen()->isVisible());
}

// The product is there when the button acts, pressed and released without a pause or with one.
void TstMetasProduto::leavingByClickOnAButton() {
    b->choose(u"Vendedores"_s, u"ANA"_s);
    b->box(u"Quantidade"_s)->setText(u"5"_s);
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"LEITE"_s);
    ModalHelper boxes;
    QTest::mouseClick(b->control<QPushButton>(u"Command1"_s), Qt::LeftButton);
    b->settle();
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->shop().metas().size(), 1);

    b->box(u"Quantidade"_s)->setText(u"6"_s);
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"PAO DOCE"_s);
    b->press(u"Command1"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->shop().metas().size(), 2);

    // Two boxes about the product, none about the target that is not there.
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"NADA"_s);
    boxes.expect(unregistered, QMessageBox::Ok);
    boxes.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    auto* button = b->control<QPushButton>(u"Command1"_s);
    QTest::mousePress(button, Qt::LeftButton);
    b->settle();
    QVERIFY(!button->isDown());
    QCOMPARE(boxes.problem(), QString());
}

void TstMetasProduto::leavingByChangingTheTab() {
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"LEITE"_s);
    b->goToTab(1);
    QCOMPARE(b->focus(), u"DataIni"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
    ModalHelper boxes;
    boxes.expect(unregistered, QMessageBox::Ok);
    boxes.expect(u"Descrição inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->box(u"Descricao2"_s)->setFocus();
    b->type(u"NADA"_s);
    b->goToTab(0);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->control<QTabWidget>(u"SSTab1"_s)->currentIndex(), 0);
    QCOMPARE(b->focus(), u"Vendedores"_s);
}

void TstMetasProduto::noSearchForABoxOrAnotherWindow() {
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"LEITE"_s);
    StatementLog log(b->server());
    QLineEdit other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    b->settle();
    b->screen()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->screen()));
    {
        ModalHelper boxes;
        boxes.expect(u"Uma caixa qualquer"_s, QMessageBox::Ok);
        QMessageBox(QMessageBox::Information, QString(), u"Uma caixa qualquer"_s, QMessageBox::Ok,
                    b->screen())
            .exec();
        QCOMPARE(boxes.problem(), QString());
    }
    b->settle();
    QCOMPARE(log.texts(), QStringList());
}

void TstMetasProduto::noSearchOnClosing() {
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"NADA"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    b->key(Qt::Key_Escape);
    QVERIFY(!b->screen()->isVisible());
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(log.texts(), QStringList());
}

void TstMetasProduto::gotFocusSelectsAll() {
    for (const auto& name : {u"Descricao"_s, u"Quantidade"_s, u"Descricao2"_s}) {
        toTab(name);
        QLineEdit* box = b->box(name);
        b->control(name == u"Descricao2" ? u"Vendedores2"_s : u"Vendedores"_s)->setFocus();
        box->setText(u"123"_s);
        QTest::mouseClick(box, Qt::LeftButton);
        b->settle();
        QCOMPARE(box->selectedText(), u"123"_s);
        box->clear();
    }
}

void TstMetasProduto::failingSearch() {
    b->server().execute(u"RENAME TABLE produtos TO guardada"_s);
    ModalHelper boxes;
    boxes.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    b->server().execute(u"RENAME TABLE guardada TO produtos"_s);
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
}

QTEST_MAIN(TstMetasProduto)
#include "tst_metas_produto.moc"

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

const QString naoCadastrada = u"Descrição não cadastrada. Verifique!!!"_s;

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
    void codeWithAnApostrophe();
    void leavingByClickOnAButton();
    void leavingByChangingTheTab();
    void noSearchForABoxOrAnotherWindow();
    void noSearchOnClosing();
    void gotFocusSelectsAll();
    void failingSearch();

  private:
    void paraAba(const QString& campo);

    std::unique_ptr<TargetsBench> b;
};

namespace {

void osDoisCampos() {
    QTest::addColumn<QString>("campo");
    QTest::newRow("tab 0") << u"Descricao"_s;
    QTest::newRow("tab 1") << u"Descricao2"_s;
}

} // namespace

void TstMetasProduto::paraAba(const QString& campo) {
    if (campo == u"Descricao2")
        b->goToTab(1);
}

void TstMetasProduto::found_data() {
    osDoisCampos();
}

void TstMetasProduto::found() {
    QFETCH(QString, campo);
    paraAba(campo);
    StatementLog registro(b->server());
    b->enterProduct(campo, u"leite"_s);
    QCOMPARE(b->box(campo)->text(), u"LEITE"_s);
    QCOMPARE(b->tag(campo), u"P3"_s);
    QCOMPARE(registro.texts(), StatementLog::expected(
                                   {u"Select * from Produtos where (Descricao like '%LEITE%' or CodFabr like "
                                    "'%LEITE%') and ativo='S' order by Descricao"_s,
                                    sqlCodigo(u"P3"_s)}));
}

void TstMetasProduto::notFoundIsSpeltPerTab_data() {
    QTest::addColumn<QString>("campo");
    QTest::addColumn<QString>("mensagem");
    QTest::newRow("tab 0") << u"Descricao"_s << u"Descricao inexistente. Verifique!!!"_s;
    QTest::newRow("tab 1") << u"Descricao2"_s << u"Descrição inexistente. Verifique!!!"_s;
}

void TstMetasProduto::notFoundIsSpeltPerTab() {
    QFETCH(QString, campo);
    QFETCH(QString, mensagem);
    paraAba(campo);
    b->enterProduct(campo, u"LEITE"_s);
    StatementLog registro(b->server());
    ModalHelper caixas;
    caixas.expect(naoCadastrada, QMessageBox::Ok);
    caixas.expect(mensagem, QMessageBox::Ok);
    b->enterProduct(campo, u"NADA"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(caixas.boxes()[1].title, u"Atenção!!!"_s);
    QCOMPARE(caixas.boxes()[1].icon, QMessageBox::Information);
    QCOMPARE(b->box(campo)->text(), QString());
    QCOMPARE(b->tag(campo), QString());
    QCOMPARE(registro.texts().last(), sqlCodigo({}));
}

void TstMetasProduto::severalAndOneChosen_data() {
    osDoisCampos();
}

void TstMetasProduto::severalAndOneChosen() {
    QFETCH(QString, campo);
    paraAba(campo);
    ModalHelper caixas;
    caixas.onOpen([](QWidget* selecao) {
        QTest::keyClick(selecao->focusWidget(), Qt::Key_Down);
        QTest::keyClick(selecao->focusWidget(), Qt::Key_Return);
    });
    b->enterProduct(campo, u"PAO"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->tag(campo), u"P1"_s);
    QCOMPARE(b->box(campo)->text(), u"PAO FRANCES"_s);
}

void TstMetasProduto::severalAndNoneChosen() {
    ModalHelper caixas;
    caixas.onOpen([](QWidget* selecao) { QTest::keyClick(selecao->focusWidget(), Qt::Key_Escape); });
    caixas.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"PAO"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(b->box(u"Descricao"_s)->text(), QString());
    QVERIFY(b->screen()->isVisible());
}

void TstMetasProduto::emptyTextClearsTheTag() {
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    StatementLog registro(b->server());
    b->enterProduct(u"Descricao"_s, {});
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(registro.texts(), QStringList());
}

void TstMetasProduto::leavingAgainSearchesAgain() {
    b->enterProduct(u"Descricao"_s, u"P3"_s);
    b->box(u"Descricao"_s)->setFocus();
    StatementLog registro(b->server());
    b->key(Qt::Key_Return);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
    QCOMPARE(registro.texts().size(), 2);
    QCOMPARE(registro.texts().last(), sqlCodigo(u"P3"_s));
}

// The product vanishes between the search and the reading of its code.
void TstMetasProduto::foundButGone() {
    ModalHelper caixas;
    caixas.onOpen([this](QWidget* selecao) {
        b->server().execute(u"DELETE FROM produtos"_s);
        QTest::keyClick(selecao->focusWidget(), Qt::Key_Return);
    });
    caixas.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"PAO"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
}

void TstMetasProduto::oddDescriptionIsShownLetterByLetter() {
    b->shop().produto(u"Z9"_s, u"Copo d'água \"½\" Ñandú"_s);
    b->enterProduct(u"Descricao"_s, u"Z9"_s);
    QCOMPARE(b->box(u"Descricao"_s)->text(), u"Copo d'água \"½\" Ñandú"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"Z9"_s);
}

void TstMetasProduto::codeWithAnApostrophe() {
    b->shop().produto(u"Z'9"_s, u"TESTE"_s);
    ModalHelper caixas;
    caixas.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"TESTE"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QVERIFY(b->screen()->isVisible());
}

// The product is there when the button acts, pressed and released without a pause or with one.
void TstMetasProduto::leavingByClickOnAButton() {
    b->choose(u"Vendedores"_s, u"ANA"_s);
    b->box(u"Quantidade"_s)->setText(u"5"_s);
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"LEITE"_s);
    ModalHelper caixas;
    QTest::mouseClick(b->control<QPushButton>(u"Command1"_s), Qt::LeftButton);
    b->settle();
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->shop().metas().size(), 1);

    b->box(u"Quantidade"_s)->setText(u"6"_s);
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"PAO DOCE"_s);
    b->press(u"Command1"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->shop().metas().size(), 2);

    // Two boxes about the product, none about the target that is not there.
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"NADA"_s);
    caixas.expect(naoCadastrada, QMessageBox::Ok);
    caixas.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    auto* botao = b->control<QPushButton>(u"Command1"_s);
    QTest::mousePress(botao, Qt::LeftButton);
    b->settle();
    QVERIFY(!botao->isDown());
    QCOMPARE(caixas.problem(), QString());
}

void TstMetasProduto::leavingByChangingTheTab() {
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"LEITE"_s);
    b->goToTab(1);
    QCOMPARE(b->focus(), u"DataIni"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
    ModalHelper caixas;
    caixas.expect(naoCadastrada, QMessageBox::Ok);
    caixas.expect(u"Descrição inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->box(u"Descricao2"_s)->setFocus();
    b->type(u"NADA"_s);
    b->goToTab(0);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->control<QTabWidget>(u"SSTab1"_s)->currentIndex(), 0);
    QCOMPARE(b->focus(), u"Vendedores"_s);
}

void TstMetasProduto::noSearchForABoxOrAnotherWindow() {
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"LEITE"_s);
    StatementLog registro(b->server());
    QLineEdit outra;
    outra.show();
    outra.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&outra));
    b->settle();
    b->screen()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->screen()));
    {
        ModalHelper caixas;
        caixas.expect(u"Uma caixa qualquer"_s, QMessageBox::Ok);
        QMessageBox(QMessageBox::Information, QString(), u"Uma caixa qualquer"_s, QMessageBox::Ok,
                    b->screen())
            .exec();
        QCOMPARE(caixas.problem(), QString());
    }
    b->settle();
    QCOMPARE(registro.texts(), QStringList());
}

void TstMetasProduto::noSearchOnClosing() {
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"NADA"_s);
    StatementLog registro(b->server());
    ModalHelper caixas;
    b->key(Qt::Key_Escape);
    QVERIFY(!b->screen()->isVisible());
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(registro.texts(), QStringList());
}

void TstMetasProduto::gotFocusSelectsAll() {
    for (const auto& nome : {u"Descricao"_s, u"Quantidade"_s, u"Descricao2"_s}) {
        paraAba(nome);
        QLineEdit* caixa = b->box(nome);
        b->control(nome == u"Descricao2" ? u"Vendedores2"_s : u"Vendedores"_s)->setFocus();
        caixa->setText(u"123"_s);
        QTest::mouseClick(caixa, Qt::LeftButton);
        b->settle();
        QCOMPARE(caixa->selectedText(), u"123"_s);
        caixa->clear();
    }
}

void TstMetasProduto::failingSearch() {
    b->server().execute(u"RENAME TABLE produtos TO guardada"_s);
    ModalHelper caixas;
    caixas.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    b->server().execute(u"RENAME TABLE guardada TO produtos"_s);
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
}

QTEST_MAIN(TstMetasProduto)
#include "tst_metas_produto.moc"

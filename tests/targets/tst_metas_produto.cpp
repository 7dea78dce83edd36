#include "products/PesquisaProduto.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "targets/BancadaMetas.h"
#include "targets/MetasQuadro.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

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
    void initTestCase() { b = std::make_unique<BancadaMetas>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->arruma();
        b->basico();
        b->abre();
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

    std::unique_ptr<BancadaMetas> b;
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
        b->vaiParaAba(1);
}

void TstMetasProduto::found_data() {
    osDoisCampos();
}

void TstMetasProduto::found() {
    QFETCH(QString, campo);
    paraAba(campo);
    StatementLog registro(b->servidor());
    b->entraProduto(campo, u"leite"_s);
    QCOMPARE(b->caixa(campo)->text(), u"LEITE"_s);
    QCOMPARE(b->tag(campo), u"P3"_s);
    QCOMPARE(
        registro.textos(),
        StatementLog::esperado({u"Select * from Produtos where (Descricao like '%LEITE%' or CodFabr like "
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
    b->entraProduto(campo, u"LEITE"_s);
    StatementLog registro(b->servidor());
    ModalHelper caixas;
    caixas.espera(naoCadastrada, QMessageBox::Ok);
    caixas.espera(mensagem, QMessageBox::Ok);
    b->entraProduto(campo, u"NADA"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(caixas.caixas()[1].titulo, u"Atenção!!!"_s);
    QCOMPARE(caixas.caixas()[1].icone, QMessageBox::Information);
    QCOMPARE(b->caixa(campo)->text(), QString());
    QCOMPARE(b->tag(campo), QString());
    QCOMPARE(registro.textos().last(), sqlCodigo({}));
}

void TstMetasProduto::severalAndOneChosen_data() {
    osDoisCampos();
}

void TstMetasProduto::severalAndOneChosen() {
    QFETCH(QString, campo);
    paraAba(campo);
    ModalHelper caixas;
    caixas.aoAbrir([](QWidget* selecao) {
        QTest::keyClick(selecao->focusWidget(), Qt::Key_Down);
        QTest::keyClick(selecao->focusWidget(), Qt::Key_Return);
    });
    b->entraProduto(campo, u"PAO"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->tag(campo), u"P1"_s);
    QCOMPARE(b->caixa(campo)->text(), u"PAO FRANCES"_s);
}

void TstMetasProduto::severalAndNoneChosen() {
    ModalHelper caixas;
    caixas.aoAbrir([](QWidget* selecao) { QTest::keyClick(selecao->focusWidget(), Qt::Key_Escape); });
    caixas.espera(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->entraProduto(u"Descricao"_s, u"PAO"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(b->caixa(u"Descricao"_s)->text(), QString());
    QVERIFY(b->tela()->isVisible());
}

void TstMetasProduto::emptyTextClearsTheTag() {
    b->entraProduto(u"Descricao"_s, u"LEITE"_s);
    StatementLog registro(b->servidor());
    b->entraProduto(u"Descricao"_s, {});
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(registro.textos(), QStringList());
}

void TstMetasProduto::leavingAgainSearchesAgain() {
    b->entraProduto(u"Descricao"_s, u"P3"_s);
    b->caixa(u"Descricao"_s)->setFocus();
    StatementLog registro(b->servidor());
    b->tecla(Qt::Key_Return);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
    QCOMPARE(registro.textos().size(), 2);
    QCOMPARE(registro.textos().last(), sqlCodigo(u"P3"_s));
}

// The product vanishes between the search and the reading of its code.
void TstMetasProduto::foundButGone() {
    ModalHelper caixas;
    caixas.aoAbrir([this](QWidget* selecao) {
        b->servidor().executa(u"DELETE FROM produtos"_s);
        QTest::keyClick(selecao->focusWidget(), Qt::Key_Return);
    });
    caixas.espera(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->entraProduto(u"Descricao"_s, u"PAO"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
}

void TstMetasProduto::oddDescriptionIsShownLetterByLetter() {
    b->produto(u"Z9"_s, u"Copo d'água \"½\" Ñandú"_s);
    b->entraProduto(u"Descricao"_s, u"Z9"_s);
    QCOMPARE(b->caixa(u"Descricao"_s)->text(), u"Copo d'água \"½\" Ñandú"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"Z9"_s);
}

void TstMetasProduto::codeWithAnApostrophe() {
    b->produto(u"Z'9"_s, u"TESTE"_s);
    ModalHelper caixas;
    caixas.esperaContendo(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->entraProduto(u"Descricao"_s, u"TESTE"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QVERIFY(b->tela()->isVisible());
}

// The product is there when the button acts, pressed and released without a pause or with one.
void TstMetasProduto::leavingByClickOnAButton() {
    b->escolhe(u"Vendedores"_s, u"ANA"_s);
    b->caixa(u"Quantidade"_s)->setText(u"5"_s);
    b->caixa(u"Descricao"_s)->setFocus();
    b->digita(u"LEITE"_s);
    ModalHelper caixas;
    QTest::mouseClick(b->controle<QPushButton>(u"Command1"_s), Qt::LeftButton);
    b->processa();
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->metas().size(), 1);

    b->caixa(u"Quantidade"_s)->setText(u"6"_s);
    b->caixa(u"Descricao"_s)->setFocus();
    b->digita(u"PAO DOCE"_s);
    b->aperta(u"Command1"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->metas().size(), 2);

    // Two boxes about the product, none about the target that is not there.
    b->caixa(u"Descricao"_s)->setFocus();
    b->digita(u"NADA"_s);
    caixas.espera(naoCadastrada, QMessageBox::Ok);
    caixas.espera(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    auto* botao = b->controle<QPushButton>(u"Command1"_s);
    QTest::mousePress(botao, Qt::LeftButton);
    b->processa();
    QVERIFY(!botao->isDown());
    QCOMPARE(caixas.confere(), QString());
}

void TstMetasProduto::leavingByChangingTheTab() {
    b->caixa(u"Descricao"_s)->setFocus();
    b->digita(u"LEITE"_s);
    b->vaiParaAba(1);
    QCOMPARE(b->foco(), u"DataIni"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
    ModalHelper caixas;
    caixas.espera(naoCadastrada, QMessageBox::Ok);
    caixas.espera(u"Descrição inexistente. Verifique!!!"_s, QMessageBox::Ok);
    b->caixa(u"Descricao2"_s)->setFocus();
    b->digita(u"NADA"_s);
    b->vaiParaAba(0);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->controle<QTabWidget>(u"SSTab1"_s)->currentIndex(), 0);
    QCOMPARE(b->foco(), u"Vendedores"_s);
}

void TstMetasProduto::noSearchForABoxOrAnotherWindow() {
    b->caixa(u"Descricao"_s)->setFocus();
    b->digita(u"LEITE"_s);
    StatementLog registro(b->servidor());
    QLineEdit outra;
    outra.show();
    outra.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&outra));
    b->processa();
    b->tela()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->tela()));
    {
        ModalHelper caixas;
        caixas.espera(u"Uma caixa qualquer"_s, QMessageBox::Ok);
        QMessageBox(QMessageBox::Information, QString(), u"Uma caixa qualquer"_s, QMessageBox::Ok, b->tela())
            .exec();
        QCOMPARE(caixas.confere(), QString());
    }
    b->processa();
    QCOMPARE(registro.textos(), QStringList());
}

void TstMetasProduto::noSearchOnClosing() {
    b->caixa(u"Descricao"_s)->setFocus();
    b->digita(u"NADA"_s);
    StatementLog registro(b->servidor());
    ModalHelper caixas;
    b->tecla(Qt::Key_Escape);
    QVERIFY(!b->tela()->isVisible());
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(registro.textos(), QStringList());
}

void TstMetasProduto::gotFocusSelectsAll() {
    for (const auto& nome : {u"Descricao"_s, u"Quantidade"_s, u"Descricao2"_s}) {
        paraAba(nome);
        QLineEdit* caixa = b->caixa(nome);
        b->controle(nome == u"Descricao2" ? u"Vendedores2"_s : u"Vendedores"_s)->setFocus();
        caixa->setText(u"123"_s);
        QTest::mouseClick(caixa, Qt::LeftButton);
        b->processa();
        QCOMPARE(caixa->selectedText(), u"123"_s);
        caixa->clear();
    }
}

void TstMetasProduto::failingSearch() {
    b->servidor().executa(u"RENAME TABLE produtos TO guardada"_s);
    ModalHelper caixas;
    caixas.esperaContendo(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    b->entraProduto(u"Descricao"_s, u"LEITE"_s);
    QCOMPARE(caixas.confere(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    b->servidor().executa(u"RENAME TABLE guardada TO produtos"_s);
    b->entraProduto(u"Descricao"_s, u"LEITE"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P3"_s);
}

QTEST_MAIN(TstMetasProduto)
#include "tst_metas_produto.moc"

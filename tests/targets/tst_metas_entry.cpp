#include "support/ModalHelper.h"
#include "targets/MetasQuadroColumns.h"
#include "targets/TargetsBench.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Entries on the targets screen at their edges: clicks out of an open editor, refused entries, records that
/// are gone or hold less, long texts, keys. ANA has targets of P1 (1234,500) and P2 (20).
class TstMetasEntry : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void clickOnAnotherQuantityCommitsFirst();
    void clickOnAnotherColumnCommits();
    void clickOnTheTrashCommitsAndAsks();
    void quantitiesGoOutPlain();
    void deletedTargetIsTold();
    void clippedQuantityIsTold();
    void roundedQuantityIsShownAsStored();
    void refusedEntryIsTypedAnew_data();
    void refusedEntryIsTypedAnew();
    void refusedSellerGetsTheFocus();
    void refusedDateIsTypedAnew_data();
    void refusedDateIsTypedAnew();
    void everyButtonTellsItsAltKey_data();
    void everyButtonTellsItsAltKey();
    void tabsTurnFromAnywhere();
    void pastedTextIsCutAndTold_data();
    void pastedTextIsCutAndTold();

  private:
    int row(const QString& codigo) const { return b->rowOf(u"Grid1"_s, codigo); }
    QString quantity(const QString& codigo) const {
        return b->grid(u"Grid1"_s)->text(row(codigo), metasquadro::grid1::Quantidade);
    }
    QString stored(const QString& codigo) {
        return b->valor(u"SELECT Quantidade FROM metavendedoritem WHERE CodigoProduto='"_s + codigo + u"'"_s);
    }
    void edit(const QString& codigo, const QString& text) const {
        b->click(u"Grid1"_s, row(codigo), metasquadro::grid1::Quantidade);
        b->type(text);
    }
    void answered(const ModalHelper& modals) const {
        QCOMPARE(modals.problem(), QString());
        b->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(b->window()));
    }

    std::unique_ptr<TargetsBench> b;
};

void TstMetasEntry::init() {
    b->reset();
    b->shop().basicoDasMetas();
    b->shop().meta(1, u"P1"_s, u"1234.5"_s);
    b->shop().meta(1, u"P2"_s, u"20"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
}

void TstMetasEntry::clickOnAnotherQuantityCommitsFirst() {
    edit(u"P1"_s, u"7"_s);
    b->click(u"Grid1"_s, row(u"P2"_s), metasquadro::grid1::Quantidade);
    QCOMPARE(stored(u"P1"_s), u"7.000"_s);
    QCOMPARE(quantity(u"P1"_s), u"7"_s);
    QCOMPARE(b->focus(), u"TextGrid"_s);
    b->type(u"8"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(stored(u"P1"_s), u"7.000"_s);
    QCOMPARE(stored(u"P2"_s), u"8.000"_s);
}

void TstMetasEntry::clickOnAnotherColumnCommits() {
    edit(u"P1"_s, u"7"_s);
    b->click(u"Grid1"_s, row(u"P2"_s), metasquadro::grid1::Produto);
    QCOMPARE(stored(u"P1"_s), u"7.000"_s);
    QVERIFY(!b->box(u"TextGrid"_s)->isVisible());
    QVERIFY(b->grid(u"Grid1"_s)->isEnabled());
    QCOMPARE(b->grid(u"Grid1"_s)->currentRow(), row(u"P2"_s));
}

void TstMetasEntry::clickOnTheTrashCommitsAndAsks() {
    edit(u"P1"_s, u"7"_s);
    ModalHelper modals;
    modals.expect(u"Deseja realmente excluir o produto\nP2?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, row(u"P2"_s), metasquadro::grid1::Excluir);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->shop().metas().size(), 1);
    QCOMPARE(stored(u"P1"_s), u"7.000"_s);
}

void TstMetasEntry::quantitiesGoOutPlain() {
    const QString id = b->grid(u"Grid1"_s)->text(row(u"P1"_s), metasquadro::grid1::Id);
    b->mark();
    edit(u"P1"_s, u"1,5"_s);
    b->key(Qt::Key_Return);
    QCOMPARE(b->statements().value(0), u"Update metavendedoritem Set Quantidade=1.5 Where ID="_s + id);
    b->enterProduct(u"Descricao"_s, u"LEITE"_s);
    b->fill(u"Quantidade"_s, u"2.5"_s);
    b->mark();
    b->press(u"Command1"_s);
    QVERIFY(b->statements().contains(
        u"Insert Into metavendedoritem Set CodVendedor=1, CodigoProduto='P3', Quantidade=2.5"_s));
}

void TstMetasEntry::deletedTargetIsTold() {
    b->server().execute(u"DELETE FROM metavendedoritem WHERE CodigoProduto='P1'"_s);
    edit(u"P1"_s, u"7"_s);
    ModalHelper modals;
    modals.expect(u"A meta do produto P1 não existe mais, nada foi gravado. Verifique!!!"_s, QMessageBox::Ok);
    b->key(Qt::Key_Return);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(row(u"P1"_s), 0);
    QCOMPARE(quantity(u"P2"_s), u"20"_s);
    QCOMPARE(stored(u"P2"_s), u"20.000"_s);
}

void TstMetasEntry::clippedQuantityIsTold() {
    edit(u"P1"_s, u"999999999999"_s);
    ModalHelper modals;
    modals.expectContaining(u"A quantidade não coube no cadastro. Foi gravado "_s, QMessageBox::Ok);
    b->key(Qt::Key_Return);
    QCOMPARE(modals.problem(), QString());
    const QString shown = quantity(u"P1"_s);
    QVERIFY(modals.boxes()[0].text.contains(shown));
    QVERIFY(shown != u"999.999.999.999"_s);
    QCOMPARE(QString(shown).remove(u'.').replace(u',', u'.'), stored(u"P1"_s));
}

// More decimals than the column has are no mistake to be told.
void TstMetasEntry::roundedQuantityIsShownAsStored() {
    const QString id = b->grid(u"Grid1"_s)->text(row(u"P1"_s), metasquadro::grid1::Id);
    edit(u"P1"_s, u"1,2345"_s);
    const ModalHelper modals;
    b->mark();
    b->key(Qt::Key_Return);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements().value(1), u"Select Quantidade From metavendedoritem Where ID="_s + id);
    QCOMPARE(stored(u"P1"_s), u"1.235"_s);
    QCOMPARE(quantity(u"P1"_s), u"1,235"_s);
}

void TstMetasEntry::refusedEntryIsTypedAnew_data() {
    QTest::addColumn<QString>("product");
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("box");
    QTest::newRow("no product") << QString() << u"5"_s
                                << u"Produto não selecionado corretamente. Verifique!!!"_s << u"Descricao"_s;
    QTest::newRow("no quantity") << u"LEITE"_s << u"X"_s << u"Quantidade inválida. Verifique!!!"_s
                                 << u"Quantidade"_s;
    QTest::newRow("quantity too large")
        << u"LEITE"_s << u"1000000"_s << u"Quantidade inválida. Verifique!!!"_s << u"Quantidade"_s;
    QTest::newRow("target exists") << u"PAO DOCE"_s << u"5"_s
                                   << u"Já existe uma meta de venda para o produto\n\nPAO DOCE"_s
                                   << u"Descricao"_s;
}

void TstMetasEntry::refusedEntryIsTypedAnew() {
    QFETCH(QString, product);
    QFETCH(QString, quantity);
    QFETCH(QString, message);
    QFETCH(QString, box);
    if (!product.isEmpty())
        b->enterProduct(u"Descricao"_s, product);
    b->fill(u"Quantidade"_s, quantity);
    ModalHelper modals;
    modals.expect(message, QMessageBox::Ok);
    b->press(u"Command1"_s);
    answered(modals);
    QCOMPARE(b->focus(), box);
    b->type(u"9"_s);
    QCOMPARE(b->box(box)->text(), u"9"_s);
}

void TstMetasEntry::refusedSellerGetsTheFocus() {
    b->list(u"Vendedores"_s)->setCurrentIndex(-1);
    ModalHelper modals;
    modals.expect(u"Vendedor não selecionado corretamente. Verifique!!!"_s, QMessageBox::Ok);
    b->press(u"Command1"_s);
    answered(modals);
    QCOMPARE(b->focus(), u"Vendedores"_s);
}

void TstMetasEntry::refusedDateIsTypedAnew_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("box");
    QTest::newRow("start") << u"31022024"_s << u"01032024"_s << u"Data Inicial inválida. Verifique!!!"_s
                           << u"DataIni"_s;
    QTest::newRow("end") << u"01022024"_s << u"31022024"_s << u"Data Final inválida. Verifique!!!"_s
                         << u"DataFin"_s;
    QTest::newRow("order") << u"02032024"_s << u"01032024"_s
                           << u"Data Inicial superior a Data Final. Verifique!!!"_s << u"DataIni"_s;
}

void TstMetasEntry::refusedDateIsTypedAnew() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QString, message);
    QFETCH(QString, box);
    b->goToTab(1);
    b->fill(u"DataIni"_s, start);
    b->fill(u"DataFin"_s, end);
    ModalHelper modals;
    modals.expect(message, QMessageBox::Ok);
    b->press(u"Command4"_s);
    answered(modals);
    QCOMPARE(b->focus(), box);
    b->type(u"05012024"_s);
    QCOMPARE(b->box(box)->text(), u"05/01/2024"_s);
}

void TstMetasEntry::everyButtonTellsItsAltKey_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::newRow("add") << u"Command1"_s << u"Alt+A"_s;
    QTest::newRow("compute") << u"Command4"_s << u"Alt+G"_s;
    QTest::newRow("print") << u"Command2"_s << u"Alt+I"_s;
}

void TstMetasEntry::everyButtonTellsItsAltKey() {
    QFETCH(QString, button);
    QFETCH(QString, key);
    QCOMPARE(b->button(button)->shortcut(), QKeySequence(key));
    QVERIFY(b->button(button)->toolTip().contains(QKeySequence(key).toString(QKeySequence::NativeText)));
}

void TstMetasEntry::tabsTurnFromAnywhere() {
    const auto* tabs = b->control<QTabWidget>(u"SSTab1"_s);
    for (const char* name : {"Vendedores", "Descricao", "Grid1"}) {
        b->control(QString::fromLatin1(name))->setFocus();
        b->key(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs->currentIndex(), 1);
        b->key(Qt::Key_1, Qt::AltModifier);
        QCOMPARE(tabs->currentIndex(), 0);
    }
    b->key(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(tabs->currentIndex(), 1);
    for (int tab = 0; tab < tabs->count(); ++tab)
        QVERIFY(tabs->tabToolTip(tab).contains(
            QKeySequence(u"Alt+%1"_s.arg(tab + 1)).toString(QKeySequence::NativeText)));
}

void TstMetasEntry::pastedTextIsCutAndTold_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("unknown");
    QTest::newRow("maintenance") << 0 << u"Descricao"_s << u"Descricao inexistente. Verifique!!!"_s;
    QTest::newRow("progress") << 1 << u"Descricao2"_s << u"Descrição inexistente. Verifique!!!"_s;
}

void TstMetasEntry::pastedTextIsCutAndTold() {
    QFETCH(int, tab);
    QFETCH(QString, box);
    QFETCH(QString, unknown);
    b->goToTab(tab);
    b->box(box)->setFocus();
    b->paste(u"A"_s.repeated(201));
    b->mark();
    ModalHelper modals;
    modals.expect(u"O texto da pesquisa foi cortado em 200 caracteres. Verifique!!!"_s, QMessageBox::Ok);
    modals.expect(u"Descrição não cadastrada. Verifique!!!"_s, QMessageBox::Ok);
    modals.expect(unknown, QMessageBox::Ok);
    b->key(Qt::Key_Tab);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements().value(0), u"Select * from Produtos where (Descricao like '%"_s +
                                           u"A"_s.repeated(200) + u"%') and ativo='S' order by Descricao"_s);
}

QTEST_MAIN(TstMetasEntry)
#include "tst_metas_entry.moc"

#include "products/PromocaoPedidos.h"
#include "products/PromocaoPedidosColumns.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString invalidPrice = u"Valor inválido. Verifique!!!"_s;
const QString nothingTicked = u"Não há nenhum pedido selecionado. Verifique!!!"_s;
const QString question = u"Deseja realmente realizar esse processo?"_s;
const QString cutText = u"O texto da pesquisa foi cortado em 200 caracteres. Verifique!!!"_s;
const QString unregistered = u"Descrição não cadastrada. Verifique!!!"_s;
const QString unknown = u"Descricao inexistente. Verifique!!!"_s;

} // namespace

/// Entering product and price on the promotional screen: keys, clicks that leave a box, refused entries,
/// pasted texts. Product 7 has two open lines.
class TstPromocaoEntry : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void clickThatLeavesTheProductTicksNothing();
    void clickAfterTheListTicks();
    void refusedPriceIsTypedAnew_data();
    void refusedPriceIsTypedAnew();
    void missingTickLeavesThePriceSelected();
    void everyButtonTellsItsAltKey_data();
    void everyButtonTellsItsAltKey();
    void altKeysFindTheProductFirst();
    void altKeyAppliesThePriceBeingTyped();
    void altKeyOutlivesTheCaption();
    void pastedTextIsCutAndTold();
    void textOfFullLengthIsNot();

  private:
    void enterProduct(const QString& text);
    QStringList ticks() const { return columnCells(b->grid(), promocaopedidos::Selecao); }

    std::unique_ptr<Bench> b;
};

void TstPromocaoEntry::init() {
    b->resetConnected();
    b->shop().produto(u"0000000000007"_s, u"PÃO FRANCÊS"_s);
    b->shop().cliente({.codigo = u"1"_s});
    b->shop().linhaAberta(u"0000000000007"_s, u"1"_s);
    b->shop().linhaAberta(u"0000000000007"_s, u"1"_s);
    b->take(std::make_unique<PromocaoPedidos>(nullptr));
    QVERIFY(b->show());
}

void TstPromocaoEntry::enterProduct(const QString& text) {
    b->fill(u"Descricao"_s, text);
    b->key(Qt::Key_Tab);
}

void TstPromocaoEntry::clickThatLeavesTheProductTicksNothing() {
    enterProduct(u"7"_s);
    QCOMPARE(b->grid()->rows(), 3);
    b->box(u"Descricao"_s)->setFocus();
    b->mark();
    b->click(1, promocaopedidos::Selecao);
    QCOMPARE(b->statements().size(), 3); // the search was repeated and its list shown
    QCOMPARE(ticks(), QStringList({QString(), QString()}));
    // The same when the button is up again before the search begins.
    b->box(u"Descricao"_s)->setFocus();
    b->grid()->setFocus();
    const QModelIndex cell = b->grid()->model()->index(0, promocaopedidos::Selecao);
    QTest::mouseClick(b->grid()->viewport(), Qt::LeftButton, {}, b->grid()->visualRect(cell).center());
    QCOMPARE(ticks(), QStringList({QString(), QString()}));
    b->settle();
    QCOMPARE(ticks(), QStringList({QString(), QString()}));
}

void TstPromocaoEntry::clickAfterTheListTicks() {
    enterProduct(u"7"_s);
    b->click(1, promocaopedidos::Selecao);
    QCOMPARE(ticks(), QStringList({u" "_s, QString()}));
}

void TstPromocaoEntry::refusedPriceIsTypedAnew_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button pressed by mouse") << false;
    QTest::newRow("button pressed by its Alt key") << true;
}

void TstPromocaoEntry::refusedPriceIsTypedAnew() {
    QFETCH(bool, byKey);
    enterProduct(u"7"_s);
    b->click(1, promocaopedidos::Selecao);
    b->box(u"Venda"_s)->setFocus();
    ModalHelper modals;
    modals.expect(invalidPrice, QMessageBox::Ok);
    if (byKey)
        b->key(Qt::Key_G, Qt::AltModifier);
    else
        b->press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    b->window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->window()));
    QCOMPARE(b->focus(), u"Venda"_s);
    b->type(u"4,5"_s);
    QCOMPARE(b->box(u"Venda"_s)->text(), u"4,5"_s);
}

void TstPromocaoEntry::missingTickLeavesThePriceSelected() {
    enterProduct(u"7"_s);
    b->fill(u"Venda"_s, u"3"_s);
    ModalHelper modals;
    modals.expect(nothingTicked, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    b->window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(b->window()));
    QCOMPARE(b->focus(), u"Venda"_s);
    b->type(u"8"_s);
    QCOMPARE(b->box(u"Venda"_s)->text(), u"8"_s);
}

void TstPromocaoEntry::everyButtonTellsItsAltKey_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::newRow("apply") << u"Command1"_s << u"Alt+G"_s;
    QTest::newRow("tick all") << u"Command2"_s << u"Alt+S"_s;
}

void TstPromocaoEntry::everyButtonTellsItsAltKey() {
    QFETCH(QString, button);
    QFETCH(QString, key);
    QCOMPARE(b->button(button)->shortcut(), QKeySequence(key));
    QVERIFY(b->button(button)->toolTip().contains(QKeySequence(key).toString(QKeySequence::NativeText)));
}

void TstPromocaoEntry::altKeysFindTheProductFirst() {
    enterProduct(u"7"_s);
    b->box(u"Descricao"_s)->setFocus();
    b->mark();
    b->key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(b->statements().size(), 3);
    QCOMPARE(ticks(), QStringList({u" "_s, u" "_s}));
    // An unknown product ends it there: nothing is asked or changed.
    b->fill(u"Descricao"_s, u"ZZZ"_s);
    ModalHelper modals;
    modals.expect(unregistered, QMessageBox::Ok);
    modals.expect(unknown, QMessageBox::Ok);
    b->key(Qt::Key_G, Qt::AltModifier);
    QCOMPARE(modals.problem(), QString());
}

void TstPromocaoEntry::altKeyAppliesThePriceBeingTyped() {
    enterProduct(u"7"_s);
    b->click(1, promocaopedidos::Selecao);
    b->fill(u"Venda"_s, u"2,5"_s);
    ModalHelper modals;
    modals.expect(question, QMessageBox::Yes);
    b->mark();
    b->key(Qt::Key_G, Qt::AltModifier);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements().size(), 1);
    QCOMPARE(b->valor(u"SELECT COUNT(*) FROM orcamento WHERE unitario=2.5"_s), u"1"_s);
}

void TstPromocaoEntry::altKeyOutlivesTheCaption() {
    enterProduct(u"7"_s);
    b->key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(b->button(u"Command2"_s)->text(), u"DESMARCAR TODOS"_s);
    b->key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(b->button(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    QCOMPARE(ticks(), QStringList({QString(), QString()}));
}

void TstPromocaoEntry::pastedTextIsCutAndTold() {
    b->box(u"Descricao"_s)->setFocus();
    b->paste(u"A"_s.repeated(250));
    b->mark();
    ModalHelper modals;
    modals.expect(cutText, QMessageBox::Ok);
    modals.expect(unregistered, QMessageBox::Ok);
    modals.expect(unknown, QMessageBox::Ok);
    b->key(Qt::Key_Tab);
    QCOMPARE(modals.problem(), QString());
    const QString kept = u"A"_s.repeated(200);
    QCOMPARE(b->box(u"Descricao"_s)->text(), kept);
    QCOMPARE(b->statements().value(0), u"Select * from Produtos where (Descricao like '%"_s + kept +
                                           u"%') and ativo='S' order by Descricao"_s);
}

void TstPromocaoEntry::textOfFullLengthIsNot() {
    b->box(u"Descricao"_s)->setFocus();
    b->paste(u"A"_s.repeated(200));
    ModalHelper modals;
    modals.expect(unregistered, QMessageBox::Ok);
    modals.expect(unknown, QMessageBox::Ok);
    b->key(Qt::Key_Tab);
    QCOMPARE(modals.problem(), QString());
}

QTEST_MAIN(TstPromocaoEntry)
#include "tst_promocao_entry.moc"

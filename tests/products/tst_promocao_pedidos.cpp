#include "core/AcessoDados.h"
#include "products/PromocaoPedidos.h"
#include "support/Bench.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"
#include "ui/FieldLeave.h"
#include "ui/TextBox.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString missing = u"Descricao inexistente. Verifique!!!"_s;
const QString invalidValue = u"Valor inválido. Verifique!!!"_s;
const QString withoutOrder = u"Não há nenhum pedido selecionado. Verifique!!!"_s;
const QString pergunta = u"Deseja realmente realizar esse processo?"_s;
const QString unregistered = u"Descrição não cadastrada. Verifique!!!"_s;
const QString codigo = u"0000000000007"_s;
const QString listing =
    u"Select o.id, c.nome, c.fantasia, c.cidade, o.quantidade, o.unitario from orcamento as o left join "
    u"clientes "
    "as c on o.codigocli=c.codigo Where o.situacaoorc in ('A','C') and o.tipooperacao='P' and "
    "o.codigo='0000000000007' Order By c.nome"_s;

QString accessibleName(QWidget* control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

QString update(const QString& value, const QString& id) {
    return u"Update Orcamento Set unitario="_s + value +
           u", TotalPed=Round(Unitario*quantidade,2) Where ID="_s + id;
}

} // namespace

/// The screen for promotional prices; product 7 is "PÃO FRANCÊS" and has the three lines of `m_ids`.
class TstPromocaoPedidos : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();
    void cleanup() { m_screen.reset(); }

    void opensEmpty();
    void controlsAndTheirNames();
    void gridFormat();

    void productByCodeListsItsLines();
    void productByDescriptionListsItsLines();
    void productPickedFromSeveral();
    void emptyTextDoesNothing();
    void blanksAreRefused();
    void onlyOpenPresalesOfTheProduct();
    void linesWithoutCustomerStillShow();
    void nullsShowNothing();
    void fantasyWidthByNumberOfLines_data();
    void fantasyWidthByNumberOfLines();
    void productWithoutLines();
    void unknownProductIsTold();
    void escapedSearchLeavesTheListInPlace();
    void productDeletedBetweenSearchAndDescription();
    void storedDescriptionIsShownLetterByLetter();
    void shownApostropheNeverReachesTheSearch();
    void changedTextEmptiesTheList();
    void leavingAgainSearchesAgain();

    void messageBoxIsNoLeaving();
    void anotherWindowIsNoLeaving();
    void escapeIsNoLeaving();
    void closingIsNoLeaving();
    void boxOfTheSearchStartsNoSecondOne();
    void pressThatLeavesTheBoxForAMessageOperatesNothing();

    void clickTicksAndUnticks();
    void spaceTicks();
    void clickElsewhereChangesNothing();
    void doubleClickIsTwoClicks();
    void clickOnAnEmptyListChangesNothing();
    void tickPictureIsTheMainWindows();
    void tickAllAndUntickAll();
    void newListStartsUnticked();

    void priceAfterLeaving_data();
    void priceAfterLeaving();
    void priceBeyondAllMoneyIsAnError();

    void priceRefused_data();
    void priceRefused();
    void nothingTickedIsRefused();
    void refusedPriceComesFirst();
    void answerNoChangesNothing();
    void appliesToTickedLinesInGridOrder();
    void statementOfEachPrice_data();
    void statementOfEachPrice();
    void pressedWithoutLeavingThePriceAppliesWhatIsShown();
    void deletedProductIsNoObstacle();
    void failedUpdateLeavesTheEarlierOnes();

    void enterMovesOn();
    void focusSelectsTheText();
    void keysFollowTheConvention();
    void worksByKeyboardAlone();
    void listingThatFailsLeavesNone();

  private:
    Grid* grid() const { return m_screen->findChild<Grid*>(u"Grid1"_s); }
    TextBox* descricao() const { return m_screen->findChild<TextBox*>(u"Descricao"_s); }
    TextBox* venda() const { return m_screen->findChild<TextBox*>(u"Venda"_s); }
    QPushButton* button(const QString& name) const { return m_screen->findChild<QPushButton*>(name); }

    /// Types into the product box and leaves it with Tab.
    void type(const QString& text);
    /// Leaves the product box with Tab; the search that follows has then ended.
    void leaveProduct();
    /// The same with product 7, which lists its lines.
    void lista();
    void enterValue(const QString& text);
    void press(const QString& name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    bool openScreen();

    /// One column of all data rows.
    QStringList column(int column) const;
    QStringList ticked() const;

    std::unique_ptr<Bench> b;
    std::unique_ptr<PromocaoPedidos> m_screen;
    QStringList m_ids; // in the order of the customers' names
};

void TstPromocaoPedidos::init() {
    b->resetConnected();
    b->shop().produto(codigo, u"PÃO FRANCÊS"_s);
    b->shop().cliente(
        {.codigo = u"1"_s, .nome = u"ALFA"_s, .outros = u"fantasia='BAR ALFA', cidade='CAMPINAS'"_s});
    b->shop().cliente(
        {.codigo = u"2"_s, .nome = u"BETA"_s, .outros = u"fantasia='BAR BETA', cidade='JUNDIAÍ'"_s});
    b->shop().cliente(
        {.codigo = u"3"_s, .nome = u"GAMA"_s, .outros = u"fantasia='BAR GAMA', cidade='VALINHOS'"_s});
    const QString gamma =
        b->shop().linhaAberta(codigo, u"3"_s, u"quantidade=0.333, unitario=1.50, totalped=0.50"_s);
    const QString alpha =
        b->shop().linhaAberta(codigo, u"1"_s, u"quantidade=1500, unitario=0.65, totalped=975"_s);
    const QString beta =
        b->shop().linhaAberta(codigo, u"2"_s, u"quantidade=2, unitario=1234.5, totalped=2469"_s);
    m_ids = {alpha, beta, gamma};
    QVERIFY(openScreen());
    b->mark();
}

// Whatever of it was listed before does not stay as if it were the list.
void TstPromocaoPedidos::listingThatFailsLeavesNone() {
    lista();
    press(u"Command2"_s);
    b->server().execute(u"ALTER TABLE clientes CHANGE fantasia fantasia_antiga VARCHAR(60)"_s);
    ModalHelper modal;
    modal.expectContaining(u"fantasia"_s, QMessageBox::Ok);
    type(u"7"_s);
    b->server().execute(u"ALTER TABLE clientes CHANGE fantasia_antiga fantasia VARCHAR(60)"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grid()->rows(), 1);
    QVERIFY(!button(u"Command2"_s)->isEnabled());
}

bool TstPromocaoPedidos::openScreen() {
    m_screen = std::make_unique<PromocaoPedidos>(nullptr);
    return showActive(m_screen.get());
}

void TstPromocaoPedidos::type(const QString& text) {
    descricao()->setFocus();
    descricao()->selectAll();
    pasteInto(descricao(), text);
    leaveProduct();
}

void TstPromocaoPedidos::leaveProduct() {
    QTest::keyClick(descricao(), Qt::Key_Tab);
    QCoreApplication::processEvents();
}

void TstPromocaoPedidos::lista() {
    type(u"7"_s);
    QCOMPARE(grid()->rows(), 4);
    b->mark();
}

void TstPromocaoPedidos::enterValue(const QString& text) {
    venda()->setFocus();
    venda()->selectAll();
    pasteInto(venda(), text);
    QTest::keyClick(venda(), Qt::Key_Tab);
}

QStringList TstPromocaoPedidos::column(int column) const {
    QStringList texts;
    for (int row = 1; row < grid()->rows(); ++row)
        texts.append(grid()->text(row, column));
    return texts;
}

QStringList TstPromocaoPedidos::ticked() const {
    return column(6);
}

void TstPromocaoPedidos::opensEmpty() {
    QCOMPARE(m_screen->windowTitle(), u" Atualiza preço nos pedidos"_s);
    QCOMPARE(grid()->rows(), 1);
    QCOMPARE(grid()->currentRow(), 0);
    QCOMPARE(descricao()->text(), QString());
    QCOMPARE(venda()->text(), u"0,00"_s);
    QVERIFY(!button(u"Command2"_s)->isEnabled());
    QVERIFY(button(u"Command1"_s)->isEnabled());
    QVERIFY(descricao()->hasFocus());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::controlsAndTheirNames() {
    QCOMPARE(m_screen->objectName(), u"PromocaoPedidos"_s);
    QCOMPARE(m_screen->findChild<QLabel*>(u"Label1"_s)->text(), u"CÓDIGO/DESCRIÇÃO"_s);
    QCOMPARE(m_screen->findChild<QLabel*>(u"Label2"_s)->text(), u"R$ VENDA DESEJADA"_s);
    QCOMPARE(button(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    QCOMPARE(button(u"Command1"_s)->text(), u"GERAR ATUALIZAÇÃO DE PREÇOS"_s);
    QVERIFY(m_screen->findChild<QFrame*>(u"Frame1"_s));
    QCOMPARE(accessibleName(descricao()), u"CÓDIGO/DESCRIÇÃO"_s);
    QCOMPARE(accessibleName(venda()), u"R$ VENDA DESEJADA"_s);
    QCOMPARE(accessibleName(button(u"Command1"_s)), u"GERAR ATUALIZAÇÃO DE PREÇOS"_s);
    QVERIFY(!accessibleName(grid()).isEmpty());
}

void TstPromocaoPedidos::gridFormat() {
    const QStringList captions = {u"ID"_s,    u"CLIENTE"_s, u"FANTASIA"_s, u"CIDADE"_s,
                                  u"QUANT"_s, u"R$ UNIT"_s, u"SELEÇÃO"_s};
    const QList<int> widths = {900, 4260, 3000, 2450, 900, 1000, 850};
    const QList<Qt::AlignmentFlag> alignments = {Qt::AlignRight,  Qt::AlignLeft,  Qt::AlignLeft,
                                                 Qt::AlignLeft,   Qt::AlignRight, Qt::AlignRight,
                                                 Qt::AlignHCenter};
    lista();
    QCOMPARE(grid()->columns(), 7);
    for (int column = 0; column < 7; ++column) {
        QCOMPARE(grid()->text(0, column), captions[column]);
        QCOMPARE(grid()->columnTwips(column), widths[column]);
        QCOMPARE(grid()->columnWidth(column), twipsToPixels(grid(), widths[column]));
        QVERIFY(grid()->isBold(0, column));
        const auto alignment =
            grid()->model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        QCOMPARE(alignment & Qt::AlignHorizontal_Mask, alignments[column]);
    }
}

void TstPromocaoPedidos::productByCodeListsItsLines() {
    type(u"7"_s);
    QCOMPARE(b->statements(),
             QStringList(
                 {u"Select * from Produtos where CodFabr='0000000000007' and ativo='S' order by descricao"_s,
                  u"Select Descricao from produtos where CodFabr='0000000000007'"_s, listing}));
    QCOMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QCOMPARE(grid()->rows(), 4);
    QCOMPARE(cells(grid(), 1), QStringList({m_ids[0], u"ALFA"_s, u"BAR ALFA"_s, u"CAMPINAS"_s, u"1.500,000"_s,
                                            u"0,65"_s, QString()}));
    QCOMPARE(cells(grid(), 2), QStringList({m_ids[1], u"BETA"_s, u"BAR BETA"_s, u"JUNDIAÍ"_s, u"2,000"_s,
                                            u"1.234,50"_s, QString()}));
    QCOMPARE(cells(grid(), 3), QStringList({m_ids[2], u"GAMA"_s, u"BAR GAMA"_s, u"VALINHOS"_s, u"0,333"_s,
                                            u"1,50"_s, QString()}));
    QVERIFY(button(u"Command2"_s)->isEnabled());
    QCOMPARE(button(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    QVERIFY(!rs.isOpen());
    QVERIFY(venda()->hasFocus());
}

void TstPromocaoPedidos::productByDescriptionListsItsLines() {
    type(u"franc"_s);
    QCOMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QCOMPARE(column(0), m_ids);
}

void TstPromocaoPedidos::productPickedFromSeveral() {
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    const QString doce = b->shop().linhaAberta(u"8"_s, u"2"_s);
    ModalHelper modals;
    modals.onOpen(
        [](QWidget* screen) { QTest::keyClick(screen->findChild<Grid*>(u"Grid"_s), Qt::Key_Return); });
    type(u"pão"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(descricao()->text(), u"PÃO DOCE"_s);
    QCOMPARE(column(0), QStringList(doce));
}

void TstPromocaoPedidos::emptyTextDoesNothing() {
    leaveProduct();
    QCOMPARE(b->statements(), QStringList());
    QVERIFY(venda()->hasFocus());
}

void TstPromocaoPedidos::blanksAreRefused() {
    ModalHelper modals;
    modals.expect(u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s, QMessageBox::Ok);
    modals.expect(missing, QMessageBox::Ok);
    type(u"   "_s);
    QCOMPARE(modals.problem(), QString());
}

void TstPromocaoPedidos::onlyOpenPresalesOfTheProduct() {
    const QString situacaoC = b->shop().linhaAberta(codigo, u"2"_s, u"situacaoorc='C'"_s);
    b->shop().linhaAberta(codigo, u"1"_s, u"situacaoorc='B'"_s);
    b->shop().linhaAberta(codigo, u"1"_s, u"situacaoorc='X'"_s);
    b->shop().linhaAberta(codigo, u"1"_s, u"TipoOperacao='D'"_s);
    b->shop().linhaAberta(u"0000000000008"_s, u"1"_s);
    type(u"7"_s);
    QStringList expectedRows = m_ids + QStringList(situacaoC);
    QStringList listed = column(0);
    expectedRows.sort();
    listed.sort();
    QCOMPARE(listed, expectedRows);
    QCOMPARE(column(1), QStringList({u"ALFA"_s, u"BETA"_s, u"BETA"_s, u"GAMA"_s}));
}

void TstPromocaoPedidos::linesWithoutCustomerStillShow() {
    const QString without = b->shop().linhaAberta(codigo, u"99"_s, u"quantidade=3, unitario=2"_s);
    type(u"7"_s);
    QCOMPARE(cells(grid(), 1),
             QStringList({without, QString(), QString(), QString(), u"3,000"_s, u"2,00"_s, QString()}));
    QCOMPARE(grid()->rows(), 5);
}

void TstPromocaoPedidos::nullsShowNothing() {
    b->server().execute(u"UPDATE clientes SET nome=NULL, fantasia=NULL, cidade=NULL WHERE codigo='1'; "
                        "UPDATE orcamento SET quantidade=NULL, unitario=NULL, totalped=NULL WHERE id="_s +
                        m_ids[0]);
    type(u"7"_s);
    QCOMPARE(cells(grid(), 1),
             QStringList({m_ids[0], QString(), QString(), QString(), QString(), QString(), QString()}));
}

void TstPromocaoPedidos::fantasyWidthByNumberOfLines_data() {
    QTest::addColumn<int>("linhas");
    QTest::addColumn<int>("width");
    QTest::newRow("14 lines, 15 rows") << 14 << 3000;
    QTest::newRow("15 lines, 16 rows") << 15 << 2750;
    QTest::newRow("16 lines, 17 rows") << 16 << 2750;
}

void TstPromocaoPedidos::fantasyWidthByNumberOfLines() {
    QFETCH(int, linhas);
    QFETCH(int, width);
    for (int i = 3; i < linhas; ++i)
        b->shop().linhaAberta(codigo, u"1"_s);
    type(u"7"_s);
    QCOMPARE(grid()->rows(), linhas + 1);
    QCOMPARE(grid()->columnTwips(2), width);
    // A short list afterwards has the wide column again.
    b->shop().produto(u"8"_s, u"ROSCA"_s);
    type(u"rosca"_s);
    QCOMPARE(grid()->rows(), 1);
    QCOMPARE(grid()->columnTwips(2), 3000);
}

void TstPromocaoPedidos::productWithoutLines() {
    b->shop().produto(u"8"_s, u"ROSCA"_s);
    lista();
    type(u"rosca"_s);
    QCOMPARE(descricao()->text(), u"ROSCA"_s);
    QCOMPARE(grid()->rows(), 1);
    QVERIFY(!button(u"Command2"_s)->isEnabled());
}

void TstPromocaoPedidos::unknownProductIsTold() {
    ModalHelper modals;
    modals.expect(unregistered, QMessageBox::Ok);
    modals.expect(missing, QMessageBox::Ok);
    type(u"zz"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[1].title, u"Atenção!!!"_s);
    QCOMPARE(modals.boxes()[1].icon, QMessageBox::Information);
    QCOMPARE(modals.boxes()[1].buttons, QMessageBox::Ok);
    QCOMPARE(descricao()->text(), u"ZZ"_s);
    QVERIFY(!rs.isOpen());
    QCOMPARE(b->statements().last(), u"Select Descricao from produtos where CodFabr=''"_s);
    QCOMPARE(m_screen->focusWidget(), venda());
}

void TstPromocaoPedidos::escapedSearchLeavesTheListInPlace() {
    b->shop().produto(u"8"_s, u"MASSA DE PÃO FRANCÊS"_s);
    lista();
    b->click(grid(), 2, 6);
    ModalHelper modals;
    modals.onOpen([](QWidget* screen) { QTest::keyClick(screen, Qt::Key_Escape); });
    modals.expect(missing, QMessageBox::Ok);
    descricao()->setFocus();
    leaveProduct(); // "PÃO FRANCÊS" now stands in two descriptions
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QCOMPARE(column(0), m_ids);
    QCOMPARE(ticked(), QStringList({QString(), u" "_s, QString()}));
    QVERIFY(button(u"Command2"_s)->isEnabled());
}

void TstPromocaoPedidos::productDeletedBetweenSearchAndDescription() {
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    ModalHelper modals;
    modals.onOpen([this](QWidget* screen) {
        b->server().execute(u"DELETE FROM produtos"_s);
        QTest::keyClick(screen->findChild<Grid*>(u"Grid"_s), Qt::Key_Return);
    });
    modals.expect(missing, QMessageBox::Ok);
    type(u"pão"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(descricao()->text(), u"PÃO"_s);
    QCOMPARE(grid()->rows(), 1);
}

void TstPromocaoPedidos::storedDescriptionIsShownLetterByLetter() {
    b->shop().produto(u"8"_s, u"Rosca d'Água"_s);
    type(u"rosca"_s);
    QCOMPARE(descricao()->text(), u"Rosca d'Água"_s);
}

void TstPromocaoPedidos::shownApostropheNeverReachesTheSearch() {
    b->shop().produto(u"8"_s, u"Rosca d'Água"_s);
    type(u"rosca"_s);
    b->mark();
    ModalHelper modal;
    modal.expect(u"Descrição não cadastrada. Verifique!!!"_s, QMessageBox::Ok);
    modal.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    descricao()->setFocus();
    leaveProduct();
    QTRY_COMPARE(modal.problem(), QString());
    QVERIFY(b->statements()[0].contains(u"Descricao like '%d´Água%'"_s));
}

void TstPromocaoPedidos::changedTextEmptiesTheList() {
    lista();
    descricao()->setFocus();
    QTest::keyClick(descricao(), Qt::Key_End);
    QTest::keyClick(descricao(), Qt::Key_Backspace);
    QCOMPARE(grid()->rows(), 1);
    QVERIFY(!button(u"Command2"_s)->isEnabled());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::leavingAgainSearchesAgain() {
    lista();
    b->click(grid(), 1, 6);
    b->shop().linhaAberta(codigo, u"1"_s);
    descricao()->setFocus();
    leaveProduct();
    QCOMPARE(grid()->rows(), 5);
    QVERIFY(!ticked().contains(u" "_s));
    QVERIFY(button(u"Command2"_s)->isEnabled());
}

void TstPromocaoPedidos::messageBoxIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modals;
    modals.expect(u"aviso"_s, QMessageBox::Ok);
    QMessageBox::information(m_screen.get(), u"x"_s, u"aviso"_s);
    QVERIFY(showActive(m_screen.get())); // as a window manager does when the box is gone
    QVERIFY(descricao()->hasFocus());
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::anotherWindowIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modals;
    QWidget other;
    QVERIFY(showActive(&other));
    m_screen->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_screen.get()));
    QVERIFY(descricao()->hasFocus());
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::escapeIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modals;
    QTest::keyClick(descricao(), Qt::Key_Escape);
    QVERIFY(!m_screen->isVisible());
    QTest::qWait(20);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::closingIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modals;
    m_screen->close();
    m_screen.reset();
    QTest::qWait(20);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

// However it comes about that the box is told to be left while the search's own screen is open.
void TstPromocaoPedidos::boxOfTheSearchStartsNoSecondOne() {
    ModalHelper modals;
    modals.onOpen([this](QWidget* screen) {
        Q_EMIT descricao()->findChild<FieldLeave*>()->left();
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    modals.expect(missing, QMessageBox::Ok);
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    type(u"pão"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements().size(), 3); // the search, the selection screen's setting, the description
}

void TstPromocaoPedidos::pressThatLeavesTheBoxForAMessageOperatesNothing() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modals;
    modals.expect(unregistered, QMessageBox::Ok);
    modals.expect(missing, QMessageBox::Ok);
    QTest::mousePress(button(u"Command1"_s), Qt::LeftButton);
    QTRY_VERIFY(!button(u"Command1"_s)->isDown());
    QCOMPARE(modals.problem(), QString()); // not "Valor inválido"
}

void TstPromocaoPedidos::clickTicksAndUnticks() {
    lista();
    b->click(grid(), 2, 6);
    QCOMPARE(ticked(), QStringList({QString(), u" "_s, QString()}));
    QVERIFY(grid()->hasPicture(2, 6));
    QVERIFY(!grid()->hasPicture(1, 6));
    b->click(grid(), 3, 6);
    QCOMPARE(ticked(), QStringList({QString(), u" "_s, u" "_s}));
    b->click(grid(), 2, 6);
    QCOMPARE(ticked(), QStringList({QString(), QString(), u" "_s}));
    QVERIFY(!grid()->hasPicture(2, 6));
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::spaceTicks() {
    lista();
    grid()->setFocus();
    grid()->setCurrentCell(1, 6);
    QTest::keyClick(grid(), Qt::Key_Space);
    QCOMPARE(ticked(), QStringList({u" "_s, QString(), QString()}));
    grid()->setCurrentCell(1, 5);
    QTest::keyClick(grid(), Qt::Key_Space);
    QCOMPARE(ticked(), QStringList({u" "_s, QString(), QString()}));
}

void TstPromocaoPedidos::clickElsewhereChangesNothing() {
    lista();
    for (int column = 0; column < 6; ++column)
        b->click(grid(), 2, column);
    b->click(grid(), 0, 6);
    QCOMPARE(ticked(), QStringList(3));
}

void TstPromocaoPedidos::doubleClickIsTwoClicks() {
    lista();
    const QPoint middle = grid()->visualRect(grid()->model()->index(0, 6)).center();
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, middle);
    QVERIFY(grid()->isTicked(1));
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, middle);
    QVERIFY(!grid()->isTicked(1));
}

void TstPromocaoPedidos::clickOnAnEmptyListChangesNothing() {
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    b->click(grid(), 0, 6);
    QCOMPARE(grid()->rows(), 1);
    QCOMPARE(grid()->text(0, 6), u"SELEÇÃO"_s);
}

void TstPromocaoPedidos::tickPictureIsTheMainWindows() {
    QPixmap blue(16, 16);
    blue.fill(Qt::blue);
    m_screen = std::make_unique<PromocaoPedidos>(nullptr, QIcon(blue));
    QVERIFY(showActive(m_screen.get()));
    lista();
    b->click(grid(), 1, 6);
    const auto image = grid()->model()->index(0, 6).data(Qt::DecorationRole).value<QIcon>();
    QCOMPARE(image.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::blue));
    // Drawn in the middle of its cell.
    const QRect cell = grid()->visualRect(grid()->model()->index(0, 6));
    const QImage painted = grid()->viewport()->grab(cell).toImage();
    QCOMPARE(painted.pixelColor(painted.width() / 2, painted.height() / 2), QColor(Qt::blue));
}

void TstPromocaoPedidos::tickAllAndUntickAll() {
    lista();
    b->click(grid(), 2, 6);
    press(u"Command2"_s);
    QCOMPARE(ticked(), QStringList({u" "_s, u" "_s, u" "_s}));
    QCOMPARE(button(u"Command2"_s)->text(), u"DESMARCAR TODOS"_s);
    press(u"Command2"_s);
    QCOMPARE(ticked(), QStringList(3));
    QCOMPARE(button(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    for (int row = 1; row <= 3; ++row)
        QVERIFY(!grid()->hasPicture(row, 6));
    // The caption decides, not the rows.
    press(u"Command2"_s);
    for (int row = 1; row <= 3; ++row)
        b->click(grid(), row, 6);
    press(u"Command2"_s);
    QCOMPARE(ticked(), QStringList(3));
    QCOMPARE(button(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
}

void TstPromocaoPedidos::newListStartsUnticked() {
    lista();
    press(u"Command2"_s);
    type(u"7"_s);
    QCOMPARE(ticked(), QStringList(3));
    QCOMPARE(button(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
}

void TstPromocaoPedidos::priceAfterLeaving_data() {
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("mostrado");
    QTest::newRow("whole") << u"12"_s << u"12,00"_s;
    QTest::newRow("comma") << u"12,5"_s << u"12,50"_s;
    QTest::newRow("point form") << u"1234.56"_s << u"1.234,56"_s;
    QTest::newRow("Brazilian form") << u"1.234,56"_s << u"1.234,56"_s;
    QTest::newRow("half a cent up") << u"12,345"_s << u"12,35"_s;
    QTest::newRow("less than half a cent") << u"12,344"_s << u"12,34"_s;
    QTest::newRow("sign") << u"+2"_s << u"2,00"_s;
    QTest::newRow("negative") << u"-3"_s << u"-3,00"_s;
    QTest::newRow("zero") << u"0"_s << u"0,00"_s;
    QTest::newRow("letters") << u"abc"_s << u"0,00"_s;
    QTest::newRow("digits and letters") << u"12abc"_s << u"0,00"_s;
    QTest::newRow("money sign") << u"R$ 5,00"_s << u"0,00"_s;
    QTest::newRow("comma alone") << u","_s << u"0,00"_s;
    QTest::newRow("minus alone") << u"-"_s << u"0,00"_s;
    QTest::newRow("exponent") << u"1e5"_s << u"0,00"_s;
    QTest::newRow("full-width digits") << u"\uFF11\uFF12"_s << u"0,00"_s;
    QTest::newRow("two commas") << u"1,2,3"_s << u"0,00"_s;
    QTest::newRow("large") << u"99999999999"_s << u"99.999.999.999,00"_s;
}

void TstPromocaoPedidos::priceAfterLeaving() {
    QFETCH(QString, pasted);
    enterValue(pasted);
    QTEST(venda()->text(), "mostrado");
}

void TstPromocaoPedidos::priceBeyondAllMoneyIsAnError() {
    ModalHelper modals;
    modals.expectContaining(u"Erro em tempo de execução 6:"_s, QMessageBox::Ok);
    enterValue(u"9"_s.repeated(20));
    QCOMPARE(modals.problem(), QString());
    QVERIFY(m_screen->isVisible());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::priceRefused_data() {
    QTest::addColumn<QString>("pasted");
    QTest::newRow("zero") << u"0"_s;
    QTest::newRow("negative") << u"-3"_s;
    QTest::newRow("letters") << u"abc"_s;
    QTest::newRow("rounds to zero") << u"0,004"_s;
}

void TstPromocaoPedidos::priceRefused() {
    QFETCH(QString, pasted);
    lista();
    press(u"Command2"_s);
    enterValue(pasted);
    ModalHelper modals;
    modals.expect(invalidValue, QMessageBox::Ok);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modals.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(m_screen->focusWidget(), venda());
    QVERIFY(m_screen->isVisible());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::nothingTickedIsRefused() {
    lista();
    enterValue(u"1"_s);
    ModalHelper modals;
    modals.expect(withoutOrder, QMessageBox::Ok);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(m_screen->focusWidget(), venda());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::refusedPriceComesFirst() {
    ModalHelper modals;
    modals.expect(invalidValue, QMessageBox::Ok);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
}

void TstPromocaoPedidos::answerNoChangesNothing() {
    lista();
    press(u"Command2"_s);
    enterValue(u"1"_s);
    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::NoButton}) {
        ModalHelper modals;
        modals.expect(pergunta, answer);
        press(u"Command1"_s);
        QCOMPARE(modals.problem(), QString());
        QCOMPARE(modals.boxes()[0].title, u"Atenção!!!"_s);
        QCOMPARE(modals.boxes()[0].icon, QMessageBox::Information);
        QCOMPARE(modals.boxes()[0].buttons, QMessageBox::Yes | QMessageBox::No);
        QVERIFY(m_screen->isVisible());
        QCOMPARE(ticked(), QStringList({u" "_s, u" "_s, u" "_s}));
    }
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::appliesToTickedLinesInGridOrder() {
    lista();
    b->click(grid(), 3, 6);
    b->click(grid(), 1, 6);
    venda()->setFocus();
    QTest::keyClicks(venda(), u"12.5"_s);
    QTest::keyClick(venda(), Qt::Key_Tab);
    QCOMPARE(venda()->text(), u"12,50"_s);
    ModalHelper modals;
    modals.expect(pergunta, QMessageBox::Yes);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements(), QStringList({update(u" 12.5"_s, m_ids[0]), update(u" 12.5"_s, m_ids[2])}));
    QVERIFY(!m_screen->isVisible());
    QCOMPARE(b->server().query(u"SELECT unitario, totalped FROM orcamento ORDER BY FIELD(id, "_s +
                               m_ids.join(u", "_s) + u")"_s),
             QList<QStringList>(
                 {{u"12.50"_s, u"18750.00"_s}, {u"1234.50"_s, u"2469.00"_s}, {u"12.50"_s, u"4.16"_s}}));
}

void TstPromocaoPedidos::statementOfEachPrice_data() {
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("value");
    QTest::newRow("whole") << u"12"_s << u" 12"_s;
    QTest::newRow("one decimal") << u"12,5"_s << u" 12.5"_s;
    QTest::newRow("two decimals") << u"0,65"_s << u" 0.65"_s;
    QTest::newRow("rounded as shown") << u"12,345"_s << u" 12.35"_s;
    QTest::newRow("Brazilian form") << u"1.234,56"_s << u" 1234.56"_s;
    QTest::newRow("point form") << u"1234.56"_s << u" 1234.56"_s;
    QTest::newRow("large") << u"99999999999"_s << u" 99999999999"_s;
}

void TstPromocaoPedidos::statementOfEachPrice() {
    QFETCH(QString, pasted);
    QFETCH(QString, value);
    lista();
    b->click(grid(), 2, 6);
    enterValue(pasted);
    ModalHelper modals;
    modals.expect(pergunta, QMessageBox::Yes);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements(), QStringList(update(value, m_ids[1])));
}

void TstPromocaoPedidos::pressedWithoutLeavingThePriceAppliesWhatIsShown() {
    lista();
    b->click(grid(), 2, 6);
    venda()->setFocus();
    pasteInto(venda(), u"12abc"_s);
    ModalHelper modals;
    modals.expect(invalidValue, QMessageBox::Ok);
    button(u"Command1"_s)->click(); // as an assistive tool does
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(venda()->text(), u"0,00"_s);
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::deletedProductIsNoObstacle() {
    lista();
    b->click(grid(), 2, 6);
    b->server().execute(u"DELETE FROM produtos; DELETE FROM orcamento WHERE id="_s + m_ids[1]);
    enterValue(u"1"_s);
    ModalHelper modals;
    modals.expect(pergunta, QMessageBox::Yes);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    QVERIFY(!m_screen->isVisible());
    QCOMPARE(b->statements(), QStringList(update(u" 1"_s, m_ids[1])));
}

void TstPromocaoPedidos::failedUpdateLeavesTheEarlierOnes() {
    FaultProxy proxy(b->server().socket());
    b->server().useSocket(proxy.socket());
    b->connect();
    lista();
    press(u"Command2"_s);
    enterValue(u"3"_s);
    proxy.cutBefore(2);
    ModalHelper modals;
    modals.expect(pergunta, QMessageBox::Yes);
    modals.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    press(u"Command1"_s);
    QCOMPARE(modals.problem(), QString());
    QVERIFY(m_screen->isVisible());
    QVERIFY(modals.boxes()[1].details.contains(update(u" 3"_s, m_ids[1])));
    QCOMPARE(b->server().query(u"SELECT id FROM orcamento WHERE unitario=3"_s),
             QList<QStringList>({{m_ids[0]}}));
    b->server().useSocket(b->server().socket());
    b->connect();
}

void TstPromocaoPedidos::enterMovesOn() {
    lista();
    descricao()->setFocus();
    for (QWidget* next :
         QList<QWidget*>{venda(), grid(), button(u"Command2"_s), button(u"Command1"_s), descricao()}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), next);
    }
    QVERIFY(m_screen->isVisible());
}

void TstPromocaoPedidos::focusSelectsTheText() {
    lista();
    QTest::keyClick(venda(), Qt::Key_Backtab);
    QCOMPARE(descricao()->selectedText(), u"PÃO FRANCÊS"_s);
    QTest::mouseClick(venda(), Qt::LeftButton);
    QCOMPARE(venda()->selectedText(), u"0,00"_s);
}

void TstPromocaoPedidos::keysFollowTheConvention() {
    QTest::keyClicks(descricao(), u"d'agua"_s);
    QCOMPARE(descricao()->text(), u"D´AGUA"_s);
    QTest::keyClick(descricao(), Qt::Key_Escape);
    QVERIFY(!m_screen->isVisible());
}

void TstPromocaoPedidos::worksByKeyboardAlone() {
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    ModalHelper modals;
    modals.onOpen([](QWidget* screen) {
        QTest::keyClick(screen->findChild<Grid*>(u"Grid"_s), Qt::Key_Down);
        QTest::keyClick(screen->findChild<Grid*>(u"Grid"_s), Qt::Key_Return);
    });
    const auto key = [](Qt::Key which) { QTest::keyClick(QApplication::focusWidget(), which); };
    pasteInto(descricao(), u"pão"_s);
    key(Qt::Key_Return);
    QTRY_COMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QVERIFY(showActive(m_screen.get()));
    QVERIFY(venda()->hasFocus());
    QTest::keyClicks(venda(), u"0.7"_s);
    key(Qt::Key_Return);
    QTRY_VERIFY(grid()->hasFocus());
    key(Qt::Key_Down);
    key(Qt::Key_End);
    QCOMPARE(grid()->currentColumn(), 6);
    key(Qt::Key_Space);
    key(Qt::Key_Return);
    QTRY_VERIFY(button(u"Command2"_s)->hasFocus());
    key(Qt::Key_Return);
    QTRY_VERIFY(button(u"Command1"_s)->hasFocus());
    b->mark();
    modals.expect(pergunta, QMessageBox::Yes);
    key(Qt::Key_Space);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->statements().size(), 1);
    QVERIFY(!m_screen->isVisible());
}

QTEST_MAIN(TstPromocaoPedidos)
#include "tst_promocao_pedidos.moc"

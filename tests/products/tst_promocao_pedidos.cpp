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

const QString inexistente = u"Descricao inexistente. Verifique!!!"_s;
const QString valorInvalido = u"Valor inválido. Verifique!!!"_s;
const QString semPedido = u"Não há nenhum pedido selecionado. Verifique!!!"_s;
const QString pergunta = u"Deseja realmente realizar esse processo?"_s;
const QString naoCadastrada = u"Descrição não cadastrada. Verifique!!!"_s;
const QString codigo = u"0000000000007"_s;
const QString listagem =
    u"Select o.id, c.nome, c.fantasia, c.cidade, o.quantidade, o.unitario from orcamento as o left join "
    u"clientes "
    "as c on o.codigocli=c.codigo Where o.situacaoorc in ('A','C') and o.tipooperacao='P' and "
    "o.codigo='0000000000007' Order By c.nome"_s;

QString nomeAcessivel(QWidget* controle) {
    QAccessibleInterface* acessivel = QAccessible::queryAccessibleInterface(controle);
    return acessivel ? acessivel->text(QAccessible::Name) : QString();
}

QString atualizacao(const QString& valor, const QString& id) {
    return u"Update Orcamento Set unitario="_s + valor +
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
    void cleanup() { m_tela.reset(); }

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

  private:
    Grid* grade() const { return m_tela->findChild<Grid*>(u"Grid1"_s); }
    TextBox* descricao() const { return m_tela->findChild<TextBox*>(u"Descricao"_s); }
    TextBox* venda() const { return m_tela->findChild<TextBox*>(u"Venda"_s); }
    QPushButton* botao(const QString& nome) const { return m_tela->findChild<QPushButton*>(nome); }

    /// Types into the product box and leaves it with Tab.
    void digita(const QString& texto);
    /// Leaves the product box with Tab; the search that follows has then ended.
    void leaveProduct();
    /// The same with product 7, which lists its lines.
    void lista();
    void poeValor(const QString& texto);
    void aperta(const QString& nome) const { QTest::mouseClick(botao(nome), Qt::LeftButton); }
    bool abre();

    /// One column of all data rows.
    QStringList coluna(int coluna) const;
    QStringList marcadas() const;

    std::unique_ptr<Bench> b;
    std::unique_ptr<PromocaoPedidos> m_tela;
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
    const QString gama =
        b->shop().linhaAberta(codigo, u"3"_s, u"quantidade=0.333, unitario=1.50, totalped=0.50"_s);
    const QString alfa =
        b->shop().linhaAberta(codigo, u"1"_s, u"quantidade=1500, unitario=0.65, totalped=975"_s);
    const QString beta =
        b->shop().linhaAberta(codigo, u"2"_s, u"quantidade=2, unitario=1234.5, totalped=2469"_s);
    m_ids = {alfa, beta, gama};
    QVERIFY(abre());
    b->mark();
}

bool TstPromocaoPedidos::abre() {
    m_tela = std::make_unique<PromocaoPedidos>(nullptr);
    return showActive(m_tela.get());
}

void TstPromocaoPedidos::digita(const QString& texto) {
    descricao()->setFocus();
    descricao()->selectAll();
    pasteInto(descricao(), texto);
    leaveProduct();
}

void TstPromocaoPedidos::leaveProduct() {
    QTest::keyClick(descricao(), Qt::Key_Tab);
    QCoreApplication::processEvents();
}

void TstPromocaoPedidos::lista() {
    digita(u"7"_s);
    QCOMPARE(grade()->rows(), 4);
    b->mark();
}

void TstPromocaoPedidos::poeValor(const QString& texto) {
    venda()->setFocus();
    venda()->selectAll();
    pasteInto(venda(), texto);
    QTest::keyClick(venda(), Qt::Key_Tab);
}

QStringList TstPromocaoPedidos::coluna(int coluna) const {
    QStringList textos;
    for (int linha = 1; linha < grade()->rows(); ++linha)
        textos.append(grade()->text(linha, coluna));
    return textos;
}

QStringList TstPromocaoPedidos::marcadas() const {
    return coluna(6);
}

void TstPromocaoPedidos::opensEmpty() {
    QCOMPARE(m_tela->windowTitle(), u" Atualiza preço nos pedidos"_s);
    QCOMPARE(grade()->rows(), 1);
    QCOMPARE(grade()->currentRow(), 0);
    QCOMPARE(descricao()->text(), QString());
    QCOMPARE(venda()->text(), u"0,00"_s);
    QVERIFY(!botao(u"Command2"_s)->isEnabled());
    QVERIFY(botao(u"Command1"_s)->isEnabled());
    QVERIFY(descricao()->hasFocus());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::controlsAndTheirNames() {
    QCOMPARE(m_tela->objectName(), u"PromocaoPedidos"_s);
    QCOMPARE(m_tela->findChild<QLabel*>(u"Label1"_s)->text(), u"CÓDIGO/DESCRIÇÃO"_s);
    QCOMPARE(m_tela->findChild<QLabel*>(u"Label2"_s)->text(), u"R$ VENDA DESEJADA"_s);
    QCOMPARE(botao(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    QCOMPARE(botao(u"Command1"_s)->text(), u"GERAR ATUALIZAÇÃO DE PREÇOS"_s);
    QVERIFY(m_tela->findChild<QFrame*>(u"Frame1"_s));
    QCOMPARE(nomeAcessivel(descricao()), u"CÓDIGO/DESCRIÇÃO"_s);
    QCOMPARE(nomeAcessivel(venda()), u"R$ VENDA DESEJADA"_s);
    QCOMPARE(nomeAcessivel(botao(u"Command1"_s)), u"GERAR ATUALIZAÇÃO DE PREÇOS"_s);
    QVERIFY(!nomeAcessivel(grade()).isEmpty());
}

void TstPromocaoPedidos::gridFormat() {
    const QStringList legendas = {u"ID"_s,    u"CLIENTE"_s, u"FANTASIA"_s, u"CIDADE"_s,
                                  u"QUANT"_s, u"R$ UNIT"_s, u"SELEÇÃO"_s};
    const QList<int> larguras = {900, 4260, 3000, 2450, 900, 1000, 850};
    const QList<Qt::AlignmentFlag> alinhamentos = {Qt::AlignRight,  Qt::AlignLeft,  Qt::AlignLeft,
                                                   Qt::AlignLeft,   Qt::AlignRight, Qt::AlignRight,
                                                   Qt::AlignHCenter};
    lista();
    QCOMPARE(grade()->columns(), 7);
    for (int coluna = 0; coluna < 7; ++coluna) {
        QCOMPARE(grade()->text(0, coluna), legendas[coluna]);
        QCOMPARE(grade()->columnTwips(coluna), larguras[coluna]);
        QCOMPARE(grade()->columnWidth(coluna), twipsToPixels(grade(), larguras[coluna]));
        QVERIFY(grade()->isBold(0, coluna));
        const auto alinhamento =
            grade()->model()->index(0, coluna).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        QCOMPARE(alinhamento & Qt::AlignHorizontal_Mask, alinhamentos[coluna]);
    }
}

void TstPromocaoPedidos::productByCodeListsItsLines() {
    digita(u"7"_s);
    QCOMPARE(b->statements(),
             QStringList(
                 {u"Select * from Produtos where CodFabr='0000000000007' and ativo='S' order by descricao"_s,
                  u"Select Descricao from produtos where CodFabr='0000000000007'"_s, listagem}));
    QCOMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QCOMPARE(grade()->rows(), 4);
    QCOMPARE(cells(grade(), 1), QStringList({m_ids[0], u"ALFA"_s, u"BAR ALFA"_s, u"CAMPINAS"_s,
                                             u"1.500,000"_s, u"0,65"_s, QString()}));
    QCOMPARE(cells(grade(), 2), QStringList({m_ids[1], u"BETA"_s, u"BAR BETA"_s, u"JUNDIAÍ"_s, u"2,000"_s,
                                             u"1.234,50"_s, QString()}));
    QCOMPARE(cells(grade(), 3), QStringList({m_ids[2], u"GAMA"_s, u"BAR GAMA"_s, u"VALINHOS"_s, u"0,333"_s,
                                             u"1,50"_s, QString()}));
    QVERIFY(botao(u"Command2"_s)->isEnabled());
    QCOMPARE(botao(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    QVERIFY(!rs.isOpen());
    QVERIFY(venda()->hasFocus());
}

void TstPromocaoPedidos::productByDescriptionListsItsLines() {
    digita(u"franc"_s);
    QCOMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QCOMPARE(coluna(0), m_ids);
}

void TstPromocaoPedidos::productPickedFromSeveral() {
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    const QString doce = b->shop().linhaAberta(u"8"_s, u"2"_s);
    ModalHelper modais;
    modais.onOpen([](QWidget* tela) { QTest::keyClick(tela->findChild<Grid*>(u"Grid"_s), Qt::Key_Return); });
    digita(u"pão"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(descricao()->text(), u"PÃO DOCE"_s);
    QCOMPARE(coluna(0), QStringList(doce));
}

void TstPromocaoPedidos::emptyTextDoesNothing() {
    leaveProduct();
    QCOMPARE(b->statements(), QStringList());
    QVERIFY(venda()->hasFocus());
}

void TstPromocaoPedidos::blanksAreRefused() {
    ModalHelper modais;
    modais.expect(u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s, QMessageBox::Ok);
    modais.expect(inexistente, QMessageBox::Ok);
    digita(u"   "_s);
    QCOMPARE(modais.problem(), QString());
}

void TstPromocaoPedidos::onlyOpenPresalesOfTheProduct() {
    const QString situacaoC = b->shop().linhaAberta(codigo, u"2"_s, u"situacaoorc='C'"_s);
    b->shop().linhaAberta(codigo, u"1"_s, u"situacaoorc='B'"_s);
    b->shop().linhaAberta(codigo, u"1"_s, u"situacaoorc='X'"_s);
    b->shop().linhaAberta(codigo, u"1"_s, u"TipoOperacao='D'"_s);
    b->shop().linhaAberta(u"0000000000008"_s, u"1"_s);
    digita(u"7"_s);
    QStringList esperadas = m_ids + QStringList(situacaoC);
    QStringList listadas = coluna(0);
    esperadas.sort();
    listadas.sort();
    QCOMPARE(listadas, esperadas);
    QCOMPARE(coluna(1), QStringList({u"ALFA"_s, u"BETA"_s, u"BETA"_s, u"GAMA"_s}));
}

void TstPromocaoPedidos::linesWithoutCustomerStillShow() {
    const QString sem = b->shop().linhaAberta(codigo, u"99"_s, u"quantidade=3, unitario=2"_s);
    digita(u"7"_s);
    QCOMPARE(cells(grade(), 1),
             QStringList({sem, QString(), QString(), QString(), u"3,000"_s, u"2,00"_s, QString()}));
    QCOMPARE(grade()->rows(), 5);
}

void TstPromocaoPedidos::nullsShowNothing() {
    b->server().execute(u"UPDATE clientes SET nome=NULL, fantasia=NULL, cidade=NULL WHERE codigo='1'; "
                        "UPDATE orcamento SET quantidade=NULL, unitario=NULL, totalped=NULL WHERE id="_s +
                        m_ids[0]);
    digita(u"7"_s);
    QCOMPARE(cells(grade(), 1),
             QStringList({m_ids[0], QString(), QString(), QString(), QString(), QString(), QString()}));
}

void TstPromocaoPedidos::fantasyWidthByNumberOfLines_data() {
    QTest::addColumn<int>("linhas");
    QTest::addColumn<int>("largura");
    QTest::newRow("14 lines, 15 rows") << 14 << 3000;
    QTest::newRow("15 lines, 16 rows") << 15 << 2750;
    QTest::newRow("16 lines, 17 rows") << 16 << 2750;
}

void TstPromocaoPedidos::fantasyWidthByNumberOfLines() {
    QFETCH(int, linhas);
    QFETCH(int, largura);
    for (int i = 3; i < linhas; ++i)
        b->shop().linhaAberta(codigo, u"1"_s);
    digita(u"7"_s);
    QCOMPARE(grade()->rows(), linhas + 1);
    QCOMPARE(grade()->columnTwips(2), largura);
    // A short list afterwards has the wide column again.
    b->shop().produto(u"8"_s, u"ROSCA"_s);
    digita(u"rosca"_s);
    QCOMPARE(grade()->rows(), 1);
    QCOMPARE(grade()->columnTwips(2), 3000);
}

void TstPromocaoPedidos::productWithoutLines() {
    b->shop().produto(u"8"_s, u"ROSCA"_s);
    lista();
    digita(u"rosca"_s);
    QCOMPARE(descricao()->text(), u"ROSCA"_s);
    QCOMPARE(grade()->rows(), 1);
    QVERIFY(!botao(u"Command2"_s)->isEnabled());
}

void TstPromocaoPedidos::unknownProductIsTold() {
    ModalHelper modais;
    modais.expect(naoCadastrada, QMessageBox::Ok);
    modais.expect(inexistente, QMessageBox::Ok);
    digita(u"zz"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[1].title, u"Atenção!!!"_s);
    QCOMPARE(modais.boxes()[1].icon, QMessageBox::Information);
    QCOMPARE(modais.boxes()[1].buttons, QMessageBox::Ok);
    QCOMPARE(descricao()->text(), u"ZZ"_s);
    QVERIFY(!rs.isOpen());
    QCOMPARE(b->statements().last(), u"Select Descricao from produtos where CodFabr=''"_s);
    QCOMPARE(m_tela->focusWidget(), venda());
}

void TstPromocaoPedidos::escapedSearchLeavesTheListInPlace() {
    b->shop().produto(u"8"_s, u"MASSA DE PÃO FRANCÊS"_s);
    lista();
    b->click(grade(), 2, 6);
    ModalHelper modais;
    modais.onOpen([](QWidget* tela) { QTest::keyClick(tela, Qt::Key_Escape); });
    modais.expect(inexistente, QMessageBox::Ok);
    descricao()->setFocus();
    leaveProduct(); // "PÃO FRANCÊS" now stands in two descriptions
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QCOMPARE(coluna(0), m_ids);
    QCOMPARE(marcadas(), QStringList({QString(), u" "_s, QString()}));
    QVERIFY(botao(u"Command2"_s)->isEnabled());
}

void TstPromocaoPedidos::productDeletedBetweenSearchAndDescription() {
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    ModalHelper modais;
    modais.onOpen([this](QWidget* tela) {
        b->server().execute(u"DELETE FROM produtos"_s);
        QTest::keyClick(tela->findChild<Grid*>(u"Grid"_s), Qt::Key_Return);
    });
    modais.expect(inexistente, QMessageBox::Ok);
    digita(u"pão"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(descricao()->text(), u"PÃO"_s);
    QCOMPARE(grade()->rows(), 1);
}

void TstPromocaoPedidos::storedDescriptionIsShownLetterByLetter() {
    b->shop().produto(u"8"_s, u"Rosca d'Água"_s);
    digita(u"rosca"_s);
    QCOMPARE(descricao()->text(), u"Rosca d'Água"_s);
}

void TstPromocaoPedidos::shownApostropheNeverReachesTheSearch() {
    b->shop().produto(u"8"_s, u"Rosca d'Água"_s);
    digita(u"rosca"_s);
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
    QCOMPARE(grade()->rows(), 1);
    QVERIFY(!botao(u"Command2"_s)->isEnabled());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::leavingAgainSearchesAgain() {
    lista();
    b->click(grade(), 1, 6);
    b->shop().linhaAberta(codigo, u"1"_s);
    descricao()->setFocus();
    leaveProduct();
    QCOMPARE(grade()->rows(), 5);
    QVERIFY(!marcadas().contains(u" "_s));
    QVERIFY(botao(u"Command2"_s)->isEnabled());
}

void TstPromocaoPedidos::messageBoxIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modais;
    modais.expect(u"aviso"_s, QMessageBox::Ok);
    QMessageBox::information(m_tela.get(), u"x"_s, u"aviso"_s);
    QVERIFY(showActive(m_tela.get())); // as a window manager does when the box is gone
    QVERIFY(descricao()->hasFocus());
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::anotherWindowIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modais;
    QWidget outra;
    QVERIFY(showActive(&outra));
    m_tela->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_tela.get()));
    QVERIFY(descricao()->hasFocus());
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::escapeIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modais;
    QTest::keyClick(descricao(), Qt::Key_Escape);
    QVERIFY(!m_tela->isVisible());
    QTest::qWait(20);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::closingIsNoLeaving() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modais;
    m_tela->close();
    m_tela.reset();
    QTest::qWait(20);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements(), QStringList());
}

// However it comes about that the box is told to be left while the search's own screen is open.
void TstPromocaoPedidos::boxOfTheSearchStartsNoSecondOne() {
    ModalHelper modais;
    modais.onOpen([this](QWidget* tela) {
        Q_EMIT descricao()->findChild<FieldLeave*>()->left();
        QTest::keyClick(tela, Qt::Key_Escape);
    });
    modais.expect(inexistente, QMessageBox::Ok);
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    digita(u"pão"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements().size(), 3); // the search, the selection screen's setting, the description
}

void TstPromocaoPedidos::pressThatLeavesTheBoxForAMessageOperatesNothing() {
    pasteInto(descricao(), u"zz"_s);
    ModalHelper modais;
    modais.expect(naoCadastrada, QMessageBox::Ok);
    modais.expect(inexistente, QMessageBox::Ok);
    QTest::mousePress(botao(u"Command1"_s), Qt::LeftButton);
    QTRY_VERIFY(!botao(u"Command1"_s)->isDown());
    QCOMPARE(modais.problem(), QString()); // not "Valor inválido"
}

void TstPromocaoPedidos::clickTicksAndUnticks() {
    lista();
    b->click(grade(), 2, 6);
    QCOMPARE(marcadas(), QStringList({QString(), u" "_s, QString()}));
    QVERIFY(grade()->hasPicture(2, 6));
    QVERIFY(!grade()->hasPicture(1, 6));
    b->click(grade(), 3, 6);
    QCOMPARE(marcadas(), QStringList({QString(), u" "_s, u" "_s}));
    b->click(grade(), 2, 6);
    QCOMPARE(marcadas(), QStringList({QString(), QString(), u" "_s}));
    QVERIFY(!grade()->hasPicture(2, 6));
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::spaceTicks() {
    lista();
    grade()->setFocus();
    grade()->setCurrentCell(1, 6);
    QTest::keyClick(grade(), Qt::Key_Space);
    QCOMPARE(marcadas(), QStringList({u" "_s, QString(), QString()}));
    grade()->setCurrentCell(1, 5);
    QTest::keyClick(grade(), Qt::Key_Space);
    QCOMPARE(marcadas(), QStringList({u" "_s, QString(), QString()}));
}

void TstPromocaoPedidos::clickElsewhereChangesNothing() {
    lista();
    for (int coluna = 0; coluna < 6; ++coluna)
        b->click(grade(), 2, coluna);
    b->click(grade(), 0, 6);
    QCOMPARE(marcadas(), QStringList(3));
}

void TstPromocaoPedidos::doubleClickIsTwoClicks() {
    lista();
    const QPoint meio = grade()->visualRect(grade()->model()->index(0, 6)).center();
    QTest::mouseClick(grade()->viewport(), Qt::LeftButton, {}, meio);
    QVERIFY(grade()->isTicked(1));
    QTest::mouseDClick(grade()->viewport(), Qt::LeftButton, {}, meio);
    QVERIFY(!grade()->isTicked(1));
}

void TstPromocaoPedidos::clickOnAnEmptyListChangesNothing() {
    QTest::mouseClick(grade()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    b->click(grade(), 0, 6);
    QCOMPARE(grade()->rows(), 1);
    QCOMPARE(grade()->text(0, 6), u"SELEÇÃO"_s);
}

void TstPromocaoPedidos::tickPictureIsTheMainWindows() {
    QPixmap azul(16, 16);
    azul.fill(Qt::blue);
    m_tela = std::make_unique<PromocaoPedidos>(nullptr, QIcon(azul));
    QVERIFY(showActive(m_tela.get()));
    lista();
    b->click(grade(), 1, 6);
    const auto imagem = grade()->model()->index(0, 6).data(Qt::DecorationRole).value<QIcon>();
    QCOMPARE(imagem.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::blue));
    // Drawn in the middle of its cell.
    const QRect celula = grade()->visualRect(grade()->model()->index(0, 6));
    const QImage pintado = grade()->viewport()->grab(celula).toImage();
    QCOMPARE(pintado.pixelColor(pintado.width() / 2, pintado.height() / 2), QColor(Qt::blue));
}

void TstPromocaoPedidos::tickAllAndUntickAll() {
    lista();
    b->click(grade(), 2, 6);
    aperta(u"Command2"_s);
    QCOMPARE(marcadas(), QStringList({u" "_s, u" "_s, u" "_s}));
    QCOMPARE(botao(u"Command2"_s)->text(), u"DESMARCAR TODOS"_s);
    aperta(u"Command2"_s);
    QCOMPARE(marcadas(), QStringList(3));
    QCOMPARE(botao(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
    for (int linha = 1; linha <= 3; ++linha)
        QVERIFY(!grade()->hasPicture(linha, 6));
    // The caption decides, not the rows.
    aperta(u"Command2"_s);
    for (int linha = 1; linha <= 3; ++linha)
        b->click(grade(), linha, 6);
    aperta(u"Command2"_s);
    QCOMPARE(marcadas(), QStringList(3));
    QCOMPARE(botao(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
}

void TstPromocaoPedidos::newListStartsUnticked() {
    lista();
    aperta(u"Command2"_s);
    digita(u"7"_s);
    QCOMPARE(marcadas(), QStringList(3));
    QCOMPARE(botao(u"Command2"_s)->text(), u"SELECIONAR TODOS"_s);
}

void TstPromocaoPedidos::priceAfterLeaving_data() {
    QTest::addColumn<QString>("colado");
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
    QFETCH(QString, colado);
    poeValor(colado);
    QTEST(venda()->text(), "mostrado");
}

void TstPromocaoPedidos::priceBeyondAllMoneyIsAnError() {
    ModalHelper modais;
    modais.expectContaining(u"Erro em tempo de execução 6:"_s, QMessageBox::Ok);
    poeValor(u"9"_s.repeated(20));
    QCOMPARE(modais.problem(), QString());
    QVERIFY(m_tela->isVisible());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::priceRefused_data() {
    QTest::addColumn<QString>("colado");
    QTest::newRow("zero") << u"0"_s;
    QTest::newRow("negative") << u"-3"_s;
    QTest::newRow("letters") << u"abc"_s;
    QTest::newRow("rounds to zero") << u"0,004"_s;
}

void TstPromocaoPedidos::priceRefused() {
    QFETCH(QString, colado);
    lista();
    aperta(u"Command2"_s);
    poeValor(colado);
    ModalHelper modais;
    modais.expect(valorInvalido, QMessageBox::Ok);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modais.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(m_tela->focusWidget(), venda());
    QVERIFY(m_tela->isVisible());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::nothingTickedIsRefused() {
    lista();
    poeValor(u"1"_s);
    ModalHelper modais;
    modais.expect(semPedido, QMessageBox::Ok);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(m_tela->focusWidget(), venda());
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::refusedPriceComesFirst() {
    ModalHelper modais;
    modais.expect(valorInvalido, QMessageBox::Ok);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
}

void TstPromocaoPedidos::answerNoChangesNothing() {
    lista();
    aperta(u"Command2"_s);
    poeValor(u"1"_s);
    for (const QMessageBox::StandardButton resposta : {QMessageBox::No, QMessageBox::NoButton}) {
        ModalHelper modais;
        modais.expect(pergunta, resposta);
        aperta(u"Command1"_s);
        QCOMPARE(modais.problem(), QString());
        QCOMPARE(modais.boxes()[0].title, u"Atenção!!!"_s);
        QCOMPARE(modais.boxes()[0].icon, QMessageBox::Information);
        QCOMPARE(modais.boxes()[0].buttons, QMessageBox::Yes | QMessageBox::No);
        QVERIFY(m_tela->isVisible());
        QCOMPARE(marcadas(), QStringList({u" "_s, u" "_s, u" "_s}));
    }
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::appliesToTickedLinesInGridOrder() {
    lista();
    b->click(grade(), 3, 6);
    b->click(grade(), 1, 6);
    venda()->setFocus();
    QTest::keyClicks(venda(), u"12.5"_s);
    QTest::keyClick(venda(), Qt::Key_Tab);
    QCOMPARE(venda()->text(), u"12,50"_s);
    ModalHelper modais;
    modais.expect(pergunta, QMessageBox::Yes);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements(),
             QStringList({atualizacao(u" 12.5"_s, m_ids[0]), atualizacao(u" 12.5"_s, m_ids[2])}));
    QVERIFY(!m_tela->isVisible());
    QCOMPARE(b->server().query(u"SELECT unitario, totalped FROM orcamento ORDER BY FIELD(id, "_s +
                               m_ids.join(u", "_s) + u")"_s),
             QList<QStringList>(
                 {{u"12.50"_s, u"18750.00"_s}, {u"1234.50"_s, u"2469.00"_s}, {u"12.50"_s, u"4.16"_s}}));
}

void TstPromocaoPedidos::statementOfEachPrice_data() {
    QTest::addColumn<QString>("colado");
    QTest::addColumn<QString>("valor");
    QTest::newRow("whole") << u"12"_s << u" 12"_s;
    QTest::newRow("one decimal") << u"12,5"_s << u" 12.5"_s;
    QTest::newRow("two decimals") << u"0,65"_s << u" 0.65"_s;
    QTest::newRow("rounded as shown") << u"12,345"_s << u" 12.35"_s;
    QTest::newRow("Brazilian form") << u"1.234,56"_s << u" 1234.56"_s;
    QTest::newRow("point form") << u"1234.56"_s << u" 1234.56"_s;
    QTest::newRow("large") << u"99999999999"_s << u" 99999999999"_s;
}

void TstPromocaoPedidos::statementOfEachPrice() {
    QFETCH(QString, colado);
    QFETCH(QString, valor);
    lista();
    b->click(grade(), 2, 6);
    poeValor(colado);
    ModalHelper modais;
    modais.expect(pergunta, QMessageBox::Yes);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements(), QStringList(atualizacao(valor, m_ids[1])));
}

void TstPromocaoPedidos::pressedWithoutLeavingThePriceAppliesWhatIsShown() {
    lista();
    b->click(grade(), 2, 6);
    venda()->setFocus();
    pasteInto(venda(), u"12abc"_s);
    ModalHelper modais;
    modais.expect(valorInvalido, QMessageBox::Ok);
    botao(u"Command1"_s)->click(); // as an assistive tool does
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(venda()->text(), u"0,00"_s);
    QCOMPARE(b->statements(), QStringList());
}

void TstPromocaoPedidos::deletedProductIsNoObstacle() {
    lista();
    b->click(grade(), 2, 6);
    b->server().execute(u"DELETE FROM produtos; DELETE FROM orcamento WHERE id="_s + m_ids[1]);
    poeValor(u"1"_s);
    ModalHelper modais;
    modais.expect(pergunta, QMessageBox::Yes);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
    QVERIFY(!m_tela->isVisible());
    QCOMPARE(b->statements(), QStringList(atualizacao(u" 1"_s, m_ids[1])));
}

void TstPromocaoPedidos::failedUpdateLeavesTheEarlierOnes() {
    FaultProxy proxy(b->server().socket());
    b->server().useSocket(proxy.socket());
    b->connect();
    lista();
    aperta(u"Command2"_s);
    poeValor(u"3"_s);
    proxy.cutBefore(2);
    ModalHelper modais;
    modais.expect(pergunta, QMessageBox::Yes);
    modais.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
    aperta(u"Command1"_s);
    QCOMPARE(modais.problem(), QString());
    QVERIFY(m_tela->isVisible());
    QVERIFY(modais.boxes()[1].details.contains(atualizacao(u" 3"_s, m_ids[1])));
    QCOMPARE(b->server().query(u"SELECT id FROM orcamento WHERE unitario=3"_s),
             QList<QStringList>({{m_ids[0]}}));
    b->server().useSocket(b->server().socket());
    b->connect();
}

void TstPromocaoPedidos::enterMovesOn() {
    lista();
    descricao()->setFocus();
    for (QWidget* proximo :
         QList<QWidget*>{venda(), grade(), botao(u"Command2"_s), botao(u"Command1"_s), descricao()}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), proximo);
    }
    QVERIFY(m_tela->isVisible());
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
    QVERIFY(!m_tela->isVisible());
}

void TstPromocaoPedidos::worksByKeyboardAlone() {
    b->shop().produto(u"8"_s, u"PÃO DOCE"_s);
    ModalHelper modais;
    modais.onOpen([](QWidget* tela) {
        QTest::keyClick(tela->findChild<Grid*>(u"Grid"_s), Qt::Key_Down);
        QTest::keyClick(tela->findChild<Grid*>(u"Grid"_s), Qt::Key_Return);
    });
    const auto tecla = [](Qt::Key qual) { QTest::keyClick(QApplication::focusWidget(), qual); };
    pasteInto(descricao(), u"pão"_s);
    tecla(Qt::Key_Return);
    QTRY_COMPARE(descricao()->text(), u"PÃO FRANCÊS"_s);
    QVERIFY(showActive(m_tela.get()));
    QVERIFY(venda()->hasFocus());
    QTest::keyClicks(venda(), u"0.7"_s);
    tecla(Qt::Key_Return);
    QTRY_VERIFY(grade()->hasFocus());
    tecla(Qt::Key_Down);
    tecla(Qt::Key_End);
    QCOMPARE(grade()->currentColumn(), 6);
    tecla(Qt::Key_Space);
    tecla(Qt::Key_Return);
    QTRY_VERIFY(botao(u"Command2"_s)->hasFocus());
    tecla(Qt::Key_Return);
    QTRY_VERIFY(botao(u"Command1"_s)->hasFocus());
    b->mark();
    modais.expect(pergunta, QMessageBox::Yes);
    tecla(Qt::Key_Space);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->statements().size(), 1);
    QVERIFY(!m_tela->isVisible());
}

QTEST_MAIN(TstPromocaoPedidos)
#include "tst_promocao_pedidos.moc"

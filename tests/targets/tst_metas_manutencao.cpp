#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "targets/MetasQuadro.h"
#include "targets/MetasQuadroColumns.h"
#include "targets/TargetsBench.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString sqlVendedores = u"Select * from Vendedores WHERE Ativo = 'S' order by Vendedor"_s;
const QString sqlLista =
    u"SELECT m.id, m.codigoproduto, p.descricao, m.Quantidade from metavendedoritem AS m INNER JOIN "
    "produtos AS p ON m.codigoproduto=p.codfabr Where CodVendedor=1"_s;

const QString withoutSeller = u"Vendedor não selecionado corretamente. Verifique!!!"_s;
const QString withoutProduct = u"Produto não selecionado corretamente. Verifique!!!"_s;
const QString invalidQuantity = u"Quantidade inválida. Verifique!!!"_s;

} // namespace

class TstMetasManutencao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
    }

    void startUp();
    void sellerLists();
    void oddSellers();
    void controlsOfTheTab();
    void gridLayout();

    void noSellerListsNothing();
    void chosenSellerIsListed();
    void otherSellersTargetsAreNotListed();
    void quantitiesAsShown_data();
    void quantitiesAsShown();
    void targetOfARemovedProductIsNotListedButBlocks();
    void thousandTargets();

    void addingSends();
    void addingWithoutSeller();
    void addingWithoutProduct();
    void quantityTyped_data();
    void quantityTyped();
    void quantityPasted_data();
    void quantityPasted();
    void duplicateIsRefused();
    void oneMessageAtATime();
    void addingAfterAnErrorReport();
    void quantityThatIsNotStoredEndsTheAdding();

    void deleting();
    void notDeleting();
    void deletingWhatIsGone();
    void otherCellsDoNothing();

  private:
    void prepareAdding(const QString& quantidade);
    void checkQuantity(const QString& stored);

    std::unique_ptr<TargetsBench> b;
};

void TstMetasManutencao::startUp() {
    StatementLog log(b->server());
    b->open();
    QCOMPARE(log.texts(), StatementLog::expected({sqlVendedores}));
    QCOMPARE(b->screen()->windowTitle(), u" Metas de vendas"_s);
    QCOMPARE(b->control<QTabWidget>(u"SSTab1"_s)->currentIndex(), 0);
    QCOMPARE(b->focus(), u"Vendedores"_s);
    QCOMPARE(b->box(u"DataIni"_s)->text(), u"01/03/2024"_s);
    QCOMPARE(b->box(u"DataFin"_s)->text(), u"15/03/2024"_s);
    QCOMPARE(b->list(u"Vendedores2"_s)->currentText(), u"(Todos)"_s);
    QCOMPARE(b->list(u"Vendedores"_s)->currentText(), QString());
}

void TstMetasManutencao::sellerLists() {
    b->shop().vendedor(45, u"ALICE"_s);
    b->shop().vendedor(1234, u"ZECA"_s);
    b->shop().vendedor(8, u"CAIO"_s, u"N"_s);
    b->open();
    const QStringList active{u"ALICE   <<045>>"_s, u"ANA   <<001>>"_s, u"BRUNO   <<002>>"_s,
                             u"ZECA   <<1234>>"_s};
    const auto items = [this](const QString& name) {
        QStringList texts;
        for (int i = 0; i < b->list(name)->count(); ++i)
            texts.append(b->list(name)->itemText(i));
        return texts;
    };
    QCOMPARE(items(u"Vendedores"_s), active);
    QCOMPARE(items(u"Vendedores2"_s), QStringList(u"(Todos)"_s) + active);
}

void TstMetasManutencao::oddSellers() {
    b->server().execute(u"DELETE FROM vendedores"_s);
    b->shop().vendedor(3, std::nullopt);
    b->shop().vendedor(4, u"D'ÁVILA & FILHOS \\"_s);
    b->shop().meta(4, u"P1"_s, u"5"_s);
    b->open();
    QCOMPARE(b->list(u"Vendedores"_s)->itemText(0), u"   <<003>>"_s);
    b->choose(u"Vendedores"_s, u"D'ÁVILA & FILHOS \\   <<004>>"_s);
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 2);
}

void TstMetasManutencao::controlsOfTheTab() {
    b->open();
    const auto* abas = b->control<QTabWidget>(u"SSTab1"_s);
    QCOMPARE(abas->tabText(0), u"CONFIGURA METAS"_s);
    QCOMPARE(abas->tabText(1), u"CONSULTA METAS"_s);
    const auto* frame = b->control(u"Frame1"_s);
    const auto text = [frame](const QString& name) { return frame->findChild<QLabel*>(name)->text(); };
    QCOMPARE(text(u"Label1"_s), u"VENDEDOR(A)"_s);
    QCOMPARE(text(u"Label2"_s), u"DESCRIÇÃO"_s);
    QCOMPARE(text(u"Label3"_s), u"QUANTIDADE"_s);
    QCOMPARE(text(u"Label4"_s), u"CLIQUE NA COLUNA QUANTIDADE PARA ALTERAR O VALOR DESTE CAMPO."_s);
    for (const auto& name : {u"Descricao"_s, u"Quantidade"_s, u"Descricao2"_s})
        QCOMPARE(b->box(name)->toolTip(), u"[F4] Consulta ítens nos pedidos efetuados"_s);
    // No F4 of the form's own: text and search stay as they are.
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"p1"_s);
    StatementLog log(b->server());
    b->key(Qt::Key_F4);
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(b->box(u"Descricao"_s)->text(), u"P1"_s);
}

void TstMetasManutencao::gridLayout() {
    b->open();
    const Grid* grid = b->grid(u"Grid1"_s);
    QCOMPARE(b->row(u"Grid1"_s, 0),
             QStringList({u"CÓDIGO"_s, u"PRODUTO"_s, u"QUANTIDADE"_s, u"EXCLUIR"_s, u"ID"_s}));
    const QList<int> widths{2230, 7100, 2000, 1640, 0};
    const QList<Qt::Alignment> sides{Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    for (int column = 0; column < grid->columns(); ++column) {
        QCOMPARE(grid->columnTwips(column), widths[column]);
        QCOMPARE(grid->isColumnHidden(column), widths[column] == 0);
        QVERIFY(grid->isBold(0, column));
        if (column < sides.size())
            QVERIFY(grid->model()
                        ->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)
                        .value<Qt::Alignment>()
                        .testFlags(sides[column]));
    }
    // All columns can be seen without scrolling sideways, where the screen has the room.
    b->screen()->resize(TargetsBench::largeScreen);
    b->settle();
    QVERIFY(grid->horizontalHeader()->length() <= grid->viewport()->width());
}

void TstMetasManutencao::noSellerListsNothing() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1);
    QVERIFY(!b->control(u"Label4"_s)->isVisible());
}

void TstMetasManutencao::chosenSellerIsListed() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P3"_s, u"2.5"_s);
    b->open();
    StatementLog log(b->server());
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(log.texts(), StatementLog::expected({sqlLista}));
    const QList<QStringList> ids =
        b->server().query(u"SELECT ID FROM metavendedoritem ORDER BY CodigoProduto"_s);
    QList<QStringList> linhas = b->rows(u"Grid1"_s);
    std::sort(linhas.begin(), linhas.end()); // they come in the database's order
    QCOMPARE(linhas, QList<QStringList>({{u"P1"_s, u"PAO FRANCES"_s, u"10"_s, QString(), ids[0][0]},
                                         {u"P3"_s, u"LEITE"_s, u"2,500"_s, QString(), ids[1][0]}}));
    QVERIFY(b->control(u"Label4"_s)->isVisible());
    for (int row = 1; row <= 2; ++row) {
        QVERIFY(b->grid(u"Grid1"_s)->hasPicture(row, metasquadro::grid1::Excluir));
        QVERIFY(!b->grid(u"Grid1"_s)->hasPicture(row, metasquadro::grid1::Quantidade));
    }
    // A screen reader hears more than an empty cell.
    const QModelIndex cell = b->grid(u"Grid1"_s)->model()->index(0, metasquadro::grid1::Excluir);
    QCOMPARE(cell.data(Qt::AccessibleTextRole).toString(), u"EXCLUIR"_s);
}

void TstMetasManutencao::otherSellersTargetsAreNotListed() {
    b->shop().meta(2, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1);
    QVERIFY(!b->control(u"Label4"_s)->isVisible());
    b->choose(u"Vendedores"_s, u"BRUNO"_s);
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 2);
    QVERIFY(b->control(u"Label4"_s)->isVisible());
}

void TstMetasManutencao::quantitiesAsShown_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("seen");
    QTest::newRow("whole") << u"12.000"_s << u"12"_s;
    QTest::newRow("decimals") << u"12.500"_s << u"12,500"_s;
    QTest::newRow("thousands") << u"1234.000"_s << u"1.234"_s;
    QTest::newRow("a million") << u"999999.999"_s << u"999.999,999"_s;
    QTest::newRow("small") << u"0.001"_s << u"0,001"_s;
    QTest::newRow("negative") << u"-3.000"_s << u"-3"_s;
    QTest::newRow("zero") << u"0.000"_s << u"0"_s;
    QTest::newRow("null") << QString() << u"0"_s;
}

void TstMetasManutencao::quantitiesAsShown() {
    QFETCH(QString, stored);
    QFETCH(QString, seen);
    b->shop().meta(1, u"P1"_s, stored.isEmpty() ? Valor() : Valor(stored));
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->row(u"Grid1"_s, 1)[metasquadro::grid1::Quantidade], seen);
}

void TstMetasManutencao::targetOfARemovedProductIsNotListedButBlocks() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding(u"7"_s);
    b->server().execute(u"DELETE FROM produtos WHERE codfabr = 'P1'"_s);
    ModalHelper boxes;
    boxes.expect(u"Já existe uma meta de venda para o produto\n\nPAO FRANCES"_s, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(boxes.problem(), QString());
    b->choose(u"Vendedores"_s, u"BRUNO"_s);
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1);
    QCOMPARE(b->shop().metas().size(), 1);
}

void TstMetasManutencao::thousandTargets() {
    b->server().execute(u"INSERT INTO produtos (codfabr, descricao, ativo) SELECT CONCAT('Q', seq), "
                        "CONCAT('PRODUTO ', seq), 'S' FROM seq_1_to_1000"_s);
    b->server().execute(u"INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) SELECT 1, "
                        "CONCAT('Q', seq), seq FROM seq_1_to_1000"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1001);
}

// A product is pending and the quantity typed; the focus is on the quantity.
void TstMetasManutencao::prepareAdding(const QString& quantidade) {
    b->enterProduct(u"Descricao"_s, u"PAO FRANCES"_s);
    QCOMPARE(b->tag(u"Descricao"_s), u"P1"_s);
    QCOMPARE(b->focus(), u"Quantidade"_s);
    b->key(Qt::Key_A, Qt::ControlModifier);
    b->key(Qt::Key_Delete);
    b->type(quantidade);
}

void TstMetasManutencao::addingSends() {
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding(u"1234,5"_s);
    StatementLog log(b->server());
    b->press(u"Command1"_s);
    QCOMPARE(log.texts(),
             StatementLog::expected(
                 {u"Select * from metavendedoritem Where CodVendedor=1 and CodigoProduto='P1'"_s,
                  u"Insert Into metavendedoritem Set CodVendedor=1, CodigoProduto='P1', Quantidade=1234.5"_s,
                  sqlLista}));
    QCOMPARE(b->shop().metas(),
             QList<QStringList>({{u"1"_s, u"P1"_s, u"1234.500"_s, u"0.000"_s, u"0.00"_s, u"0.000"_s}}));
    QCOMPARE(b->row(u"Grid1"_s, 1).first(3), QStringList({u"P1"_s, u"PAO FRANCES"_s, u"1.234,500"_s}));
    QVERIFY(b->control(u"Label4"_s)->isVisible());
    QCOMPARE(b->box(u"Descricao"_s)->text(), QString());
    QCOMPARE(b->tag(u"Descricao"_s), QString());
    QCOMPARE(b->box(u"Quantidade"_s)->text(), u"0"_s);
    QCOMPARE(b->focus(), u"Descricao"_s);
}

void TstMetasManutencao::addingWithoutSeller() {
    b->open();
    prepareAdding(u"0"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expect(withoutSeller, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(boxes.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(boxes.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(b->focus(), u"Vendedores"_s);
    QCOMPARE(log.texts(), QStringList());
}

void TstMetasManutencao::addingWithoutProduct() {
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expect(withoutProduct, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->focus(), u"Descricao"_s);
    QCOMPARE(log.texts(), QStringList());
}

namespace {

// An empty text under `gravada` means refused.
void quantidades() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("stored");
    QTest::newRow("comma") << u"1,5"_s << u"1.500"_s;
    QTest::newRow("whole") << u"12"_s << u"12.000"_s;
    QTest::newRow("largest") << u"999999,999"_s << u"999999.999"_s;
    QTest::newRow("smallest") << u"0,001"_s << u"0.001"_s;
    QTest::newRow("a million") << u"1000000"_s << QString();
    QTest::newRow("a million and more") << u"1000000,001"_s << QString();
    QTest::newRow("far too much") << u"99999999999999"_s << QString();
    QTest::newRow("beyond everything") << u"99999999999999999999"_s << QString();
    QTest::newRow("below everything") << u"-99999999999999999999"_s << QString();
    QTest::newRow("zero") << u"0"_s << QString();
    QTest::newRow("negative") << u"-1"_s << QString();
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("letters") << u"abc"_s << QString();
    QTest::newRow("number with letters") << u"12cx"_s << QString();
    QTest::newRow("two commas") << u"1,2,3"_s << QString();
}

} // namespace

void TstMetasManutencao::checkQuantity(const QString& stored) {
    ModalHelper boxes;
    if (stored.isEmpty())
        boxes.expect(invalidQuantity, QMessageBox::Ok);
    StatementLog log(b->server());
    b->press(u"Command1"_s);
    QCOMPARE(boxes.problem(), QString());
    if (stored.isEmpty()) {
        QCOMPARE(log.texts(), QStringList());
        QCOMPARE(b->focus(), u"Quantidade"_s);
        QCOMPARE(b->tag(u"Descricao"_s), u"P1"_s);
    } else {
        QCOMPARE(b->shop().metas().size(), 1);
        QCOMPARE(b->shop().metas()[0][2], stored);
    }
}

void TstMetasManutencao::quantityTyped_data() {
    quantidades();
    QTest::newRow("kept as a thousandth") << u"0,0005"_s << u"0.001"_s;
    QTest::newRow("kept as nothing") << u"0,0004"_s << QString();
    QTest::newRow("point") << u"1.5"_s << u"1.500"_s;
    // By key every point is a comma, and two of them are no number.
    QTest::newRow("thousands and comma") << u"1.234,5"_s << QString();
}

void TstMetasManutencao::quantityTyped() {
    QFETCH(QString, text);
    QFETCH(QString, stored);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding(text);
    QCOMPARE(b->box(u"Quantidade"_s)->text(), QString(text).replace(u'.', u',').toUpper());
    checkQuantity(stored);
}

void TstMetasManutencao::quantityPasted_data() {
    quantidades();
    QTest::newRow("point") << u"1.5"_s << u"1.500"_s;
    QTest::newRow("thousands and comma") << u"1.234,5"_s << u"1234.500"_s;
    QTest::newRow("point form") << u"1234.56"_s << u"1234.560"_s;
}

void TstMetasManutencao::quantityPasted() {
    QFETCH(QString, text);
    QFETCH(QString, stored);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding({});
    b->paste(text);
    checkQuantity(stored);
}

void TstMetasManutencao::duplicateIsRefused() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding(u"7"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expect(u"Já existe uma meta de venda para o produto\n\nPAO FRANCES"_s, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->focus(), u"Descricao"_s);
    QCOMPARE(log.texts(),
             StatementLog::expected(
                 {u"Select * from metavendedoritem Where CodVendedor=1 and CodigoProduto='P1'"_s}));
    // Another seller may have it.
    b->choose(u"Vendedores"_s, u"BRUNO"_s);
    b->press(u"Command1"_s);
    QCOMPARE(b->shop().metas().size(), 2);
}

void TstMetasManutencao::oneMessageAtATime() {
    b->open();
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"NADA ASSIM"_s);
    ModalHelper boxes;
    boxes.expect(u"Descrição não cadastrada. Verifique!!!"_s, QMessageBox::Ok);
    boxes.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    // By its shortcut, which moves no focus of its own.
    b->key(Qt::Key_A, Qt::AltModifier);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->focus(), u"Descricao"_s);
}

void TstMetasManutencao::addingAfterAnErrorReport() {
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding(u"7"_s);
    b->server().execute(u"RENAME TABLE metavendedoritem TO guardada"_s);
    {
        ModalHelper boxes;
        boxes.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
        b->press(u"Command1"_s);
        QCOMPARE(boxes.problem(), QString());
    }
    b->server().execute(u"RENAME TABLE guardada TO metavendedoritem"_s);
    b->press(u"Command1"_s);
    QCOMPARE(b->shop().metas().size(), 1);
}

// The key of the button leaves an open cell first.
void TstMetasManutencao::quantityThatIsNotStoredEndsTheAdding() {
    b->shop().meta(1, u"P2"_s, u"5"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    prepareAdding(u"7"_s);
    b->click(u"Grid1"_s, 1, 2);
    b->server().execute(
        u"CREATE TRIGGER falha BEFORE UPDATE ON metavendedoritem FOR EACH ROW SIGNAL SQLSTATE "
        "'45000' SET MESSAGE_TEXT = 'recusado'"_s);
    ModalHelper boxes;
    boxes.expectContaining(u"recusado"_s, QMessageBox::Ok);
    b->key(Qt::Key_A, Qt::AltModifier);
    QTRY_COMPARE(boxes.boxes().size(), 1);
    b->server().execute(u"DROP TRIGGER falha"_s);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->shop().metas().size(), 1);
}

void TstMetasManutencao::deleting() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P3"_s, u"20"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    const int row = b->rowOf(u"Grid1"_s, u"P1"_s);
    const QString id = b->row(u"Grid1"_s, row)[metasquadro::grid1::Id];
    StatementLog log(b->server());
    ModalHelper boxes;
    boxes.expect(u"Deseja realmente excluir o produto\nP1?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, row, metasquadro::grid1::Excluir);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(boxes.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(boxes.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(boxes.boxes()[0].buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(log.texts(),
             StatementLog::expected({u"Delete from metavendedoritem Where ID="_s + id, sqlLista}));
    QCOMPARE(b->rows(u"Grid1"_s).size(), 1);
    QCOMPARE(b->row(u"Grid1"_s, 1)[0], u"P3"_s);

    boxes.expect(u"Deseja realmente excluir o produto\nP3?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Excluir);
    QCOMPARE(boxes.problem(), QString());
    QVERIFY(!b->control(u"Label4"_s)->isVisible());
    QVERIFY(b->shop().metas().isEmpty());
}

void TstMetasManutencao::notDeleting() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    StatementLog log(b->server());
    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::NoButton}) {
        ModalHelper boxes;
        boxes.expect(u"Deseja realmente excluir o produto\nP1?"_s, answer);
        b->click(u"Grid1"_s, 1, metasquadro::grid1::Excluir);
        QCOMPARE(boxes.problem(), QString());
    }
    QCOMPARE(log.texts(), QStringList());
    QVERIFY(b->screen()->isVisible());
}

void TstMetasManutencao::deletingWhatIsGone() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    b->server().execute(u"DELETE FROM metavendedoritem"_s);
    ModalHelper boxes;
    boxes.expect(u"Deseja realmente excluir o produto\nP1?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Excluir);
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1);
}

void TstMetasManutencao::otherCellsDoNothing() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    StatementLog log(b->server());
    ModalHelper boxes;
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Codigo);
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Produto);
    const QHeaderView* header = b->grid(u"Grid1"_s)->horizontalHeader();
    for (int column = 0; column < metasquadro::grid1::Id; ++column)
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 5, header->height() / 2));
    b->settle();
    QCOMPARE(boxes.problem(), QString());
    QCOMPARE(log.texts(), QStringList());
    QVERIFY(!b->control(u"TextGrid"_s)->isVisible());
}

QTEST_MAIN(TstMetasManutencao)
#include "tst_metas_manutencao.moc"

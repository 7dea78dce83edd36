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

const QString semVendedor = u"Vendedor não selecionado corretamente. Verifique!!!"_s;
const QString semProduto = u"Produto não selecionado corretamente. Verifique!!!"_s;
const QString quantidadeInvalida = u"Quantidade inválida. Verifique!!!"_s;

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

    void deleting();
    void notDeleting();
    void deletingWhatIsGone();
    void otherCellsDoNothing();

  private:
    void preparaInclusao(const QString& quantidade);
    void verificaQuantidade(const QString& gravada);

    std::unique_ptr<TargetsBench> b;
};

void TstMetasManutencao::startUp() {
    StatementLog registro(b->server());
    b->open();
    QCOMPARE(registro.texts(), StatementLog::expected({sqlVendedores}));
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
    const QStringList ativos{u"ALICE   <<045>>"_s, u"ANA   <<001>>"_s, u"BRUNO   <<002>>"_s,
                             u"ZECA   <<1234>>"_s};
    const auto itens = [this](const QString& nome) {
        QStringList textos;
        for (int i = 0; i < b->list(nome)->count(); ++i)
            textos.append(b->list(nome)->itemText(i));
        return textos;
    };
    QCOMPARE(itens(u"Vendedores"_s), ativos);
    QCOMPARE(itens(u"Vendedores2"_s), QStringList(u"(Todos)"_s) + ativos);
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
    const auto* quadro = b->control(u"Frame1"_s);
    const auto texto = [quadro](const QString& nome) { return quadro->findChild<QLabel*>(nome)->text(); };
    QCOMPARE(texto(u"Label1"_s), u"VENDEDOR(A)"_s);
    QCOMPARE(texto(u"Label2"_s), u"DESCRIÇÃO"_s);
    QCOMPARE(texto(u"Label3"_s), u"QUANTIDADE"_s);
    QCOMPARE(texto(u"Label4"_s), u"CLIQUE NA COLUNA QUANTIDADE PARA ALTERAR O VALOR DESTE CAMPO."_s);
    for (const auto& nome : {u"Descricao"_s, u"Quantidade"_s, u"Descricao2"_s})
        QCOMPARE(b->box(nome)->toolTip(), u"[F4] Consulta ítens nos pedidos efetuados"_s);
    // No F4 of the form's own: text and search stay as they are.
    b->box(u"Descricao"_s)->setFocus();
    b->type(u"p1"_s);
    StatementLog registro(b->server());
    b->key(Qt::Key_F4);
    QCOMPARE(registro.texts(), QStringList());
    QCOMPARE(b->box(u"Descricao"_s)->text(), u"P1"_s);
}

void TstMetasManutencao::gridLayout() {
    b->open();
    const Grid* grade = b->grid(u"Grid1"_s);
    QCOMPARE(b->row(u"Grid1"_s, 0),
             QStringList({u"CÓDIGO"_s, u"PRODUTO"_s, u"QUANTIDADE"_s, u"EXCLUIR"_s, u"ID"_s}));
    const QList<int> larguras{2230, 7100, 2000, 1640, 0};
    const QList<Qt::Alignment> lados{Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    for (int coluna = 0; coluna < grade->columns(); ++coluna) {
        QCOMPARE(grade->columnTwips(coluna), larguras[coluna]);
        QCOMPARE(grade->isColumnHidden(coluna), larguras[coluna] == 0);
        QVERIFY(grade->isBold(0, coluna));
        if (coluna < lados.size())
            QVERIFY(grade->model()
                        ->headerData(coluna, Qt::Horizontal, Qt::TextAlignmentRole)
                        .value<Qt::Alignment>()
                        .testFlags(lados[coluna]));
    }
    // All columns can be seen without scrolling sideways, where the screen has the room.
    b->screen()->resize(TargetsBench::largeScreen);
    b->settle();
    QVERIFY(grade->horizontalHeader()->length() <= grade->viewport()->width());
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
    StatementLog registro(b->server());
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(registro.texts(), StatementLog::expected({sqlLista}));
    const QList<QStringList> ids =
        b->server().query(u"SELECT ID FROM metavendedoritem ORDER BY CodigoProduto"_s);
    QList<QStringList> linhas = b->rows(u"Grid1"_s);
    std::sort(linhas.begin(), linhas.end()); // they come in the database's order
    QCOMPARE(linhas, QList<QStringList>({{u"P1"_s, u"PAO FRANCES"_s, u"10"_s, QString(), ids[0][0]},
                                         {u"P3"_s, u"LEITE"_s, u"2,500"_s, QString(), ids[1][0]}}));
    QVERIFY(b->control(u"Label4"_s)->isVisible());
    for (int linha = 1; linha <= 2; ++linha) {
        QVERIFY(b->grid(u"Grid1"_s)->hasPicture(linha, metasquadro::grid1::Excluir));
        QVERIFY(!b->grid(u"Grid1"_s)->hasPicture(linha, metasquadro::grid1::Quantidade));
    }
    // A screen reader hears more than an empty cell.
    const QModelIndex celula = b->grid(u"Grid1"_s)->model()->index(0, metasquadro::grid1::Excluir);
    QCOMPARE(celula.data(Qt::AccessibleTextRole).toString(), u"EXCLUIR"_s);
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
    QTest::addColumn<QString>("gravada");
    QTest::addColumn<QString>("vista");
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
    QFETCH(QString, gravada);
    QFETCH(QString, vista);
    b->shop().meta(1, u"P1"_s, gravada.isEmpty() ? Valor() : Valor(gravada));
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->row(u"Grid1"_s, 1)[metasquadro::grid1::Quantidade], vista);
}

void TstMetasManutencao::targetOfARemovedProductIsNotListedButBlocks() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    preparaInclusao(u"7"_s);
    b->server().execute(u"DELETE FROM produtos WHERE codfabr = 'P1'"_s);
    ModalHelper caixas;
    caixas.expect(u"Já existe uma meta de venda para o produto\n\nPAO FRANCES"_s, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(caixas.problem(), QString());
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
void TstMetasManutencao::preparaInclusao(const QString& quantidade) {
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
    preparaInclusao(u"1234,5"_s);
    StatementLog registro(b->server());
    b->press(u"Command1"_s);
    QCOMPARE(registro.texts(),
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
    preparaInclusao(u"0"_s);
    StatementLog registro(b->server());
    ModalHelper caixas;
    caixas.expect(semVendedor, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(caixas.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(caixas.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(b->focus(), u"Vendedores"_s);
    QCOMPARE(registro.texts(), QStringList());
}

void TstMetasManutencao::addingWithoutProduct() {
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    StatementLog registro(b->server());
    ModalHelper caixas;
    caixas.expect(semProduto, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->focus(), u"Descricao"_s);
    QCOMPARE(registro.texts(), QStringList());
}

namespace {

// An empty text under `gravada` means refused.
void quantidades() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("gravada");
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

void TstMetasManutencao::verificaQuantidade(const QString& gravada) {
    ModalHelper caixas;
    if (gravada.isEmpty())
        caixas.expect(quantidadeInvalida, QMessageBox::Ok);
    StatementLog registro(b->server());
    b->press(u"Command1"_s);
    QCOMPARE(caixas.problem(), QString());
    if (gravada.isEmpty()) {
        QCOMPARE(registro.texts(), QStringList());
        QCOMPARE(b->focus(), u"Quantidade"_s);
        QCOMPARE(b->tag(u"Descricao"_s), u"P1"_s);
    } else {
        QCOMPARE(b->shop().metas().size(), 1);
        QCOMPARE(b->shop().metas()[0][2], gravada);
    }
}

void TstMetasManutencao::quantityTyped_data() {
    quantidades();
    QTest::newRow("point") << u"1.5"_s << u"1.500"_s;
    // By key every point is a comma, and two of them are no number.
    QTest::newRow("thousands and comma") << u"1.234,5"_s << QString();
}

void TstMetasManutencao::quantityTyped() {
    QFETCH(QString, texto);
    QFETCH(QString, gravada);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    preparaInclusao(texto);
    QCOMPARE(b->box(u"Quantidade"_s)->text(), QString(texto).replace(u'.', u',').toUpper());
    verificaQuantidade(gravada);
}

void TstMetasManutencao::quantityPasted_data() {
    quantidades();
    QTest::newRow("point") << u"1.5"_s << u"1.500"_s;
    QTest::newRow("thousands and comma") << u"1.234,5"_s << u"1234.500"_s;
    QTest::newRow("point form") << u"1234.56"_s << u"1234.560"_s;
}

void TstMetasManutencao::quantityPasted() {
    QFETCH(QString, texto);
    QFETCH(QString, gravada);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    preparaInclusao({});
    b->paste(texto);
    verificaQuantidade(gravada);
}

void TstMetasManutencao::duplicateIsRefused() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    preparaInclusao(u"7"_s);
    StatementLog registro(b->server());
    ModalHelper caixas;
    caixas.expect(u"Já existe uma meta de venda para o produto\n\nPAO FRANCES"_s, QMessageBox::Ok);
    b->press(u"Command1"_s);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->focus(), u"Descricao"_s);
    QCOMPARE(registro.texts(),
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
    ModalHelper caixas;
    caixas.expect(u"Descrição não cadastrada. Verifique!!!"_s, QMessageBox::Ok);
    caixas.expect(u"Descricao inexistente. Verifique!!!"_s, QMessageBox::Ok);
    // By its shortcut, which moves no focus of its own.
    b->key(Qt::Key_A, Qt::AltModifier);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->focus(), u"Descricao"_s);
}

void TstMetasManutencao::addingAfterAnErrorReport() {
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    preparaInclusao(u"7"_s);
    b->server().execute(u"RENAME TABLE metavendedoritem TO guardada"_s);
    {
        ModalHelper caixas;
        caixas.expectContaining(u"Erro em tempo de execução"_s, QMessageBox::Ok);
        b->press(u"Command1"_s);
        QCOMPARE(caixas.problem(), QString());
    }
    b->server().execute(u"RENAME TABLE guardada TO metavendedoritem"_s);
    b->press(u"Command1"_s);
    QCOMPARE(b->shop().metas().size(), 1);
}

void TstMetasManutencao::deleting() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P3"_s, u"20"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    const int linha = b->rowOf(u"Grid1"_s, u"P1"_s);
    const QString id = b->row(u"Grid1"_s, linha)[metasquadro::grid1::Id];
    StatementLog registro(b->server());
    ModalHelper caixas;
    caixas.expect(u"Deseja realmente excluir o produto\nP1?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, linha, metasquadro::grid1::Excluir);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(caixas.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(caixas.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(caixas.boxes()[0].buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(registro.texts(),
             StatementLog::expected({u"Delete from metavendedoritem Where ID="_s + id, sqlLista}));
    QCOMPARE(b->rows(u"Grid1"_s).size(), 1);
    QCOMPARE(b->row(u"Grid1"_s, 1)[0], u"P3"_s);

    caixas.expect(u"Deseja realmente excluir o produto\nP3?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Excluir);
    QCOMPARE(caixas.problem(), QString());
    QVERIFY(!b->control(u"Label4"_s)->isVisible());
    QVERIFY(b->shop().metas().isEmpty());
}

void TstMetasManutencao::notDeleting() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    StatementLog registro(b->server());
    for (const QMessageBox::StandardButton resposta : {QMessageBox::No, QMessageBox::NoButton}) {
        ModalHelper caixas;
        caixas.expect(u"Deseja realmente excluir o produto\nP1?"_s, resposta);
        b->click(u"Grid1"_s, 1, metasquadro::grid1::Excluir);
        QCOMPARE(caixas.problem(), QString());
    }
    QCOMPARE(registro.texts(), QStringList());
    QVERIFY(b->screen()->isVisible());
}

void TstMetasManutencao::deletingWhatIsGone() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    b->server().execute(u"DELETE FROM metavendedoritem"_s);
    ModalHelper caixas;
    caixas.expect(u"Deseja realmente excluir o produto\nP1?"_s, QMessageBox::Yes);
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Excluir);
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(b->grid(u"Grid1"_s)->rows(), 1);
}

void TstMetasManutencao::otherCellsDoNothing() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    StatementLog registro(b->server());
    ModalHelper caixas;
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Codigo);
    b->click(u"Grid1"_s, 1, metasquadro::grid1::Produto);
    const QHeaderView* cabecalho = b->grid(u"Grid1"_s)->horizontalHeader();
    for (int coluna = 0; coluna < metasquadro::grid1::Id; ++coluna)
        QTest::mouseClick(cabecalho->viewport(), Qt::LeftButton, {},
                          QPoint(cabecalho->sectionViewportPosition(coluna) + 5, cabecalho->height() / 2));
    b->settle();
    QCOMPARE(caixas.problem(), QString());
    QCOMPARE(registro.texts(), QStringList());
    QVERIFY(!b->control(u"TextGrid"_s)->isVisible());
}

QTEST_MAIN(TstMetasManutencao)
#include "tst_metas_manutencao.moc"

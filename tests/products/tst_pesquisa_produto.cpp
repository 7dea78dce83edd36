#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "products/PesquisaProduto.h"
#include "products/SelecionaProd.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "ui/Guard.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString settingsQuery = u"SELECT ReservaAtualizaGridEstoque FROM EMPRESA"_s;
const QStringList detailLabels = {u"Label1"_s, u"Label2"_s, u"Label3"_s,
                                  u"Label4"_s, u"Label5"_s, u"Label7"_s};

Grid* gridOf(QWidget* screen) {
    return screen->findChild<Grid*>(u"Grid"_s);
}

QString label(QWidget* screen, const QString& name) {
    return screen->findChild<QLabel*>(name)->text();
}

QString accessibleName(QWidget* control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

/// Width of a text, character by character, in twips.
double width(const QFont& font, const QString& text) {
    const QFontMetricsF measures(font);
    double pixels = 0;
    for (const QChar c : text)
        pixels += measures.horizontalAdvance(c);
    return pixels * 1440 / QGuiApplication::primaryScreen()->logicalDotsPerInchX();
}

int expectedHeight(double width) {
    return width > 3700 ? static_cast<int>(std::nearbyint((width / 3700 + 1) * 240)) : 300;
}

/// A viewer that notes what it was asked for.
struct ViewerSpy {
    explicit ViewerSpy(bool hasPicture) {
        SelecionaProd::CarregaImagemProduto = [this, hasPicture](const QString& codigo,
                                                                 const QString& descricao) {
            pedidos.append({codigo, descricao});
            return hasPicture;
        };
    }
    ~ViewerSpy() { SelecionaProd::CarregaImagemProduto = nullptr; }
    ViewerSpy(const ViewerSpy&) = delete;
    ViewerSpy& operator=(const ViewerSpy&) = delete;

    QList<QStringList> pedidos;
};

} // namespace

/// What the search does with what it finds, and the screen in which one of several is picked.
class TstPesquisaProduto : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() { b->resetConnected(); }

    void nothingFound();
    void singleMatchIsTakenWithoutAScreen();
    void inactiveProductsAreNeverFound();
    void severalMatchesOpenTheScreen();
    void captionsAndNames();
    void detailsInLettersOfOneWidth();
    void gridFormat();
    void rowOfTheGrid();
    void nullsShowNothing();
    void updateDate_data();
    void updateDate();
    void details();
    void detailsFollowTheCurrentRow();
    void detailsShowMarkupAsText();
    void warehouseStock_data();
    void warehouseStock();
    void descriptionWidthByNumberOfProducts_data();
    void descriptionWidthByNumberOfProducts();
    void preselectedRow_data();
    void preselectedRow();
    void preselectedRowComesToTheTop();
    void longDescriptionsGetHigherRows();
    void heightsFollowTheMainWindowsFont();
    void productLineIsPurple();
    void keysChoose_data();
    void keysChoose();
    void enterOnTheButtonChooses();
    void clickChoosesTheRow();
    void headerClickDoesNothing();
    void escapeGivesUp();
    void closingTheWindowGivesUp();
    void heldDownEnterChoosesNothing();
    void nextSearchStartsFresh();
    void thousandsOfMatches();
    void settingIsReadAtOpening();
    void missingSettingRowIsAnError();
    void imageIsShown();
    void missingImageIsToldAndTheGridGetsTheFocus();
    void missingViewerEndsTheProgram();

  private:
    /// Searches; `acao` operates the selection screen.
    QString search(const QString& text, const std::function<void(QWidget*)>& action, QWidget* form = nullptr);

    std::unique_ptr<Bench> b;
};

QString TstPesquisaProduto::search(const QString& text, const std::function<void(QWidget*)>& action,
                                   QWidget* form) {
    ModalHelper modals;
    modals.onOpen([&action](QWidget* screen) {
        if (!QTest::qWaitForWindowActive(screen))
            QTest::qFail("the selection screen did not become active", __FILE__, __LINE__);
        action(screen);
    });
    QString variable = text;
    const QString codigo = PesquisaProduto(variable, form);
    if (!modals.problem().isEmpty())
        QTest::qFail(qPrintable(modals.problem()), __FILE__, __LINE__);
    return codigo;
}

void TstPesquisaProduto::nothingFound() {
    CodigoSelecionado = u"LEFT OVER"_s;
    ModalHelper modals;
    modals.expect(u"Descrição não cadastrada. Verifique!!!"_s, QMessageBox::Ok);
    QString text = u"ROSCA"_s;
    QCOMPARE(PesquisaProduto(text, nullptr), QString());
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modals.boxes()[0].icon, QMessageBox::Warning);
    QVERIFY(!TemRegistro);
    QVERIFY(!rs.isOpen());
    QCOMPARE(CodigoSelecionado, QString());
}

void TstPesquisaProduto::singleMatchIsTakenWithoutAScreen() {
    b->shop().produto(u"0000000000007"_s, u"PÃO FRANCÊS"_s);
    b->shop().produto(u"0000000000008"_s, u"ROSCA"_s);
    QString text = u"7"_s;
    QCOMPARE(PesquisaProduto(text, nullptr), u"0000000000007"_s);
    QCOMPARE(CodigoSelecionado, u"0000000000007"_s);
    QVERIFY(TemRegistro);
    QVERIFY(!rs.isOpen());
    QCOMPARE(b->statements(),
             QStringList(
                 u"Select * from Produtos where CodFabr='0000000000007' and ativo='S' order by descricao"_s));
}

void TstPesquisaProduto::inactiveProductsAreNeverFound() {
    b->shop().produto(u"1"_s, u"ROSCA DOCE"_s, u"ativo='N', aplicacao='ROSCA', observacao='ROSCA'"_s);
    b->shop().produto(u"2"_s, u"ROSCA SALGADA"_s, u"ativo=NULL"_s);
    b->shop().produto(u"3"_s, u"ROSCA SIMPLES"_s, u"aplicacao='ROSCA', observacao='ROSCA'"_s);
    for (const QString& typed : {u"ROSCA"_s, u"ROSCA S"_s, u"=ROSCA"_s, u"*ROSCA"_s}) {
        QString text = typed;
        QCOMPARE(PesquisaProduto(text, nullptr), u"3"_s);
    }
}

void TstPesquisaProduto::severalMatchesOpenTheScreen() {
    b->shop().produtos(3);
    const QString codigo = search(u"PRODUTO"_s, [](QWidget* screen) {
        QCOMPARE(gridOf(screen)->rows(), 4);
        QCOMPARE(CodigoSelecionado, QString());
        QVERIFY(TemRegistro);
        QVERIFY(screen->isModal());
        QTest::keyClick(gridOf(screen), Qt::Key_Return);
    });
    QCOMPARE(codigo, u"0000000000001"_s);
    QCOMPARE(CodigoSelecionado, codigo);
    QVERIFY(!rs.isOpen());
    QVERIFY(!rs2.isOpen());
    QCOMPARE(
        b->statements(),
        QStringList({u"Select * from Produtos where (Descricao like '%PRODUTO%' or CodFabr like '%PRODUTO%') "
                     "and ativo='S' order by Descricao"_s,
                     settingsQuery}));
}

void TstPesquisaProduto::captionsAndNames() {
    b->shop().produtos(2);
    search(u"PRODUTO"_s, [](QWidget* screen) {
        QCOMPARE(screen->objectName(), u"SelecionaProd"_s);
        QCOMPARE(screen->windowTitle(), u" Seleciona Produtos"_s);
        auto* button = screen->findChild<QPushButton*>(u"cmbVisualizarImagem"_s);
        QCOMPARE(button->text(), u"Visualizar Imagem (F2) "_s);
        QCOMPARE(button->toolTip(), u"Utilize F2 como tecla de atalho"_s);
        QCOMPARE(accessibleName(button), u"Visualizar Imagem (F2) "_s);
        QVERIFY(!accessibleName(gridOf(screen)).isEmpty());
        QVERIFY(screen->findChild<QFrame*>(u"Frame1"_s));
        QCOMPARE(label(screen, u"Label7"_s), u"OBSERVAÇÃO    :"_s);
        QCOMPARE(label(screen, u"Label6"_s), u"DISPONÍVEL"_s);
        QVERIFY(screen->findChild<QLabel*>(u"Label6"_s)->isHidden());
        for (const QString& name : detailLabels)
            QCOMPARE(screen->findChild<QLabel*>(name)->font().family(), u"Courier New"_s);
        // Everything is reached by Tab from the grid.
        QVERIFY(gridOf(screen)->hasFocus());
        auto* observacao = screen->findChild<QScrollArea*>(u"rolagem"_s);
        QVERIFY(!accessibleName(observacao).isEmpty());
        QTest::keyClick(gridOf(screen), Qt::Key_Tab);
        QVERIFY(observacao->hasFocus());
        QTest::keyClick(observacao, Qt::Key_Tab);
        QVERIFY(button->hasFocus());
        QTest::keyClick(button, Qt::Key_Tab);
        QVERIFY(gridOf(screen)->hasFocus());
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::detailsInLettersOfOneWidth() {
    b->shop().produtos(2);
    search(u"PRODUTO"_s, [](QWidget* screen) {
        for (const QString& name : detailLabels)
            QVERIFY2(QFontInfo(screen->findChild<QLabel*>(name)->font()).fixedPitch(), qPrintable(name));
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::gridFormat() {
    for (const QString& name : NomeTabelaPreco)
        QCOMPARE(name, QString());
    b->shop().produtos(2);
    search(u"PRODUTO"_s, [](QWidget* screen) {
        const Grid* grid = gridOf(screen);
        QCOMPARE(grid->columns(), 12);
        const QStringList captions = {
            u"CÓDIGO"_s, u"DESCRIÇAO"_s, u"ESTOQUE"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}};
        for (int column = 0; column < 12; ++column)
            QCOMPARE(grid->text(0, column), captions[column]);
        const QList<int> widths = {1500, 4100, 950, 950, 950, 950, 950, 0, 0, 0, 0};
        for (int column = 0; column < widths.size(); ++column)
            QCOMPARE(grid->columnTwips(column), widths[column]);
        for (int column = 7; column <= 10; ++column)
            QVERIFY(grid->isColumnHidden(column));
        QVERIFY(!grid->isColumnHidden(11));
        for (int column = 0; column < 7; ++column) {
            const auto alignment =
                grid->model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
            QCOMPARE(alignment & Qt::AlignHorizontal_Mask, column < 2 ? Qt::AlignLeft : Qt::AlignRight);
        }
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::rowOfTheGrid() {
    b->shop().produto(
        u"0000000000007"_s, u"A PÃO D´ÁGUA"_s,
        u"quantidade=1234.5, quantidade2=12, Venda=1234.50, Venda2=0.49, Venda3=-2.5, Venda4=1234567.89, "
        "Ultima_Alteracao='2024-02-29', aplicacao=' MARCA ', observacao='LINHA 1\\nLINHA\\t2', Unidade='UN'"_s);
    b->shop().produto(u"2"_s, u"B PÃO"_s);
    search(u"PÃO"_s, [](QWidget* screen) {
        QCOMPARE(cells(gridOf(screen), 1),
                 QStringList({u"0000000000007"_s, u"A PÃO D´ÁGUA"_s, u"1.234,500"_s, u"1.235"_s, u"0"_s,
                              u"-3"_s, u"1.234.568"_s, u"29/02/24"_s, u" MARCA "_s, u"12,000"_s,
                              u"LINHA 1\nLINHA\t2"_s, u"UN"_s}));
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::nullsShowNothing() {
    b->server().execute(
        u"INSERT INTO produtos (codfabr, descricao, aplicacao, observacao, Venda, Venda2, Venda3, Venda4, "
        "ValidadePromo, ValidadePromo2, quantidade, quantidade2, Ultima_Saida, Ultima_Alteracao, "
        "Localizacao, "
        "Unidade, LinhaProd) VALUES ('99A', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
        "NULL, NULL, "
        "NULL, NULL, NULL, NULL), ('99B', 'X', NULL, NULL, 1, 1, 1, 1, NULL, NULL, 1, 1, NULL, NULL, NULL, "
        "NULL, "
        "1)"_s);
    const QString codigo = search(u"99_"_s, [](QWidget* screen) {
        QStringList empty(12);
        empty[0] = u"99A"_s;
        QCOMPARE(cells(gridOf(screen), 1), empty);
        QCOMPARE(label(screen, u"Label1"_s), u"MARCA/REFERÊNCIA: "_s);
        QCOMPARE(label(screen, u"Label2"_s), u"ATUALIZAÇÃO     : "_s);
        QCOMPARE(label(screen, u"Label3"_s), u"DEPÓSITO    : "_s);
        QCOMPARE(label(screen, u"Label5"_s), u"UNIDADE     : "_s);
        QCOMPARE(label(screen, u"Label4"_s), QString());
        QVERIFY(!gridOf(screen)->foreColor(1, 1).isValid());
        QTest::keyClick(gridOf(screen), Qt::Key_Return);
    });
    QCOMPARE(codigo, u"99A"_s);
}

void TstPesquisaProduto::updateDate_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no date") << u"'1901-01-01'"_s << QString();
    QTest::newRow("another day of that year") << u"'1901-12-31'"_s << QString();
    QTest::newRow("the year before") << u"'1900-12-31'"_s << u"31/12/00"_s;
    QTest::newRow("the year after") << u"'1902-01-01'"_s << u"01/01/02"_s;
    QTest::newRow("a date") << u"'2023-01-17'"_s << u"17/01/23"_s;
    QTest::newRow("zero date") << u"'0000-00-00'"_s << QString();
    QTest::newRow("null") << u"NULL"_s << QString();
}

void TstPesquisaProduto::updateDate() {
    QFETCH(QString, value);
    QFETCH(QString, shown);
    b->server().execute(u"SET sql_mode=''"_s);
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"Ultima_Alteracao="_s + value);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    search(u"PÃO"_s, [&shown](QWidget* screen) {
        QCOMPARE(label(screen, u"Label2"_s), u"ATUALIZAÇÃO     : "_s + shown);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::details() {
    b->shop().produto(u"1"_s, u"PÃO A"_s,
                      u"aplicacao='MARCA X', Ultima_Alteracao='2023-01-17', quantidade2=1.5, Unidade='KG', "
                      "observacao='NÃO CONGELAR'"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    search(u"PÃO"_s, [](QWidget* screen) {
        QCOMPARE(label(screen, u"Label1"_s), u"MARCA/REFERÊNCIA: MARCA X"_s);
        QCOMPARE(label(screen, u"Label2"_s), u"ATUALIZAÇÃO     : 17/01/23"_s);
        QCOMPARE(label(screen, u"Label3"_s), u"DEPÓSITO    : 1,500"_s);
        QCOMPARE(label(screen, u"Label5"_s), u"UNIDADE     : KG"_s);
        QCOMPARE(label(screen, u"Label4"_s), u"NÃO CONGELAR"_s);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::detailsFollowTheCurrentRow() {
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"aplicacao='UM', observacao='PRIMEIRO'"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s, u"aplicacao='DOIS', observacao='SEGUNDO'"_s);
    search(u"PÃO"_s, [](QWidget* screen) {
        screen->findChild<QLabel*>(u"Label6"_s)->show();
        QTest::keyClick(gridOf(screen), Qt::Key_Down);
        QCOMPARE(label(screen, u"Label1"_s), u"MARCA/REFERÊNCIA: DOIS"_s);
        QCOMPARE(label(screen, u"Label4"_s), u"SEGUNDO"_s);
        QVERIFY(screen->findChild<QLabel*>(u"Label6"_s)->isHidden());
        QTest::keyClick(gridOf(screen), Qt::Key_Up);
        QCOMPARE(label(screen, u"Label1"_s), u"MARCA/REFERÊNCIA: UM"_s);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::detailsShowMarkupAsText() {
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"aplicacao='<b>X</b>', observacao='<i>Y</i> & Z'"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    search(u"PÃO"_s, [](QWidget* screen) {
        for (const QString& name : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"Label4"_s, u"Label5"_s})
            QCOMPARE(screen->findChild<QLabel*>(name)->textFormat(), Qt::PlainText);
        QCOMPARE(label(screen, u"Label4"_s), u"<i>Y</i> & Z"_s);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::warehouseStock_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("whole") << u"12"_s << u"12"_s;
    QTest::newRow("thousands") << u"1234"_s << u"1.234"_s;
    QTest::newRow("decimals stay") << u"1.5"_s << u"1,500"_s;
    QTest::newRow("negative") << u"-3"_s << u"-3"_s;
    QTest::newRow("zero") << u"0"_s << u"0"_s;
}

void TstPesquisaProduto::warehouseStock() {
    QFETCH(QString, value);
    QFETCH(QString, shown);
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"quantidade2="_s + value);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    search(u"PÃO"_s, [&shown](QWidget* screen) {
        QCOMPARE(label(screen, u"Label3"_s), u"DEPÓSITO    : "_s + shown);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::descriptionWidthByNumberOfProducts_data() {
    QTest::addColumn<int>("quantidade");
    QTest::addColumn<int>("width");
    QTest::newRow("22") << 22 << 4100;
    QTest::newRow("23") << 23 << 3820;
    QTest::newRow("24") << 24 << 3820;
}

void TstPesquisaProduto::descriptionWidthByNumberOfProducts() {
    QFETCH(int, quantidade);
    QFETCH(int, width);
    b->shop().produtos(quantidade);
    search(u"PRODUTO"_s, [quantidade, width](QWidget* screen) {
        const Grid* grid = gridOf(screen);
        QCOMPARE(grid->rows(), quantidade + 1);
        QCOMPARE(grid->columnTwips(1), width);
        QCOMPARE(grid->columnWidth(1), twipsToPixels(grid, width));
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::preselectedRow_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("current");
    QTest::newRow("the second starts with the word") << u"ROSCA"_s << 2;
    QTest::newRow("the word stands inside only") << u"OSCA"_s << 1;
    QTest::newRow("letter case counts") << u"rosca"_s << 1;
    QTest::newRow("several words preselect nothing") << u"ROSCA DOCE"_s << 1;
    QTest::newRow("a prefix is part of the text") << u"=FAB"_s << 1;
}

void TstPesquisaProduto::preselectedRow() {
    QFETCH(QString, typed);
    QFETCH(int, current);
    b->shop().produto(u"1"_s, u"MASSA DE ROSCA DOCE"_s, u"aplicacao='FAB'"_s);
    b->shop().produto(u"2"_s, u"ROSCA DOCE"_s, u"aplicacao='FAB'"_s);
    b->shop().produto(u"3"_s, u"ROSCA DOCE FINA"_s, u"aplicacao='FAB'"_s);
    const QString codigo = search(typed, [current](QWidget* screen) {
        QCOMPARE(gridOf(screen)->currentRow(), current);
        QCOMPARE(gridOf(screen)->currentColumn(), 0);
        QTest::keyClick(gridOf(screen), Qt::Key_Return);
    });
    QCOMPARE(codigo, QString::number(current));
}

void TstPesquisaProduto::preselectedRowComesToTheTop() {
    b->server().execute(u"INSERT INTO produtos (codfabr, descricao) SELECT seq, CONCAT('A ROSCA ', "
                        "LPAD(seq, 3, '0')) FROM seq_1_to_60"_s);
    b->server().execute(u"INSERT INTO produtos (codfabr, descricao) SELECT 100 + seq, CONCAT('ROSCA ', "
                        "LPAD(seq, 3, '0')) FROM seq_1_to_60"_s);
    search(u"ROSCA"_s, [](QWidget* screen) {
        QCOMPARE(gridOf(screen)->currentRow(), 61);
        QCOMPARE(gridOf(screen)->topRow(), 61);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::longDescriptionsGetHigherRows() {
    const QList<qsizetype> sizes = {10, 60, 110};
    for (qsizetype i = 0; i < sizes.size(); ++i)
        b->shop().produto(QString::number(i),
                          QString::number(i) + u" PALAVRA"_s.repeated(20).first(sizes[i]));
    search(u"PALAVRA"_s, [](QWidget* screen) {
        Grid* grid = gridOf(screen);
        for (int row = 1; row <= 3; ++row)
            QCOMPARE(grid->rowHeight(row - 1),
                     twipsToPixels(grid, expectedHeight(width(QApplication::font(), grid->text(row, 1)))));
        QVERIFY(grid->rowHeight(0) < grid->rowHeight(1));
        QVERIFY(grid->rowHeight(1) < grid->rowHeight(2));
        // What the row is high enough for is all there: the text wraps within the column without being cut.
        for (int row = 1; row <= 3; ++row) {
            const QRect text = grid->fontMetrics().boundingRect(QRect(0, 0, grid->columnWidth(1) - 6, 1000),
                                                                Qt::TextWordWrap, grid->text(row, 1));
            QVERIFY2(text.height() <= grid->rowHeight(row - 1), qPrintable(grid->text(row, 1)));
        }
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::heightsFollowTheMainWindowsFont() {
    QWidget mainWindow;
    QFont huge = mainWindow.font();
    huge.setPointSize(40);
    mainWindow.setFont(huge);
    QDialog form(&mainWindow);
    b->shop().produto(u"1"_s, u"PÃO DE FORMA A"_s);
    b->shop().produto(u"2"_s, u"PÃO DE FORMA B"_s);
    const auto confere = [&huge](QWidget* screen) {
        const double wide = width(huge, u"PÃO DE FORMA A"_s);
        QVERIFY(wide > 3700);
        QCOMPARE(gridOf(screen)->rowHeight(0), twipsToPixels(screen, expectedHeight(wide)));
        QTest::keyClick(screen, Qt::Key_Escape);
    };
    // The searching screen has a font of its own.
    QVERIFY(form.font() != huge);
    search(u"PÃO"_s, confere, &form);
}

void TstPesquisaProduto::productLineIsPurple() {
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"LinhaProd=0"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s, u"LinhaProd=1"_s);
    b->shop().produto(u"3"_s, u"PÃO C"_s, u"LinhaProd=-1"_s);
    b->shop().produto(u"4"_s, u"PÃO D"_s, u"LinhaProd=37"_s);
    search(u"PÃO"_s, [](QWidget* screen) {
        const Grid* grid = gridOf(screen);
        const QColor purple(128, 0, 128);
        QVERIFY(!grid->foreColor(1, 1).isValid());
        QCOMPARE(grid->foreColor(2, 1), purple);
        QVERIFY(!grid->foreColor(3, 1).isValid());
        QCOMPARE(grid->foreColor(4, 1), purple);
        QVERIFY(!grid->foreColor(2, 0).isValid());
        QVERIFY(!grid->foreColor(2, 2).isValid());
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::keysChoose_data() {
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<QString>("codigo");
    QTest::newRow("Enter") << QList<Qt::Key>{Qt::Key_Return} << u"0000000000001"_s;
    QTest::newRow("Enter of the number pad") << QList<Qt::Key>{Qt::Key_Enter} << u"0000000000001"_s;
    QTest::newRow("Space") << QList<Qt::Key>{Qt::Key_Space} << u"0000000000001"_s;
    QTest::newRow("down twice") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}
                                << u"0000000000003"_s;
    QTest::newRow("another column") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}
                                    << u"0000000000002"_s;
}

void TstPesquisaProduto::keysChoose() {
    QFETCH(QList<Qt::Key>, keys);
    QFETCH(QString, codigo);
    b->shop().produtos(40);
    QCOMPARE(search(u"PRODUTO"_s,
                    [&keys](QWidget* screen) {
                        for (const Qt::Key key : keys)
                            QTest::keyClick(gridOf(screen), key);
                    }),
             codigo);
}

void TstPesquisaProduto::enterOnTheButtonChooses() {
    b->shop().produtos(3);
    QCOMPARE(search(u"PRODUTO"_s,
                    [](QWidget* screen) {
                        auto* button = screen->findChild<QPushButton*>(u"cmbVisualizarImagem"_s);
                        button->setFocus();
                        QTest::keyClick(button, Qt::Key_Return);
                    }),
             u"0000000000001"_s);
}

void TstPesquisaProduto::clickChoosesTheRow() {
    b->shop().produtos(40);
    QCOMPARE(search(u"PRODUTO"_s, [](QWidget* screen) { Hands(screen).click(gridOf(screen), 3, 1); }),
             u"0000000000003"_s);
    QCOMPARE(search(u"PRODUTO"_s, [](QWidget* screen) { Hands(screen).click(gridOf(screen), 40, 0); }),
             u"0000000000040"_s);
}

void TstPesquisaProduto::headerClickDoesNothing() {
    b->shop().produtos(3);
    QCOMPARE(search(u"PRODUTO"_s,
                    [](QWidget* screen) {
                        Hands(screen).click(gridOf(screen), 0, 1);
                        QVERIFY(screen->isVisible());
                        QTest::keyClick(screen, Qt::Key_Escape);
                    }),
             QString());
}

void TstPesquisaProduto::escapeGivesUp() {
    b->shop().produtos(3);
    for (const QString& where : {u"Grid"_s, u"cmbVisualizarImagem"_s}) {
        QCOMPARE(search(u"PRODUTO"_s,
                        [&where](QWidget* screen) {
                            auto* control = screen->findChild<QWidget*>(where);
                            control->setFocus();
                            QTest::keyClick(control, Qt::Key_Escape);
                        }),
                 QString());
        QCOMPARE(CodigoSelecionado, QString());
    }
}

void TstPesquisaProduto::closingTheWindowGivesUp() {
    b->shop().produtos(3);
    QCOMPARE(search(u"PRODUTO"_s, [](QWidget* screen) { screen->close(); }), QString());
    QCOMPARE(CodigoSelecionado, QString());
}

// The operator still holds the Enter that began the search.
void TstPesquisaProduto::heldDownEnterChoosesNothing() {
    b->shop().produtos(3);
    QCOMPARE(search(u"PRODUTO"_s,
                    [](QWidget* screen) {
                        for (int i = 0; i < 3; ++i)
                            QTest::simulateEvent(gridOf(screen), true, Qt::Key_Return, Qt::NoModifier,
                                                 u"\r"_s, true);
                        QVERIFY(screen->isVisible());
                        QTest::keyClick(screen, Qt::Key_Escape);
                    }),
             QString());
}

void TstPesquisaProduto::nextSearchStartsFresh() {
    b->shop().produtos(30);
    search(u"PRODUTO"_s, [](QWidget* screen) {
        QTest::keyClick(gridOf(screen), Qt::Key_Down);
        QTest::keyClick(gridOf(screen), Qt::Key_Return);
    });
    search(u"PRODUTO 00"_s, [](QWidget* screen) {
        QCOMPARE(gridOf(screen)->rows(), 10);
        QCOMPARE(gridOf(screen)->currentRow(), 1);
        QCOMPARE(gridOf(screen)->columnTwips(1), 4100);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::thousandsOfMatches() {
    b->shop().produtos(5000);
    const QString codigo = search(u"PRODUTO"_s, [](QWidget* screen) {
        Grid* grid = gridOf(screen);
        QCOMPARE(grid->rows(), 5001);
        QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grid->currentRow(), 5000);
        QTest::keyClick(grid, Qt::Key_Return);
    });
    // Sorted as text: "PRODUTO 999" comes after "PRODUTO 5000".
    QCOMPARE(codigo, u"0000000000999"_s);
}

void TstPesquisaProduto::settingIsReadAtOpening() {
    QVERIFY(!SelecionaProd(nullptr).property("ReservaAtualizaGridEstoque").toBool());
    b->server().execute(u"UPDATE empresa SET ReservaAtualizaGridEstoque='SIM'"_s);
    b->statements();
    QVERIFY(SelecionaProd(nullptr).property("ReservaAtualizaGridEstoque").toBool());
    QCOMPARE(b->statements(), QStringList(settingsQuery));
    b->server().execute(u"UPDATE empresa SET ReservaAtualizaGridEstoque='sim'"_s);
    QVERIFY(!SelecionaProd(nullptr).property("ReservaAtualizaGridEstoque").toBool());
}

void TstPesquisaProduto::missingSettingRowIsAnError() {
    b->shop().produtos(2);
    b->server().execute(u"DELETE FROM empresa"_s);
    QString text = u"PRODUTO"_s;
    try {
        PesquisaProduto(text, nullptr);
        QFAIL("no error was raised");
    } catch (const RuntimeError& error) {
        QCOMPARE(error.number(), static_cast<int>(ErrorNumber::NoCurrentRecord));
    }
    // The next search is not disturbed.
    b->server().execute(u"INSERT INTO empresa SET id=1"_s);
    QCOMPARE(search(u"PRODUTO"_s, [](QWidget* screen) { QTest::keyClick(screen, Qt::Key_Return); }),
             u"0000000000001"_s);
}

void TstPesquisaProduto::imageIsShown() {
    ViewerSpy viewer(true);
    b->shop().produtos(3);
    const QString codigo = search(u"PRODUTO"_s, [](QWidget* screen) {
        QTest::keyClick(gridOf(screen), Qt::Key_F2);
        QTest::keyClick(gridOf(screen), Qt::Key_Down);
        QTest::mouseClick(screen->findChild<QPushButton*>(u"cmbVisualizarImagem"_s), Qt::LeftButton);
        QTest::keyClick(gridOf(screen), Qt::Key_Return);
    });
    QCOMPARE(viewer.pedidos, QList<QStringList>({{u"0000000000001"_s, u"PRODUTO 001"_s},
                                                 {u"0000000000002"_s, u"PRODUTO 002"_s}}));
    QCOMPARE(codigo, u"0000000000002"_s);
}

void TstPesquisaProduto::missingImageIsToldAndTheGridGetsTheFocus() {
    ViewerSpy viewer(false);
    b->shop().produtos(3);
    ModalHelper modals;
    modals.onOpen([&modals](QWidget* screen) {
        modals.expect(u"O produto selecionado, não possuí imagem"_s, QMessageBox::Ok);
        QTest::mouseClick(screen->findChild<QPushButton*>(u"cmbVisualizarImagem"_s), Qt::LeftButton);
        QCOMPARE(screen->focusWidget(), gridOf(screen));
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    QString text = u"PRODUTO"_s;
    QCOMPARE(PesquisaProduto(text, nullptr), QString());
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[0].title, u"Atenção!"_s);
    QCOMPARE(modals.boxes()[0].icon, QMessageBox::Warning);
    QCOMPARE(viewer.pedidos.size(), 1);
}

void TstPesquisaProduto::missingViewerEndsTheProgram() {
    constexpr int gaveUp = 99;
    b->shop().produtos(3);
    ModalHelper modals;
    modals.onOpen([](QWidget* screen) { QTest::keyClick(gridOf(screen), Qt::Key_F2); });
    modals.expectContaining(u"Erro em tempo de execução 424"_s, QMessageBox::Ok);
    QWidget form;
    bool wentOn = false;
    QTimer::singleShot(0, &form, [&] {
        guarded(&form, [&] {
            QString text = u"PRODUTO"_s;
            PesquisaProduto(text, &form);
            wentOn = true;
        });
    });
    QTimer::singleShot(10000, &form, [] { QApplication::exit(gaveUp); });
    QCOMPARE(QApplication::exec(), EXIT_FAILURE);
    QVERIFY(!wentOn);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[0].icon, QMessageBox::Critical);
    QVERIFY(modals.boxes()[0].informative.contains(u"O programa será encerrado."_s));
}

QTEST_MAIN(TstPesquisaProduto)
#include "tst_pesquisa_produto.moc"

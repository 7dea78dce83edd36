#include "reports/Comissao.h"
#include "support/Amounts.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "support/Preview.h"
#include "ui/DateBox.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Changing percentages in the commission grid. Ana sold 1,000.00 of bread and 200.00 of other goods at 3 %
/// and 1.5 %, Beto 100.00 of bread at percentages that nobody has set.
class TstComissaoEdicao : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init();
    void cleanup() { screen.reset(); }

    void opensOverTheCell_data();
    void opensOverTheCell();
    void otherCellsOpenNothing();
    void enterSaves_data();
    void enterSaves();
    void enterIgnoresWhatIsNoNumber_data();
    void enterIgnoresWhatIsNoNumber();
    void typedPointBecomesAComma();
    void pastedPointBecomesAComma();
    void letterAndApostropheFollowTheConvention();
    void escapeTakesTheOldTextBack();
    void emptyOtherPercentageIsSavedAsZero();
    void leavingSaves_data();
    void leavingSaves();
    void shortcutSavesFirst();
    void periodIsCheckedBeforeTheSave();
    void escapeInTheRefusedPeriodKeepsTheForm();
    void printShortcutSavesFirst();
    void failedSaveKeepsTheCell();
    void emptyAndTotalsRowsUpdateNobody_data();
    void emptyAndTotalsRowsUpdateNobody();
    void sellerRemovedMeanwhile();
    void clippedRateIsTold_data();
    void clippedRateIsTold();
    void clickOnAnotherCellSavesFirst();
    void clickElsewhereInTheGridSaves();
    void recomputesWithoutASave_data();
    void recomputesWithoutASave();
    void recomputesOnlyOnceAndOnlyTheSum();
    void closingTheFormSavesNothing();
    void editorFollowsTheGrid();
    void messageWhileEditingIsNoLeaving();

  private:
    Grid* grid() const { return control<Grid>(screen.get(), "Grid1"); }
    QLineEdit* editor() const { return control<QLineEdit>(screen.get(), "TextGrid"); }
    QLineEdit* lastDay() const { return control<QLineEdit>(screen.get(), "DataFin"); }
    void openScreen(int row, int column) { m->click(grid(), row, column); }
    void refusePeriod();
    void type(const QString& text) { QTest::keyClicks(editor(), text); }
    void key(Qt::Key which) { QTest::keyClick(editor(), which); }
    static QString readAgain(const QString& codigo = u"1"_s) {
        return u"Select ComissEsp1,ComissEsp2 From Vendedores Where Codigovend='"_s + codigo + u"'"_s;
    }
    static QString save(const QString& one, const QString& two, const QString& codigo = u"1"_s) {
        return u"Update Vendedores Set ComissEsp1="_s + one + u",ComissEsp2="_s + two +
               u" Where Codigovend='"_s + codigo + u"'"_s;
    }

    std::unique_ptr<Bench> m;
    std::unique_ptr<Comissao> screen;
};

void TstComissaoEdicao::init() {
    m->resetConnected();
    m->shop().vendedor(1, u"ANA"_s, u"3"_s, u"1.5"_s);
    m->shop().vendedor(2, u"BETO"_s, std::nullopt, std::nullopt);
    const auto venda = [this](int nota, int vendedor, const QString& valor, const QString& descricao) {
        m->shop().nota(nota, vendedor, u"CLIENTE"_s);
        LinhaFiscal l;
        l.nota = nota;
        l.totalVenda = valor;
        l.descricao = descricao;
        m->shop().linhaFiscal(l);
    };
    venda(1, 1, u"1000.00"_s, u"PÃO"_s);
    venda(2, 1, u"200.00"_s, u"BOLO"_s);
    venda(3, 2, u"100.00"_s, u"PÃO"_s);
    m->shop().devolucao({.vendedor = 1,
                         .produto = u"P1"_s,
                         .quantidade = u"1"_s,
                         .baixa = u"2024-02-10"_s,
                         .cliente = u"C1"_s,
                         .custo = u"60.00"_s});
    screen = std::make_unique<Comissao>();
    QVERIFY(showActive(screen.get()));
    QTest::mouseClick(control<QPushButton>(screen.get(), "Command4"), Qt::LeftButton);
    QCOMPARE(grid()->rows(), 5);
    m->mark();
}

/// "5" is typed into the first rate, then "Gerar" is pressed with a period that ends on no day.
void TstComissaoEdicao::refusePeriod() {
    lastDay()->setText(u"31/02/2024"_s);
    openScreen(1, 3);
    type(u"5"_s);
    ModalHelper modal;
    modal.expect(u"Data final inválida. Verifique!!!"_s, QMessageBox::Ok);
    QTest::keyClick(editor(), Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(modal.boxes().size(), 1); // the button shows itself pressed for a moment
    QCOMPARE(modal.problem(), QString());
}

void TstComissaoEdicao::opensOverTheCell_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::newRow("bread") << 1 << 3 << u"3,0"_s;
    QTest::newRow("others") << 1 << 6 << u"1,5"_s;
    QTest::newRow("no percentage") << 2 << 3 << QString();
    QTest::newRow("empty row") << 3 << 3 << QString();
    QTest::newRow("totals row") << 4 << 6 << QString();
}

void TstComissaoEdicao::opensOverTheCell() {
    QFETCH(int, row);
    QFETCH(int, column);
    openScreen(row, column);
    QVERIFY(editor()->isVisible());
    QVERIFY(editor()->hasFocus());
    QVERIFY(!grid()->isEnabled());
    QTEST(editor()->text(), "text");
    QCOMPARE(editor()->selectedText(), editor()->text());
    QCOMPARE(editor()->geometry().topLeft(),
             grid()->mapTo(screen.get(), grid()->cellRect(row, column).topLeft()));
    QCOMPARE(editor()->size(), grid()->cellRect(row, column).size());
    QCOMPARE(editor()->accessibleName(), grid()->text(0, column));
    QCOMPARE(m->statements(), QStringList());
}

void TstComissaoEdicao::otherCellsOpenNothing() {
    for (const int column : {0, 1, 2, 4, 5, 7, 8, 9, 10, 11})
        openScreen(1, column);
    m->click(grid(), 0, 3);
    openScreen(3, 12); // no picture there
    openScreen(4, 12);
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QCOMPARE(m->statements(), QStringList());
}

void TstComissaoEdicao::enterSaves_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("celula");
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("derivadas"); // columns 4, 7, 9 of the row, 4, 7, 9 of the totals
    QTest::newRow("bread 5") << 3 << u"5"_s << u"5,0"_s << QStringList{save(u" 5"_s, u" 1.5"_s)}
                             << QStringList(
                                    {u"50,00"_s, u"3,00"_s, u"53,00"_s, u"50,00"_s, u"3,00"_s, u"53,00"_s});
    QTest::newRow("others 2,5") << 6 << u"2,5"_s << u"2,5"_s << QStringList{save(u" 3"_s, u" 2.5"_s)}
                                << QStringList({u"30,00"_s, u"5,00"_s, u"35,00"_s, u"30,00"_s, u"5,00"_s,
                                                u"35,00"_s});
    QTest::newRow("negative") << 3 << u"-1"_s << u"-1,0"_s << QStringList{save(u"-1"_s, u" 1.5"_s)}
                              << QStringList({u"-10,00"_s, u"3,00"_s, u"-7,00"_s, u"-10,00"_s, u"3,00"_s,
                                              u"-7,00"_s});
    QTest::newRow("over a hundred") << 3 << u"100,55"_s << u"100,6"_s
                                    << QStringList{save(u" 100.6"_s, u" 1.5"_s)}
                                    << QStringList({u"1.006,00"_s, u"3,00"_s, u"1.009,00"_s, u"1.006,00"_s,
                                                    u"3,00"_s, u"1.009,00"_s});
    QTest::newRow("unchanged") << 3 << u"3,0"_s << u"3,0"_s << QStringList{save(u" 3"_s, u" 1.5"_s)}
                               << QStringList(
                                      {u"30,00"_s, u"3,00"_s, u"33,00"_s, u"30,00"_s, u"3,00"_s, u"33,00"_s});
    QTest::newRow("zero") << 6 << u"0"_s << u"0,0"_s << QStringList{save(u" 3"_s, u" 0"_s)}
                          << QStringList(
                                 {u"30,00"_s, u"0,00"_s, u"30,00"_s, u"30,00"_s, u"0,00"_s, u"30,00"_s});
}

void TstComissaoEdicao::enterSaves() {
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(QStringList, commands);
    openScreen(1, column);
    type(typed);
    key(Qt::Key_Return);
    QTEST(grid()->text(1, column), "celula");
    QCOMPARE(m->statements(), StatementLog::expected(commands));
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QVERIFY(grid()->hasFocus());
    QTEST(QStringList({grid()->text(1, 4), grid()->text(1, 7), grid()->text(1, 9), grid()->text(4, 4),
                       grid()->text(4, 7), grid()->text(4, 9)}),
          "derivadas");
    QVERIFY(screen->isVisible());
    const QStringList stored =
        m->server().query(u"SELECT ComissEsp1, ComissEsp2 FROM vendedores WHERE codigovend=1"_s)[0];
    QCOMPARE(onScreen(proportion(cents(stored[column == 3 ? 0 : 1]), 1, 10), 1), grid()->text(1, column));
}

void TstComissaoEdicao::enterIgnoresWhatIsNoNumber_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("letters") << u"abc"_s;
    QTest::newRow("number and letters") << u"5 %"_s;
    QTest::newRow("two commas") << u"1,2,3"_s;
    QTest::newRow("nothing") << QString();
}

void TstComissaoEdicao::enterIgnoresWhatIsNoNumber() {
    QFETCH(QString, typed);
    const QList<QStringList> before = allCells(grid());
    openScreen(1, 3);
    editor()->clear();
    type(typed);
    key(Qt::Key_Enter);
    QCOMPARE(allCells(grid()), before);
    QCOMPARE(m->statements(), QStringList());
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QVERIFY(grid()->hasFocus());
}

void TstComissaoEdicao::typedPointBecomesAComma() {
    openScreen(1, 3);
    type(u"5.5"_s);
    QCOMPARE(editor()->text(), u"5,5"_s);
    key(Qt::Key_Return);
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 5.5"_s, u" 1.5"_s)}));
}

void TstComissaoEdicao::pastedPointBecomesAComma() {
    openScreen(1, 3);
    QApplication::clipboard()->setText(u"5.5"_s);
    QTest::keyClick(editor(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(editor()->text(), u"5,5"_s);
}

void TstComissaoEdicao::letterAndApostropheFollowTheConvention() {
    openScreen(1, 3);
    type(u"a'b"_s);
    QCOMPARE(editor()->text(), u"A´B"_s);
}

void TstComissaoEdicao::escapeTakesTheOldTextBack() {
    const QList<QStringList> before = allCells(grid());
    openScreen(1, 3);
    type(u"9"_s);
    key(Qt::Key_Escape);
    QCOMPARE(editor()->text(), u"3,0"_s);
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QVERIFY(grid()->hasFocus());
    QCOMPARE(allCells(grid()), before);
    QCOMPARE(m->statements(), QStringList());
    QVERIFY(screen->isVisible());
    QTest::keyClick(grid(), Qt::Key_Escape); // now the form's
    QVERIFY(!screen->isVisible());
}

void TstComissaoEdicao::emptyOtherPercentageIsSavedAsZero() {
    openScreen(2, 3);
    type(u"4"_s);
    key(Qt::Key_Return);
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 4"_s, u" 0"_s, u"2"_s)}));
    QCOMPARE(grid()->text(2, 4), u"4,00"_s);
    QCOMPARE(grid()->text(2, 6), QString());
    QCOMPARE(grid()->text(4, 9), u"37,00"_s);
}

void TstComissaoEdicao::leavingSaves_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Tab") << true;
    QTest::newRow("mouse") << false;
}

void TstComissaoEdicao::leavingSaves() {
    QFETCH(bool, byKey);
    openScreen(1, 3);
    type(u"5"_s);
    if (byKey)
        key(Qt::Key_Tab);
    else
        QTest::mouseClick(control<QLineEdit>(screen.get(), "DataIni"), Qt::LeftButton);
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 5"_s, u" 1.5"_s)}));
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QCOMPARE(grid()->text(1, 3), u"5,0"_s);
    QVERIFY(!grid()->hasFocus());
    if (!byKey)
        QCOMPARE(Hands::focus(), u"DataIni"_s);
}

// A button's key takes no focus away.
void TstComissaoEdicao::shortcutSavesFirst() {
    openScreen(1, 3);
    type(u"5"_s);
    QTest::keyClick(editor(), Qt::Key_G, Qt::AltModifier);
    QTRY_VERIFY(editor()->isHidden()); // the button shows itself pressed for a moment
    const QStringList commands = m->statements();
    QCOMPARE(commands.value(0), save(u" 5"_s, u" 1.5"_s));
    QCOMPARE(commands.value(1), u"TRUNCATE relat2"_s);
    QCOMPARE(commands.filter(u"Update Vendedores"_s).size(), 1);
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QCOMPARE(grid()->text(1, 3), u"5,0"_s);
    QCOMPARE(grid()->rows(), 5);
}

// A refused period executes nothing; the entry waits.
void TstComissaoEdicao::periodIsCheckedBeforeTheSave() {
    refusePeriod();
    QCOMPARE(m->texts(), QStringList());
    QVERIFY(editor()->isVisible());
    QVERIFY(showActive(screen.get()));
    QCOMPARE(Hands::focus(), u"DataFin"_s);
    QTest::keyClicks(lastDay(), u"29022024"_s);
    QTest::keyClick(lastDay(), Qt::Key_G, Qt::AltModifier);
    QTRY_VERIFY(editor()->isHidden());
    QCOMPARE(m->texts().value(0), save(u" 5"_s, u" 1.5"_s));
    QCOMPARE(grid()->text(1, 3), u"5,0"_s);
    QCOMPARE(grid()->rows(), 5);
}

// The first Escape is the open editor's, wherever the focus is.
void TstComissaoEdicao::escapeInTheRefusedPeriodKeepsTheForm() {
    refusePeriod();
    QVERIFY(showActive(screen.get()));
    QTest::keyClick(lastDay(), Qt::Key_Escape);
    QVERIFY(screen->isVisible());
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QCOMPARE(grid()->text(1, 3), u"3,0"_s);
    QCOMPARE(m->texts(), QStringList());
}

void TstComissaoEdicao::printShortcutSavesFirst() {
    openScreen(1, 3);
    type(u"5"_s);
    QTest::keyClick(editor(), Qt::Key_I, Qt::AltModifier);
    QTRY_VERIFY(openPreview()); // the button shows itself pressed for a moment
    QCOMPARE(m->closePreviews(), 1);
    const QStringList commands = m->statements();
    QCOMPARE(commands.value(0), save(u" 5"_s, u" 1.5"_s));
    QCOMPARE(commands.value(1), u"Truncate Relat2"_s);
    QCOMPARE(commands.filter(u"Update Vendedores"_s).size(), 1);
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QCOMPARE(grid()->text(1, 3), u"5,0"_s);
    QCOMPARE(m->server().query(u"SELECT Valor2, Valor3 FROM relat2 WHERE Codigo1='1'"_s),
             QList<QStringList>({{u"5.00"_s, u"50.00"_s}}));
}

void TstComissaoEdicao::failedSaveKeepsTheCell() {
    m->server().execute(u"RENAME TABLE vendedores TO guardados"_s);
    openScreen(1, 3);
    type(u"5"_s);
    ModalHelper modal;
    modal.expectContaining(u"Update Vendedores"_s, QMessageBox::Ok);
    key(Qt::Key_Return);
    m->server().execute(u"RENAME TABLE guardados TO vendedores"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grid()->text(1, 3), u"3,0"_s);
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QVERIFY(screen->isVisible());
    m->mark();
    openScreen(1, 3);
    type(u"6"_s);
    key(Qt::Key_Return);
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 6"_s, u" 1.5"_s)}));
}

void TstComissaoEdicao::emptyAndTotalsRowsUpdateNobody_data() {
    QTest::addColumn<int>("row");
    QTest::newRow("empty row") << 3;
    QTest::newRow("totals row") << 4;
}

void TstComissaoEdicao::emptyAndTotalsRowsUpdateNobody() {
    QFETCH(int, row);
    const auto vendedores = m->server().query(u"SELECT * FROM vendedores ORDER BY codigovend"_s);
    openScreen(row, 3);
    type(u"9"_s);
    ModalHelper modal;
    modal.expect(u"Esta linha não é de um vendedor, nada foi gravado. Verifique!!!"_s, QMessageBox::Ok);
    key(Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 9"_s, u" 0"_s, QString())}));
    QCOMPARE(m->server().query(u"SELECT * FROM vendedores ORDER BY codigovend"_s), vendedores);
    QCOMPARE(grid()->text(row, 3), u"9,0"_s);
    QCOMPARE(grid()->text(4, 4), u"30,00"_s);
    QCOMPARE(grid()->text(4, 9), u"33,00"_s);
}

void TstComissaoEdicao::sellerRemovedMeanwhile() {
    m->server().execute(u"DELETE FROM vendedores WHERE codigovend=1"_s);
    const QList<QStringList> before = allCells(grid());
    openScreen(1, 6);
    type(u"9"_s);
    ModalHelper modal;
    modal.expect(u"O vendedor 1 não está mais no cadastro, nada foi gravado. Verifique!!!"_s,
                 QMessageBox::Ok);
    key(Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(allCells(grid()), before);
    QVERIFY(grid()->isEnabled());
}

void TstComissaoEdicao::clippedRateIsTold_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("comissao");
    QTest::newRow("bread, too large") << 3 << u"99999"_s << u"999,99"_s << u"9.999,90"_s;
    QTest::newRow("others, too small") << 6 << u"-99999"_s << u"-999,99"_s << u"-1.999,98"_s;
}

void TstComissaoEdicao::clippedRateIsTold() {
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    openScreen(1, column);
    type(typed);
    ModalHelper modal;
    modal.expect(u"O percentual não coube no cadastro do vendedor. Foi gravado "_s + stored +
                     u". Verifique!!!"_s,
                 QMessageBox::Ok);
    key(Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grid()->text(1, column), stored);
    QTEST(grid()->text(1, column + 1), "comissao");
    QCOMPARE(m->statements().value(1), readAgain());
    // The next entry of the row sends what is stored.
    m->mark();
    openScreen(1, column == 3 ? 6 : 3);
    type(u"1"_s);
    key(Qt::Key_Return);
    const QString ponto = column == 3 ? u" 999.99"_s : u"-999.99"_s;
    QCOMPARE(m->statements(),
             StatementLog::expected({column == 3 ? save(ponto, u" 1"_s) : save(u" 1"_s, ponto)}));
}

// The grid is disabled while a cell is edited: the click ends that and then counts.
void TstComissaoEdicao::clickOnAnotherCellSavesFirst() {
    openScreen(1, 3);
    type(u"7"_s);
    openScreen(2, 3);
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 7"_s, u" 1.5"_s)}));
    QCOMPARE(grid()->text(1, 3), u"7,0"_s);
    QVERIFY(editor()->isVisible());
    QVERIFY(editor()->hasFocus());
    QCOMPARE(editor()->geometry().topLeft(), grid()->mapTo(screen.get(), grid()->cellRect(2, 3).topLeft()));
    m->type(u"8"_s);
    m->key(Qt::Key_Return);
    QCOMPARE(grid()->text(1, 3), u"7,0"_s);
    QCOMPARE(grid()->text(2, 3), u"8,0"_s);
    QCOMPARE(m->server().query(u"SELECT ComissEsp1 FROM vendedores ORDER BY codigovend"_s),
             QList<QStringList>({{u"7.00"_s}, {u"8.00"_s}}));
}

void TstComissaoEdicao::clickElsewhereInTheGridSaves() {
    openScreen(1, 3);
    type(u"7"_s);
    openScreen(2, 1); // nothing opens there
    QCOMPARE(m->statements(), StatementLog::expected({save(u" 7"_s, u" 1.5"_s)}));
    QVERIFY(editor()->isHidden());
    QVERIFY(grid()->isEnabled());
    QCOMPARE(grid()->text(1, 3), u"7,0"_s);
}

void TstComissaoEdicao::recomputesWithoutASave_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<Qt::Key>("fim");
    QTest::newRow("Escape") << u"9"_s << Qt::Key_Escape;
    QTest::newRow("no number, Enter") << u"abc"_s << Qt::Key_Return;
}

void TstComissaoEdicao::recomputesWithoutASave() {
    QFETCH(QString, typed);
    QFETCH(Qt::Key, fim);
    const QList<QStringList> before = allCells(grid());
    for (const int column : {4, 7, 9}) {
        grid()->setText(1, column, u"0,01"_s);
        grid()->setText(4, column, u"0,01"_s);
    }
    openScreen(1, 3);
    type(typed);
    key(fim);
    QCOMPARE(allCells(grid()), before);
}

void TstComissaoEdicao::recomputesOnlyOnceAndOnlyTheSum() {
    openScreen(1, 3);
    type(u"5"_s);
    key(Qt::Key_Return);
    QCOMPARE(cells(grid(), 4), QStringList({QString(), u"***TOTAL-***"_s, u"1.100,00"_s, QString(),
                                            u"50,00"_s, u"200,00"_s, QString(), u"3,00"_s, u"1.300,00"_s,
                                            u"53,00"_s, u"60,00"_s, u"4,62"_s, QString()}));
    for (int column = 0; column < grid()->columns(); ++column)
        QVERIFY(grid()->isBold(4, column));
}

void TstComissaoEdicao::closingTheFormSavesNothing() {
    openScreen(1, 3);
    type(u"5"_s);
    screen->close();
    QCOMPARE(m->statements(), QStringList());
}

void TstComissaoEdicao::editorFollowsTheGrid() {
    openScreen(1, 6);
    screen->resize(screen->width() / 2, screen->height());
    QCoreApplication::processEvents();
    const QPoint corner = grid()->mapTo(screen.get(), grid()->cellRect(1, 6).topLeft());
    QCOMPARE(editor()->geometry().top(), corner.y());
    QVERIFY(editor()->geometry().isEmpty() || editor()->geometry().left() == corner.x());
}

void TstComissaoEdicao::messageWhileEditingIsNoLeaving() {
    openScreen(1, 3);
    type(u"5"_s);
    ModalHelper modal;
    modal.expect(u"Aviso"_s, QMessageBox::Ok);
    QMessageBox::information(screen.get(), u"Aviso"_s, u"Aviso"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(editor()->isVisible());
    QCOMPARE(m->statements(), QStringList());
}

QTEST_MAIN(TstComissaoEdicao)
#include "tst_comissao_edicao.moc"

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
    void cleanup() { tela.reset(); }

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
    Grid* grade() const { return control<Grid>(tela.get(), "Grid1"); }
    QLineEdit* editor() const { return control<QLineEdit>(tela.get(), "TextGrid"); }
    void abre(int linha, int coluna) { m->click(grade(), linha, coluna); }
    void digita(const QString& texto) { QTest::keyClicks(editor(), texto); }
    void tecla(Qt::Key qual) { QTest::keyClick(editor(), qual); }
    static QString releitura(const QString& codigo = u"1"_s) {
        return u"Select ComissEsp1,ComissEsp2 From Vendedores Where Codigovend='"_s + codigo + u"'"_s;
    }
    static QString grava(const QString& um, const QString& dois, const QString& codigo = u"1"_s) {
        return u"Update Vendedores Set ComissEsp1="_s + um + u",ComissEsp2="_s + dois +
               u" Where Codigovend='"_s + codigo + u"'"_s;
    }

    std::unique_ptr<Bench> m;
    std::unique_ptr<Comissao> tela;
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
    tela = std::make_unique<Comissao>();
    QVERIFY(showActive(tela.get()));
    QTest::mouseClick(control<QPushButton>(tela.get(), "Command4"), Qt::LeftButton);
    QCOMPARE(grade()->rows(), 5);
    m->mark();
}

void TstComissaoEdicao::opensOverTheCell_data() {
    QTest::addColumn<int>("linha");
    QTest::addColumn<int>("coluna");
    QTest::addColumn<QString>("texto");
    QTest::newRow("bread") << 1 << 3 << u"3,0"_s;
    QTest::newRow("others") << 1 << 6 << u"1,5"_s;
    QTest::newRow("no percentage") << 2 << 3 << QString();
    QTest::newRow("empty row") << 3 << 3 << QString();
    QTest::newRow("totals row") << 4 << 6 << QString();
}

void TstComissaoEdicao::opensOverTheCell() {
    QFETCH(int, linha);
    QFETCH(int, coluna);
    abre(linha, coluna);
    QVERIFY(editor()->isVisible());
    QVERIFY(editor()->hasFocus());
    QVERIFY(!grade()->isEnabled());
    QTEST(editor()->text(), "texto");
    QCOMPARE(editor()->selectedText(), editor()->text());
    QCOMPARE(editor()->geometry().topLeft(),
             grade()->mapTo(tela.get(), grade()->cellRect(linha, coluna).topLeft()));
    QCOMPARE(editor()->size(), grade()->cellRect(linha, coluna).size());
    QCOMPARE(editor()->accessibleName(), grade()->text(0, coluna));
    QCOMPARE(m->statements(), QStringList());
}

void TstComissaoEdicao::otherCellsOpenNothing() {
    for (const int coluna : {0, 1, 2, 4, 5, 7, 8, 9, 10, 11})
        abre(1, coluna);
    m->click(grade(), 0, 3);
    abre(3, 12); // no picture there
    abre(4, 12);
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QCOMPARE(m->statements(), QStringList());
}

void TstComissaoEdicao::enterSaves_data() {
    QTest::addColumn<int>("coluna");
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("celula");
    QTest::addColumn<QStringList>("comandos");
    QTest::addColumn<QStringList>("derivadas"); // columns 4, 7, 9 of the row, 4, 7, 9 of the totals
    QTest::newRow("bread 5") << 3 << u"5"_s << u"5,0"_s << QStringList{grava(u" 5"_s, u" 1.5"_s)}
                             << QStringList(
                                    {u"50,00"_s, u"3,00"_s, u"53,00"_s, u"50,00"_s, u"3,00"_s, u"53,00"_s});
    QTest::newRow("others 2,5") << 6 << u"2,5"_s << u"2,5"_s << QStringList{grava(u" 3"_s, u" 2.5"_s)}
                                << QStringList({u"30,00"_s, u"5,00"_s, u"35,00"_s, u"30,00"_s, u"5,00"_s,
                                                u"35,00"_s});
    QTest::newRow("negative") << 3 << u"-1"_s << u"-1,0"_s << QStringList{grava(u"-1"_s, u" 1.5"_s)}
                              << QStringList({u"-10,00"_s, u"3,00"_s, u"-7,00"_s, u"-10,00"_s, u"3,00"_s,
                                              u"-7,00"_s});
    QTest::newRow("over a hundred") << 3 << u"100,55"_s << u"100,6"_s
                                    << QStringList{grava(u" 100.6"_s, u" 1.5"_s)}
                                    << QStringList({u"1.006,00"_s, u"3,00"_s, u"1.009,00"_s, u"1.006,00"_s,
                                                    u"3,00"_s, u"1.009,00"_s});
    QTest::newRow("unchanged") << 3 << u"3,0"_s << u"3,0"_s << QStringList{grava(u" 3"_s, u" 1.5"_s)}
                               << QStringList(
                                      {u"30,00"_s, u"3,00"_s, u"33,00"_s, u"30,00"_s, u"3,00"_s, u"33,00"_s});
    QTest::newRow("zero") << 6 << u"0"_s << u"0,0"_s << QStringList{grava(u" 3"_s, u" 0"_s)}
                          << QStringList(
                                 {u"30,00"_s, u"0,00"_s, u"30,00"_s, u"30,00"_s, u"0,00"_s, u"30,00"_s});
}

void TstComissaoEdicao::enterSaves() {
    QFETCH(int, coluna);
    QFETCH(QString, digitado);
    QFETCH(QStringList, comandos);
    abre(1, coluna);
    digita(digitado);
    tecla(Qt::Key_Return);
    QTEST(grade()->text(1, coluna), "celula");
    QCOMPARE(m->statements(), StatementLog::expected(comandos));
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QVERIFY(grade()->hasFocus());
    QTEST(QStringList({grade()->text(1, 4), grade()->text(1, 7), grade()->text(1, 9), grade()->text(4, 4),
                       grade()->text(4, 7), grade()->text(4, 9)}),
          "derivadas");
    QVERIFY(tela->isVisible());
    const QStringList gravado =
        m->server().query(u"SELECT ComissEsp1, ComissEsp2 FROM vendedores WHERE codigovend=1"_s)[0];
    QCOMPARE(onScreen(proportion(cents(gravado[coluna == 3 ? 0 : 1]), 1, 10), 1), grade()->text(1, coluna));
}

void TstComissaoEdicao::enterIgnoresWhatIsNoNumber_data() {
    QTest::addColumn<QString>("digitado");
    QTest::newRow("letters") << u"abc"_s;
    QTest::newRow("number and letters") << u"5 %"_s;
    QTest::newRow("two commas") << u"1,2,3"_s;
    QTest::newRow("nothing") << QString();
}

void TstComissaoEdicao::enterIgnoresWhatIsNoNumber() {
    QFETCH(QString, digitado);
    const QList<QStringList> antes = allCells(grade());
    abre(1, 3);
    editor()->clear();
    digita(digitado);
    tecla(Qt::Key_Enter);
    QCOMPARE(allCells(grade()), antes);
    QCOMPARE(m->statements(), QStringList());
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QVERIFY(grade()->hasFocus());
}

void TstComissaoEdicao::typedPointBecomesAComma() {
    abre(1, 3);
    digita(u"5.5"_s);
    QCOMPARE(editor()->text(), u"5,5"_s);
    tecla(Qt::Key_Return);
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 5.5"_s, u" 1.5"_s)}));
}

void TstComissaoEdicao::pastedPointBecomesAComma() {
    abre(1, 3);
    QApplication::clipboard()->setText(u"5.5"_s);
    QTest::keyClick(editor(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(editor()->text(), u"5,5"_s);
}

void TstComissaoEdicao::letterAndApostropheFollowTheConvention() {
    abre(1, 3);
    digita(u"a'b"_s);
    QCOMPARE(editor()->text(), u"A´B"_s);
}

void TstComissaoEdicao::escapeTakesTheOldTextBack() {
    const QList<QStringList> antes = allCells(grade());
    abre(1, 3);
    digita(u"9"_s);
    tecla(Qt::Key_Escape);
    QCOMPARE(editor()->text(), u"3,0"_s);
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QVERIFY(grade()->hasFocus());
    QCOMPARE(allCells(grade()), antes);
    QCOMPARE(m->statements(), QStringList());
    QVERIFY(tela->isVisible());
    QTest::keyClick(grade(), Qt::Key_Escape); // now the form's
    QVERIFY(!tela->isVisible());
}

void TstComissaoEdicao::emptyOtherPercentageIsSavedAsZero() {
    abre(2, 3);
    digita(u"4"_s);
    tecla(Qt::Key_Return);
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 4"_s, u" 0"_s, u"2"_s)}));
    QCOMPARE(grade()->text(2, 4), u"4,00"_s);
    QCOMPARE(grade()->text(2, 6), QString());
    QCOMPARE(grade()->text(4, 9), u"37,00"_s);
}

void TstComissaoEdicao::leavingSaves_data() {
    QTest::addColumn<bool>("porTecla");
    QTest::newRow("Tab") << true;
    QTest::newRow("mouse") << false;
}

void TstComissaoEdicao::leavingSaves() {
    QFETCH(bool, porTecla);
    abre(1, 3);
    digita(u"5"_s);
    if (porTecla)
        tecla(Qt::Key_Tab);
    else
        QTest::mouseClick(control<QLineEdit>(tela.get(), "DataIni"), Qt::LeftButton);
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 5"_s, u" 1.5"_s)}));
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QCOMPARE(grade()->text(1, 3), u"5,0"_s);
}

// A button's key takes no focus away.
void TstComissaoEdicao::shortcutSavesFirst() {
    abre(1, 3);
    digita(u"5"_s);
    QTest::keyClick(editor(), Qt::Key_G, Qt::AltModifier);
    QTRY_VERIFY(editor()->isHidden()); // the button shows itself pressed for a moment
    const QStringList comandos = m->statements();
    QCOMPARE(comandos.value(0), grava(u" 5"_s, u" 1.5"_s));
    QCOMPARE(comandos.value(1), u"TRUNCATE relat2"_s);
    QCOMPARE(comandos.filter(u"Update Vendedores"_s).size(), 1);
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QCOMPARE(grade()->text(1, 3), u"5,0"_s);
    QCOMPARE(grade()->rows(), 5);
}

void TstComissaoEdicao::printShortcutSavesFirst() {
    abre(1, 3);
    digita(u"5"_s);
    QTest::keyClick(editor(), Qt::Key_I, Qt::AltModifier);
    QTRY_VERIFY(openPreview()); // the button shows itself pressed for a moment
    QCOMPARE(m->closePreviews(), 1);
    const QStringList comandos = m->statements();
    QCOMPARE(comandos.value(0), grava(u" 5"_s, u" 1.5"_s));
    QCOMPARE(comandos.value(1), u"Truncate Relat2"_s);
    QCOMPARE(comandos.filter(u"Update Vendedores"_s).size(), 1);
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QCOMPARE(grade()->text(1, 3), u"5,0"_s);
    QCOMPARE(m->server().query(u"SELECT Valor2, Valor3 FROM relat2 WHERE Codigo1='1'"_s),
             QList<QStringList>({{u"5.00"_s, u"50.00"_s}}));
}

void TstComissaoEdicao::failedSaveKeepsTheCell() {
    m->server().execute(u"RENAME TABLE vendedores TO guardados"_s);
    abre(1, 3);
    digita(u"5"_s);
    ModalHelper modal;
    modal.expectContaining(u"Update Vendedores"_s, QMessageBox::Ok);
    tecla(Qt::Key_Return);
    m->server().execute(u"RENAME TABLE guardados TO vendedores"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grade()->text(1, 3), u"3,0"_s);
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QVERIFY(tela->isVisible());
    m->mark();
    abre(1, 3);
    digita(u"6"_s);
    tecla(Qt::Key_Return);
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 6"_s, u" 1.5"_s)}));
}

void TstComissaoEdicao::emptyAndTotalsRowsUpdateNobody_data() {
    QTest::addColumn<int>("linha");
    QTest::newRow("empty row") << 3;
    QTest::newRow("totals row") << 4;
}

void TstComissaoEdicao::emptyAndTotalsRowsUpdateNobody() {
    QFETCH(int, linha);
    const auto vendedores = m->server().query(u"SELECT * FROM vendedores ORDER BY codigovend"_s);
    abre(linha, 3);
    digita(u"9"_s);
    ModalHelper modal;
    modal.expect(u"Esta linha não é de um vendedor, nada foi gravado. Verifique!!!"_s, QMessageBox::Ok);
    tecla(Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 9"_s, u" 0"_s, QString())}));
    QCOMPARE(m->server().query(u"SELECT * FROM vendedores ORDER BY codigovend"_s), vendedores);
    QCOMPARE(grade()->text(linha, 3), u"9,0"_s);
    QCOMPARE(grade()->text(4, 4), u"30,00"_s);
    QCOMPARE(grade()->text(4, 9), u"33,00"_s);
}

void TstComissaoEdicao::sellerRemovedMeanwhile() {
    m->server().execute(u"DELETE FROM vendedores WHERE codigovend=1"_s);
    const QList<QStringList> antes = allCells(grade());
    abre(1, 6);
    digita(u"9"_s);
    ModalHelper modal;
    modal.expect(u"O vendedor 1 não está mais no cadastro, nada foi gravado. Verifique!!!"_s,
                 QMessageBox::Ok);
    tecla(Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(allCells(grade()), antes);
    QVERIFY(grade()->isEnabled());
}

void TstComissaoEdicao::clippedRateIsTold_data() {
    QTest::addColumn<int>("coluna");
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("gravado");
    QTest::addColumn<QString>("comissao");
    QTest::newRow("bread, too large") << 3 << u"99999"_s << u"999,99"_s << u"9.999,90"_s;
    QTest::newRow("others, too small") << 6 << u"-99999"_s << u"-999,99"_s << u"-1.999,98"_s;
}

void TstComissaoEdicao::clippedRateIsTold() {
    QFETCH(int, coluna);
    QFETCH(QString, digitado);
    QFETCH(QString, gravado);
    abre(1, coluna);
    digita(digitado);
    ModalHelper modal;
    modal.expect(u"O percentual não coube no cadastro do vendedor. Foi gravado "_s + gravado +
                     u". Verifique!!!"_s,
                 QMessageBox::Ok);
    tecla(Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(grade()->text(1, coluna), gravado);
    QTEST(grade()->text(1, coluna + 1), "comissao");
    QCOMPARE(m->statements().value(1), releitura());
    // The next entry of the row sends what is stored.
    m->mark();
    abre(1, coluna == 3 ? 6 : 3);
    digita(u"1"_s);
    tecla(Qt::Key_Return);
    const QString ponto = coluna == 3 ? u" 999.99"_s : u"-999.99"_s;
    QCOMPARE(m->statements(),
             StatementLog::expected({coluna == 3 ? grava(ponto, u" 1"_s) : grava(u" 1"_s, ponto)}));
}

// The grid is disabled while a cell is edited: the click ends that and then counts.
void TstComissaoEdicao::clickOnAnotherCellSavesFirst() {
    abre(1, 3);
    digita(u"7"_s);
    abre(2, 3);
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 7"_s, u" 1.5"_s)}));
    QCOMPARE(grade()->text(1, 3), u"7,0"_s);
    QVERIFY(editor()->isVisible());
    QVERIFY(editor()->hasFocus());
    QCOMPARE(editor()->geometry().topLeft(), grade()->mapTo(tela.get(), grade()->cellRect(2, 3).topLeft()));
    m->type(u"8"_s);
    m->key(Qt::Key_Return);
    QCOMPARE(grade()->text(1, 3), u"7,0"_s);
    QCOMPARE(grade()->text(2, 3), u"8,0"_s);
    QCOMPARE(m->server().query(u"SELECT ComissEsp1 FROM vendedores ORDER BY codigovend"_s),
             QList<QStringList>({{u"7.00"_s}, {u"8.00"_s}}));
}

void TstComissaoEdicao::clickElsewhereInTheGridSaves() {
    abre(1, 3);
    digita(u"7"_s);
    abre(2, 1); // nothing opens there
    QCOMPARE(m->statements(), StatementLog::expected({grava(u" 7"_s, u" 1.5"_s)}));
    QVERIFY(editor()->isHidden());
    QVERIFY(grade()->isEnabled());
    QCOMPARE(grade()->text(1, 3), u"7,0"_s);
}

void TstComissaoEdicao::recomputesWithoutASave_data() {
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<Qt::Key>("fim");
    QTest::newRow("Escape") << u"9"_s << Qt::Key_Escape;
    QTest::newRow("no number, Enter") << u"abc"_s << Qt::Key_Return;
}

void TstComissaoEdicao::recomputesWithoutASave() {
    QFETCH(QString, digitado);
    QFETCH(Qt::Key, fim);
    const QList<QStringList> antes = allCells(grade());
    for (const int coluna : {4, 7, 9}) {
        grade()->setText(1, coluna, u"0,01"_s);
        grade()->setText(4, coluna, u"0,01"_s);
    }
    abre(1, 3);
    digita(digitado);
    tecla(fim);
    QCOMPARE(allCells(grade()), antes);
}

void TstComissaoEdicao::recomputesOnlyOnceAndOnlyTheSum() {
    abre(1, 3);
    digita(u"5"_s);
    tecla(Qt::Key_Return);
    QCOMPARE(cells(grade(), 4), QStringList({QString(), u"***TOTAL-***"_s, u"1.100,00"_s, QString(),
                                             u"50,00"_s, u"200,00"_s, QString(), u"3,00"_s, u"1.300,00"_s,
                                             u"53,00"_s, u"60,00"_s, u"4,62"_s, QString()}));
    for (int coluna = 0; coluna < grade()->columns(); ++coluna)
        QVERIFY(grade()->isBold(4, coluna));
}

void TstComissaoEdicao::closingTheFormSavesNothing() {
    abre(1, 3);
    digita(u"5"_s);
    tela->close();
    QCOMPARE(m->statements(), QStringList());
}

void TstComissaoEdicao::editorFollowsTheGrid() {
    abre(1, 6);
    tela->resize(tela->width() / 2, tela->height());
    QCoreApplication::processEvents();
    const QPoint canto = grade()->mapTo(tela.get(), grade()->cellRect(1, 6).topLeft());
    QCOMPARE(editor()->geometry().top(), canto.y());
    QVERIFY(editor()->geometry().isEmpty() || editor()->geometry().left() == canto.x());
}

void TstComissaoEdicao::messageWhileEditingIsNoLeaving() {
    abre(1, 3);
    digita(u"5"_s);
    ModalHelper modal;
    modal.expect(u"Aviso"_s, QMessageBox::Ok);
    QMessageBox::information(tela.get(), u"Aviso"_s, u"Aviso"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(editor()->isVisible());
    QCOMPARE(m->statements(), QStringList());
}

QTEST_MAIN(TstComissaoEdicao)
#include "tst_comissao_edicao.moc"

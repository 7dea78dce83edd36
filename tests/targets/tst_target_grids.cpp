#include "support/SavedGrid.h"
#include "targets/MetasQuadroColumns.h"
#include "targets/TargetsBench.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The two grids of the targets under the operator's keys.
class TstTargetGrids : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<TargetsBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basicoDasMetas();
    }

    void targetsSayWhatTheyWaitFor();
    void targetsAreMarkedWithoutEditing();
    void boardSaysWhetherItRan();
    void boardIsSearchedAndSaved();

  private:
    std::unique_ptr<TargetsBench> b;
    QTemporaryDir m_folder;
};

void TstTargetGrids::targetsSayWhatTheyWaitFor() {
    b->open();
    QCOMPARE(b->grid()->accessibleDescription(), u"Escolha um vendedor"_s);
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->grid()->accessibleDescription(), u"O vendedor não tem metas"_s);
}

void TstTargetGrids::targetsAreMarkedWithoutEditing() {
    b->shop().meta(1, u"P1"_s, u"10"_s);
    b->shop().meta(1, u"P2"_s, u"2.5"_s);
    b->open();
    b->choose(u"Vendedores"_s, u"ANA"_s);
    QCOMPARE(b->grid()->rows(), 3);
    b->mark();
    b->grid()->setFocus();
    b->grid()->setCurrentCell(1, metasquadro::grid1::Quantidade);
    b->key(Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(!b->box(u"TextGrid"_s)->isVisible());
    b->key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    // The column of buttons and the hidden key stay out.
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    QCOMPARE(lines[0], u"CÓDIGO\tPRODUTO\tQUANTIDADE"_s);
    QCOMPARE(QSet<QString>(lines.begin() + 1, lines.end()),
             (QSet<QString>{u"P1\tPAO FRANCES\t10"_s, u"P2\tPAO DOCE\t2,500"_s}));
    QCOMPARE(b->statements(), QStringList());
}

void TstTargetGrids::boardSaysWhetherItRan() {
    b->open();
    b->goToTab(1);
    QCOMPARE(b->grid(u"Grid2"_s)->accessibleDescription(), u"O relatório ainda não foi gerado"_s);
    b->press(u"Command4"_s);
    QCOMPARE(b->grid(u"Grid2"_s)->accessibleDescription(), u"Nenhuma meta encontrada"_s);
    b->goToTab(0);
    b->goToTab(1);
    QCOMPARE(b->grid(u"Grid2"_s)->accessibleDescription(), u"O relatório ainda não foi gerado"_s);
}

void TstTargetGrids::boardIsSearchedAndSaved() {
    b->shop().meta(1, u"P1"_s, u"100"_s);
    b->shop().venda({.vendedor = 1, .produto = u"P1"_s, .quantidade = u"150"_s, .total = u"1234.50"_s});
    b->open();
    b->goToTab(1);
    b->period(u"01/03/2024"_s, u"15/03/2024"_s);
    b->press(u"Command4"_s);
    Grid* board = b->grid(u"Grid2"_s);
    board->setFocus();
    b->key(Qt::Key_F, Qt::ControlModifier);
    b->type(u"pao fr"_s);
    QCOMPARE(board->text(board->currentRow(), 1), u"PAO FRANCES"_s);
    b->key(Qt::Key_Escape);
    QVERIFY(b->screen()->isVisible());
    const QString path = m_folder.filePath(u"metas.xlsx"_s);
    QString proposed;
    ModalHelper modals;
    expectSaving(modals, path, &proposed);
    b->key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(proposed, u"Andamento das metas - 2024-03-01 a 2024-03-15.xlsx"_s);
    const QJsonObject book = readXlsx(path);
    QCOMPARE(xlsxRow(book, 1).mid(0, 3), (QStringList{QString(), u"text:1 - ANA"_s, QString()}));
    QCOMPARE(xlsxRow(book, 2),
             (QStringList{u"text:P1"_s, u"text:PAO FRANCES"_s, u"number:100"_s, u"number:150"_s,
                          u"number:1.5"_s, u"number:1234.5"_s, u"number:0"_s, u"number:0"_s}));
}

QTEST_MAIN(TstTargetGrids)
#include "tst_target_grids.moc"

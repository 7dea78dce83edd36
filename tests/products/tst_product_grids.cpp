#include "products/PesquisaProduto.h"
#include "products/PromocaoPedidos.h"
#include "products/PromocaoPedidosColumns.h"
#include "support/Bench.h"
#include "support/SavedGrid.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The grids of the promotional price and of the product selection under the operator's keys.
class TstProductGrids : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void promotionMarksWithoutTicking();
    void promotionIsSaved();
    void promotionSaysWhatItWaitsFor();
    void selectionIsSearchedWithoutChoosing();
    void selectionIsCopiedAsShown();

  private:
    void openPromotion() {
        b->take(std::make_unique<PromocaoPedidos>(nullptr, QIcon(QPixmap(16, 16))));
        QVERIFY(b->show(QSize(1000, 500)));
    }
    void list(const QString& product) {
        b->fill(u"Descricao"_s, product);
        b->key(Qt::Key_Return);
    }

    std::unique_ptr<Bench> b;
    QTemporaryDir m_folder;
};

void TstProductGrids::init() {
    b->resetConnected();
    b->shop().produto(u"0000000000007"_s, u"PÃO FRANCÊS"_s);
    b->shop().produto(u"0000000000008"_s, u"BOLO"_s);
    b->shop().produto(u"0000000000009"_s, u"BOLO DE PÃO"_s);
    for (const auto& [code, name] : {std::pair(u"C1"_s, u"ANA"_s), std::pair(u"C2"_s, u"BETO"_s)}) {
        b->shop().cliente({.codigo = code, .nome = name});
        b->shop().linhaAberta(u"0000000000007"_s, code);
    }
}

void TstProductGrids::promotionMarksWithoutTicking() {
    openPromotion();
    list(u"7"_s);
    QCOMPARE(b->grid()->rows(), 3);
    b->grid()->setFocus();
    b->grid()->setCurrentCell(1, promocaopedidos::Quantidade);
    b->key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(columnCells(b->grid(), promocaopedidos::Selecao), (QStringList{QString(), QString()}));
    const auto* sum = b->control<QLabel>(u"Soma"_s);
    QCOMPARE(sum->text(), u"2 linhas marcadas · QUANT: 2 valores, soma 2,000"_s);
    QVERIFY(sum->width() >= sum->fontMetrics().horizontalAdvance(sum->text()));
    b->key(Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[1].contains(u"\tBETO\t"_s));
    b->click(2, promocaopedidos::Selecao);
    QCOMPARE(columnCells(b->grid(), promocaopedidos::Selecao), (QStringList{QString(), u" "_s}));
}

void TstProductGrids::promotionIsSaved() {
    openPromotion();
    list(u"7"_s);
    b->click(2, promocaopedidos::Selecao);
    const QString path = m_folder.filePath(u"pedidos.xlsx"_s);
    QString proposed;
    ModalHelper modals;
    expectSaving(modals, path, &proposed);
    b->key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(proposed, u"Pedidos - PÃO FRANCÊS.xlsx"_s);
    const QJsonObject book = readXlsx(path);
    QCOMPARE(xlsxCell(book, 2, promocaopedidos::Cliente), u"text:BETO"_s);
    QCOMPARE(xlsxCell(book, 2, promocaopedidos::Quantidade), u"number:1"_s);
    QCOMPARE(xlsxCell(book, 2, promocaopedidos::Selecao), u"text:X"_s);
    QCOMPARE(xlsxCell(book, 1, promocaopedidos::Selecao), QString());
}

void TstProductGrids::promotionSaysWhatItWaitsFor() {
    openPromotion();
    QCOMPARE(b->grid()->accessibleDescription(), u"Escolha um produto"_s);
    list(u"8"_s);
    QCOMPARE(b->grid()->accessibleDescription(), u"Nenhum pedido em aberto com este produto"_s);
    b->fill(u"Descricao"_s, u"X"_s);
    QCOMPARE(b->grid()->accessibleDescription(), u"Escolha um produto"_s);
}

// Enter and Escape choose and give up there; in the find line they are about the search.
void TstProductGrids::selectionIsSearchedWithoutChoosing() {
    ModalHelper modals;
    modals.onOpen([](QWidget* screen) {
        QVERIFY(QTest::qWaitForWindowActive(screen));
        auto* grid = control<Grid>(screen, "Grid");
        QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
        auto* box = control<QLineEdit>(screen, "Localizar");
        QTest::keyClicks(box, u"de pao"_s);
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(screen->isVisible());
        const int found = grid->currentRow();
        QCOMPARE(grid->text(found, 1), u"BOLO DE PÃO"_s);
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(screen->isVisible());
        QVERIFY(!grid->isFinding());
        QTest::keyClick(grid, Qt::Key_Return);
    });
    QString text = u"BOLO"_s;
    QCOMPARE(PesquisaProduto(text, nullptr), u"0000000000009"_s);
    QCOMPARE(modals.problem(), QString());
}

void TstProductGrids::selectionIsCopiedAsShown() {
    ModalHelper modals;
    QString copied;
    modals.onOpen([&copied](QWidget* screen) {
        QVERIFY(QTest::qWaitForWindowActive(screen));
        auto* grid = control<Grid>(screen, "Grid");
        QTest::keyClick(grid, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
        copied = QGuiApplication::clipboard()->text();
        QVERIFY(screen->isVisible());
        QTest::keyClick(grid, Qt::Key_Escape);
    });
    QString text = u"BOLO"_s;
    PesquisaProduto(text, nullptr);
    QCOMPARE(modals.problem(), QString());
    const QStringList lines = copied.split(u'\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].startsWith(u"0000000000008\tBOLO\t"_s), qPrintable(lines[0]));
    QVERIFY2(lines[1].startsWith(u"0000000000009\tBOLO DE PÃO\t"_s), qPrintable(lines[1]));
}

QTEST_MAIN(TstProductGrids)
#include "tst_product_grids.moc"

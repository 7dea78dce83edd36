#include "products/PesquisaProduto.h"
#include "products/SelecionaProd.h"
#include "products/SelecionaProdColumns.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The selection screen at its edges: long details, keys from every control, no rows.
class TstSelecionaProd : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->resetConnected();
        b->shop().produto(u"1"_s, u"PÃO DOCE"_s);
        b->shop().produto(u"2"_s, u"PÃO DE SAL"_s);
    }
    void cleanup() { SelecionaProd::CarregaImagemProduto = nullptr; }

    void unitHasTheUsualWidth();
    void f2FromEveryControl();
    void emptyGridShowsNoPicture();
    void altKeyShowsThePicture();
    void remarkHasRoomForThreeLines();
    void longRemarkScrollsByKey();
    void nextRowsRemarkStartsAtItsTop();
    void longDetailGrows();

  private:
    /// Searches for both products and operates the selection screen.
    void choose(const std::function<void(QWidget*)>& action) {
        ModalHelper modals;
        modals.onOpen([&](QWidget* screen) {
            QVERIFY(QTest::qWaitForWindowActive(screen));
            action(screen);
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        QString text = u"PÃO"_s;
        PesquisaProduto(text, nullptr);
        QCOMPARE(modals.problem(), QString());
    }

    std::unique_ptr<Bench> b;
};

void TstSelecionaProd::unitHasTheUsualWidth() {
    Grid usual;
    usual.setFormat(u"UNIDADE"_s);
    choose([&](QWidget* screen) {
        const Grid* grid = control<Grid>(screen, "Grid");
        QVERIFY(!grid->isColumnHidden(selecionaprod::Unidade));
        QCOMPARE(grid->columnTwips(selecionaprod::Unidade), usual.columnTwips(0));
    });
}

void TstSelecionaProd::f2FromEveryControl() {
    QStringList shown;
    SelecionaProd::CarregaImagemProduto = [&](const QString& codigo, const QString&) {
        shown.append(codigo);
        return true;
    };
    choose([&](QWidget* screen) {
        for (const char* name : {"Grid", "rolagem", "cmbVisualizarImagem"}) {
            control<QWidget>(screen, name)->setFocus();
            QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(name));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
        }
    });
    QCOMPARE(shown.size(), 3);
}

void TstSelecionaProd::emptyGridShowsNoPicture() {
    bool asked = false;
    SelecionaProd::CarregaImagemProduto = [&](const QString&, const QString&) { return asked = true; };
    SelecionaProd screen(nullptr);
    QVERIFY(showActive(&screen));
    QTest::keyClick(&screen, Qt::Key_F2);
    QTest::mouseClick(control<QPushButton>(&screen, "cmbVisualizarImagem"), Qt::LeftButton);
    QVERIFY(!asked);
    QVERIFY(screen.isVisible());
    // Nor is the missing viewer an error then.
    SelecionaProd::CarregaImagemProduto = nullptr;
    QTest::keyClick(&screen, Qt::Key_F2);
    QVERIFY(screen.isVisible());
    screen.rethrow();
}

void TstSelecionaProd::altKeyShowsThePicture() {
    int shown = 0;
    SelecionaProd::CarregaImagemProduto = [&](const QString&, const QString&) { return ++shown > 0; };
    choose([&](QWidget* screen) {
        QTest::keyClick(screen->windowHandle(), Qt::Key_V, Qt::AltModifier);
        QTRY_COMPARE(shown, 1);
        QCOMPARE(control<QPushButton>(screen, "cmbVisualizarImagem")->toolTip(),
                 u"Utilize F2 como tecla de atalho"_s);
    });
}

void TstSelecionaProd::remarkHasRoomForThreeLines() {
    b->server().execute(u"UPDATE produtos SET observacao='UMA\nDUAS\nTRES'"_s);
    choose([](QWidget* screen) {
        const auto* remark = control<QLabel>(screen, "Label4");
        const auto* area = control<QScrollArea>(screen, "rolagem");
        QVERIFY(area->viewport()->height() >= 3 * QFontMetrics(remark->font()).lineSpacing());
        QCOMPARE(area->verticalScrollBar()->maximum(), 0);
        QVERIFY(area->viewport()->rect().contains(
            QRect(remark->mapTo(area->viewport(), QPoint()), remark->size())));
    });
}

void TstSelecionaProd::longRemarkScrollsByKey() {
    b->server().execute(u"UPDATE produtos SET observacao='1\n2\n3\n4\n5\n6'"_s);
    choose([](QWidget* screen) {
        const auto* remark = control<QLabel>(screen, "Label4");
        const auto* area = control<QScrollArea>(screen, "rolagem");
        QVERIFY(remark->height() >= 6 * QFontMetrics(remark->font()).height());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), area);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
        const int bottom = remark->mapTo(area->viewport(), QPoint(0, remark->height())).y();
        QVERIFY(bottom <= area->viewport()->height());
    });
}

void TstSelecionaProd::nextRowsRemarkStartsAtItsTop() {
    b->server().execute(u"UPDATE produtos SET observacao='1\n2\n3\n4\n5\n6'"_s);
    choose([](QWidget* screen) {
        auto* area = control<QScrollArea>(screen, "rolagem");
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
        QVERIFY(area->verticalScrollBar()->value() > 0);
        QTest::keyClick(control<Grid>(screen, "Grid"), Qt::Key_Down);
        QCOMPARE(area->verticalScrollBar()->value(), 0);
    });
}

void TstSelecionaProd::longDetailGrows() {
    const QString brand = u"MARCA "_s.repeated(40).trimmed();
    b->server().execute(u"UPDATE produtos SET aplicacao='"_s + brand + u"' WHERE codfabr='2'"_s);
    choose([&](QWidget* screen) {
        auto* grid = control<Grid>(screen, "Grid");
        const auto* label = control<QLabel>(screen, "Label1");
        for (int row = 1; row < grid->rows(); ++row) {
            grid->setCurrentCell(row, 0);
            QCOMPARE(label->text(), u"MARCA/REFERÊNCIA: "_s + grid->text(row, selecionaprod::Aplicacao));
            const QRect needed =
                QFontMetrics(label->font())
                    .boundingRect(QRect(0, 0, label->width(), 0), Qt::TextWordWrap, label->text());
            QVERIFY(label->height() >= needed.height());
            QVERIFY(row == 1 || label->height() > QFontMetrics(label->font()).lineSpacing());
        }
    });
}

QTEST_MAIN(TstSelecionaProd)
#include "tst_seleciona_prod.moc"

#include "closing/PainelFechamento.h"
#include "closing/PanelBench.h"
#include "core/PrintLayout.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The report screens as the panel's menu opens them.
class TstRelatorios : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void menuOpensTheScreen_data();
    void menuOpensTheScreen();
    void menuByKeyboard_data();
    void menuByKeyboard();
    void screenThatCannotOpenIsAnErrorReport();
    void panelOwnsTheReportControl();

  private:
    std::unique_ptr<PanelBench> b;
};

void TstRelatorios::init() {
    b->reset();
    b->shop().empresa();
    b->shop().formas();
    QVERIFY(b->open());
}

void TstRelatorios::menuOpensTheScreen_data() {
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("screen");
    QTest::newRow("sales summary") << u"MnResumoVendas"_s << u"ResumoVendas"_s;
    QTest::newRow("commission") << u"MnComissao"_s << u"Comissao"_s;
    QTest::newRow("price level") << u"MnrelAlfaNivel"_s << u"RelatNivelPreco"_s;
}

void TstRelatorios::menuOpensTheScreen() {
    QFETCH(QString, item);
    QFETCH(QString, screen);
    auto* action = b->panel()->findChild<QAction*>(item);
    QVERIFY(action && action->isEnabled());
    ModalHelper modal;
    QString open;
    modal.onOpen([&](QWidget* window) {
        open = window->objectName();
        QVERIFY(window->isModal());
        QCOMPARE(window->parentWidget(), b->panel());
        QTest::keyClick(window, Qt::Key_Escape);
    });
    action->trigger();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(open, screen);
    QVERIFY(b->panel()->isVisible());
}

void TstRelatorios::menuByKeyboard_data() {
    QTest::addColumn<int>("descidas");
    QTest::addColumn<QString>("screen");
    QTest::newRow("first item") << 0 << u"ResumoVendas"_s;
    QTest::newRow("second item") << 1 << u"RelatNivelPreco"_s;
    QTest::newRow("third item") << 2 << u"Comissao"_s;
}

void TstRelatorios::menuByKeyboard() {
    QFETCH(int, descidas);
    const auto* report = b->panel()->findChild<QMenu*>(u"MnRelatorio"_s);
    ModalHelper modal;
    QString open;
    modal.onOpen([&](QWidget* window) {
        open = window->objectName();
        QTest::keyClick(window, Qt::Key_Escape);
    });
    QTest::keyClick(b->grid(), Qt::Key_R, Qt::AltModifier);
    QTRY_VERIFY(report->isVisible());
    for (int i = 0; i < descidas; ++i)
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    QTRY_COMPARE(modal.problem(), QString());
    QTEST(open, "screen");
}

void TstRelatorios::screenThatCannotOpenIsAnErrorReport() {
    b->server().execute(u"DELETE FROM empresa"_s);
    ModalHelper modal;
    modal.expectContaining(mensagens::erroDeExecucao, QMessageBox::Ok);
    b->panel()->findChild<QAction*>(u"MnrelAlfaNivel"_s)->trigger();
    QCOMPARE(modal.problem(), QString());
    QVERIFY(b->panel()->isVisible());
}

void TstRelatorios::panelOwnsTheReportControl() {
    QVERIFY(CRW);
    b->close();
    QVERIFY(!CRW);
}

QTEST_MAIN(TstRelatorios)
#include "tst_relatorios.moc"

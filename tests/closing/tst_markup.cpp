#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "ui/grid/Grid.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabWidget>
#include <QTest>
#include <QTextDocumentFragment>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString mark = u"<img src=x>"_s;

/// What a tool tip shows.
QString shown(const QString& tip) {
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

/// Looks at message boxes as they come up: their text must not be rich text.
class BoxWatch : public QObject {
  public:
    BoxWatch() { qApp->installEventFilter(this); }

    int seen = 0;
    QStringList rich;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* box = qobject_cast<QMessageBox*>(object);
        if (box && event->type() == QEvent::Show && box->text().contains(mark)) {
            ++seen;
            if (box->textFormat() != Qt::PlainText)
                rich.append(box->text());
        }
        return false;
    }
};

} // namespace

/// Names that look like markup, on every screen: shown letter by letter in labels, tool tips and boxes.
class TstMarkup : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { b.close(); }

    void panel();
    void documentView();
    void promotionalPricesAndSelection();
    void salesSummary();
    void commissionAndStatement();
    void targets();
    void priceLevelsAndPreview();

  private:
    /// Checks what the window shows; the number of texts with the mark in them.
    static int looked(const QWidget* window);
    void opened(const QString& action, const std::function<void(QWidget*)>& look);

    PanelBench b;
};

void TstMarkup::init() {
    b.reset();
    b.shop().empresa();
    b.shop().formas();
    b.shop().movimento(7);
    b.shop().documento({.pedido = 7, .nomeVendedor = mark, .linhas = {Linha{}, Linha{}}});
    b.shop().meta(1, u"P1"_s, u"10"_s);
    b.server().execute(u"UPDATE clientes SET nome=CONCAT('%1',codigo), fantasia='%1', cidade='%1';"
                       "UPDATE vendedores SET vendedor=CONCAT('%1',codigovend);"
                       "UPDATE produtos SET descricao=CONCAT('PRODUTO %1',codfabr), aplicacao='%1', "
                       "observacao='%1', unidade='UN';"
                       "UPDATE Finalizadoras SET Descricao='%1' WHERE Descricao='BOLETO'"_s.arg(mark));
    QVERIFY(b.open(PanelBench::wide));
}

int TstMarkup::looked(const QWidget* window) {
    int found = 0;
    const auto check = [&found](const QString& text, bool plain, const QObject* where) {
        if (!text.contains(mark))
            return;
        ++found;
        if (!plain)
            QTest::qFail(qPrintable(where->objectName() + u": "_s + text), __FILE__, __LINE__);
    };
    for (const auto* label : window->findChildren<QLabel*>())
        check(label->text(), label->textFormat() == Qt::PlainText, label);
    for (const auto* widget : window->findChildren<QWidget*>())
        check(widget->toolTip().contains(u"img"_s) ? mark : QString(),
              shown(widget->toolTip()).contains(mark), widget);
    for (const auto* grid : window->findChildren<Grid*>())
        for (int row = 1; row < grid->rows(); ++row)
            for (int column = 0; column < grid->columns(); ++column) {
                const QString text = grid->text(row, column);
                const QString tip = grid->model()->index(row - 1, column).data(Qt::ToolTipRole).toString();
                check(text, shown(tip) == text, grid);
            }
    return found;
}

void TstMarkup::opened(const QString& action, const std::function<void(QWidget*)>& look) {
    ModalHelper modal;
    modal.onOpen([&](QWidget* screen) {
        look(screen);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    b.panel()->findChild<QAction*>(action)->trigger();
    QCOMPARE(modal.problem(), QString());
}

void TstMarkup::panel() {
    QVERIFY(looked(b.panel()) >= 3); // customer, seller, city
}

void TstMarkup::documentView() {
    ModalHelper modal;
    modal.onOpen([](QWidget* screen) {
        // Name, trade name, city and seller in the tool tips of their fields, and two lines.
        QVERIFY(looked(screen) >= 6);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    b.clickTwice(1, 0);
    QCOMPARE(modal.problem(), QString());
}

void TstMarkup::promotionalPricesAndSelection() {
    ModalHelper modal;
    modal.onOpen([&modal](QWidget* screen) {
        modal.onOpen([](QWidget* selection) {
            QVERIFY(selection->findChild<Grid*>()->rows() > 2);
            QVERIFY(looked(selection) >= 4); // two products at least, brand and remark
            QTest::keyClick(selection, Qt::Key_Return);
        });
        auto* product = screen->findChild<QLineEdit*>(u"Descricao"_s);
        product->setFocus();
        QTest::keyClicks(product, u"PRODUTO"_s);
        QTest::keyClick(product, Qt::Key_Tab);
        QCoreApplication::processEvents();
        looked(screen);
        product->setFocus();
        product->selectAll();
        QTest::keyClicks(product, u"P1"_s);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    b.press(u"Command6"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstMarkup::salesSummary() {
    opened(u"MnResumoVendas"_s, [](QWidget* screen) {
        Hands hands(screen);
        hands.fill(u"DataIni"_s, u"01022024"_s);
        hands.press(u"Command4"_s);
        QVERIFY(looked(screen) > 10);
    });
}

void TstMarkup::commissionAndStatement() {
    ModalHelper modal;
    modal.onOpen([&modal](QWidget* screen) {
        Hands hands(screen);
        hands.press(u"Command4"_s);
        QVERIFY(looked(screen) >= 5);
        modal.onOpen([](QWidget* statement) {
            QVERIFY(looked(statement) >= 1);
            QTest::keyClick(statement, Qt::Key_Escape);
        });
        const Grid* grid = hands.grid();
        int row = 1;
        while (!grid->text(row, 1).contains(mark))
            ++row;
        int printed = grid->columns() - 1;
        while (printed > 0 && !grid->hasPicture(row, printed))
            --printed;
        hands.click(row, printed);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    b.panel()->findChild<QAction*>(u"MnComissao"_s)->trigger();
    QCOMPARE(modal.problem(), QString());
}

void TstMarkup::targets() {
    BoxWatch boxes;
    ModalHelper modal;
    modal.onOpen([&modal](QWidget* screen) {
        Hands hands(screen);
        auto* sellers = hands.list(u"Vendedores"_s);
        sellers->setFocus();
        while (hands.grid()->rows() == 1 && sellers->currentIndex() + 1 < sellers->count())
            QTest::keyClick(sellers, Qt::Key_Down);
        QVERIFY(looked(screen) >= 1);
        // A product that has its target already: the box tells its name.
        hands.fill(u"Descricao"_s, u"P1"_s);
        hands.key(Qt::Key_Tab);
        QVERIFY(hands.box(u"Descricao"_s)->text().contains(mark));
        hands.fill(u"Quantidade"_s, u"5"_s);
        modal.expectContaining(mark, QMessageBox::Ok);
        hands.press(u"Command1"_s);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    b.panel()->findChild<QAction*>(u"Metas"_s)->trigger();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(boxes.seen, 1);
    QCOMPARE(boxes.rich, QStringList());
}

void TstMarkup::priceLevelsAndPreview() {
    b.server().execute(u"UPDATE empresa SET Titulom1='%1'; UPDATE clientes SET colunapreco='1', "
                       "ativocad='S'"_s.arg(mark));
    ModalHelper modal;
    modal.onOpen([&modal](QWidget* screen) {
        const Hands hands(screen);
        auto* levels = hands.list(u"TabelaPreco"_s);
        QCOMPARE(levels->itemText(0), u"1 - "_s + mark.toUpper());
        QCOMPARE(levels->itemData(0, Qt::ToolTipRole), QVariant());
        levels->setCurrentIndex(0);
        looked(screen);
        modal.onOpen([](QWidget* preview) {
            looked(preview);
            // The page as a screen reader reads it.
            QVERIFY(preview->findChild<QWidget*>(u"PageView"_s)->accessibleDescription().contains(mark));
            QTest::keyClick(preview, Qt::Key_Escape);
        });
        hands.press(u"Command4"_s);
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    b.panel()->findChild<QAction*>(u"MnrelAlfaNivel"_s)->trigger();
    QCOMPARE(modal.problem(), QString());
}

QTEST_MAIN(TstMarkup)
#include "tst_markup.moc"

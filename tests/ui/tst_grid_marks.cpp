#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QTextTable>
#include <QVBoxLayout>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

namespace {

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The ratio of two colours' luminances as accessibility guidelines count it, 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The cells of the clipboard's HTML table as another program reads them.
QList<QStringList> clipboardTable() {
    QTextDocument document;
    document.setHtml(QGuiApplication::clipboard()->mimeData()->html());
    QList<QStringList> rows;
    for (QTextFrame* frame : document.rootFrame()->childFrames())
        if (const auto* table = qobject_cast<QTextTable*>(frame))
            for (int row = 0; row < table->rows(); ++row) {
                QStringList cells;
                for (int column = 0; column < table->columns(); ++column) {
                    QTextCursor cursor = table->cellAt(row, column).firstCursorPosition();
                    cursor.setPosition(table->cellAt(row, column).lastPosition(), QTextCursor::KeepAnchor);
                    cells.append(cursor.selectedText());
                }
                rows.append(cells);
            }
    return rows;
}

} // namespace

/// Marking a grid's rows, copying them, what they sum up to; the current row; a grid without rows.
class TstGridMarks : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void shiftAndArrowsMarkRows();
    void shiftAndPagesMarkRows();
    void everyRowIsMarkedAtOnce();
    void markedRowsAreToldToAScreenReader();
    void arrowsAndClicksEndTheMarking();
    void clickAndSpaceActOnOneCell();
    void rightClickKeepsTheMarking();
    void rowsThatGoAreNoLongerMarked();
    void currentRowIsCopiedWhenNoneIsMarked();
    void markedRowsAreCopiedAsTextAndAsATable();
    void headerIsCopiedWhenAsked();
    void hiddenColumnsAndButtonsAreNotCopied();
    void ticksAreCopiedAsX();
    void oddCellsStayCells();
    void textsStayTextsInASpreadsheet();
    void nothingIsCopiedFromAnEmptyGrid();
    void markedNumbersAreSummedUp();
    void columnIsChosenAlongTheMarkedRows();
    void sumIsLeftOutWhereThereIsNone();
    void currentRowIsShownAcrossAllColumns();
    void currentRowStaysReadable();
    void coloursOfCellsStayInTheCurrentRow();
    void emptyGridSaysWhy();
    void emptyTextGoesWithTheFirstRow();

  private:
    void fill(int rows) {
        m_grid->setFormat(u"<PEDIDO|<CLIENTE|>R$ TOTAL|^SELEÇÃO|CODIGO"_s);
        m_grid->setTickColumn(3, QIcon());
        m_grid->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number});
        m_grid->setColumnTwips(4, 0);
        const Grid::Fill filling(m_grid);
        for (int row = 1; row <= rows; ++row)
            m_grid->addRow({u"000%1"_s.arg(row), u"CLIENTE %1"_s.arg(row),
                            u"1.%1,50"_s.arg(row, 3, 10, QChar(u'0')), row % 2 ? u" "_s : QString(),
                            u"C%1"_s.arg(row)});
        m_grid->setFocus();
    }
    QPoint middle(int row, int column) const {
        return m_grid->viewport()->mapFrom(m_grid, m_grid->cellRect(row, column).center());
    }
    QString copied(Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QGuiApplication::clipboard()->clear();
        QTest::keyClick(m_grid, Qt::Key_C, modifiers);
        return QGuiApplication::clipboard()->text();
    }
    QColor colorAt(QPoint place) const {
        return m_form->grab().toImage().pixelColor(m_grid->mapTo(m_form.get(), place));
    }
    using Ranges = QList<Grid::RowRange>;

    std::unique_ptr<QWidget> m_form;
    Grid* m_grid = nullptr;
};

void TstGridMarks::init() {
    m_form = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_form.get());
    layout->addWidget(m_grid = new Grid);
    m_form->resize(600, 400);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TstGridMarks::cleanup() {
    m_form.reset();
}

void TstGridMarks::shiftAndArrowsMarkRows() {
    fill(10);
    m_grid->setCurrentCell(4, 1);
    QCOMPARE(m_grid->markedRows(), Ranges());
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(m_grid->markedRows(), (Ranges{{4, 6}}));
    QCOMPARE(m_grid->currentRow(), 6);
    QCOMPARE(m_grid->currentColumn(), 1);
    // Back over the row where it began, and beyond it.
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(m_grid, Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(m_grid->markedRows(), (Ranges{{2, 4}}));
    QCOMPARE(m_grid->currentRow(), 2);
}

void TstGridMarks::shiftAndPagesMarkRows() {
    fill(100);
    m_grid->setCurrentCell(50, 0);
    QTest::keyClick(m_grid, Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(m_grid->markedRows(), (Ranges{{50, 100}}));
    QTest::keyClick(m_grid, Qt::Key_Home, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(m_grid->markedRows(), (Ranges{{1, 50}}));
    QTest::keyClick(m_grid, Qt::Key_PageDown, Qt::ShiftModifier);
    QCOMPARE(m_grid->markedRows().size(), 1);
    QCOMPARE(m_grid->markedRows()[0].last, 50);
    QVERIFY(m_grid->markedRows()[0].first > 2);
}

void TstGridMarks::everyRowIsMarkedAtOnce() {
    fill(10);
    m_grid->setCurrentCell(4, 1);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(m_grid->markedRows(), (Ranges{{1, 10}}));
    QCOMPARE(m_grid->currentRow(), 4);
    m_grid->setRows(1);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(m_grid->markedRows(), Ranges());
}

void TstGridMarks::markedRowsAreToldToAScreenReader() {
    fill(5);
    m_grid->setCurrentCell(2, 0);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(m_grid)->tableInterface();
    QCOMPARE(table->selectedRows(), (QList<int>{1, 2}));
    QCOMPARE(table->rowCount(), 5);
    QCOMPARE(table->cellAt(2, 1)->text(QAccessible::Name), u"CLIENTE 3"_s);
    QVERIFY(table->cellAt(2, 1)->state().selected);
    QVERIFY(!table->cellAt(3, 1)->state().selected);
    QCOMPARE(table->cellAt(0, 3)->text(QAccessible::Name), u"Selecionado"_s);
}

void TstGridMarks::arrowsAndClicksEndTheMarking() {
    fill(10);
    m_grid->setCurrentCell(4, 1);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(m_grid, Qt::Key_Down);
    QCOMPARE(m_grid->markedRows(), Ranges());
    QCOMPARE(m_grid->currentRow(), 6);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, middle(3, 1));
    QCOMPARE(m_grid->markedRows(), Ranges());
    QCOMPARE(m_grid->currentRow(), 3);
    // The next marking begins where the grid stands then.
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(m_grid->markedRows(), (Ranges{{3, 4}}));
}

void TstGridMarks::clickAndSpaceActOnOneCell() {
    fill(10);
    m_grid->setCurrentCell(4, 3);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QSignalSpy clicks(m_grid, &Grid::cellClicked);
    QTest::keyClick(m_grid, Qt::Key_Space);
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(clicks[0], (QVariantList{5, 3}));
    QCOMPARE(m_grid->markedRows(), (Ranges{{4, 5}}));
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, Qt::ShiftModifier, middle(8, 3));
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(clicks[1], (QVariantList{8, 3}));
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, Qt::ControlModifier, middle(9, 3));
    QCOMPARE(clicks.size(), 3);
    QCOMPARE(m_grid->markedRows(), Ranges());
    QCOMPARE(m_grid->currentRow(), 9);
}

void TstGridMarks::rightClickKeepsTheMarking() {
    fill(10);
    m_grid->setCurrentCell(4, 1);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, middle(5, 0));
    QCOMPARE(m_grid->markedRows(), (Ranges{{4, 5}}));
    QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, middle(7, 0));
    QCOMPARE(m_grid->markedRows(), Ranges());
    QCOMPARE(m_grid->currentRow(), 7);
}

void TstGridMarks::rowsThatGoAreNoLongerMarked() {
    fill(10);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    m_grid->removeRow(3);
    QCOMPARE(m_grid->markedRows(), (Ranges{{1, 9}}));
    m_grid->setRows(1);
    QCOMPARE(m_grid->markedRows(), Ranges());
    m_grid->addRow({u"1"_s});
    QCOMPARE(m_grid->markedRows(), Ranges());
}

void TstGridMarks::currentRowIsCopiedWhenNoneIsMarked() {
    fill(10);
    m_grid->setCurrentCell(4, 1);
    QCOMPARE(copied(), u"0004\tCLIENTE 4\t1.004,50\t"_s);
    QCOMPARE(clipboardTable(), (QList<QStringList>{{u"0004"_s, u"CLIENTE 4"_s, u"1.004,50"_s, QString()}}));
    QCOMPARE(m_grid->currentRow(), 4);
}

void TstGridMarks::markedRowsAreCopiedAsTextAndAsATable() {
    fill(10);
    m_grid->setCurrentCell(2, 1);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(copied(), u"0002\tCLIENTE 2\t1.002,50\t\n0003\tCLIENTE 3\t1.003,50\tX"_s);
    QCOMPARE(clipboardTable(), (QList<QStringList>{{u"0002"_s, u"CLIENTE 2"_s, u"1.002,50"_s, QString()},
                                                   {u"0003"_s, u"CLIENTE 3"_s, u"1.003,50"_s, u"X"_s}}));
}

void TstGridMarks::headerIsCopiedWhenAsked() {
    fill(3);
    m_grid->setCurrentCell(1, 1);
    QCOMPARE(copied(Qt::ControlModifier | Qt::ShiftModifier),
             u"PEDIDO\tCLIENTE\tR$ TOTAL\tSELEÇÃO\n0001\tCLIENTE 1\t1.001,50\tX"_s);
    QCOMPARE(clipboardTable(), (QList<QStringList>{{u"PEDIDO"_s, u"CLIENTE"_s, u"R$ TOTAL"_s, u"SELEÇÃO"_s},
                                                   {u"0001"_s, u"CLIENTE 1"_s, u"1.001,50"_s, u"X"_s}}));
}

void TstGridMarks::hiddenColumnsAndButtonsAreNotCopied() {
    fill(2);
    m_grid->setColumnKinds({ColumnKind::Text, ColumnKind::Button});
    m_grid->setColumnTwips(2, 0);
    m_grid->setCurrentCell(1, 0);
    QCOMPARE(copied(), u"0001\tX"_s);
    QCOMPARE(clipboardTable(), (QList<QStringList>{{u"0001"_s, u"X"_s}}));
}

void TstGridMarks::ticksAreCopiedAsX() {
    fill(2);
    m_grid->setTicked(1, false);
    m_grid->setTicked(2, true);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    const QStringList lines = copied().split(u'\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[0].endsWith(u"1.001,50\t"_s));
    QVERIFY(lines[1].endsWith(u"1.002,50\tX"_s));
}

void TstGridMarks::oddCellsStayCells() {
    m_grid->setFormat(u"A|B"_s);
    m_grid->addRow({u"um\tdois"_s, u"<b>&amp;</b>"_s});
    m_grid->addRow({u"duas\nlinhas"_s, u"\"entre aspas\""_s});
    m_grid->setFocus();
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(copied(), u"\"um\tdois\"\t<b>&amp;</b>\n\"duas\nlinhas\"\t\"\"\"entre aspas\"\"\""_s);
    const QList<QStringList> table = clipboardTable();
    QCOMPARE(table.size(), 2);
    QCOMPARE(table[0][1], u"<b>&amp;</b>"_s);
    QCOMPARE(table[1][0], u"duas\u2028linhas"_s);
}

void TstGridMarks::textsStayTextsInASpreadsheet() {
    fill(1);
    m_grid->setText(1, 0, u"00012345678901"_s);
    m_grid->setText(1, 1, u"=1+1"_s);
    m_grid->setCurrentCell(1, 0);
    QCOMPARE(copied(), u"00012345678901\t=1+1\t1.001,50\tX"_s);
    const QString html = QGuiApplication::clipboard()->mimeData()->html();
    QVERIFY(html.contains(u"td{mso-number-format:\"\\@\"}"_s));
    QVERIFY(html.contains(u"<td>00012345678901</td><td>=1+1</td><td class=\"v\" align=\"right\">"_s));
}

void TstGridMarks::nothingIsCopiedFromAnEmptyGrid() {
    fill(0);
    QGuiApplication::clipboard()->setText(u"antes"_s);
    QTest::keyClick(m_grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"antes"_s);
}

void TstGridMarks::markedNumbersAreSummedUp() {
    fill(10);
    QSignalSpy told(m_grid, &Grid::selectionSummary);
    m_grid->setCurrentCell(2, 2);
    QCOMPARE(told.size(), 0);
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told[0][0].toString(), u"2 linhas marcadas · R$ TOTAL: 2 valores, soma 2.006,00"_s);
    m_grid->setText(2, 2, u"-2,00"_s);
    m_grid->setText(3, 2, QString());
    QTest::keyClick(m_grid, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(told.last()[0].toString(), u"3 linhas marcadas · R$ TOTAL: 2 valores, soma 1.002,50"_s);
    QTest::keyClick(m_grid, Qt::Key_Down);
    QCOMPARE(told.last()[0].toString(), QString());
}

void TstGridMarks::columnIsChosenAlongTheMarkedRows() {
    fill(3);
    QSignalSpy told(m_grid, &Grid::selectionSummary);
    m_grid->setCurrentCell(1, 1);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(told.last()[0].toString(), u"3 linhas marcadas"_s);
    QTest::keyClick(m_grid, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(told.last()[0].toString(), u"3 linhas marcadas · R$ TOTAL: 3 valores, soma 3.007,50"_s);
    QCOMPARE(m_grid->markedRows(), (Ranges{{1, 3}}));
}

void TstGridMarks::sumIsLeftOutWhereThereIsNone() {
    fill(3);
    m_grid->setText(2, 2, u"***"_s);
    QSignalSpy told(m_grid, &Grid::selectionSummary);
    m_grid->setCurrentCell(1, 2);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(told.last()[0].toString(), u"3 linhas marcadas"_s);
    // Beyond the range of amounts.
    m_grid->setText(2, 2, u"900.000.000.000.000,00"_s);
    m_grid->setText(3, 2, u"900.000.000.000.000,00"_s);
    m_grid->setCurrentCell(1, 2);
    QTest::keyClick(m_grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(told.last()[0].toString(), u"3 linhas marcadas"_s);
}

void TstGridMarks::currentRowIsShownAcrossAllColumns() {
    fill(6);
    m_grid->setCurrentCell(2, 0);
    const QColor ground = colorAt(m_grid->cellRect(2, 1).center() + QPoint(30, 6));
    for (const int column : {1, 2, 3}) {
        const QPoint corner = m_grid->cellRect(2, column).bottomLeft() + QPoint(2, -3);
        QCOMPARE(colorAt(corner), ground);
        QVERIFY(colorAt(m_grid->cellRect(4, column).bottomLeft() + QPoint(2, -3)) != ground);
    }
    m_grid->setCurrentCell(4, 0);
    QVERIFY(colorAt(m_grid->cellRect(2, 1).bottomLeft() + QPoint(2, -3)) != ground);
    QCOMPARE(colorAt(m_grid->cellRect(4, 1).bottomLeft() + QPoint(2, -3)), ground);
}

void TstGridMarks::currentRowStaysReadable() {
    fill(6);
    m_grid->setCurrentCell(2, 0);
    const QColor ground = colorAt(m_grid->cellRect(2, 1).bottomLeft() + QPoint(2, -3));
    const QColor usual = colorAt(m_grid->cellRect(4, 1).bottomLeft() + QPoint(2, -3));
    QVERIFY(contrast(ground, m_grid->palette().color(QPalette::Text)) >= 7);
    QVERIFY(contrast(colorAt(m_grid->cellRect(2, 1).topLeft()), usual) >= 3);
}

void TstGridMarks::coloursOfCellsStayInTheCurrentRow() {
    fill(6);
    m_grid->setText(2, 1, QString());
    m_grid->setBackColor(2, 1, Qt::yellow);
    m_grid->setCurrentCell(2, 0);
    QCOMPARE(colorAt(m_grid->cellRect(2, 1).center()), QColor(Qt::yellow));
    QVERIFY(colorAt(m_grid->cellRect(2, 1).topLeft()) != QColor(Qt::yellow));
}

void TstGridMarks::emptyGridSaysWhy() {
    fill(0);
    const QImage silent = m_grid->viewport()->grab().toImage();
    m_grid->setEmptyText(u"Nenhuma venda no período"_s);
    const QImage shown = m_grid->viewport()->grab().toImage();
    QVERIFY(shown != silent);
    QCOMPARE(m_grid->rows(), 1);
    QCOMPARE(m_grid->accessibleDescription(), u"Nenhuma venda no período"_s);
    // In grey, and still readable: the darkest pixels are those of the letters.
    QColor letters = Qt::white;
    for (int x = 0; x < shown.width(); ++x)
        for (int y = 0; y < shown.height(); ++y)
            if (luminance(shown.pixelColor(x, y)) < luminance(letters))
                letters = shown.pixelColor(x, y);
    const QColor ground = m_grid->palette().color(QPalette::Base);
    QVERIFY(contrast(letters, ground) >= 4.5);
    QVERIFY(contrast(letters, ground) < contrast(m_grid->palette().color(QPalette::Text), ground) / 2);
}

void TstGridMarks::emptyTextGoesWithTheFirstRow() {
    fill(0);
    m_grid->setEmptyText(u"Nenhuma venda no período"_s);
    m_grid->addRow({u"1"_s});
    QCOMPARE(m_grid->accessibleDescription(), QString());
    m_grid->setRows(1);
    QCOMPARE(m_grid->accessibleDescription(), u"Nenhuma venda no período"_s);
    m_grid->setEmptyText({});
    QCOMPARE(m_grid->accessibleDescription(), QString());
}

QTEST_MAIN(TstGridMarks)
#include "tst_grid_marks.moc"

#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QStyle>
#include <QTest>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

namespace {

const QString whole = u"1.500,000"_s;
const QString wholeButOne = u"1.500,001"_s;

// Parts of what a text takes at the usual size.
constexpr double smallRoom = 0.88;
constexpr double noRoom = 0.7; // not even in the smallest size

} // namespace

/// Texts wider than their column: what is written smaller, how evenly, and what is elided.
class TstTextSizes : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { m_grid.reset(); }

    void figureIsWrittenWhole_data();
    void figureIsWrittenWhole();
    void hopelessFigureIsElidedAndTold();
    void wordsAreElided();
    void columnIsEven();
    void columnThatScrollsIntoNeedIsPaintedAnew();
    void usualSizeComesBack_data();
    void usualSizeComesBack();
    void boldFiguresAreMeasuredBold();
    void captionIsWrittenWhole();
    void hopelessCaptionIsElidedAndTold();
    void captionOfSeveralWordsWrapsFirst();

  private:
    void setRoom(int column, const QString& text, double part, bool bold = false);
    QImage cell(int row, int column) const;
    QImage caption(int column) const;
    bool isSmaller(int column) const {
        const int usual = QFontInfo(m_grid->font()).pixelSize();
        const int pixels = m_grid->textReduction(column);
        return pixels > 0 && usual - pixels >= usual * 3 / 4;
    }
    void shows(const QString& text) { m_grid->setText(1, 0, text); }

    std::unique_ptr<Grid> m_grid;
};

void TstTextSizes::init() {
    m_grid = std::make_unique<Grid>();
    m_grid->setFormat(u">QUANT|<CLIENTE|^SELEÇÃO"_s);
    m_grid->setColumnKinds({ColumnKind::Number});
    m_grid->setMinimumRowTwips(360);
    m_grid->resize(500, 300);
    for (int row = 0; row < 3; ++row)
        m_grid->addRow({u"10,000"_s, u"PADARIA"_s, {}});
    m_grid->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_grid.get()));
}

/// Gives the column a part of the room that the text takes at the usual size.
void TstTextSizes::setRoom(int column, const QString& text, double part, bool bold) {
    QFont font = m_grid->font();
    font.setBold(bold);
    const double needed = QFontMetricsF(font).horizontalAdvance(text);
    const int margins = 2 * (m_grid->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1) + 1;
    m_grid->setColumnTwips(column,
                           pixelsToTwips(m_grid.get(), static_cast<int>(std::ceil(needed * part)) + margins));
}

QImage TstTextSizes::cell(int row, int column) const {
    return m_grid->grab().toImage().copy(m_grid->cellRect(row, column));
}

QImage TstTextSizes::caption(int column) const {
    QHeaderView* header = m_grid->horizontalHeader();
    return header->viewport()
        ->grab({header->sectionViewportPosition(column), 0, header->sectionSize(column), header->height()})
        .toImage();
}

void TstTextSizes::figureIsWrittenWhole_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("other");
    QTest::newRow("number") << 0 << whole << wholeButOne;
    QTest::newRow("code in a column of texts") << 1 << u"12.345.678/0001-95"_s << u"12.345.678/0001-96"_s;
}

// A picture that changes with the last digit shows it.
void TstTextSizes::figureIsWrittenWhole() {
    QFETCH(int, column);
    QFETCH(QString, text);
    QFETCH(QString, other);
    setRoom(column, text, smallRoom);
    m_grid->setText(1, column, text);
    const QImage shown = cell(1, column);
    QVERIFY(isSmaller(column));
    m_grid->setText(1, column, other);
    QVERIFY(cell(1, column) != shown);
}

void TstTextSizes::hopelessFigureIsElidedAndTold() {
    setRoom(0, whole, noRoom);
    shows(whole);
    const QImage shown = cell(1, 0);
    shows(wholeButOne);
    QCOMPARE(cell(1, 0), shown);
    QCOMPARE(m_grid->textReduction(0), 0);
    QCOMPARE(m_grid->model()->index(0, 0).data(Qt::ToolTipRole).toString(), wholeButOne);
}

void TstTextSizes::wordsAreElided() {
    const QString name = u"PADARIA DO 7 DE MAIO"_s;
    setRoom(1, name, smallRoom);
    const QImage neighbour = cell(2, 1);
    m_grid->setText(1, 1, name);
    const QImage shown = cell(1, 1);
    m_grid->setText(1, 1, u"PADARIA DO 7 DE MAIA"_s);
    QCOMPARE(cell(1, 1), shown);
    QCOMPARE(cell(2, 1), neighbour);
    QCOMPARE(m_grid->textReduction(1), 0);
}

void TstTextSizes::columnIsEven() {
    setRoom(0, whole, smallRoom);
    const QImage usual = cell(3, 0);
    const QImage beside = cell(3, 1);
    shows(whole);
    const QImage smaller = cell(3, 0);
    QVERIFY(smaller != usual);
    QCOMPARE(cell(3, 1), beside);
    // The same as that of the figure itself.
    m_grid->setText(3, 0, whole);
    m_grid->setCurrentCell(2, 0);
    QCOMPARE(cell(3, 0), cell(1, 0));
}

void TstTextSizes::columnThatScrollsIntoNeedIsPaintedAnew() {
    setRoom(0, whole, smallRoom);
    for (int row = 0; row < 100; ++row)
        m_grid->addRow({u"10,000"_s});
    const int below = m_grid->rowAt(m_grid->viewport()->height() - 1) + 3;
    m_grid->setText(below, 0, whole);
    QCoreApplication::processEvents();
    QCOMPARE(m_grid->textReduction(0), 0);
    m_grid->verticalScrollBar()->setValue(4);
    QTRY_VERIFY(isSmaller(0));
    // Once smaller it stays so, or it would change its size with every turn of the wheel.
    m_grid->verticalScrollBar()->setValue(0);
    QCoreApplication::processEvents();
    QVERIFY(isSmaller(0));
}

void TstTextSizes::usualSizeComesBack_data() {
    QTest::addColumn<std::function<void(Grid&)>>("change");
    const auto row = [](const char* name, const std::function<void(Grid&)>& change) {
        QTest::newRow(name) << change;
    };
    row("emptied", [](Grid& grid) {
        grid.setRows(1);
        grid.addRow({u"10,000"_s});
    });
    row("wider column", [](Grid& grid) { grid.setColumnTwips(0, 3000); });
    row("other format", [](Grid& grid) {
        grid.setFormat(u">QUANT"_s);
        grid.addRow({u"10,000"_s});
    });
    row("smaller font", [](Grid& grid) {
        QFont font = grid.font();
        font.setPointSizeF(font.pointSizeF() / 2);
        grid.setFont(font);
    });
}

void TstTextSizes::usualSizeComesBack() {
    QFETCH(std::function<void(Grid&)>, change);
    setRoom(0, whole, smallRoom);
    shows(whole);
    cell(1, 0);
    QVERIFY(isSmaller(0));
    change(*m_grid);
    cell(1, 0);
    QCOMPARE(m_grid->textReduction(0), 0);
}

void TstTextSizes::boldFiguresAreMeasuredBold() {
    setRoom(0, whole, smallRoom, true);
    m_grid->setBold(1, 0, true);
    shows(whole);
    const QImage shown = cell(1, 0);
    QVERIFY(isSmaller(0));
    shows(wholeButOne);
    QVERIFY(cell(1, 0) != shown);
}

void TstTextSizes::captionIsWrittenWhole() {
    const int margins = 2 * m_grid->style()->pixelMetric(QStyle::PM_HeaderMargin);
    const double needed = m_grid->fontMetrics().horizontalAdvance(u"SELEÇÃO"_s);
    const auto give = [&](double part) {
        m_grid->setColumnTwips(
            2, pixelsToTwips(m_grid.get(), static_cast<int>(std::ceil(needed * part)) + margins));
    };
    give(smallRoom);
    const QImage shown = caption(2);
    m_grid->setText(0, 2, u"SELEÇÃI"_s);
    QVERIFY(caption(2) != shown);
    // Not merely cut at the edge: the usual size looks the same at its beginning, the smaller one does not.
    m_grid->setText(0, 2, u"SELEÇ"_s);
    QVERIFY(caption(2).copy(0, 0, shown.width() / 2, shown.height()) !=
            shown.copy(0, 0, shown.width() / 2, shown.height()));
}

void TstTextSizes::hopelessCaptionIsElidedAndTold() {
    m_grid->setColumnTwips(2, 400);
    const QImage shown = caption(2);
    m_grid->setText(0, 2, u"SELEÇÃI"_s);
    QCOMPARE(caption(2), shown);
    QCOMPARE(m_grid->model()->headerData(2, Qt::Horizontal, Qt::ToolTipRole).toString(), u"SELEÇÃI"_s);
}

// With room for its longest word a caption of two keeps the usual size.
void TstTextSizes::captionOfSeveralWordsWrapsFirst() {
    m_grid->setColumnTwips(2, 960);
    m_grid->setText(0, 2, u"DIAS"_s);
    const int line = QFontMetrics(m_grid->font()).height();
    const int before = m_grid->horizontalHeader()->sizeHint().height();
    m_grid->setText(0, 2, u"DIAS VENCIDOS"_s);
    QVERIFY(m_grid->horizontalHeader()->sizeHint().height() >= 2 * line);
    QVERIFY(m_grid->horizontalHeader()->sizeHint().height() >= before);
}

QTEST_MAIN(TstTextSizes)
#include "tst_text_sizes.moc"

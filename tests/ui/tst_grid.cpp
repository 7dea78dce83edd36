#include "ui/Pictures.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

namespace {

QIcon figura(const QColor& cor) {
    QPixmap pixmap(16, 16);
    pixmap.fill(cor);
    return QIcon(pixmap);
}

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

} // namespace

/// The grid: layout, rows, cells, selection marks, position, keys and mouse.
class TstGrid : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void formatGivesCaptionsAndAlignments();
    void formatEmptiesTheGrid();
    void captionsAreTheHeaderRow();
    void captionsWrapAtTheirNormalWidth();
    void captionWithNoRoomIsElidedAndTold();
    void textsAreElidedNeverNarrowed();
    void headerIsAtLeastAsHighAsARow();
    void oneColumnTakesTheFreeWidth();
    void headerIsBold();
    void widthsAreInTwips();
    void widthZeroHidesAColumn();
    void rowsAreAddedFromATabbedText();
    void rowsAreAddedCellByCell();
    void rowsAreCutAndAddedAtTheEnd();
    void cellTextsAreWrittenAndRead();
    void oddCharactersStayInTheirCell();
    void coloursBoldAndPicturesBelongToTheirCell();
    void pictureIsPaintedInTheMiddleOfItsCell();
    void picturesStandOutInTheCurrentCell_data();
    void picturesStandOutInTheCurrentCell();
    void markupIsShownLetterByLetter();
    void colourIsPainted();
    void cutRowsTakeTheirLooksAlong();
    void tickIsASingleBlankWithThePicture();
    void tickIsSpokenToAScreenReader();
    void cellsAreSpokenToAScreenReader();
    void rowHeightsAreInTwips();
    void rowsAreAtLeastAsHighAsAsked();
    void clickOnACellIsTold();
    void doubleClickIsTold();
    void spaceDoesWhatAClickDoes();
    void focusWithNoCurrentCellStandsOnTheFirst();
    void otherButtonsAndKeysAreNoClick();
    void clickOnTheHeaderIsNoCell();
    void arrowsMoveTheCurrentCell();
    void tabLeavesTheGrid();
    void currentCellIsSetAndRead();
    void topRowIsSetAndRead();
    void topRowWithAHiddenFirstColumn();
    void cellRectangleFollowsTheScrolling();
    void fillShowsItsRowsAtItsEnd();
    void fillMayBeCutAndWritten();
    void hundredThousandRowsFillAndScroll();

  private:
    /// Lays out three columns with rows "1a" "1b" "1c" and so on.
    void preenche(int linhas) {
        m_grid->setFormat(u"<Um|>Dois|^Três"_s);
        const Grid::Fill preenchimento(m_grid);
        for (int linha = 1; linha <= linhas; ++linha)
            m_grid->addItem(u"%1a\t%1b\t%1c"_s.arg(linha));
    }
    QPoint noMeio(int linha, int coluna) const {
        return m_grid->viewport()->mapFrom(m_grid, m_grid->cellRect(linha, coluna).center());
    }
    QVariant papel(int linha, int coluna, int qual) const {
        return m_grid->model()->index(linha - 1, coluna).data(qual);
    }
    QString falado(int linha, int coluna) const {
        QAccessibleInterface* grade = QAccessible::queryAccessibleInterface(m_grid);
        QAccessibleInterface* celula = grade->tableInterface()->cellAt(linha - 1, coluna);
        return celula ? celula->text(QAccessible::Name) : u"(no cell)"_s;
    }
    QImage pintado() const { return m_form->grab().toImage(); }
    QColor corEm(const QImage& imagem, QPoint pontoDoGrid) const {
        return imagem.pixelColor(m_grid->mapTo(m_form.get(), pontoDoGrid));
    }

    std::unique_ptr<QWidget> m_form;
    Grid* m_grid = nullptr;
    QLineEdit* m_antes = nullptr;
    QLineEdit* m_depois = nullptr;
};

void TstGrid::init() {
    m_form = std::make_unique<QWidget>();
    auto* disposicao = new QVBoxLayout(m_form.get());
    disposicao->addWidget(m_antes = new QLineEdit);
    disposicao->addWidget(m_grid = new Grid);
    disposicao->addWidget(m_depois = new QLineEdit);
    m_form->resize(600, 400);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TstGrid::cleanup() {
    m_form.reset();
}

void TstGrid::formatGivesCaptionsAndAlignments() {
    m_grid->setFormat(u"<Esquerda|>Direita|^Centro|Sem marca||<"_s);
    QCOMPARE(m_grid->columns(), 6);
    const QStringList esperadas{u"Esquerda"_s, u"Direita"_s, u"Centro"_s, u"Sem marca"_s, u""_s, u""_s};
    for (int coluna = 0; coluna < 6; ++coluna)
        QCOMPARE(m_grid->text(0, coluna), esperadas[coluna]);
    m_grid->addItem(u"a\tb\tc\td\te\tf"_s);
    const QList<Qt::Alignment> alinhamentos{Qt::AlignLeft | Qt::AlignVCenter,
                                            Qt::AlignRight | Qt::AlignVCenter,
                                            Qt::AlignCenter,
                                            Qt::AlignLeft | Qt::AlignVCenter,
                                            Qt::AlignLeft | Qt::AlignVCenter,
                                            Qt::AlignLeft | Qt::AlignVCenter};
    for (int coluna = 0; coluna < 6; ++coluna)
        QCOMPARE(papel(1, coluna, Qt::TextAlignmentRole).value<Qt::Alignment>(), alinhamentos[coluna]);
}

void TstGrid::formatEmptiesTheGrid() {
    preenche(3);
    QCOMPARE(m_grid->rows(), 4);
    m_grid->setFormat(u"Outra"_s);
    QCOMPARE(m_grid->rows(), 1);
    QCOMPARE(m_grid->columns(), 1);
    QCOMPARE(m_grid->currentRow(), 0);
}

void TstGrid::captionsAreTheHeaderRow() {
    preenche(1);
    QVERIFY(m_grid->horizontalHeader()->isVisible());
    QCOMPARE(m_grid->model()->headerData(1, Qt::Horizontal).toString(), u"Dois"_s);
    m_grid->setText(0, 1, u"Novo"_s);
    QCOMPARE(m_grid->text(0, 1), u"Novo"_s);
    QCOMPARE(m_grid->model()->headerData(1, Qt::Horizontal).toString(), u"Novo"_s);
    QCOMPARE(m_grid->text(1, 1), u"1b"_s);
}

void TstGrid::captionsWrapAtTheirNormalWidth() {
    m_grid->setFormat(u"Uma legenda comprida|Curta"_s);
    m_grid->setHeaderBold();
    QFont font = m_grid->font();
    font.setBold(true);
    const auto twips = [this, &font](const QString& text) {
        return pixelsToTwips(m_grid, QFontMetrics(font).horizontalAdvance(text) + 12);
    };
    m_grid->setColumnTwips(1, 3000);
    m_grid->setColumnTwips(0, twips(u"Uma legenda comprida"_s));
    const int oneLine = m_grid->horizontalHeader()->height();
    m_grid->setColumnTwips(0, twips(u"Uma legenda"_s));
    const int line = QFontMetrics(font).lineSpacing();
    QVERIFY(m_grid->horizontalHeader()->height() >= 2 * line);
    QVERIFY(m_grid->horizontalHeader()->height() > oneLine);
    m_grid->setColumnTwips(0, twips(u"comprida"_s));
    QVERIFY(m_grid->horizontalHeader()->height() >= 3 * line);
    QCOMPARE(m_grid->model()->headerData(0, Qt::Horizontal, Qt::FontRole).value<QFont>(), font);
    // A hidden caption needs no room.
    m_grid->setColumnTwips(0, 0);
    QCOMPARE(m_grid->horizontalHeader()->height(), oneLine);
}

void TstGrid::captionWithNoRoomIsElidedAndTold() {
    m_grid->setFormat(u"<Comprida|<Comprida"_s);
    m_grid->setColumnTwips(0, 500);
    m_grid->setColumnTwips(1, 3000);
    const QImage header = m_grid->horizontalHeader()->grab().toImage();
    // The first letters look the same in both columns.
    const int letters = m_grid->fontMetrics().horizontalAdvance(u"C"_s) + 4;
    const QRect first(0, 2, letters, header.height() - 4);
    QCOMPARE(header.copy(first), header.copy(first.translated(m_grid->columnWidth(0), 0)));
    QCOMPARE(m_grid->model()->headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString(), u"Comprida"_s);
}

void TstGrid::textsAreElidedNeverNarrowed() {
    m_grid->setFormat(u"<A|<B"_s);
    m_grid->addItem(u"0000000789123\t0000000789123"_s);
    m_grid->setColumnTwips(0, 700);
    m_grid->setColumnTwips(1, 3000);
    const QImage cells = pintado();
    const QPoint grid = m_grid->mapTo(m_form.get(), QPoint());
    const int letters = m_grid->fontMetrics().horizontalAdvance(u"00"_s) + 4;
    const auto start = [&](int column) {
        const QRect cell = m_grid->cellRect(1, column).translated(grid);
        return cells.copy(cell.left(), cell.top(), letters, cell.height());
    };
    QCOMPARE(start(0), start(1));
    QCOMPARE(papel(1, 0, Qt::ToolTipRole).toString(), u"0000000789123"_s);
}

void TstGrid::headerIsAtLeastAsHighAsARow() {
    preenche(2);
    m_grid->setMinimumRowTwips(900);
    QCOMPARE(m_grid->horizontalHeader()->height(), twipsToPixels(m_grid, 900));
    m_grid->setMinimumRowTwips(360);
    QCOMPARE(m_grid->horizontalHeader()->height(),
             qMax(twipsToPixels(m_grid, 360), m_grid->horizontalHeader()->sizeHint().height()));
    QVERIFY(m_grid->horizontalHeader()->height() < twipsToPixels(m_grid, 900));
}

void TstGrid::oneColumnTakesTheFreeWidth() {
    preenche(2);
    for (int column = 0; column < 3; ++column)
        m_grid->setColumnTwips(column, 1000);
    m_grid->setStretchedColumn(1);
    QCOMPARE(m_grid->columnTwips(1), 1000);
    QCOMPARE(m_grid->columnWidth(0), twipsToPixels(m_grid, 1000));
    QCOMPARE(m_grid->columnWidth(0) + m_grid->columnWidth(1) + m_grid->columnWidth(2),
             m_grid->viewport()->width());
    m_form->resize(900, 400);
    QTRY_COMPARE(m_grid->horizontalHeader()->length(), m_grid->viewport()->width());
    // Never narrower than its own width.
    m_grid->setColumnTwips(0, 20000);
    QCOMPARE(m_grid->columnWidth(1), twipsToPixels(m_grid, 1000));
    m_grid->setColumnTwips(0, 500);
    QCOMPARE(m_grid->horizontalHeader()->length(), m_grid->viewport()->width());
}

void TstGrid::headerIsBold() {
    preenche(1);
    QVERIFY(!m_grid->isBold(0, 0));
    m_grid->setHeaderBold();
    for (int coluna = 0; coluna < 3; ++coluna) {
        QVERIFY(m_grid->isBold(0, coluna));
        QVERIFY(m_grid->model()->headerData(coluna, Qt::Horizontal, Qt::FontRole).value<QFont>().bold());
    }
    QVERIFY(!m_grid->isBold(1, 0));
    m_grid->setBold(0, 1, false);
    QVERIFY(!m_grid->isBold(0, 1));
    QVERIFY(m_grid->isBold(0, 2));
}

void TstGrid::widthsAreInTwips() {
    preenche(1);
    for (const int twips : {15, 100, 960, 1440, 5000}) {
        m_grid->setColumnTwips(1, twips);
        QCOMPARE(m_grid->columnTwips(1), twips);
        QCOMPARE(m_grid->columnWidth(1), qRound(twips * m_grid->logicalDpiX() / 1440.0));
    }
    QCOMPARE(twipsToPixels(m_grid, 1440), m_grid->logicalDpiX());
    QCOMPARE(pixelsToTwips(m_grid, m_grid->logicalDpiX()), 1440);
    QCOMPARE(twipsToPixels(m_grid, 0), 0);
}

void TstGrid::widthZeroHidesAColumn() {
    preenche(1);
    m_grid->setColumnTwips(1, 0);
    QVERIFY(m_grid->isColumnHidden(1));
    QCOMPARE(m_grid->columnTwips(1), 0);
    QCOMPARE(m_grid->text(1, 1), u"1b"_s);
    QVERIFY(m_grid->cellRect(1, 1).isEmpty());
    m_grid->setColumnTwips(1, 1440);
    QVERIFY(!m_grid->isColumnHidden(1));
    QCOMPARE(m_grid->columnWidth(1), m_grid->logicalDpiX());
    // A new layout starts with every column in sight.
    m_grid->setColumnTwips(2, 0);
    m_grid->setFormat(u"A|B|C"_s);
    for (int coluna = 0; coluna < 3; ++coluna)
        QVERIFY(!m_grid->isColumnHidden(coluna));
}

void TstGrid::rowsAreAddedFromATabbedText() {
    m_grid->setFormat(u"A|B|C"_s);
    m_grid->addItem(u"um\tdois\ttrês"_s);
    m_grid->addItem(u"um"_s);
    m_grid->addItem(QString());
    m_grid->addItem(u"\t\tsó o terceiro"_s);
    m_grid->addItem(u"1\t2\t3\t4\t5"_s);
    QCOMPARE(m_grid->rows(), 6);
    const QList<QStringList> esperadas{{u"um"_s, u"dois"_s, u"três"_s},
                                       {u"um"_s, u""_s, u""_s},
                                       {u""_s, u""_s, u""_s},
                                       {u""_s, u""_s, u"só o terceiro"_s},
                                       {u"1"_s, u"2"_s, u"3"_s}};
    for (int linha = 1; linha <= 5; ++linha)
        for (int coluna = 0; coluna < 3; ++coluna)
            QCOMPARE(m_grid->text(linha, coluna), esperadas[linha - 1][coluna]);
}

void TstGrid::rowsAreAddedCellByCell() {
    m_grid->setFormat(u"A|B|C"_s);
    m_grid->addRow({u"com\ttab"_s, u""_s, u"fim"_s});
    m_grid->addRow({u"só um"_s});
    QCOMPARE(m_grid->text(1, 0), u"com\ttab"_s);
    QCOMPARE(m_grid->text(1, 1), u""_s);
    QCOMPARE(m_grid->text(1, 2), u"fim"_s);
    QCOMPARE(m_grid->text(2, 0), u"só um"_s);
    QCOMPARE(m_grid->text(2, 2), u""_s);
}

void TstGrid::rowsAreCutAndAddedAtTheEnd() {
    preenche(5);
    m_grid->setRows(3);
    QCOMPARE(m_grid->rows(), 3);
    QCOMPARE(m_grid->text(2, 0), u"2a"_s);
    m_grid->setRows(4);
    QCOMPARE(m_grid->rows(), 4);
    QCOMPARE(m_grid->text(3, 0), u""_s);
    QCOMPARE(m_grid->model()->rowCount(), 3);
    m_grid->setRows(1);
    QCOMPARE(m_grid->rows(), 1);
    QCOMPARE(m_grid->text(0, 0), u"Um"_s);
    m_grid->setRows(1);
    m_grid->addItem(u"nova"_s);
    QCOMPARE(m_grid->text(1, 0), u"nova"_s);
}

void TstGrid::cellTextsAreWrittenAndRead() {
    preenche(3);
    m_grid->setText(2, 1, u"PÃO"_s);
    QCOMPARE(m_grid->text(2, 1), u"PÃO"_s);
    QCOMPARE(m_grid->text(2, 0), u"2a"_s);
    QCOMPARE(m_grid->text(2, 2), u"2c"_s);
    QCOMPARE(m_grid->text(1, 1), u"1b"_s);
    QCOMPARE(papel(2, 1, Qt::DisplayRole).toString(), u"PÃO"_s);
    m_grid->setText(2, 1, QString());
    QCOMPARE(m_grid->text(2, 1), u""_s);
    QCOMPARE(m_grid->text(2, 2), u"2c"_s);
}

void TstGrid::oddCharactersStayInTheirCell() {
    preenche(1);
    for (const QString& texto :
         {u"a\tb"_s, u"linha 1\nlinha 2"_s, u"a|b"_s, u"\U0001F950"_s, u" "_s, u"\\0"_s}) {
        m_grid->setText(1, 1, texto);
        QCOMPARE(m_grid->text(1, 0), u"1a"_s);
        QCOMPARE(m_grid->text(1, 1), texto);
        QCOMPARE(m_grid->text(1, 2), u"1c"_s);
    }
}

void TstGrid::coloursBoldAndPicturesBelongToTheirCell() {
    preenche(3);
    m_grid->setBackColor(2, 1, Qt::yellow);
    m_grid->setForeColor(2, 1, Qt::red);
    m_grid->setBold(2, 1, true);
    m_grid->setPicture(2, 1, figura(Qt::blue));
    QCOMPARE(m_grid->backColor(2, 1), QColor(Qt::yellow));
    QCOMPARE(m_grid->foreColor(2, 1), QColor(Qt::red));
    QVERIFY(m_grid->isBold(2, 1));
    QVERIFY(m_grid->hasPicture(2, 1));
    QVERIFY(papel(2, 1, Qt::FontRole).value<QFont>().bold());
    for (const auto& [linha, coluna] : {std::pair(1, 1), std::pair(3, 1), std::pair(2, 0), std::pair(2, 2)}) {
        QVERIFY(!m_grid->backColor(linha, coluna).isValid());
        QVERIFY(!m_grid->foreColor(linha, coluna).isValid());
        QVERIFY(!m_grid->isBold(linha, coluna));
        QVERIFY(!m_grid->hasPicture(linha, coluna));
    }
    m_grid->setText(2, 1, u"outro"_s);
    QCOMPARE(m_grid->backColor(2, 1), QColor(Qt::yellow));
    m_grid->setPicture(2, 1, QIcon());
    QVERIFY(!m_grid->hasPicture(2, 1));
    QCOMPARE(m_grid->foreColor(2, 1), QColor(Qt::red));
}

void TstGrid::pictureIsPaintedInTheMiddleOfItsCell() {
    preenche(3);
    m_grid->setText(2, 1, QString());
    m_grid->setPicture(2, 1, figura(Qt::blue));
    const QRect celula = m_grid->cellRect(2, 1);
    const QImage imagem = pintado();
    QCOMPARE(corEm(imagem, celula.center()), QColor(Qt::blue));
    QVERIFY(corEm(imagem, celula.center() - QPoint(celula.width() / 2 - 4, 0)) != QColor(Qt::blue));
    QVERIFY(corEm(imagem, m_grid->cellRect(1, 1).center()) != QColor(Qt::blue));
}

void TstGrid::picturesStandOutInTheCurrentCell_data() {
    QTest::addColumn<QIcon>("picture");
    QTest::addColumn<QColor>("stroke");
    QTest::newRow("tick") << pictures::check() << QColor(0x1B, 0x87, 0x3B);
    QTest::newRow("bin") << pictures::trash() << QColor(0xC6, 0x28, 0x28);
}

void TstGrid::picturesStandOutInTheCurrentCell() {
    QFETCH(QIcon, picture);
    QFETCH(QColor, stroke);
    preenche(3);
    m_grid->setMinimumRowTwips(420);
    m_grid->setText(2, 1, QString());
    m_grid->setPicture(2, 1, picture);
    m_grid->setFocus();
    m_grid->setCurrentCell(2, 1);
    const QRect cell = m_grid->cellRect(2, 1);
    const QImage image = pintado();
    // The corners of the picture's square are its ground.
    QVERIFY(contrast(corEm(image, cell.center() - QPoint(9, 9)), stroke) >= 4.5);
    int drawn = 0;
    for (int x = -10; x <= 10; ++x)
        for (int y = -10; y <= 10; ++y)
            drawn += corEm(image, cell.center() + QPoint(x, y)) == stroke ? 1 : 0;
    QVERIFY2(drawn > 10, qPrintable(QString::number(drawn)));
}

void TstGrid::markupIsShownLetterByLetter() {
    const QString name = u"<img src=\"x\"> & <b>FILHOS</b>"_s;
    m_grid->setFormat(u"A"_s);
    m_grid->addRow({name});
    m_grid->setText(0, 0, name);
    for (const QString& tip : {papel(1, 0, Qt::ToolTipRole).toString(),
                               m_grid->model()->headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString()})
        QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), name);
}

void TstGrid::colourIsPainted() {
    preenche(2);
    m_grid->setText(1, 1, QString());
    m_grid->setBackColor(1, 1, Qt::yellow);
    QCOMPARE(corEm(pintado(), m_grid->cellRect(1, 1).center()), QColor(Qt::yellow));
}

void TstGrid::cutRowsTakeTheirLooksAlong() {
    preenche(2);
    m_grid->setBackColor(2, 0, Qt::yellow);
    m_grid->setBold(2, 0, true);
    m_grid->setRows(2);
    m_grid->setRows(3);
    QVERIFY(!m_grid->backColor(2, 0).isValid());
    QVERIFY(!m_grid->isBold(2, 0));
}

void TstGrid::tickIsASingleBlankWithThePicture() {
    preenche(3);
    m_grid->setTickColumn(2, figura(Qt::green));
    m_grid->setTicked(1, true);
    m_grid->setTicked(2, false);
    QCOMPARE(m_grid->text(1, 2), u" "_s);
    QCOMPARE(m_grid->text(2, 2), u""_s);
    QVERIFY(m_grid->isTicked(1));
    QVERIFY(!m_grid->isTicked(2));
    QVERIFY(m_grid->hasPicture(1, 2));
    QVERIFY(!m_grid->hasPicture(2, 2));
    QCOMPARE(corEm(pintado(), m_grid->cellRect(1, 2).center()), QColor(Qt::green));
    // The text alone decides, whoever wrote it.
    m_grid->setText(2, 2, u" "_s);
    QVERIFY(m_grid->isTicked(2));
    QVERIFY(m_grid->hasPicture(2, 2));
    m_grid->setText(1, 2, u"  "_s);
    QVERIFY(!m_grid->isTicked(1));
    m_grid->addItem(u"a\tb\t "_s);
    QVERIFY(m_grid->isTicked(4));
}

void TstGrid::tickIsSpokenToAScreenReader() {
    preenche(2);
    m_grid->setTickColumn(2, figura(Qt::green));
    m_grid->setTicked(1, true);
    m_grid->setTicked(2, false);
    QCOMPARE(falado(1, 2), u"Selecionado"_s);
    QCOMPARE(falado(2, 2), u"Não selecionado"_s);
    m_grid->setTicked(2, true);
    QCOMPARE(falado(2, 2), u"Selecionado"_s);
}

void TstGrid::cellsAreSpokenToAScreenReader() {
    preenche(2);
    QCOMPARE(falado(2, 1), u"2b"_s);
    QAccessibleInterface* grade = QAccessible::queryAccessibleInterface(m_grid);
    QCOMPARE(grade->tableInterface()->rowCount(), 2);
    QCOMPARE(grade->tableInterface()->columnCount(), 3);
    QCOMPARE(grade->tableInterface()->columnDescription(2), u"Três"_s);
}

void TstGrid::rowHeightsAreInTwips() {
    preenche(3);
    m_grid->setRowHeights({{2, 900}});
    QCOMPARE(m_grid->rowHeight(1), twipsToPixels(m_grid, 900));
    QCOMPARE(m_grid->rowTwips(2), 900);
    QVERIFY(m_grid->rowTwips(1) < 900);
    QVERIFY(m_grid->cellRect(3, 0).top() >= m_grid->cellRect(2, 0).top() + m_grid->rowHeight(1));
}

void TstGrid::rowsAreAtLeastAsHighAsAsked() {
    preenche(2);
    m_grid->setMinimumRowTwips(600);
    QCOMPARE(m_grid->rowTwips(1), 600);
    m_grid->addItem(u"nova"_s);
    QCOMPARE(m_grid->rowTwips(3), 600);
    m_grid->setRowHeights({{2, 150}});
    QCOMPARE(m_grid->rowTwips(2), 600);
    m_grid->setRowHeights({{2, 1200}});
    QCOMPARE(m_grid->rowTwips(2), 1200);
}

void TstGrid::clickOnACellIsTold() {
    preenche(3);
    QSignalSpy cliques(m_grid, &Grid::cellClicked);
    QSignalSpy entradas(m_grid, &Grid::cellEntered);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, noMeio(2, 1));
    QCOMPARE(cliques.size(), 1);
    QCOMPARE(cliques[0], (QVariantList{2, 1}));
    QCOMPARE(entradas.size(), 1);
    QCOMPARE(entradas[0], (QVariantList{2, 1}));
    QCOMPARE(m_grid->currentRow(), 2);
    QCOMPARE(m_grid->currentColumn(), 1);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, noMeio(2, 1));
    QCOMPARE(cliques.size(), 2);
    QCOMPARE(entradas.size(), 1);
}

void TstGrid::doubleClickIsTold() {
    preenche(3);
    QSignalSpy cliques(m_grid, &Grid::cellClicked);
    QSignalSpy duplos(m_grid, &Grid::cellDoubleClicked);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, noMeio(3, 0));
    QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, noMeio(3, 0));
    QCOMPARE(duplos.size(), 1);
    QCOMPARE(duplos[0], (QVariantList{3, 0}));
    for (const QVariantList& clique : cliques)
        QCOMPARE(clique, (QVariantList{3, 0}));
}

void TstGrid::spaceDoesWhatAClickDoes() {
    preenche(3);
    m_grid->setFocus();
    m_grid->setCurrentCell(2, 1);
    QSignalSpy cliques(m_grid, &Grid::cellClicked);
    QTest::keyClick(m_grid, Qt::Key_Space);
    QCOMPARE(cliques.size(), 1);
    QCOMPARE(cliques[0], (QVariantList{2, 1}));
    QCOMPARE(m_grid->currentRow(), 2);
}

void TstGrid::focusWithNoCurrentCellStandsOnTheFirst() {
    preenche(3);
    QSignalSpy cliques(m_grid, &Grid::cellClicked);
    QTest::keyClick(m_antes, Qt::Key_Tab);
    QCOMPARE(m_form->focusWidget(), m_grid);
    QCOMPARE(m_grid->currentRow(), 1);
    QCOMPARE(m_grid->currentColumn(), 0);
    QCOMPARE(cliques.size(), 0);
    m_grid->setRows(1);
    QTest::keyClick(m_grid, Qt::Key_Space);
    QCOMPARE(cliques.size(), 0);
}

void TstGrid::otherButtonsAndKeysAreNoClick() {
    preenche(3);
    m_grid->setFocus();
    QSignalSpy cliques(m_grid, &Grid::cellClicked);
    QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, noMeio(2, 1));
    QTest::mouseClick(m_grid->viewport(), Qt::MiddleButton, {}, noMeio(2, 1));
    QTest::keyClick(m_grid, Qt::Key_F2);
    QTest::keyClick(m_grid, Qt::Key_X);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {},
                      m_grid->viewport()->rect().bottomRight() - QPoint(2, 2));
    QCOMPARE(cliques.size(), 0);
    QCOMPARE(m_grid->text(1, 0), u"1a"_s);
}

void TstGrid::clickOnTheHeaderIsNoCell() {
    preenche(3);
    QSignalSpy cliques(m_grid, &Grid::cellClicked);
    QSignalSpy entradas(m_grid, &Grid::cellEntered);
    QWidget* cabecalho = m_grid->horizontalHeader()->viewport();
    QTest::mouseClick(cabecalho, Qt::LeftButton, {}, QPoint(10, cabecalho->height() / 2));
    QCOMPARE(cliques.size(), 0);
    QCOMPARE(entradas.size(), 0);
    QCOMPARE(m_grid->text(1, 0), u"1a"_s);
}

void TstGrid::arrowsMoveTheCurrentCell() {
    preenche(3);
    m_grid->setFocus();
    m_grid->setCurrentCell(1, 0);
    QSignalSpy entradas(m_grid, &Grid::cellEntered);
    QTest::keyClick(m_grid, Qt::Key_Down);
    QTest::keyClick(m_grid, Qt::Key_Right);
    QCOMPARE(m_grid->currentRow(), 2);
    QCOMPARE(m_grid->currentColumn(), 1);
    QCOMPARE(entradas.size(), 2);
    QTest::keyClick(m_grid, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(m_grid->currentRow(), 3);
}

void TstGrid::tabLeavesTheGrid() {
    preenche(3);
    m_grid->setFocus();
    m_grid->setCurrentCell(1, 0);
    QTest::keyClick(m_grid, Qt::Key_Tab);
    QCOMPARE(m_form->focusWidget(), m_depois);
    QTest::keyClick(m_depois, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_form->focusWidget(), m_grid);
    QTest::keyClick(m_grid, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_form->focusWidget(), m_antes);
    QCOMPARE(m_grid->currentRow(), 1);
    QCOMPARE(m_grid->currentColumn(), 0);
}

void TstGrid::currentCellIsSetAndRead() {
    preenche(3);
    QCOMPARE(m_grid->currentRow(), 0);
    m_grid->setCurrentCell(3, 2);
    QCOMPARE(m_grid->currentRow(), 3);
    QCOMPARE(m_grid->currentColumn(), 2);
    m_grid->setRows(1);
    QCOMPARE(m_grid->currentRow(), 0);
}

void TstGrid::topRowIsSetAndRead() {
    preenche(1000);
    QCOMPARE(m_grid->topRow(), 1);
    m_grid->setTopRow(500);
    QCOMPARE(m_grid->topRow(), 500);
    m_grid->setTopRow(1);
    QCOMPARE(m_grid->topRow(), 1);
    // The last rows cannot all come first; the last one is in sight then.
    m_grid->setTopRow(1000);
    QVERIFY(m_grid->topRow() < 1000);
    QVERIFY(m_grid->viewport()->rect().contains(noMeio(1000, 0)));
}

void TstGrid::topRowWithAHiddenFirstColumn() {
    preenche(1000);
    m_grid->setColumnTwips(0, 0);
    m_grid->setTopRow(500);
    QCOMPARE(m_grid->topRow(), 500);
}

void TstGrid::cellRectangleFollowsTheScrolling() {
    preenche(1000);
    for (int coluna = 0; coluna < 3; ++coluna)
        m_grid->setColumnTwips(coluna, 6000);
    QSignalSpy movidas(m_grid, &Grid::cellsMoved);
    const QRect antes = m_grid->cellRect(5, 1);
    // The line between two columns belongs to neither.
    QCOMPARE(antes.width(), m_grid->columnWidth(1) - 1);
    QCOMPARE(antes.left() - m_grid->cellRect(5, 0).left(), m_grid->columnWidth(0));
    QCOMPARE(m_grid->childAt(m_grid->cellRect(1, 0).center()), m_grid->viewport());
    m_grid->setTopRow(3);
    QVERIFY(!movidas.isEmpty());
    QCOMPARE(antes.top() - m_grid->cellRect(5, 1).top(), 2 * m_grid->rowHeight(0));
    m_grid->horizontalScrollBar()->setValue(50);
    QCOMPARE(antes.left() - m_grid->cellRect(5, 1).left(), 50);
    QVERIFY(m_grid->cellRect(2000, 0).isEmpty());
}

void TstGrid::fillShowsItsRowsAtItsEnd() {
    m_grid->setFormat(u"A|B"_s);
    QSignalSpy inseridas(m_grid->model(), &QAbstractItemModel::rowsInserted);
    {
        const Grid::Fill preenchimento(m_grid);
        for (int linha = 1; linha <= 300; ++linha)
            m_grid->addItem(u"%1\tx"_s.arg(linha));
        QCOMPARE(m_grid->rows(), 301);
        QCOMPARE(m_grid->text(300, 0), u"300"_s);
        QCOMPARE(m_grid->model()->rowCount(), 0);
    }
    QCOMPARE(m_grid->model()->rowCount(), 300);
    QCOMPARE(inseridas.size(), 1);
    { const Grid::Fill vazio(m_grid); }
    QCOMPARE(inseridas.size(), 1);
}

void TstGrid::fillMayBeCutAndWritten() {
    m_grid->setFormat(u"A|B"_s);
    {
        const Grid::Fill preenchimento(m_grid);
        for (int linha = 1; linha <= 10; ++linha)
            m_grid->addItem(u"%1\tx"_s.arg(linha));
        m_grid->setText(7, 1, u"escrito"_s);
        m_grid->setBold(7, 1, true);
        m_grid->setRows(8);
        QCOMPARE(m_grid->rows(), 8);
    }
    QCOMPARE(m_grid->rows(), 8);
    QCOMPARE(m_grid->model()->rowCount(), 7);
    QCOMPARE(m_grid->text(7, 1), u"escrito"_s);
    QVERIFY(m_grid->isBold(7, 1));
    {
        const Grid::Fill preenchimento(m_grid);
        m_grid->addItem(u"a"_s);
        m_grid->setRows(1);
        m_grid->addItem(u"b"_s);
    }
    QCOMPARE(m_grid->rows(), 2);
    QCOMPARE(m_grid->text(1, 0), u"b"_s);
}

void TstGrid::hundredThousandRowsFillAndScroll() {
    constexpr int muitas = 100000;
    preenche(muitas);
    QCOMPARE(m_grid->rows(), muitas + 1);
    QCOMPARE(m_grid->text(muitas, 2), u"100000c"_s);
    m_grid->setTopRow(54321);
    QCOMPARE(m_grid->topRow(), 54321);
    QVERIFY(!m_grid->cellRect(54321, 0).isEmpty());
    m_grid->setFocus();
    m_grid->setCurrentCell(muitas, 0);
    QVERIFY(m_grid->viewport()->rect().contains(noMeio(muitas, 0)));
    QTest::keyClick(m_grid, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(m_grid->topRow(), 1);
    m_grid->setBackColor(2, 0, Qt::yellow);
    m_grid->setText(2, 0, QString());
    QCOMPARE(corEm(pintado(), m_grid->cellRect(2, 0).center()), QColor(Qt::yellow));
    m_grid->setRows(1);
    QCOMPARE(m_grid->rows(), 1);
    preenche(muitas);
    QCOMPARE(m_grid->rows(), muitas + 1);
}

QTEST_MAIN(TstGrid)
#include "tst_grid.moc"

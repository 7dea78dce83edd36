#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// Finding texts in a grid, its menu, and ordering it by a column.
class TstGridFind : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void lineOpensBelowTheGrid();
    void typingGoesToTheFirstHit();
    void accentsAndLetterCaseDoNotMatter();
    void apostropheIsFoundAsTyped();
    void hitsAreWalkedByKeyAndCounted();
    void hitsAreWalkedByMouse();
    void searchGoesOnFromTheCurrentCell();
    void hitsAreHighlighted();
    void hiddenColumnsAndTicksAreNotSearched();
    void missingTextIsTold();
    void changedRowsAreCountedAgain();
    void escapeClosesTheLine();
    void keysBelongToTheFormWhileTheLineIsClosed();
    void lineTakesPartInTheTabOrder();
    void everyControlOfTheLineHasAName();
    void menuOpensByMouseAndByKey_data();
    void menuOpensByMouseAndByKey();
    void menuNamesTheKeys();
    void menuDoesWhatItSays();
    void menuOffersWhatTheScreenAdds();
    void headerOrdersTheRows();
    void keyOrdersTheRows();
    void numbersAndDatesAreOrderedByValue();
    void currentRowMovesWithItsRecord();
    void emptiedGridHasNoOrder();
    void otherGridsKeepTheirOrder();

  private:
    void fill() {
        m_grid->setFormat(u"<CLIENTE|<CIDADE|>R$ TOTAL|^SELEÇÃO|CODIGO"_s);
        m_grid->setTickColumn(3, QIcon());
        m_grid->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number});
        m_grid->setColumnTwips(0, 3000);
        m_grid->setColumnTwips(4, 0);
        m_grid->addRow({u"PADARIA DA ESQUINA"_s, u"SÃO PAULO"_s, u"10,00"_s, u" "_s, u"PAO1"_s});
        m_grid->addRow({u"Casa do Pão"_s, u"ITU"_s, u"9,00"_s, QString(), u"C2"_s});
        m_grid->addRow({u"BAR D´OESTE"_s, u"SÃO PAULO"_s, u"100,00"_s, u" "_s, u"C3"_s});
        m_grid->addRow({u"ÁGUA E CIA"_s, u"ITU"_s, u"-1,00"_s, QString(), u"C4"_s});
        m_grid->setFocus();
    }
    QLineEdit* box() const { return m_form->findChild<QLineEdit*>(u"Localizar"_s); }
    QString count() const { return m_form->findChild<QLabel*>(u"Ocorrencias"_s)->text(); }
    void find(const QString& text) {
        QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
        box()->clear();
        for (const QChar letter : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, letter);
            QApplication::sendEvent(box(), &press);
        }
    }
    QPair<int, int> place() const { return {m_grid->currentRow(), m_grid->currentColumn()}; }
    QStringList names() const {
        QStringList texts;
        for (int row = 1; row < m_grid->rows(); ++row)
            texts.append(m_grid->text(row, 0));
        return texts;
    }
    QPoint middle(int row, int column) const {
        return m_grid->viewport()->mapFrom(m_grid, m_grid->cellRect(row, column).center());
    }
    QMenu* menu() const { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    QAction* action(const QString& name) const { return m_grid->findChild<QAction*>(name); }
    void clickHeader(int column) {
        QHeaderView* header = m_grid->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 10, header->height() / 2});
    }

    std::unique_ptr<QWidget> m_form;
    Grid* m_grid = nullptr;
    QLineEdit* m_before = nullptr;
    QLineEdit* m_after = nullptr;
};

void TstGridFind::init() {
    m_form = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_form.get());
    layout->addWidget(m_before = new QLineEdit);
    layout->addWidget(m_grid = new Grid);
    layout->addWidget(m_after = new QLineEdit);
    m_form->resize(700, 400);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TstGridFind::cleanup() {
    m_form.reset();
}

void TstGridFind::lineOpensBelowTheGrid() {
    fill();
    QVERIFY(!box());
    QSignalSpy shown(m_grid, &Grid::findLineShown);
    QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(m_grid->isFinding());
    QCOMPARE(shown.size(), 1);
    QTRY_VERIFY(box()->hasFocus());
    QCoreApplication::processEvents();
    const int lineTop = box()->mapTo(m_form.get(), QPoint()).y();
    QVERIFY(lineTop >= m_grid->geometry().bottom());
    QVERIFY(lineTop < m_after->geometry().top());
    // A second Ctrl+F makes the text ready for another one.
    QTest::keyClicks(box(), u"itu"_s);
    QTest::keyClick(box(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(box()->selectedText(), u"itu"_s);
    QCOMPARE(shown.size(), 1);
}

void TstGridFind::typingGoesToTheFirstHit() {
    fill();
    m_grid->setCurrentCell(1, 0);
    find(u"itu"_s);
    QCOMPARE(place(), qMakePair(2, 1));
    QCOMPARE(count(), u"1 de 2"_s);
    box()->clear();
    QCOMPARE(count(), QString());
}

void TstGridFind::accentsAndLetterCaseDoNotMatter() {
    fill();
    for (const QString& text : {u"pão"_s, u"PAO"_s, u"Pa\u0303o"_s}) {
        m_grid->setCurrentCell(1, 0);
        find(text);
        QCOMPARE(place(), qMakePair(2, 0));
        QCOMPARE(count(), u"1 de 1"_s);
    }
    find(u"agua"_s);
    QCOMPARE(place(), qMakePair(4, 0));
}

void TstGridFind::apostropheIsFoundAsTyped() {
    fill();
    m_grid->setText(1, 0, u"BAR D'AVILA"_s);
    find(u"d´"_s);
    QCOMPARE(count(), u"1 de 2"_s);
    find(u"d'oeste"_s);
    QCOMPARE(place(), qMakePair(3, 0));
}

void TstGridFind::hitsAreWalkedByKeyAndCounted() {
    fill();
    m_grid->setCurrentCell(1, 0);
    find(u"sao paulo"_s);
    QCOMPARE(place(), qMakePair(1, 1));
    QCOMPARE(count(), u"1 de 2"_s);
    QTest::keyClick(box(), Qt::Key_F3);
    QCOMPARE(place(), qMakePair(3, 1));
    QCOMPARE(count(), u"2 de 2"_s);
    QTest::keyClick(box(), Qt::Key_Return);
    QCOMPARE(place(), qMakePair(1, 1));
    QTest::keyClick(box(), Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(place(), qMakePair(3, 1));
    QTest::keyClick(box(), Qt::Key_Enter, Qt::ShiftModifier);
    QCOMPARE(place(), qMakePair(1, 1));
    // The keys go on in the grid, and in any other control of the form.
    m_grid->setFocus();
    QTest::keyClick(m_grid, Qt::Key_F3);
    QCOMPARE(place(), qMakePair(3, 1));
    m_before->setFocus();
    QTest::keyClick(m_before, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(place(), qMakePair(1, 1));
}

void TstGridFind::hitsAreWalkedByMouse() {
    fill();
    m_grid->setCurrentCell(1, 0);
    find(u"itu"_s);
    const auto press = [this](const QString& name) {
        QTest::mouseClick(m_form->findChild<QToolButton*>(name), Qt::LeftButton);
    };
    press(u"ProximaOcorrencia"_s);
    QCOMPARE(place(), qMakePair(4, 1));
    press(u"OcorrenciaAnterior"_s);
    QCOMPARE(place(), qMakePair(2, 1));
    press(u"FechaBusca"_s);
    QVERIFY(!m_grid->isFinding());
}

void TstGridFind::searchGoesOnFromTheCurrentCell() {
    fill();
    m_grid->setCurrentCell(3, 0);
    find(u"itu"_s);
    QCOMPARE(place(), qMakePair(4, 1));
    QCOMPARE(count(), u"2 de 2"_s);
    m_grid->setCurrentCell(3, 0);
    QCOMPARE(count(), u"2 ocorrências"_s);
}

void TstGridFind::hitsAreHighlighted() {
    fill();
    const auto ground = [this](int row, int column) {
        const QPoint corner = m_grid->cellRect(row, column).bottomLeft() + QPoint(2, -3);
        return m_form->grab().toImage().pixelColor(m_grid->mapTo(m_form.get(), corner));
    };
    m_grid->setCurrentCell(1, 0);
    const QColor usual = ground(4, 1);
    find(u"itu"_s);
    QCOMPARE(place(), qMakePair(2, 1));
    const QColor found = ground(4, 1);
    QVERIFY(found != usual);
    QVERIFY(ground(4, 0) != found);
    QTest::keyClick(box(), Qt::Key_Escape);
    QCOMPARE(ground(4, 1), usual);
    QVERIFY(!m_grid->isHit(4, 1));
}

void TstGridFind::hiddenColumnsAndTicksAreNotSearched() {
    fill();
    find(u"c4"_s);
    QCOMPARE(count(), u"Nenhuma ocorrência"_s);
    find(u" "_s);
    QVERIFY(!m_grid->isHit(1, 3));
    QVERIFY(m_grid->isHit(1, 1));
}

void TstGridFind::missingTextIsTold() {
    fill();
    m_grid->setCurrentCell(2, 1);
    find(u"xyz"_s);
    QCOMPARE(count(), u"Nenhuma ocorrência"_s);
    QCOMPARE(box()->accessibleDescription(), u"Nenhuma ocorrência"_s);
    QTest::keyClick(box(), Qt::Key_F3);
    QCOMPARE(place(), qMakePair(2, 1));
}

void TstGridFind::changedRowsAreCountedAgain() {
    fill();
    find(u"itu"_s);
    QCOMPARE(count(), u"1 de 2"_s);
    m_grid->addRow({u"NOVA"_s, u"ITUPEVA"_s});
    QTRY_COMPARE(count(), u"1 de 3"_s);
    m_grid->setText(4, 1, u"SALTO"_s);
    QTRY_COMPARE(count(), u"1 de 2"_s);
    m_grid->setRows(1);
    QTRY_COMPARE(count(), u"Nenhuma ocorrência"_s);
    QTest::keyClick(box(), Qt::Key_F3);
    QCOMPARE(m_grid->currentRow(), 0);
}

void TstGridFind::escapeClosesTheLine() {
    fill();
    find(u"itu"_s);
    QTest::keyClick(box(), Qt::Key_Escape);
    QVERIFY(!m_grid->isFinding());
    QVERIFY(m_grid->hasFocus());
    QCOMPARE(place(), qMakePair(2, 1));
    find(u"itu"_s);
    m_grid->setFocus();
    QSignalSpy shown(m_grid, &Grid::findLineShown);
    QTest::keyClick(m_grid, Qt::Key_Escape);
    QVERIFY(!m_grid->isFinding());
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown[0][0].toBool(), false);
}

void TstGridFind::keysBelongToTheFormWhileTheLineIsClosed() {
    fill();
    auto* next = new QShortcut(Qt::Key_F3, m_form.get());
    auto* escape = new QShortcut(Qt::Key_Escape, m_form.get());
    connect(m_grid, &Grid::findLineShown, next, [next](bool shown) { next->setEnabled(!shown); });
    QSignalSpy nexts(next, &QShortcut::activated);
    QSignalSpy escapes(escape, &QShortcut::activated);
    QTest::keyClick(m_grid, Qt::Key_F3);
    QCOMPARE(nexts.size(), 1);
    find(u"itu"_s);
    QTest::keyClick(m_grid, Qt::Key_F3);
    QCOMPARE(nexts.size(), 1);
    QTest::keyClick(box(), Qt::Key_Escape);
    QCOMPARE(escapes.size(), 0);
    QTest::keyClick(m_grid, Qt::Key_F3);
    QCOMPARE(nexts.size(), 2);
    QTest::keyClick(m_grid, Qt::Key_Escape);
    QCOMPARE(escapes.size(), 1);
}

void TstGridFind::lineTakesPartInTheTabOrder() {
    fill();
    QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
    m_grid->setFocus();
    QTest::keyClick(m_grid, Qt::Key_Tab);
    QCOMPARE(m_form->focusWidget(), box());
    QTest::keyClick(box(), Qt::Key_Tab);
    QCOMPARE(m_form->focusWidget(), m_after);
    QTest::keyClick(m_after, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(box(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_form->focusWidget(), m_grid);
}

void TstGridFind::everyControlOfTheLineHasAName() {
    fill();
    QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QAccessible::queryAccessibleInterface(box())->text(QAccessible::Name), u"Localizar"_s);
    const QList<QToolButton*> buttons = m_form->findChildren<QToolButton*>();
    QCOMPARE(buttons.size(), 3);
    for (QToolButton* button : buttons)
        QVERIFY(!QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name).isEmpty());
}

void TstGridFind::menuOpensByMouseAndByKey_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("right click") << 0 << Qt::KeyboardModifiers();
    QTest::newRow("menu key") << int(Qt::Key_Menu) << Qt::KeyboardModifiers();
    QTest::newRow("Shift+F10") << int(Qt::Key_F10) << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void TstGridFind::menuOpensByMouseAndByKey() {
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    fill();
    m_grid->setCurrentCell(2, 1);
    if (key) {
        QTest::keyClick(m_grid, static_cast<Qt::Key>(key), modifiers);
    } else {
        QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, middle(3, 1));
        QContextMenuEvent wish(QContextMenuEvent::Mouse, middle(3, 1),
                               m_grid->viewport()->mapToGlobal(middle(3, 1)));
        QApplication::sendEvent(m_grid->viewport(), &wish);
    }
    QVERIFY(menu());
    QCOMPARE(menu()->accessibleName(), u"Menu da grade"_s);
    QCOMPARE(place(), qMakePair(key ? 2 : 3, 1));
    QTest::keyClick(menu(), Qt::Key_Escape);
    QTRY_VERIFY(!menu());
}

void TstGridFind::menuNamesTheKeys() {
    fill();
    connect(m_grid, &Grid::cellClicked, m_grid, [](int, int) {});
    QTest::keyClick(m_grid, Qt::Key_Menu);
    QStringList told;
    for (const QAction* entry : menu()->actions())
        if (!entry->isSeparator() && entry->isVisible())
            told.append(entry->shortcut().isEmpty()
                            ? entry->text()
                            : entry->text() + u'\t' + entry->shortcut().toString(QKeySequence::PortableText));
    QCOMPARE(told, (QStringList{u"Acionar a célula\tEspaço"_s, u"Copiar\tCtrl+C"_s,
                                u"Copiar com cabeçalho\tCtrl+Shift+C"_s, u"Marcar todas as linhas\tCtrl+A"_s,
                                u"Marcar para cima\tShift+Up"_s, u"Marcar para baixo\tShift+Down"_s,
                                u"Localizar...\tCtrl+F"_s, u"Localizar a próxima\tF3"_s,
                                u"Localizar a anterior\tShift+F3"_s}));
    menu()->close();
    QTRY_VERIFY(!menu());
    // Saving and ordering are named where the screen has them.
    connect(m_grid, &Grid::saveRequested, m_grid, [] {});
    m_grid->setSortable();
    QTest::keyClick(m_grid, Qt::Key_Menu);
    QVERIFY(action(u"SalvarGrade"_s)->isVisible());
    QCOMPARE(action(u"SalvarGrade"_s)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
    QVERIFY(action(u"OrdenarPelaColuna"_s)->isVisible());
    menu()->close();
    QTRY_VERIFY(!menu());
}

void TstGridFind::menuDoesWhatItSays() {
    fill();
    m_grid->setCurrentCell(2, 3);
    QSignalSpy clicks(m_grid, &Grid::cellClicked);
    QSignalSpy saves(m_grid, &Grid::saveRequested);
    const auto choose = [this](const QString& name) {
        QTest::keyClick(m_grid, Qt::Key_F10, Qt::ShiftModifier);
        menu()->setActiveAction(action(name));
        QTest::keyClick(menu(), Qt::Key_Return);
        QTRY_VERIFY(!menu());
    };
    choose(u"AcionarCelula"_s);
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(clicks[0], (QVariantList{2, 3}));
    choose(u"MarcarAbaixo"_s);
    QCOMPARE(m_grid->markedRows(), (QList<Grid::RowRange>{{2, 3}}));
    choose(u"CopiarLinhas"_s);
    QCOMPARE(QGuiApplication::clipboard()->text().count(u'\n'), 1);
    choose(u"CopiarComCabecalho"_s);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"CLIENTE\tCIDADE\t"_s));
    choose(u"MarcarTodas"_s);
    QCOMPARE(m_grid->markedRows(), (QList<Grid::RowRange>{{1, 4}}));
    choose(u"SalvarGrade"_s);
    QCOMPARE(saves.size(), 1);
    choose(u"LocalizarNaGrade"_s);
    QVERIFY(m_grid->isFinding());
}

void TstGridFind::menuOffersWhatTheScreenAdds() {
    fill();
    auto* own = new QAction(u"Própria"_s, m_grid);
    m_grid->addAction(own);
    QTest::keyClick(m_grid, Qt::Key_Menu);
    QCOMPARE(menu()->actions().last(), own);
    menu()->close();
    QTRY_VERIFY(!menu());
}

void TstGridFind::headerOrdersTheRows() {
    fill();
    m_grid->setSortable();
    clickHeader(0);
    QCOMPARE(names(),
             (QStringList{u"ÁGUA E CIA"_s, u"BAR D´OESTE"_s, u"Casa do Pão"_s, u"PADARIA DA ESQUINA"_s}));
    QCOMPARE(m_grid->horizontalHeader()->sortIndicatorSection(), 0);
    clickHeader(0);
    QCOMPARE(names(),
             (QStringList{u"PADARIA DA ESQUINA"_s, u"Casa do Pão"_s, u"BAR D´OESTE"_s, u"ÁGUA E CIA"_s}));
    // Equal ones stay as they were.
    clickHeader(1);
    QCOMPARE(names(),
             (QStringList{u"Casa do Pão"_s, u"ÁGUA E CIA"_s, u"PADARIA DA ESQUINA"_s, u"BAR D´OESTE"_s}));
    QVERIFY(m_grid->isTicked(4));
    QVERIFY(!m_grid->isTicked(1));
}

void TstGridFind::keyOrdersTheRows() {
    fill();
    m_grid->setSortable();
    m_grid->setCurrentCell(1, 2);
    QTest::keyClick(m_grid, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(names().first(), u"ÁGUA E CIA"_s);
    QTest::keyClick(m_grid, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(names().first(), u"BAR D´OESTE"_s);
}

void TstGridFind::numbersAndDatesAreOrderedByValue() {
    m_grid->setFormat(u"NOME|>NÚMERO|>PERCENTUAL|^DATA"_s);
    m_grid->setColumnKinds({ColumnKind::Text, ColumnKind::Number, ColumnKind::Percentage, ColumnKind::Date});
    m_grid->setSortable();
    m_grid->addRow({u"a"_s, u"1.000,00"_s, u"9,5%"_s, u"02/01/2026"_s});
    m_grid->addRow({u"b"_s, u"-2,00"_s, u"10,0%"_s, u"01/02/2026"_s});
    m_grid->addRow({u"c"_s, u""_s, u"100,0%"_s, u"31/12/2025"_s});
    m_grid->addRow({u"d"_s, u"30,00"_s, u""_s, u""_s});
    clickHeader(1);
    QCOMPARE(names().join(QString()), u"cbda"_s);
    clickHeader(2);
    QCOMPARE(names().join(QString()), u"dabc"_s);
    clickHeader(3);
    QCOMPARE(names().join(QString()), u"dcab"_s);
    clickHeader(3);
    QCOMPARE(names().join(QString()), u"bacd"_s);
}

void TstGridFind::currentRowMovesWithItsRecord() {
    fill();
    m_grid->setSortable();
    m_grid->setBackColor(3, 0, Qt::yellow);
    m_grid->setCurrentCell(3, 1);
    clickHeader(0);
    QCOMPARE(place(), qMakePair(2, 1));
    QCOMPARE(m_grid->backColor(2, 0), QColor(Qt::yellow));
    QVERIFY(!m_grid->backColor(3, 0).isValid());
}

void TstGridFind::emptiedGridHasNoOrder() {
    fill();
    m_grid->setSortable();
    clickHeader(0);
    m_grid->setRows(1);
    QCOMPARE(m_grid->horizontalHeader()->sortIndicatorSection(), -1);
    m_grid->addRow({u"Z"_s});
    m_grid->addRow({u"A"_s});
    QCOMPARE(names(), (QStringList{u"Z"_s, u"A"_s}));
}

void TstGridFind::otherGridsKeepTheirOrder() {
    fill();
    const QStringList before = names();
    clickHeader(0);
    m_grid->setFocus();
    m_grid->setCurrentCell(1, 0);
    QTest::keyClick(m_grid, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(names(), before);
}

QTEST_MAIN(TstGridFind)
#include "tst_grid_find.moc"

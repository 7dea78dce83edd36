#include "printing/ReportBench.h"
#include "printing/preview/PreviewWindow.h"
#include "support/ModalHelper.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;
using report::PageView;
using report::PreviewWindow;

/// The preview window, by keyboard.
class TstReportPreview : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void everyControlHasANameAndTakesTheFocus();
    void pagesAreTurned();
    void pageDownScrollsThenTurns();
    void pageIsGoneToByNumber();
    void zoomIsChanged();
    void zoomIsChosenFromTheList();
    void textIsSought();
    void textThatIsNowhereIsTold();
    void shownPageIsWhatIsPrinted();
    void longReportShowsItsFirstPageAtOnce();
    void lastPageOfALongReportIsReached();
    void pdfIsSavedUnderTheNameGiven();
    void dataAreSavedUnderTheNameGiven();
    void fileThatCannotBeWrittenIsReported();
    void givingUpSavingWritesNothing();
    void errorOfALaterRowIsReportedEachTime();
    void errorIsReportedOnceWhileRowsAreRead_data();
    void errorIsReportedOnceWhileRowsAreRead();
    void pageThatCannotBeHadLeavesTheNumber();
    void printDialogCanBeLeft();
    void escapeClosesTheWindow();

  private:
    /// Shows a report of `rows` rows, ten to a page.
    void show(int rows, const QByteArray& totals = {},
              const QString& name = QStringLiteral("CONCAT('Linha nº ', seq)"));
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    int page() const { return m_view->page() + 1; }
    template <typename T>
    T* control(const char* name) const {
        return m_window->findChild<T*>(QString::fromUtf8(name));
    }

    std::unique_ptr<PrivateServer> m_server;
    ReportBench m_bench;
    QPointer<PreviewWindow> m_window;
    PageView* m_view = nullptr;
};

void TstReportPreview::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstReportPreview::cleanup() {
    delete m_window;
}

void TstReportPreview::cleanupTestCase() {
    m_server.reset();
}

void TstReportPreview::show(int rows, const QByteArray& totals, const QString& name) {
    const QString layout = m_bench.write(
        u"t.RPT"_s, ReportBench::layout(
                        "<column name=\"nome\" heading=\"Nome\"/>" + totals,
                        "<pageHead height=\"50\"><text x=\"0\" y=\"0\" width=\"90\">Folha {page} de {pages}"
                        "</text></pageHead><detail height=\"20\">"
                        "<field x=\"0\" y=\"0\" width=\"90\" value=\"nome\"/></detail>"
                        "<pageFoot height=\"27\" fill=\"#E0E0E0\"/>"));
    auto report =
        std::make_shared<report::Report>(report::readLayout(layout), u"dsn=QDX"_s,
                                         u"SELECT "_s + name + u" AS nome FROM seq_1_to_%1"_s.arg(rows),
                                         report::FormulaValues(), QDateTime::currentDateTime());
    report->readPage();
    m_window = new PreviewWindow(report, nullptr);
    m_view = m_window->findChild<PageView*>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    QVERIFY(m_view->hasFocus());
}

void TstReportPreview::everyControlHasANameAndTakesTheFocus() {
    show(35);
    press(Qt::Key_PageDown, Qt::ControlModifier); // so that no button is off
    QStringList names;
    QWidget* const start = QApplication::focusWidget();
    for (int i = 0; i < 40; ++i) {
        press(Qt::Key_Tab);
        QWidget* focused = QApplication::focusWidget();
        if (focused == start)
            break;
        QVERIFY2(!focused->accessibleName().isEmpty() || !focused->objectName().isEmpty(),
                 focused->metaObject()->className());
        names.append(focused->objectName());
    }
    for (const auto& name : {u"Print"_s, u"SavePdf"_s, u"SaveCsv"_s, u"Close"_s, u"FirstPage"_s,
                             u"PreviousPage"_s, u"PageNumber"_s, u"NextPage"_s, u"LastPage"_s, u"ZoomOut"_s,
                             u"Zoom"_s, u"ZoomIn"_s, u"Sought"_s, u"FindPrevious"_s, u"FindNext"_s}) {
        QVERIFY2(names.contains(name), qPrintable(name));
        QVERIFY2(!m_window->findChild<QWidget*>(name)->accessibleName().isEmpty(), qPrintable(name));
    }
    QCOMPARE(m_view->accessibleName(), u"Página 2"_s);
    QVERIFY(m_view->accessibleDescription().startsWith(u"Folha 2 de 4 Linha nº 11"_s));
}

void TstReportPreview::pagesAreTurned() {
    show(35);
    QTRY_COMPARE(control<QLabel>("PageCount")->text().trimmed(), u"de 4"_s);
    QVERIFY(!control<QAction>("PreviousPage")->isEnabled());
    QVERIFY(!control<QAction>("FirstPage")->isEnabled());
    press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(page(), 1);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(page(), 2);
    QCOMPARE(control<QLineEdit>("PageNumber")->text(), u"2"_s);
    press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(page(), 4);
    QVERIFY(!control<QAction>("NextPage")->isEnabled());
    QVERIFY(!control<QAction>("LastPage")->isEnabled());
    press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(page(), 3);
    press(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(page(), 1);
}

void TstReportPreview::pageDownScrollsThenTurns() {
    show(35);
    press(Qt::Key_1, Qt::ControlModifier);
    QScrollBar* bar = m_view->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    press(Qt::Key_PageDown);
    QCOMPARE(page(), 1);
    QVERIFY(bar->value() > 0);
    while (bar->value() < bar->maximum())
        press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    QCOMPARE(page(), 2);
    QCOMPARE(bar->value(), 0);
    press(Qt::Key_PageUp);
    QCOMPARE(page(), 1);
    QCOMPARE(bar->value(), bar->maximum());
    press(Qt::Key_2, Qt::ControlModifier); // the whole page: nothing to scroll
    QCOMPARE(bar->maximum(), 0);
    press(Qt::Key_PageDown);
    QCOMPARE(page(), 2);
    for (int i = 0; i < 5; ++i)
        press(Qt::Key_PageDown);
    QCOMPARE(page(), 4);
}

void TstReportPreview::pageIsGoneToByNumber() {
    show(35);
    const auto goTo = [this](const QString& number) {
        press(Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"PageNumber"_s);
        QTest::keyClicks(QApplication::focusWidget(), number);
        press(Qt::Key_Return);
        QVERIFY(m_view->hasFocus());
    };
    goTo(u"3"_s);
    QCOMPARE(page(), 3);
    goTo(u"99"_s);
    QCOMPARE(page(), 4);
    QCOMPARE(control<QLineEdit>("PageNumber")->text(), u"4"_s);
    goTo(u"1"_s);
    QCOMPARE(page(), 1);
}

void TstReportPreview::zoomIsChanged() {
    show(35);
    auto* zoom = control<QComboBox>("Zoom");
    QVERIFY(zoom->currentText().startsWith(u"Largura da página - "_s));
    press(Qt::Key_2, Qt::ControlModifier);
    QVERIFY(zoom->currentText().startsWith(u"Página inteira - "_s));
    const double whole = m_view->zoom();
    press(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(m_view->zoom(), whole * 1.25);
    press(Qt::Key_Minus, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(m_view->zoom(), whole / 1.25);
    for (int i = 0; i < 30; ++i)
        press(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(m_view->zoom(), PageView::smallestZoom);
    for (int i = 0; i < 30; ++i)
        press(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(m_view->zoom(), PageView::largestZoom);
    press(Qt::Key_1, Qt::ControlModifier);
    QVERIFY(m_view->zoom() > whole);
    QCOMPARE(m_view->horizontalScrollBar()->maximum(), 0);
}

void TstReportPreview::zoomIsChosenFromTheList() {
    show(35);
    auto* zoom = control<QComboBox>("Zoom");
    zoom->setFocus();
    for (int i = 0; i < 20 && zoom->currentText() != u"150%"_s; ++i)
        press(Qt::Key_Down);
    QCOMPARE(zoom->currentText(), u"150%"_s);
    QCOMPARE(m_view->zoom(), 150.0);
}

void TstReportPreview::textIsSought() {
    show(35);
    press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Sought"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"LINHA Nº 1"_s); // 1, 10 to 19
    press(Qt::Key_Return);
    QCOMPARE(page(), 1);
    const QRectF first = m_view->marked();
    QVERIFY(!first.isEmpty());
    press(Qt::Key_F3);
    QCOMPARE(page(), 1); // line 10
    QVERIFY(m_view->marked().top() > first.top());
    press(Qt::Key_F3);
    QCOMPARE(page(), 2); // line 11
    QVERIFY(m_window->statusBar()->currentMessage().contains(u"página 2"_s));
    press(Qt::Key_F3, Qt::ShiftModifier);
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(page(), 1);
    QCOMPARE(m_view->marked(), first);
    press(Qt::Key_F3, Qt::ShiftModifier); // round the beginning to the end
    QCOMPARE(page(), 2);
    // Whatever the accents: "nº" is found by "no".
    control<QLineEdit>("Sought")->setText(u"linha no 35"_s);
    press(Qt::Key_Return);
    QCOMPARE(page(), 4);
}

void TstReportPreview::textThatIsNowhereIsTold() {
    show(35);
    control<QLineEdit>("Sought")->setText(u"xyz"_s);
    press(Qt::Key_F3);
    QCOMPARE(m_window->statusBar()->currentMessage(), u"Texto não encontrado: xyz"_s);
    QCOMPARE(page(), 1);
    QVERIFY(m_view->marked().isEmpty());
}

// Ink stands on the screen where the printed page has it.
void TstReportPreview::shownPageIsWhatIsPrinted() {
    show(1);
    m_window->resize(900, 700);
    press(Qt::Key_2, Qt::ControlModifier);
    const QImage shown = m_view->viewport()->grab().toImage();
    const double scale = m_view->zoom() / 100 * m_view->logicalDpiX() / report::dotsPerInch;
    const QSizeF paper = QSizeF(210, 297) * report::dotsPerMillimetre * scale;
    const QPointF corner((m_view->viewport()->width() - paper.width()) / 2,
                         (m_view->viewport()->height() - paper.height()) / 2);
    const auto darkest = [&](QRectF millimetres) {
        int value = 255;
        const QRect area = QRectF(corner + millimetres.topLeft() * report::dotsPerMillimetre * scale,
                                  millimetres.size() * report::dotsPerMillimetre * scale)
                               .toRect();
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                value = qMin(value, qGray(shown.pixel(x, y)));
        return value;
    };
    QVERIFY(darkest({10, 9, 40, 6}) < 160);     // the head's text
    QVERIFY(darkest({10, 59, 40, 6}) < 160);    // the row's
    QCOMPARE(darkest({10, 90, 180, 165}), 255); // nothing below
    QCOMPARE(darkest({10, 262, 180, 20}), 224); // down to the foot
}

void TstReportPreview::longReportShowsItsFirstPageAtOnce() {
    show(20000);
    QVERIFY(m_view->accessibleDescription().startsWith(u"Folha 1 de … Linha nº 1"_s));
    QVERIFY(control<QLabel>("PageCount")->text().contains(u'…'));
    // It goes on reading while the page is looked at.
    QTRY_COMPARE_WITH_TIMEOUT(control<QLabel>("PageCount")->text().trimmed(), u"de 2000"_s, 30000);
    QCOMPARE(page(), 1);
}

void TstReportPreview::lastPageOfALongReportIsReached() {
    show(20000);
    press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(page(), 2000);
    QVERIFY(m_view->accessibleDescription().endsWith(u"Linha nº 20000"_s));
}

void TstReportPreview::pdfIsSavedUnderTheNameGiven() {
    show(35);
    ModalHelper modal;
    const QString path = m_bench.path(u"saida"_s);
    modal.onOpen([&](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        QVERIFY(dialog);
        QCOMPARE(dialog->selectedFiles().constFirst().section(u'/', -1), u"Teste.pdf"_s);
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
        QTest::keyClick(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
    });
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(ReportBench::pdfText(path + u".pdf"_s).contains(u"Linha nº 35"_s));
    QCOMPARE(m_window->statusBar()->currentMessage(), u"Gravado: "_s + path + u".pdf"_s);
}

void TstReportPreview::dataAreSavedUnderTheNameGiven() {
    show(2);
    ModalHelper modal;
    const QString path = m_bench.path(u"saida.csv"_s);
    modal.onOpen([&](QWidget* window) {
        window->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
        QTest::keyClick(window->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
    });
    press(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(modal.problem(), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBFNome\r\nLinha nº 1\r\nLinha nº 2\r\n"));
}

void TstReportPreview::fileThatCannotBeWrittenIsReported() {
    show(2);
    ModalHelper modal;
    modal.onOpen([&](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"/proc/nada.csv"_s);
        dialog->QDialog::done(QDialog::Accepted);
    });
    modal.expectContaining(u"Não foi possível gravar"_s, QMessageBox::Ok);
    press(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(m_window->isVisible());
}

void TstReportPreview::givingUpSavingWritesNothing() {
    show(2);
    ModalHelper modal;
    const QString path = m_bench.path(u"nunca.pdf"_s);
    modal.onOpen([&](QWidget* window) {
        window->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
        QTest::keyClick(window, Qt::Key_Escape);
    });
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!QFile::exists(path));
    QVERIFY(m_window->isVisible());
}

// A report that lacks rows is never taken for a whole one.
void TstReportPreview::errorOfALaterRowIsReportedEachTime() {
    ModalHelper modal;
    const auto announce = [&modal] { modal.expectContaining(u"\"1.234,50\""_s, QMessageBox::Ok); };
    announce(); // reading goes on by itself behind the first page
    show(2000, "<total name=\"T\" of=\"nome\" over=\"report\"/>", u"IF(seq=400, '1.234,50', seq)"_s);
    QTRY_COMPARE(modal.boxes().size(), 1);
    // The box has taken the window's activity away, and nobody gives it back here.
    const auto backToThePage = [this] {
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        m_view->setFocus();
    };
    backToThePage();
    QCOMPARE(page(), 1);
    announce();
    press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(modal.boxes().size(), 2);
    backToThePage();
    press(Qt::Key_PageDown, Qt::ControlModifier); // a page that was read before
    QCOMPARE(page(), 2);
    const QString path = m_bench.path(u"incompleto.csv"_s);
    modal.onOpen([&](QWidget* window) {
        window->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
        QTest::keyClick(window->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
    });
    announce();
    press(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 3);
    QVERIFY(!QFile::exists(path));
    QVERIFY(control<QLabel>("PageCount")->text().contains(u'…'));
}

void TstReportPreview::errorIsReportedOnceWhileRowsAreRead_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("asksForAFile");
    QTest::newRow("last page") << Qt::Key_End << Qt::KeyboardModifiers(Qt::ControlModifier) << false;
    QTest::newRow("search") << Qt::Key_F3 << Qt::KeyboardModifiers() << false;
    QTest::newRow("print") << Qt::Key_P << Qt::KeyboardModifiers(Qt::ControlModifier) << false;
    QTest::newRow("PDF") << Qt::Key_S << Qt::KeyboardModifiers(Qt::ControlModifier) << true;
    QTest::newRow("CSV") << Qt::Key_E << Qt::KeyboardModifiers(Qt::ControlModifier) << true;
}

void TstReportPreview::errorIsReportedOnceWhileRowsAreRead() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const bool, asksForAFile);
    ModalHelper modal;
    const QString path = m_bench.path(u"meio"_s);
    // So far behind that the reading by itself does not come there in the meantime.
    show(200000, "<total name=\"T\" of=\"nome\" over=\"report\"/>", u"IF(seq=199000, '1.234,50', seq)"_s);
    QTRY_VERIFY(control<QLabel>("PageCount")->text().trimmed() != u"de 25…"); // it has begun
    QCOMPARE(modal.boxes().size(), 0);
    control<QLineEdit>("Sought")->setText(u"nada"_s);
    if (asksForAFile)
        modal.onOpen([&](QWidget* window) {
            window->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
            QTest::keyClick(window->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
        });
    modal.expectContaining(u"\"1.234,50\""_s, QMessageBox::Ok);
    press(key, modifiers);
    QTest::qWait(100);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 1);
}

void TstReportPreview::pageThatCannotBeHadLeavesTheNumber() {
    ModalHelper modal;
    modal.expectContaining(u"\"1.234,50\""_s, QMessageBox::Ok);
    modal.expectContaining(u"\"1.234,50\""_s, QMessageBox::Ok);
    show(2000, "<total name=\"T\" of=\"nome\" over=\"report\"/>", u"IF(seq=400, '1.234,50', seq)"_s);
    QTRY_COMPARE(modal.boxes().size(), 1);
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    auto* number = control<QLineEdit>("PageNumber");
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, u"99"_s);
    QCOMPARE(number->text(), u"99"_s);
    QTest::keyClick(number, Qt::Key_Return);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 2);
    QCOMPARE(page(), 1);
    QCOMPARE(number->text(), u"1"_s);
}

void TstReportPreview::printDialogCanBeLeft() {
    show(35);
    ModalHelper modal;
    bool seen = false;
    modal.onOpen([&](QWidget* window) {
        auto* dialog = qobject_cast<QPrintDialog*>(window);
        seen = dialog && dialog->minPage() == 1 && dialog->maxPage() == 4;
        QTest::keyClick(window, Qt::Key_Escape);
    });
    press(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(seen);
    QVERIFY(m_window->isVisible());
}

void TstReportPreview::escapeClosesTheWindow() {
    show(20000); // still reading
    press(Qt::Key_Escape);
    QTRY_VERIFY(!m_window);
}

QTEST_MAIN(TstReportPreview)
#include "tst_report_preview.moc"

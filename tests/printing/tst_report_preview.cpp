#include "printing/ReportBench.h"
#include "printing/preview/PreviewWindow.h"
#include "support/ModalHelper.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

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
    void init();
    void cleanup();
    void cleanupTestCase();

    void everyControlHasANameAndTakesTheFocus();
    void pagesAreTurned();
    void pageDownScrollsThenTurns();
    void pageIsGoneToByNumber();
    void zoomIsChanged();
    void zoomIsChosenFromTheList();
    void textIsSought();
    void searchTellsWhichOfHowMany();
    void searchStartsAtThePageInView();
    void textThatIsNowhereIsTold();
    void dataAreSavedAsAWorkbook();
    void dataAreSavedFromEveryControl();
    void wheelWithControlZooms();
    void longReportHasAPageList();
    void shortReportHasNoPageList();
    void pageListTurnsThePage();
    void fileNameAndFolderAreProposed();
    void printerAndRangeAreRemembered();
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
    std::shared_ptr<report::PreviewChoices> m_choices;
    QString m_fileName;
    QPointer<PreviewWindow> m_window;
    PageView* m_view = nullptr;
};

void TstReportPreview::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
}

void TstReportPreview::init() {
    m_choices = std::make_shared<report::PreviewChoices>();
    m_fileName.clear();
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
    const QString query = u"SELECT "_s + name + u" AS nome FROM seq_1_to_%1"_s.arg(rows);
    m_server->provideSequences(query);
    auto report = std::make_shared<report::Report>(report::readLayout(layout), u"dsn=QDX"_s, query,
                                                   report::FormulaValues(), QDateTime::currentDateTime());
    report->readPage();
    m_window = new PreviewWindow(report, nullptr, m_choices, m_fileName);
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
    for (const auto& name :
         {u"Print"_s, u"SavePdf"_s, u"SaveCsv"_s, u"SaveXlsx"_s, u"Close"_s, u"FirstPage"_s,
          u"PreviousPage"_s, u"PageNumber"_s, u"NextPage"_s, u"LastPage"_s, u"ZoomOut"_s, u"Zoom"_s,
          u"ZoomIn"_s, u"Sought"_s, u"FindPrevious"_s, u"FindNext"_s}) {
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
    QCOMPARE(m_window->statusBar()->currentMessage(), u"3 de 11, na página 2"_s);
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

void TstReportPreview::searchTellsWhichOfHowMany() {
    show(35);
    const auto message = [this] { return m_window->statusBar()->currentMessage(); };
    control<QLineEdit>("Sought")->setText(u"Linha nº 3"_s); // 3, 30 to 35
    press(Qt::Key_F3);
    QCOMPARE(message(), u"1 de 7, na página 1"_s);
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(message(), u"7 de 7, na página 4 - a busca recomeçou do fim do relatório"_s);
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(message(), u"6 de 7, na página 4"_s);
    press(Qt::Key_F3);
    press(Qt::Key_F3);
    QCOMPARE(message(), u"1 de 7, na página 1 - a busca recomeçou do início do relatório"_s);
    press(Qt::Key_F3);
    QCOMPARE(message(), u"2 de 7, na página 3"_s);
}

void TstReportPreview::searchStartsAtThePageInView() {
    show(35);
    const auto message = [this] { return m_window->statusBar()->currentMessage(); };
    auto* sought = control<QLineEdit>("Sought");
    press(Qt::Key_PageDown, Qt::ControlModifier); // 11 to 20
    sought->setText(u"Linha nº 2"_s);             // 2, 20 to 29
    press(Qt::Key_F3);
    QCOMPARE(message(), u"2 de 11, na página 2"_s);
    // Another text is looked for from the top of the page, not from below what was found.
    sought->setText(u"Linha nº 1"_s);
    press(Qt::Key_F3);
    QCOMPARE(message(), u"3 de 11, na página 2"_s);
    press(Qt::Key_End, Qt::ControlModifier);
    press(Qt::Key_F3);
    QCOMPARE(message(), u"1 de 11, na página 1 - a busca recomeçou do início do relatório"_s);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(message(), u"11 de 11, na página 2"_s);
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

void TstReportPreview::dataAreSavedAsAWorkbook() {
    show(2);
    ModalHelper modal;
    const QString path = m_bench.path(u"saida.xlsx"_s);
    modal.onOpen([&](QWidget* window) {
        window->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
        QTest::keyClick(window->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
    });
    press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(modal.problem(), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("PK"));
    QCOMPARE(m_window->statusBar()->currentMessage(), u"Gravado: "_s + path);
}

void TstReportPreview::dataAreSavedFromEveryControl() {
    show(2);
    for (const char* name : {"PageView", "Sought", "PageNumber", "Zoom", "Print"}) {
        ModalHelper modal;
        const QString path = m_bench.path(QString::fromUtf8(name) + u".csv"_s);
        modal.onOpen([&](QWidget* window) {
            window->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(path);
            QTest::keyClick(window->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
        });
        auto* widget = control<QWidget>(name);
        widget->setFocus();
        press(Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(modal.problem(), QString());
        QVERIFY2(QFile::exists(path), name);
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }
}

void TstReportPreview::wheelWithControlZooms() {
    show(35);
    press(Qt::Key_2, Qt::ControlModifier);
    const double whole = m_view->zoom();
    const auto turn = [this](int delta, Qt::KeyboardModifiers modifiers) {
        const QPointF place(50, 50);
        QWheelEvent event(place, m_view->viewport()->mapToGlobal(place), {}, {0, delta}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_view->viewport(), &event);
    };
    turn(120, Qt::ControlModifier);
    QCOMPARE(m_view->zoom(), whole * 1.1);
    QCOMPARE(page(), 1);
    turn(-120, Qt::ControlModifier);
    QCOMPARE(m_view->zoom(), whole);
    turn(-120, Qt::NoModifier); // the whole page is shown: the wheel turns it
    QCOMPARE(m_view->zoom(), whole);
    QCOMPARE(page(), 2);
}

void TstReportPreview::longReportHasAPageList() {
    show(20000);
    auto* list = control<QListView>("PageList");
    QTRY_COMPARE_WITH_TIMEOUT(list->model()->rowCount(), 2000, 30000);
    QVERIFY(list->isVisible());
    QVERIFY(!list->accessibleName().isEmpty());
    QCOMPARE(list->model()->index(1999, 0).data(Qt::AccessibleTextRole).toString(), u"Página 2000"_s);
    // What stands on the page stands on its picture: a head, rows and a shaded foot, on white.
    const auto picture = [list](int row) {
        return list->model()->index(row, 0).data(Qt::DecorationRole).value<QPixmap>().toImage();
    };
    const QImage first = picture(0);
    QCOMPARE(qRound(first.height() * 210.0 / 297), first.width());
    QCOMPARE(qGray(first.pixel(first.width() / 2, first.height() * 270 / 297)), 224);
    QCOMPARE(qGray(first.pixel(first.width() / 2, first.height() * 2 / 297)), 255);
    QVERIFY(first != picture(1));
}

void TstReportPreview::shortReportHasNoPageList() {
    show(40);
    QTRY_COMPARE(control<QLabel>("PageCount")->text().trimmed(), u"de 4"_s);
    QVERIFY(!control<QListView>("PageList")->isVisible());
    delete m_window;
    show(41);
    QTRY_COMPARE(control<QLabel>("PageCount")->text().trimmed(), u"de 5"_s);
    QVERIFY(control<QListView>("PageList")->isVisible());
}

void TstReportPreview::pageListTurnsThePage() {
    show(95);
    auto* list = control<QListView>("PageList");
    QTRY_COMPARE(list->model()->rowCount(), 10);
    QCOMPARE(list->currentIndex().row(), 0);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(list->currentIndex().row(), 1);
    list->setFocus();
    press(Qt::Key_Down);
    QCOMPARE(page(), 3);
    QCOMPARE(control<QLineEdit>("PageNumber")->text(), u"3"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->model()->index(1, 0)).center());
    QCOMPARE(page(), 2);
    press(Qt::Key_End);
    QCOMPARE(page(), 10);
}

void TstReportPreview::fileNameAndFolderAreProposed() {
    m_fileName = u"Extrato - ANA/BIA: \"1\" - 2026-10"_s;
    QVERIFY(QDir().mkdir(m_bench.path(u"papéis"_s)));
    const auto save = [this](const QString& expectedFolder, const QString& name) {
        ModalHelper modal;
        modal.onOpen([&](QWidget* window) {
            auto* dialog = qobject_cast<QFileDialog*>(window);
            QCOMPARE(dialog->selectedFiles().constFirst().section(u'/', -1), name);
            if (!expectedFolder.isEmpty())
                QCOMPARE(dialog->directory().absolutePath(), expectedFolder);
            auto* edit = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
            edit->setText(m_bench.path(u"papéis/"_s + name));
            QTest::keyClick(edit, Qt::Key_Return);
        });
        press(name.endsWith(u"pdf") ? Qt::Key_S : Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(modal.problem(), QString());
        QVERIFY(QFile::exists(m_bench.path(u"papéis/"_s + name)));
    };
    show(2);
    save({}, u"Extrato - ANA-BIA- -1- - 2026-10.pdf"_s);
    delete m_window;
    m_fileName.clear();
    show(2); // another preview of the same run, of a report without a name of its own
    save(m_bench.path(u"papéis"_s), u"Teste.csv"_s);
}

void TstReportPreview::printerAndRangeAreRemembered() {
    const QString path = m_bench.path(u"impresso.pdf"_s);
    const auto print = [&](const std::function<void(QPrinter&)>& choose) {
        ModalHelper modal;
        modal.onOpen([&](QWidget* window) {
            auto* dialog = qobject_cast<QPrintDialog*>(window);
            choose(*dialog->printer());
            dialog->printer()->setOutputFileName(path);
            dialog->QDialog::done(QDialog::Accepted);
        });
        press(Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(modal.problem(), QString());
    };
    show(35);
    print([](QPrinter& printer) {
        QCOMPARE(printer.printRange(), QPrinter::AllPages);
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
    });
    QCOMPARE(ReportBench::pdfText(path).count(u'\f'), 2);
    delete m_window;
    show(35);
    print([](QPrinter& printer) {
        QCOMPARE(printer.printRange(), QPrinter::PageRange);
        QCOMPARE(printer.fromPage(), 2);
        QCOMPARE(printer.toPage(), 3);
    });
    delete m_window;
    show(15); // has no third page
    print([](QPrinter& printer) { QCOMPARE(printer.printRange(), QPrinter::AllPages); });
    QCOMPARE(ReportBench::pdfText(path).count(u'\f'), 2);
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

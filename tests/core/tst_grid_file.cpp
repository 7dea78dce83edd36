#include "core/AcessoDados.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "support/SavedGrid.h"
#include "ui/grid/Grid.h"

#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// A grid on a form with the keyboard convention: saving it, and the keys of its find line.
class TstGridFile : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void xlsxHasTheGridsColumnsAndRows();
    void csvHasThemToo();
    void orderOfTheGridIsThatOfTheFile();
    void nameAndFolderAreProposed();
    void suffixFollowsTheKindOfFile();
    void givingUpSavesNothing();
    void emptyGridIsNotSaved();
    void unwritableFileIsReported();
    void escapeInTheFindLineLeavesTheFormOpen();
    void enterInTheFindLineGoesOn();

  private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    void pressSave() const {
        // A box that closed gives the window back its activity, as the desktop would do.
        QApplication::setActiveWindow(m_form.get());
        QTest::keyClick(m_grid, Qt::Key_S, Qt::ControlModifier);
    }
    void save(const QString& name) {
        ModalHelper modals;
        expectSaving(modals, path(name));
        pressSave();
        QCOMPARE(modals.problem(), QString());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QWidget> m_form;
    Grid* m_grid = nullptr;
    int m_escapes = 0;
};

void TstGridFile::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    Shell = std::make_unique<ShellHost>();
    m_form = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_form.get());
    layout->addWidget(m_grid = new Grid);
    m_escapes = 0;
    new Teclado(m_form.get(), [this] { ++m_escapes; });
    m_grid->setFormat(u"<CNPJ|<CLIENTE|>R$ TOTAL|>QUANT|>% META|^DATA|^SELEÇÃO|^EXCLUIR|ID"_s);
    m_grid->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Number,
                            ColumnKind::Percentage, ColumnKind::Date, ColumnKind::Text, ColumnKind::Button});
    m_grid->setTickColumn(6, QIcon());
    m_grid->setColumnTwips(0, 1750);
    m_grid->setColumnTwips(8, 0);
    m_grid->addRow({u"00012345678901"_s, u"=PADARIA"_s, u"1.234,50"_s, u"12,125"_s, u"33,33%"_s,
                    u"29/02/2024"_s, u" "_s, QString(), u"1"_s});
    m_grid->addRow(
        {u"2"_s, u"***TOTAL-***"_s, u"-7,00"_s, u"3"_s, QString(), QString(), QString(), QString(), u"2"_s});
    offerSaving(m_grid, [] { return u"Lista: 1/2"_s; });
    m_form->resize(700, 300);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_grid->setFocus();
}

void TstGridFile::cleanup() {
    m_form.reset();
    Shell.reset();
}

void TstGridFile::xlsxHasTheGridsColumnsAndRows() {
    save(u"grade.xlsx"_s);
    const QJsonObject book = readXlsx(path(u"grade.xlsx"_s));
    QCOMPARE(xlsxRow(book, 0),
             (QStringList{u"text:CNPJ"_s, u"text:CLIENTE"_s, u"text:R$ TOTAL"_s, u"text:QUANT"_s,
                          u"text:% META"_s, u"text:DATA"_s, u"text:SELEÇÃO"_s}));
    QCOMPARE(xlsxRow(book, 1), (QStringList{u"text:00012345678901"_s, u"text:=PADARIA"_s, u"number:1234.5"_s,
                                            u"number:12.125"_s, u"number:0.3333"_s,
                                            u"date:2024-02-29 00:00:00"_s, u"text:X"_s}));
    QCOMPARE(xlsxRow(book, 2), (QStringList{u"text:2"_s, u"text:***TOTAL-***"_s, u"number:-7"_s,
                                            u"number:3"_s, QString(), QString(), QString()}));
    const auto formatAt = [&book](int row, int column) {
        return book["rows"_L1].toArray()[row].toArray()[column].toObject()["format"_L1].toString();
    };
    QCOMPARE(formatAt(1, 2), u"#,##0.00"_s);
    QCOMPARE(formatAt(1, 3), u"#,##0.000"_s);
    QCOMPARE(formatAt(2, 3), u"#,##0"_s);
    QCOMPARE(formatAt(1, 4), u"0.00%"_s);
    QCOMPARE(book["frozen"_L1].toString(), u"A2"_s);
    // 1,750 twips are 116 pixels of 96 to an inch, and a width counts 7 of them.
    QVERIFY(qAbs(book["widths"_L1].toObject()["A"_L1].toDouble() * 7 - 116) < 1);
}

void TstGridFile::csvHasThemToo() {
    save(u"grade.csv"_s);
    QFile file(path(u"grade.csv"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBF"
                                        "CNPJ;CLIENTE;R$ TOTAL;QUANT;% META;DATA;SELEÇÃO\r\n"
                                        "00012345678901;'=PADARIA;1234,50;12,125;33,33%;29/02/2024;X\r\n"
                                        "2;***TOTAL-***;-7,00;3;;;\r\n"));
}

void TstGridFile::orderOfTheGridIsThatOfTheFile() {
    m_grid->setSortable();
    m_grid->setCurrentCell(1, 2);
    QTest::keyClick(m_grid, Qt::Key_O, Qt::ControlModifier);
    save(u"grade.xlsx"_s);
    QCOMPARE(xlsxCell(readXlsx(path(u"grade.xlsx"_s)), 1, 0), u"text:2"_s);
}

void TstGridFile::nameAndFolderAreProposed() {
    save(u"grade.xlsx"_s);
    ModalHelper modals;
    QString proposed;
    modals.onOpen([&proposed](QWidget* window) {
        proposed = qobject_cast<QFileDialog*>(window)->selectedFiles().constFirst();
        QTest::keyClick(window, Qt::Key_Escape);
    });
    pressSave();
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(proposed, path(u"Lista- 1-2.xlsx"_s));
}

void TstGridFile::suffixFollowsTheKindOfFile() {
    ModalHelper modals;
    QStringList names;
    modals.onOpen([&names](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        for (const QString& kind : dialog->nameFilters()) {
            dialog->selectNameFilter(kind);
            Q_EMIT dialog->filterSelected(kind);
            names.append(QFileInfo(dialog->selectedFiles().constFirst()).fileName());
        }
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    pressSave();
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(names, (QStringList{u"Lista- 1-2.xlsx"_s, u"Lista- 1-2.csv"_s}));
}

void TstGridFile::givingUpSavesNothing() {
    ModalHelper modals;
    modals.onOpen([](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); });
    pressSave();
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes().size(), 0);
    QCOMPARE(m_escapes, 0);
}

void TstGridFile::emptyGridIsNotSaved() {
    m_grid->setRows(1);
    ModalHelper modals;
    modals.expect(u"A grade está vazia. Verifique!!!"_s, QMessageBox::Ok);
    pressSave();
    QCOMPARE(modals.problem(), QString());
}

void TstGridFile::unwritableFileIsReported() {
    const QString folder = path(u"some"_s);
    QVERIFY(QDir().mkpath(folder));
    ModalHelper modals;
    modals.onOpen([&folder](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        auto* name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
        name->setText(folder + u"/grade.xlsx"_s);
        // The folder goes after the dialog has looked.
        connect(dialog, &QDialog::accepted, dialog, [&folder] { QDir(folder).removeRecursively(); });
        QTest::keyClick(name, Qt::Key_Return);
    });
    modals.expectContaining(u"Não foi possível gravar %1/grade.xlsx"_s.arg(folder), QMessageBox::Ok);
    pressSave();
    QCOMPARE(modals.problem(), QString());
}

void TstGridFile::escapeInTheFindLineLeavesTheFormOpen() {
    QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
    auto* box = m_form->findChild<QLineEdit*>(u"Localizar"_s);
    QVERIFY(box);
    QTest::keyClick(box, Qt::Key_Escape);
    QCOMPARE(m_escapes, 0);
    QVERIFY(!m_grid->isFinding());
    // In the grid too the line comes first.
    QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
    m_grid->setFocus();
    QTest::keyClick(m_grid, Qt::Key_Escape);
    QCOMPARE(m_escapes, 0);
    QVERIFY(!m_grid->isFinding());
    QTest::keyClick(m_grid, Qt::Key_Escape);
    QCOMPARE(m_escapes, 1);
}

void TstGridFile::enterInTheFindLineGoesOn() {
    QTest::keyClick(m_grid, Qt::Key_F, Qt::ControlModifier);
    auto* box = m_form->findChild<QLineEdit*>(u"Localizar"_s);
    m_grid->setCurrentCell(1, 0);
    QTest::keyClicks(box, u"2"_s);
    // The convention makes capitals of letters here as well.
    QCOMPARE(box->text(), u"2"_s);
    QCOMPARE(m_grid->currentRow(), 1);
    QTest::keyClick(box, Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY(box->hasFocus());
    QCOMPARE(m_grid->currentColumn(), 2);
}

QTEST_MAIN(TstGridFile)
#include "tst_grid_file.moc"

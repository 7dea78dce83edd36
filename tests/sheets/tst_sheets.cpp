#include "base/RuntimeError.h"
#include "sheets/CsvFile.h"
#include "sheets/Sheet.h"
#include "sheets/XlsxFile.h"
#include "support/ErrorOf.h"
#include "support/SavedGrid.h"

#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

sheet::Cell text(const QString& value) {
    sheet::Cell cell;
    cell.text = value;
    return cell;
}

sheet::Cell number(const QString& shown, double value, int decimals, bool percent = false) {
    sheet::Cell cell = text(shown);
    cell.kind = sheet::Cell::Kind::Number;
    cell.number = value;
    cell.decimals = decimals;
    cell.percent = percent;
    return cell;
}

sheet::Cell date(const QString& shown, QDate value) {
    sheet::Cell cell = text(shown);
    cell.kind = sheet::Cell::Kind::Date;
    cell.date = value;
    return cell;
}

/// Rows that a test lays down; one may fail to be read.
class Table : public sheet::Source {
  public:
    QList<sheet::Column> heads;
    QList<QList<sheet::Cell>> cells;
    qsizetype failsAt = -1;
    qsizetype pretendedRows = -1;

    const QList<sheet::Column>& columns() const override { return heads; }
    qsizetype rowCount() const override { return pretendedRows < 0 ? cells.size() : pretendedRows; }
    sheet::Cell cell(qsizetype row, qsizetype column) const override {
        if (row == failsAt)
            throw RuntimeError(ErrorNumber::Overflow, u"estouro"_s);
        return cells[row][column];
    }
};

Table sample() {
    Table table;
    table.heads = {{u"CNPJ"_s, 120, sheet::Column::Alignment::Centre},
                   {u"R$ TOTAL"_s, 93, sheet::Column::Alignment::Right},
                   {u"% DEVOLVIDO"_s, 94, sheet::Column::Alignment::Right},
                   {u"DATA"_s, 80, sheet::Column::Alignment::Left}};
    table.cells = {{text(u"00012345678901"_s), number(u"1234,50"_s, 1234.5, 2),
                    number(u"12,5%"_s, 0.125, 1, true), date(u"29/02/2024"_s, QDate(2024, 2, 29))},
                   {text(u"=1+1"_s), number(u"-7"_s, -7, 0), text({}), text(u"ÁÇÃO & \"<x>\""_s)}};
    return table;
}

} // namespace

/// Spreadsheet files as other programs read them.
class TstSheets : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

    void xlsxHoldsValuesOfTheirKind();
    void xlsxHasAHeadingThatStays();
    void xlsxHasTheWidthsOfTheScreen();
    void xlsxHasNoFormulas_data();
    void xlsxHasNoFormulas();
    void longNumbersOfTextsKeepEveryDigit();
    void oddTextsAreReadBack();
    void datesBeforeTheCalendarOfSheetsAreTexts();
    void textsBeyondACellAreCut();
    void emptyTableHasItsHeading();
    void manyRowsAreWhole();
    void numbersHaveAPointInEveryLocale();
    void failedReadingLeavesTheOldFile_data();
    void failedReadingLeavesTheOldFile();
    void unwritablePlaceIsTold_data();
    void unwritablePlaceIsTold();
    void moreRowsThanASheetHoldsAreRefused();
    void fileHasTheUsualRights();
    void csvIsWrittenByteForByte();

  private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QJsonObject saved(const Table& table) const {
        sheet::saveXlsx(table, path(u"çãé.xlsx"_s));
        return readXlsx(path(u"çãé.xlsx"_s));
    }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TstSheets::xlsxHoldsValuesOfTheirKind() {
    const QJsonObject book = saved(sample());
    QCOMPARE(xlsxRow(book, 0),
             (QStringList{u"text:CNPJ"_s, u"text:R$ TOTAL"_s, u"text:% DEVOLVIDO"_s, u"text:DATA"_s}));
    QCOMPARE(xlsxRow(book, 1), (QStringList{u"text:00012345678901"_s, u"number:1234.5"_s, u"number:0.125"_s,
                                            u"date:2024-02-29 00:00:00"_s}));
    QCOMPARE(xlsxRow(book, 2),
             (QStringList{u"text:=1+1"_s, u"number:-7"_s, QString(), u"text:ÁÇÃO & \"<x>\""_s}));
    const auto formatAt = [&book](int row, int column) {
        return book["rows"_L1].toArray()[row].toArray()[column].toObject()["format"_L1].toString();
    };
    QCOMPARE(formatAt(1, 0), u"@"_s);
    QCOMPARE(formatAt(1, 1), u"#,##0.00"_s);
    QCOMPARE(formatAt(1, 2), u"0.0%"_s);
    QCOMPARE(formatAt(1, 3), u"dd/mm/yyyy"_s);
    QCOMPARE(formatAt(2, 1), u"#,##0"_s);
    QCOMPARE(files(), QStringList{u"çãé.xlsx"_s});
}

void TstSheets::xlsxHasAHeadingThatStays() {
    const QJsonObject book = saved(sample());
    QCOMPARE(book["frozen"_L1].toString(), u"A2"_s);
    const QJsonArray rows = book["rows"_L1].toArray();
    for (int column = 0; column < 4; ++column) {
        QVERIFY(rows[0].toArray()[column].toObject()["bold"_L1].toBool());
        const QJsonObject below = rows[1].toArray()[column].toObject();
        QVERIFY(!below["bold"_L1].toBool());
    }
    QCOMPARE(rows[1].toArray()[0].toObject()["alignment"_L1].toString(), u"center"_s);
    QCOMPARE(rows[1].toArray()[1].toObject()["alignment"_L1].toString(), u"right"_s);
}

// A width counts digits of the usual font, 7 pixels each.
void TstSheets::xlsxHasTheWidthsOfTheScreen() {
    const QJsonObject widths = saved(sample())["widths"_L1].toObject();
    const QList<int> pixels = {120, 93, 94, 80};
    for (int column = 0; column < pixels.size(); ++column) {
        const double width = widths[QString(QChar(u'A' + column))].toDouble();
        QVERIFY2(qAbs(width * 7 - pixels[column]) < 1, qPrintable(QString::number(width)));
    }
}

void TstSheets::xlsxHasNoFormulas_data() {
    QTest::addColumn<QString>("value");
    for (const QString& value : {u"=1+1"_s, u"+55 16"_s, u"-SOMA(A1)"_s, u"@SUM(A1)"_s, u"{=1}"_s,
                                 u"=HYPERLINK(\"http://x\")"_s, u"http://exemplo/"_s})
        QTest::addRow("%s", qPrintable(value)) << value;
}

void TstSheets::xlsxHasNoFormulas() {
    QFETCH(QString, value);
    Table table;
    table.heads = {{value, 100, sheet::Column::Alignment::Left}};
    table.cells = {{text(value)}};
    const QJsonObject book = saved(table);
    QCOMPARE(xlsxRow(book, 0), QStringList{u"text:"_s + value});
    QCOMPARE(xlsxRow(book, 1), QStringList{u"text:"_s + value});
}

void TstSheets::longNumbersOfTextsKeepEveryDigit() {
    Table table;
    table.heads = {{u"CNPJ"_s, 100, sheet::Column::Alignment::Left}};
    for (const QString& value : {u"00000000000001"_s, u"12345678000195"_s, u"0000000789123"_s, u"1e5"_s})
        table.cells.append({text(value)});
    const QJsonObject book = saved(table);
    for (int row = 0; row < table.cells.size(); ++row)
        QCOMPARE(xlsxCell(book, row + 1, 0), u"text:"_s + table.cells[row][0].text);
}

void TstSheets::oddTextsAreReadBack() {
    Table table;
    table.heads = {{u"A"_s, 100, sheet::Column::Alignment::Left}};
    for (const QString& value : {u" com brancos "_s, u"duas\nlinhas"_s, u"a\tb"_s, u"\U0001F950"_s, u"]]>"_s})
        table.cells.append({text(value)});
    const QJsonObject book = saved(table);
    for (int row = 0; row < table.cells.size(); ++row)
        QCOMPARE(xlsxCell(book, row + 1, 0), u"text:"_s + table.cells[row][0].text);
}

void TstSheets::datesBeforeTheCalendarOfSheetsAreTexts() {
    Table table;
    table.heads = {{u"A"_s, 100, sheet::Column::Alignment::Left}};
    table.cells = {{date(u"31/12/1899"_s, QDate(1899, 12, 31))}, {date(u"01/03/1900"_s, QDate(1900, 3, 1))}};
    const QJsonObject book = saved(table);
    QCOMPARE(xlsxCell(book, 1, 0), u"text:31/12/1899"_s);
    QCOMPARE(xlsxCell(book, 2, 0), u"date:1900-03-01 00:00:00"_s);
}

void TstSheets::textsBeyondACellAreCut() {
    Table table;
    table.heads = {{u"A"_s, 100, sheet::Column::Alignment::Left}};
    table.cells = {{text(QString(40000, u'x'))}, {text(u"depois"_s)}};
    const QJsonObject book = saved(table);
    QCOMPARE(xlsxCell(book, 1, 0).size(), 32767 + 5);
    QCOMPARE(xlsxCell(book, 2, 0), u"text:depois"_s);
}

void TstSheets::emptyTableHasItsHeading() {
    Table table = sample();
    table.cells.clear();
    const QJsonObject book = saved(table);
    QCOMPARE(book["rows"_L1].toArray().size(), 1);
    QCOMPARE(xlsxCell(book, 0, 3), u"text:DATA"_s);
}

void TstSheets::manyRowsAreWhole() {
    Table table;
    table.heads = {{u"A"_s, 100, sheet::Column::Alignment::Left},
                   {u"B"_s, 100, sheet::Column::Alignment::Right}};
    constexpr int many = 5000;
    for (int row = 0; row < many; ++row)
        table.cells.append({text(QString::number(row)), number(QString::number(row), row, 0)});
    const QJsonObject book = saved(table);
    QCOMPARE(book["rows"_L1].toArray().size(), many + 1);
    for (int row = 0; row < many; ++row)
        QCOMPARE(xlsxRow(book, row + 1),
                 (QStringList{u"text:"_s + QString::number(row), u"number:"_s + QString::number(row)}));
}

// A desktop in Portuguese makes the C library write commas.
void TstSheets::numbersHaveAPointInEveryLocale() {
    const QString locale = u"pt_BR.UTF-8"_s;
    QProcess compiler;
    compiler.start(u"localedef"_s, {u"-i"_s, u"pt_BR"_s, u"-f"_s, u"UTF-8"_s, path(locale)});
    QVERIFY(compiler.waitForFinished(60000));
    qputenv("LOCPATH", QFile::encodeName(m_folder->path()));
    const QByteArray before = setlocale(LC_ALL, nullptr);
    const auto restore = qScopeGuard([&before] {
        setlocale(LC_ALL, before.constData());
        qunsetenv("LOCPATH");
    });
    QVERIFY(setlocale(LC_ALL, qPrintable(locale)));
    QCOMPARE(localeconv()->decimal_point, ",");
    const QJsonObject book = saved(sample());
    QCOMPARE(xlsxCell(book, 1, 1), u"number:1234.5"_s);
    QCOMPARE(xlsxCell(book, 1, 3), u"date:2024-02-29 00:00:00"_s);
    QCOMPARE(localeconv()->decimal_point, ",");
}

void TstSheets::failedReadingLeavesTheOldFile_data() {
    QTest::addColumn<bool>("xlsx");
    QTest::newRow("xlsx") << true;
    QTest::newRow("csv") << false;
}

void TstSheets::failedReadingLeavesTheOldFile() {
    QFETCH(bool, xlsx);
    QFile old(path(u"dados"_s));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("antes");
    old.close();
    Table table = sample();
    table.failsAt = 1;
    QCOMPARE(errorNumberOf([&] { (xlsx ? sheet::saveXlsx : sheet::saveCsv)(table, old.fileName()); }),
             static_cast<int>(ErrorNumber::Overflow));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("antes"));
    QCOMPARE(files(), QStringList{u"dados"_s});
}

void TstSheets::unwritablePlaceIsTold_data() {
    failedReadingLeavesTheOldFile_data();
}

void TstSheets::unwritablePlaceIsTold() {
    QFETCH(bool, xlsx);
    const QString nowhere = path(u"não/existe/dados"_s);
    const auto error = errorOf([&] { (xlsx ? sheet::saveXlsx : sheet::saveCsv)(sample(), nowhere); });
    QVERIFY(error);
    QCOMPARE(error->number(), static_cast<int>(ErrorNumber::FileNotWritable));
    QVERIFY2(error->text().startsWith(u"Não foi possível gravar "_s + nowhere), qPrintable(error->text()));
}

void TstSheets::moreRowsThanASheetHoldsAreRefused() {
    Table table = sample();
    table.pretendedRows = 1048576;
    const auto error = errorOf([&] { sheet::saveXlsx(table, path(u"demais.xlsx"_s)); });
    QVERIFY(error);
    QVERIFY(error->text().contains(u"1.048.575 linhas"_s));
    QCOMPARE(files(), QStringList());
}

void TstSheets::fileHasTheUsualRights() {
    QFile usual(path(u"comum"_s));
    QVERIFY(usual.open(QIODevice::WriteOnly));
    sheet::saveXlsx(sample(), path(u"dados.xlsx"_s));
    QCOMPARE(QFile::permissions(path(u"dados.xlsx"_s)), QFile::permissions(usual.fileName()));
}

void TstSheets::csvIsWrittenByteForByte() {
    sheet::saveCsv(sample(), path(u"dados.csv"_s));
    QFile file(path(u"dados.csv"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xEF\xBB\xBF"
                                        "CNPJ;R$ TOTAL;% DEVOLVIDO;DATA\r\n"
                                        "00012345678901;1234,50;12,5%;29/02/2024\r\n"
                                        "'=1+1;-7;;\"ÁÇÃO & \"\"<x>\"\"\"\r\n"));
}

QTEST_MAIN(TstSheets)
#include "tst_sheets.moc"

#include "bench/GridBench.h"

#include "bench/support/Measure.h"
#include "core/GridSheet.h"
#include "sheets/XlsxFile.h"
#include "ui/grid/Grid.h"
#include "ui/grid/GridSearch.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int rowCount = 100000;
constexpr int rounds = 3;
constexpr int patienceMs = 300000;
constexpr double libraryGoal = 10;
constexpr double secondsGoal = 3;
constexpr double memoryGoalMegabytes = 150;

// The panel's columns, and what stands in them.
void fill(Grid& grid) {
    grid.setFormat(u"PEDIDO|^TIPO|<CLIENTE|<VENDEDOR|<CIDADE|>R$ TOTAL|>DIAS VENC|>FORMA PAGTO|^TABELA|"
                   "^SELEÇÃO|CODIGOCLI"_s);
    grid.setTickColumn(9, QIcon());
    grid.setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Text, ColumnKind::Text,
                         ColumnKind::Text, ColumnKind::Number, ColumnKind::Number});
    grid.setColumnTwips(10, 0);
    const std::array<QString, 4> cities = {u"SÃO PAULO"_s, u"CAMPINAS"_s, u"ITU"_s, u"RIBEIRÃO PRETO"_s};
    const Grid::Fill filling(&grid);
    for (int row = 1; row <= rowCount; ++row) {
        const auto city = static_cast<size_t>(row) % cities.size();
        grid.addRow({QString::number(row), u"P"_s, u"PADARIA E CONFEITARIA MODELO %1 LTDA"_s.arg(row),
                     u"VENDEDOR %1"_s.arg(row % 9), cities[city],
                     u"%1,%2"_s.arg(row % 999).arg(row % 90 + 10), QString::number(row % 60), u"BOLETO"_s,
                     u"1"_s, row % 3 ? u" "_s : QString(), u"C%1"_s.arg(row)});
    }
}

double savingSeconds(const Grid& grid, const QString& path) {
    return secondsOf([&] { sheet::saveXlsx(GridSheet(grid), path); });
}

// The same cells, a row a line, for the library's own process.
void writeCells(const Grid& grid, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("the rows cannot be written");
    for (int row = 0; row < grid.rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.columns(); ++column)
            if (grid.isOutput(column))
                cells.append(grid.outputText(row, column));
        file.write(cells.join(u'\t').toUtf8() + '\n');
    }
}

// It reads the rows before its clock starts, and prints the seconds of writing.
double librarySeconds(const QString& cells, const QString& path) {
    QProcess process;
    process.start(u"/usr/bin/python3"_s,
                  {QStringLiteral(TARVESSA_SOURCE_DIR "/bench/write-xlsx"), cells, path});
    if (!process.waitForFinished(patienceMs) || process.exitCode() != 0)
        throw std::runtime_error("the other library failed: " + process.readAllStandardError().toStdString());
    return process.readAllStandardOutput().trimmed().toDouble();
}

double memoryMegabytes(const QString& path) {
    QProcess process;
    process.start(QApplication::applicationFilePath(), {QString::fromUtf8(gridMemoryWord), path});
    if (!process.waitForFinished(patienceMs) || process.exitCode() != 0)
        throw std::runtime_error("the saving process failed: " +
                                 process.readAllStandardError().toStdString());
    return process.readAllStandardOutput().trimmed().toDouble();
}

} // namespace

QList<Row> gridRows() {
    const QTemporaryDir folder;
    Grid grid;
    fill(grid);
    const QString cells = folder.filePath(u"cells"_s);
    writeCells(grid, cells);
    const std::vector<double> saving =
        interleaved(rounds, {[&] { return savingSeconds(grid, folder.filePath(u"ours.xlsx"_s)); },
                             [&] { return librarySeconds(cells, folder.filePath(u"theirs.xlsx"_s)); }});
    const double ratio = saving[1] / saving[0];
    const QString rows = countText(rowCount);
    const double memory = memoryMegabytes(folder.filePath(u"memory.xlsx"_s));
    grid.selectAll();
    const double copying = interleaved(rounds, {[&] { return secondsOf([&] { grid.copyRows(true); }); }})[0];
    const double searching = interleaved(rounds, {[&] {
                                             return secondsOf([&] {
                                                 GridSearch search;
                                                 search.search(grid, u"ribeirao"_s);
                                                 if (search.hits().size() != rowCount / 4)
                                                     throw std::runtime_error("the search missed rows");
                                             });
                                         }})[0];
    return {
        {u"a grid of %1 rows saved as XLSX, against a Python library"_s.arg(rows), timeText(saving[0]),
         timeText(saving[1]), ratioText(ratio), u"at least 10 times faster"_s, ratio >= libraryGoal},
        {u"the same, by the clock"_s, timeText(saving[0]), {}, {}, u"under 3 s"_s, saving[0] < secondsGoal},
        {u"highest memory of filling and saving %1 rows"_s.arg(rows),
         u"%1 MB"_s.arg(memory, 0, 'f', 1),
         {},
         {},
         u"under 150 MB"_s,
         memory > 0 && memory < memoryGoalMegabytes},
        {u"- %1 rows into the clipboard, as text and as a table"_s.arg(rows),
         timeText(copying),
         {},
         {},
         {},
         false},
        {u"- a text sought in %1 rows"_s.arg(rows), timeText(searching), {}, {}, {}, false}};
}

int gridSavingMemory() {
    Grid grid;
    fill(grid);
    sheet::saveXlsx(GridSheet(grid), QApplication::arguments().at(2));
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            printf("%.1f\n", line.simplified().split(' ').at(1).toDouble() * 1024 / 1e6);
    return 0;
}

} // namespace tarvessa::bench

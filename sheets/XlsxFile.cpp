#include "sheets/XlsxFile.h"

#include "base/RuntimeError.h"
#include "base/WholeFile.h"
#include "sheets/PointNumerals.h"
#include "sheets/Sheet.h"

#include <QFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace tarvessa::sheet {

namespace {

constexpr qsizetype mostRows = LXW_ROW_MAX - 1; // without the heading
constexpr qsizetype longestText = 32767;
constexpr int firstYear = 1900;
constexpr int lastYear = 9999;

[[noreturn]] void fail(const QString& path, const QString& reason) {
    throw RuntimeError(ErrorNumber::FileNotWritable, u"Não foi possível gravar %1: %2"_s.arg(path, reason));
}

QByteArray numberFormat(int decimals, bool percent) {
    QByteArray format = percent ? "0" : "#,##0";
    if (decimals > 0)
        format += '.' + QByteArray(decimals, '0');
    return percent ? format + '%' : format;
}

uint8_t alignmentCode(Column::Alignment alignment) {
    switch (alignment) {
    case Column::Alignment::Right:
        return LXW_ALIGN_RIGHT;
    case Column::Alignment::Centre:
        return LXW_ALIGN_CENTER;
    case Column::Alignment::Left:
        break;
    }
    return LXW_ALIGN_LEFT;
}

/// Writes a workbook to a file of the given name; the library keeps what it has got in files of its own.
class Workbook {
  public:
    explicit Workbook(const QString& path) {
        lxw_workbook_options options = {};
        options.constant_memory = LXW_TRUE;
        m_book = workbook_new_opt(QFile::encodeName(path).constData(), &options);
        m_sheet = m_book ? workbook_add_worksheet(m_book, "Dados") : nullptr;
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;
    ~Workbook() {
        if (m_book)
            workbook_close(m_book);
    }

    /// False when there is no room for the library's own files; nothing can be written then.
    bool isOpen() const { return m_sheet; }

    void writeHeading(const QList<Column>& columns) {
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const Column& column = columns[i];
            const auto place = static_cast<lxw_col_t>(i);
            check(worksheet_set_column_pixels(m_sheet, place, place, static_cast<uint32_t>(column.pixels),
                                              nullptr));
            lxw_format* format = workbook_add_format(m_book);
            format_set_bold(format);
            format_set_text_wrap(format);
            format_set_align(format, alignmentCode(column.alignment));
            check(worksheet_write_string(m_sheet, 0, place, bytesOf(column.heading).constData(), format));
        }
        worksheet_freeze_panes(m_sheet, 1, 0);
    }

    void write(qsizetype row, qsizetype column, const Cell& cell, Column::Alignment alignment) {
        const auto line = static_cast<lxw_row_t>(row + 1);
        const auto place = static_cast<lxw_col_t>(column);
        if (cell.kind == Cell::Kind::Number) {
            check(worksheet_write_number(
                m_sheet, line, place, cell.number,
                format(numberFormat(cell.decimals, cell.percent), Column::Alignment::Right)));
        } else if (cell.kind == Cell::Kind::Date && cell.date.year() >= firstYear &&
                   cell.date.year() <= lastYear) {
            lxw_datetime date = {cell.date.year(), cell.date.month(), cell.date.day(), 0, 0, 0};
            check(worksheet_write_datetime(m_sheet, line, place, &date, format("dd/mm/yyyy", alignment)));
        } else if (!cell.text.isEmpty()) {
            check(worksheet_write_string(m_sheet, line, place, bytesOf(cell.text).constData(),
                                         format("@", alignment)));
        }
    }

    /// Finishes the file; the library's number of the first error, 0 for none.
    int close() {
        check(workbook_close(m_book));
        m_book = nullptr;
        return m_error;
    }

  private:
    void check(lxw_error error) {
        if (m_error == LXW_NO_ERROR)
            m_error = error;
    }

    static QByteArray bytesOf(const QString& text) { return text.left(longestText).toUtf8(); }

    lxw_format* format(const QByteArray& mask, Column::Alignment alignment) {
        lxw_format*& made = m_formats[{mask, alignment}];
        if (!made) {
            made = workbook_add_format(m_book);
            format_set_num_format(made, mask.constData());
            format_set_align(made, alignmentCode(alignment));
        }
        return made;
    }

    lxw_workbook* m_book = nullptr;
    lxw_worksheet* m_sheet = nullptr;
    std::map<std::tuple<QByteArray, Column::Alignment>, lxw_format*> m_formats;
    lxw_error m_error = LXW_NO_ERROR;
};

void writeTo(const QString& temporary, const Source& source, const QString& path) {
    const PointNumerals numerals;
    Workbook book(temporary);
    if (!book.isOpen())
        fail(path, u"não há lugar para os arquivos temporários."_s);
    const QList<Column>& columns = source.columns();
    book.writeHeading(columns);
    for (qsizetype row = 0; row < source.rowCount(); ++row)
        for (qsizetype column = 0; column < columns.size(); ++column)
            book.write(row, column, source.cell(row, column), columns[column].alignment);
    if (const int error = book.close())
        fail(path, u"a planilha não pôde ser montada (erro %1)."_s.arg(error));
}

// The library knows no names beyond those of the system's code page and sets a file's rights itself: it
// writes to a file of a plain name, which is then copied.
void copyTo(const QString& temporary, const QString& path) {
    QFile written(temporary);
    if (!written.open(QIODevice::ReadOnly))
        fail(path, written.errorString());
    writeWholeFile(path, [&written](QIODevice& file) {
        constexpr qint64 part = 1 << 20;
        while (!written.atEnd())
            file.write(written.read(part));
    });
}

} // namespace

void saveXlsx(const Source& source, const QString& path) {
    if (source.rowCount() > mostRows)
        fail(path, u"uma planilha comporta até 1.048.575 linhas."_s);
    const QTemporaryDir folder;
    if (!folder.isValid())
        fail(path, folder.errorString());
    const QString temporary = folder.filePath(u"dados.xlsx"_s);
    writeTo(temporary, source, path);
    copyTo(temporary, path);
}

} // namespace tarvessa::sheet

#include "odbc/ResultSet.h"

#include "base/FreeMemory.h"
#include "base/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace tarvessa::odbc {

namespace {

constexpr SQLULEN rowsPerBlock = 256;
constexpr SQLULEN manyRows = 10000;
// Cells above this are rare in wide columns (notes, remarks); they are fetched one by one when they come.
constexpr SQLLEN longestBoundCell = 1024;     // bytes
constexpr SQLLEN longestBoundWideText = 1024; // characters
constexpr SQLLEN bytesPerUtf8Character = 4;
constexpr SQLLEN bytesPerWideCharacter = 2 * static_cast<SQLLEN>(sizeof(SQLWCHAR));

SQLPOINTER asPointer(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): the form ODBC asks for
}

SQLLEN terminatorBytes(Encoding encoding) {
    return encoding == Encoding::Wide ? static_cast<SQLLEN>(sizeof(SQLWCHAR)) : 1;
}

SQLSMALLINT cellType(Encoding encoding) {
    return encoding == Encoding::Wide ? SQL_C_WCHAR : SQL_C_CHAR;
}

// The driver counts some letters of a wide text as half a pair, so there the terminator tells the length.
QString cellText(Encoding encoding, const char* bytes, SQLLEN length) {
    return encoding == Encoding::Wide ? QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes))
                                      : QString::fromUtf8(bytes, length);
}

// Room for a cell of so many characters with its terminator, 0 for a cell that must not be bound. A narrow
// cell longer than its room is known by its indicator; a wide one makes the driver read past its own buffer.
SQLLEN cellBytes(Encoding encoding, SQLLEN characters) {
    if (encoding == Encoding::Wide)
        return characters > longestBoundWideText
                   ? 0
                   : characters * bytesPerWideCharacter + terminatorBytes(encoding);
    return std::min(characters * bytesPerUtf8Character, longestBoundCell) + terminatorBytes(encoding);
}

} // namespace

void ResultSet::open(Connection& connection, const QString& sql) {
    close();
    m_sql = sql;
    m_statement = connection.takeStatement(sql);
    m_encoding = connection.encoding();
    try {
        connection.executeOn(m_statement, sql);
        describeColumns();
        layOutRow();
        fetchBlock(SQL_FETCH_NEXT, 0);
        m_empty = m_atEnd;
    } catch (...) {
        close();
        throw;
    }
}

void ResultSet::describeColumns() {
    SQLSMALLINT count = 0;
    m_statement.check(SQLNumResultCols(m_statement.get(), &count), m_sql);
    m_columns.resize(static_cast<size_t>(count));
    std::array<SQLWCHAR, 256> wideName{};
    std::array<char, 1024> narrowName{};
    for (SQLSMALLINT i = 0; i < count; ++i) {
        const auto ordinal = static_cast<SQLUSMALLINT>(i + 1);
        SQLSMALLINT nameLength = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        QString name;
        if (m_encoding == Encoding::Wide) {
            m_statement.check(SQLDescribeColW(m_statement.get(), ordinal, wideName.data(), wideName.size(),
                                              &nameLength, &type, &size, &digits, &nullable),
                              m_sql);
            name = QString::fromUtf16(reinterpret_cast<const char16_t*>(wideName.data()));
        } else {
            m_statement.check(SQLDescribeCol(m_statement.get(), ordinal,
                                             reinterpret_cast<SQLCHAR*>(narrowName.data()), narrowName.size(),
                                             &nameLength, &type, &size, &digits, &nullable),
                              m_sql);
            name = QString::fromUtf8(narrowName.data());
        }
        SQLLEN characters = 0;
        m_statement.check(SQLColAttribute(m_statement.get(), ordinal, SQL_DESC_DISPLAY_SIZE, nullptr, 0,
                                          nullptr, &characters),
                          m_sql);
        m_columns[i].cellBytes = cellBytes(m_encoding, std::max<SQLLEN>(characters, 1));
        m_columns[i].room = ColumnRoom(type, size, digits);
        m_names.append(name);
    }
}

// A block of rows may be some megabytes, of which a short result touches the first page or two only.
void ResultSet::layOutRow() {
    constexpr size_t word = sizeof(SQLLEN);
    m_rowBytes = m_columns.size() * word;
    for (Column& column : m_columns) {
        column.cell = m_rowBytes;
        m_rowBytes += (static_cast<size_t>(column.cellBytes) + word - 1) / word * word;
    }
    m_block = m_statement.block(m_rowBytes * rowsPerBlock);
}

void ResultSet::bindColumns() {
    SQLSetStmtAttr(m_statement.get(), SQL_ATTR_ROW_ARRAY_SIZE, asPointer(rowsPerBlock), 0);
    m_statement.check(SQLSetStmtAttr(m_statement.get(), SQL_ATTR_ROW_BIND_TYPE, asPointer(m_rowBytes), 0),
                      m_sql);
    auto* indicators = reinterpret_cast<SQLLEN*>(m_block);
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        if (column.cellBytes > 0)
            m_statement.check(SQLBindCol(m_statement.get(), static_cast<SQLUSMALLINT>(i + 1),
                                         cellType(m_encoding), m_block + column.cell, column.cellBytes,
                                         indicators + i),
                              m_sql);
    }
    m_bound = true;
}

void ResultSet::fetchBlock(SQLSMALLINT orientation, SQLULEN firstRow) {
    m_firstRowOfBlock = firstRow;
    m_rowInBlock = 0;
    m_atEnd = true;
    SQLSMALLINT direction = orientation;
    if (!m_bound) {
        bindColumns();
        // The cursor may stand on a row alone, so "next" would be another row.
        if (orientation == SQL_FETCH_NEXT && firstRow > 0)
            direction = SQL_FETCH_ABSOLUTE;
    }
    m_statement.rowsFetched() = 0;
    const SQLRETURN code = m_statement.check(
        SQLFetchScroll(m_statement.get(), direction, static_cast<SQLLEN>(firstRow + 1)), m_sql);
    m_rowsInBlock = code == SQL_NO_DATA ? 0 : m_statement.rowsFetched();
    m_atEnd = m_rowsInBlock == 0;
}

bool ResultSet::atEnd() const {
    if (!isOpen())
        throw RuntimeError(ErrorNumber::ConnectionClosed, u"O conjunto de registros está fechado."_s);
    return m_atEnd;
}

void ResultSet::moveNext() {
    if (atEnd())
        throw RuntimeError(static_cast<int>(ErrorNumber::NoCurrentRecord),
                           u"Não há registro atual: a consulta chegou ao fim."_s, {}, m_sql);
    if (++m_rowInBlock < m_rowsInBlock)
        return;
    if (m_rowsInBlock < rowsPerBlock)
        m_atEnd = true;
    else
        fetchBlock(SQL_FETCH_NEXT, m_firstRowOfBlock + rowsPerBlock);
}

void ResultSet::moveFirst() {
    if (!atEnd() || !m_empty)
        fetchBlock(SQL_FETCH_FIRST, 0);
}

void ResultSet::close() {
    m_statement = Statement();
    // The driver keeps all rows of a result until now.
    if (m_firstRowOfBlock >= manyRows)
        returnFreeMemory();
    m_block = nullptr;
    m_rowBytes = 0;
    m_columns.clear();
    m_names.clear();
    m_firstRowOfBlock = 0;
    m_rowInBlock = 0;
    m_rowsInBlock = 0;
    m_empty = true;
    m_bound = false;
    m_atEnd = true;
}

int ResultSet::column(QStringView name) const {
    for (qsizetype i = 0; i < m_names.size(); ++i)
        if (m_names[i].compare(name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    throw RuntimeError(static_cast<int>(ErrorNumber::NoSuchColumn),
                       u"A coluna \"%1\" não existe na consulta."_s.arg(name), {}, m_sql);
}

// The length of a cell in the block: SQL_NULL_DATA for NULL, SQL_NO_TOTAL for one to be fetched on its own.
SQLLEN ResultSet::boundLength(int column) const {
    if (atEnd())
        throw RuntimeError(static_cast<int>(ErrorNumber::NoCurrentRecord),
                           u"Não há registro atual: a consulta não trouxe dados."_s, {}, m_sql);
    const Column& bound = m_columns[static_cast<size_t>(column)];
    if (bound.cellBytes == 0)
        return SQL_NO_TOTAL;
    const SQLLEN length = reinterpret_cast<const SQLLEN*>(row())[column];
    return length > bound.cellBytes - terminatorBytes(m_encoding) ? SQL_NO_TOTAL : length;
}

Field ResultSet::field(int column) const {
    const SQLLEN length = boundLength(column);
    if (length == SQL_NULL_DATA)
        return {};
    if (length == SQL_NO_TOTAL)
        return longCell(column);
    return Field(cellText(m_encoding, boundCell(column), length));
}

QAnyStringView ResultSet::textView(int column) const {
    const SQLLEN length = boundLength(column);
    if (length == SQL_NULL_DATA)
        return {};
    if (length == SQL_NO_TOTAL) {
        QString& text = m_columns[static_cast<size_t>(column)].longText;
        text = longCell(column).text();
        return text;
    }
    if (m_encoding == Encoding::Wide)
        return QStringView(reinterpret_cast<const char16_t*>(boundCell(column)));
    return QUtf8StringView(boundCell(column), length);
}

// Inside a block the driver goes on reading a column where it stopped in another row; alone on its row it
// starts afresh. The block's buffers keep their values meanwhile.
void ResultSet::standOnRowAlone() const {
    m_bound = false;
    m_statement.check(SQLFreeStmt(m_statement.get(), SQL_UNBIND), m_sql);
    SQLSetStmtAttr(m_statement.get(), SQL_ATTR_ROW_ARRAY_SIZE, asPointer(1), 0);
    m_statement.check(SQLFetchScroll(m_statement.get(), SQL_FETCH_ABSOLUTE,
                                     static_cast<SQLLEN>(m_firstRowOfBlock + m_rowInBlock + 1)),
                      m_sql);
}

Field ResultSet::longCell(int column) const {
    standOnRowAlone();
    const Encoding encoding = m_encoding;
    const auto ordinal = static_cast<SQLUSMALLINT>(column + 1);
    std::vector<char> cell(1);
    SQLLEN bytes = 0;
    m_statement.check(SQLGetData(m_statement.get(), ordinal, SQL_C_CHAR, cell.data(), 0, &bytes), m_sql);
    if (bytes == SQL_NULL_DATA)
        return {};
    if (bytes < 0)
        throw RuntimeError(
            ErrorNumber::TypeMismatch,
            u"Tipos incompatíveis: o driver não informa o tamanho do texto da coluna %1."_s.arg(column + 1));
    // In one piece: a wide text fetched in several loses what the driver's count falls short of.
    cell.resize(static_cast<size_t>((bytes + 1) * bytesPerWideCharacter));
    m_statement.check(SQLGetData(m_statement.get(), ordinal, cellType(encoding), cell.data(),
                                 static_cast<SQLLEN>(cell.size()), &bytes),
                      m_sql);
    return Field(cellText(encoding, cell.data(), bytes));
}

} // namespace tarvessa::odbc

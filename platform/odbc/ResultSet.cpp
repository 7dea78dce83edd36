#include "platform/odbc/ResultSet.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

using namespace Qt::StringLiterals;

namespace tarvessa::odbc {

namespace {

constexpr SQLULEN rowsPerBlock = 256;
// Cells above this are rare in wide columns (notes, remarks); they are fetched one by one when they come.
constexpr SQLLEN longestBoundCell = 1024;
constexpr SQLLEN bytesPerUtf8Character = 4;

SQLPOINTER asPointer(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): the form ODBC asks for
}

} // namespace

void ResultSet::open(const Connection& connection, const QString& sql) {
    close();
    m_connection = &connection;
    m_sql = sql;
    m_statement = connection.newStatement();
    // A driver that grants less than asked (read-only instead of optimistic) says so with a warning only.
    SQLSetStmtAttr(m_statement.get(), SQL_ATTR_CURSOR_TYPE, asPointer(SQL_CURSOR_STATIC), 0);
    SQLSetStmtAttr(m_statement.get(), SQL_ATTR_CONCURRENCY, asPointer(SQL_CONCUR_ROWVER), 0);
    try {
        connection.executeOn(m_statement, sql);
        describeColumns();
        bindColumns();
        fetchBlock(SQL_FETCH_NEXT);
        m_empty = m_atEnd;
    } catch (const RuntimeError&) {
        close();
        throw;
    }
}

void ResultSet::describeColumns() {
    SQLSMALLINT count = 0;
    check(SQLNumResultCols(m_statement.get(), &count), SQL_HANDLE_STMT, m_statement.get(), m_sql);
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
        if (m_connection->encoding() == Encoding::Wide) {
            check(SQLDescribeColW(m_statement.get(), ordinal, wideName.data(), wideName.size(), &nameLength,
                                  &type, &size, &digits, &nullable),
                  SQL_HANDLE_STMT, m_statement.get(), m_sql);
            name = QString::fromUtf16(reinterpret_cast<const char16_t*>(wideName.data()));
        } else {
            check(SQLDescribeCol(m_statement.get(), ordinal, reinterpret_cast<SQLCHAR*>(narrowName.data()),
                                 narrowName.size(), &nameLength, &type, &size, &digits, &nullable),
                  SQL_HANDLE_STMT, m_statement.get(), m_sql);
            name = m_connection->decode(narrowName.data(), static_cast<qsizetype>(strlen(narrowName.data())));
        }
        SQLLEN characters = 0;
        check(SQLColAttribute(m_statement.get(), ordinal, SQL_DESC_DISPLAY_SIZE, nullptr, 0, nullptr,
                              &characters),
              SQL_HANDLE_STMT, m_statement.get(), m_sql);
        // A sign or a longer text than announced is caught by the indicator, so this is a matter of speed
        // only.
        characters = std::clamp<SQLLEN>(characters, 1, longestBoundCell);
        m_columns[i].cellBytes = m_connection->encoding() == Encoding::Wide
                                     ? (characters + 1) * static_cast<SQLLEN>(sizeof(SQLWCHAR))
                                     : std::min(characters * bytesPerUtf8Character, longestBoundCell) + 1;
        m_names.append(name);
        // Of two columns with one name, a look-up by name means the first.
        if (!m_columnByName.contains(name.toLower()))
            m_columnByName.insert(name.toLower(), i);
    }
}

void ResultSet::bindColumns() {
    m_rowsFetched = std::make_unique<SQLULEN>(0);
    SQLSetStmtAttr(m_statement.get(), SQL_ATTR_ROW_ARRAY_SIZE, asPointer(rowsPerBlock), 0);
    SQLSetStmtAttr(m_statement.get(), SQL_ATTR_ROWS_FETCHED_PTR, m_rowsFetched.get(), 0);
    const SQLSMALLINT cellType = m_connection->encoding() == Encoding::Wide ? SQL_C_WCHAR : SQL_C_CHAR;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        Column& column = m_columns[i];
        column.cells.resize(static_cast<size_t>(column.cellBytes) * rowsPerBlock);
        column.indicators.resize(rowsPerBlock);
        check(SQLBindCol(m_statement.get(), static_cast<SQLUSMALLINT>(i + 1), cellType, column.cells.data(),
                         column.cellBytes, column.indicators.data()),
              SQL_HANDLE_STMT, m_statement.get(), m_sql);
    }
}

void ResultSet::fetchBlock(SQLSMALLINT orientation) {
    m_rowInBlock = 0;
    m_atEnd = true;
    const SQLRETURN code =
        check(SQLFetchScroll(m_statement.get(), orientation, 0), SQL_HANDLE_STMT, m_statement.get(), m_sql);
    m_atEnd = code == SQL_NO_DATA || *m_rowsFetched == 0;
}

bool ResultSet::atEnd() const {
    if (!m_statement)
        throw RuntimeError(ErrorNumber::ConnectionClosed, u"O conjunto de registros está fechado."_s);
    return m_atEnd;
}

void ResultSet::moveNext() {
    if (atEnd())
        throw RuntimeError(static_cast<int>(ErrorNumber::NoCurrentRecord),
                           u"Não há registro atual: a consulta chegou ao fim."_s, {}, m_sql);
    if (++m_rowInBlock < *m_rowsFetched)
        return;
    if (*m_rowsFetched < rowsPerBlock)
        m_atEnd = true;
    else
        fetchBlock(SQL_FETCH_NEXT);
}

void ResultSet::moveFirst() {
    if (!atEnd() || !m_empty)
        fetchBlock(SQL_FETCH_FIRST);
}

void ResultSet::close() {
    m_statement = StatementHandle();
    m_columns.clear();
    m_rowsFetched.reset();
    m_names.clear();
    m_columnByName.clear();
    m_rowInBlock = 0;
    m_atEnd = true;
}

int ResultSet::column(QStringView name) const {
    const auto found = m_columnByName.constFind(name.toString().toLower());
    if (found == m_columnByName.constEnd())
        throw RuntimeError(static_cast<int>(ErrorNumber::NoSuchColumn),
                           u"A coluna \"%1\" não existe na consulta."_s.arg(name), {}, m_sql);
    return *found;
}

Field ResultSet::field(int column) const {
    if (atEnd())
        throw RuntimeError(static_cast<int>(ErrorNumber::NoCurrentRecord),
                           u"Não há registro atual: a consulta não trouxe dados."_s, {}, m_sql);
    const Column& bound = m_columns[static_cast<size_t>(column)];
    const SQLLEN length = bound.indicators[m_rowInBlock];
    if (length == SQL_NULL_DATA)
        return {};
    const SQLLEN terminator =
        m_connection->encoding() == Encoding::Wide ? static_cast<SQLLEN>(sizeof(SQLWCHAR)) : 1;
    if (length == SQL_NO_TOTAL || length > bound.cellBytes - terminator)
        return Field(longText(column));
    return Field(
        decodeCell(bound.cells.data() + static_cast<SQLLEN>(m_rowInBlock) * bound.cellBytes, length));
}

QString ResultSet::longText(int column) const {
    const bool isWide = m_connection->encoding() == Encoding::Wide;
    check(SQLSetPos(m_statement.get(), static_cast<SQLSETPOSIROW>(m_rowInBlock + 1), SQL_POSITION,
                    SQL_LOCK_NO_CHANGE),
          SQL_HANDLE_STMT, m_statement.get(), m_sql);
    std::vector<char> piece(64 * 1024);
    const SQLLEN room = static_cast<SQLLEN>(piece.size()) - (isWide ? 2 : 1);
    QByteArray whole;
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN code = check(SQLGetData(m_statement.get(), static_cast<SQLUSMALLINT>(column + 1),
                                                isWide ? SQL_C_WCHAR : SQL_C_CHAR, piece.data(),
                                                static_cast<SQLLEN>(piece.size()), &length),
                                     SQL_HANDLE_STMT, m_statement.get(), m_sql);
        if (code == SQL_NO_DATA || length == SQL_NULL_DATA)
            break;
        const bool more = code == SQL_SUCCESS_WITH_INFO && (length == SQL_NO_TOTAL || length > room);
        whole.append(piece.data(), more ? room : length);
        if (!more)
            break;
    }
    return decodeCell(whole.constData(), whole.size());
}

QString ResultSet::decodeCell(const char* bytes, SQLLEN length) const {
    if (m_connection->encoding() == Encoding::Wide) {
        QString text(length / static_cast<SQLLEN>(sizeof(char16_t)), Qt::Uninitialized);
        memcpy(text.data(), bytes, static_cast<size_t>(length));
        return text;
    }
    return m_connection->decode(bytes, length);
}

} // namespace tarvessa::odbc

#include "odbc/Handles.h"

#include "base/RuntimeError.h"

#include <QStringDecoder>
#include <QStringList>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace tarvessa::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager must take UTF-16 texts");

template <SQLSMALLINT Kind>
Handle<Kind>::Handle(SQLHANDLE parent, const QString& statement) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(Kind, parent, &m_handle))) {
        m_handle = nullptr;
        constexpr SQLSMALLINT parentKind = Kind == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV;
        if (parent)
            raise(parentKind, parent, statement);
        throw RuntimeError(ErrorNumber::ConnectionClosed, u"O gerenciador ODBC não está disponível."_s);
    }
}

template class Handle<SQL_HANDLE_ENV>;
template class Handle<SQL_HANDLE_DBC>;
template class Handle<SQL_HANDLE_STMT>;

namespace {

struct Diagnostic {
    QString state;
    QString text;
    int number = 0;
};

// A driver manager converts an error text between bytes and UTF-16 by the locale of the moment, which may
// have nothing to do with the connection. The form that the connection uses is the one it passes on
// untouched: bytes that are proper UTF-8, otherwise the wide text.
std::optional<Diagnostic> diagnostic(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record) {
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 1024> wideText{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, record, state.data(), &number, wideText.data(),
                                      wideText.size(), &length)))
        return std::nullopt;
    Diagnostic found{QString::fromUtf16(reinterpret_cast<const char16_t*>(state.data())),
                     QString::fromUtf16(reinterpret_cast<const char16_t*>(wideText.data())), number};
#ifndef _WIN32 // where the bytes are in a code page that lacks letters
    std::array<SQLCHAR, 6> narrowState{};
    std::array<SQLCHAR, 4 * wideText.size()> narrowText{};
    if (!SQL_SUCCEEDED(SQLGetDiagRec(kind, handle, record, narrowState.data(), &number, narrowText.data(),
                                     narrowText.size(), &length)))
        return found;
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString decoded = utf8(reinterpret_cast<const char*>(narrowText.data()));
    if (!utf8.hasError())
        found.text = decoded;
#endif
    return found;
}

} // namespace

void raise(SQLSMALLINT kind, SQLHANDLE handle, const QString& statement) {
    QStringList texts;
    Diagnostic first;
    for (SQLSMALLINT record = 1; const auto found = diagnostic(kind, handle, record); ++record) {
        if (record == 1)
            first = *found;
        texts.append(found->text);
    }
    if (texts.isEmpty())
        texts.append(u"O driver ODBC não informou o motivo."_s);
    throw RuntimeError(first.number, texts.join(u'\n'), first.state, statement);
}

SQLRETURN check(SQLRETURN code, SQLSMALLINT kind, SQLHANDLE handle, const QString& statement) {
    if (!SQL_SUCCEEDED(code) && code != SQL_NO_DATA)
        raise(kind, handle, statement);
    return code;
}

SQLWCHAR* wide(const QString& text) {
    return reinterpret_cast<SQLWCHAR*>(
        const_cast<char16_t*>(reinterpret_cast<const char16_t*>(text.utf16())));
}

} // namespace tarvessa::odbc

#include "platform/odbc/Handles.h"

#include "platform/RuntimeError.h"

#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace tarvessa::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager must take UTF-16 texts");

template <SQLSMALLINT Kind>
Handle<Kind>::Handle(SQLHANDLE parent) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(Kind, parent, &m_handle))) {
        m_handle = nullptr;
        constexpr SQLSMALLINT parentKind = Kind == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV;
        if (parent)
            raise(parentKind, parent, {});
        throw RuntimeError(ErrorNumber::ConnectionClosed, u"O gerenciador ODBC não está disponível."_s);
    }
}

template class Handle<SQL_HANDLE_ENV>;
template class Handle<SQL_HANDLE_DBC>;
template class Handle<SQL_HANDLE_STMT>;

void raise(SQLSMALLINT kind, SQLHANDLE handle, const QString& statement) {
    QStringList texts;
    QString firstState;
    int firstNumber = 0;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 1024> text{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    for (SQLSMALLINT record = 1; SQL_SUCCEEDED(
             SQLGetDiagRecW(kind, handle, record, state.data(), &number, text.data(), text.size(), &length));
         ++record) {
        if (record == 1) {
            firstState = QString::fromUtf16(reinterpret_cast<const char16_t*>(state.data()));
            firstNumber = number;
        }
        texts.append(QString::fromUtf16(reinterpret_cast<const char16_t*>(text.data())));
    }
    throw RuntimeError(firstNumber, texts.join(u'\n'), firstState, statement);
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

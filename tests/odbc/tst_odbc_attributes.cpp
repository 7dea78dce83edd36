#include "odbc/Connection.h"
#include "support/PrivateServer.h"

#include <QMap>
#include <QTest>

#include <dlfcn.h>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

QMap<SQLINTEGER, quintptr> asked;

} // namespace

// Stands before the driver manager's function of this name: the driver grants less than asked, so what was
// asked is seen here only.
extern "C" SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value,
                                            SQLINTEGER length) {
    using Function = SQLRETURN (*)(SQLHSTMT, SQLINTEGER, SQLPOINTER, SQLINTEGER);
    static const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "SQLSetStmtAttr"));
    asked.insert(attribute, reinterpret_cast<quintptr>(value));
    return next(statement, attribute, value, length);
}

/// What a statement asks of the driver.
class TstOdbcAttributes : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void asksForTheCursorOfTheContract();
};

void TstOdbcAttributes::asksForTheCursorOfTheContract() {
    PrivateServer server;
    odbc::Connection connection;
    connection.open(u"dsn=QDX"_s, false);
    asked.clear();
    connection.execute(u"SET @a = 1"_s);
    connection.close();
    QCOMPARE(asked.value(SQL_ATTR_CURSOR_TYPE), quintptr(SQL_CURSOR_STATIC));
    QCOMPARE(asked.value(SQL_ATTR_CONCURRENCY), quintptr(SQL_CONCUR_ROWVER));
    QCOMPARE(asked.value(SQL_ATTR_NOSCAN), quintptr(SQL_NOSCAN_ON));
}

QTEST_GUILESS_MAIN(TstOdbcAttributes)
#include "tst_odbc_attributes.moc"

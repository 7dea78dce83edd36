// What a column can store, by its description.

#include "odbc/ColumnRoom.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using odbc::ColumnRoom;

class TstColumnRoom : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void numbers_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("number");
        QTest::addColumn<bool>("held");
        const auto row = [](const char* name, int type, int size, int decimals, const QString& number,
                            bool held) {
            QTest::addRow("%s %s", name, qPrintable(number)) << type << size << decimals << number << held;
        };
        row("DECIMAL(5,2)", SQL_DECIMAL, 5, 2, u"999.99"_s, true);
        row("DECIMAL(5,2)", SQL_DECIMAL, 5, 2, u"-999.99"_s, true);
        row("DECIMAL(5,2)", SQL_DECIMAL, 5, 2, u"1000"_s, false);
        row("DECIMAL(5,2)", SQL_DECIMAL, 5, 2, u"-1000"_s, false);
        row("DECIMAL(5,2)", SQL_DECIMAL, 5, 2, u"1.234"_s, false);
        row("NUMERIC(2,2)", SQL_NUMERIC, 2, 2, u"0.99"_s, true);
        row("NUMERIC(2,2)", SQL_NUMERIC, 2, 2, u"1"_s, false);
        row("DECIMAL(30,4)", SQL_DECIMAL, 30, 4, u"900000000000000.0001"_s, true);
        row("DECIMAL(30,10)", SQL_DECIMAL, 30, 10, u"0.0001"_s, true);
        row("TINYINT", SQL_TINYINT, 3, 0, u"127"_s, true);
        row("TINYINT", SQL_TINYINT, 3, 0, u"128"_s, false);
        row("TINYINT", SQL_TINYINT, 3, 0, u"-128"_s, true);
        row("TINYINT", SQL_TINYINT, 3, 0, u"1.5"_s, false);
        row("SMALLINT", SQL_SMALLINT, 5, 0, u"32767"_s, true);
        row("SMALLINT", SQL_SMALLINT, 5, 0, u"32768"_s, false);
        row("INT", SQL_INTEGER, 10, 0, u"2147483647"_s, true);
        row("INT", SQL_INTEGER, 10, 0, u"2147483648"_s, false);
        row("BIGINT", SQL_BIGINT, 19, 0, u"900000000000000"_s, true);
        row("FLOAT", SQL_REAL, 7, 0, u"12.3456"_s, true);
        row("FLOAT", SQL_REAL, 7, 0, u"100"_s, false);
        row("DOUBLE", SQL_DOUBLE, 15, 0, u"99999999999.9999"_s, true);
        row("DOUBLE", SQL_DOUBLE, 15, 0, u"100000000000"_s, false);
        row("VARCHAR", SQL_VARCHAR, 30, 0, u"1"_s, false);
        row("unknown", SQL_UNKNOWN_TYPE, 30, 2, u"1"_s, false);
    }

    void numbers() {
        QFETCH(int, type);
        QFETCH(int, size);
        QFETCH(int, decimals);
        QFETCH(QString, number);
        const ColumnRoom room(static_cast<SQLSMALLINT>(type), static_cast<SQLULEN>(size),
                              static_cast<SQLSMALLINT>(decimals));
        QTEST(room.holds(Dinheiro::dePonto(number)), "held");
    }

    void texts() {
        for (const int type :
             {SQL_CHAR, SQL_VARCHAR, SQL_LONGVARCHAR, SQL_WCHAR, SQL_WVARCHAR, SQL_WLONGVARCHAR}) {
            const ColumnRoom room(static_cast<SQLSMALLINT>(type), 6, 0);
            QVERIFY(room.holds(u"CARTÃO"));
            QVERIFY(!room.holds(u"CARTÕES"));
            QVERIFY(room.holds(u""));
        }
        QVERIFY(!ColumnRoom(SQL_INTEGER, 10, 0).holds(u"1"));
    }

    void nothingIsKnownAtFirst() {
        QVERIFY(!ColumnRoom().holds(Dinheiro()));
        QVERIFY(!ColumnRoom().holds(u""));
    }
};

QTEST_APPLESS_MAIN(TstColumnRoom)
#include "tst_column_room.moc"

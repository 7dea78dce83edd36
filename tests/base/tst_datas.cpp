#include "base/Clock.h"
#include "base/Datas.h"

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// Dates on the screen and in SQL, and the clock.
class TstDatas : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void clockIsTheMachinesUntilFixed();
    void formsForSqlAndScreen_data();
    void formsForSqlAndScreen();
    void dateBeyondTheDatabaseHasNoText();
    void dateOfAScreenText_data();
    void dateOfAScreenText();
    void sqlTextOfAValue_data();
    void sqlTextOfAValue();
};

void TstDatas::init() {
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
}

void TstDatas::cleanup() {
    QLocale::setDefault(QLocale::system());
    clock::fix({});
}

void TstDatas::clockIsTheMachinesUntilFixed() {
    const QDateTime before = QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch());
    QVERIFY(clock::now() >= before);
    QVERIFY(clock::now() <= QDateTime::currentDateTime());

    const QDateTime fixed(QDate(2024, 2, 29), QTime(23, 59, 59));
    clock::fix(fixed);
    QCOMPARE(clock::now(), fixed);
    QCOMPARE(clock::today(), QDate(2024, 2, 29));
    clock::fix({});
    QVERIFY(clock::now() >= before);
}

void TstDatas::formsForSqlAndScreen_data() {
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("screen");
    QTest::newRow("ordinary") << QDate(2024, 11, 5) << u"2024-11-05"_s << u"05/11/2024"_s;
    QTest::newRow("leap day") << QDate(2024, 2, 29) << u"2024-02-29"_s << u"29/02/2024"_s;
    QTest::newRow("no date at all") << QDate(1901, 1, 1) << u"1901-01-01"_s << u"01/01/1901"_s;
    QTest::newRow("last") << QDate(9999, 12, 31) << u"9999-12-31"_s << u"31/12/9999"_s;
}

void TstDatas::formsForSqlAndScreen() {
    QFETCH(QDate, date);
    QFETCH(QString, sql);
    QFETCH(QString, screen);
    QCOMPARE(TextoSQL(date), sql);
    QCOMPARE(TextoTela(date), screen);
    QCOMPARE(DataDaTela(screen), date);
}

void TstDatas::dateBeyondTheDatabaseHasNoText() {
    QCOMPARE(TextoSQL(QDate()), QString());
    QCOMPARE(TextoSQL(QDate(1, 1, 1)), u"0001-01-01"_s);
    QCOMPARE(TextoSQL(QDate(9999, 12, 31)), u"9999-12-31"_s);
    QCOMPARE(TextoSQL(QDate(10000, 1, 1)), QString());
    QCOMPARE(TextoSQL(QDate(-1, 12, 31)), QString());
}

void TstDatas::dateOfAScreenText_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("ordinary") << u"05/11/2024"_s << QDate(2024, 11, 5);
    QTest::newRow("leap day") << u"29/02/2024"_s << QDate(2024, 2, 29);
    QTest::newRow("no such leap day") << u"29/02/2023"_s << QDate();
    QTest::newRow("no such day") << u"31/04/2024"_s << QDate();
    QTest::newRow("day zero") << u"00/04/2024"_s << QDate();
    QTest::newRow("month thirteen") << u"01/13/2024"_s << QDate();
    QTest::newRow("blank mask") << u"  /  /    "_s << QDate();
    QTest::newRow("mask with placeholders") << u"__/__/____"_s << QDate();
    QTest::newRow("half typed") << u"05/11/20"_s << QDate();
    QTest::newRow("empty") << QString() << QDate();
    QTest::newRow("SQL form") << u"2024-11-05"_s << QDate();
    QTest::newRow("something after it") << u"05/11/2024 x"_s << QDate();
    QTest::newRow("letters") << u"ab/cd/efgh"_s << QDate();
}

void TstDatas::dateOfAScreenText() {
    QFETCH(QString, text);
    QFETCH(QDate, date);
    QCOMPARE(DataDaTela(text), date);
}

void TstDatas::sqlTextOfAValue_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("NULL") << QVariant() << u"1901-01-01"_s;
    QTest::newRow("empty text") << QVariant(u""_s) << u"1901-01-01"_s;
    QTest::newRow("null text") << QVariant(QString()) << u"1901-01-01"_s;
    QTest::newRow("abc") << QVariant(u"abc"_s) << u"1901-01-01"_s;
    QTest::newRow("date") << QVariant(QDate(2024, 2, 29)) << u"2024-02-29"_s;
    QTest::newRow("date and time") << QVariant(QDateTime(QDate(2024, 2, 29), QTime(23, 59)))
                                   << u"2024-02-29"_s;
    QTest::newRow("invalid date") << QVariant(QDate()) << u"1901-01-01"_s;
    QTest::newRow("screen text") << QVariant(u"29/02/2024"_s) << u"2024-02-29"_s;
    QTest::newRow("screen text of no day") << QVariant(u"30/02/2024"_s) << u"1901-01-01"_s;
    QTest::newRow("SQL text") << QVariant(u"2024-02-29"_s) << u"2024-02-29"_s;
    QTest::newRow("zero date") << QVariant(u"0000-00-00"_s) << u"1901-01-01"_s;
    QTest::newRow("number") << QVariant(20240229) << u"1901-01-01"_s;
}

void TstDatas::sqlTextOfAValue() {
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(DataSQL(value), text);
}

QTEST_GUILESS_MAIN(TstDatas)
#include "tst_datas.moc"

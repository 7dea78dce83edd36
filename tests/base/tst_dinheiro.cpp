#include "base/Dinheiro.h"
#include "support/ErrorOf.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

Dinheiro d(const QString& text) {
    return Dinheiro::dePonto(text);
}

} // namespace

/// Four-place amounts: reading, writing, arithmetic with its rounding and its limits.
class TstDinheiro : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void readsADatabaseDecimal_data();
    void readsADatabaseDecimal();
    void refusesWhatIsNoDecimal_data();
    void refusesWhatIsNoDecimal();
    void refusesWhatIsTooLarge_data();
    void refusesWhatIsTooLarge();
    void writesThePointForm_data();
    void writesThePointForm();
    void addsAndSubtracts();
    void multipliesRoundingHalvesToEven_data();
    void multipliesRoundingHalvesToEven();
    void proportionRoundsHalvesAwayFromZero_data();
    void proportionRoundsHalvesAwayFromZero();
    void dividesRoundingHalvesToEven_data();
    void dividesRoundingHalvesToEven();
    void divisionByZeroIsAnError();
    void overflowIsAnError();
    void comparesAndTellsItsSign();
    void wholePartIsCut();
};

void TstDinheiro::readsADatabaseDecimal_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("value");
    const auto addCase = [](const QString& text, qint64 value) {
        QTest::newRow(qPrintable(text)) << text << value;
    };
    addCase(u"0"_s, 0);
    addCase(u"0.00"_s, 0);
    addCase(u"-0.00"_s, 0);
    addCase(u""_s, 0);
    addCase(u"  "_s, 0);
    addCase(u"1"_s, 10000);
    addCase(u"1234.50"_s, 12345000);
    addCase(u"-0.05"_s, -500);
    addCase(u"+2.5"_s, 25000);
    addCase(u" 12.5 "_s, 125000);
    addCase(u".5"_s, 5000);
    addCase(u"5."_s, 50000);
    addCase(u"0.0001"_s, 1);
    addCase(u"0.00005"_s, 0);
    addCase(u"0.00015"_s, 2);
    addCase(u"-0.00015"_s, -2);
    addCase(u"0.00025"_s, 2);
    addCase(u"0.000050000000000000000000000000000000000000000000001"_s, 1);
    addCase(u"0.000049999999999999999999999999999999999999999999999"_s, 0);
    addCase(u"000000000000000000000000000000000000000000000012.3400"_s, 123400);
    addCase(u"5.55e-17"_s, 0);
    addCase(u"-5.55E-17"_s, 0);
    addCase(u"1e5"_s, 1000000000);
    addCase(u"1.5e+3"_s, 15000000);
    addCase(u".5e1"_s, 50000);
    addCase(u" 2.50e0 "_s, 25000);
    addCase(u"1.5e-4"_s, 2);
    addCase(u"2.5e-4"_s, 2);
    addCase(u"5e-5"_s, 0);
    addCase(u"5.0000000000000001e-5"_s, 1);
    addCase(u"-1.5e-4"_s, -2);
    addCase(u"1e-999999999999"_s, 0);
    addCase(u"922337203685477.5807"_s, largest);
    addCase(u"-922337203685477.5808"_s, smallest);
}

void TstDinheiro::readsADatabaseDecimal() {
    QFETCH(QString, text);
    QFETCH(qint64, value);
    QCOMPARE(d(text).decimosMilesimos(), value);
}

void TstDinheiro::refusesWhatIsNoDecimal_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"abc", "1,5", "1.2.3", "-", "+", ".", "1e", "e5", "1e+", "1e5x", "1e1.5",
                             "1e5e5", ".e1", "12 un", "--1", "1-", "0x1F"})
        QTest::newRow(text) << QString::fromLatin1(text);
    QTest::newRow("digits of another script") << u"١٢"_s;
}

void TstDinheiro::refusesWhatIsNoDecimal() {
    QFETCH(QString, text);
    const auto error = errorOf([&] { d(text); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::TypeMismatch));
    QVERIFY(error->text().contains(text));
}

void TstDinheiro::refusesWhatIsTooLarge_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("one too many") << u"922337203685477.5808"_s;
    QTest::newRow("one too few") << u"-922337203685477.5809"_s;
    QTest::newRow("65 digits") << QString(65, u'9');
    QTest::newRow("greatest double") << u"1.7976931348623157e+308"_s;
    QTest::newRow("exponent without end") << u"1e99999999999999999999"_s;
    QTest::newRow("65 digits with places") << QString(35, u'9') + u'.' + QString(30, u'9');
}

void TstDinheiro::refusesWhatIsTooLarge() {
    QFETCH(QString, text);
    QCOMPARE(errorNumberOf([&] { d(text); }), number(ErrorNumber::Overflow));
}

void TstDinheiro::writesThePointForm_data() {
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << Q_INT64_C(0) << u" 0"_s;
    QTest::newRow("whole") << Q_INT64_C(120000) << u" 12"_s;
    QTest::newRow("one place") << Q_INT64_C(125000) << u" 12.5"_s;
    QTest::newRow("negative has no blank") << Q_INT64_C(-125000) << u"-12.5"_s;
    QTest::newRow("below one") << Q_INT64_C(5000) << u" 0.5"_s;
    QTest::newRow("negative below one") << Q_INT64_C(-1) << u"-0.0001"_s;
    QTest::newRow("four places") << Q_INT64_C(12345678) << u" 1234.5678"_s;
    QTest::newRow("zeros inside stay") << Q_INT64_C(10010) << u" 1.001"_s;
    QTest::newRow("no thousands separator") << Q_INT64_C(12345678900000) << u" 1234567890"_s;
    QTest::newRow("greatest") << largest << u" 922337203685477.5807"_s;
    QTest::newRow("least") << smallest << u"-922337203685477.5808"_s;
}

void TstDinheiro::writesThePointForm() {
    QFETCH(qint64, value);
    QFETCH(QString, text);
    QCOMPARE(Dinheiro::deDecimosMilesimos(value).ponto(), text);
    QCOMPARE(d(text).decimosMilesimos(), value);
}

void TstDinheiro::addsAndSubtracts() {
    QCOMPARE(d(u"0.1"_s) + d(u"0.2"_s), d(u"0.3"_s));
    QCOMPARE(d(u"10.00"_s) - d(u"10.01"_s), d(u"-0.01"_s));
    QCOMPARE(-d(u"1.5"_s), d(u"-1.5"_s));
    Dinheiro soma;
    for (int i = 0; i < 1000; ++i)
        soma += d(u"0.01"_s);
    QCOMPARE(soma, Dinheiro(10));
}

void TstDinheiro::multipliesRoundingHalvesToEven_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("produto");
    QTest::newRow("whole") << u"3"_s << u"4"_s << u"12"_s;
    QTest::newRow("quantity by price") << u"1.5"_s << u"10.05"_s << u"15.075"_s;
    QTest::newRow("half to the even zero") << u"0.5"_s << u"0.0001"_s << u"0"_s;
    QTest::newRow("half to the even two") << u"1.5"_s << u"0.0001"_s << u"0.0002"_s;
    QTest::newRow("negative half") << u"-1.5"_s << u"0.0001"_s << u"-0.0002"_s;
    QTest::newRow("above the half") << u"0.5001"_s << u"0.0001"_s << u"0.0001"_s;
    QTest::newRow("by nothing") << u"922337203685477.5807"_s << u"0"_s << u"0"_s;
    QTest::newRow("large") << u"30000000"_s << u"30000000"_s << u"900000000000000"_s;
}

void TstDinheiro::multipliesRoundingHalvesToEven() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QString, produto);
    QCOMPARE(d(a) * d(b), d(produto));
    QCOMPARE(d(b) * d(a), d(produto));
}

void TstDinheiro::proportionRoundsHalvesAwayFromZero_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("c");
    QTest::addColumn<int>("places");
    QTest::addColumn<QString>("proportion");
    QTest::newRow("half up") << u"1"_s << u"1"_s << u"200"_s << 2 << u"0.01"_s;
    QTest::newRow("half of an even cent") << u"5"_s << u"5"_s << u"1000"_s << 2 << u"0.03"_s;
    QTest::newRow("negative half") << u"-1"_s << u"1"_s << u"200"_s << 2 << u"-0.01"_s;
    QTest::newRow("negative divisor") << u"1"_s << u"1"_s << u"-200"_s << 2 << u"-0.01"_s;
    QTest::newRow("below the half") << u"1"_s << u"1"_s << u"201"_s << 2 << u"0"_s;
    QTest::newRow("three places") << u"100"_s << u"1"_s << u"3"_s << 3 << u"33.333"_s;
    QTest::newRow("half of a thousandth") << u"1"_s << u"1"_s << u"2000"_s << 3 << u"0.001"_s;
}

void TstDinheiro::proportionRoundsHalvesAwayFromZero() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QString, c);
    QFETCH(int, places);
    QFETCH(QString, proportion);
    QCOMPARE(Proporcao(d(a), d(b), d(c), places), d(proportion));
}

void TstDinheiro::dividesRoundingHalvesToEven_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("quotient");
    QTest::newRow("whole") << u"12"_s << u"4"_s << u"3"_s;
    QTest::newRow("third") << u"1"_s << u"3"_s << u"0.3333"_s;
    QTest::newRow("two thirds") << u"2"_s << u"3"_s << u"0.6667"_s;
    QTest::newRow("negative two thirds") << u"2"_s << u"-3"_s << u"-0.6667"_s;
    QTest::newRow("half to the even zero") << u"0.0001"_s << u"2"_s << u"0"_s;
    QTest::newRow("half to the even two") << u"0.0003"_s << u"2"_s << u"0.0002"_s;
    QTest::newRow("both negative") << u"-1.5"_s << u"-0.5"_s << u"3"_s;
}

void TstDinheiro::dividesRoundingHalvesToEven() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QString, quotient);
    QCOMPARE(d(a) / d(b), d(quotient));
}

void TstDinheiro::divisionByZeroIsAnError() {
    const auto error = errorOf([] { Dinheiro(1) / Dinheiro(); });
    QVERIFY(error);
    QCOMPARE(error->number(), number(ErrorNumber::DivisionByZero));
    QCOMPARE(error->text(), u"Divisão por zero."_s);
}

void TstDinheiro::overflowIsAnError() {
    const Dinheiro ceiling = Dinheiro::deDecimosMilesimos(largest);
    const Dinheiro floor = Dinheiro::deDecimosMilesimos(smallest);
    const Dinheiro little = Dinheiro::deDecimosMilesimos(1);
    const int overflow = number(ErrorNumber::Overflow);
    QCOMPARE(errorNumberOf([&] { ceiling + little; }), overflow);
    QCOMPARE(errorNumberOf([&] { floor - little; }), overflow);
    QCOMPARE(errorNumberOf([&] { -floor; }), overflow);
    QCOMPARE(errorNumberOf([&] { ceiling* Dinheiro(2); }), overflow);
    QCOMPARE(errorNumberOf([&] { ceiling / little; }), overflow);
    QCOMPARE(errorNumberOf([&] { floor / Dinheiro(-1); }), overflow);
    QCOMPARE(errorNumberOf([&] { Dinheiro(Q_INT64_C(922337203685478)); }), overflow);
    QCOMPARE(errorNumberOf([&] { Dinheiro(Q_INT64_C(-922337203685478)); }), overflow);
    QCOMPARE(Dinheiro(Q_INT64_C(922337203685477)).ponto(), u" 922337203685477"_s);
}

void TstDinheiro::comparesAndTellsItsSign() {
    QVERIFY(d(u"1.50"_s) == d(u"1.5"_s));
    QVERIFY(d(u"-2"_s) < d(u"-1.9999"_s));
    QVERIFY(d(u"0.0001"_s) > Dinheiro());
    QVERIFY(d(u"-0.0001"_s).negativo());
    QVERIFY(!Dinheiro().negativo());
    QVERIFY(Dinheiro().zero());
    QVERIFY(!d(u"0.0001"_s).zero());
}

void TstDinheiro::wholePartIsCut() {
    QCOMPARE(d(u"12.9999"_s).inteiro(), Q_INT64_C(12));
    QCOMPARE(d(u"-12.9999"_s).inteiro(), Q_INT64_C(-12));
    QCOMPARE(d(u"-0.5"_s).inteiro(), Q_INT64_C(0));
}

QTEST_GUILESS_MAIN(TstDinheiro)
#include "tst_dinheiro.moc"

#include "base/Numeros.h"
#include "support/ErrorOf.h"

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

Dinheiro d(const QString& text) {
    return Dinheiro::dePonto(text);
}

} // namespace

/// Numbers as the operator writes and reads them.
class TstNumeros : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void textsAndTheirNumbers_data();
    void textsAndTheirNumbers();
    void valueTooLargeIsAnError();
    void wholeValueOfAText_data();
    void wholeValueOfAText();
    void wholeValueTooLargeIsAnError_data();
    void wholeValueTooLargeIsAnError();
    void masks_data();
    void masks();
    void moneyOnTheScreen_data();
    void moneyOnTheScreen();
    void quantityOnTheScreen_data();
    void quantityOnTheScreen();
    void screenFormIsReadBack();
};

// The machine's own way of writing numbers must not show through anywhere here.
void TstNumeros::init() {
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
}

void TstNumeros::cleanup() {
    QLocale::setDefault(QLocale::system());
}

void TstNumeros::textsAndTheirNumbers_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isNumber");
    QTest::addColumn<QString>("value");
    const auto addCase = [](const QString& text, bool isNumber, const QString& value) {
        QTest::newRow(text.isEmpty() ? "(empty)" : qPrintable(text)) << text << isNumber << value;
    };
    addCase(u""_s, false, u"0"_s);
    addCase(u" "_s, false, u"0"_s);
    addCase(u"0"_s, true, u"0"_s);
    addCase(u"7"_s, true, u"7"_s);
    addCase(u"007"_s, true, u"7"_s);
    addCase(u" 7 "_s, true, u"7"_s);
    addCase(u"-7"_s, true, u"-7"_s);
    addCase(u"+7"_s, true, u"7"_s);
    addCase(u" -3,25 "_s, true, u"-3.25"_s);
    addCase(u"2,5"_s, true, u"2.5"_s);
    addCase(u"2,50"_s, true, u"2.5"_s);
    addCase(u",5"_s, true, u"0.5"_s);
    addCase(u"-,5"_s, true, u"-0.5"_s);
    addCase(u"7,"_s, true, u"7"_s);
    addCase(u"-7,"_s, true, u"-7"_s);
    addCase(u"1.234"_s, true, u"1234"_s);
    addCase(u"1.234,5"_s, true, u"1234.5"_s);
    addCase(u"12.345.678,90"_s, true, u"12345678.9"_s);
    addCase(u"001.234"_s, true, u"1234"_s);
    addCase(u"1234567"_s, true, u"1234567"_s);
    addCase(u"0,0001"_s, true, u"0.0001"_s);
    addCase(u"0,00005"_s, true, u"0"_s);
    addCase(u"0,00015"_s, true, u"0.0002"_s);
    addCase(u"922337203685477,5807"_s, true, u"922337203685477.5807"_s);
    addCase(u"-"_s, false, u"0"_s);
    addCase(u"+"_s, false, u"0"_s);
    addCase(u","_s, false, u"0"_s);
    addCase(u"-,"_s, false, u"0"_s);
    addCase(u"."_s, false, u"0"_s);
    addCase(u".5"_s, false, u"0"_s);
    addCase(u"--1"_s, false, u"0"_s);
    addCase(u"- 3"_s, false, u"0"_s);
    addCase(u"1-"_s, false, u"1"_s);
    addCase(u"1.5"_s, false, u"1"_s);
    addCase(u"1.23"_s, false, u"1"_s);
    addCase(u"1.2345"_s, false, u"1"_s);
    addCase(u"1234.567"_s, false, u"1234"_s);
    addCase(u"1.234.56"_s, false, u"1234"_s);
    addCase(u"1.234.5678"_s, false, u"1234"_s);
    addCase(u"1,2,3"_s, false, u"1.2"_s);
    addCase(u"1,234.5"_s, false, u"1.234"_s);
    addCase(u"1 234"_s, false, u"1"_s);
    addCase(u"1e5"_s, false, u"1"_s);
    addCase(u"0x10"_s, false, u"0"_s);
    addCase(u"12 un"_s, false, u"12"_s);
    addCase(u"30 dias"_s, false, u"30"_s);
    addCase(u"2,5%"_s, false, u"2.5"_s);
    addCase(u"003>>"_s, false, u"3"_s);
    addCase(u"1 - VAREJO"_s, false, u"1"_s);
    addCase(u"abc"_s, false, u"0"_s);
    addCase(u"R$ 5"_s, false, u"0"_s);
    addCase(u"½"_s, false, u"0"_s);
    addCase(u"١٢"_s, false, u"0"_s);
    addCase(u"１２"_s, false, u"0"_s);
}

void TstNumeros::textsAndTheirNumbers() {
    QFETCH(QString, text);
    QFETCH(bool, isNumber);
    QFETCH(QString, value);
    QCOMPARE(EhNumero(text), isNumber);
    QCOMPARE(ValorNumerico(text), d(value));
}

void TstNumeros::valueTooLargeIsAnError() {
    const int overflow = number(ErrorNumber::Overflow);
    QCOMPARE(errorNumberOf([] { ValorNumerico(u"922337203685477,5808"); }), overflow);
    QCOMPARE(errorNumberOf([] { ValorNumerico(u"-9.999.999.999.999.999"); }), overflow);
}

void TstNumeros::wholeValueOfAText_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("whole") << u"30"_s << 30;
    QTest::newRow("cut") << u"30,9"_s << 30;
    QTest::newRow("negative cut") << u"-30,9"_s << -30;
    QTest::newRow("thousands") << u"1.000"_s << 1000;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("greatest") << u"2147483647"_s << std::numeric_limits<qint32>::max();
    QTest::newRow("least") << u"-2147483648,9"_s << std::numeric_limits<qint32>::min();
}

void TstNumeros::wholeValueOfAText() {
    QFETCH(QString, text);
    QFETCH(int, value);
    QCOMPARE(ValorInteiro(text), value);
}

void TstNumeros::wholeValueTooLargeIsAnError_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"2147483648", "-2147483649", "99999999999999999999"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TstNumeros::wholeValueTooLargeIsAnError() {
    QFETCH(QString, text);
    QCOMPARE(errorNumberOf([&] { ValorInteiro(text); }), number(ErrorNumber::Overflow));
}

void TstNumeros::masks_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text");
    const auto addCase = [](const QString& mask, const QString& value, const QString& text) {
        QTest::addRow("%s by %s", qPrintable(value), qPrintable(mask)) << value << mask << text;
    };
    addCase(u"###,##0.00"_s, u"0"_s, u"0,00"_s);
    addCase(u"###,##0.00"_s, u"0.5"_s, u"0,50"_s);
    addCase(u"###,##0.00"_s, u"1234567.8"_s, u"1.234.567,80"_s);
    addCase(u"###,##0.00"_s, u"-1234.56"_s, u"-1.234,56"_s);
    addCase(u"###,##0.00"_s, u"0.005"_s, u"0,01"_s);
    addCase(u"###,##0.00"_s, u"0.015"_s, u"0,02"_s);
    addCase(u"###,##0.00"_s, u"0.025"_s, u"0,03"_s);
    addCase(u"###,##0.00"_s, u"-0.005"_s, u"-0,01"_s);
    addCase(u"###,##0.00"_s, u"0.0049"_s, u"0,00"_s);
    addCase(u"###,##0.00"_s, u"-0.0049"_s, u"0,00"_s);
    addCase(u"###,##0.00"_s, u"999.995"_s, u"1.000,00"_s);
    addCase(u"###,##0.00"_s, u"922337203685477.5807"_s, u"922.337.203.685.477,58"_s);
    addCase(u"###,##0.00"_s, u"-922337203685477.5808"_s, u"-922.337.203.685.477,58"_s);
    addCase(u"###,##0.000"_s, u"1.5"_s, u"1,500"_s);
    addCase(u"###,##0.000"_s, u"1.2345"_s, u"1,235"_s);
    addCase(u"###,##0.0##"_s, u"1"_s, u"1,0"_s);
    addCase(u"###,##0.0##"_s, u"1.25"_s, u"1,25"_s);
    addCase(u"###,##0.0##"_s, u"1234.1239"_s, u"1.234,124"_s);
    addCase(u"###0.0#"_s, u"1234"_s, u"1234,0"_s);
    addCase(u"###0.0#"_s, u"1234.56"_s, u"1234,56"_s);
    addCase(u"###0.0#"_s, u"1234.567"_s, u"1234,57"_s);
    addCase(u"##0.0"_s, u"3.25"_s, u"3,3"_s);
    addCase(u"##0.0"_s, u"1234.5"_s, u"1234,5"_s);
    addCase(u"##0.00"_s, u"3"_s, u"3,00"_s);
    addCase(u"##0.000"_s, u"3"_s, u"3,000"_s);
    addCase(u"###,###,##0"_s, u"1234567.5"_s, u"1.234.568"_s);
    addCase(u"###,###,##0"_s, u"0"_s, u"0"_s);
    addCase(u"#000,000"_s, u"7"_s, u"000.007"_s);
    addCase(u"#000,000"_s, u"12345"_s, u"012.345"_s);
    addCase(u"#000,000"_s, u"1234567"_s, u"1.234.567"_s);
    addCase(u"000"_s, u"7"_s, u"007"_s);
    addCase(u"000"_s, u"1234"_s, u"1234"_s);
    addCase(u"0000000"_s, u"123"_s, u"0000123"_s);
    addCase(u"0000000"_s, u"12345678"_s, u"12345678"_s);
    addCase(u"0000000"_s, u"-5"_s, u"-0000005"_s);
    addCase(u"000000000000"_s, u"789"_s, u"000000000789"_s);
}

void TstNumeros::masks() {
    QFETCH(QString, value);
    QFETCH(QString, mask);
    QFETCH(QString, text);
    QCOMPARE(Formata(d(value), mask), text);
}

void TstNumeros::moneyOnTheScreen_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << u"0"_s << u"0,00"_s;
    QTest::newRow("cents") << u"0.07"_s << u"0,07"_s;
    QTest::newRow("ten million") << u"10000000"_s << u"10.000.000,00"_s;
    QTest::newRow("negative") << u"-1.5"_s << u"-1,50"_s;
}

void TstNumeros::moneyOnTheScreen() {
    QFETCH(QString, value);
    QFETCH(QString, text);
    QCOMPARE(FormataDinheiro(d(value)), text);
}

void TstNumeros::quantityOnTheScreen_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << u"0"_s << u"0"_s;
    QTest::newRow("whole") << u"12.000"_s << u"12"_s;
    QTest::newRow("with places") << u"1.5"_s << u"1,500"_s;
    QTest::newRow("whole thousands") << u"1000"_s << u"1.000"_s;
    QTest::newRow("thousands with places") << u"1000.125"_s << u"1.000,125"_s;
    QTest::newRow("negative") << u"-2"_s << u"-2"_s;
    QTest::newRow("rounded to whole") << u"1.9996"_s << u"2"_s;
}

void TstNumeros::quantityOnTheScreen() {
    QFETCH(QString, value);
    QFETCH(QString, text);
    QCOMPARE(FormataQuantidade(d(value)), text);
}

void TstNumeros::screenFormIsReadBack() {
    for (const QString& value : {u"0"_s, u"-0.01"_s, u"1234.56"_s, u"98765432.1"_s, u"-1000000"_s}) {
        const QString text = FormataDinheiro(d(value));
        QVERIFY2(EhNumero(text), qPrintable(text));
        QCOMPARE(ValorNumerico(text), d(value));
    }
}

QTEST_GUILESS_MAIN(TstNumeros)
#include "tst_numeros.moc"

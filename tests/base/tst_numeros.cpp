#include "base/Numeros.h"
#include "support/ErrorOf.h"

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

Dinheiro d(const QString& texto) {
    return Dinheiro::dePonto(texto);
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
    QTest::addColumn<QString>("texto");
    QTest::addColumn<bool>("ehNumero");
    QTest::addColumn<QString>("valor");
    const auto caso = [](const QString& texto, bool ehNumero, const QString& valor) {
        QTest::newRow(texto.isEmpty() ? "(empty)" : qPrintable(texto)) << texto << ehNumero << valor;
    };
    caso(u""_s, false, u"0"_s);
    caso(u" "_s, false, u"0"_s);
    caso(u"0"_s, true, u"0"_s);
    caso(u"7"_s, true, u"7"_s);
    caso(u"007"_s, true, u"7"_s);
    caso(u" 7 "_s, true, u"7"_s);
    caso(u"-7"_s, true, u"-7"_s);
    caso(u"+7"_s, true, u"7"_s);
    caso(u" -3,25 "_s, true, u"-3.25"_s);
    caso(u"2,5"_s, true, u"2.5"_s);
    caso(u"2,50"_s, true, u"2.5"_s);
    caso(u",5"_s, true, u"0.5"_s);
    caso(u"-,5"_s, true, u"-0.5"_s);
    caso(u"7,"_s, true, u"7"_s);
    caso(u"-7,"_s, true, u"-7"_s);
    caso(u"1.234"_s, true, u"1234"_s);
    caso(u"1.234,5"_s, true, u"1234.5"_s);
    caso(u"12.345.678,90"_s, true, u"12345678.9"_s);
    caso(u"001.234"_s, true, u"1234"_s);
    caso(u"1234567"_s, true, u"1234567"_s);
    caso(u"0,0001"_s, true, u"0.0001"_s);
    caso(u"0,00005"_s, true, u"0"_s);
    caso(u"0,00015"_s, true, u"0.0002"_s);
    caso(u"922337203685477,5807"_s, true, u"922337203685477.5807"_s);
    caso(u"-"_s, false, u"0"_s);
    caso(u"+"_s, false, u"0"_s);
    caso(u","_s, false, u"0"_s);
    caso(u"-,"_s, false, u"0"_s);
    caso(u"."_s, false, u"0"_s);
    caso(u".5"_s, false, u"0"_s);
    caso(u"--1"_s, false, u"0"_s);
    caso(u"- 3"_s, false, u"0"_s);
    caso(u"1-"_s, false, u"1"_s);
    caso(u"1.5"_s, false, u"1"_s);
    caso(u"1.23"_s, false, u"1"_s);
    caso(u"1.2345"_s, false, u"1"_s);
    caso(u"1234.567"_s, false, u"1234"_s);
    caso(u"1.234.56"_s, false, u"1234"_s);
    caso(u"1.234.5678"_s, false, u"1234"_s);
    caso(u"1,2,3"_s, false, u"1.2"_s);
    caso(u"1,234.5"_s, false, u"1.234"_s);
    caso(u"1 234"_s, false, u"1"_s);
    caso(u"1e5"_s, false, u"1"_s);
    caso(u"0x10"_s, false, u"0"_s);
    caso(u"12 un"_s, false, u"12"_s);
    caso(u"30 dias"_s, false, u"30"_s);
    caso(u"2,5%"_s, false, u"2.5"_s);
    caso(u"003>>"_s, false, u"3"_s);
    caso(u"1 - VAREJO"_s, false, u"1"_s);
    caso(u"abc"_s, false, u"0"_s);
    caso(u"R$ 5"_s, false, u"0"_s);
    caso(u"½"_s, false, u"0"_s);
    caso(u"١٢"_s, false, u"0"_s);
    caso(u"１２"_s, false, u"0"_s);
}

void TstNumeros::textsAndTheirNumbers() {
    QFETCH(QString, texto);
    QFETCH(bool, ehNumero);
    QFETCH(QString, valor);
    QCOMPARE(EhNumero(texto), ehNumero);
    QCOMPARE(ValorNumerico(texto), d(valor));
}

void TstNumeros::valueTooLargeIsAnError() {
    const int estouro = number(ErrorNumber::Overflow);
    QCOMPARE(errorNumberOf([] { ValorNumerico(u"922337203685477,5808"); }), estouro);
    QCOMPARE(errorNumberOf([] { ValorNumerico(u"-9.999.999.999.999.999"); }), estouro);
}

void TstNumeros::wholeValueOfAText_data() {
    QTest::addColumn<QString>("texto");
    QTest::addColumn<int>("valor");
    QTest::newRow("whole") << u"30"_s << 30;
    QTest::newRow("cut") << u"30,9"_s << 30;
    QTest::newRow("negative cut") << u"-30,9"_s << -30;
    QTest::newRow("thousands") << u"1.000"_s << 1000;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("greatest") << u"2147483647"_s << std::numeric_limits<qint32>::max();
    QTest::newRow("least") << u"-2147483648,9"_s << std::numeric_limits<qint32>::min();
}

void TstNumeros::wholeValueOfAText() {
    QFETCH(QString, texto);
    QFETCH(int, valor);
    QCOMPARE(ValorInteiro(texto), valor);
}

void TstNumeros::wholeValueTooLargeIsAnError_data() {
    QTest::addColumn<QString>("texto");
    for (const char* texto : {"2147483648", "-2147483649", "99999999999999999999"})
        QTest::newRow(texto) << QString::fromLatin1(texto);
}

void TstNumeros::wholeValueTooLargeIsAnError() {
    QFETCH(QString, texto);
    QCOMPARE(errorNumberOf([&] { ValorInteiro(texto); }), number(ErrorNumber::Overflow));
}

void TstNumeros::masks_data() {
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("mascara");
    QTest::addColumn<QString>("texto");
    const auto caso = [](const QString& mascara, const QString& valor, const QString& texto) {
        QTest::addRow("%s by %s", qPrintable(valor), qPrintable(mascara)) << valor << mascara << texto;
    };
    caso(u"###,##0.00"_s, u"0"_s, u"0,00"_s);
    caso(u"###,##0.00"_s, u"0.5"_s, u"0,50"_s);
    caso(u"###,##0.00"_s, u"1234567.8"_s, u"1.234.567,80"_s);
    caso(u"###,##0.00"_s, u"-1234.56"_s, u"-1.234,56"_s);
    caso(u"###,##0.00"_s, u"0.005"_s, u"0,01"_s);
    caso(u"###,##0.00"_s, u"0.015"_s, u"0,02"_s);
    caso(u"###,##0.00"_s, u"0.025"_s, u"0,03"_s);
    caso(u"###,##0.00"_s, u"-0.005"_s, u"-0,01"_s);
    caso(u"###,##0.00"_s, u"0.0049"_s, u"0,00"_s);
    caso(u"###,##0.00"_s, u"-0.0049"_s, u"0,00"_s);
    caso(u"###,##0.00"_s, u"999.995"_s, u"1.000,00"_s);
    caso(u"###,##0.00"_s, u"922337203685477.5807"_s, u"922.337.203.685.477,58"_s);
    caso(u"###,##0.00"_s, u"-922337203685477.5808"_s, u"-922.337.203.685.477,58"_s);
    caso(u"###,##0.000"_s, u"1.5"_s, u"1,500"_s);
    caso(u"###,##0.000"_s, u"1.2345"_s, u"1,235"_s);
    caso(u"###,##0.0##"_s, u"1"_s, u"1,0"_s);
    caso(u"###,##0.0##"_s, u"1.25"_s, u"1,25"_s);
    caso(u"###,##0.0##"_s, u"1234.1239"_s, u"1.234,124"_s);
    caso(u"###0.0#"_s, u"1234"_s, u"1234,0"_s);
    caso(u"###0.0#"_s, u"1234.56"_s, u"1234,56"_s);
    caso(u"###0.0#"_s, u"1234.567"_s, u"1234,57"_s);
    caso(u"##0.0"_s, u"3.25"_s, u"3,3"_s);
    caso(u"##0.0"_s, u"1234.5"_s, u"1234,5"_s);
    caso(u"##0.00"_s, u"3"_s, u"3,00"_s);
    caso(u"##0.000"_s, u"3"_s, u"3,000"_s);
    caso(u"###,###,##0"_s, u"1234567.5"_s, u"1.234.568"_s);
    caso(u"###,###,##0"_s, u"0"_s, u"0"_s);
    caso(u"#000,000"_s, u"7"_s, u"000.007"_s);
    caso(u"#000,000"_s, u"12345"_s, u"012.345"_s);
    caso(u"#000,000"_s, u"1234567"_s, u"1.234.567"_s);
    caso(u"000"_s, u"7"_s, u"007"_s);
    caso(u"000"_s, u"1234"_s, u"1234"_s);
    caso(u"0000000"_s, u"123"_s, u"0000123"_s);
    caso(u"0000000"_s, u"12345678"_s, u"12345678"_s);
    caso(u"0000000"_s, u"-5"_s, u"-0000005"_s);
    caso(u"000000000000"_s, u"789"_s, u"000000000789"_s);
}

void TstNumeros::masks() {
    QFETCH(QString, valor);
    QFETCH(QString, mascara);
    QFETCH(QString, texto);
    QCOMPARE(Formata(d(valor), mascara), texto);
}

void TstNumeros::moneyOnTheScreen_data() {
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("texto");
    QTest::newRow("zero") << u"0"_s << u"0,00"_s;
    QTest::newRow("cents") << u"0.07"_s << u"0,07"_s;
    QTest::newRow("ten million") << u"10000000"_s << u"10.000.000,00"_s;
    QTest::newRow("negative") << u"-1.5"_s << u"-1,50"_s;
}

void TstNumeros::moneyOnTheScreen() {
    QFETCH(QString, valor);
    QFETCH(QString, texto);
    QCOMPARE(FormataDinheiro(d(valor)), texto);
}

void TstNumeros::quantityOnTheScreen_data() {
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("texto");
    QTest::newRow("zero") << u"0"_s << u"0"_s;
    QTest::newRow("whole") << u"12.000"_s << u"12"_s;
    QTest::newRow("with places") << u"1.5"_s << u"1,500"_s;
    QTest::newRow("whole thousands") << u"1000"_s << u"1.000"_s;
    QTest::newRow("thousands with places") << u"1000.125"_s << u"1.000,125"_s;
    QTest::newRow("negative") << u"-2"_s << u"-2"_s;
    QTest::newRow("rounded to whole") << u"1.9996"_s << u"2"_s;
}

void TstNumeros::quantityOnTheScreen() {
    QFETCH(QString, valor);
    QFETCH(QString, texto);
    QCOMPARE(FormataQuantidade(d(valor)), texto);
}

void TstNumeros::screenFormIsReadBack() {
    for (const QString& valor : {u"0"_s, u"-0.01"_s, u"1234.56"_s, u"98765432.1"_s, u"-1000000"_s}) {
        const QString texto = FormataDinheiro(d(valor));
        QVERIFY2(EhNumero(texto), qPrintable(texto));
        QCOMPARE(ValorNumerico(texto), d(valor));
    }
}

QTEST_GUILESS_MAIN(TstNumeros)
#include "tst_numeros.moc"

#include "base/Narrow.h"
#include "support/ErrorOf.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// Whole numbers into smaller types: the last ones that fit, the first ones that do not, and how that is
/// told.
class TstNarrow : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void whatFitsIsKept();
    void whatDoesNotFitIsAnError();
    void theErrorSaysWhat();
};

void TstNarrow::whatFitsIsKept() {
    const QString what = u"%1"_s;
    QCOMPARE(narrow<qint16>(32767, what), qint16(32767));
    QCOMPARE(narrow<qint16>(-32768, what), qint16(-32768));
    QCOMPARE(narrow<qint32>(2147483647, what), 2147483647);
    QCOMPARE(narrow<qint32>(-2147483648LL, what), std::numeric_limits<qint32>::min());
    QCOMPARE(narrow<qint64>(std::numeric_limits<qint64>::min(), what), std::numeric_limits<qint64>::min());
}

void TstNarrow::whatDoesNotFitIsAnError() {
    const QString what = u"%1"_s;
    const int overflow = number(ErrorNumber::Overflow);
    QCOMPARE(errorNumberOf([&] { narrow<qint16>(32768, what); }), overflow);
    QCOMPARE(errorNumberOf([&] { narrow<qint16>(-32769, what); }), overflow);
    QCOMPARE(errorNumberOf([&] { narrow<qint32>(2147483648LL, what); }), overflow);
    QCOMPARE(errorNumberOf([&] { narrow<qint32>(-2147483649LL, what); }), overflow);
}

void TstNarrow::theErrorSaysWhat() {
    const auto error = errorOf([] { narrow<qint16>(40000, u"o código de vendedor %1 é grande demais"_s); });
    QVERIFY(error);
    QCOMPARE(error->text(), u"Estouro: o código de vendedor 40000 é grande demais."_s);
}

QTEST_GUILESS_MAIN(TstNarrow)
#include "tst_narrow.moc"

#include "products/RowHeight.h"

#include <QTest>

using namespace tarvessa;

/// How high a row is whose description wraps.
class TstRowHeight : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void height_data();
    void height();
};

void TstRowHeight::height_data() {
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("expected");
    QTest::newRow("nothing") << 0.0 << 0;
    QTest::newRow("exactly one line") << 3700.0 << 0;
    QTest::newRow("a little more") << 3700.001 << 480;
    QTest::newRow("two lines") << 7400.0 << 720;
    // 33/32 and 35/32 of a line make 487.5 and 502.5, both without a rounding error.
    QTest::newRow("half upwards to even") << 3815.625 << 488;
    QTest::newRow("half downwards to even") << 4046.875 << 502;
    QTest::newRow("below a half") << 3815.0 << 487;
    QTest::newRow("above a half") << 4047.0 << 503;
}

void TstRowHeight::height() {
    QFETCH(double, width);
    QFETCH(int, expected);
    QCOMPARE(wrappedRowHeight(width), expected);
}

QTEST_MAIN(TstRowHeight)
#include "tst_row_height.moc"

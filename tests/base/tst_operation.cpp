#include "base/Operation.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

using namespace tarvessa;

/// Which pieces of work belong to one operation of the operator.
class TstOperation : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void noneRunsOutside();
    void eachIsNewerThanTheOneBefore();
    void oneInsideAnotherIsPartOfIt();
    void oneOfAnInnerEventLoopIsNew();
    void goesOnAsANewOneAfterAWindow();
};

void TstOperation::noneRunsOutside() {
    QCOMPARE(Operation::current(), quint64(0));
    { const Operation operation; }
    QCOMPARE(Operation::current(), quint64(0));
}

void TstOperation::eachIsNewerThanTheOneBefore() {
    quint64 first = 0;
    {
        const Operation operation;
        first = Operation::current();
        QCOMPARE(Operation::latest(), first);
    }
    QVERIFY(first > 0);
    QCOMPARE(Operation::latest(), first);
    const Operation operation;
    QCOMPARE(Operation::current(), first + 1);
}

void TstOperation::oneInsideAnotherIsPartOfIt() {
    const Operation outer;
    const quint64 number = Operation::current();
    {
        const Operation inner;
        QCOMPARE(Operation::current(), number);
    }
    QCOMPARE(Operation::current(), number);
    QCOMPARE(Operation::latest(), number);
}

void TstOperation::oneOfAnInnerEventLoopIsNew() {
    const Operation outer;
    const quint64 number = Operation::current();
    quint64 inLoop = 0;
    quint64 insideThatOne = 0;
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        {
            const Operation inner;
            inLoop = Operation::current();
            const Operation part;
            insideThatOne = Operation::current();
        }
        loop.quit();
    });
    loop.exec();
    QCOMPARE(inLoop, number + 1);
    QCOMPARE(insideThatOne, inLoop);
    QCOMPARE(Operation::current(), number);
    QCOMPARE(Operation::latest(), inLoop);
}

void TstOperation::goesOnAsANewOneAfterAWindow() {
    const Operation outer;
    quint64 inLoop = 0;
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        const Operation inner;
        inLoop = Operation::current();
        loop.quit();
    });
    loop.exec();
    Operation::renew();
    QCOMPARE(Operation::current(), inLoop + 1);
    QCOMPARE(Operation::latest(), inLoop + 1);
}

QTEST_GUILESS_MAIN(TstOperation)
#include "tst_operation.moc"

#pragma once

#include "closing/Attendant.h"
#include "closing/PanelBench.h"
#include "support/FaultProxy.h"

#include <QRandomGenerator>

namespace tarvessa::test {

/// Days of a shop, one after the other, as an operator works through them on the real forms: what is done
/// next is left to chance, and some of it is cut off the server. All of it is the same again for the same
/// seed, but for what a cut catches.
class Day {
  public:
    /// How much of each product there is on the first morning.
    static constexpr int initialStock = 1000000;

    /// Loads the shop. Raises TestError.
    explicit Day(quint32 seed);
    ~Day();

    /// Does one thing from beginning to end: begins a day, lists, ticks, edits, converts, checks prices,
    /// promotes, views, closes, or runs and previews a report. Raises TestError.
    void doSomething();

    /// Concludes what is interrupted; afterwards nothing is left half done. Raises TestError when something
    /// is.
    void tidyUp();

    PrivateServer& server() { return m_bench.server(); }

    /// How often each thing was done, and how many connections were cut.
    const QMap<QString, int>& counts() const { return m_counts; }

  private:
    using Task = void (Day::*)();

    void loadShop();
    void addDocuments();
    void begin();
    void pressSelection();
    void tickSome();
    void editDays();
    void editMethod();
    void editTable();
    void convertOrList();
    void checkPrices();
    void promote();
    void view();
    void close();
    void summary();
    void commission();
    void priceLevel();
    void targets();
    void lookAtInterrupted();

    static void closeLog();
    void press(const QString& button);
    void pressWithCut(const QString& button);
    void comeBack();
    void trigger(const QString& item);
    void turnPages();
    int anyRow();
    bool chance(int outOf) { return m_random.bounded(outOf) == 0; }
    void count(const QString& what) { ++m_counts[what]; }

    PanelBench m_bench;
    FaultProxy m_proxy;
    Attendant m_attendant;
    QRandomGenerator m_random;
    QDateTime m_now;
    QMap<QString, int> m_counts;
    int m_lastDocument = 0;
    bool m_lastMovementDone = true;
};

} // namespace tarvessa::test

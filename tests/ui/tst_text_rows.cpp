#include "ui/grid/TextRows.h"

#include <QTest>

#include <algorithm>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;
using namespace tarvessa;

namespace {

// Around the lengths that are stored in one byte and in more, in letters of one to four bytes.
QString someText(std::mt19937& random) {
    static const QStringList letters{u"x"_s, u"ã"_s, u"€"_s, u"\U0001F950"_s};
    static const std::vector<int> lengths{0, 0, 1, 7, 30, 63, 64, 84, 85, 127, 128, 254, 255, 256, 3000};
    return letters[static_cast<qsizetype>(random() % 4)].repeated(lengths[random() % lengths.size()]);
}

void add(TextRows& rows, std::initializer_list<QAnyStringView> texts) {
    rows.append(std::span(texts.begin(), texts.size()));
}

QStringList rowOf(const TextRows& rows, int row, int columns) {
    QStringList texts;
    for (int column = 0; column < columns; ++column)
        texts.append(rows.at(row, column).toString());
    return texts;
}

} // namespace

class TstTextRows : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void textsOfAllKindsAreKept();
    void missingTextsAreEmptyAndSurplusOnesDropped();
    void rowsOfNoColumns();
    void textOfAMegabyte();
    void anyOrderOfChanges();
};

void TstTextRows::textsOfAllKindsAreKept() {
    TextRows rows;
    rows.clear(4);
    add(rows, {u"PÃO"_s, QLatin1StringView("caf\xE9"), QUtf8StringView("água"), QAnyStringView()});
    QCOMPARE(rowOf(rows, 0, 4), QStringList({u"PÃO"_s, u"café"_s, u"água"_s, QString()}));
}

void TstTextRows::missingTextsAreEmptyAndSurplusOnesDropped() {
    TextRows rows;
    rows.clear(2);
    add(rows, {});
    add(rows, {u"um"_s, u"dois"_s, u"três"_s});
    QCOMPARE(rowOf(rows, 0, 2), QStringList({QString(), QString()}));
    QCOMPARE(rowOf(rows, 1, 2), QStringList({u"um"_s, u"dois"_s}));
}

void TstTextRows::rowsOfNoColumns() {
    TextRows rows;
    add(rows, {u"um"_s});
    add(rows, {});
    QCOMPARE(rows.size(), 2);
    rows.remove(0);
    rows.cut(0);
    QCOMPARE(rows.size(), 0);
}

void TstTextRows::textOfAMegabyte() {
    TextRows rows;
    rows.clear(2);
    const QString text(3000000, u'é');
    add(rows, {u"antes"_s, text});
    add(rows, {u"depois"_s});
    QVERIFY(rows.at(0, 1).toString() == text);
    rows.set(0, 0, u"antes ainda");
    QVERIFY(rows.at(0, 1).toString() == text);
    QCOMPARE(rows.at(0, 0).toString(), u"antes ainda"_s);
    QCOMPARE(rows.at(1, 0).toString(), u"depois"_s);
}

// Against rows that are kept in the simplest way; long enough for what is no longer used to be dropped.
void TstTextRows::anyOrderOfChanges() {
    constexpr int columns = 3;
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same changes in every run
    TextRows rows;
    rows.clear(columns);
    QList<QStringList> expected;
    for (int change = 0; change < 6000; ++change) {
        const int kind = static_cast<int>(random() % 100);
        const int row =
            expected.isEmpty() ? 0 : static_cast<int>(random() % static_cast<size_t>(expected.size()));
        if (expected.isEmpty() || kind < 20) {
            const QStringList texts{someText(random), someText(random), someText(random)};
            expected.append(texts);
            rows.append(std::vector<QAnyStringView>(texts.begin(), texts.end()));
        } else if (kind < 85) {
            const auto column = static_cast<int>(random() % columns);
            expected[row][column] = someText(random);
            rows.set(row, column, expected[row][column]);
        } else if (kind < 97) {
            expected.removeAt(row);
            rows.remove(row);
        } else if (kind < 99) {
            std::vector<int> order(static_cast<size_t>(expected.size()));
            std::iota(order.begin(), order.end(), 0);
            std::shuffle(order.begin(), order.end(), random);
            QList<QStringList> reordered;
            for (const int from : order)
                reordered.append(expected[from]);
            expected = reordered;
            rows.reorder(order);
        } else {
            const int kept = static_cast<int>(expected.size()) * 9 / 10;
            expected.resize(kept);
            rows.cut(kept);
        }
        QCOMPARE(rows.size(), static_cast<int>(expected.size()));
        if (row < rows.size())
            QCOMPARE(rowOf(rows, row, columns), expected[row]);
    }
    for (int row = 0; row < rows.size(); ++row)
        QCOMPARE(rowOf(rows, row, columns), expected[row]);
}

QTEST_APPLESS_MAIN(TstTextRows)
#include "tst_text_rows.moc"

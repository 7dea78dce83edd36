#include "ui/grid/GridOrder.h"

#include "base/Datas.h"
#include "base/SearchText.h"
#include "ui/grid/CellValue.h"
#include "ui/grid/GridModel.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace tarvessa {

namespace {

qint64 numberKey(const QString& text) {
    const std::optional<Dinheiro> number = cellNumber(text);
    return number ? number->decimosMilesimos() : std::numeric_limits<qint64>::min();
}

qint64 dateKey(const QString& text) {
    const QDate date = DataDaTela(text);
    return date.isValid() ? date.toJulianDay() : std::numeric_limits<qint64>::min();
}

QString textKey(const QString& text) {
    return searchForm(text);
}

template <typename KeyOf>
std::vector<int> ordered(const GridModel& model, int column, Qt::SortOrder order, KeyOf keyOf) {
    const auto rows = static_cast<size_t>(model.size());
    std::vector<decltype(keyOf(QString()))> keys;
    keys.reserve(rows);
    for (size_t row = 0; row < rows; ++row)
        keys.push_back(keyOf(model.text(static_cast<int>(row), column)));
    std::vector<int> places(rows);
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(), [&keys, order](int one, int other) {
        const auto& first = keys[static_cast<size_t>(one)];
        const auto& second = keys[static_cast<size_t>(other)];
        return order == Qt::AscendingOrder ? first < second : second < first;
    });
    return places;
}

} // namespace

std::vector<int> orderOfRows(const GridModel& model, int column, ColumnKind kind, Qt::SortOrder order) {
    switch (kind) {
    case ColumnKind::Number:
    case ColumnKind::Percentage:
        return ordered(model, column, order, numberKey);
    case ColumnKind::Date:
        return ordered(model, column, order, dateKey);
    case ColumnKind::Text:
    case ColumnKind::Button:
        break;
    }
    return ordered(model, column, order, textKey);
}

} // namespace tarvessa

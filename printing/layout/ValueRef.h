#pragma once

namespace tarvessa::report {

/// Where a value named in a layout comes from.
enum class Source { Column, Formula, Total, Calculation, Group, Page, Pages, Date, Time, Title };

/// A value named in a layout: its source and its index among the layout's declarations of that kind.
struct ValueRef {
    Source source = Source::Column;
    int index = 0;
};

} // namespace tarvessa::report

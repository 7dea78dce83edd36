#pragma once

#include "bench/support/Measure.h"

#include <QString>

#include <array>

class QWidget;

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// A word, and how many of the products of fillProducts it stands in.
struct Search {
    const char16_t* word;
    int matches;
};
inline constexpr std::array<Search, 3> searches = {{{u"ESPARSO", 1}, {u"CENTENO", 100}, {u"MILHEIRO", 5000}}};

/// Replaces the products there are by 200,000. One in ten descriptions is too long for one line, as in shops
/// that write out what a package holds. Raises TestError.
void fillProducts(test::PrivateServer& server);

/// A search from the typed text to the painted screen, or to the code of the single match; needs an open
/// database. Raises std::runtime_error when it does not find what there is.
Taken timedSearch(const Search& search, QWidget* form);

} // namespace tarvessa::bench

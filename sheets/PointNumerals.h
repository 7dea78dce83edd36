#pragma once

#ifndef _WIN32
#include <clocale>
#include <locale.h>
#endif

namespace tarvessa::sheet {

/// While it lives, this thread's C library writes numbers with a decimal point, whatever the machine's
/// locale: a spreadsheet file must not have the locale's comma.
class PointNumerals {
  public:
#ifdef _WIN32
    // There a program has the locale "C" until it asks for another, which this one never does.
    PointNumerals() {
    }
    ~PointNumerals() {
    }
#else
    PointNumerals()
        : m_own(newlocale(LC_NUMERIC_MASK, "C", duplocale(LC_GLOBAL_LOCALE))), m_before(uselocale(m_own)) {
    }
    ~PointNumerals() {
        uselocale(m_before);
        freelocale(m_own);
    }
#endif
    PointNumerals(const PointNumerals&) = delete;
    PointNumerals& operator=(const PointNumerals&) = delete;

#ifndef _WIN32
  private:
    locale_t m_own;
    locale_t m_before;
#endif
};

} // namespace tarvessa::sheet

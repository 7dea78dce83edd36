#pragma once

#include <QString>

#include <array>

namespace tarvessa {

/// What a closing takes from the row of `empresa`.
struct ClosingSettings {
    static constexpr size_t accounts = 8;

    /// `PAF_ECF`: a closing then moves no stock.
    bool pafEcf = false;
    /// The pieces of `ContaCTB1`.
    std::array<QString, accounts> contaCtb;

    const QString& cashAccount() const { return contaCtb[0]; }
    const QString& receivablesAccount() const { return contaCtb[4]; }

    ClosingSettings();

    /// Reads `empresa` through rs. Raises RuntimeError, also when the table is empty.
    static ClosingSettings read();
};

} // namespace tarvessa

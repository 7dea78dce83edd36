#pragma once

#include "base/Dinheiro.h"

#include <QStringView>

#include <optional>

namespace tarvessa {

/// The number that a cell of numbers or percentages shows, a "%" behind it left out; nothing for any other
/// text and beyond the range of numbers.
std::optional<Dinheiro> cellNumber(QStringView text);

/// How many digits stand behind the comma.
int decimalsOf(QStringView text);

} // namespace tarvessa

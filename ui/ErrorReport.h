#pragma once

#include "base/RuntimeError.h"

class QWidget;

namespace tarvessa {

/// Shows a run-time error to the operator: its number, what to do where that is known, its text, and under
/// details the SQLSTATE and the statement. Its button "Copiar" puts all of that into the clipboard. After an
/// error that ends the program all event loops end, with exit code 1.
void showErrorReport(QWidget* parent, const RuntimeError& error);

} // namespace tarvessa

#pragma once

#include "base/RuntimeError.h"

class QWidget;

namespace tarvessa {

/// Shows a run-time error to the operator: its number and text, and under details the SQLSTATE and the
/// statement. The report says when the program must be started again. After an error that ends the program
/// all event loops end, with exit code 1.
void showErrorReport(QWidget* parent, const RuntimeError& error);

} // namespace tarvessa

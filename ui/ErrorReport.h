#pragma once

#include "base/RuntimeError.h"

class QWidget;

namespace tarvessa {

/// Shows a run-time error to the operator: number and text, and under details the SQLSTATE and the statement.
/// Says in words when the program must be started again. After an error that ends the program it leaves every
/// event loop, with exit code 1.
void showErrorReport(QWidget* parent, const RuntimeError& error);

} // namespace tarvessa

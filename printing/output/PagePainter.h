#pragma once

class QPainter;

namespace tarvessa::report {

class Report;

/// Draws a page (from 0). The painter's unit must be the dot and its origin the paper's top left corner.
/// Raises RuntimeError when a value cannot be calculated.
void paintPage(const Report& report, QPainter& painter, int page);

} // namespace tarvessa::report

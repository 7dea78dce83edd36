#pragma once

namespace tarvessa {

/// The height, in twips, of a row whose description is `printedWidth` twips wide when printed on one line:
/// room for the lines it wraps onto, a whole number, halves to even. 0 for a description that fits on one
/// line.
int wrappedRowHeight(double printedWidth);

} // namespace tarvessa

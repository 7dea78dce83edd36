#pragma once

class QWidget;

namespace tarvessa {

/// Gives a name to the parts of a window's controls that the toolkit leaves without one: the list that a
/// combo box drops down, the clear button of a text box, the button behind which a tool bar keeps what has no
/// room. A part is named after its control, so the controls have their names before.
void nameParts(QWidget* window);

} // namespace tarvessa

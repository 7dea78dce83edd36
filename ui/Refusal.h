#pragma once

#include <QString>

class QWidget;

namespace tarvessa {

/// Tells the operator by an information box that what stands in a field is refused, and gives the field the
/// focus as focusToRetype does.
void refuse(QWidget* field, const QString& text);

/// Gives a field the focus with its whole text selected, so that what is typed next replaces it.
void focusToRetype(QWidget* field);

} // namespace tarvessa

#pragma once

#include "ui/TextMeasure.h"

#include <QIcon>

class QWidget;

/// What lower screens use of the main window. It is declared here; the main window owns it and lends it.
namespace tarvessa {

/// Lends the main window's form, whose font measures texts, and the picture of its `picSucesso`. The loan
/// ends with the form.
void EmprestaJanelaPrincipal(const QWidget* form, const QIcon& picSucesso);

/// The picture drawn in ticked rows: the one of `picSucesso`, or the program's own check with no main window.
QIcon PicSucesso();

/// Measures printed widths in the main window's font, or in the application's with no main window.
TextMeasure MedidaImpressa();

} // namespace tarvessa

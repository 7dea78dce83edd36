#pragma once

#include "printing/ReportControl.h"

#include <QStringList>

namespace tarvessa {

/// The one report control of the process. The main window owns and sets it.
extern ReportControl* CRW;

/// The report control that is set. Raises RuntimeError (object required) when there is none.
ReportControl& reportControl();

/// Fills the formula slots from `firstSlot` on, each with "name='text'" or "name=number" (point form). What
/// is set stays set for later reports. Raises RuntimeError when there is no report control.
void setFormulas(const QStringList& formulas, int firstSlot = 0);

/// Clears slots 0 to `count` - 1. Raises RuntimeError when there is no report control.
void clearFormulas(int count);

/// Shows the maximised preview of a layout of the program's folder `rpt`, such as "COMISSAO.RPT". `formulas`
/// go into the slots from 0 on; slots beyond them keep what they hold. A `query` that is not empty replaces
/// the layout's own. `documentName`, without suffix, is the name proposed when the report is saved. Raises
/// RuntimeError as ReportControl::setAction does, and when there is no report control.
void printLayout(const QString& layout, const QString& documentName, const QStringList& formulas = {},
                 const QString& query = {});

} // namespace tarvessa

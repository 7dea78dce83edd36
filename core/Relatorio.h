#pragma once

#include "printing/ReportControl.h"

namespace tarvessa {

/// The one report control of the process, which every report screen drives. The main window owns and sets it.
extern ReportControl* CRW;

/// The report control that is set; what a screen goes through to drive it. Raises RuntimeError (object
/// required) when there is none.
ReportControl& ControleDeRelatorio();

} // namespace tarvessa

#pragma once

#include "platform/report/ReportControl.h"

namespace tarvessa {

/// The one report control of the process, which every report screen drives. The main window owns and sets it.
extern ReportControl* CRW;

} // namespace tarvessa

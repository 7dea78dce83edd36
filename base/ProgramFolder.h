#pragma once

#include <QString>

namespace tarvessa {

/// The folder of the executable, where the logs are written and `rpt` lies; no slash at its end.
QString programFolder();

/// Takes another folder in its place; an empty text gives the executable's back.
void setProgramFolder(const QString& folder);

} // namespace tarvessa

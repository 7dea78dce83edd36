#pragma once

#include <QString>

namespace tarvessa {

/// The folder of the executable, where the logs are written and `rpt` lies; no slash at its end.
QString PastaDoPrograma();

/// Takes another folder in its place; an empty text gives the executable's back.
void FixaPastaDoPrograma(const QString& pasta);

} // namespace tarvessa

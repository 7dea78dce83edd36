#include "core/Pastas.h"

#include <QCoreApplication>

namespace tarvessa {

namespace {

QString& pastaFixa() {
    static QString pasta;
    return pasta;
}

} // namespace

QString PastaDoPrograma() {
    return pastaFixa().isEmpty() ? QCoreApplication::applicationDirPath() : pastaFixa();
}

void FixaPastaDoPrograma(const QString& pasta) {
    pastaFixa() = pasta;
}

} // namespace tarvessa

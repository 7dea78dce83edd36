#include "base/ProgramFolder.h"

#include <QCoreApplication>

namespace tarvessa {

namespace {

QString& fixedFolder() {
    static QString folder;
    return folder;
}

} // namespace

QString programFolder() {
    return fixedFolder().isEmpty() ? QCoreApplication::applicationDirPath() : fixedFolder();
}

void setProgramFolder(const QString& folder) {
    fixedFolder() = folder;
}

} // namespace tarvessa

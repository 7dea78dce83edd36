#include "core/Staging.h"

#include "core/AcessoDados.h"
#include "ui/BusyPointer.h"

namespace tarvessa {

void fillStaging(const QString& truncate, const QStringList& inserts) {
    const BusyPointer busy;
    Executa(truncate);
    for (const QString& insert : inserts)
        Executa(insert);
}

} // namespace tarvessa

#include "base/Narrow.h"

#include "base/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

void raiseTooLarge(qint64 value, const QString& what) {
    throw RuntimeError(ErrorNumber::Overflow, u"Estouro: %1."_s.arg(what.arg(value)));
}

} // namespace tarvessa

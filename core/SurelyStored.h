#pragma once

#include <QtGlobal>

namespace tarvessa {

/// Whether an edited cell may show what was sent to its record without reading it back. `changed` is what
/// Executa gave: a record that had these values already counts as not changed, as a missing one does, so the
/// cell must have shown them (`asListed`). `fits`: the columns surely hold the values.
inline bool isSurelyStored(qint64 changed, bool asListed, bool fits) {
    return (changed > 0 || asListed) && fits;
}

} // namespace tarvessa

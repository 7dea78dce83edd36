#pragma once

#include <QStringList>

namespace tarvessa {

/// Fills a staging table for printing, under the busy pointer: runs `truncate`, then every statement of
/// `inserts` in order. The caller writes the statements whole, because each screen spells them its own way.
/// Raises RuntimeError; the table then holds the rows before the one that failed.
void fillStaging(const QString& truncate, const QStringList& inserts);

} // namespace tarvessa

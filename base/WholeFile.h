#pragma once

#include <functional>

class QIODevice;
class QString;

namespace tarvessa {

/// Writes a file whole or not at all: `write` fills a new file, which takes its place at the end. Raises
/// RuntimeError: FileNotWritable, or what `write` raises; an existing file is kept then.
void writeWholeFile(const QString& path, const std::function<void(QIODevice& file)>& write);

} // namespace tarvessa

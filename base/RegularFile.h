#pragma once

#include <QFile>

namespace tarvessa {

/// Opens `file`, whose name is set, when that name is a regular file or, for writing, nothing yet. A symbolic
/// link is not followed; a device, a pipe or a folder is refused without touching it. Gives an empty text, or
/// in Portuguese the reason why the file is not open.
QString openRegularFile(QFile& file, QIODevice::OpenMode mode);

} // namespace tarvessa

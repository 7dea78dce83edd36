#pragma once

class QByteArray;
class QString;

namespace tarvessa::report {

/// What a layout file holds. Raises RuntimeError: FileNotFound when there is no such file or it cannot be
/// read, InvalidLayout when a symbolic link, a folder, a device or a pipe lies in its place or it is larger
/// than 4 MB; none of those is opened.
QByteArray contentsOfLayout(const QString& path);

} // namespace tarvessa::report

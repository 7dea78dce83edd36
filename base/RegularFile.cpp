#include "base/RegularFile.h"

#ifdef _WIN32
#include <QFileInfo>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

const QString isLink = u"é um atalho para outro lugar."_s;
const QString isFolder = u"é uma pasta."_s;

} // namespace

#ifdef _WIN32

QString openRegularFile(QFile& file, QIODevice::OpenMode mode) {
    const QFileInfo info(file.fileName());
    if (info.isSymLink() || info.isJunction())
        return isLink;
    if (info.isDir())
        return isFolder;
    return file.open(mode) ? QString() : file.errorString();
}

#else

// The check is made on the file that was opened, so that nobody can exchange it in between. Without waiting:
// a pipe nobody reads would hold the program for ever.
QString openRegularFile(QFile& file, QIODevice::OpenMode mode) {
    constexpr mode_t readAndWriteForAll = 0666; // less what the user's mask takes away
    const QByteArray name = QFile::encodeName(file.fileName());
    const int access = mode.testFlag(QIODevice::WriteOnly) ? O_WRONLY | O_CREAT : O_RDONLY;
    const int handle =
        open(name.constData(), access | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, readAndWriteForAll);
    if (handle < 0) {
        if (errno == ELOOP)
            return isLink;
        if (errno == EISDIR)
            return isFolder;
        return errno == ENXIO ? u"não é um arquivo comum."_s : qt_error_string(errno);
    }
    struct stat status {};
    QString reason;
    if (fstat(handle, &status) != 0 ||
        (S_ISREG(status.st_mode) && mode.testFlag(QIODevice::Truncate) && ftruncate(handle, 0) != 0))
        reason = qt_error_string(errno);
    else if (S_ISDIR(status.st_mode))
        reason = isFolder;
    else if (!S_ISREG(status.st_mode))
        reason = u"não é um arquivo comum."_s;
    else if (!file.open(handle, mode, QFileDevice::AutoCloseHandle))
        reason = file.errorString();
    if (!reason.isEmpty())
        close(handle);
    return reason;
}

#endif

} // namespace tarvessa

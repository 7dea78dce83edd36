#include "base/HostUser.h"

#ifdef _WIN32
#include <windows.h>

#include <array>
#else
#include <pwd.h>
#include <unistd.h>
#endif

namespace tarvessa {

#ifdef _WIN32

QString hostUserName() {
    std::array<wchar_t, 257> name{}; // the longest user name and its end
    DWORD size = name.size();
    return GetUserNameW(name.data(), &size) ? QString::fromWCharArray(name.data()) : QString();
}

#else

QString hostUserName() {
    // Looked up once: every stock movement names the user, and the look-up reads files.
    static const QString name = [] {
        const passwd* entry = getpwuid(geteuid());
        return entry ? QString::fromLocal8Bit(entry->pw_name) : QString();
    }();
    return name;
}

#endif

} // namespace tarvessa

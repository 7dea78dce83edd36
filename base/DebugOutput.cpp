#include "base/DebugOutput.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cstdio>
#endif

namespace tarvessa {

#ifdef _WIN32

void tellDeveloper(const QString& line) {
    OutputDebugStringW(reinterpret_cast<const wchar_t*>((line + u'\n').utf16()));
}

#else

void tellDeveloper(const QString& line) {
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

#endif

} // namespace tarvessa

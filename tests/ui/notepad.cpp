// Stands in for Notepad beside the tests: writes down, next to the file that it is given, how it was started.

#include <windows.h>

#include <shellapi.h>

#include <string>

int WINAPI wWinMain(HINSTANCE /*program*/, HINSTANCE /*previous*/, PWSTR /*line*/, int show) {
    int count = 0;
    LPWSTR* arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count < 2)
        return 1;
    const std::wstring path = arguments[1];
    const std::wstring text = std::to_wstring(show) + L" " + path;
    std::string bytes(text.size() * 4, '\0');
    bytes.resize(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(),
                                                         static_cast<int>(text.size()), bytes.data(),
                                                         static_cast<int>(bytes.size()), nullptr, nullptr)));
    const HANDLE file = CreateFileW((path + L".aberto").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    const bool done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
    CloseHandle(file);
    return done ? 0 : 1;
}

/* Writes the text of the system's own message box that is open into a file, in UTF-8; the tests read it so,
   because such a box hands out no copy under Wine.

       box-text.exe FILE */
#include <stdio.h>
#include <windows.h>

/* What a message box calls its text. */
enum { TEXT_ID = 0xFFFF };

static BOOL CALLBACK read_box(HWND window, LPARAM result) {
    wchar_t name[16];
    HWND text = GetDlgItem(window, TEXT_ID);
    if (!text || !IsWindowVisible(window) || !GetClassNameW(window, name, 16) ||
        lstrcmpW(name, L"#32770") != 0)
        return TRUE;
    SendMessageW(text, WM_GETTEXT, 1024, result);
    return FALSE;
}

int wmain(int count, wchar_t** arguments) {
    wchar_t text[1024] = L"";
    char bytes[4096];
    FILE* file;
    if (count != 2)
        return 2;
    EnumWindows(read_box, (LPARAM)text);
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, NULL, NULL);
    file = _wfopen(arguments[1], L"wb");
    if (!file)
        return 1;
    fputs(bytes, file);
    return fclose(file) ? 1 : 0;
}

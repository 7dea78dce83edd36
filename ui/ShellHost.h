#pragma once

#include <QString>

namespace tarvessa {

/// What the desktop's shell does for the program: keystrokes and the text viewer.
class ShellHost {
  public:
    /// Sends a keystroke to the focused control, as if typed after those already waiting. Takes "{TAB}".
    void sendKeys(const QString& keys);

    /// Opens a text file without waiting for the viewer, maximised where the desktop allows: Notepad on
    /// Windows, elsewhere the desktop's text viewer or, where there is none, a window of our own.
    void openText(const QString& path);
};

} // namespace tarvessa

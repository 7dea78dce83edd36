#pragma once

#include <QString>

namespace tarvessa {

/// The desktop's shell: sends keystrokes and opens text files.
class ShellHost {
  public:
    /// Sends a keystroke to the focused control, behind the events that are already waiting. Knows "{TAB}"
    /// and ignores any other name, and does nothing while no control has the focus.
    void sendKeys(const QString& keys);

    /// Opens a text file without waiting for the viewer, maximised where the desktop allows it: in Notepad on
    /// Windows, elsewhere in the desktop's text viewer, and in a TextViewer where that fails.
    void openText(const QString& path);
};

} // namespace tarvessa

#pragma once

#include <QMainWindow>

namespace tarvessa {

/// A read-only window for a text file, used where the desktop has no text viewer.
class TextViewer : public QMainWindow {
    Q_OBJECT

  public:
    /// Shows a UTF-8 file in a maximised window and returns at once; the window deletes itself when closed.
    /// If the file cannot be read, the window shows the reason.
    static void open(const QString& path);

  private:
    explicit TextViewer(const QString& path);
};

} // namespace tarvessa

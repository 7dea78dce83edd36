#pragma once

#include <QMainWindow>

namespace tarvessa {

/// A plain read-only window for a text file, where the desktop has no viewer of its own.
class TextViewer : public QMainWindow {
    Q_OBJECT

  public:
    /// Shows the UTF-8 file maximised and returns at once; the window frees itself when closed. A file that
    /// cannot be read shows as the reason in its place.
    static void open(const QString& path);

  private:
    explicit TextViewer(const QString& path);
};

} // namespace tarvessa

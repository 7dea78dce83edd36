#pragma once

#include "printing/preview/PageView.h"

#include <QMainWindow>
#include <QTimer>

class QComboBox;
class QLabel;
class QLineEdit;
class QToolBar;

namespace tarvessa::report {

/// The preview of a report: its pages as they will print, with turning, zoom, search, printing and saving,
/// all by mouse and by key. Reads the rest of a long report while the first pages are already looked at.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// `parent` waits behind the preview until it is closed; null for none. The first page must have been
    /// read. The window frees itself when closed. Raises RuntimeError when the first page cannot be composed.
    PreviewWindow(std::shared_ptr<Report> report, QWidget* parent);

  private:
    void makeFileBar();
    void makePageBar();
    void makeZoom(QToolBar* bar);
    void makeSearch(QToolBar* bar);
    QAction* makeAction(QToolBar* bar, const QString& name, const QString& caption, const QString& help,
                        const QList<QKeySequence>& keys, void (PreviewWindow::*handler)());

    void leave();
    void readOn();
    void readAll();
    void showPage(int page, bool fromBottom = false);
    void turn(int pages);
    void updateControls();
    void updateZoom();

    void firstPage();
    void previousPage();
    void nextPage();
    void lastPage();
    void editPageNumber();
    void goToPage();

    void zoomIn();
    void zoomOut();
    void fitWidth();
    void fitPage();
    void chooseZoom(int index);

    void editSearch();
    void findNext();
    void findPrevious();
    void find(bool forward);

    void print();
    void savePdf();
    void saveCsv();
    QString askFileName(const QString& title, const QString& suffix, const QString& kind);

    std::shared_ptr<Report> m_report;
    PageView* m_view;
    QTimer m_reading;
    QAction* m_first = nullptr;
    QAction* m_previous = nullptr;
    QAction* m_next = nullptr;
    QAction* m_last = nullptr;
    QLineEdit* m_pageNumber = nullptr;
    QLabel* m_pageCount = nullptr;
    QComboBox* m_zoom = nullptr;
    QLineEdit* m_sought = nullptr;
    int m_hitIndex = -1; // among the texts of the page shown
};

} // namespace tarvessa::report

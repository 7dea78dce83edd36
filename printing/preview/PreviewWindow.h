#pragma once

#include "printing/preview/PageView.h"
#include "printing/preview/PreviewChoices.h"
#include "printing/preview/TextSearch.h"

#include <QMainWindow>
#include <QTimer>

class QComboBox;
class QLabel;
class QLineEdit;
class QToolBar;

namespace tarvessa::report {

class PageList;

/// The preview of a report: its pages as they are printed, with turning, zoom, search, printing and saving,
/// all by mouse and by keyboard. The rest of a long report is read while its first pages are shown.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// `parent` stays usable; the preview is closed with it. Null for none. The first page must have been
    /// read. The window deletes itself when closed. `choices` are proposed and updated; `fileName`, without
    /// suffix, is proposed for saved files, the report's title when empty. Raises RuntimeError when the first
    /// page cannot be composed.
    PreviewWindow(std::shared_ptr<Report> report, QWidget* parent, std::shared_ptr<PreviewChoices> choices,
                  const QString& fileName = {});

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    static QString fitWidthCaption();
    static QString fitPageCaption();
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
    void displayPage(int page, bool fromBottom);
    void turn(int pages);
    void updateControls();
    void updateZoom();
    void tell(const QString& message);

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
    void find(TextSearch::Direction direction);

    void print();
    void preparePrinter(QPrinter& printer) const;
    void savePdf();
    void saveCsv();
    void saveXlsx();
    void save(const QString& title, const QString& suffix, const QString& kind,
              void (*write)(Report& report, const QString& path));
    QString askFileName(const QString& title, const QString& suffix, const QString& kind);

    std::shared_ptr<Report> m_report;
    std::shared_ptr<PreviewChoices> m_choices;
    QString m_fileName;
    PageView* m_view;
    PageList* m_list;
    QTimer m_reading;
    QAction* m_first = nullptr;
    QAction* m_previous = nullptr;
    QAction* m_next = nullptr;
    QAction* m_last = nullptr;
    QLineEdit* m_pageNumber = nullptr;
    QLabel* m_pageCount = nullptr;
    QComboBox* m_zoom = nullptr;
    QLineEdit* m_sought = nullptr;
    TextSearch m_search;
};

} // namespace tarvessa::report

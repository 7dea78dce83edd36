#pragma once

#include "ui/grid/ColumnKind.h"
#include "ui/grid/ColumnSizes.h"
#include "ui/grid/GridModel.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableView>

class QAction;
class QMenu;

namespace tarvessa {

class FindLine;

/// A table of text cells with one fixed header row, row 0; data rows count from 1, columns from 0. Widths and
/// heights are in twips. Space on the current cell does what a click does.
///
/// Rows are marked with Shift and the keys that move, or all with Ctrl+A; neither a click nor Space acts on
/// more than its own cell for that. Marked rows are copied (Ctrl+C) and summed up. Ctrl+F finds texts in a
/// line below the grid, which therefore has to lie in a vertical box layout. A menu names these keys.
///
/// A row or column must exist: reading or writing outside is a mistake of the caller, undefined as for a
/// vector. Two things are safe: cellRect of a missing cell is empty, and setCurrentCell of one leaves no
/// current cell.
class Grid : public QTableView {
    Q_OBJECT

  public:
    explicit Grid(QWidget* parent = nullptr);

    // Columns and rows

    /// Captions separated by "|", each with an optional mark: "<" left, ">" right, "^" centre. Empties the
    /// grid.
    void setFormat(const QString& format);
    int columns() const { return m_model->columnCount(); }

    /// Width in twips; 0 hides the column.
    void setColumnTwips(int column, int twips);
    Qt::Alignment columnAlignment(int column) const { return m_model->alignment(column); }
    int columnTwips(int column) const { return m_columnTwips[static_cast<size_t>(column)]; }

    /// Lets one column grow beyond its width into what the other columns leave free of the grid; its width in
    /// twips stays what was set.
    void setStretchedColumn(int column);

    /// What the columns hold, from the first on; the others hold text, and so do all after setFormat.
    void setColumnKinds(std::initializer_list<ColumnKind> kinds);
    ColumnKind columnKind(int column) const { return m_columnKinds[static_cast<size_t>(column)]; }

    /// By how many pixels a column is written smaller than usual, because a figure would be cut otherwise.
    int textReduction(int column) const { return m_columnSizes.reduction(column); }

    /// Lets a click on a caption, or a key, order the rows shown by that column; a grid that is emptied has
    /// the order in which rows are added again.
    void setSortable();

    /// The number of rows, header included, that the grid's preferred size has room for; its width then shows
    /// all columns beside the scroll bar. Without it the size is the view's usual one.
    void setPreferredRows(int rows);
    QSize sizeHint() const override;

    /// Height in twips that every row has at least, the header row included.
    void setMinimumRowTwips(int twips);

    struct RowHeight {
        int row = 0;
        int twips = 0;
    };

    /// Heights of some data rows.
    void setRowHeights(const std::vector<RowHeight>& heights);
    int rowTwips(int row) const;

    /// Number of rows, header included.
    int rows() const { return m_model->size() + 1; }

    /// Cuts or adds rows at the end; 1 leaves the header alone.
    void setRows(int rows);

    /// Takes out one data row; those below move up.
    void removeRow(int row);

    /// Adds a row given as one text, cells separated by tabs.
    void addItem(const QString& tabbed);

    /// Adds a row cell by cell; a tab inside a cell stays there.
    void addRow(std::span<const QAnyStringView> cells) { m_model->append(cells); }
    void addRow(std::initializer_list<QAnyStringView> cells) {
        addRow(std::span(cells.begin(), cells.size()));
    }

    /// While it lives, added rows are not shown; they appear at once when it goes.
    class Fill {
      public:
        explicit Fill(Grid* grid) : m_grid(grid) { m_grid->m_model->beginFill(); }
        ~Fill() { m_grid->m_model->endFill(); }
        Fill(const Fill&) = delete;
        Fill& operator=(const Fill&) = delete;

      private:
        Grid* m_grid;
    };

    /// What the grid's area says while there are no data rows, in grey and to a screen reader.
    void setEmptyText(const QString& text);

    // Cells: row 0 is the header

    QString text(int row, int column) const {
        return row == 0 ? m_model->caption(column) : m_model->text(row - 1, column);
    }

    /// The same, written into `room`: without a new text for each cell of a walk through many rows.
    QStringView textView(int row, int column, QString& room) const;
    void setText(int row, int column, const QString& text);
    void setBold(int row, int column, bool bold);
    bool isBold(int row, int column) const;

    /// What a screen reader says for a column whose caption is empty; forgotten with the next format.
    void setSpokenCaption(int column, const QString& caption) { m_model->setSpokenCaption(column, caption); }

    /// Makes all header cells bold.
    void setHeaderBold();
    void setBackColor(int row, int column, const QColor& color);
    QColor backColor(int row, int column) const { return m_model->look(row - 1, column).background; }
    void setForeColor(int row, int column, const QColor& color);
    QColor foreColor(int row, int column) const { return m_model->look(row - 1, column).foreground; }

    /// Shows a picture in the middle of the cell; a null one removes it.
    void setPicture(int row, int column, const QIcon& picture);
    bool hasPicture(int row, int column) const;

    // Selection marks

    /// The column whose single blank means "selected" and shows the picture in the middle of the cell.
    void setTickColumn(int column, const QIcon& picture) { m_model->setTickColumn(column, picture); }
    bool isTickColumn(int column) const { return column == m_model->tickColumn(); }

    /// Writes the mark of a data row: " " with the picture, or "" without.
    void setTicked(int row, bool ticked);
    bool isTicked(int row) const { return m_model->isTicked(row - 1); }

    // Marked rows

    struct RowRange {
        int first = 0;
        int last = 0;
        bool operator==(const RowRange&) const = default;
    };

    /// The marked rows, from top to bottom.
    QList<RowRange> markedRows() const;

    /// Marks all data rows.
    void selectAll() override;

    // Copied and saved

    /// True for a column that is copied and saved: neither hidden nor one of buttons.
    bool isOutput(int column) const;

    /// A cell's text as it is copied and saved: a tick is "X".
    QString outputText(int row, int column) const;

    /// Puts the marked rows, or else the current one, into the clipboard as text and as an HTML table.
    void copyRows(bool withHeader) const;

    // Found texts

    bool isFinding() const;

    /// True for a cell that the open find line has found.
    bool isHit(int row, int column) const;

    /// Shows the find line and gives it the focus.
    void openFindLine();

    /// Hides the find line and gives the focus to the grid.
    void closeFindLine();

    // Position

    /// The current row, 0 when there is none.
    int currentRow() const { return currentIndex().isValid() ? currentIndex().row() + 1 : 0; }
    int currentColumn() const { return currentIndex().isValid() ? currentIndex().column() : 0; }
    void setCurrentCell(int row, int column);

    /// Scrolls so that the data row comes first below the header, as far as there are rows to scroll.
    void setTopRow(int row);
    int topRow() const { return rowAt(0) + 1; }

    /// Where a cell lies, in pixels of the grid.
    QRect cellRect(int row, int column) const;

  Q_SIGNALS:
    /// A left click or Space on a data cell.
    void cellClicked(int row, int column);
    void cellDoubleClicked(int row, int column);
    void cellEntered(int row, int column);

    /// Cells may lie elsewhere now: scrolled, resized or other widths.
    void cellsMoved();

    /// The marking has changed: how many rows are marked, and the sum of the current column where it holds
    /// numbers ("3 linhas marcadas · R$ TOTAL: 3 valores, soma 1.234,50"). Empty with fewer than two rows.
    void selectionSummary(const QString& summary);

    /// The find line was shown or hidden.
    void findLineShown(bool shown);

    /// The operator wants the grid in a file. The menu offers it only when this is connected.
    void saveRequested();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;

  private:
    void applyWidths();
    void stretchColumn();
    int minimumRowPixels() const;
    void changeLook(int row, int column, const std::function<void(GridModel::Look&)>& change);
    void tellEmpty();
    void paintEmptyText();
    void updateRow(const QModelIndex& index);
    void fitTexts(const QRect& painted);

    // Marking (GridMarks.cpp)
    bool markByKey(const QKeyEvent* event);
    void markUpTo(const QModelIndex& to);
    void moveAlongMarked(const QModelIndex& to);
    void markStep(int rows);
    bool isMarked(int row) const;
    void tellSummary();

    // Actions and their menu (GridActions.cpp)
    void defineActions();
    QAction* defineAction(const QString& name, const QString& caption, const QList<QKeySequence>& keys,
                          Qt::ShortcutContext context, const std::function<void()>& run);
    void defineSeparator();
    void clickCurrentCell();
    void step(bool forward);
    void sortByCurrentColumn();
    void openMenu(const QPoint& place);
    QPoint menuPlaceAtCurrentCell() const;

    GridModel* m_model;
    std::vector<int> m_columnTwips;
    std::vector<ColumnKind> m_columnKinds;
    ColumnSizes m_columnSizes{this};
    QPersistentModelIndex m_markedFrom; // where the marking began; invalid when nothing is being marked
    bool m_marking = false;
    QString m_summary;
    QString m_emptyText;
    FindLine* m_findLine = nullptr;
    QAction* m_click = nullptr;
    QAction* m_next = nullptr;
    QAction* m_previous = nullptr;
    QAction* m_save = nullptr;
    QAction* m_sort = nullptr;
    QPointer<QMenu> m_menu;
    int m_stretchedColumn = -1;
    int m_minimumRowTwips = 0;
    int m_preferredRows = 0;
};

} // namespace tarvessa

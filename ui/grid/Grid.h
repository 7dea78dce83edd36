#pragma once

#include "ui/grid/GridModel.h"

#include <QTableView>

namespace tarvessa {

/// A table of text cells with one fixed header row, row 0; data rows count from 1, columns from 0. Widths and
/// heights are in twips. Space on the current cell does what a click does.
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
    int columnTwips(int column) const { return m_columnTwips[static_cast<size_t>(column)]; }

    /// Lets one column grow beyond its width into what the other columns leave free of the grid; its width in
    /// twips stays what was set.
    void setStretchedColumn(int column);

    /// The number of rows, header included, that the grid's preferred size has room for; its width then shows
    /// all columns beside the scroll bar. Without it the size is the view's usual one.
    void setPreferredRows(int rows);
    QSize sizeHint() const override;

    /// Height in twips that every row has at least, the header row included.
    void setMinimumRowTwips(int twips);

    /// Height in twips of one data row.
    void setRowTwips(int row, int twips);
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
    void addRow(std::span<const QString> cells) { m_model->append(cells); }
    void addRow(std::initializer_list<QString> cells) { addRow(std::span(cells.begin(), cells.size())); }

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

    // Cells: row 0 is the header

    QString text(int row, int column) const { return textView(row, column).toString(); }

    /// The same without a copy, for walking many rows; good until the row changes or goes.
    QStringView textView(int row, int column) const;
    void setText(int row, int column, const QString& text);
    void setBold(int row, int column, bool bold);
    bool isBold(int row, int column) const;

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

    /// Writes the mark of a data row: " " with the picture, or "" without.
    void setTicked(int row, bool ticked);
    bool isTicked(int row) const { return textView(row, m_model->tickColumn()) == QLatin1StringView(" "); }

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

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;

  private:
    void applyWidths();
    void stretchColumn();
    int minimumRowPixels() const;
    void changeLook(int row, int column, const std::function<void(GridModel::Look&)>& change);

    GridModel* m_model;
    std::vector<int> m_columnTwips;
    int m_stretchedColumn = -1;
    int m_minimumRowTwips = 0;
    int m_preferredRows = 0;
};

} // namespace tarvessa

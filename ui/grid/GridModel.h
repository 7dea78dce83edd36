#pragma once

#include "ui/grid/TextRows.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QFont>
#include <QIcon>

#include <map>
#include <memory>
#include <span>
#include <vector>

namespace tarvessa {

/// The texts and looks of a grid's cells. Rows count from 0 and do not include the grid's header row. Looks
/// are stored only for cells that have one.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// What a cell may have besides its text; an invalid colour and a null picture mean "as usual".
    struct Look {
        QColor background;
        QColor foreground;
        bool bold = false;
        QIcon picture;
    };

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Captions and alignments of the columns, one each; removes all rows.
    void setColumns(const QStringList& captions, const QList<Qt::Alignment>& alignments);

    /// Number of rows, those of an unfinished fill included.
    int size() const { return m_texts.size(); }

    /// Cuts or adds empty rows at the end.
    void resize(int rows);

    /// Takes out one row; not during a fill.
    void remove(int row);

    /// Adds a row of these cell texts; missing ones are empty, surplus ones are dropped.
    void append(std::span<const QAnyStringView> cells);

    /// Puts the rows into another order: `order` names, for each new place, the row's place until now. The
    /// view keeps its current row. Not during a fill.
    void reorder(const std::vector<int>& order);

    /// Between the two, rows are added without telling the view; endFill tells it once.
    void beginFill();
    void endFill();

    QString text(int row, int column) const { return m_texts.at(row, column).toString(); }

    /// The same, written into `room`: without a new text for each of many cells.
    QStringView textView(int row, int column, QString& room) const;
    void setText(int row, int column, const QString& text);
    const QString& caption(int column) const { return m_captions[column]; }
    void setCaption(int column, const QString& text);

    /// What a screen reader says for a column whose caption is empty.
    void setSpokenCaption(int column, const QString& caption) { m_spokenCaptions[column] = caption; }
    bool isHeaderBold(int column) const { return m_headerBold[static_cast<size_t>(column)]; }
    void setHeaderBold(int column, bool bold);
    Qt::Alignment alignment(int column) const { return m_alignments[column]; }

    /// The font of the captions; bold is added where set.
    void setHeaderFont(const QFont& font);

    /// The look of a cell as set; all usual when none was.
    Look look(int row, int column) const;
    void setLook(int row, int column, const Look& look);

    /// In this column a text of one blank means "selected": it shows the picture and says so to a screen
    /// reader. -1 for none.
    void setTickColumn(int column, const QIcon& picture);
    int tickColumn() const { return m_tickColumn; }
    bool isTicked(int row) const;

  private:
    using Looks = std::map<int, Look>; // by column

    const Looks* looksOf(int row) const;
    void cellChanged(int row, int column);

    TextRows m_texts;
    std::vector<std::unique_ptr<Looks>> m_looks; // by row, as far as the last one that ever had a look
    int m_shownRows = 0;
    bool m_filling = false;
    QStringList m_captions;
    std::map<int, QString> m_spokenCaptions;
    QList<Qt::Alignment> m_alignments;
    std::vector<bool> m_headerBold;
    QFont m_headerFont;
    int m_tickColumn = -1;
    QIcon m_tick;
};

} // namespace tarvessa

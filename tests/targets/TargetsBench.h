#pragma once

#include "support/Bench.h"
#include "targets/MetasQuadro.h"

#include <QComboBox>
#include <QLineEdit>

namespace tarvessa::test {

/// The workbench with the targets screen on it.
class TargetsBench : public Bench {
  public:
    /// A size at which all columns can be seen; the display of the tests is smaller than usual desktops.
    static constexpr QSize largeScreen{940, 560};

    /// As `Bench::reset`, with one row in `empresa`, which the product search asks.
    void reset();

    /// Opens the connection and the screen.
    void open();
    MetasQuadro* screen() const { return static_cast<MetasQuadro*>(window()); }

    /// The product code that a product box holds.
    QString tag(const QString& name) const { return box(name)->property("tag").toString(); }

    /// Texts of a data row, and of all of them.
    QStringList row(const QString& grid, int row) const { return cells(this->grid(grid), row); }
    QList<QStringList> rows(const QString& grid) const { return allCells(this->grid(grid)); }

    /// The row of a product on a grid where it stands once: rows come in the database's order. 0 for none.
    int rowOf(const QString& grid, const QString& codigo) const {
        return test::rowOf(this->grid(grid), 0, codigo);
    }

    /// Enters a product into the box and leaves it with Enter.
    void enterProduct(const QString& box, const QString& text) const;

    /// Goes to a tab by its shortcut; 0 or 1.
    void goToTab(int tab) const;

    /// Types both bounds, dd/mm/yyyy.
    void period(const QString& start, const QString& end) const;
};

} // namespace tarvessa::test

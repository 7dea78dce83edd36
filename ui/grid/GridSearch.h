#pragma once

#include <QString>

#include <compare>
#include <optional>
#include <vector>

namespace tarvessa {

class Grid;

/// Finds a text in the cells that a grid shows, without regard to accents and letter case. Nothing is found
/// for an empty text.
class GridSearch {
  public:
    struct Hit {
        int row = 0; // from 1
        int column = 0;
        auto operator<=>(const Hit&) const = default;
    };

    void search(const Grid& grid, const QString& sought);

    /// Whether a cell's text has what was searched for last.
    bool matches(QStringView cell) const;

    /// Row by row, from left to right.
    const std::vector<Hit>& hits() const { return m_hits; }

    /// The place among the hits of the first one behind a cell, or before it, past the ends if need be;
    /// nothing without hits.
    std::optional<size_t> after(Hit cell) const;
    std::optional<size_t> before(Hit cell) const;

    /// The same, beginning with the cell itself.
    std::optional<size_t> from(Hit cell) const;

  private:
    bool contains(QStringView cell, QString& form) const;

    QString m_sought; // as searches compare it
    std::vector<Hit> m_hits;
};

} // namespace tarvessa

#pragma once

#include "printing/layout/LayoutNames.h"
#include "printing/layout/LayoutXml.h"

namespace tarvessa::report {

/// Reads a band of a layout, and the texts, fields, lines and boxes on it.
class BandReader {
  public:
    /// Columns that elements use are added to `layout`, whose page, fonts, columns, totals and calculations
    /// must have been read.
    BandReader(LayoutXml& xml, const LayoutNames& names, Layout& layout)
        : m_xml(xml), m_names(names), m_layout(layout) {}

    enum class Kind { Page, Head, Detail, Foot };

    /// Reads the band whose element is open, up to its end. Raises RuntimeError (InvalidLayout).
    Band read(Kind kind);

  private:
    void readCondition(Band& band);
    void readText(Band& band);
    void readField(Band& band);
    void readLine(Band& band) const;
    void readBox(Band& band) const;
    Text textFrame(const Band& band) const;
    std::vector<Piece> pieces(const QString& text);
    Piece piece(const QString& name, const QString& mask);
    Format defaultFormat(ValueRef value) const;
    void checkAllowed(const QString& name, ValueRef value) const;
    void checkInside(const Band& band, const QRectF& place) const;

    LayoutXml& m_xml;
    const LayoutNames& m_names;
    Layout& m_layout;
    Kind m_kind = Kind::Detail;
};

} // namespace tarvessa::report

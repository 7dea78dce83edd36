#pragma once

#include "printing/layout/Layout.h"

#include <QXmlStreamReader>

#include <initializer_list>

namespace tarvessa::report {

/// The XML of a layout file, with typed attributes. Every mistake raises RuntimeError (InvalidLayout) with
/// file, line and problem.
class LayoutXml {
  public:
    LayoutXml(QString fileName, const QByteArray& contents);

    const QString& fileName() const { return m_fileName; }

    /// Goes into the file's one root element, which must have this name.
    void enterRoot(QStringView name);

    /// Goes to the next element inside the one that is open; false at its end. Text between elements is
    /// refused.
    bool nextElement();

    QString element() const { return m_reader.name().toString(); }
    int line() const { return static_cast<int>(m_reader.lineNumber()); }

    /// Reads the characters of the open element to its end.
    QString readText();

    /// Goes past the end of the open element, which must have nothing in it.
    void expectEmpty();

    /// Refuses attributes of the open element that are not among these; xsi:noNamespaceSchemaLocation is
    /// always allowed.
    void expectAttributes(std::initializer_list<QStringView> names) const;

    bool has(QStringView attribute) const;
    QString text(QStringView attribute) const;
    QString requiredText(QStringView attribute) const;

    /// "true" or "false"; false when missing.
    bool flag(QStringView attribute) const;

    /// A number in point form, not negative, times `dots`, the dots of its unit. For a missing attribute
    /// gives `missing` times `dots`.
    double length(QStringView attribute, double missing, double dots = dotsPerMillimetre) const;
    double requiredLength(QStringView attribute) const;

    /// "#RRGGBB"; `missing` when missing.
    QColor colour(QStringView attribute, const QColor& missing) const;

    /// One of the given words; the first of them when missing. Gives its place among them.
    int choice(QStringView attribute, std::initializer_list<QStringView> words) const;

    [[noreturn]] void fail(const QString& problem) const;
    [[noreturn]] void failUnknownElement() const;

  private:
    void failOnXmlError() const;

    QString m_fileName;
    QXmlStreamReader m_reader;
};

/// Raises RuntimeError (InvalidLayout) for contents that are not well-formed XML, with file, line and error.
[[noreturn]] void raiseXmlError(const QString& fileName, const QXmlStreamReader& reader);

} // namespace tarvessa::report

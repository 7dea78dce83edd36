#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tarvessa::test {

/// How a program of this machine ended, and what it wrote.
struct ProgramEnd {
    int exitCode = -1; ///< its exit code; -1 when it did not run or did not end
    QByteArray output;
    QByteArray errors;
};

/// Runs a program of this machine to its end, a minute at most. A test that is a Windows program under Wine
/// starts those of the machine below, and its paths on drive Z: are passed on in that machine's form.
ProgramEnd runProgram(const QString& name, const QStringList& arguments);

/// What a program wrote that must succeed. Raises TestError when it does not.
QByteArray outputOf(const QString& name, const QStringList& arguments);

/// The text of a PDF file, laid out as on the paper, a form feed after each page. Raises TestError.
QString pdfText(const QString& file);

} // namespace tarvessa::test

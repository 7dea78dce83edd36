#include "printing/layout/Layout.h"

#include "base/RuntimeError.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

bool Band::hasWrappingText() const {
    return std::any_of(texts.begin(), texts.end(), [](const Text& text) { return text.wraps; });
}

QSizeF Layout::paper() const {
    return page.fullRect(QPageLayout::Millimeter).size() * dotsPerMillimetre;
}

QRectF Layout::printable() const {
    const QRectF millimetres = page.paintRect(QPageLayout::Millimeter);
    return {millimetres.topLeft() * dotsPerMillimetre, millimetres.size() * dotsPerMillimetre};
}

void raiseLayoutError(const QString& fileName, qint64 line, const QString& problem) {
    throw RuntimeError(ErrorNumber::InvalidLayout, u"Layout de relatório inválido: %1, linha %2: %3"_s
                                                       .arg(QDir::toNativeSeparators(fileName))
                                                       .arg(line)
                                                       .arg(problem));
}

void raiseAtLine(const QString& fileName, qint64 line, const QString& name, const RuntimeError& error) {
    throw RuntimeError(error.number(),
                       u"%1, linha %2: \"%3\": %4"_s.arg(QDir::toNativeSeparators(fileName))
                           .arg(line)
                           .arg(name, error.text()),
                       error.sqlState(), error.statement());
}

} // namespace tarvessa::report

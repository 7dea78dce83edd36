#include "ui/PlainText.h"

#include <QTextDocument>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace tarvessa::plain {

QString toolTip(const QString& text) {
    // Only what would be taken for markup is escaped: an escaped text without markup would show its entities.
    return Qt::mightBeRichText(text)
               ? u"<span style='white-space: pre-wrap'>%1</span>"_s.arg(text.toHtmlEscaped())
               : text;
}

void setToolTip(QWidget* widget, const QString& text) {
    widget->setToolTip(toolTip(text));
}

} // namespace tarvessa::plain

#include "ui/grid/SummaryLabel.h"

#include "ui/PlainText.h"
#include "ui/grid/Grid.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace tarvessa {

QLabel* summaryLabel(Grid* grid) {
    auto* label = new QLabel(grid->parentWidget());
    label->setObjectName(u"Soma"_s);
    label->setTextFormat(Qt::PlainText);
    // With a stretch of its own, or a spacer beside it would leave it no room at all.
    QSizePolicy room(QSizePolicy::Ignored, QSizePolicy::Preferred);
    room.setHorizontalStretch(1);
    label->setSizePolicy(room);
    QObject::connect(grid, &Grid::selectionSummary, label, [label](const QString& summary) {
        label->setText(summary);
        plain::setToolTip(label, summary);
    });
    return label;
}

} // namespace tarvessa

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
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QObject::connect(grid, &Grid::selectionSummary, label, [label](const QString& summary) {
        label->setText(summary);
        plain::setToolTip(label, summary);
    });
    return label;
}

} // namespace tarvessa

#include "ui/grid/FindLine.h"

#include "base/Formata.h"
#include "ui/grid/Grid.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

bool isOwnKey(const QKeyEvent* event) {
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape;
}

// Enter and Escape are about the search, whatever they mean on the form.
class FindBox : public QLineEdit {
  public:
    explicit FindBox(FindLine* line) : QLineEdit(line), m_line(line) {}

  protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride && isOwnKey(static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        return QLineEdit::event(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (!isOwnKey(event))
            QLineEdit::keyPressEvent(event);
        else if (event->key() == Qt::Key_Escape)
            m_line->end();
        else
            m_line->step(!event->modifiers().testFlag(Qt::ShiftModifier));
    }

  private:
    FindLine* m_line;
};

QBoxLayout* boxAround(QLayout* layout, QWidget* widget) {
    for (int i = 0; layout && i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget() == widget)
            return qobject_cast<QBoxLayout*>(layout);
        if (QBoxLayout* inner = boxAround(item->layout(), widget))
            return inner;
    }
    return nullptr;
}

QString countText(size_t count) {
    return Formata(Dinheiro(static_cast<qint64>(count)), u"###,##0");
}

} // namespace

FindLine::FindLine(Grid* grid)
    : QWidget(grid->parentWidget()), m_grid(grid), m_box(new FindBox(this)), m_count(new QLabel(this)) {
    setObjectName(u"Busca"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    auto* label = new QLabel(u"Localizar"_s, this);
    label->setBuddy(m_box);
    m_box->setObjectName(u"Localizar"_s);
    m_box->setAccessibleName(label->text());
    m_count->setObjectName(u"Ocorrencias"_s);
    layout->addWidget(label);
    layout->addWidget(m_box, 1);
    layout->addWidget(m_count);
    const QToolButton* previous = addButton(u"OcorrenciaAnterior"_s, u"Anterior"_s, u"Shift+F3"_s);
    const QToolButton* next = addButton(u"ProximaOcorrencia"_s, u"Próxima"_s, u"F3"_s);
    const QToolButton* leave = addButton(u"FechaBusca"_s, u"Fechar"_s, u"Esc"_s);
    connect(previous, &QToolButton::clicked, this, [this] { step(false); });
    connect(next, &QToolButton::clicked, this, [this] { step(true); });
    connect(leave, &QToolButton::clicked, this, &FindLine::end);
    connect(m_box, &QLineEdit::textChanged, this, &FindLine::searchTyped);
    const QAbstractItemModel* model = grid->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &FindLine::searchAgainSoon);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &FindLine::searchAgainSoon);
    connect(model, &QAbstractItemModel::dataChanged, this, &FindLine::searchAgainSoon);
    connect(model, &QAbstractItemModel::layoutChanged, this, &FindLine::searchAgainSoon);
    connect(model, &QAbstractItemModel::modelReset, this, &FindLine::searchAgainSoon);
    connect(grid, &Grid::cellEntered, this, &FindLine::tellHits);
    place();
    hide();
}

void FindLine::place() {
    QBoxLayout* box = boxAround(m_grid->parentWidget()->layout(), m_grid);
    box->insertWidget(box->indexOf(m_grid) + 1, this);
    setTabOrder(m_grid, m_box);
}

// The keys of the buttons are those of the grid's actions.
QToolButton* FindLine::addButton(const QString& name, const QString& caption, const QString& keys) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(caption);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolTip(u"Tecla de atalho: "_s + keys);
    layout()->addWidget(button);
    return button;
}

void FindLine::begin() {
    m_start = {m_grid->currentRow(), 0};
    const bool shown = isVisible();
    setVisible(true);
    // First to the grid: a control that stores its value when it is left has done so, or has kept the focus
    // because the value was refused, before the box takes it.
    if (!m_box->hasFocus()) {
        m_grid->setFocus();
        if (!m_grid->isEnabled() || m_grid->window()->focusWidget() == m_grid)
            m_box->setFocus();
    }
    m_box->selectAll();
    if (!shown) {
        m_search.search(*m_grid, m_box->text());
        tellHits();
        Q_EMIT m_grid->findLineShown(true);
    }
}

void FindLine::end() {
    m_grid->setFocus();
    hide();
    m_grid->viewport()->update();
    Q_EMIT m_grid->findLineShown(false);
}

bool FindLine::isHit(int row, int column) const {
    return isVisible() && m_grid->isOutput(column) && !m_grid->isTickColumn(column) &&
           m_search.matches(m_grid->text(row, column));
}

void FindLine::searchTyped() {
    m_search.search(*m_grid, m_box->text());
    goTo(m_search.from(m_start));
}

void FindLine::step(bool forward) {
    const GridSearch::Hit current{m_grid->currentRow(), m_grid->currentColumn()};
    goTo(forward ? m_search.after(current) : m_search.before(current));
    m_start = {m_grid->currentRow(), 0};
}

// Rows that change come many at a time.
void FindLine::searchAgainSoon() {
    if (m_waiting || !isVisible())
        return;
    m_waiting = true;
    QTimer::singleShot(0, this, [this] {
        m_waiting = false;
        m_search.search(*m_grid, m_box->text());
        tellHits();
    });
}

void FindLine::goTo(std::optional<size_t> hit) {
    if (hit)
        m_grid->setCurrentCell(m_search.hits()[*hit].row, m_search.hits()[*hit].column);
    tellHits();
}

void FindLine::tellHits() {
    if (!isVisible())
        return;
    const std::vector<GridSearch::Hit>& hits = m_search.hits();
    const GridSearch::Hit current{m_grid->currentRow(), m_grid->currentColumn()};
    const auto hit = std::lower_bound(hits.begin(), hits.end(), current);
    QString told;
    if (m_box->text().isEmpty())
        told = QString();
    else if (hits.empty())
        told = u"Nenhuma ocorrência"_s;
    else if (hit != hits.end() && *hit == current)
        told =
            u"%1 de %2"_s.arg(countText(static_cast<size_t>(hit - hits.begin()) + 1), countText(hits.size()));
    else
        told = hits.size() == 1 ? u"1 ocorrência"_s : u"%1 ocorrências"_s.arg(countText(hits.size()));
    m_count->setText(told);
    m_box->setAccessibleDescription(told);
    m_grid->viewport()->update();
}

} // namespace tarvessa

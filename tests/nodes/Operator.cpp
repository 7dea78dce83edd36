#include "nodes/Operator.h"

#include "closing/FechamentosInterrompidos.h"
#include "closing/PainelFechamento.h"
#include "support/Hands.h"
#include "targets/MetasQuadro.h"
#include "ui/grid/Grid.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QJsonArray>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

const QStringList operations{u"Command2"_s, u"Command3"_s, u"Command4"_s};
constexpr int turns = 40;

// Every product of this shop begins with so many, and only one line sells it.
const QString untouchedStock = u"estoque atual 500."_s;

} // namespace

Operator::Operator(PainelFechamento& panel) : m_panel(panel) {
    qApp->installEventFilter(this);
}

QJsonObject Operator::run(const QStringList& command) {
    m_boxes.clear();
    m_unclear.clear();
    const Hands hands(&m_panel);
    if (command.first() == u"press")
        hands.button(command.value(1))->click();
    else if (command.first() == u"interrupted")
        hands.key(Qt::Key_F7);
    else if (command.first() == u"targets")
        hands.control<QAction>(u"Metas"_s)->trigger();
    QCoreApplication::processEvents();
    closeViewers();
    QStringList enabled;
    for (const QString& name : operations)
        if (hands.button(name)->isEnabled())
            enabled.append(name);
    return {{u"boxes"_s, QJsonArray::fromStringList(m_boxes)},
            {u"rows"_s, hands.grid()->rows() - 1},
            {u"enabled"_s, QJsonArray::fromStringList(enabled)},
            {u"waiting"_s, hands.control<QLabel>(u"Interrompidos"_s)->isVisible()},
            {u"unclear"_s, QJsonArray::fromStringList(m_unclear)}};
}

// Not from the filter itself: the window is not yet in its own event loop.
bool Operator::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Show)
        return false;
    if (auto* box = qobject_cast<QMessageBox*>(object))
        QTimer::singleShot(0, box, [this, box] { answer(box); });
    else if (auto* window = qobject_cast<FechamentosInterrompidos*>(object))
        QTimer::singleShot(0, window, [this, window] { conclude(window); });
    else if (auto* board = qobject_cast<MetasQuadro*>(object))
        QTimer::singleShot(0, board, [this, board] { compute(board); });
    return false;
}

void Operator::answer(QMessageBox* box) {
    m_boxes.append(box->text() + u' ' + box->informativeText() + u' ' + box->detailedText());
    QAbstractButton* yes = box->button(QMessageBox::Yes);
    (yes ? yes : box->button(QMessageBox::Ok))->click();
}

/// An error report, or the news that another station is at it: one tries again later.
bool Operator::hasStopped() const {
    return std::any_of(m_boxes.begin(), m_boxes.end(), [](const QString& text) {
        return text.contains(u"Erro em tempo de execução"_s) || text.contains(u"Outra estação"_s);
    });
}

void Operator::conclude(FechamentosInterrompidos* window) {
    const Hands hands(window);
    for (int turn = 0; turn < turns && hands.grid()->rows() > 1 && window->isVisible() && !hasStopped();
         ++turn) {
        if (hands.control<QWidget>(u"Frame1"_s)->isVisible()) {
            const bool untouched = hands.control<QLabel>(u"Label2"_s)->text().contains(untouchedStock);
            hands.control<QRadioButton>(untouched ? u"NaoSaiu"_s : u"JaSaiu"_s)->click();
        }
        if (!hands.button(u"Command1"_s)->isEnabled())
            m_unclear.append(cells(hands.grid(), 1).join(u" | "_s));
        hands.button(hands.button(u"Command1"_s)->isEnabled() ? u"Command1"_s : u"Command2"_s)->click();
    }
    window->reject();
}

void Operator::compute(MetasQuadro* board) {
    showActive(board);
    const Hands hands(board);
    hands.key(Qt::Key_2, Qt::AltModifier);
    hands.fill(u"DataIni"_s, u"01012020"_s);
    hands.fill(u"DataFin"_s, u"31122099"_s);
    hands.button(u"Command4"_s)->click();
    board->close();
}

void Operator::closeViewers() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"TextViewer")
            window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace tarvessa::test

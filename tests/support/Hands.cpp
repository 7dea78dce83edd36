#include "support/Hands.h"

#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tarvessa::test {

namespace {

constexpr int ActivationMs = 5000;
// A button pressed by its shortcut clicks a tenth of a second later.
constexpr int ShortcutMs = 200;

} // namespace

QLineEdit* Hands::box(const QString& name) const {
    return control<QLineEdit>(name);
}

QComboBox* Hands::list(const QString& name) const {
    return control<QComboBox>(name);
}

QPushButton* Hands::button(const QString& name) const {
    return control<QPushButton>(name);
}

Grid* Hands::grid(const QString& name) const {
    return control<Grid>(name);
}

QString Hands::focus() {
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
}

void Hands::click(Grid* grid, int row, int column) const {
    clickAt(grid, place(grid, row, column));
    settle();
}

void Hands::clickTwice(Grid* grid, int row, int column) const {
    const QPoint point = grid->mapTo(grid->window(), place(grid, row, column));
    QTest::mouseDClick(grid->window()->windowHandle(), Qt::LeftButton, {}, point);
    settle();
}

void Hands::press(const QString& name) const {
    const QPushButton* target = button(name);
    if (!target->isEnabled())
        QFAIL(qPrintable(name + QStringLiteral(" is disabled")));
    clickAt(target, target->rect().center());
    settle();
}

void Hands::key(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QWidget* target = QApplication::focusWidget();
    QTest::keyClick(target ? target : m_window, key, modifiers);
    if (modifiers.testFlag(Qt::AltModifier))
        QTest::qWait(ShortcutMs);
    settle();
}

void Hands::type(const QString& text) const {
    for (const QChar c : text)
        if (c.unicode() < 0x100)
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
        else
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c), {});
    settle();
}

void Hands::paste(const QString& text) const {
    QApplication::clipboard()->setText(text);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_V, Qt::ControlModifier);
}

void Hands::fill(const QString& name, const QString& text) const {
    box(name)->setFocus();
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    box(name)->setCursorPosition(0);
    type(text);
}

void Hands::choose(const QString& name, const QString& start) const {
    QComboBox* target = list(name);
    const int wanted = target->findText(start, Qt::MatchStartsWith);
    QVERIFY(wanted >= 0);
    target->setFocus();
    for (int steps = 0; target->currentIndex() != wanted && steps <= target->count(); ++steps)
        key(target->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
    QCOMPARE(target->currentIndex(), wanted);
}

void Hands::settle() const {
    // A posted key may post what follows from it.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    if (m_window && m_window->isVisible() && !QApplication::activeWindow()) {
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window, ActivationMs));
    }
}

void Hands::noControl(const QString& name) {
    qFatal("no control %s", qPrintable(name));
}

QPoint Hands::place(Grid* grid, int row, int column) const {
    if (row == 0) {
        const QHeaderView* header = grid->horizontalHeader();
        const QPoint inHeader(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                              header->height() / 2);
        return header->viewport()->mapTo(grid, inHeader);
    }
    const QModelIndex cell = grid->model()->index(row - 1, column);
    grid->scrollTo(cell);
    return grid->viewport()->mapTo(grid, grid->visualRect(cell).center());
}

void Hands::clickAt(const QWidget* widget, const QPoint& point) const {
    QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(widget->window(), point));
}

void pasteInto(QWidget* control, const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(control, Qt::Key_V, Qt::ControlModifier);
}

bool showActive(QWidget* form) {
    form->show();
    form->activateWindow();
    return QTest::qWaitForWindowActive(form, ActivationMs);
}

QStringList cells(const Grid* grid, int row) {
    QStringList texts;
    for (int column = 0; column < grid->columns(); ++column)
        texts.append(grid->text(row, column));
    return texts;
}

QList<QStringList> allCells(const Grid* grid) {
    QList<QStringList> all;
    for (int row = 1; row < grid->rows(); ++row)
        all.append(cells(grid, row));
    return all;
}

QStringList columnCells(const Grid* grid, int column) {
    QStringList texts;
    for (int row = 1; row < grid->rows(); ++row)
        texts.append(grid->text(row, column));
    return texts;
}

int rowOf(const Grid* grid, int column, const QString& text) {
    for (int row = 1; row < grid->rows(); ++row)
        if (grid->text(row, column) == text)
            return row;
    return 0;
}

QList<int> columnWidths(const Grid* grid) {
    QList<int> twips;
    for (int column = 0; column < grid->columns(); ++column)
        twips.append(grid->columnTwips(column));
    return twips;
}

QString alignments(const Grid* grid) {
    const QAbstractItemModel* model = grid->model();
    const auto horizontal = [](const QVariant& value) {
        return value.value<Qt::Alignment>() & Qt::AlignHorizontal_Mask;
    };
    QString marks;
    for (int column = 0; column < grid->columns(); ++column) {
        const Qt::Alignment caption =
            horizontal(model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole));
        const bool differs =
            model->rowCount() > 0 &&
            horizontal(model->data(model->index(0, column), Qt::TextAlignmentRole)) != caption;
        marks += differs                       ? u'?'
                 : caption == Qt::AlignLeft    ? u'<'
                 : caption == Qt::AlignRight   ? u'>'
                 : caption == Qt::AlignHCenter ? u'^'
                                               : u'?';
    }
    return marks;
}

int runInEventLoop(const std::function<void()>& action) {
    constexpr int limitMs = 20000;
    constexpr int nobody = -1;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, [] { QApplication::exit(nobody); });
    limit.start(limitMs);
    QTimer::singleShot(0, action);
    return QApplication::exec();
}

} // namespace tarvessa::test

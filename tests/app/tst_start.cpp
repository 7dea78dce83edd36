// The program from its start to its end.

#include "app/Run.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// Notes the windows that are shown, message boxes apart.
class Windows : public QObject {
  public:
    Windows() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::Show && widget && widget->isWindow() &&
            !qobject_cast<QMessageBox*>(object))
            shown.append(object->objectName());
        return false;
    }

    QStringList shown;
};

} // namespace

class TstStart : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() {
        b->reset();
        b->shop().basico();
    }

    void runsUntilItsWindowIsClosed();
    void failedStartShowsNoWindow();

  private:
    std::unique_ptr<Bench> b;
};

void TstStart::runsUntilItsWindowIsClosed() {
    const Windows windows;
    // Again and again: the panel is shown while it still loads, and closing it then ends nothing.
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [] {
        for (QWidget* window : QApplication::topLevelWidgets())
            window->close();
    });
    closer.start(200);
    QCOMPARE(run(), 0);
    QCOMPARE(windows.shown, QStringList{u"PainelFechamento"_s});
}

void TstStart::failedStartShowsNoWindow() {
    b->server().useSocket(u"/tmp/tarvessa-nobody-listens-here"_s);
    const Windows windows;
    ModalHelper modal;
    modal.expect(u"Não foi possível conectar ao banco de dados. Verifique!!!"_s, QMessageBox::Ok);
    QCOMPARE(run(), 0);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes().size(), 1);
    QCOMPARE(windows.shown, QStringList());
}

QTEST_MAIN(TstStart)
#include "tst_start.moc"

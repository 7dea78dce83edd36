// How a closing goes along: messages, log file, viewer, progress.

#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "support/StatementLog.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// What the operator sees of the progress bar while a batch keeps the program from doing anything else.
class Observer : public QObject {
  public:
    struct Seen {
        int value;
        int most;
        QString text;
        bool busyPointer;
        bool inStatusBar;
        int width;
    };

    explicit Observer(QProgressBar* progress) : m_progress(progress) { progress->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            seen.append({m_progress->value(), m_progress->maximum(), m_progress->text(), busyPointer(),
                         m_progress->parentWidget()->rect().contains(m_progress->geometry()),
                         m_progress->width()});
        return false;
    }

    static bool busyPointer() {
        return QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
    }

    QList<Seen> seen;

  private:
    QProgressBar* m_progress;
};

/// Notes the pointer at the moment each message comes up.
class PointerAtBoxes : public QObject {
  public:
    PointerAtBoxes() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object))
            busy.append(Observer::busyPointer());
        return false;
    }

    QList<bool> busy;
};

} // namespace

class TstLote : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<PanelBench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();

    void messagesOfACleanRun();
    void messagesOfARunWithRefusals();
    void messageWithNothingSelected();
    void selectedRowsThatAddUpToZero();
    void zeroTotalPathLeavesTheLogUsable();
    void logThatCannotBeCreated_data();
    void logThatCannotBeCreated();
    void logOnAFullDisk();
    void logIsWholeBeforeTheMessageAtTheEnd();
    void logOpensInAWindowOfOurOwn();
    void logOpensInTheDesktopsViewer();
    void viewerWithoutAnApplicationForTexts();
    void reloadAtTheEndShowsWhatIsOpenNow();
    void progressOfALargerBatch();
    void noProgressForAHandful();
    void pointerAndProgressAreGoneAfterAnError();
    void otherInputWaitsForTheBatch();

  private:
    void lote(int count);
    void closeAll(const QString& fim);
    QProgressBar* progress() { return b->panel()->findChild<QProgressBar*>(); }

    std::unique_ptr<PanelBench> b;
};

void TstLote::init() {
    b->reset();
    b->shop().basico();
    b->shop().cliente({.codigo = u"RUIM"_s, .formaPg = u"FIADO"_s});
}

void TstLote::lote(int count) {
    for (int pedido = 1; pedido <= count; ++pedido)
        b->shop().documento({.pedido = pedido, .nomeVendedor = u"%1"_s.arg(pedido, 4, 10, QChar(u'0'))});
    QVERIFY(b->open());
}

void TstLote::closeAll(const QString& fim) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(fim, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    for (const ModalHelper::Box& caixa : modal.boxes()) {
        QCOMPARE(caixa.title, u"Atenção!!!"_s);
        QCOMPARE(caixa.icon, QMessageBox::Information);
        QCOMPARE(caixa.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
}

void TstLote::messagesOfACleanRun() {
    lote(2);
    closeAll(mensagens::sucesso);
    QVERIFY(PanelBench::viewerText().isNull());
}

void TstLote::messagesOfARunWithRefusals() {
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
}

void TstLote::messageWithNothingSelected() {
    lote(2);
    b->press(u"Command1"_s);
    const auto before = b->shop().retrato();
    StatementLog log(b->server());
    ModalHelper modal;
    modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(modal.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(b->log(), PanelBench::logWith({}));
    QCOMPARE(b->shop().retrato(), before);
    QCOMPARE(b->grid()->rows(), 3);
}

// The test is on the total, so rows that cancel each other out count as nothing selected.
void TstLote::selectedRowsThatAddUpToZero() {
    b->shop().documento({.pedido = 1, .linhas = {{.total = u"10.00"_s}}});
    b->shop().documento({.pedido = 2, .linhas = {{.total = u"-10.00"_s}}});
    QVERIFY(b->open());
    ModalHelper modal;
    modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstLote::zeroTotalPathLeavesTheLogUsable() {
    lote(1);
    b->press(u"Command1"_s);
    for (int attempt = 0; attempt < 2; ++attempt) {
        ModalHelper modal;
        modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(b->log(), PanelBench::logWith({}));
    }
    b->server().execute(u"UPDATE clientes SET formapg = 'FIADO'"_s);
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({u"PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
}

void TstLote::logThatCannotBeCreated_data() {
    QTest::addColumn<bool>("withoutFolder");
    QTest::newRow("no folder") << true;
    QTest::newRow("a folder in its place") << false;
}

void TstLote::logThatCannotBeCreated() {
    QFETCH(bool, withoutFolder);
    lote(1);
    if (withoutFolder)
        QVERIFY(QDir(b->programFolder()).removeRecursively());
    else
        QVERIFY(QDir().mkpath(b->logPath()));
    const auto before = b->shop().retrato();
    StatementLog log(b->server());
    {
        ModalHelper modal;
        modal.expectContaining(u"Não foi possível gravar o arquivo "_s +
                                   QDir::toNativeSeparators(b->logPath()),
                               QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(modal.boxes()[0].icon, QMessageBox::Critical);
        QVERIFY(modal.boxes()[0].text.startsWith(mensagens::erroDeExecucao));
    }
    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(b->shop().retrato(), before);

    QDir(b->logPath()).removeRecursively();
    QDir().mkpath(b->programFolder());
    closeAll(mensagens::sucesso);
    QCOMPARE(b->log(), PanelBench::logWith({}));
}

void TstLote::logOnAFullDisk() {
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("needs a device that is always full");
    lote(1);
    QVERIFY(QFile::link(u"/dev/full"_s, b->logPath()));
    StatementLog log(b->server());
    ModalHelper modal;
    modal.expectContaining(u"Não foi possível gravar o arquivo"_s, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(log.texts(), QStringList());
}

void TstLote::logIsWholeBeforeTheMessageAtTheEnd() {
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    QByteArray atBox;
    class ReadAtBox : public QObject {
      public:
        ReadAtBox(const PanelBench& bench, QByteArray& read) : m_bench(bench), m_read(read) {
            qApp->installEventFilter(this);
        }
        bool eventFilter(QObject* object, QEvent* event) override {
            if (event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object))
                m_read = m_bench.log();
            return false;
        }

      private:
        const PanelBench& m_bench;
        QByteArray& m_read;
    } reader(*b, atBox);
    closeAll(mensagens::comErros);
    QCOMPARE(atBox, PanelBench::logWith({u"PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
}

void TstLote::logOpensInAWindowOfOurOwn() {
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QCOMPARE(PanelBench::viewerText(), u"LOG DE FECHAMENTO:\n------------------\n\n"
                                       "PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA.\n"_s);
    // The panel goes on while it is open.
    QCOMPARE(b->column(painelfechamento::Pedido), QStringList{u"1"_s});
    b->press(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);
}

namespace {

/// Puts a command where the program looks for it.
bool writeCommand(const PanelBench& b, const QString& nome, const QByteArray& script) {
    QFile file(b.commandsFolder() + u'/' + nome);
    return file.open(QIODevice::WriteOnly) && file.write("#!/bin/sh\n" + script) > 0 &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void TstLote::logOpensInTheDesktopsViewer() {
    const QString opened = b->commandsFolder() + u"/aberto"_s;
    QVERIFY(writeCommand(*b, u"xdg-mime"_s, "echo editor.desktop\n"));
    QVERIFY(writeCommand(*b, u"xdg-open"_s, "printf '%s' \"$*\" >'" + QFile::encodeName(opened) + "'\n"));
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    const auto argument = [&opened] {
        QFile file(opened);
        return file.open(QIODevice::ReadOnly) ? QFile::decodeName(file.readAll()) : QString();
    };
    QTRY_COMPARE(argument(), b->logPath());
    QVERIFY(PanelBench::viewerText().isNull());
}

void TstLote::viewerWithoutAnApplicationForTexts() {
    QVERIFY(writeCommand(*b, u"xdg-mime"_s, "exit 0\n"));
    QVERIFY(writeCommand(*b, u"xdg-open"_s, "exit 3\n"));
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    closeAll(mensagens::comErros);
    QVERIFY(PanelBench::viewerText().startsWith(u"LOG DE FECHAMENTO:"_s));
}

void TstLote::reloadAtTheEndShowsWhatIsOpenNow() {
    lote(2);
    b->shop().documento({.pedido = 70, .linhas = {{.total = u"5.00"_s}}});
    QCOMPARE(b->grid()->rows(), 3);
    b->click(2, painelfechamento::Selecao);
    closeAll(mensagens::sucesso);
    QCOMPARE(b->column(painelfechamento::Pedido), (QStringList{u"2"_s, u"70"_s}));
    QCOMPARE(b->column(painelfechamento::Selecao), (QStringList{u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"15,00"_s);
}

void TstLote::progressOfALargerBatch() {
    constexpr int count = 30;
    lote(count);
    Observer observer(progress());
    PointerAtBoxes pointer;
    QVERIFY(!progress()->isVisible());
    closeAll(mensagens::sucesso);

    QVERIFY(!observer.seen.isEmpty());
    int previous = 1;
    for (const Observer::Seen& one : observer.seen) {
        QVERIFY(one.busyPointer);
        QVERIFY(one.value >= previous);
        QCOMPARE(one.most, count);
        // Behind it the time left, when the machine is slow.
        QVERIFY2(one.text.startsWith(u"Pré-venda %1 de %2"_s.arg(one.value).arg(count)),
                 qPrintable(one.text));
        QVERIFY(one.inStatusBar);
        QVERIFY2(one.width > b->panel()->fontMetrics().horizontalAdvance(one.text),
                 qPrintable(QString::number(one.width)));
        previous = one.value;
    }
    QCOMPARE(pointer.busy, (QList<bool>{false, false}));
    QVERIFY(!progress()->isVisible());
    QVERIFY(!QApplication::overrideCursor());
}

void TstLote::noProgressForAHandful() {
    lote(5);
    Observer observer(progress());
    closeAll(mensagens::sucesso);
    QVERIFY(observer.seen.isEmpty());
    QVERIFY(!QApplication::overrideCursor());
}

void TstLote::pointerAndProgressAreGoneAfterAnError() {
    b->shop().documento({.pedido = 99, .nomeVendedor = u"9999"_s, .vendedor = u"40000"_s});
    lote(8);
    Observer observer(progress());
    PointerAtBoxes pointer;
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expectContaining(u"código de vendedor 40000"_s, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!observer.seen.isEmpty());
    QCOMPARE(pointer.busy, (QList<bool>{false, false}));
    QVERIFY(!progress()->isVisible());
    QVERIFY(!QApplication::overrideCursor());
}

// What is asked of the program meanwhile comes when the batch is over.
void TstLote::otherInputWaitsForTheBatch() {
    lote(8);
    bool pedido = false;
    bool came = false;
    bool cameWhile = false;
    class AskWhile : public QObject {
      public:
        explicit AskWhile(std::function<void()> ask) : m_ask(std::move(ask)) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                m_ask();
            return false;
        }

      private:
        std::function<void()> m_ask;
    } paintings([&] {
        if (std::exchange(pedido, true))
            return;
        QMetaObject::invokeMethod(
            b->panel(),
            [&] {
                came = true;
                cameWhile = progress()->isVisible();
            },
            Qt::QueuedConnection);
    });
    progress()->installEventFilter(&paintings);
    closeAll(mensagens::sucesso);
    QVERIFY(came);
    QVERIFY(!cameWhile);
}

QTEST_MAIN(TstLote)
#include "tst_lote.moc"

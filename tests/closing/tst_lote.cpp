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
class Observador : public QObject {
  public:
    struct Visto {
        int valor;
        int maximo;
        QString texto;
        bool ponteiroOcupado;
        bool dentroDaBarraDeEstado;
        int largura;
    };

    explicit Observador(QProgressBar* progresso) : m_progresso(progresso) {
        progresso->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* evento) override {
        if (evento->type() == QEvent::Paint)
            vistos.append({m_progresso->value(), m_progresso->maximum(), m_progresso->text(),
                           ponteiroOcupado(),
                           m_progresso->parentWidget()->rect().contains(m_progresso->geometry()),
                           m_progresso->width()});
        return false;
    }

    static bool ponteiroOcupado() {
        return QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
    }

    QList<Visto> vistos;

  private:
    QProgressBar* m_progresso;
};

/// Notes the pointer at the moment each message comes up.
class PonteiroNasMensagens : public QObject {
  public:
    PonteiroNasMensagens() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* objeto, QEvent* evento) override {
        if (evento->type() == QEvent::Show && qobject_cast<QMessageBox*>(objeto))
            ocupado.append(Observador::ponteiroOcupado());
        return false;
    }

    QList<bool> ocupado;
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
    void lote(int quantas);
    void fechaTudo(const QString& fim);
    QProgressBar* progresso() { return b->panel()->findChild<QProgressBar*>(); }

    std::unique_ptr<PanelBench> b;
};

void TstLote::init() {
    b->reset();
    b->shop().basico();
    b->shop().cliente({.codigo = u"RUIM"_s, .formaPg = u"FIADO"_s});
}

void TstLote::lote(int quantas) {
    for (int pedido = 1; pedido <= quantas; ++pedido)
        b->shop().documento({.pedido = pedido, .nomeVendedor = u"%1"_s.arg(pedido, 4, 10, QChar(u'0'))});
    QVERIFY(b->open());
}

void TstLote::fechaTudo(const QString& fim) {
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
    fechaTudo(mensagens::sucesso);
    QVERIFY(PanelBench::viewerText().isNull());
}

void TstLote::messagesOfARunWithRefusals() {
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    fechaTudo(mensagens::comErros);
}

void TstLote::messageWithNothingSelected() {
    lote(2);
    b->press(u"Command1"_s);
    const auto antes = b->shop().retrato();
    StatementLog registro(b->server());
    ModalHelper modal;
    modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(modal.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(registro.texts(), QStringList());
    QCOMPARE(b->log(), PanelBench::logWith({}));
    QCOMPARE(b->shop().retrato(), antes);
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
    for (int vez = 0; vez < 2; ++vez) {
        ModalHelper modal;
        modal.expect(mensagens::nadaSelecionado, QMessageBox::Ok);
        b->press(u"Command4"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(b->log(), PanelBench::logWith({}));
    }
    b->server().execute(u"UPDATE clientes SET formapg = 'FIADO'"_s);
    QVERIFY(b->open());
    fechaTudo(mensagens::comErros);
    QCOMPARE(b->log(), PanelBench::logWith({u"PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
}

void TstLote::logThatCannotBeCreated_data() {
    QTest::addColumn<bool>("semPasta");
    QTest::newRow("no folder") << true;
    QTest::newRow("a folder in its place") << false;
}

void TstLote::logThatCannotBeCreated() {
    QFETCH(bool, semPasta);
    lote(1);
    if (semPasta)
        QVERIFY(QDir(b->programFolder()).removeRecursively());
    else
        QVERIFY(QDir().mkpath(b->logPath()));
    const auto antes = b->shop().retrato();
    StatementLog registro(b->server());
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
    QCOMPARE(registro.texts(), QStringList());
    QCOMPARE(b->shop().retrato(), antes);

    QDir(b->logPath()).removeRecursively();
    QDir().mkpath(b->programFolder());
    fechaTudo(mensagens::sucesso);
    QCOMPARE(b->log(), PanelBench::logWith({}));
}

void TstLote::logOnAFullDisk() {
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("needs a device that is always full");
    lote(1);
    QVERIFY(QFile::link(u"/dev/full"_s, b->logPath()));
    StatementLog registro(b->server());
    ModalHelper modal;
    modal.expectContaining(u"Não foi possível gravar o arquivo"_s, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(registro.texts(), QStringList());
}

void TstLote::logIsWholeBeforeTheMessageAtTheEnd() {
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    QByteArray naMensagem;
    class LeNaMensagem : public QObject {
      public:
        LeNaMensagem(const PanelBench& bancada, QByteArray& lido) : m_bancada(bancada), m_lido(lido) {
            qApp->installEventFilter(this);
        }
        bool eventFilter(QObject* objeto, QEvent* evento) override {
            if (evento->type() == QEvent::Show && qobject_cast<QMessageBox*>(objeto))
                m_lido = m_bancada.log();
            return false;
        }

      private:
        const PanelBench& m_bancada;
        QByteArray& m_lido;
    } leitor(*b, naMensagem);
    fechaTudo(mensagens::comErros);
    QCOMPARE(naMensagem, PanelBench::logWith({u"PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
}

void TstLote::logOpensInAWindowOfOurOwn() {
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    fechaTudo(mensagens::comErros);
    QCOMPARE(PanelBench::viewerText(), u"LOG DE FECHAMENTO:\n------------------\n\n"
                                       "PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA.\n"_s);
    // The panel goes on while it is open.
    QCOMPARE(b->column(colunas::Pedido), QStringList{u"1"_s});
    b->press(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);
}

namespace {

/// Puts a command where the program looks for it.
bool escreveComando(const PanelBench& b, const QString& nome, const QByteArray& roteiro) {
    QFile arquivo(b.commandsFolder() + u'/' + nome);
    return arquivo.open(QIODevice::WriteOnly) && arquivo.write("#!/bin/sh\n" + roteiro) > 0 &&
           arquivo.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void TstLote::logOpensInTheDesktopsViewer() {
    const QString aberto = b->commandsFolder() + u"/aberto"_s;
    QVERIFY(escreveComando(*b, u"xdg-mime"_s, "echo editor.desktop\n"));
    QVERIFY(escreveComando(*b, u"xdg-open"_s, "printf '%s' \"$*\" >'" + QFile::encodeName(aberto) + "'\n"));
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    fechaTudo(mensagens::comErros);
    const auto argumento = [&aberto] {
        QFile arquivo(aberto);
        return arquivo.open(QIODevice::ReadOnly) ? QFile::decodeName(arquivo.readAll()) : QString();
    };
    QTRY_COMPARE(argumento(), b->logPath());
    QVERIFY(PanelBench::viewerText().isNull());
}

void TstLote::viewerWithoutAnApplicationForTexts() {
    QVERIFY(escreveComando(*b, u"xdg-mime"_s, "exit 0\n"));
    QVERIFY(escreveComando(*b, u"xdg-open"_s, "exit 3\n"));
    b->shop().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->open());
    fechaTudo(mensagens::comErros);
    QVERIFY(PanelBench::viewerText().startsWith(u"LOG DE FECHAMENTO:"_s));
}

void TstLote::reloadAtTheEndShowsWhatIsOpenNow() {
    lote(2);
    b->shop().documento({.pedido = 70, .linhas = {{.total = u"5.00"_s}}});
    QCOMPARE(b->grid()->rows(), 3);
    b->click(2, colunas::Selecao);
    fechaTudo(mensagens::sucesso);
    QCOMPARE(b->column(colunas::Pedido), (QStringList{u"2"_s, u"70"_s}));
    QCOMPARE(b->column(colunas::Selecao), (QStringList{u" "_s, u" "_s}));
    QCOMPARE(b->total(), u"15,00"_s);
}

void TstLote::progressOfALargerBatch() {
    constexpr int quantas = 30;
    lote(quantas);
    Observador observador(progresso());
    PonteiroNasMensagens ponteiro;
    QVERIFY(!progresso()->isVisible());
    fechaTudo(mensagens::sucesso);

    QVERIFY(!observador.vistos.isEmpty());
    int anterior = 1;
    for (const Observador::Visto& visto : observador.vistos) {
        QVERIFY(visto.ponteiroOcupado);
        QVERIFY(visto.valor >= anterior);
        QCOMPARE(visto.maximo, quantas);
        // Behind it the time left, when the machine is slow.
        QVERIFY2(visto.texto.startsWith(u"Pré-venda %1 de %2"_s.arg(visto.valor).arg(quantas)),
                 qPrintable(visto.texto));
        QVERIFY(visto.dentroDaBarraDeEstado);
        QVERIFY2(visto.largura > b->panel()->fontMetrics().horizontalAdvance(visto.texto),
                 qPrintable(QString::number(visto.largura)));
        anterior = visto.valor;
    }
    QCOMPARE(ponteiro.ocupado, (QList<bool>{false, false}));
    QVERIFY(!progresso()->isVisible());
    QVERIFY(!QApplication::overrideCursor());
}

void TstLote::noProgressForAHandful() {
    lote(5);
    Observador observador(progresso());
    fechaTudo(mensagens::sucesso);
    QVERIFY(observador.vistos.isEmpty());
    QVERIFY(!QApplication::overrideCursor());
}

void TstLote::pointerAndProgressAreGoneAfterAnError() {
    b->shop().documento({.pedido = 99, .nomeVendedor = u"9999"_s, .vendedor = u"40000"_s});
    lote(8);
    Observador observador(progresso());
    PonteiroNasMensagens ponteiro;
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expectContaining(u"código de vendedor 40000"_s, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!observador.vistos.isEmpty());
    QCOMPARE(ponteiro.ocupado, (QList<bool>{false, false}));
    QVERIFY(!progresso()->isVisible());
    QVERIFY(!QApplication::overrideCursor());
}

// What is asked of the program meanwhile comes when the batch is over.
void TstLote::otherInputWaitsForTheBatch() {
    lote(8);
    bool pedido = false;
    bool veio = false;
    bool veioDurante = false;
    class PedeDurante : public QObject {
      public:
        explicit PedeDurante(std::function<void()> pede) : m_pede(std::move(pede)) {}
        bool eventFilter(QObject*, QEvent* evento) override {
            if (evento->type() == QEvent::Paint)
                m_pede();
            return false;
        }

      private:
        std::function<void()> m_pede;
    } pinturas([&] {
        if (std::exchange(pedido, true))
            return;
        QMetaObject::invokeMethod(
            b->panel(),
            [&] {
                veio = true;
                veioDurante = progresso()->isVisible();
            },
            Qt::QueuedConnection);
    });
    progresso()->installEventFilter(&pinturas);
    fechaTudo(mensagens::sucesso);
    QVERIFY(veio);
    QVERIFY(!veioDurante);
}

QTEST_MAIN(TstLote)
#include "tst_lote.moc"

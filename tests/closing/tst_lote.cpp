// How a closing goes along: messages, log file, viewer, progress.

#include "closing/Bancada.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
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
using namespace tarvessa::teste;

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
    void initTestCase() { b = std::make_unique<Bancada>(); }
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
    QProgressBar* progresso() { return b->painel()->findChild<QProgressBar*>(); }

    std::unique_ptr<Bancada> b;
};

void TstLote::init() {
    b->arruma();
    b->cenario().basico();
    b->cenario().cliente({.codigo = u"RUIM"_s, .formaPg = u"FIADO"_s});
}

void TstLote::lote(int quantas) {
    for (int pedido = 1; pedido <= quantas; ++pedido)
        b->cenario().documento({.pedido = pedido, .nomeVendedor = u"%1"_s.arg(pedido, 4, 10, QChar(u'0'))});
    QVERIFY(b->abre());
}

void TstLote::fechaTudo(const QString& fim) {
    ModalHelper modal;
    modal.espera(mensagens::lembrete, QMessageBox::Ok);
    modal.espera(fim, QMessageBox::Ok);
    b->aperta(u"Command4"_s);
    QCOMPARE(modal.confere(), QString());
    for (const ModalHelper::Caixa& caixa : modal.caixas()) {
        QCOMPARE(caixa.titulo, u"Atenção!!!"_s);
        QCOMPARE(caixa.icone, QMessageBox::Information);
        QCOMPARE(caixa.botoes, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
}

void TstLote::messagesOfACleanRun() {
    lote(2);
    fechaTudo(mensagens::sucesso);
    QVERIFY(Bancada::textoDoVisualizador().isNull());
}

void TstLote::messagesOfARunWithRefusals() {
    b->cenario().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->abre());
    fechaTudo(mensagens::comErros);
}

void TstLote::messageWithNothingSelected() {
    lote(2);
    b->aperta(u"Command1"_s);
    const auto antes = b->cenario().retrato();
    StatementLog registro(b->servidor());
    ModalHelper modal;
    modal.espera(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->aperta(u"Command4"_s);
    QCOMPARE(modal.confere(), QString());
    QCOMPARE(modal.caixas()[0].titulo, u"Atenção!!!"_s);
    QCOMPARE(modal.caixas()[0].icone, QMessageBox::Information);
    QCOMPARE(modal.caixas()[0].botoes, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(registro.textos(), QStringList());
    QCOMPARE(b->log(), Bancada::logCom({}));
    QCOMPARE(b->cenario().retrato(), antes);
    QCOMPARE(b->grade()->rows(), 3);
}

// The test is on the total, so rows that cancel each other out count as nothing selected.
void TstLote::selectedRowsThatAddUpToZero() {
    b->cenario().documento({.pedido = 1, .linhas = {{.total = u"10.00"_s}}});
    b->cenario().documento({.pedido = 2, .linhas = {{.total = u"-10.00"_s}}});
    QVERIFY(b->abre());
    ModalHelper modal;
    modal.espera(mensagens::nadaSelecionado, QMessageBox::Ok);
    b->aperta(u"Command4"_s);
    QCOMPARE(modal.confere(), QString());
}

void TstLote::zeroTotalPathLeavesTheLogUsable() {
    lote(1);
    b->aperta(u"Command1"_s);
    for (int vez = 0; vez < 2; ++vez) {
        ModalHelper modal;
        modal.espera(mensagens::nadaSelecionado, QMessageBox::Ok);
        b->aperta(u"Command4"_s);
        QCOMPARE(modal.confere(), QString());
        QCOMPARE(b->log(), Bancada::logCom({}));
    }
    b->servidor().executa(u"UPDATE clientes SET formapg = 'FIADO'"_s);
    QVERIFY(b->abre());
    fechaTudo(mensagens::comErros);
    QCOMPARE(b->log(), Bancada::logCom({u"PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
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
        QVERIFY(QDir(b->pastaDoPrograma()).removeRecursively());
    else
        QVERIFY(QDir().mkpath(b->caminhoDoLog()));
    const auto antes = b->cenario().retrato();
    StatementLog registro(b->servidor());
    {
        ModalHelper modal;
        modal.esperaContendo(u"Não foi possível gravar o arquivo "_s +
                                 QDir::toNativeSeparators(b->caminhoDoLog()),
                             QMessageBox::Ok);
        b->aperta(u"Command4"_s);
        QCOMPARE(modal.confere(), QString());
        QCOMPARE(modal.caixas()[0].icone, QMessageBox::Critical);
        QVERIFY(modal.caixas()[0].texto.startsWith(mensagens::erroDeExecucao));
    }
    QCOMPARE(registro.textos(), QStringList());
    QCOMPARE(b->cenario().retrato(), antes);

    QDir(b->caminhoDoLog()).removeRecursively();
    QDir().mkpath(b->pastaDoPrograma());
    fechaTudo(mensagens::sucesso);
    QCOMPARE(b->log(), Bancada::logCom({}));
}

void TstLote::logOnAFullDisk() {
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("needs a device that is always full");
    lote(1);
    QVERIFY(QFile::link(u"/dev/full"_s, b->caminhoDoLog()));
    StatementLog registro(b->servidor());
    ModalHelper modal;
    modal.esperaContendo(u"Não foi possível gravar o arquivo"_s, QMessageBox::Ok);
    b->aperta(u"Command4"_s);
    QCOMPARE(modal.confere(), QString());
    QCOMPARE(registro.textos(), QStringList());
}

void TstLote::logIsWholeBeforeTheMessageAtTheEnd() {
    b->cenario().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->abre());
    QByteArray naMensagem;
    class LeNaMensagem : public QObject {
      public:
        LeNaMensagem(const Bancada& bancada, QByteArray& lido) : m_bancada(bancada), m_lido(lido) {
            qApp->installEventFilter(this);
        }
        bool eventFilter(QObject* objeto, QEvent* evento) override {
            if (evento->type() == QEvent::Show && qobject_cast<QMessageBox*>(objeto))
                m_lido = m_bancada.log();
            return false;
        }

      private:
        const Bancada& m_bancada;
        QByteArray& m_lido;
    } leitor(*b, naMensagem);
    fechaTudo(mensagens::comErros);
    QCOMPARE(naMensagem, Bancada::logCom({u"PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA."_s}));
}

void TstLote::logOpensInAWindowOfOurOwn() {
    b->cenario().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->abre());
    fechaTudo(mensagens::comErros);
    QCOMPARE(Bancada::textoDoVisualizador(), u"LOG DE FECHAMENTO:\n------------------\n\n"
                                             "PRÉ-VENDA: 0000001 - FORMA DE PAGAMENTO INVÁLIDA.\n"_s);
    // The panel goes on while it is open.
    QCOMPARE(b->coluna(colunas::Pedido), QStringList{u"1"_s});
    b->aperta(u"Command1"_s);
    QCOMPARE(b->total(), u"0,00"_s);
}

namespace {

/// Puts a command where the program looks for it.
bool escreveComando(const Bancada& b, const QString& nome, const QByteArray& roteiro) {
    QFile arquivo(b.pastaDeComandos() + u'/' + nome);
    return arquivo.open(QIODevice::WriteOnly) && arquivo.write("#!/bin/sh\n" + roteiro) > 0 &&
           arquivo.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void TstLote::logOpensInTheDesktopsViewer() {
    const QString aberto = b->pastaDeComandos() + u"/aberto"_s;
    QVERIFY(escreveComando(*b, u"xdg-mime"_s, "echo editor.desktop\n"));
    QVERIFY(escreveComando(*b, u"xdg-open"_s, "printf '%s' \"$*\" >'" + QFile::encodeName(aberto) + "'\n"));
    b->cenario().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->abre());
    fechaTudo(mensagens::comErros);
    const auto argumento = [&aberto] {
        QFile arquivo(aberto);
        return arquivo.open(QIODevice::ReadOnly) ? QFile::decodeName(arquivo.readAll()) : QString();
    };
    QTRY_COMPARE(argumento(), b->caminhoDoLog());
    QVERIFY(Bancada::textoDoVisualizador().isNull());
}

void TstLote::viewerWithoutAnApplicationForTexts() {
    QVERIFY(escreveComando(*b, u"xdg-mime"_s, "exit 0\n"));
    QVERIFY(escreveComando(*b, u"xdg-open"_s, "exit 3\n"));
    b->cenario().documento({.pedido = 1, .cliente = u"RUIM"_s});
    QVERIFY(b->abre());
    fechaTudo(mensagens::comErros);
    QVERIFY(Bancada::textoDoVisualizador().startsWith(u"LOG DE FECHAMENTO:"_s));
}

void TstLote::reloadAtTheEndShowsWhatIsOpenNow() {
    lote(2);
    b->cenario().documento({.pedido = 70, .linhas = {{.total = u"5.00"_s}}});
    QCOMPARE(b->grade()->rows(), 3);
    b->clica(2, colunas::Selecao);
    fechaTudo(mensagens::sucesso);
    QCOMPARE(b->coluna(colunas::Pedido), (QStringList{u"2"_s, u"70"_s}));
    QCOMPARE(b->coluna(colunas::Selecao), (QStringList{u" "_s, u" "_s}));
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
        QCOMPARE(visto.texto, u"Pré-venda %1 de %2"_s.arg(visto.valor).arg(quantas));
        QVERIFY(visto.dentroDaBarraDeEstado);
        QVERIFY2(visto.largura > b->painel()->statusBar()->width() / 2,
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
    b->cenario().documento({.pedido = 99, .nomeVendedor = u"9999"_s, .vendedor = u"40000"_s});
    lote(8);
    Observador observador(progresso());
    PonteiroNasMensagens ponteiro;
    ModalHelper modal;
    modal.espera(mensagens::lembrete, QMessageBox::Ok);
    modal.esperaContendo(u"código de vendedor 40000"_s, QMessageBox::Ok);
    b->aperta(u"Command4"_s);
    QCOMPARE(modal.confere(), QString());
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
            b->painel(),
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

// Turning DAVs into pre-sales, and the numbers they get.

#include "base/Clock.h"
#include "base/RuntimeError.h"
#include "closing/ClosingJournal.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "core/AcessoDados.h"
#include "support/AdminConnection.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QProgressBar>
#include <QSet>
#include <QTest>
#include <QThread>

#include <thread>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString lock = u"CONCAT('tarvessa_numero_', MD5(DATABASE()))"_s;
const QString askLock = u"SELECT GET_LOCK("_s + lock + u", 10)"_s;
const QString releaseLock = u"SELECT RELEASE_LOCK("_s + lock + u")"_s;

QString looksAt(int dav, int pv) {
    return u"SELECT TipoOperacao, MAX(situacaoorc IN ('A','C')) AS aberto FROM orcamento WHERE nrpedido=%1 "
           u"AND "
           "TipoOperacao='P' OR nrpedido=%2 AND TipoOperacao='D' GROUP BY TipoOperacao LOCK IN SHARE MODE"_s
               .arg(pv)
               .arg(dav);
}

QStringList commandsOf(int dav, int pv) {
    return {askLock,
            u"UPDATE empresa SET contadorPV = contadorPV+1"_s,
            u"SELECT contadorPV FROM empresa"_s,
            looksAt(dav, pv),
            releaseLock,
            u"UPDATE orcamento SET TipoOperacao = 'P', nrPedido = '%1',situacaoorc = 'A' WHERE nrpedido =%2 "
            "and TipoOperacao = 'D'"_s.arg(pv)
                .arg(dav),
            u"UPDATE observacao set nrpedido=%1 , tipoOperacao = 'P' WHERE nrpedido =%2 and TipoOperacao = "
            "'D'"_s.arg(pv)
                .arg(dav)};
}

/// Notes what a progress bar said each time it was painted while it was shown.
class BarPaints : public QObject {
  public:
    explicit BarPaints(QProgressBar* bar) : m_bar(bar) { bar->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            m_texts += m_bar->text();
        return false;
    }

    const QStringList& texts() const { return m_texts; }

  private:
    QProgressBar* m_bar;
    QStringList m_texts;
};

} // namespace

class TstConversao : public QObject {
    Q_OBJECT

  private:
    PanelBench m;

    /// A DAV of two lines and, unless told otherwise, one note; lines and note carry its number.
    void dav(int numero, const QString& cliente, const QString& vendedor, bool withNote = true) {
        m.shop().documento({.pedido = numero,
                            .cliente = cliente,
                            .tipo = u"D"_s,
                            .nomeVendedor = vendedor,
                            .diasAtras = 0,
                            .linhas = {aoPreco(u"L%1A"_s.arg(numero), u"1"_s, u"10"_s),
                                       aoPreco(u"L%1B"_s.arg(numero), u"2"_s, u"5"_s)},
                            .controle = false});
        if (withNote)
            m.server().execute(
                u"INSERT INTO observacao (nrpedido, tipoOperacao, texto) VALUES (%1, 'D', '%1')"_s.arg(
                    numero));
    }

    /// Three DAVs; by seller and customer they are listed 30, 10, 20.
    void threeDavs() {
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"BENTO"_s,
                          .prazo = u"0"_s,
                          .formaPg = u"PIX"_s,
                          .colunaPreco = u"1"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        m.shop().cliente({.codigo = u"C2"_s,
                          .nome = u"ALICE"_s,
                          .prazo = u"0"_s,
                          .formaPg = u"PIX"_s,
                          .colunaPreco = u"1"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        dav(10, u"C1"_s, u"ANA"_s);
        dav(20, u"C1"_s, u"ZECA"_s, false);
        dav(30, u"C2"_s, u"ANA"_s);
    }

    /// What became of the DAV: kind and number of its lines, which must still be together; the note must be
    /// with them, or still with the DAV.
    QString destination(int numero) {
        const auto linhas =
            m.server().query(u"SELECT DISTINCT TipoOperacao, nrpedido, COUNT(*) FROM orcamento WHERE "
                             "codigo LIKE 'L%1_' GROUP BY 1, 2"_s.arg(numero));
        if (linhas.size() != 1 || linhas[0][2] != u"2"_s)
            return u"torn apart"_s;
        const QString where = linhas[0][0] + linhas[0][1];
        const QString others = m.valor(
            u"SELECT COUNT(*) FROM orcamento WHERE TipoOperacao='%1' AND nrpedido=%2 AND codigo NOT LIKE "
            "'L%3_'"_s.arg(linhas[0][0], linhas[0][1])
                .arg(numero));
        return others == u"0"_s ? where : u"merged"_s;
    }

    QString nota(int numero) {
        return m.valor(
            u"SELECT GROUP_CONCAT(CONCAT(tipoOperacao, nrpedido)) FROM observacao WHERE texto='%1'"_s.arg(
                numero));
    }

  private Q_SLOTS:
    void init() {
        m.reset();
        m.shop().basicoDosDocumentos();
    }
    void cleanup() {
        m.close();
        m.server().useSocket(m.server().socket());
        m.server().useInitStmt(u"SET sql_mode='NO_ENGINE_SUBSTITUTION'"_s);
    }

    void convertsInTheOrderOfTheGrid() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), commandsOf(30, 101) + commandsOf(10, 102) + commandsOf(20, 103));
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"103"_s);
        QCOMPARE(destination(30), u"P101"_s);
        QCOMPARE(destination(10), u"P102"_s);
        QCOMPARE(destination(20), u"P103"_s);
        QCOMPARE(nota(30), u"P101"_s);
        QCOMPARE(nota(10), u"P102"_s);
        QCOMPARE(m.valor(u"SELECT GROUP_CONCAT(DISTINCT situacaoorc) FROM orcamento"_s), u"A"_s);
    }

    void afterwardsOnlyTheListingGoesOn() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        QVERIFY(m.button(u"Command2"_s)->isEnabled());
        QVERIFY(!m.button(u"Command3"_s)->isEnabled());
        m.press(u"Command2"_s);
        QCOMPARE(m.grid()->rows(), 1);
        for (const char* name : {"Command2", "Command4", "Command5", "Command6"})
            QVERIFY(!m.button(QString::fromLatin1(name))->isEnabled());
        QVERIFY(m.button(u"Command3"_s)->isEnabled());
        QCOMPARE(m.panel()->findChild<QLineEdit*>(u"Text1"_s)->text(), u"0,00"_s);
        m.press(u"Command3"_s);
        QCOMPARE(m.grid()->rows(), 4);
        QCOMPARE(m.cell(1, painelfechamento::Pedido), u"101"_s);
    }

    void untickedStaysAsItIs() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.click(m.rowOf(10), painelfechamento::Selecao);
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), commandsOf(30, 101) + commandsOf(20, 102));
        QCOMPARE(destination(10), u"D10"_s);
        QCOMPARE(nota(10), u"D10"_s);
        QCOMPARE(m.grid()->rows(), 1);
    }

    void nothingTickedSendsNothing() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.press(u"Command1"_s);
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), QStringList());
        QCOMPARE(m.grid()->rows(), 1);
        QVERIFY(m.button(u"Command3"_s)->isEnabled());
    }

    void documentNumber_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("advance");
        QTest::addColumn<int>("numero");
        const QString pv = u"UPDATE empresa SET contadorPV = contadorPV+1"_s;
        QTest::newRow("DAV") << u"D"_s << u"UPDATE empresa SET ultpedido = ultpedido+1"_s << 501;
        QTest::newRow("pre-sale") << u"P"_s << pv << 101;
        QTest::newRow("any other") << u"X"_s << pv << 101;
        QTest::newRow("none") << QString() << pv << 101;
        QTest::newRow("small d is not D") << u"d"_s << pv << 101;
    }

    void documentNumber() {
        QFETCH(QString, tipo);
        QFETCH(QString, advance);
        QFETCH(int, numero);
        QVERIFY(m.open(PanelBench::wide));
        QCOMPARE(m.panel()->Orcamento_NumeroPedido(tipo), numero);
        QCOMPARE(m.texts(),
                 QStringList({askLock, advance, u"SELECT ultpedido,contadorPV FROM empresa"_s, releaseLock}));
        QCOMPARE(m.panel()->Orcamento_NumeroPedido(tipo), numero + 1);
    }

    void counterEmptyOrTooLarge_data() {
        QTest::addColumn<QString>("prepare");
        QTest::addColumn<QString>("error");
        QTest::newRow("empty") << u"ALTER TABLE empresa MODIFY contadorPV INT NULL; UPDATE empresa SET "
                                  "contadorPV = NULL"_s
                               << u"o contador de documentos da empresa está vazio"_s;
        QTest::newRow("beyond 32 bits")
            << u"ALTER TABLE empresa MODIFY contadorPV BIGINT; UPDATE empresa SET contadorPV = 2147483647"_s
            << u"Estouro: o contador de documentos chegou a 2147483648."_s;
        QTest::newRow("no company row") << u"DELETE FROM empresa"_s << u"Não há registro atual"_s;
    }

    void counterEmptyOrTooLarge() {
        QFETCH(QString, prepare);
        QFETCH(QString, error);
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(prepare);
        ModalHelper boxes;
        boxes.expectContaining(error, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.texts(), commandsOf(0, 0).first(3) + QStringList{releaseLock});
        for (const int numero : {10, 20, 30})
            QCOMPARE(destination(numero), u"D%1"_s.arg(numero));
        m.close();
        m.server().execute(
            u"DELETE FROM empresa; ALTER TABLE empresa MODIFY contadorPV INT NOT NULL DEFAULT 0"_s);
    }

    // A counter that was set back would make the DAVs part of other customers' pre-sales.
    void numberInUseConvertsNothing() {
        threeDavs();
        m.shop().documento({.pedido = 101, .situacao = u"B"_s, .diasAtras = 30});
        QVERIFY(m.open(PanelBench::wide));
        {
            ModalHelper boxes;
            boxes.expectContaining(u"O número 101 já é de outra pré-venda"_s, QMessageBox::Ok);
            m.press(u"Command2"_s);
            QCOMPARE(boxes.problem(), QString());
            QVERIFY(boxes.boxes()[0].text.contains(u"contadorPV"_s));
        }
        QCOMPARE(m.texts(), commandsOf(30, 101).first(5)); // the lock was given back
        for (const int numero : {10, 20, 30})
            QCOMPARE(destination(numero), u"D%1"_s.arg(numero));
        QCOMPARE(m.total(), u"60,00"_s);
        QVERIFY(m.button(u"Command2"_s)->isEnabled());

        m.server().execute(u"UPDATE empresa SET contadorPV = 200"_s);
        m.press(u"Command2"_s);
        QCOMPARE(destination(30), u"P201"_s);
        QCOMPARE(destination(20), u"P203"_s);
    }

    // Faults

    void cutAtEachStatementNeitherLosesNorDoubles_data() {
        QTest::addColumn<int>("k");
        constexpr int commands = 21;
        for (int k = 1; k <= commands; ++k)
            QTest::addRow("before statement %d", k) << k;
    }

    void cutAtEachStatementNeitherLosesNorDoubles() {
        QFETCH(int, k);
        threeDavs();
        FaultProxy proxy(m.server().socket());
        m.server().useSocket(proxy.socket());
        QVERIFY(m.open(PanelBench::wide));
        const QStringList all = commandsOf(30, 101) + commandsOf(10, 102) + commandsOf(20, 103);
        proxy.cutBefore(k);
        ModalHelper boxes;
        // The end of the connection gives the lock back by itself; that cut shows once the next statement is
        // due.
        boxes.expectContaining(all[k - 1] == releaseLock ? u"A conexão com o banco de dados foi perdida"_s
                                                         : all[k - 1],
                               QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(QString::fromUtf8(proxy.cutAt()), all[k - 1]);
        QVERIFY(boxes.boxes()[0].informative.contains(u"A conexão com o banco de dados foi perdida"_s));
        QCOMPARE(m.grid()->rows(), 4); // still there, with ticks on what is left
        m.close();

        const QList<int> order = {30, 10, 20};
        int convertedCount = 0;
        for (int i = 0; i < order.size(); ++i) {
            const bool converted = k > 7 * i + 6;
            const bool noteWent = k > 7 * i + 7;
            convertedCount += converted ? 1 : 0;
            QCOMPARE(destination(order[i]), converted ? u"P%1"_s.arg(101 + i) : u"D%1"_s.arg(order[i]));
            if (order[i] != 20)
                QCOMPARE(nota(order[i]), noteWent ? u"P%1"_s.arg(101 + i) : u"D%1"_s.arg(order[i]));
        }

        // After a new start the others are converted, and a number may have been lost.
        m.server().useSocket(m.server().socket());
        QVERIFY(m.open(PanelBench::wide));
        if (convertedCount < 3) {
            m.press(u"Command2"_s);
            m.press(u"Command3"_s);
        }
        QSet<QString> numbers;
        for (const int numero : order) {
            QVERIFY(destination(numero).startsWith(u'P'));
            numbers.insert(destination(numero));
        }
        QCOMPARE(numbers.size(), 3);
        QVERIFY(m.valor(u"SELECT contadorPV FROM empresa"_s).toInt() <= 104);
        QCOMPARE(m.grid()->rows(), 4);
    }

    void afterAnErrorGoesOnWithTheSameNumber_data() {
        QTest::addColumn<QString>("tabela");
        QTest::newRow("lines refused") << u"orcamento"_s;
        QTest::newRow("notes refused") << u"observacao"_s;
    }

    void afterAnErrorGoesOnWithTheSameNumber() {
        QFETCH(QString, tabela);
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(
            u"CREATE TRIGGER recusa BEFORE UPDATE ON %1 FOR EACH ROW IF OLD.nrpedido = 10 THEN "
            "SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s.arg(tabela));
        ModalHelper boxes;
        boxes.expectContaining(u"recusado"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        m.server().execute(u"DROP TRIGGER recusa"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(destination(30), u"P101"_s);
        QCOMPARE(destination(20), u"D20"_s);
        QVERIFY(!m.grid()->isTicked(m.rowOf(30)));
        QVERIFY(m.grid()->isTicked(m.rowOf(10)));
        QVERIFY(m.grid()->isTicked(m.rowOf(20)));
        QCOMPARE(m.total(), u"40,00"_s);
        m.mark();
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(),
                 QStringList{looksAt(10, 102)} + commandsOf(10, 102).sliced(5) + commandsOf(20, 103));
        QCOMPARE(destination(10), u"P102"_s);
        QCOMPARE(nota(10), u"P102"_s);
        QCOMPARE(m.grid()->rows(), 1);
    }

    void cutDocumentHidesNothing() {
        FaultProxy proxy(m.server().socket());
        m.server().useSocket(proxy.socket());
        QVERIFY(m.open(PanelBench::wide));
        proxy.cutBefore(3); // the reading; giving the lock back fails after it
        try {
            m.panel()->Orcamento_NumeroPedido(u"P"_s);
            QFAIL("no error");
        } catch (const RuntimeError& error) {
            QCOMPARE(error.statement(), u"SELECT ultpedido,contadorPV FROM empresa"_s);
            QVERIFY(error.isConnectionLost());
        }
    }

    // The lock

    void waitsForTheOtherStation() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection other(m.server().socket());
        other.select(m.server().database());
        QCOMPARE(other.query(askLock)[0][0], u"1"_s);
        std::thread release([&other] {
            QThread::msleep(700);
            other.execute(u"UPDATE empresa SET contadorPV = 200; DO RELEASE_LOCK(%1)"_s.arg(lock));
        });
        m.press(u"Command2"_s);
        release.join();
        QCOMPARE(destination(30), u"P201"_s);
        QCOMPARE(destination(20), u"P203"_s);
    }

    void idleOtherStationCostsNoNumber() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection other(m.server().socket());
        other.select(m.server().database());
        QCOMPARE(other.query(askLock)[0][0], u"1"_s);
        ModalHelper boxes;
        boxes.expectContaining(u"Outra estação está numerando documentos há muito tempo."_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.texts(), QStringList{askLock});
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"100"_s);
        other.execute(u"DO RELEASE_LOCK(%1)"_s.arg(lock));
        m.press(u"Command2"_s);
        QCOMPARE(destination(30), u"P101"_s);
    }

    void otherDatabaseOfTheServerDoesNotWait() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection other(m.server().socket());
        other.select(u"mysql"_s);
        QCOMPARE(other.query(askLock)[0][0], u"1"_s);
        QElapsedTimer timer;
        timer.start();
        m.press(u"Command2"_s);
        QVERIFY(timer.elapsed() < 5000);
        QCOMPARE(destination(20), u"P103"_s);
    }

    // Numbering without the lock could give one number to two documents.
    void waitThatTheServerBreaksOffConvertsNothing() {
        if (!m.valor(u"SELECT VERSION()"_s).contains(u"MariaDB"_s))
            QSKIP("this server has no limit for the time of a statement");
        threeDavs();
        m.server().useInitStmt(u"SET sql_mode='NO_ENGINE_SUBSTITUTION', max_statement_time=1"_s);
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection other(m.server().socket());
        other.select(m.server().database());
        QCOMPARE(other.query(askLock)[0][0], u"1"_s);
        m.mark();
        ModalHelper modal;
        modal.expectContaining(u"Outra estação está numerando"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(m.texts(), QStringList{askLock});
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"100"_s);
        QCOMPARE(destination(20), u"D20"_s);
    }

    void waitThatIsKilledConvertsNothing() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection other(m.server().socket());
        other.select(m.server().database());
        QCOMPARE(other.query(askLock)[0][0], u"1"_s);
        std::thread kill([this] {
            AdminConnection third(m.server().socket());
            third.select(m.server().database());
            const auto waitingSessions = [&] {
                QThread::msleep(50);
                return third.query(u"SELECT id FROM information_schema.processlist WHERE user='%1' AND "
                                   "info LIKE 'SELECT GET_LOCK%'"_s.arg(m.server().user()));
            };
            QList<QStringList> waiting;
            for (int attempt = 0; attempt < 100 && waiting.isEmpty(); ++attempt)
                waiting = waitingSessions();
            third.execute(u"KILL QUERY "_s + waiting.value(0).value(0));
        });
        ModalHelper modal;
        modal.expectContaining(QString(), QMessageBox::Ok);
        m.press(u"Command2"_s);
        kill.join();
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"100"_s);
        QCOMPARE(destination(20), u"D20"_s);
    }

    // Another station has converted it since the list was made: its notes are with that number.
    void davConvertedElsewhereKeepsItsNotes() {
        threeDavs();
        m.server().execute(u"INSERT INTO observacao (nrpedido, tipoOperacao) VALUES (20, 'D')"_s);
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(u"UPDATE orcamento SET nrpedido = 900, TipoOperacao = 'P' WHERE nrpedido = 20"_s);
        ModalHelper modal;
        modal.expectContaining(u"DAV 20. Para eles nada foi gravado"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(m.valor(u"SELECT CONCAT(tipoOperacao, nrpedido) FROM observacao WHERE nrpedido = 20"_s),
                 u"D20"_s);
        QCOMPARE(destination(10), u"P102"_s);
        QCOMPARE(m.grid()->rows(), 1);
    }

    void davCancelledElsewhereStaysCancelled() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(u"UPDATE orcamento SET situacaoorc = 'X' WHERE nrpedido = 30"_s);
        const auto lines = m.server().query(u"SELECT * FROM orcamento WHERE nrpedido = 30"_s);
        ModalHelper modal;
        modal.expectContaining(u"DAV 30. Para eles nada foi gravado"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(m.server().query(u"SELECT * FROM orcamento WHERE nrpedido = 30"_s), lines);
        QCOMPARE(nota(30), u"D30"_s);
        QCOMPARE(destination(10), u"P102"_s);
        QCOMPARE(destination(20), u"P103"_s);
    }

    // What is open of it is what was listed.
    void davCancelledInPartIsConverted() {
        threeDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(u"UPDATE orcamento SET situacaoorc = 'X' WHERE nrpedido = 30 LIMIT 1"_s);
        m.press(u"Command2"_s);
        QCOMPARE(destination(30), u"P101"_s);
    }

    void retryLooksAtTheDocumentAgain_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("place");
        QTest::newRow("billed as it is")
            << u"UPDATE orcamento SET situacaoorc = 'B' WHERE nrpedido = 20"_s << u"D20"_s;
        QTest::newRow("converted elsewhere")
            << u"UPDATE orcamento SET nrpedido = 900, TipoOperacao = 'P' WHERE nrpedido = 20"_s << u"P900"_s;
    }

    void retryLooksAtTheDocumentAgain() {
        QFETCH(const QString, change);
        QFETCH(const QString, place);
        threeDavs();
        m.server().execute(
            u"INSERT INTO observacao (nrpedido, tipoOperacao, texto) VALUES (20, 'D', 'nota')"_s);
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(
            u"CREATE TRIGGER recusa BEFORE UPDATE ON orcamento FOR EACH ROW IF OLD.nrpedido = 20 THEN "
            "SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s);
        ModalHelper boxes;
        boxes.expectContaining(u"recusado"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        m.server().execute(u"DROP TRIGGER recusa"_s);
        m.server().execute(change);
        boxes.expectContaining(u"DAV 20. Para eles nada foi gravado"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(destination(20), place);
        QCOMPARE(m.valor(u"SELECT CONCAT(tipoOperacao, nrpedido) FROM observacao WHERE texto = 'nota'"_s),
                 u"D20"_s);
    }

    // The update that was sent before the cut may still be waiting in the server.
    void numberNotedBeforeARestartIsUsedAgain() {
        threeDavs();
        QVERIFY(closingjournal::beginConversion({10, 55}));
        QVERIFY(m.open(PanelBench::wide));
        m.press(u"Command2"_s);
        QCOMPARE(destination(10), u"P55"_s);
        QCOMPARE(nota(10), u"P55"_s);
        QVERIFY(closingjournal::conversions().isEmpty());
    }

    // It was: the lines move between the look at them and the update of their own, which finds none.
    void updateThatWasStillWaitingTakesItsNotesAlong() {
        threeDavs();
        QVERIFY(closingjournal::beginConversion({10, 55}));
        FaultProxy proxy(m.server().socket());
        m.server().useSocket(proxy.socket());
        QVERIFY(m.open(PanelBench::wide));
        proxy.onStatement([this](const QByteArray& sql) {
            if (sql.startsWith("UPDATE orcamento SET TipoOperacao = 'P', nrPedido = '55'"))
                m.server().execute(QString::fromUtf8(sql));
        });
        ModalHelper boxes;
        m.press(u"Command2"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(destination(10), u"P55"_s);
        QCOMPARE(nota(10), u"P55"_s);
        QVERIFY(closingjournal::conversions().isEmpty());
        m.close();
        m.server().useSocket(m.server().socket());
    }

    void twoStationsAtTheSameTime() {
        constexpr int perStation = 200;
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"BENTO"_s,
                          .prazo = u"0"_s,
                          .formaPg = u"PIX"_s,
                          .colunaPreco = u"1"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        for (int i = 1; i <= perStation; ++i) {
            dav(1000 + i, u"C1"_s, u"ANA"_s);
            dav(2000 + i, u"C1"_s, u"ZECA"_s);
        }
        QProcess ana;
        QProcess zeca;
        for (auto [process, vendedor] : {std::pair{&ana, u"ANA"_s}, std::pair{&zeca, u"ZECA"_s}}) {
            process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            process->start(QStringLiteral(TARVESSA_STATION), {vendedor, clock::now().toString(Qt::ISODate)});
        }
        for (QProcess* process : {&ana, &zeca}) {
            QVERIFY(process->waitForReadyRead(60000));
            QCOMPARE(process->readAllStandardOutput().trimmed(), QByteArray("200"));
        }
        for (QProcess* process : {&ana, &zeca}) {
            process->write("\n");
            QVERIFY(process->waitForBytesWritten());
        }
        for (QProcess* process : {&ana, &zeca}) {
            QVERIFY(process->waitForFinished(120000));
            QCOMPARE(process->exitStatus(), QProcess::NormalExit);
            QCOMPARE(process->exitCode(), 0);
        }

        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"500"_s);
        QCOMPARE(m.server().query(
                     u"SELECT COUNT(DISTINCT nrpedido), MIN(nrpedido), MAX(nrpedido) FROM orcamento WHERE "
                     "TipoOperacao='P'"_s)[0],
                 QStringList({u"400"_s, u"101"_s, u"500"_s}));
        // Each number has the two lines and the note of one DAV.
        QCOMPARE(m.valor(u"SELECT COUNT(*) FROM (SELECT nrpedido FROM orcamento GROUP BY nrpedido HAVING "
                         "COUNT(*)=2 AND COUNT(DISTINCT LEFT(codigo, 5))=1) AS um"_s),
                 u"400"_s);
        QCOMPARE(
            m.valor(u"SELECT COUNT(*) FROM observacao AS n JOIN orcamento AS o ON o.nrpedido=n.nrpedido AND "
                    "o.TipoOperacao=n.tipoOperacao AND o.codigo=CONCAT('L', n.texto, 'A')"_s),
            u"400"_s);
        // They did work at the same time: the numbers of the two alternate.
        const QList<QStringList> sellers = m.server().query(
            u"SELECT nomevendedor FROM orcamento WHERE codigo LIKE '%A' ORDER BY nrpedido"_s);
        int changes = 0;
        for (qsizetype i = 1; i < sellers.size(); ++i)
            changes += sellers[i] != sellers[i - 1] ? 1 : 0;
        QVERIFY2(changes > 20, qPrintable(QString::number(changes)));
    }

    void manyDavsShowTheProgress() {
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"BENTO"_s,
                          .prazo = u"0"_s,
                          .formaPg = u"PIX"_s,
                          .colunaPreco = u"1"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        for (int i = 1; i <= 60; ++i)
            dav(i, u"C1"_s, u"ANA"_s, false);
        QVERIFY(m.open(PanelBench::wide));
        auto* progress = m.panel()->findChild<QProgressBar*>(u"progresso"_s);
        const BarPaints painting(progress);
        m.press(u"Command2"_s);
        QVERIFY(!painting.texts().isEmpty());
        QCOMPARE(painting.texts().first(), u"DAV 1 de 60"_s);
        for (const QString& text : painting.texts())
            QVERIFY2(text.startsWith(u"DAV "_s) && text.contains(u" de 60"_s), qPrintable(text));
        QCOMPARE(m.valor(u"SELECT COUNT(DISTINCT nrpedido) FROM orcamento WHERE TipoOperacao='P'"_s),
                 u"60"_s);
        QVERIFY(!progress->isVisible());
        QVERIFY(!QApplication::overrideCursor());
    }
};

QTEST_MAIN(TstConversao)
#include "tst_conversao.moc"

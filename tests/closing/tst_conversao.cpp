// Turning DAVs into pre-sales, and the numbers they get.

#include "base/Clock.h"
#include "base/RuntimeError.h"
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

const QString trava = u"CONCAT('tarvessa_numero_', MD5(DATABASE()))"_s;
const QString pedeTrava = u"SELECT GET_LOCK("_s + trava + u", 10)"_s;
const QString devolveTrava = u"SELECT RELEASE_LOCK("_s + trava + u")"_s;

QStringList comandosDe(int dav, int pv) {
    return {pedeTrava,
            u"UPDATE empresa SET contadorPV = contadorPV+1"_s,
            u"SELECT contadorPV FROM empresa"_s,
            u"SELECT nrpedido FROM orcamento WHERE nrpedido=%1 AND TipoOperacao='P' LIMIT 1"_s.arg(pv),
            devolveTrava,
            u"UPDATE orcamento SET TipoOperacao = 'P', nrPedido = '%1',situacaoorc = 'A' WHERE nrpedido =%2 "
            "and TipoOperacao = 'D'"_s.arg(pv)
                .arg(dav),
            u"UPDATE observacao set nrpedido=%1 , tipoOperacao = 'P' WHERE nrpedido =%2 and TipoOperacao = "
            "'D'"_s.arg(pv)
                .arg(dav)};
}

/// Notes what a progress bar said each time it was painted while it was shown.
class Pintura : public QObject {
  public:
    explicit Pintura(QProgressBar* barra) : m_barra(barra) { barra->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* evento) override {
        if (evento->type() == QEvent::Paint)
            m_textos += m_barra->text();
        return false;
    }

    const QStringList& texts() const { return m_textos; }

  private:
    QProgressBar* m_barra;
    QStringList m_textos;
};

} // namespace

class TstConversao : public QObject {
    Q_OBJECT

  private:
    PanelBench m;

    /// A DAV of two lines and, unless told otherwise, one note; lines and note carry its number.
    void dav(int numero, const QString& cliente, const QString& vendedor, bool comNota = true) {
        m.shop().documento({.pedido = numero,
                            .cliente = cliente,
                            .tipo = u"D"_s,
                            .nomeVendedor = vendedor,
                            .diasAtras = 0,
                            .linhas = {aoPreco(u"L%1A"_s.arg(numero), u"1"_s, u"10"_s),
                                       aoPreco(u"L%1B"_s.arg(numero), u"2"_s, u"5"_s)},
                            .controle = false});
        if (comNota)
            m.server().execute(
                u"INSERT INTO observacao (nrpedido, tipoOperacao, texto) VALUES (%1, 'D', '%1')"_s.arg(
                    numero));
    }

    /// Three DAVs; by seller and customer they are listed 30, 10, 20.
    void tresDavs() {
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
    QString destino(int numero) {
        const auto linhas =
            m.server().query(u"SELECT DISTINCT TipoOperacao, nrpedido, COUNT(*) FROM orcamento WHERE "
                             "codigo LIKE 'L%1_' GROUP BY 1, 2"_s.arg(numero));
        if (linhas.size() != 1 || linhas[0][2] != u"2"_s)
            return u"torn apart"_s;
        const QString onde = linhas[0][0] + linhas[0][1];
        const QString outras = m.valor(
            u"SELECT COUNT(*) FROM orcamento WHERE TipoOperacao='%1' AND nrpedido=%2 AND codigo NOT LIKE "
            "'L%3_'"_s.arg(linhas[0][0], linhas[0][1])
                .arg(numero));
        return outras == u"0"_s ? onde : u"merged"_s;
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
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), comandosDe(30, 101) + comandosDe(10, 102) + comandosDe(20, 103));
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"103"_s);
        QCOMPARE(destino(30), u"P101"_s);
        QCOMPARE(destino(10), u"P102"_s);
        QCOMPARE(destino(20), u"P103"_s);
        QCOMPARE(nota(30), u"P101"_s);
        QCOMPARE(nota(10), u"P102"_s);
        QCOMPARE(m.valor(u"SELECT GROUP_CONCAT(DISTINCT situacaoorc) FROM orcamento"_s), u"A"_s);
    }

    void afterwardsOnlyTheListingGoesOn() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        QVERIFY(m.button(u"Command2"_s)->isEnabled());
        QVERIFY(!m.button(u"Command3"_s)->isEnabled());
        m.press(u"Command2"_s);
        QCOMPARE(m.grid()->rows(), 1);
        for (const char* nome : {"Command2", "Command4", "Command5", "Command6"})
            QVERIFY(!m.button(QString::fromLatin1(nome))->isEnabled());
        QVERIFY(m.button(u"Command3"_s)->isEnabled());
        QCOMPARE(m.panel()->findChild<QLineEdit*>(u"Text1"_s)->text(), u"0,00"_s);
        m.press(u"Command3"_s);
        QCOMPARE(m.grid()->rows(), 4);
        QCOMPARE(m.cell(1, colunas::Pedido), u"101"_s);
    }

    void untickedStaysAsItIs() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.click(m.rowOf(10), colunas::Selecao);
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), comandosDe(30, 101) + comandosDe(20, 102));
        QCOMPARE(destino(10), u"D10"_s);
        QCOMPARE(nota(10), u"D10"_s);
        QCOMPARE(m.grid()->rows(), 1);
    }

    void nothingTickedSendsNothing() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.press(u"Command1"_s);
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), QStringList());
        QCOMPARE(m.grid()->rows(), 1);
        QVERIFY(m.button(u"Command3"_s)->isEnabled());
    }

    void documentNumber_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("avanca");
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
        QFETCH(QString, avanca);
        QFETCH(int, numero);
        QVERIFY(m.open(PanelBench::wide));
        QCOMPARE(m.panel()->Orcamento_NumeroPedido(tipo), numero);
        QCOMPARE(m.texts(), QStringList({pedeTrava, avanca, u"SELECT ultpedido,contadorPV FROM empresa"_s,
                                         devolveTrava}));
        QCOMPARE(m.panel()->Orcamento_NumeroPedido(tipo), numero + 1);
    }

    void counterEmptyOrTooLarge_data() {
        QTest::addColumn<QString>("prepara");
        QTest::addColumn<QString>("erro");
        QTest::newRow("empty") << u"ALTER TABLE empresa MODIFY contadorPV INT NULL; UPDATE empresa SET "
                                  "contadorPV = NULL"_s
                               << u"o contador de documentos da empresa está vazio"_s;
        QTest::newRow("beyond 32 bits")
            << u"ALTER TABLE empresa MODIFY contadorPV BIGINT; UPDATE empresa SET contadorPV = 2147483647"_s
            << u"Estouro: o contador de documentos chegou a 2147483648."_s;
        QTest::newRow("no company row") << u"DELETE FROM empresa"_s << u"Não há registro atual"_s;
    }

    void counterEmptyOrTooLarge() {
        QFETCH(QString, prepara);
        QFETCH(QString, erro);
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(prepara);
        ModalHelper caixas;
        caixas.expectContaining(erro, QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(caixas.problem(), QString());
        QCOMPARE(m.texts(), comandosDe(0, 0).first(3) + QStringList{devolveTrava});
        for (const int numero : {10, 20, 30})
            QCOMPARE(destino(numero), u"D%1"_s.arg(numero));
        m.close();
        m.server().execute(
            u"DELETE FROM empresa; ALTER TABLE empresa MODIFY contadorPV INT NOT NULL DEFAULT 0"_s);
    }

    // A counter that was set back would make the DAVs part of other customers' pre-sales.
    void numberInUseConvertsNothing() {
        tresDavs();
        m.shop().documento({.pedido = 101, .situacao = u"B"_s, .diasAtras = 30});
        QVERIFY(m.open(PanelBench::wide));
        {
            ModalHelper caixas;
            caixas.expectContaining(u"O número 101 já é de outra pré-venda"_s, QMessageBox::Ok);
            m.press(u"Command2"_s);
            QCOMPARE(caixas.problem(), QString());
            QVERIFY(caixas.boxes()[0].text.contains(u"contadorPV"_s));
        }
        QCOMPARE(m.texts(), comandosDe(30, 101).first(5)); // the lock was given back
        for (const int numero : {10, 20, 30})
            QCOMPARE(destino(numero), u"D%1"_s.arg(numero));
        QCOMPARE(m.total(), u"60,00"_s);
        QVERIFY(m.button(u"Command2"_s)->isEnabled());

        m.server().execute(u"UPDATE empresa SET contadorPV = 200"_s);
        m.press(u"Command2"_s);
        QCOMPARE(destino(30), u"P201"_s);
        QCOMPARE(destino(20), u"P203"_s);
    }

    // Faults

    void cutAtEachStatementNeitherLosesNorDoubles_data() {
        QTest::addColumn<int>("k");
        constexpr int comandos = 21;
        for (int k = 1; k <= comandos; ++k)
            QTest::addRow("before statement %d", k) << k;
    }

    void cutAtEachStatementNeitherLosesNorDoubles() {
        QFETCH(int, k);
        tresDavs();
        FaultProxy proxy(m.server().socket());
        m.server().useSocket(proxy.socket());
        QVERIFY(m.open(PanelBench::wide));
        const QStringList todos = comandosDe(30, 101) + comandosDe(10, 102) + comandosDe(20, 103);
        proxy.cutBefore(k);
        ModalHelper caixas;
        // The end of the connection gives the lock back by itself; that cut shows once the next statement is
        // due.
        caixas.expectContaining(todos[k - 1] == devolveTrava ? u"A conexão com o banco de dados foi perdida"_s
                                                             : todos[k - 1],
                                QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(caixas.problem(), QString());
        QCOMPARE(QString::fromUtf8(proxy.cutAt()), todos[k - 1]);
        QVERIFY(caixas.boxes()[0].informative.contains(u"A conexão com o banco de dados foi perdida"_s));
        QCOMPARE(m.grid()->rows(), 4); // still there, with ticks on what is left
        m.close();

        const QList<int> ordem = {30, 10, 20};
        int convertidos = 0;
        for (int i = 0; i < ordem.size(); ++i) {
            const bool convertido = k > 7 * i + 6;
            const bool notaFoi = k > 7 * i + 7;
            convertidos += convertido ? 1 : 0;
            QCOMPARE(destino(ordem[i]), convertido ? u"P%1"_s.arg(101 + i) : u"D%1"_s.arg(ordem[i]));
            if (ordem[i] != 20)
                QCOMPARE(nota(ordem[i]), notaFoi ? u"P%1"_s.arg(101 + i) : u"D%1"_s.arg(ordem[i]));
        }

        // After a new start the others are converted, and a number may have been lost.
        m.server().useSocket(m.server().socket());
        QVERIFY(m.open(PanelBench::wide));
        if (convertidos < 3) {
            m.press(u"Command2"_s);
            m.press(u"Command3"_s);
        }
        QSet<QString> numeros;
        for (const int numero : ordem) {
            QVERIFY(destino(numero).startsWith(u'P'));
            numeros.insert(destino(numero));
        }
        QCOMPARE(numeros.size(), 3);
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
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(
            u"CREATE TRIGGER recusa BEFORE UPDATE ON %1 FOR EACH ROW IF OLD.nrpedido = 10 THEN "
            "SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s.arg(tabela));
        ModalHelper caixas;
        caixas.expectContaining(u"recusado"_s, QMessageBox::Ok);
        m.press(u"Command2"_s);
        m.server().execute(u"DROP TRIGGER recusa"_s);
        QCOMPARE(caixas.problem(), QString());
        QCOMPARE(destino(30), u"P101"_s);
        QCOMPARE(destino(20), u"D20"_s);
        QVERIFY(!m.grid()->isTicked(m.rowOf(30)));
        QVERIFY(m.grid()->isTicked(m.rowOf(10)));
        QVERIFY(m.grid()->isTicked(m.rowOf(20)));
        QCOMPARE(m.total(), u"40,00"_s);
        m.mark();
        m.press(u"Command2"_s);
        QCOMPARE(m.texts(), comandosDe(10, 102).sliced(5) + comandosDe(20, 103));
        QCOMPARE(destino(10), u"P102"_s);
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
        } catch (const RuntimeError& erro) {
            QCOMPARE(erro.statement(), u"SELECT ultpedido,contadorPV FROM empresa"_s);
            QVERIFY(erro.isConnectionLost());
        }
    }

    // The lock

    void waitsForTheOtherStation() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection outra(m.server().socket());
        outra.select(m.server().database());
        QCOMPARE(outra.query(pedeTrava)[0][0], u"1"_s);
        std::thread solta([&outra] {
            QThread::msleep(700);
            outra.execute(u"UPDATE empresa SET contadorPV = 200; DO RELEASE_LOCK(%1)"_s.arg(trava));
        });
        m.press(u"Command2"_s);
        solta.join();
        QCOMPARE(destino(30), u"P201"_s);
        QCOMPARE(destino(20), u"P203"_s);
    }

    void idleOtherStationCostsNoNumber() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection outra(m.server().socket());
        outra.select(m.server().database());
        QCOMPARE(outra.query(pedeTrava)[0][0], u"1"_s);
        ModalHelper caixas;
        caixas.expectContaining(u"Outra estação está numerando documentos há muito tempo."_s,
                                QMessageBox::Ok);
        m.press(u"Command2"_s);
        QCOMPARE(caixas.problem(), QString());
        QCOMPARE(m.texts(), QStringList{pedeTrava});
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"100"_s);
        outra.execute(u"DO RELEASE_LOCK(%1)"_s.arg(trava));
        m.press(u"Command2"_s);
        QCOMPARE(destino(30), u"P101"_s);
    }

    void otherDatabaseOfTheServerDoesNotWait() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection outra(m.server().socket());
        outra.select(u"mysql"_s);
        QCOMPARE(outra.query(pedeTrava)[0][0], u"1"_s);
        QElapsedTimer relogio;
        relogio.start();
        m.press(u"Command2"_s);
        QVERIFY(relogio.elapsed() < 5000);
        QCOMPARE(destino(20), u"P103"_s);
    }

    void convertsWithoutALockOnTheServer() {
        tresDavs();
        // The server breaks off the wait for the lock with an error of its own.
        m.server().useInitStmt(u"SET sql_mode='NO_ENGINE_SUBSTITUTION', max_statement_time=1"_s);
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection outra(m.server().socket());
        outra.select(m.server().database());
        QCOMPARE(outra.query(pedeTrava)[0][0], u"1"_s);
        m.press(u"Command2"_s);
        QStringList esperados;
        for (const QStringList& comandos : {comandosDe(30, 101), comandosDe(10, 102), comandosDe(20, 103)})
            for (const QString& comando : comandos)
                if (comando != devolveTrava)
                    esperados += comando;
        QCOMPARE(m.texts(), esperados);
        QCOMPARE(destino(20), u"P103"_s);
        QCOMPARE(m.grid()->rows(), 1);
    }

    void convertsWhenTheLockDoesNotAnswer() {
        tresDavs();
        QVERIFY(m.open(PanelBench::wide));
        AdminConnection outra(m.server().socket());
        outra.select(m.server().database());
        QCOMPARE(outra.query(pedeTrava)[0][0], u"1"_s);
        // A wait that is killed answers NULL, as a server does that cannot lock; then the lock is free.
        std::thread mata([this, &outra] {
            AdminConnection terceira(m.server().socket());
            terceira.select(m.server().database());
            const auto esperando = [&] {
                QThread::msleep(50);
                return terceira.query(u"SELECT id FROM information_schema.processlist WHERE user='%1' AND "
                                      "info LIKE 'SELECT GET_LOCK%'"_s.arg(m.server().user()));
            };
            QList<QStringList> espera;
            for (int vez = 0; vez < 100 && espera.isEmpty(); ++vez)
                espera = esperando();
            terceira.execute(u"KILL QUERY "_s + espera.value(0).value(0));
            // A lock that is free before the wait is over would be granted after all.
            const auto numero = [&] { return terceira.query(u"SELECT contadorPV FROM empresa"_s)[0][0]; };
            for (int vez = 0; vez < 100 && numero() != u"101"_s; ++vez)
                QThread::msleep(10);
            outra.execute(u"DO RELEASE_LOCK(%1)"_s.arg(trava));
        });
        m.press(u"Command2"_s);
        mata.join();
        const QStringList primeiro = comandosDe(30, 101);
        QCOMPARE(m.texts(),
                 primeiro.first(4) + primeiro.sliced(5) + comandosDe(10, 102) + comandosDe(20, 103));
        QCOMPARE(destino(20), u"P103"_s);
    }

    void twoStationsAtTheSameTime() {
        constexpr int porEstacao = 200;
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"BENTO"_s,
                          .prazo = u"0"_s,
                          .formaPg = u"PIX"_s,
                          .colunaPreco = u"1"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        for (int i = 1; i <= porEstacao; ++i) {
            dav(1000 + i, u"C1"_s, u"ANA"_s);
            dav(2000 + i, u"C1"_s, u"ZECA"_s);
        }
        QProcess ana;
        QProcess zeca;
        for (auto [processo, vendedor] : {std::pair{&ana, u"ANA"_s}, std::pair{&zeca, u"ZECA"_s}}) {
            processo->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            processo->start(QStringLiteral(TARVESSA_STATION), {vendedor, clock::now().toString(Qt::ISODate)});
        }
        for (QProcess* processo : {&ana, &zeca}) {
            QVERIFY(processo->waitForReadyRead(60000));
            QCOMPARE(processo->readAllStandardOutput().trimmed(), QByteArray("200"));
        }
        for (QProcess* processo : {&ana, &zeca}) {
            processo->write("\n");
            QVERIFY(processo->waitForBytesWritten());
        }
        for (QProcess* processo : {&ana, &zeca}) {
            QVERIFY(processo->waitForFinished(120000));
            QCOMPARE(processo->exitStatus(), QProcess::NormalExit);
            QCOMPARE(processo->exitCode(), 0);
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
        const int trocas =
            m.valor(
                 u"SELECT SUM(troca) FROM (SELECT nomevendedor <> LAG(nomevendedor) OVER (ORDER BY nrpedido) "
                 "AS troca FROM orcamento WHERE codigo LIKE '%A') AS t"_s)
                .toInt();
        QVERIFY2(trocas > 20, qPrintable(QString::number(trocas)));
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
        auto* progresso = m.panel()->findChild<QProgressBar*>(u"progresso"_s);
        const Pintura pintura(progresso);
        m.press(u"Command2"_s);
        QVERIFY(!pintura.texts().isEmpty());
        QCOMPARE(pintura.texts().first(), u"DAV 1 de 60"_s);
        for (const QString& texto : pintura.texts())
            QVERIFY2(texto.startsWith(u"DAV "_s) && texto.contains(u" de 60"_s), qPrintable(texto));
        QCOMPARE(m.valor(u"SELECT COUNT(DISTINCT nrpedido) FROM orcamento WHERE TipoOperacao='P'"_s),
                 u"60"_s);
        QVERIFY(!progresso->isVisible());
        QVERIFY(!QApplication::overrideCursor());
    }
};

QTEST_MAIN(TstConversao)
#include "tst_conversao.moc"

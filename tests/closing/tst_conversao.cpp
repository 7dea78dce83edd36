// Turning DAVs into pre-sales, and the numbers they get.

#include "base/RuntimeError.h"
#include "closing/Balcao.h"
#include "closing/Colunas.h"
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
using namespace tarvessa::teste;

namespace {

const QString trava = u"CONCAT('tarvessa_numero_', MD5(DATABASE()))"_s;
const QString pedeTrava = u"SELECT GET_LOCK("_s + trava + u", 10)"_s;
const QString devolveTrava = u"SELECT RELEASE_LOCK("_s + trava + u")"_s;

QStringList comandosDe(int dav, int pv) {
    return {pedeTrava,
            u"UPDATE empresa SET contadorPV = contadorPV+1"_s,
            u"SELECT contadorPV FROM empresa"_s,
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

    const QStringList& textos() const { return m_textos; }

  private:
    QProgressBar* m_barra;
    QStringList m_textos;
};

} // namespace

class TestConversao : public QObject {
    Q_OBJECT

  private:
    Balcao m;

    /// A DAV of two lines and, unless told otherwise, one note; lines and note carry its number.
    void dav(int numero, const QString& cliente, const QString& vendedor, bool comNota = true) {
        m.documento(u"D"_s, numero, cliente, vendedor,
                    {{u"L%1A"_s.arg(numero), u"1"_s, u"10"_s}, {u"L%1B"_s.arg(numero), u"2"_s, u"5"_s}});
        if (comNota)
            m.servidor.executa(
                u"INSERT INTO observacao (nrpedido, tipoOperacao, texto) VALUES (%1, 'D', '%1')"_s.arg(
                    numero));
    }

    /// Three DAVs; by seller and customer they are listed 30, 10, 20.
    void tresDavs() {
        m.cliente(u"C1"_s, u"BENTO"_s, 0, u"PIX"_s, u"1"_s);
        m.cliente(u"C2"_s, u"ALICE"_s, 0, u"PIX"_s, u"1"_s);
        dav(10, u"C1"_s, u"ANA"_s);
        dav(20, u"C1"_s, u"ZECA"_s, false);
        dav(30, u"C2"_s, u"ANA"_s);
    }

    /// What became of the DAV: kind and number of its lines, which must still be together; the note must be
    /// with them, or still with the DAV.
    QString destino(int numero) {
        const auto linhas = m.linhas(u"SELECT DISTINCT TipoOperacao, nrpedido, COUNT(*) FROM orcamento WHERE "
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
    void init() { m.zera(); }
    void cleanup() {
        m.fecha();
        m.servidor.usaSocket(m.servidor.socket());
        m.servidor.usaInitStmt(u"SET sql_mode='NO_ENGINE_SUBSTITUTION'"_s);
    }

    void converteEmOrdemDaGrade() {
        tresDavs();
        m.abre();
        m.clica("Command2");
        QCOMPARE(m.textos(), comandosDe(30, 101) + comandosDe(10, 102) + comandosDe(20, 103));
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"103"_s);
        QCOMPARE(destino(30), u"P101"_s);
        QCOMPARE(destino(10), u"P102"_s);
        QCOMPARE(destino(20), u"P103"_s);
        QCOMPARE(nota(30), u"P101"_s);
        QCOMPARE(nota(10), u"P102"_s);
        QCOMPARE(m.valor(u"SELECT GROUP_CONCAT(DISTINCT situacaoorc) FROM orcamento"_s), u"A"_s);
    }

    void depoisSoACargaLevaAdiante() {
        tresDavs();
        m.abre();
        QVERIFY(m.botao("Command2")->isEnabled());
        QVERIFY(!m.botao("Command3")->isEnabled());
        m.clica("Command2");
        QCOMPARE(m.grade()->rows(), 1);
        for (const char* nome : {"Command2", "Command4", "Command5", "Command6"})
            QVERIFY(!m.botao(nome)->isEnabled());
        QVERIFY(m.botao("Command3")->isEnabled());
        QCOMPARE(m.painel().findChild<QLineEdit*>(u"Text1"_s)->text(), u"0,00"_s);
        m.clica("Command3");
        QCOMPARE(m.grade()->rows(), 4);
        QCOMPARE(m.celula(1, colunas::Pedido), u"101"_s);
    }

    void desmarcadoFicaComoEsta() {
        tresDavs();
        m.abre();
        m.clica(m.linhaDe(10), colunas::Selecao);
        m.clica("Command2");
        QCOMPARE(m.textos(), comandosDe(30, 101) + comandosDe(20, 102));
        QCOMPARE(destino(10), u"D10"_s);
        QCOMPARE(nota(10), u"D10"_s);
        QCOMPARE(m.grade()->rows(), 1);
    }

    void nadaMarcadoNaoMandaNada() {
        tresDavs();
        m.abre();
        m.clica("Command1");
        m.clica("Command2");
        QCOMPARE(m.textos(), QStringList());
        QCOMPARE(m.grade()->rows(), 1);
        QVERIFY(m.botao("Command3")->isEnabled());
    }

    void numeroDeDocumento_data() {
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

    void numeroDeDocumento() {
        QFETCH(QString, tipo);
        QFETCH(QString, avanca);
        QFETCH(int, numero);
        m.abre();
        QCOMPARE(m.painel().Orcamento_NumeroPedido(tipo), numero);
        QCOMPARE(m.textos(), QStringList({pedeTrava, avanca, u"SELECT ultpedido,contadorPV FROM empresa"_s,
                                          devolveTrava}));
        QCOMPARE(m.painel().Orcamento_NumeroPedido(tipo), numero + 1);
    }

    void contadorVazioOuGrandeDemais_data() {
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

    void contadorVazioOuGrandeDemais() {
        QFETCH(QString, prepara);
        QFETCH(QString, erro);
        tresDavs();
        m.abre();
        m.servidor.executa(prepara);
        ModalHelper caixas;
        caixas.esperaContendo(erro, QMessageBox::Ok);
        m.clica("Command2");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos(), comandosDe(0, 0).first(4)); // the lock was given back
        for (const int numero : {10, 20, 30})
            QCOMPARE(destino(numero), u"D%1"_s.arg(numero));
        m.fecha();
        m.servidor.executa(
            u"DELETE FROM empresa; ALTER TABLE empresa MODIFY contadorPV INT NOT NULL DEFAULT 0"_s);
    }

    // Faults

    void cortadoEmCadaComandoNaoPerdeNemDobra_data() {
        QTest::addColumn<int>("k");
        constexpr int comandos = 18;
        for (int k = 1; k <= comandos; ++k)
            QTest::addRow("before statement %d", k) << k;
    }

    void cortadoEmCadaComandoNaoPerdeNemDobra() {
        QFETCH(int, k);
        tresDavs();
        FaultProxy proxy(m.servidor.socket());
        m.servidor.usaSocket(proxy.socket());
        m.abre();
        const QStringList todos = comandosDe(30, 101) + comandosDe(10, 102) + comandosDe(20, 103);
        proxy.cortaAntesDe(k);
        ModalHelper caixas;
        // The end of the connection gives the lock back by itself; that cut shows once the next statement is
        // due.
        caixas.esperaContendo(todos[k - 1] == devolveTrava ? u"A conexão com o banco de dados foi perdida"_s
                                                           : todos[k - 1],
                              QMessageBox::Ok);
        m.clica("Command2");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(QString::fromUtf8(proxy.cortado()), todos[k - 1]);
        QVERIFY(caixas.caixas()[0].informativo.contains(u"A conexão com o banco de dados foi perdida"_s));
        QCOMPARE(m.grade()->rows(), 4); // still there, with ticks on what is left
        m.fecha();

        const QList<int> ordem = {30, 10, 20};
        int convertidos = 0;
        for (int i = 0; i < ordem.size(); ++i) {
            const bool convertido = k > 6 * i + 5;
            const bool notaFoi = k > 6 * i + 6;
            convertidos += convertido ? 1 : 0;
            QCOMPARE(destino(ordem[i]), convertido ? u"P%1"_s.arg(101 + i) : u"D%1"_s.arg(ordem[i]));
            if (ordem[i] != 20)
                QCOMPARE(nota(ordem[i]), notaFoi ? u"P%1"_s.arg(101 + i) : u"D%1"_s.arg(ordem[i]));
        }

        // After a new start the others are converted, and a number may have been lost.
        m.servidor.usaSocket(m.servidor.socket());
        m.abre();
        if (convertidos < 3) {
            m.clica("Command2");
            m.clica("Command3");
        }
        QSet<QString> numeros;
        for (const int numero : ordem) {
            QVERIFY(destino(numero).startsWith(u'P'));
            numeros.insert(destino(numero));
        }
        QCOMPARE(numeros.size(), 3);
        QVERIFY(m.valor(u"SELECT contadorPV FROM empresa"_s).toInt() <= 104);
        QCOMPARE(m.grade()->rows(), 4);
    }

    void depoisDeUmErroSegueComOMesmoNumero_data() {
        QTest::addColumn<QString>("tabela");
        QTest::newRow("lines refused") << u"orcamento"_s;
        QTest::newRow("notes refused") << u"observacao"_s;
    }

    void depoisDeUmErroSegueComOMesmoNumero() {
        QFETCH(QString, tabela);
        tresDavs();
        m.abre();
        m.servidor.executa(
            u"CREATE TRIGGER recusa BEFORE UPDATE ON %1 FOR EACH ROW IF OLD.nrpedido = 10 THEN "
            "SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s.arg(tabela));
        ModalHelper caixas;
        caixas.esperaContendo(u"recusado"_s, QMessageBox::Ok);
        m.clica("Command2");
        m.servidor.executa(u"DROP TRIGGER recusa"_s);
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(destino(30), u"P101"_s);
        QCOMPARE(destino(20), u"D20"_s);
        QVERIFY(!m.grade()->isTicked(m.linhaDe(30)));
        QVERIFY(m.grade()->isTicked(m.linhaDe(10)));
        QVERIFY(m.grade()->isTicked(m.linhaDe(20)));
        QCOMPARE(m.total(), u"40,00"_s);
        m.marca();
        m.clica("Command2");
        QCOMPARE(m.textos(), comandosDe(10, 102).sliced(4) + comandosDe(20, 103));
        QCOMPARE(destino(10), u"P102"_s);
        QCOMPARE(nota(10), u"P102"_s);
        QCOMPARE(m.grade()->rows(), 1);
    }

    void orcamentoCortadoMascaraNada() {
        FaultProxy proxy(m.servidor.socket());
        m.servidor.usaSocket(proxy.socket());
        m.abre();
        proxy.cortaAntesDe(3); // the reading; giving the lock back fails after it
        try {
            m.painel().Orcamento_NumeroPedido(u"P"_s);
            QFAIL("no error");
        } catch (const RuntimeError& erro) {
            QCOMPARE(erro.statement(), u"SELECT ultpedido,contadorPV FROM empresa"_s);
            QVERIFY(erro.isConnectionLost());
        }
    }

    // The lock

    void esperaAOutraEstacao() {
        tresDavs();
        m.abre();
        AdminConnection outra(m.servidor.socket());
        outra.seleciona(m.servidor.banco());
        QCOMPARE(outra.consulta(pedeTrava)[0][0], u"1"_s);
        std::thread solta([&outra] {
            QThread::msleep(700);
            outra.executa(u"UPDATE empresa SET contadorPV = 200; DO RELEASE_LOCK(%1)"_s.arg(trava));
        });
        m.clica("Command2");
        solta.join();
        QCOMPARE(destino(30), u"P201"_s);
        QCOMPARE(destino(20), u"P203"_s);
    }

    void outraEstacaoParadaNaoGastaNumero() {
        tresDavs();
        m.abre();
        AdminConnection outra(m.servidor.socket());
        outra.seleciona(m.servidor.banco());
        QCOMPARE(outra.consulta(pedeTrava)[0][0], u"1"_s);
        ModalHelper caixas;
        caixas.esperaContendo(u"Outra estação está numerando documentos há muito tempo."_s, QMessageBox::Ok);
        m.clica("Command2");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos(), QStringList{pedeTrava});
        QCOMPARE(m.valor(u"SELECT contadorPV FROM empresa"_s), u"100"_s);
        outra.executa(u"DO RELEASE_LOCK(%1)"_s.arg(trava));
        m.clica("Command2");
        QCOMPARE(destino(30), u"P101"_s);
    }

    void outroBancoDoMesmoServidorNaoEspera() {
        tresDavs();
        m.abre();
        AdminConnection outra(m.servidor.socket());
        outra.seleciona(u"mysql"_s);
        QCOMPARE(outra.consulta(pedeTrava)[0][0], u"1"_s);
        QElapsedTimer relogio;
        relogio.start();
        m.clica("Command2");
        QVERIFY(relogio.elapsed() < 5000);
        QCOMPARE(destino(20), u"P103"_s);
    }

    void semTravaNoServidorConverteAssimMesmo() {
        tresDavs();
        // The server breaks off the wait for the lock with an error of its own.
        m.servidor.usaInitStmt(u"SET sql_mode='NO_ENGINE_SUBSTITUTION', max_statement_time=1"_s);
        m.abre();
        AdminConnection outra(m.servidor.socket());
        outra.seleciona(m.servidor.banco());
        QCOMPARE(outra.consulta(pedeTrava)[0][0], u"1"_s);
        m.clica("Command2");
        QStringList esperados;
        for (const QStringList& comandos : {comandosDe(30, 101), comandosDe(10, 102), comandosDe(20, 103)})
            for (const QString& comando : comandos)
                if (comando != devolveTrava)
                    esperados += comando;
        QCOMPARE(m.textos(), esperados);
        QCOMPARE(destino(20), u"P103"_s);
        QCOMPARE(m.grade()->rows(), 1);
    }

    void travaQueNaoRespondeConverteAssimMesmo() {
        tresDavs();
        m.abre();
        AdminConnection outra(m.servidor.socket());
        outra.seleciona(m.servidor.banco());
        QCOMPARE(outra.consulta(pedeTrava)[0][0], u"1"_s);
        // A wait that is killed answers NULL, as a server does that cannot lock; then the lock is free.
        std::thread mata([this, &outra] {
            AdminConnection terceira(m.servidor.socket());
            terceira.seleciona(m.servidor.banco());
            const auto esperando = [&] {
                QThread::msleep(50);
                return terceira.consulta(u"SELECT id FROM information_schema.processlist WHERE user='%1' AND "
                                         "info LIKE 'SELECT GET_LOCK%'"_s.arg(m.servidor.usuario()));
            };
            QList<QStringList> espera;
            for (int vez = 0; vez < 100 && espera.isEmpty(); ++vez)
                espera = esperando();
            terceira.executa(u"KILL QUERY "_s + espera.value(0).value(0));
            // A lock that is free before the wait is over would be granted after all.
            const auto numero = [&] { return terceira.consulta(u"SELECT contadorPV FROM empresa"_s)[0][0]; };
            for (int vez = 0; vez < 100 && numero() != u"101"_s; ++vez)
                QThread::msleep(10);
            outra.executa(u"DO RELEASE_LOCK(%1)"_s.arg(trava));
        });
        m.clica("Command2");
        mata.join();
        const QStringList primeiro = comandosDe(30, 101);
        QCOMPARE(m.textos(),
                 primeiro.first(3) + primeiro.sliced(4) + comandosDe(10, 102) + comandosDe(20, 103));
        QCOMPARE(destino(20), u"P103"_s);
    }

    void duasEstacoesAoMesmoTempo() {
        constexpr int porEstacao = 200;
        m.cliente(u"C1"_s, u"BENTO"_s, 0, u"PIX"_s, u"1"_s);
        for (int i = 1; i <= porEstacao; ++i) {
            dav(1000 + i, u"C1"_s, u"ANA"_s);
            dav(2000 + i, u"C1"_s, u"ZECA"_s);
        }
        QProcess ana;
        QProcess zeca;
        for (auto [processo, vendedor] : {std::pair{&ana, u"ANA"_s}, std::pair{&zeca, u"ZECA"_s}}) {
            processo->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            processo->start(QStringLiteral(TARVESSA_ESTACAO), {vendedor});
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
        QCOMPARE(
            m.linhas(u"SELECT COUNT(DISTINCT nrpedido), MIN(nrpedido), MAX(nrpedido) FROM orcamento WHERE "
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

    void muitosDavsMostramOAndamento() {
        m.cliente(u"C1"_s, u"BENTO"_s, 0, u"PIX"_s, u"1"_s);
        for (int i = 1; i <= 60; ++i)
            dav(i, u"C1"_s, u"ANA"_s, false);
        m.abre();
        auto* progresso = m.painel().findChild<QProgressBar*>(u"progresso"_s);
        const Pintura pintura(progresso);
        m.clica("Command2");
        QVERIFY(!pintura.textos().isEmpty());
        QCOMPARE(pintura.textos().first(), u"DAV 1 de 60"_s);
        for (const QString& texto : pintura.textos())
            QVERIFY2(texto.startsWith(u"DAV "_s) && texto.endsWith(u" de 60"_s), qPrintable(texto));
        QCOMPARE(m.valor(u"SELECT COUNT(DISTINCT nrpedido) FROM orcamento WHERE TipoOperacao='P'"_s),
                 u"60"_s);
        QVERIFY(!progresso->isVisible());
        QVERIFY(!QApplication::overrideCursor());
    }
};

QTEST_MAIN(TestConversao)
#include "tst_conversao.moc"

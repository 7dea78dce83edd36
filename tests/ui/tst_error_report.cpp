#include "support/ModalHelper.h"
#include "ui/ErrorReport.h"

#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// What the operator reads of a run-time error.
class TstErrorReport : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void numberAndTextAreShown();
    void stateAndStatementAreUnderDetails_data();
    void stateAndStatementAreUnderDetails();
    void ownErrorHasNoDetails();
    void lostConnectionAsksForANewStart_data();
    void lostConnectionAsksForANewStart();
    void escapeClosesIt();
    void errorIsAnException();

  private:
    static ModalHelper::Box mostrado(const RuntimeError& erro) {
        ModalHelper caixas;
        caixas.expectContaining(erro.text(), QMessageBox::Ok);
        QWidget form;
        form.show();
        showErrorReport(&form, erro);
        return caixas.problem().isEmpty() && caixas.boxes().size() == 1
                   ? caixas.boxes()[0]
                   : ModalHelper::Box{caixas.problem(), QMessageBox::NoIcon, {}, {}, {}, {}};
    }
};

void TstErrorReport::numberAndTextAreShown() {
    const auto caixa = mostrado(RuntimeError(1146, u"Table 'x.<b>nenhuma</b>' doesn't exist"_s, u"42S02"_s,
                                             u"SELECT * FROM nenhuma"_s));
    QCOMPARE(caixa.title, u"Erro de execução"_s);
    QCOMPARE(caixa.icon, QMessageBox::Critical);
    QCOMPARE(caixa.text, u"Erro em tempo de execução 1146:\n\nTable 'x.<b>nenhuma</b>' doesn't exist"_s);
    QCOMPARE(caixa.informative, u"A operação foi interrompida; o que já foi executado permanece gravado."_s);
    QCOMPARE(caixa.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void TstErrorReport::stateAndStatementAreUnderDetails_data() {
    QTest::addColumn<QString>("estado");
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("detalhes");
    const QString comando = u"UPDATE  produtos Set v=' {PÃO} 100% \U0001F950'"_s;
    QTest::newRow("both") << u"42S02"_s << comando << u"SQLSTATE: 42S02\nComando SQL:\n"_s + comando;
    QTest::newRow("state only") << u"08001"_s << QString() << u"SQLSTATE: 08001"_s;
    QTest::newRow("statement only") << QString() << comando << u"Comando SQL:\n"_s + comando;
}

void TstErrorReport::stateAndStatementAreUnderDetails() {
    QFETCH(QString, estado);
    QFETCH(QString, comando);
    QFETCH(QString, detalhes);
    QCOMPARE(mostrado(RuntimeError(1, u"erro"_s, estado, comando)).details, detalhes);
}

void TstErrorReport::ownErrorHasNoDetails() {
    const auto caixa = mostrado(RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s));
    QCOMPARE(caixa.text, u"Erro em tempo de execução 11:\n\nDivisão por zero."_s);
    QCOMPARE(caixa.details, QString());
}

void TstErrorReport::lostConnectionAsksForANewStart_data() {
    QTest::addColumn<int>("numeroDoErro");
    QTest::addColumn<QString>("estado");
    QTest::newRow("link failure") << 2013 << u"08S01"_s;
    QTest::newRow("already known to be lost") << 0 << u"08003"_s;
    QTest::newRow("write error") << 5014 << u"HY000"_s;
    QTest::newRow("closed by the program") << static_cast<int>(ErrorNumber::ConnectionClosed) << QString();
}

void TstErrorReport::lostConnectionAsksForANewStart() {
    QFETCH(int, numeroDoErro);
    QFETCH(QString, estado);
    QCOMPARE(
        mostrado(RuntimeError(numeroDoErro, u"perdida"_s, estado, u"SELECT 1"_s)).informative,
        u"A operação foi interrompida; o que já foi executado permanece gravado. A conexão com o banco de "
        "dados foi perdida; a próxima operação tentará abri-la novamente."_s);
}

void TstErrorReport::escapeClosesIt() {
    ModalHelper caixas;
    caixas.expectContaining(u"erro"_s, QMessageBox::NoButton);
    showErrorReport(nullptr, RuntimeError(1, u"erro"_s, u"HY000"_s, u"SELECT 1"_s));
    QCOMPARE(caixas.problem(), QString());
}

void TstErrorReport::errorIsAnException() {
    const RuntimeError erro(7, u"Não há memória"_s, u"HY001"_s, u"SELECT 1"_s);
    const std::exception& base = erro;
    QCOMPARE(QString::fromUtf8(base.what()), u"Não há memória"_s);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const RuntimeError copia = erro;
    QCOMPARE(copia.number(), 7);
    QCOMPARE(copia.sqlState(), u"HY001"_s);
    QCOMPARE(copia.statement(), u"SELECT 1"_s);
}

QTEST_MAIN(TstErrorReport)
#include "tst_error_report.moc"

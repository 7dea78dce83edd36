#include "base/Clock.h"
#include "support/ModalHelper.h"
#include "ui/ErrorAdvice.h"
#include "ui/ErrorReport.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// Acts on the next report once it is shown, and then ends it by Escape.
class WhileShown {
  public:
    explicit WhileShown(std::function<void(QMessageBox*)> act) {
        m_timer.callOnTimeout([this, act = std::move(act)] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            // A key reaches the window that is active, and that may come a moment later.
            if (!box || QApplication::activeWindow() != box)
                return;
            m_timer.stop();
            act(box);
            // A button pressed by key takes a moment.
            constexpr int pressMs = 300;
            QTest::qWait(pressMs);
            m_stayedOpen = box->isVisible();
            m_caption = box->findChild<QPushButton*>(u"Copiar"_s)->text();
            QTest::keyClick(box, Qt::Key_Escape);
        });
        m_timer.start(10);
    }
    bool stayedOpen() const { return m_stayedOpen; }
    QString caption() const { return m_caption; }

  private:
    QTimer m_timer;
    bool m_stayedOpen = false;
    QString m_caption;
};

} // namespace

/// What the operator reads of a run-time error.
class TstErrorReport : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void numberAndTextAreShown();
    void stateAndStatementAreUnderDetails_data();
    void stateAndStatementAreUnderDetails();
    void ownErrorHasNoDetails();
    void adviceByNumberOrState_data();
    void adviceByNumberOrState();
    void guideHasTheSameTable();
    void everyCodeIsThereOnce();
    void copyPutsAllIntoTheClipboard();
    void copyByKeyLeavesTheReportOpen();
    void lostConnectionAsksForANewStart_data();
    void lostConnectionAsksForANewStart();
    void textIsNeverRichText();
    void escapeClosesIt();
    void errorIsAnException();

  private:
    static ModalHelper::Box shown(const RuntimeError& runTimeError) {
        ModalHelper boxes;
        boxes.expectContaining(runTimeError.text(), QMessageBox::Ok);
        QWidget form;
        form.show();
        showErrorReport(&form, runTimeError);
        return boxes.problem().isEmpty() && boxes.boxes().size() == 1
                   ? boxes.boxes()[0]
                   : ModalHelper::Box{boxes.problem(), QMessageBox::NoIcon, {}, {}, {}, {}};
    }
};

void TstErrorReport::numberAndTextAreShown() {
    const auto shownBox = shown(RuntimeError(1146, u"Table 'x.<b>nenhuma</b>' doesn't exist"_s, u"42S02"_s,
                                             u"SELECT * FROM nenhuma"_s));
    QCOMPARE(shownBox.title, u"Erro de execução"_s);
    QCOMPARE(shownBox.icon, QMessageBox::Critical);
    QCOMPARE(shownBox.text,
             u"Erro em tempo de execução 1146:\n\nFalta uma tabela no banco de dados. Confira "
             "DATABASE na fonte de dados QDX e lower_case_table_names no servidor; verifica.sql diz "
             "quais tabelas faltam.\n\nTable 'x.<b>nenhuma</b>' doesn't exist"_s);
    QCOMPARE(shownBox.informative,
             u"A operação foi interrompida; o que já foi executado permanece gravado."_s);
    QCOMPARE(shownBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void TstErrorReport::stateAndStatementAreUnderDetails_data() {
    QTest::addColumn<QString>("sqlState");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("detalhes");
    const QString command = u"UPDATE  produtos Set v=' {PÃO} 100% \U0001F950'"_s;
    QTest::newRow("both") << u"42S02"_s << command << u"SQLSTATE: 42S02\nComando SQL:\n"_s + command;
    QTest::newRow("state only") << u"08001"_s << QString() << u"SQLSTATE: 08001"_s;
    QTest::newRow("statement only") << QString() << command << u"Comando SQL:\n"_s + command;
}

void TstErrorReport::stateAndStatementAreUnderDetails() {
    QFETCH(QString, sqlState);
    QFETCH(QString, command);
    QFETCH(QString, detalhes);
    QCOMPARE(shown(RuntimeError(1, u"erro"_s, sqlState, command)).details, detalhes);
}

void TstErrorReport::ownErrorHasNoDetails() {
    const auto shownBox = shown(RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s));
    QCOMPARE(shownBox.text, u"Erro em tempo de execução 11:\n\nDivisão por zero."_s);
    QCOMPARE(shownBox.details, QString());
}

void TstErrorReport::adviceByNumberOrState_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("begin");
    QTest::newRow("wrong password") << 1045 << u"28000"_s << u"O servidor recusou o usuário ou a senha"_s;
    QTest::newRow("no such database") << 1049 << u"42000"_s << u"O servidor não tem o banco de dados"_s;
    QTest::newRow("grouping") << 1055 << u"42000"_s << u"O servidor exige agrupamentos completos"_s;
    QTest::newRow("duplicate") << 1062 << u"23000"_s << u"O banco de dados já tem um registro"_s;
    QTest::newRow("lock wait, or servers without one of them")
        << 1205 << u"HY000"_s
        << u"Outra estação ou outro programa está com os mesmos registros em uso ou, onde há mais de um servidor,"_s;
    QTest::newRow("lost") << 2013 << u"08S01"_s << u"A conexão caiu no meio do comando"_s;
    QTest::newRow("no data source") << 0 << u"IM002"_s << u"A fonte de dados QDX não existe"_s;
    QTest::newRow("no driver") << 0 << u"01000"_s << u"O driver ODBC da fonte de dados"_s;
    QTest::newRow("driver manager") << 0 << u"S1000"_s << u"O gerenciador ODBC não conseguiu"_s;
    QTest::newRow("a warning's state on a server's error") << 1 << u"01000"_s << QString();
    QTest::newRow("unknown") << 1064 << u"42000"_s << QString();
    QTest::newRow("already known to be lost") << 0 << u"08003"_s << QString();
}

void TstErrorReport::adviceByNumberOrState() {
    QFETCH(int, number);
    QFETCH(QString, state);
    QFETCH(QString, begin);
    const RuntimeError error(number, u"the driver's own"_s, state, u"SELECT 1"_s);
    const QString advice = errorAdvice(error);
    QCOMPARE(advice.isEmpty(), begin.isEmpty());
    QVERIFY2(advice.startsWith(begin), qPrintable(advice));
    QCOMPARE(shown(error).text, u"Erro em tempo de execução %1:\n\n"_s.arg(number) +
                                    (advice.isEmpty() ? QString() : advice + u"\n\n"_s) +
                                    u"the driver's own"_s);
}

void TstErrorReport::guideHasTheSameTable() {
    QFile guide(QStringLiteral(TARVESSA_SOURCE_DIR "/docs/instalacao/problemas.md"));
    QVERIFY(guide.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(guide.readAll());
    const qsizetype begin = text.indexOf(u"| Código |"_s);
    QVERIFY(begin >= 0);
    QStringList inTheGuide = text.sliced(begin, text.indexOf(u"\n\n"_s, begin) - begin).split(u'\n');
    inTheGuide.remove(0, 2); // caption and rule
    QStringList inTheProgram;
    for (const ErrorAdvice& advice : allErrorAdvice())
        inTheProgram.append(u"| %1 | %2 |"_s.arg(advice.code, advice.sentence));
    QCOMPARE(inTheGuide, inTheProgram);
}

void TstErrorReport::everyCodeIsThereOnce() {
    QStringList codes;
    for (const ErrorAdvice& advice : allErrorAdvice())
        codes.append(advice.code);
    for (const char* code : {"1045", "1049", "1055", "1062", "1142", "1146", "1205", "1213", "1292", "2002",
                             "2003", "2006", "2013", "IM002", "S1000"})
        QCOMPARE(codes.count(QString::fromLatin1(code)), 1);
    QCOMPARE(codes.removeDuplicates(), 0);
}

void TstErrorReport::copyPutsAllIntoTheClipboard() {
    QApplication::clipboard()->clear();
    clock::fix(QDateTime(QDate(2024, 3, 15), QTime(14, 7, 9)));
    QCoreApplication::setApplicationName(u"Tarvessa"_s);
    QCoreApplication::setApplicationVersion(u"9.8.7"_s);
    WhileShown report([](QMessageBox* box) {
        QTest::mouseClick(box->findChild<QPushButton*>(u"Copiar"_s), Qt::LeftButton);
    });
    showErrorReport(nullptr, RuntimeError(1213, u"Deadlock <found>"_s, u"40001"_s, u"UPDATE x"_s));
    clock::fix({});
    QVERIFY(report.stayedOpen());
    QCOMPARE(report.caption(), u"&Copiado"_s);
    QCOMPARE(QApplication::clipboard()->text(),
             u"Tarvessa 9.8.7 - 15/03/2024 14:07:09\n\nErro em tempo de execução 1213:\n\nDuas operações "
             "disputaram os mesmos registros, e o servidor interrompeu esta. Repita a operação.\n\nDeadlock "
             "<found>\n\nA operação foi interrompida; o que já foi executado permanece gravado.\n\nSQLSTATE: "
             "40001\nComando SQL:\nUPDATE x\n"_s);
}

void TstErrorReport::copyByKeyLeavesTheReportOpen() {
    QApplication::clipboard()->clear();
    WhileShown report([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_C, Qt::AltModifier); });
    showErrorReport(nullptr, RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s));
    QVERIFY(report.stayedOpen());
    QVERIFY(
        QApplication::clipboard()->text().contains(u"Erro em tempo de execução 11:\n\nDivisão por zero."_s));
}

void TstErrorReport::lostConnectionAsksForANewStart_data() {
    QTest::addColumn<int>("errorNumber");
    QTest::addColumn<QString>("sqlState");
    QTest::newRow("link failure") << 2013 << u"08S01"_s;
    QTest::newRow("already known to be lost") << 0 << u"08003"_s;
    QTest::newRow("write error") << 5014 << u"HY000"_s;
    QTest::newRow("closed by the program") << static_cast<int>(ErrorNumber::ConnectionClosed) << QString();
}

void TstErrorReport::lostConnectionAsksForANewStart() {
    QFETCH(int, errorNumber);
    QFETCH(QString, sqlState);
    QCOMPARE(
        shown(RuntimeError(errorNumber, u"perdida"_s, sqlState, u"SELECT 1"_s)).informative,
        u"A operação foi interrompida; o que já foi executado permanece gravado. A conexão com o banco de "
        "dados foi perdida; a próxima operação tentará abri-la novamente."_s);
}

void TstErrorReport::textIsNeverRichText() {
    QList<Qt::TextFormat> formats;
    QTimer::singleShot(0, this, [&formats] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        formats = {box->textFormat(), box->findChild<QLabel*>(u"qt_msgbox_label"_s)->textFormat()};
        box->close();
    });
    QWidget form;
    form.show();
    showErrorReport(&form, RuntimeError(1146, u"<img src='x'>"_s, u"42S02"_s, {}));
    QCOMPARE(formats, (QList<Qt::TextFormat>{Qt::PlainText, Qt::PlainText}));
}

void TstErrorReport::escapeClosesIt() {
    ModalHelper boxes;
    boxes.expectContaining(u"erro"_s, QMessageBox::NoButton);
    showErrorReport(nullptr, RuntimeError(1, u"erro"_s, u"HY000"_s, u"SELECT 1"_s));
    QCOMPARE(boxes.problem(), QString());
}

void TstErrorReport::errorIsAnException() {
    const RuntimeError runTimeError(7, u"Não há memória"_s, u"HY001"_s, u"SELECT 1"_s);
    const std::exception& base = runTimeError;
    QCOMPARE(QString::fromUtf8(base.what()), u"Não há memória"_s);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const RuntimeError copy = runTimeError;
    QCOMPARE(copy.number(), 7);
    QCOMPARE(copy.sqlState(), u"HY001"_s);
    QCOMPARE(copy.statement(), u"SELECT 1"_s);
}

QTEST_MAIN(TstErrorReport)
#include "tst_error_report.moc"

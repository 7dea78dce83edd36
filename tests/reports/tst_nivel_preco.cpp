#include "base/ProgramFolder.h"
#include "base/RuntimeError.h"
#include "core/PrintLayout.h"
#include "reports/RelatNivelPreco.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "support/Preview.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString required = u"Obrigatória a seleção de um nível de preço. Verifique!!!"_s;

QString consulta(int nivel) {
    return u"SELECT clientes1.`codigo`, clientes1.`nome`, clientes1.`fantasia`, clientes1.`colunapreco` From "
           "`clientes` clientes1 Where clientes1.`colunapreco`=%1 And clientes1.ativocad='S' order By "
           "clientes1.`nome` ASC"_s.arg(nivel);
}

} // namespace

/// The list of customers by price level.
class TstNivelPreco : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { m = std::make_unique<Bench>(); }
    void cleanupTestCase() { m.reset(); }
    void init() { m->resetConnected(); }
    void cleanup() { screen.reset(); }

    void captionsAndNames();
    void levelsWithTitles_data();
    void levelsWithTitles();
    void secondItemIsLevelThree();
    void refusesWhatNamesNoLevel_data();
    void refusesWhatNamesNoLevel();
    void leadingNumberCounts_data();
    void leadingNumberCounts();
    void typedTextFollowsTheConvention();
    void printsActiveCustomersOfTheLevel();
    void paperProposesItsFileName();
    void listedByLetterWithCounts();
    void tenThousandCustomers();
    void queryStaysForItsLayoutAlone();
    void failedReportTakesItsQueryAlong();
    void withoutTheControlIsAnErrorReport();
    void noCompanyIsAnErrorReport();
    void byKeyboardAlone();
    void refusedLevelIsTypedOver();
    void altKeyIsTold();

  private:
    void openScreen();
    void titles(const QString& one, const QString& two, const QString& three, const QString& four);
    QComboBox* lista() const { return control<QComboBox>(screen.get(), "TabelaPreco"); }
    /// Generates the list of level 2 and closes its preview.
    void runLevelTwo();
    void run() { QTest::mouseClick(control<QPushButton>(screen.get(), "Command4"), Qt::LeftButton); }

    std::unique_ptr<Bench> m;
    std::unique_ptr<RelatNivelPreco> screen;
};

void TstNivelPreco::titles(const QString& one, const QString& two, const QString& three,
                           const QString& four) {
    const auto valor = [](const QString& title) {
        return title == u"NULL" ? title : u"'"_s + title + u"'"_s;
    };
    m->server().execute(u"UPDATE empresa SET Titulom1="_s + valor(one) + u", Titulom2="_s + valor(two) +
                        u", Titulom3="_s + valor(three) + u", Titulom4="_s + valor(four));
}

void TstNivelPreco::openScreen() {
    m->mark();
    screen = std::make_unique<RelatNivelPreco>();
    QVERIFY(showActive(screen.get()));
}

void TstNivelPreco::captionsAndNames() {
    titles(u"varejo"_s, u"b"_s, u"c"_s, u"d"_s);
    openScreen();
    QCOMPARE(screen->windowTitle(), u" Relatório de Nível de Preços"_s);
    QCOMPARE(control<QLabel>(screen.get(), "Label1")->text(), u"NÍVEL PREÇO"_s);
    QCOMPARE(lista()->accessibleName(), u"NÍVEL PREÇO"_s);
    QCOMPARE(lista()->lineEdit()->accessibleName(), u"NÍVEL PREÇO"_s);
    QCOMPARE(control<QPushButton>(screen.get(), "Command4")->text(), u"&Gerar Relatório"_s);
    QCOMPARE(lista()->currentIndex(), -1);
    QCOMPARE(lista()->currentText(), QString());
    QCOMPARE(m->statements(), QStringList({u"Select Titulom1,Titulom2,Titulom3,Titulom4 from Empresa"_s}));
}

void TstNivelPreco::levelsWithTitles_data() {
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("all") << QStringList({u"varejo"_s, u"Atacado"_s, u"doces à mão"_s, u"X"_s})
                         << QStringList(
                                {u"1 - VAREJO"_s, u"2 - ATACADO"_s, u"3 - DOCES À MÃO"_s, u"4 - X"_s});
    QTest::newRow("1 and 3") << QStringList({u"A"_s, u""_s, u"C"_s, u"NULL"_s})
                             << QStringList({u"1 - A"_s, u"3 - C"_s});
    QTest::newRow("blanks are none") << QStringList({u"   "_s, u" B "_s, u""_s, u"NULL"_s})
                                     << QStringList({u"2 - B"_s});
    QTest::newRow("none") << QStringList({u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s}) << QStringList();
}

void TstNivelPreco::levelsWithTitles() {
    QFETCH(QStringList, stored);
    titles(stored[0], stored[1], stored[2], stored[3]);
    openScreen();
    QStringList items;
    for (int i = 0; i < lista()->count(); ++i)
        items.append(lista()->itemText(i));
    QTEST(items, "items");
}

void TstNivelPreco::secondItemIsLevelThree() {
    titles(u"A"_s, QString(), u"C"_s, QString());
    openScreen();
    lista()->setCurrentIndex(1);
    ModalHelper modal;
    modal.onOpen([](QWidget* preview) { preview->close(); });
    run();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(3));
}

void TstNivelPreco::refusesWhatNamesNoLevel_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("nothing") << QString();
    QTest::newRow("text") << u"varejo"_s;
    QTest::newRow("text before the number") << u"n1"_s;
    QTest::newRow("zero") << u"0 - X"_s;
    QTest::newRow("less than one") << u"0,9"_s;
}

void TstNivelPreco::refusesWhatNamesNoLevel() {
    QFETCH(QString, typed);
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    openScreen();
    control<QPushButton>(screen.get(), "Command4")->setFocus();
    lista()->lineEdit()->setText(typed);
    m->mark();
    ModalHelper modal;
    modal.expect(required, QMessageBox::Ok);
    run();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(screen->focusWidget(), lista());
    QCOMPARE(CRW->sqlQuery(), QString());
    QCOMPARE(m->statements(), QStringList());
}

void TstNivelPreco::leadingNumberCounts_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("nivel");
    QTest::newRow("a number") << u"2"_s << 2;
    QTest::newRow("number and text") << u"4 qualquer"_s << 4;
    QTest::newRow("a level without a title") << u"7"_s << 7;
    QTest::newRow("decimals") << u"3,9"_s << 3;
}

void TstNivelPreco::leadingNumberCounts() {
    QFETCH(QString, typed);
    QFETCH(int, nivel);
    titles(u"A"_s, QString(), QString(), QString());
    openScreen();
    lista()->setFocus();
    QTest::keyClicks(lista()->lineEdit(), typed);
    ModalHelper modal;
    modal.onOpen([](QWidget* preview) { preview->close(); });
    run();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(nivel));
}

void TstNivelPreco::typedTextFollowsTheConvention() {
    openScreen();
    lista()->setFocus();
    QTest::keyClicks(lista()->lineEdit(), u"a'b"_s);
    QCOMPARE(lista()->currentText(), u"A´B"_s);
    lista()->lineEdit()->clear();
    QApplication::clipboard()->setText(u"d'água"_s);
    QTest::keyClick(lista()->lineEdit(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(lista()->currentText(), u"D´ÁGUA"_s);
}

void TstNivelPreco::paperProposesItsFileName() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    openScreen();
    lista()->setCurrentIndex(2);
    run();
    QTRY_VERIFY(openPreview());
    QCOMPARE(proposedFileName(), u"Clientes do nível de preço 3.pdf"_s);
    QCOMPARE(m->closePreviews(), 1);
}

void TstNivelPreco::printsActiveCustomersOfTheLevel() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    m->shop().cliente({.codigo = u"C1"_s,
                       .nome = u"ZULMIRA"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"1"_s,
                       .fantasia = u"F ZULMIRA"_s});
    m->shop().cliente({.codigo = u"C2"_s,
                       .nome = u"ÁGATA"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"2"_s,
                       .fantasia = u"F ÁGATA"_s});
    m->shop().cliente({.codigo = u"C3"_s,
                       .nome = u"INATIVA"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"3"_s,
                       .fantasia = u"F INATIVA"_s,
                       .outros = u"ativocad='N'"_s});
    m->shop().cliente({.codigo = u"C4"_s,
                       .nome = u"SEM SITUAÇÃO"_s,
                       .colunaPreco = u"2"_s,
                       .cnpjCpf = u"4"_s,
                       .fantasia = u"F SEM SITUAÇÃO"_s,
                       .outros = u"ativocad=NULL"_s});
    m->shop().cliente({.codigo = u"C5"_s,
                       .nome = u"DE OUTRO NÍVEL"_s,
                       .colunaPreco = u"3"_s,
                       .cnpjCpf = u"5"_s,
                       .fantasia = u"F DE OUTRO NÍVEL"_s});
    openScreen();
    lista()->setCurrentIndex(1);
    m->mark();
    ModalHelper modal;
    modal.onOpen([](QWidget* preview) {
        QVERIFY(preview->isMaximized());
        preview->close();
    });
    run();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(m->statements(), QStringList({consulta(2)}));
    QCOMPARE(CRW->windowState(), 2);
    QVERIFY(CRW->reportFileName().endsWith(u"\\rpt\\RelatNivelPreco.RPT"));
    QCOMPARE(CRW->formula(0), QString());
    const QString text = m->reportText();
    QVERIFY2(text.contains(u"ÁGATA"_s) && text.contains(u"ZULMIRA"_s), qPrintable(text));
    QVERIFY(text.indexOf(u"ÁGATA"_s) < text.indexOf(u"ZULMIRA"_s));
    for (const QString& outside : {u"INATIVA"_s, u"SEM SITUAÇÃO"_s, u"DE OUTRO NÍVEL"_s})
        QVERIFY2(!text.contains(outside), qPrintable(text));
}

void TstNivelPreco::runLevelTwo() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    openScreen();
    lista()->setCurrentIndex(1);
    ModalHelper modal;
    modal.onOpen([](QWidget* preview) { preview->close(); });
    run();
    QTRY_COMPARE(modal.problem(), QString());
}

void TstNivelPreco::listedByLetterWithCounts() {
    const QStringList names = {u"BAR DO ZÉ"_s, u"ÁGUIA LTDA"_s, u"7 ESTRELAS"_s, u"ALVES LTDA"_s,
                               u"ÇA VA"_s,     u"COSTA"_s,      u"boteco"_s};
    for (int i = 0; i < names.size(); ++i)
        m->shop().cliente({.codigo = u"C%1"_s.arg(i + 1),
                           .nome = names[i],
                           .colunaPreco = u"2"_s,
                           .cnpjCpf = QString::number(i + 1),
                           .fantasia = u"F "_s + names[i]});
    m->shop().cliente({.codigo = u"C8"_s,
                       .nome = u"BAZAR"_s,
                       .colunaPreco = u"1"_s,
                       .cnpjCpf = u"8"_s,
                       .fantasia = u"F BAZAR"_s});
    runLevelTwo();
    const QString text = m->reportWords();
    const QString lista = u"Nível de preço: 2 Código Nome Nome fantasia "
                          "# C3 7 ESTRELAS F 7 ESTRELAS Letra #: 1 "
                          "A C2 ÁGUIA LTDA F ÁGUIA LTDA C4 ALVES LTDA F ALVES LTDA Letra A: 2 "
                          "B C1 BAR DO ZÉ F BAR DO ZÉ C7 boteco F boteco Letra B: 2 "
                          "C C5 ÇA VA F ÇA VA C6 COSTA F COSTA Letra C: 2 Total de clientes: 7"_s;
    QVERIFY2(text.contains(lista), qPrintable(lista + u" missing in:\n"_s + text));
}

void TstNivelPreco::tenThousandCustomers() {
    // Every third letter of the alphabet from A on, in the order of neither code nor name.
    m->server().execute(
        u"INSERT INTO clientes (codigo, nome, fantasia, colunapreco, ativocad) SELECT seq, "
        "CONCAT(CHAR(65 + seq * 7 % 9 * 3), LPAD(seq * 7919 % 10007, 5, '0')), 'F', '2', 'S' FROM "
        "seq_1_to_10000"_s);
    runLevelTwo();
    QStringList pages = m->reportText().split(u'\f');
    pages.removeLast(); // a form feed ends the last page too
    QVERIFY(pages.size() > 150);
    static const QRegularExpression cliente(u"^ *[0-9]+ +([A-Z][0-9]{5}) +F$"_s);
    static const QRegularExpression letter(u"^ *Letra ([A-Z]): ([0-9.]+)$"_s);
    QStringList names;
    QMap<QChar, int> counted;
    QMap<QChar, QString> printed;
    for (int page = 1; page <= pages.size(); ++page) {
        const QString& text = pages[page - 1];
        const QString palavras = text.simplified();
        QVERIFY(palavras.contains(u"Página %1 de %2"_s.arg(page).arg(pages.size())));
        QVERIFY(palavras.contains(u"Nível de preço: 2 Código Nome Nome fantasia "_s));
        for (const QString& linha : text.split(u'\n')) {
            if (const auto found = cliente.match(linha); found.hasMatch()) {
                names.append(found.captured(1));
                ++counted[names.last()[0]];
            } else if (const auto total = letter.match(linha); total.hasMatch()) {
                printed[total.captured(1)[0]] = total.captured(2).remove(u'.');
            }
        }
    }
    QCOMPARE(names.size(), 10000);
    QVERIFY(std::is_sorted(names.cbegin(), names.cend()));
    QCOMPARE(QSet<QString>(names.cbegin(), names.cend()).size(), 10000);
    QCOMPARE(counted.size(), 9);
    QCOMPARE(printed.keys(), counted.keys());
    for (auto i = counted.cbegin(); i != counted.cend(); ++i)
        QCOMPARE(printed[i.key()], QString::number(i.value()));
    QVERIFY(pages.last().simplified().endsWith(u"Total de clientes: 10.000"_s));
}

void TstNivelPreco::queryStaysForItsLayoutAlone() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    openScreen();
    lista()->setCurrentIndex(0);
    ModalHelper modal;
    modal.onOpen([](QWidget* preview) { preview->close(); });
    run();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(1));
    // Another report in between runs its own query, and this one stays set.
    m->server().execute(u"INSERT INTO relat2 SET Codigo1='1', Texto1='MARIA'"_s);
    m->mark();
    printLayout(u"COMISSAO.RPT"_s, u"Comissão"_s);
    QCOMPARE(m->closePreviews(), 1);
    const QStringList commands = m->statements();
    QCOMPARE(commands.size(), 1);
    QVERIFY2(commands[0].contains(u"FROM relat2"_s), qPrintable(commands[0]));
    QVERIFY(m->reportText().contains(u"MARIA"_s));
    QCOMPARE(CRW->sqlQuery(), consulta(1));
    QTRY_VERIFY(!QApplication::activeModalWidget());
    screen->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(screen.get()));
    lista()->setCurrentIndex(3);
    modal.onOpen([](QWidget* preview) { preview->close(); });
    run();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(4));
}

void TstNivelPreco::failedReportTakesItsQueryAlong() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    m->server().execute(u"INSERT INTO relat2 SET Codigo1='1', Texto1='MARIA'"_s);
    openScreen();
    lista()->setCurrentIndex(0);
    const QString folder = m->programFolder();
    setProgramFolder(folder + u"/docs"_s);
    ModalHelper modal;
    modal.expectContaining(u"RelatNivelPreco.RPT"_s, QMessageBox::Ok);
    run();
    setProgramFolder(folder);
    QCOMPARE(modal.problem(), QString());
    printLayout(u"COMISSAO.RPT"_s, u"Comissão"_s);
    QCOMPARE(m->closePreviews(), 1);
    QVERIFY(m->reportText().contains(u"MARIA"_s));
}

void TstNivelPreco::withoutTheControlIsAnErrorReport() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    openScreen();
    lista()->setCurrentIndex(0);
    ReportControl* const crw = std::exchange(CRW, nullptr);
    ModalHelper modal;
    modal.expectContaining(
        u"Erro em tempo de execução 424:\n\nO objeto é obrigatório: não há controle de relatório."_s,
        QMessageBox::Ok);
    const int fim = runInEventLoop([this] { run(); });
    CRW = crw;
    QCOMPARE(fim, EXIT_FAILURE);
    QCOMPARE(modal.problem(), QString());
}

void TstNivelPreco::noCompanyIsAnErrorReport() {
    m->server().execute(u"DELETE FROM empresa"_s);
    QVERIFY_THROWS_EXCEPTION(RuntimeError, RelatNivelPreco());
}

void TstNivelPreco::byKeyboardAlone() {
    titles(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    openScreen();
    const auto teclaNoFoco = [](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    };
    lista()->setFocus();
    teclaNoFoco(Qt::Key_Down);
    teclaNoFoco(Qt::Key_Down);
    QCOMPARE(lista()->currentText(), u"2 - B"_s);
    teclaNoFoco(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Command4"_s);
    QCOMPARE(lista()->count(), 4);
    ModalHelper modal;
    modal.onOpen([](QWidget* preview) { preview->close(); });
    teclaNoFoco(Qt::Key_Space);
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(2));
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    QVERIFY(!screen->isVisible());
}

void TstNivelPreco::refusedLevelIsTypedOver() {
    openScreen();
    const Hands hands(screen.get());
    lista()->setFocus();
    hands.type(u"abc"_s);
    ModalHelper modal;
    modal.expect(required, QMessageBox::Ok);
    hands.press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(Hands::focus(), u"TabelaPreco"_s);
    hands.type(u"3"_s);
    QCOMPARE(lista()->currentText(), u"3"_s);
}

void TstNivelPreco::altKeyIsTold() {
    openScreen();
    QCOMPARE(control<QPushButton>(screen.get(), "Command4")->toolTip(), u"Tecla de atalho: Alt+G"_s);
}

QTEST_MAIN(TstNivelPreco)
#include "tst_nivel_preco.moc"

#include "base/RuntimeError.h"
#include "core/PrintLayout.h"
#include "core/ProgramFolder.h"
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

const QString obrigatoria = u"Obrigatória a seleção de um nível de preço. Verifique!!!"_s;

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
    void cleanup() { tela.reset(); }

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
    void abre();
    void titulos(const QString& um, const QString& dois, const QString& tres, const QString& quatro);
    QComboBox* lista() const { return control<QComboBox>(tela.get(), "TabelaPreco"); }
    /// Generates the list of level 2 and closes its preview.
    void geraNivelDois();
    void gera() { QTest::mouseClick(control<QPushButton>(tela.get(), "Command4"), Qt::LeftButton); }

    std::unique_ptr<Bench> m;
    std::unique_ptr<RelatNivelPreco> tela;
};

void TstNivelPreco::titulos(const QString& um, const QString& dois, const QString& tres,
                            const QString& quatro) {
    const auto valor = [](const QString& titulo) {
        return titulo == u"NULL" ? titulo : u"'"_s + titulo + u"'"_s;
    };
    m->server().execute(u"UPDATE empresa SET Titulom1="_s + valor(um) + u", Titulom2="_s + valor(dois) +
                        u", Titulom3="_s + valor(tres) + u", Titulom4="_s + valor(quatro));
}

void TstNivelPreco::abre() {
    m->mark();
    tela = std::make_unique<RelatNivelPreco>();
    QVERIFY(showActive(tela.get()));
}

void TstNivelPreco::captionsAndNames() {
    titulos(u"varejo"_s, u"b"_s, u"c"_s, u"d"_s);
    abre();
    QCOMPARE(tela->windowTitle(), u" Relatório de Nível de Preços"_s);
    QCOMPARE(control<QLabel>(tela.get(), "Label1")->text(), u"NÍVEL PREÇO"_s);
    QCOMPARE(lista()->accessibleName(), u"NÍVEL PREÇO"_s);
    QCOMPARE(lista()->lineEdit()->accessibleName(), u"NÍVEL PREÇO"_s);
    QCOMPARE(control<QPushButton>(tela.get(), "Command4")->text(), u"&Gerar Relatório"_s);
    QCOMPARE(lista()->currentIndex(), -1);
    QCOMPARE(lista()->currentText(), QString());
    QCOMPARE(m->statements(), QStringList({u"Select Titulom1,Titulom2,Titulom3,Titulom4 from Empresa"_s}));
}

void TstNivelPreco::levelsWithTitles_data() {
    QTest::addColumn<QStringList>("gravados");
    QTest::addColumn<QStringList>("itens");
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
    QFETCH(QStringList, gravados);
    titulos(gravados[0], gravados[1], gravados[2], gravados[3]);
    abre();
    QStringList itens;
    for (int i = 0; i < lista()->count(); ++i)
        itens.append(lista()->itemText(i));
    QTEST(itens, "itens");
}

void TstNivelPreco::secondItemIsLevelThree() {
    titulos(u"A"_s, QString(), u"C"_s, QString());
    abre();
    lista()->setCurrentIndex(1);
    ModalHelper modal;
    modal.onOpen([](QWidget* previa) { previa->close(); });
    gera();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(3));
}

void TstNivelPreco::refusesWhatNamesNoLevel_data() {
    QTest::addColumn<QString>("digitado");
    QTest::newRow("nothing") << QString();
    QTest::newRow("text") << u"varejo"_s;
    QTest::newRow("text before the number") << u"n1"_s;
    QTest::newRow("zero") << u"0 - X"_s;
    QTest::newRow("less than one") << u"0,9"_s;
}

void TstNivelPreco::refusesWhatNamesNoLevel() {
    QFETCH(QString, digitado);
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    abre();
    control<QPushButton>(tela.get(), "Command4")->setFocus();
    lista()->lineEdit()->setText(digitado);
    m->mark();
    ModalHelper modal;
    modal.expect(obrigatoria, QMessageBox::Ok);
    gera();
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(modal.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modal.boxes()[0].icon, QMessageBox::Information);
    QCOMPARE(tela->focusWidget(), lista());
    QCOMPARE(CRW->sqlQuery(), QString());
    QCOMPARE(m->statements(), QStringList());
}

void TstNivelPreco::leadingNumberCounts_data() {
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<int>("nivel");
    QTest::newRow("a number") << u"2"_s << 2;
    QTest::newRow("number and text") << u"4 qualquer"_s << 4;
    QTest::newRow("a level without a title") << u"7"_s << 7;
    QTest::newRow("decimals") << u"3,9"_s << 3;
}

void TstNivelPreco::leadingNumberCounts() {
    QFETCH(QString, digitado);
    QFETCH(int, nivel);
    titulos(u"A"_s, QString(), QString(), QString());
    abre();
    lista()->setFocus();
    QTest::keyClicks(lista()->lineEdit(), digitado);
    ModalHelper modal;
    modal.onOpen([](QWidget* previa) { previa->close(); });
    gera();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(nivel));
}

void TstNivelPreco::typedTextFollowsTheConvention() {
    abre();
    lista()->setFocus();
    QTest::keyClicks(lista()->lineEdit(), u"a'b"_s);
    QCOMPARE(lista()->currentText(), u"A´B"_s);
    lista()->lineEdit()->clear();
    QApplication::clipboard()->setText(u"d'água"_s);
    QTest::keyClick(lista()->lineEdit(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(lista()->currentText(), u"D´ÁGUA"_s);
}

void TstNivelPreco::paperProposesItsFileName() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    abre();
    lista()->setCurrentIndex(2);
    gera();
    QTRY_VERIFY(openPreview());
    QCOMPARE(proposedFileName(), u"Clientes do nível de preço 3.pdf"_s);
    QCOMPARE(m->closePreviews(), 1);
}

void TstNivelPreco::printsActiveCustomersOfTheLevel() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
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
    abre();
    lista()->setCurrentIndex(1);
    m->mark();
    ModalHelper modal;
    modal.onOpen([](QWidget* previa) {
        QVERIFY(previa->isMaximized());
        previa->close();
    });
    gera();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(m->statements(), QStringList({consulta(2)}));
    QCOMPARE(CRW->windowState(), 2);
    QVERIFY(CRW->reportFileName().endsWith(u"\\rpt\\RelatNivelPreco.RPT"));
    QCOMPARE(CRW->formula(0), QString());
    const QString texto = m->reportText();
    QVERIFY2(texto.contains(u"ÁGATA"_s) && texto.contains(u"ZULMIRA"_s), qPrintable(texto));
    QVERIFY(texto.indexOf(u"ÁGATA"_s) < texto.indexOf(u"ZULMIRA"_s));
    for (const QString& fora : {u"INATIVA"_s, u"SEM SITUAÇÃO"_s, u"DE OUTRO NÍVEL"_s})
        QVERIFY2(!texto.contains(fora), qPrintable(texto));
}

void TstNivelPreco::geraNivelDois() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    abre();
    lista()->setCurrentIndex(1);
    ModalHelper modal;
    modal.onOpen([](QWidget* previa) { previa->close(); });
    gera();
    QTRY_COMPARE(modal.problem(), QString());
}

void TstNivelPreco::listedByLetterWithCounts() {
    const QStringList nomes = {u"BAR DO ZÉ"_s, u"ÁGUIA LTDA"_s, u"7 ESTRELAS"_s, u"ALVES LTDA"_s,
                               u"ÇA VA"_s,     u"COSTA"_s,      u"boteco"_s};
    for (int i = 0; i < nomes.size(); ++i)
        m->shop().cliente({.codigo = u"C%1"_s.arg(i + 1),
                           .nome = nomes[i],
                           .colunaPreco = u"2"_s,
                           .cnpjCpf = QString::number(i + 1),
                           .fantasia = u"F "_s + nomes[i]});
    m->shop().cliente({.codigo = u"C8"_s,
                       .nome = u"BAZAR"_s,
                       .colunaPreco = u"1"_s,
                       .cnpjCpf = u"8"_s,
                       .fantasia = u"F BAZAR"_s});
    geraNivelDois();
    const QString texto = m->reportWords();
    const QString lista = u"Nível de preço: 2 Código Nome Nome fantasia "
                          "# C3 7 ESTRELAS F 7 ESTRELAS Letra #: 1 "
                          "A C2 ÁGUIA LTDA F ÁGUIA LTDA C4 ALVES LTDA F ALVES LTDA Letra A: 2 "
                          "B C1 BAR DO ZÉ F BAR DO ZÉ C7 boteco F boteco Letra B: 2 "
                          "C C5 ÇA VA F ÇA VA C6 COSTA F COSTA Letra C: 2 Total de clientes: 7"_s;
    QVERIFY2(texto.contains(lista), qPrintable(lista + u" missing in:\n"_s + texto));
}

void TstNivelPreco::tenThousandCustomers() {
    // Every third letter of the alphabet from A on, in the order of neither code nor name.
    m->server().execute(
        u"INSERT INTO clientes (codigo, nome, fantasia, colunapreco, ativocad) SELECT seq, "
        "CONCAT(CHAR(65 + seq * 7 % 9 * 3), LPAD(seq * 7919 % 10007, 5, '0')), 'F', '2', 'S' FROM "
        "seq_1_to_10000"_s);
    geraNivelDois();
    QStringList paginas = m->reportText().split(u'\f');
    paginas.removeLast(); // a form feed ends the last page too
    QVERIFY(paginas.size() > 150);
    static const QRegularExpression cliente(u"^ *[0-9]+ +([A-Z][0-9]{5}) +F$"_s);
    static const QRegularExpression letra(u"^ *Letra ([A-Z]): ([0-9.]+)$"_s);
    QStringList nomes;
    QMap<QChar, int> contados;
    QMap<QChar, QString> impressos;
    for (int pagina = 1; pagina <= paginas.size(); ++pagina) {
        const QString& texto = paginas[pagina - 1];
        const QString palavras = texto.simplified();
        QVERIFY(palavras.contains(u"Página %1 de %2"_s.arg(pagina).arg(paginas.size())));
        QVERIFY(palavras.contains(u"Nível de preço: 2 Código Nome Nome fantasia "_s));
        for (const QString& linha : texto.split(u'\n')) {
            if (const auto achado = cliente.match(linha); achado.hasMatch()) {
                nomes.append(achado.captured(1));
                ++contados[nomes.last()[0]];
            } else if (const auto total = letra.match(linha); total.hasMatch()) {
                impressos[total.captured(1)[0]] = total.captured(2).remove(u'.');
            }
        }
    }
    QCOMPARE(nomes.size(), 10000);
    QVERIFY(std::is_sorted(nomes.cbegin(), nomes.cend()));
    QCOMPARE(QSet<QString>(nomes.cbegin(), nomes.cend()).size(), 10000);
    QCOMPARE(contados.size(), 9);
    QCOMPARE(impressos.keys(), contados.keys());
    for (auto i = contados.cbegin(); i != contados.cend(); ++i)
        QCOMPARE(impressos[i.key()], QString::number(i.value()));
    QVERIFY(paginas.last().simplified().endsWith(u"Total de clientes: 10.000"_s));
}

void TstNivelPreco::queryStaysForItsLayoutAlone() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    abre();
    lista()->setCurrentIndex(0);
    ModalHelper modal;
    modal.onOpen([](QWidget* previa) { previa->close(); });
    gera();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(1));
    // Another report in between runs its own query, and this one stays set.
    m->server().execute(u"INSERT INTO relat2 SET Codigo1='1', Texto1='MARIA'"_s);
    m->mark();
    printLayout(u"COMISSAO.RPT"_s, u"Comissão"_s);
    QCOMPARE(m->closePreviews(), 1);
    const QStringList comandos = m->statements();
    QCOMPARE(comandos.size(), 1);
    QVERIFY2(comandos[0].contains(u"FROM relat2"_s), qPrintable(comandos[0]));
    QVERIFY(m->reportText().contains(u"MARIA"_s));
    QCOMPARE(CRW->sqlQuery(), consulta(1));
    QTRY_VERIFY(!QApplication::activeModalWidget());
    tela->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(tela.get()));
    lista()->setCurrentIndex(3);
    modal.onOpen([](QWidget* previa) { previa->close(); });
    gera();
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(4));
}

void TstNivelPreco::failedReportTakesItsQueryAlong() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    m->server().execute(u"INSERT INTO relat2 SET Codigo1='1', Texto1='MARIA'"_s);
    abre();
    lista()->setCurrentIndex(0);
    const QString pasta = m->programFolder();
    setProgramFolder(pasta + u"/docs"_s);
    ModalHelper modal;
    modal.expectContaining(u"RelatNivelPreco.RPT"_s, QMessageBox::Ok);
    gera();
    setProgramFolder(pasta);
    QCOMPARE(modal.problem(), QString());
    printLayout(u"COMISSAO.RPT"_s, u"Comissão"_s);
    QCOMPARE(m->closePreviews(), 1);
    QVERIFY(m->reportText().contains(u"MARIA"_s));
}

void TstNivelPreco::withoutTheControlIsAnErrorReport() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    abre();
    lista()->setCurrentIndex(0);
    ReportControl* const crw = std::exchange(CRW, nullptr);
    ModalHelper modal;
    modal.expectContaining(
        u"Erro em tempo de execução 424:\n\nO objeto é obrigatório: não há controle de relatório."_s,
        QMessageBox::Ok);
    const int fim = runInEventLoop([this] { gera(); });
    CRW = crw;
    QCOMPARE(fim, EXIT_FAILURE);
    QCOMPARE(modal.problem(), QString());
}

void TstNivelPreco::noCompanyIsAnErrorReport() {
    m->server().execute(u"DELETE FROM empresa"_s);
    QVERIFY_EXCEPTION_THROWN(RelatNivelPreco(), RuntimeError);
}

void TstNivelPreco::byKeyboardAlone() {
    titulos(u"A"_s, u"B"_s, u"C"_s, u"D"_s);
    abre();
    const auto teclaNoFoco = [](Qt::Key tecla, Qt::KeyboardModifiers modificadores = {}) {
        QTest::keyClick(QApplication::focusWidget(), tecla, modificadores);
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
    modal.onOpen([](QWidget* previa) { previa->close(); });
    teclaNoFoco(Qt::Key_Space);
    QTRY_COMPARE(modal.problem(), QString());
    QCOMPARE(CRW->sqlQuery(), consulta(2));
    QTest::keyClick(tela.get(), Qt::Key_Escape);
    QVERIFY(!tela->isVisible());
}

void TstNivelPreco::refusedLevelIsTypedOver() {
    abre();
    const Hands hands(tela.get());
    lista()->setFocus();
    hands.type(u"abc"_s);
    ModalHelper modal;
    modal.expect(obrigatoria, QMessageBox::Ok);
    hands.press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(Hands::focus(), u"TabelaPreco"_s);
    hands.type(u"3"_s);
    QCOMPARE(lista()->currentText(), u"3"_s);
}

void TstNivelPreco::altKeyIsTold() {
    abre();
    QCOMPARE(control<QPushButton>(tela.get(), "Command4")->toolTip(), u"Tecla de atalho: Alt+G"_s);
}

QTEST_MAIN(TstNivelPreco)
#include "tst_nivel_preco.moc"

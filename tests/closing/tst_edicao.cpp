// Correcting the customers' terms in the listing grid, with real clicks and keys.

#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"
#include "ui/TextBox.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString outOfRange = u"A tabela de preço tem que ser entre 0 e 4. Verifique!!!"_s;

QString gravaTabela(const QString& tabela, const QString& mask) {
    return u"Update Clientes Set colunaPreco='%1', tabelas_preco='%2' Where Codigo='C1'"_s.arg(tabela, mask);
}

QString gravaTermos(const QString& prazo, const QString& forma) {
    return u"Update Clientes Set Prazo=%1, FormaPG='%2' Where Codigo='C1'"_s.arg(prazo, forma);
}

} // namespace

class TstEdicao : public QObject {
    Q_OBJECT

  private:
    PanelBench m;

    /// A pre-sale of today, of one line that the price check leaves alone.
    void preVenda(int numero, const QString& cliente) {
        m.shop().documento({.pedido = numero,
                            .cliente = cliente,
                            .diasAtras = 0,
                            .linhas = {aoPreco(u"X"_s, u"1"_s, u"10"_s)},
                            .controle = false});
    }

    /// One pre-sale, 1, of customer C1 with these terms, listed and shown.
    void onePv(int prazo, const QString& forma, const QString& tabela = u"1"_s) {
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"CLIENTE UM"_s,
                          .prazo = QString::number(prazo),
                          .formaPg = forma,
                          .colunaPreco = tabela,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        preVenda(1, u"C1"_s);
        QVERIFY(m.open(PanelBench::wide));
    }

    QStringList shownTerms(int row = 1) const {
        return {m.cell(row, painelfechamento::DiasVenc), m.cell(row, painelfechamento::FormaPagto),
                m.cell(row, painelfechamento::Tabela)};
    }

    static QString readAgain(const QString& codigo) {
        return u"SELECT Prazo, FormaPG, colunaPreco FROM Clientes WHERE Codigo='%1'"_s.arg(codigo);
    }

    QStringList commands() { return m.texts(); }

    QStringList storedTerms() {
        return m.server().query(u"SELECT prazo, formapg, colunapreco, tabelas_preco FROM clientes"_s)[0];
    }

  private Q_SLOTS:
    void init() {
        m.reset();
        m.shop().basicoDosDocumentos();
    }
    void cleanup() { m.close(); }

    void typesATerm_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("prazo");
        QTest::addColumn<QString>("forma");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("command"); // empty for none
        QTest::addColumn<QString>("boxText"); // part of the box's text; empty for none
        QTest::addColumn<QStringList>("onScreen");
        static constexpr int t = painelfechamento::Tabela;
        const auto tabela = [](const char* name, const QString& typed, const QString& v,
                               const QString& mask) {
            QTest::newRow(name) << t << 0 << u"PIX"_s << typed << gravaTabela(v, mask) << QString()
                                << QStringList{u"0"_s, u"PIX"_s, v};
        };
        tabela("table 0", u"0"_s, u"0"_s, u"1111"_s);
        tabela("table 1", u"1"_s, u"1"_s, u"1000"_s);
        tabela("table 2", u"2"_s, u"2"_s, u"0100"_s);
        tabela("table 3", u"3"_s, u"3"_s, u"0010"_s);
        tabela("table 4", u"4"_s, u"4"_s, u"0001"_s);
        tabela("table with blanks", u" 3 "_s, u"3"_s, u"0010"_s);
        tabela("table with zeros around", u"02,00"_s, u"2"_s, u"0100"_s);
        tabela("table with an apostrophe", u"2'"_s, u"2"_s, u"0100"_s);
        tabela("table minus zero", u"-0"_s, u"0"_s, u"1111"_s);
        tabela("table of letters counts as 0", u"abc"_s, u"0"_s, u"1111"_s);
        tabela("table of blanks counts as 0", u"  "_s, u"0"_s, u"1111"_s);
        for (const QString& typed : {u"5"_s, u"-1"_s, u"-0,5"_s, u"2,5"_s, u"2.5"_s, u"4,9"_s, u"10"_s,
                                     u"999999999999"_s, u"9999999999999999"_s, u"-9999999999999999999999"_s})
            QTest::addRow("table %s", qPrintable(typed))
                << t << 0 << u"PIX"_s << typed << QString() << outOfRange
                << QStringList{u"0"_s, u"PIX"_s, u"1"_s};

        static constexpr int d = painelfechamento::DiasVenc;
        const auto dias = [](const char* name, int prazo, const QString& forma, const QString& typed,
                             const QString& v, const QString& newMethod) {
            QTest::newRow(name) << d << prazo << forma << typed << gravaTermos(u' ' + v, newMethod)
                                << QString() << QStringList{v, newMethod, u"1"_s};
        };
        dias("30 days for cash become a slip", 0, u"DINHEIRO"_s, u"30"_s, u"30"_s, u"BOLETO"_s);
        dias("0 days leave cash", 0, u"DINHEIRO"_s, u"0"_s, u"0"_s, u"DINHEIRO"_s);
        dias("days of another method", 7, u"CHEQUE PRÉ"_s, u"45"_s, u"45"_s, u"CHEQUE PRÉ"_s);
        dias("days of a method not in the list", 7, u"VALE"_s, u"8"_s, u"8"_s, u"VALE"_s);
        dias("half a day rounds up", 7, u"BOLETO"_s, u"2,5"_s, u"3"_s, u"BOLETO"_s);
        dias("a typed point is a comma", 7, u"BOLETO"_s, u"2.5"_s, u"3"_s, u"BOLETO"_s);
        dias("less than half a day rounds down", 7, u"BOLETO"_s, u"2,49"_s, u"2"_s, u"BOLETO"_s);
        dias("what rounds to 0 leaves cash", 5, u"DINHEIRO"_s, u"0,4"_s, u"0"_s, u"DINHEIRO"_s);
        dias("letters count as 0", 7, u"BOLETO"_s, u"abc"_s, u"0"_s, u"BOLETO"_s);
        dias("a number and a word", 7, u"BOLETO"_s, u"12 dias"_s, u"12"_s, u"BOLETO"_s);
        dias("blanks count as 0", 7, u"BOLETO"_s, u"   "_s, u"0"_s, u"BOLETO"_s);
        dias("leading zeros", 7, u"BOLETO"_s, u"007"_s, u"7"_s, u"BOLETO"_s);
        dias("an apostrophe", 7, u"BOLETO"_s, u"9'"_s, u"9"_s, u"BOLETO"_s);
        dias("the largest term", 7, u"BOLETO"_s, u"2147483647"_s, u"2147483647"_s, u"BOLETO"_s);
        for (const QString& typed : {u"-1"_s, u"-0,1"_s, u"-30"_s, u"-9999999999999999999999"_s})
            QTest::addRow("days %s change nothing", qPrintable(typed))
                << d << 7 << u"BOLETO"_s << typed << QString() << QString()
                << QStringList{u"7"_s, u"BOLETO"_s, u"1"_s};
        for (const QString& typed : {u"2147483648"_s, u"999999999999"_s, u"9999999999999999999999"_s})
            QTest::addRow("days %s overflow", qPrintable(typed))
                << d << 7 << u"BOLETO"_s << typed << QString() << u"Estouro"_s
                << QStringList{u"7"_s, u"BOLETO"_s, u"1"_s};
    }

    void typesATerm() {
        QFETCH(int, column);
        QFETCH(int, prazo);
        QFETCH(QString, forma);
        QFETCH(QString, typed);
        QFETCH(QString, command);
        QFETCH(QString, boxText);
        QFETCH(QStringList, onScreen);
        onePv(prazo, forma);
        ModalHelper boxes;
        if (!boxText.isEmpty())
            boxes.expectContaining(boxText, QMessageBox::Ok);

        m.click(1, column);
        QVERIFY(m.editor()->hasFocus());
        m.type(typed);
        m.key(Qt::Key_Return);

        QVERIFY(!m.editor()->isVisible());
        QVERIFY(m.gridHasFocus());
        QCOMPARE(commands(), command.isEmpty() ? QStringList() : QStringList{command});
        QCOMPARE(shownTerms(), onScreen);
        const QStringList stored = storedTerms();
        QCOMPARE(stored.first(3), onScreen);
        if (column == painelfechamento::Tabela && !command.isEmpty())
            QVERIFY(command.contains(u"tabelas_preco='"_s + stored[3] + u'\''));
        QCOMPARE(boxes.problem(), QString());
    }

    void clearsTheText() {
        onePv(30, u"BOLETO"_s, u"3"_s);
        m.click(1, painelfechamento::Tabela);
        m.key(Qt::Key_Delete);
        QCOMPARE(m.editor()->text(), QString());
        m.key(Qt::Key_Return);
        m.click(1, painelfechamento::DiasVenc);
        m.key(Qt::Key_Delete);
        m.key(Qt::Key_Return);
        QCOMPARE(commands(),
                 QStringList({gravaTabela(u"0"_s, u"1111"_s), gravaTermos(u" 0"_s, u"BOLETO"_s)}));
        QCOMPARE(shownTerms(), QStringList({u"0"_s, u"BOLETO"_s, u"0"_s}));
    }

    void pastesApostropheAndLineBreak() {
        onePv(30, u"BOLETO"_s);
        QGuiApplication::clipboard()->setText(u"15' or 1=1\n-- x"_s);
        m.click(1, painelfechamento::DiasVenc);
        m.key(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!m.editor()->text().contains(u'\''));
        QVERIFY(!m.editor()->text().contains(u'\n'));
        m.key(Qt::Key_Return);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 15"_s, u"BOLETO"_s)});
    }

    void choosesAMethod_data() {
        QTest::addColumn<int>("prazo");
        QTest::addColumn<QString>("forma");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("newTerm");
        QTest::newRow("no cash and no term gets 7 days") << 0 << u"DINHEIRO"_s << u"BOLETO"_s << u"7"_s;
        QTest::newRow("no cash keeps its term") << 30 << u"BOLETO"_s << u"CARTÃO"_s << u"30"_s;
        QTest::newRow("cash loses the term") << 30 << u"BOLETO"_s << u"DINHEIRO"_s << u"0"_s;
        QTest::newRow("cash-like loses the term") << 30 << u"BOLETO"_s << u"PIX"_s << u"0"_s;
        QTest::newRow("cash without a term stays") << 0 << u"DINHEIRO"_s << u"PIX"_s << u"0"_s;
        QTest::newRow("a negative term stays, no cash") << -5 << u"PIX"_s << u"BOLETO"_s << u"-5"_s;
        QTest::newRow("a negative term stays, cash") << -5 << u"BOLETO"_s << u"PIX"_s << u"-5"_s;
    }

    void choosesAMethod() {
        QFETCH(int, prazo);
        QFETCH(QString, forma);
        QFETCH(QString, chosen);
        QFETCH(QString, newTerm);
        onePv(prazo, forma);
        m.click(1, painelfechamento::FormaPagto);
        QVERIFY(m.methods()->hasFocus());
        QCOMPARE(m.methods()->currentText(), forma);
        m.type(chosen.first(2)); // the list finds what one types
        QCOMPARE(m.methods()->currentText(), chosen);
        m.key(Qt::Key_Return);
        QVERIFY(!m.methods()->isVisible());
        QVERIFY(m.gridHasFocus());
        const QString ponto = (newTerm.startsWith(u'-') ? QString() : u" "_s) + newTerm;
        QCOMPARE(commands(), QStringList{gravaTermos(ponto, chosen)});
        QCOMPARE(shownTerms(), QStringList({newTerm, chosen, u"1"_s}));
        QCOMPARE(storedTerms().first(2), QStringList({newTerm, chosen}));
    }

    void methodOutsideTheListIsWrittenAgain_data() {
        QTest::addColumn<int>("term");
        QTest::addColumn<Qt::Key>("end");
        QTest::newRow("Escape") << 30 << Qt::Key_Escape;
        QTest::newRow("Enter") << 30 << Qt::Key_Return;
        QTest::newRow("without a term") << 0 << Qt::Key_Escape;
    }

    void methodOutsideTheListIsWrittenAgain() {
        QFETCH(int, term);
        QFETCH(Qt::Key, end);
        onePv(term, u"VALE"_s);
        const QString days = QString::number(term);
        m.click(1, painelfechamento::FormaPagto);
        QCOMPARE(m.methods()->currentIndex(), -1);
        m.key(end);
        QVERIFY(!m.methods()->isVisible());
        QCOMPARE(commands(), QStringList{gravaTermos(u' ' + days, u"VALE"_s)});
        QCOMPARE(shownTerms(), QStringList({days, u"VALE"_s, u"1"_s}));
        QCOMPARE(storedTerms().first(2), QStringList({days, u"VALE"_s}));
        m.mark();
        m.click(1, painelfechamento::FormaPagto);
        m.key(Qt::Key_Down);
        m.key(Qt::Key_Return);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 0"_s, u"DINHEIRO"_s)});
    }

    void methodDeletedMeanwhile() {
        onePv(30, u"BOLETO"_s);
        m.server().execute(u"DELETE FROM Finalizadoras WHERE Descricao IN ('BOLETO','CARTÃO')"_s);
        m.click(1, painelfechamento::FormaPagto);
        QCOMPARE(m.methods()->currentText(), u"BOLETO"_s);
        m.key(Qt::Key_Return);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 30"_s, u"BOLETO"_s)});
    }

    void editThatReachesNoRecordSaysSo() {
        onePv(30, u"BOLETO"_s);
        m.server().execute(u"DELETE FROM clientes"_s);
        const QString notice = u"O cliente não está mais no cadastro: nada foi gravado. Verifique!!!"_s;
        ModalHelper boxes;
        for (const auto& [column, typed] :
             {std::pair(painelfechamento::DiasVenc, u"5"_s), std::pair(painelfechamento::Tabela, u"2"_s),
              std::pair(painelfechamento::FormaPagto, u"CA"_s)}) {
            boxes.expect(notice, QMessageBox::Ok);
            m.click(1, column);
            m.type(typed);
            m.key(Qt::Key_Return);
            QCOMPARE(boxes.problem(), QString());
            QCOMPARE(shownTerms(), QStringList({u"30"_s, u"BOLETO"_s, u"1"_s}));
            QVERIFY(m.gridHasFocus());
        }
        QCOMPARE(commands(), QStringList({gravaTermos(u" 5"_s, u"BOLETO"_s), readAgain(u"C1"_s),
                                          gravaTabela(u"2"_s, u"0100"_s), readAgain(u"C1"_s),
                                          gravaTermos(u" 30"_s, u"CARTÃO"_s), readAgain(u"C1"_s)}));
    }

    // Another station gave the customer the same terms meanwhile: nothing changes, and nothing is missing.
    void termsGivenElsewhereAreNoMissingRecord() {
        onePv(30, u"BOLETO"_s);
        m.server().execute(u"UPDATE clientes SET prazo=31"_s);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"31"_s);
        const ModalHelper boxes; // nothing is announced, so nothing may open
        m.key(Qt::Key_Return);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(commands(), QStringList({gravaTermos(u" 31"_s, u"BOLETO"_s), readAgain(u"C1"_s)}));
        QCOMPARE(shownTerms(), QStringList({u"31"_s, u"BOLETO"_s, u"1"_s}));
    }

    void unchangedTermsAreNoMissingRecord() {
        onePv(30, u"BOLETO"_s);
        ModalHelper boxes; // nothing is announced, so nothing may open
        m.click(1, painelfechamento::DiasVenc);
        m.key(Qt::Key_Return);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(commands(), QStringList{gravaTermos(u" 30"_s, u"BOLETO"_s)});
    }

    void clippedValueIsToldAndShown_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("notice");
        QTest::addColumn<QStringList>("onScreen");
        QTest::newRow("days") << u"prazo"_s << u"TINYINT"_s << int(painelfechamento::DiasVenc) << u"300"_s
                              << u"DIAS VENC: 127 em vez de 300"_s
                              << QStringList{u"127"_s, u"BOLETO"_s, u"1"_s};
        QTest::newRow("method") << u"formapg"_s << u"VARCHAR(6)"_s << int(painelfechamento::FormaPagto)
                                << u"CH"_s << u"FORMA PAGTO: CHEQUE em vez de CHEQUE PRÉ"_s
                                << QStringList{u"30"_s, u"CHEQUE"_s, u"1"_s};
    }

    void clippedValueIsToldAndShown() {
        QFETCH(QString, field);
        QFETCH(QString, tipo);
        QFETCH(int, column);
        QFETCH(QString, typed);
        QFETCH(QString, notice);
        QFETCH(QStringList, onScreen);
        const QString before =
            m.valor(u"SELECT COLUMN_TYPE FROM information_schema.COLUMNS WHERE TABLE_SCHEMA=DATABASE() AND "
                    "TABLE_NAME='clientes' AND COLUMN_NAME='%1'"_s.arg(field));
        const auto modify = [&](const QString& newer) {
            m.server().execute(u"ALTER TABLE clientes MODIFY %1 %2"_s.arg(field, newer));
        };
        modify(tipo);
        const auto back = qScopeGuard([&] { modify(before); });
        onePv(30, u"BOLETO"_s);
        ModalHelper boxes;
        boxes.expectContaining(notice, QMessageBox::Ok);
        m.click(1, column);
        m.type(typed);
        m.key(Qt::Key_Return);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(shownTerms(), onScreen);
        QCOMPARE(storedTerms().first(3), onScreen);
        QCOMPARE(commands().mid(1), QStringList{readAgain(u"C1"_s)});
    }

    void methodIsFoundLetterByLetter() {
        onePv(30, u"Boleto"_s);
        m.click(1, painelfechamento::FormaPagto);
        QCOMPARE(m.methods()->currentIndex(), -1);
        m.key(Qt::Key_Return);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 30"_s, u"Boleto"_s)});
    }

    void altCommitsAndLeavesTheFocusInTheMenu() {
        onePv(30, u"BOLETO"_s);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"44"_s);
        m.key(Qt::Key_Alt);
        QTRY_COMPARE(m.panel()->focusWidget(), m.panel()->menuBar());
        QCOMPARE(commands(), QStringList{gravaTermos(u" 44"_s, u"BOLETO"_s)});
        QVERIFY(!m.editor()->isVisible());
        // Only a running loop can be ended, and an end by Escape gives 0.
        constexpr int fimDoTeste = 7;
        QTimer::singleShot(0, this, [this] {
            m.key(Qt::Key_Escape);
            QTimer::singleShot(50, qApp, [] { QCoreApplication::exit(fimDoTeste); });
        });
        QCOMPARE(QCoreApplication::exec(), fimDoTeste);
        QVERIFY(m.gridHasFocus());
        QVERIFY(m.panel()->isVisible());
    }

    void wheelOverTheMethodsChangesNothing() {
        onePv(30, u"BOLETO"_s);
        m.click(1, painelfechamento::FormaPagto);
        const QPoint middle = m.methods()->rect().center();
        QWheelEvent back(middle, m.methods()->mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m.methods(), &back);
        QCOMPARE(m.methods()->currentText(), u"BOLETO"_s);
    }

    void methodWithApostropheIsNotSent_data() {
        QTest::addColumn<int>("column");
        QTest::newRow("days") << int(painelfechamento::DiasVenc);
        QTest::newRow("method") << int(painelfechamento::FormaPagto);
    }

    void methodWithApostropheIsNotSent() {
        QFETCH(int, column);
        m.server().execute(u"INSERT INTO Finalizadoras (Descricao, avista) VALUES ('VALE D''AGUA', 'N')"_s);
        onePv(30, column == painelfechamento::DiasVenc ? u"VALE D'AGUA"_s : u"BOLETO"_s);
        const QStringList before = shownTerms();
        ModalHelper boxes;
        boxes.expectContaining(u"a forma de pagamento VALE D'AGUA tem no nome um caractere"_s,
                               QMessageBox::Ok);
        m.click(1, column);
        m.type(column == painelfechamento::DiasVenc ? u"5"_s : u"VA"_s);
        m.key(Qt::Key_Return);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(commands(), QStringList());
        QCOMPARE(shownTerms(), before);
    }

    // Escape

    void escapeLeavesTheCellAsItWas_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("command");
        QTest::newRow("days") << int(painelfechamento::DiasVenc) << gravaTermos(u" 30"_s, u"BOLETO"_s);
        QTest::newRow("method") << int(painelfechamento::FormaPagto) << gravaTermos(u" 30"_s, u"BOLETO"_s);
        QTest::newRow("table") << int(painelfechamento::Tabela) << gravaTabela(u"2"_s, u"0100"_s);
    }

    void escapeLeavesTheCellAsItWas() {
        QFETCH(int, column);
        QFETCH(QString, command);
        onePv(30, u"BOLETO"_s, u"2"_s);
        m.click(1, column);
        m.type(column == painelfechamento::FormaPagto ? u"CA"_s : u"9"_s);
        m.key(Qt::Key_Escape);
        QVERIFY(!m.editor()->isVisible() && !m.methods()->isVisible());
        QVERIFY(m.gridHasFocus());
        QVERIFY(m.panel()->isVisible());
        QCOMPARE(commands(), QStringList{command});
        QCOMPARE(shownTerms(), QStringList({u"30"_s, u"BOLETO"_s, u"2"_s}));
    }

    void escapeOnAnEmptyTableShowsWhatIsStored() {
        onePv(30, u"BOLETO"_s, QString());
        m.click(1, painelfechamento::Tabela);
        m.type(u"3"_s);
        m.key(Qt::Key_Escape);
        QCOMPARE(commands(), QStringList{gravaTabela(u"0"_s, u"1111"_s)});
        QCOMPARE(shownTerms(), QStringList({u"30"_s, u"BOLETO"_s, u"0"_s}));
        QCOMPARE(storedTerms()[2], u"0"_s);
    }

    void escapeSavesByTheRulesOfTheTerms() {
        onePv(0, u"BOLETO"_s);
        m.click(1, painelfechamento::FormaPagto);
        m.type(u"DI"_s);
        m.key(Qt::Key_Escape);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 7"_s, u"BOLETO"_s)});
        QCOMPARE(shownTerms(), QStringList({u"7"_s, u"BOLETO"_s, u"1"_s}));
    }

    void escapeOnATableOutOfRangeOnlyTells() {
        onePv(30, u"BOLETO"_s, u"5"_s);
        ModalHelper boxes;
        boxes.expect(outOfRange, QMessageBox::Ok);
        m.click(1, painelfechamento::Tabela);
        m.type(u"3"_s);
        m.key(Qt::Key_Escape);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(commands(), QStringList());
        QCOMPARE(shownTerms(), QStringList({u"30"_s, u"BOLETO"_s, u"5"_s}));
    }

    void escapeWithAFailedUpdateDoesNotEndTheProgram() {
        onePv(30, u"BOLETO"_s);
        m.server().execute(u"RENAME TABLE clientes TO clientes_fora"_s);
        ModalHelper boxes;
        boxes.expectContaining(u"Update Clientes Set Prazo= 30, FormaPG='BOLETO' Where Codigo='C1'"_s,
                               QMessageBox::Ok);
        m.click(1, painelfechamento::DiasVenc);
        // Only a running loop can be ended, and an end by Escape gives 0.
        constexpr int fimDoTeste = 7;
        QTimer::singleShot(0, this, [this] {
            m.key(Qt::Key_Escape);
            QTimer::singleShot(50, qApp, [] { QCoreApplication::exit(fimDoTeste); });
        });
        QCOMPARE(QCoreApplication::exec(), fimDoTeste);
        m.server().execute(u"RENAME TABLE clientes_fora TO clientes"_s);
        QCOMPARE(boxes.problem(), QString());
        QVERIFY(m.panel()->isVisible());
        QCOMPARE(shownTerms(), QStringList({u"30"_s, u"BOLETO"_s, u"1"_s}));
    }

    // Leaving

    void tabSavesAndReturnsToTheGrid() {
        onePv(0, u"PIX"_s);
        m.click(1, painelfechamento::Tabela);
        m.type(u"4"_s);
        m.key(Qt::Key_Tab);
        QCOMPARE(commands(), QStringList{gravaTabela(u"4"_s, u"0001"_s)});
        QVERIFY(m.gridHasFocus());
        m.mark();
        m.click(1, painelfechamento::FormaPagto);
        m.type(u"BO"_s);
        m.key(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 7"_s, u"BOLETO"_s)});
        QVERIFY(m.gridHasFocus());
    }

    void clickOnAnotherCellSavesOnceAndOpensIt() {
        m.shop().cliente({.codigo = u"C2"_s,
                          .nome = u"CLIENTE DOIS"_s,
                          .prazo = u"10"_s,
                          .formaPg = u"BOLETO"_s,
                          .colunaPreco = u"3"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        preVenda(2, u"C2"_s);
        onePv(30, u"BOLETO"_s);
        const int one = m.rowOf(1);
        const int two = m.rowOf(2);
        m.click(one, painelfechamento::DiasVenc);
        m.type(u"31"_s);
        m.click(two, painelfechamento::DiasVenc);
        QCOMPARE(commands(), QStringList{gravaTermos(u" 31"_s, u"BOLETO"_s)});
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"10"_s);
        QCOMPARE(m.editor()->selectedText(), u"10"_s);
        QCOMPARE(m.editor()->geometry(), m.cellPlace(two, painelfechamento::DiasVenc));
        m.click(one, painelfechamento::FormaPagto);
        QVERIFY(m.methods()->hasFocus());
        QVERIFY(!m.editor()->isVisible());
        m.click(one, painelfechamento::DiasVenc);
        m.key(Qt::Key_Return);
        QCOMPARE(commands(),
                 QStringList({gravaTermos(u" 31"_s, u"BOLETO"_s),
                              u"Update Clientes Set Prazo= 10, FormaPG='BOLETO' Where Codigo='C2'"_s,
                              gravaTermos(u" 31"_s, u"BOLETO"_s), gravaTermos(u" 31"_s, u"BOLETO"_s)}));
        QCOMPARE(shownTerms(two), QStringList({u"10"_s, u"BOLETO"_s, u"3"_s}));
    }

    void refusalAtAClickOnAnotherCellIsToldOnce() {
        preVenda(2, u"C1"_s);
        onePv(30, u"BOLETO"_s);
        ModalHelper boxes;
        boxes.expect(outOfRange, QMessageBox::Ok);
        m.click(1, painelfechamento::Tabela);
        m.type(u"5"_s);
        m.click(2, painelfechamento::Selecao);
        QTest::qWait(50);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(boxes.boxes().size(), 1);
        QCOMPARE(boxes.boxes()[0].title, u"Atenção!!!"_s);
        QCOMPARE(boxes.boxes()[0].icon, QMessageBox::Information);
        QCOMPARE(boxes.boxes()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QVERIFY(!m.editor()->isVisible());
        QCOMPARE(commands(), QStringList());
        QCOMPARE(m.cell(1, painelfechamento::Tabela), u"1"_s);
    }

    void otherWindowAndClosingSaveNothing() {
        onePv(30, u"BOLETO"_s);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"44"_s);
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(m.editor()->isVisible());
        QCOMPARE(commands(), QStringList());
        other.close();
        m.panel()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m.panel()));
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"44"_s);
        m.panel()->close();
        QCoreApplication::processEvents();
        QCOMPARE(commands(), QStringList());
    }

    void closingSeesTheCellBeingEdited() {
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"CLIENTE UM"_s,
                          .prazo = u"0"_s,
                          .formaPg = u"BOLETO"_s,
                          .colunaPreco = u"1"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        m.server().execute(u"INSERT INTO produtos (codfabr, quantidade) VALUES ('X', 100)"_s);
        preVenda(1, u"C1"_s);
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(u"Lembrando que os pedidos de cliente com CPF serão cancelados."_s, QMessageBox::Ok);
        boxes.expect(u"Processamento efetuado com sucesso."_s, QMessageBox::Ok);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"12"_s);
        m.press(u"Command4"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(commands().value(0), gravaTermos(u" 12"_s, u"BOLETO"_s));
        QCOMPARE(m.valor(u"SELECT DATEDIFF(Vencto, '2024-03-15') FROM areceber"_s), u"12"_s);
    }

    void shortcutOfAButtonSavesFirst() {
        onePv(30, u"BOLETO"_s);
        m.button(u"Command3"_s)->setEnabled(true);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"13"_s);
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_C, Qt::AltModifier);
        QTRY_COMPARE(commands().size(), 2);
        QCOMPARE(commands()[0], gravaTermos(u" 13"_s, u"BOLETO"_s));
        QVERIFY(!m.editor()->isVisible());
        QCOMPARE(m.cell(1, painelfechamento::DiasVenc), u"13"_s);
    }

    void operationDoesNotBeginWithARefusedValue() {
        onePv(30, u"BOLETO"_s);
        ModalHelper boxes;
        boxes.expect(outOfRange, QMessageBox::Ok);
        m.click(1, painelfechamento::Tabela);
        m.type(u"7"_s);
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_E, Qt::AltModifier);
        QTRY_COMPARE(boxes.boxes().size(), 1);
        QTest::qWait(300); // a pressed button clicks a little later
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(commands(), QStringList());
    }

    // Opening and place

    void editorLiesOnTheCell_data() {
        QTest::addColumn<int>("column");
        QTest::newRow("days") << int(painelfechamento::DiasVenc);
        QTest::newRow("method") << int(painelfechamento::FormaPagto);
        QTest::newRow("table") << int(painelfechamento::Tabela);
    }

    void editorLiesOnTheCell() {
        QFETCH(int, column);
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"CLIENTE UM"_s,
                          .prazo = u"30"_s,
                          .formaPg = u"BOLETO"_s,
                          .colunaPreco = u"2"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        for (int numero = 1; numero <= 60; ++numero)
            preVenda(numero, u"C1"_s);
        QVERIFY(m.open(PanelBench::wide));
        const QWidget* control = column == painelfechamento::FormaPagto ? static_cast<QWidget*>(m.methods())
                                                                        : static_cast<QWidget*>(m.editor());
        m.click(3, column);
        QVERIFY(control->isVisible());
        QCOMPARE(control->geometry(), m.cellPlace(3, column));
        QCOMPARE(control->size(), m.grid()->cellRect(3, column).size());
        QCOMPARE(control->accessibleName(), m.cell(0, column));
        if (column != painelfechamento::FormaPagto)
            QCOMPARE(m.editor()->selectedText(), m.cell(3, column));

        const QRect before = control->geometry();
        m.grid()->verticalScrollBar()->setValue(1);
        QCOMPARE(control->geometry(), m.cellPlace(3, column));
        QCOMPARE(control->geometry().top(), before.top() - m.grid()->rowHeight(0));
        m.panel()->resize(m.panel()->size() + QSize(37, 53));
        QCoreApplication::processEvents();
        QCOMPARE(control->geometry(), m.cellPlace(3, column));
        m.grid()->verticalScrollBar()->setValue(40);
        QVERIFY(control->height() <= 1);
        QVERIFY(control->hasFocus());
        m.grid()->verticalScrollBar()->setValue(0);
        QCOMPARE(control->geometry(), m.cellPlace(3, column));
        QCOMPARE(control->geometry().top(), before.top());
    }

    void opensByKeyboardAlone() {
        onePv(30, u"BOLETO"_s);
        m.grid()->setFocus();
        m.grid()->setCurrentCell(1, painelfechamento::Total);
        m.key(Qt::Key_Right);
        m.key(Qt::Key_Space);
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"30"_s);
        m.type(u"21"_s);
        m.key(Qt::Key_Enter);
        QCOMPARE(m.cell(1, painelfechamento::DiasVenc), u"21"_s);
        QVERIFY(m.gridHasFocus());

        m.key(Qt::Key_Right);
        m.key(Qt::Key_Space);
        QVERIFY(m.methods()->hasFocus());
        m.key(Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(m.methods()->view()->isVisible());
        QTest::keyClick(m.methods()->view(), Qt::Key_Down);
        QTest::keyClick(m.methods()->view(), Qt::Key_Return);
        QTRY_VERIFY(!m.methods()->view()->isVisible());
        QVERIFY(m.methods()->hasFocus());
        QCOMPARE(m.methods()->currentText(), u"PIX"_s);
        QCOMPARE(commands().size(), 1);
        m.key(Qt::Key_Return);
        QCOMPARE(m.cell(1, painelfechamento::FormaPagto), u"PIX"_s);
        QCOMPARE(commands().size(), 2);
    }

    void escapeOnTheOpenListClosesTheListOnly() {
        onePv(30, u"BOLETO"_s);
        m.click(1, painelfechamento::FormaPagto);
        m.methods()->showPopup();
        QTRY_VERIFY(m.methods()->view()->isVisible());
        QTest::keyClick(m.methods()->view(), Qt::Key_Escape);
        QTRY_VERIFY(!m.methods()->view()->isVisible());
        QVERIFY(m.methods()->isVisible());
        QCOMPARE(commands(), QStringList());
    }

    void openListShowsWholeTexts() {
        m.server().execute(u"INSERT INTO Finalizadoras VALUES (6,'CARTÃO DE CRÉDITO PARCELADO 12X','N')"_s);
        onePv(30, u"BOLETO"_s);
        m.click(1, painelfechamento::FormaPagto);
        m.methods()->showPopup();
        QTRY_VERIFY(m.methods()->view()->isVisible());
        QVERIFY(m.methods()->view()->viewport()->width() >= m.methods()->view()->sizeHintForColumn(0));
        m.methods()->hidePopup();
    }

    void tableIsEditedOnDavsToo() {
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"CLIENTE UM"_s,
                          .prazo = u"30"_s,
                          .formaPg = u"BOLETO"_s,
                          .colunaPreco = u"2"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        m.shop().documento({.pedido = 9,
                            .tipo = u"D"_s,
                            .diasAtras = 0,
                            .linhas = {aoPreco(u"X"_s, u"1"_s, u"1"_s)},
                            .controle = false});
        QVERIFY(m.open(PanelBench::wide));
        m.click(1, painelfechamento::Tabela);
        m.type(u"4"_s);
        m.key(Qt::Key_Return);
        QCOMPARE(commands(), QStringList{gravaTabela(u"4"_s, u"0001"_s)});
    }

    void onlyTheClickedRowChangesOnScreen() {
        preVenda(2, u"C1"_s);
        onePv(30, u"BOLETO"_s);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"60"_s);
        m.key(Qt::Key_Return);
        QCOMPARE(m.cell(1, painelfechamento::DiasVenc), u"60"_s);
        QCOMPARE(m.cell(2, painelfechamento::DiasVenc), u"30"_s);
        QCOMPARE(storedTerms()[0], u"60"_s);
    }

    void headerOpensNoEditor() {
        onePv(30, u"BOLETO"_s);
        QTest::mouseClick(
            m.panel()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
            m.grid()->mapTo(m.panel(), QPoint(m.grid()->cellRect(1, painelfechamento::Tabela).center().x(),
                                              m.grid()->cellRect(1, 0).top() / 2)));
        QVERIFY(!m.editor()->isVisible());
    }

    void failureToSaveLeavesTheCell() {
        onePv(30, u"DINHEIRO"_s);
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"5"_s);
        m.server().killProgramConnections();
        ModalHelper boxes;
        boxes.expectContaining(u"A conexão com o banco de dados foi perdida"_s, QMessageBox::Ok);
        m.key(Qt::Key_Return);
        QCOMPARE(boxes.problem(), QString());
        QVERIFY(!m.editor()->isVisible());
        QCOMPARE(shownTerms(), QStringList({u"30"_s, u"DINHEIRO"_s, u"1"_s}));
    }
};

QTEST_MAIN(TstEdicao)
#include "tst_edicao.moc"

#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "products/PesquisaProduto.h"
#include "products/ProductQuery.h"
#include "products/PromocaoPedidos.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "ui/TextBox.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString withoutDescription = u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s;
const QString brief = u"Pesquisa com no mínimo 2 caracteres. Verifique!!!"_s;
const QString unregistered = u"Descrição não cadastrada. Verifique!!!"_s;
const QString missing = u"Descricao inexistente. Verifique!!!"_s;
const QString withoutCode = u"Select Descricao from produtos where CodFabr=''"_s;

QString bars(const QString& codigo) {
    return u"Select * from Produtos where CodFabr='"_s + codigo + u"' and ativo='S' order by descricao"_s;
}

QString descriptionOrCode(const QString& t) {
    return u"Select * from Produtos where (Descricao like '%"_s + t + u"%' or CodFabr like '%"_s + t +
           u"%') and ativo='S' order by Descricao"_s;
}

QString descriptionOnly(const QString& t) {
    return u"Select * from Produtos where (Descricao like '%"_s + t +
           u"%') and ativo='S' order by Descricao"_s;
}

QString mark(const QString& t) {
    return u"Select * from Produtos where aplicacao like '%"_s + t + u"%' and ativo='S' order by descricao"_s;
}

QString observacao(const QString& t) {
    return u"Select * from Produtos where observacao like '%"_s + t +
           u"%' and ativo='S' order by descricao"_s;
}

} // namespace

/// What each typed text asks of the database, and what the operator is told.
class TstTextoPesquisa : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() { b->resetConnected(); }

    void statementOfEachTypedText_data();
    void statementOfEachTypedText();
    void blanksAreCutFromTheCallersVariable();
    void onlyBlanksAreCut();
    void barCodeIsNormalisedInTheCallersVariable_data();
    void barCodeIsNormalisedInTheCallersVariable();
    void refusalsQueryNothing_data();
    void refusalsQueryNothing();
    void letterCaseGoesAsTyped();
    void apostropheInTheRoutineReachesTheServer();
    void backslashFindsItself();
    void percentAndUnderscoreMatchAnything();
    void numericCodeKindIsKnown();
    void otherKindsSearchNumbersAsText();
    void numericCodeKindFallsBackToTheDescription();

  private:
    std::unique_ptr<Bench> b;
};

void TstTextoPesquisa::statementOfEachTypedText_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("command"); // empty for a refused text
    QTest::addColumn<QString>("refusal");
    const auto search = [](const char* name, const QString& typed, const QString& command) {
        QTest::newRow(name) << typed << command << QString();
    };
    const auto refusal = [](const char* name, const QString& typed, const QString& message) {
        QTest::newRow(name) << typed << QString() << message;
    };

    refusal("blanks only", u"   "_s, withoutDescription);
    refusal("a no-break space only", u"\u00A0"_s, brief);
    refusal("a single letter", u"a"_s, brief);
    refusal("a single accented letter", u" ã "_s, brief);
    refusal("an equals sign", u"="_s, brief);
    refusal("an asterisk", u"*"_s, brief);
    refusal("a minus alone", u"-"_s, brief);
    refusal("a plus alone", u"+"_s, brief);
    refusal("a comma alone", u","_s, brief);
    refusal("a point alone", u"."_s, brief);
    refusal("a percent sign alone", u"%"_s, brief);
    refusal("an apostrophe alone", u"'"_s, brief);
    refusal("one full-width digit is no number", u"\uFF11"_s, brief);
    refusal("one Arabic-Indic digit is no number", u"\u0663"_s, brief);

    search("a single digit", u"7"_s, bars(u"0000000000007"_s));
    search("a digit between blanks", u"  7  "_s, bars(u"0000000000007"_s));
    search("six digits", u"789123"_s, bars(u"0000000789123"_s));
    search("12 digits", u"123456789012"_s, bars(u"0123456789012"_s));
    search("13 digits", u"7891234567890"_s, bars(u"7891234567890"_s));
    search("14 digits", u"17891234567890"_s, bars(u"17891234567890"_s));
    search("15 digits lose the last", u"178912345678905"_s, bars(u"17891234567890"_s));
    search("20 digits lose six", u"12345678901234567890"_s, bars(u"12345678901234"_s));
    search("a plus sign is part of a number", u"+5"_s, bars(u"00000000000+5"_s));
    search("a minus sign is part of a number", u"-5"_s, bars(u"00000000000-5"_s));
    search("decimals", u"1,5"_s, bars(u"00000000001,5"_s));
    search("a comma behind the digits", u"5,"_s, bars(u"000000000005,"_s));
    search("a comma before the digits", u",5"_s, bars(u"00000000000,5"_s));
    search("a point between thousands", u"1.234"_s, bars(u"000000001.234"_s));
    search("thousands and decimals", u"1.234,5"_s, bars(u"0000001.234,5"_s));
    search("a point for decimals is no number", u"1.5"_s, descriptionOrCode(u"1.5"_s));
    search("two commas are no number", u"1,2,3"_s, descriptionOrCode(u"1,2,3"_s));
    search("two signs are no number", u"--5"_s, descriptionOrCode(u"--5"_s));
    search("an exponent is no number", u"1e5"_s, descriptionOrCode(u"1E5"_s));
    search("a hexadecimal is no number", u"0x10"_s, descriptionOrCode(u"0X10"_s));
    search("full-width digits are no number", u"\uFF11\uFF12"_s, descriptionOrCode(u"\uFF11\uFF12"_s));
    search("money is no number", u"R$5"_s, descriptionOrCode(u"R$5"_s));

    search("two letters", u"ab"_s, descriptionOrCode(u"AB"_s));
    search("accents", u"pão"_s, descriptionOrCode(u"PÃO"_s));
    search("15 characters look among the codes", u"abcdefghijklmno"_s,
           descriptionOrCode(u"ABCDEFGHIJKLMNO"_s));
    search("16 characters do not", u"abcdefghijklmnop"_s, descriptionOnly(u"ABCDEFGHIJKLMNOP"_s));
    search("200 characters", QString(200, u'x'), descriptionOnly(QString(200, u'X')));
    search("a character beyond the basic plane", u"\U0001F35E!"_s, descriptionOrCode(u"\U0001F35E!"_s));

    search("brand", u"=xy"_s, mark(u"XY"_s));
    search("brand of several words", u"=xy z"_s, mark(u"XY Z"_s));
    search("brand of digits", u"=12"_s, mark(u"12"_s));
    search("two equals signs", u"==x"_s, mark(u"=X"_s));
    search("an equals sign and one letter", u"=x"_s, descriptionOrCode(u"=X"_s));
    search("remark", u"*xy"_s, observacao(u"XY"_s));
    search("an asterisk and one letter", u"*x"_s, descriptionOrCode(u"*X"_s));

    search(
        "three words of 11 characters", u"pao sal 50g"_s,
        u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%SAL%' and  Descricao "
        "like '%50G%' or CodFabr like '%PAO SAL 50G%') and ativo='S' order by descricao"_s);
    search("words of 15 characters", u"pao frances 50g"_s,
           u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%FRANCES%' and  "
           "Descricao like '%50G%' or CodFabr like '%PAO FRANCES 50G%') and ativo='S' order by descricao"_s);
    search("words of 16 characters", u"pao frances 100g"_s,
           u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%FRANCES%' and  "
           "Descricao like '%100G%') and ativo='S' order by descricao"_s);
    search(
        "two blanks between words", u"pao  sal"_s,
        u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%%' and  Descricao like "
        "'%SAL%' or CodFabr like '%PAO  SAL%') and ativo='S' order by descricao"_s);
    search("numbers apart are words", u"1 2"_s,
           u"Select * from Produtos where ( Descricao like '%1%' and  Descricao like '%2%' or CodFabr like "
           "'%1 2%') and ativo='S' order by descricao"_s);
    search("a number and a unit", u"12 un"_s,
           u"Select * from Produtos where ( Descricao like '%12%' and  Descricao like '%UN%' or CodFabr like "
           "'%12 UN%') and ativo='S' order by descricao"_s);

    search("apostrophe", u"d'água"_s, descriptionOrCode(u"D´ÁGUA"_s));
    search(
        "apostrophes around", u"' or '1'='1"_s,
        u"Select * from Produtos where ( Descricao like '%´%' and  Descricao like '%OR%' and  Descricao like "
        "'%´1´=´1%' or CodFabr like '%´ OR ´1´=´1%') and ativo='S' order by descricao"_s);
    search("backslash", u"a\\"_s, descriptionOrCode(u"A\\"_s));
    search("percent sign", u"%a"_s, descriptionOrCode(u"%A"_s));
    search("underscore", u"a_b"_s, descriptionOrCode(u"A_B"_s));
    search("quotation marks", u"\"ab\""_s, descriptionOrCode(u"\"AB\""_s));
    search("a comment's marks", u"--ab"_s, descriptionOrCode(u"--AB"_s));
    search("a tab and a line break are dropped", u"a\tb\r\nc"_s, descriptionOrCode(u"ABC"_s));
}

// Pasted into the product box and left with Tab, as the operator would.
void TstTextoPesquisa::statementOfEachTypedText() {
    QFETCH(QString, typed);
    QFETCH(QString, command);
    QFETCH(QString, refusal);
    if (typed.contains(u"\U0001F35E"_s) && !b->valor(u"SELECT VERSION()"_s).contains(u"MariaDB"_s))
        QSKIP("this server's log keeps no characters of four bytes");
    PromocaoPedidos screen(nullptr);
    QVERIFY(showActive(&screen));
    auto* box = screen.findChild<TextBox*>(u"Descricao"_s);
    pasteInto(box, typed);
    const QString shown = box->text();
    ModalHelper modals;
    modals.expect(command.isEmpty() ? refusal : unregistered, QMessageBox::Ok);
    modals.expect(missing, QMessageBox::Ok);
    QTest::keyClick(box, Qt::Key_Tab);
    QCoreApplication::processEvents();
    QCOMPARE(modals.problem(), QString());
    QStringList expectedRows = command.isEmpty() ? QStringList() : QStringList(command);
    if (typed.contains(u'\\'))
        expectedRows.append(descriptionOrCode(u"A\\\\\\\\"_s));
    QCOMPARE(b->statements(), expectedRows + QStringList(withoutCode));
    QCOMPARE(box->text(), shown);
}

void TstTextoPesquisa::blanksAreCutFromTheCallersVariable() {
    b->shop().produto(u"1"_s, u"XABCX"_s);
    QString text = u"  abc  "_s;
    QCOMPARE(PesquisaProduto(text, nullptr), u"1"_s);
    QCOMPARE(text, u"abc"_s);
    QCOMPARE(b->statements(), QStringList(descriptionOrCode(u"abc"_s)));
}

void TstTextoPesquisa::onlyBlanksAreCut() {
    ModalHelper modal;
    modal.expect(unregistered, QMessageBox::Ok);
    QString text = u" \tabc\u00A0 "_s;
    PesquisaProduto(text, nullptr);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(text, u"\tabc\u00A0"_s);
    QCOMPARE(b->statements(), QStringList(descriptionOrCode(text)));
}

void TstTextoPesquisa::barCodeIsNormalisedInTheCallersVariable_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("codigo");
    QTest::newRow("padded") << u"7"_s << u"0000000000007"_s;
    QTest::newRow("13 as it is") << u"7891234567890"_s << u"7891234567890"_s;
    QTest::newRow("14 as it is") << u"17891234567890"_s << u"17891234567890"_s;
    QTest::newRow("15 cut") << u"178912345678905"_s << u"17891234567890"_s;
}

void TstTextoPesquisa::barCodeIsNormalisedInTheCallersVariable() {
    QFETCH(QString, typed);
    QFETCH(QString, codigo);
    b->shop().produto(codigo, u"PÃO"_s);
    QString text = typed;
    QCOMPARE(PesquisaProduto(text, nullptr), codigo);
    QCOMPARE(text, codigo);
}

void TstTextoPesquisa::refusalsQueryNothing_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("message");
    QTest::newRow("empty") << QString() << withoutDescription;
    QTest::newRow("blanks") << u"   "_s << withoutDescription;
    QTest::newRow("one letter") << u" a"_s << brief;
}

void TstTextoPesquisa::refusalsQueryNothing() {
    QFETCH(QString, typed);
    QFETCH(QString, message);
    CodigoSelecionado = u"LEFT OVER"_s;
    ModalHelper modals;
    modals.expect(message, QMessageBox::Ok);
    QString text = typed;
    QCOMPARE(PesquisaProduto(text, nullptr), QString());
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(modals.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modals.boxes()[0].icon, QMessageBox::Warning);
    QCOMPARE(modals.boxes()[0].buttons, QMessageBox::Ok);
    QCOMPARE(CodigoSelecionado, QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstTextoPesquisa::letterCaseGoesAsTyped() {
    b->shop().produto(u"1"_s, u"PÃO"_s);
    QString text = u"pÃo"_s;
    QCOMPARE(PesquisaProduto(text, nullptr), u"1"_s);
    QCOMPARE(b->statements(), QStringList(descriptionOrCode(u"pÃo"_s)));
}

void TstTextoPesquisa::apostropheInTheRoutineReachesTheServer() {
    QString text = u"d'água"_s;
    try {
        PesquisaProduto(text, nullptr);
        QFAIL("no error was raised");
    } catch (const RuntimeError& error) {
        QCOMPARE(error.statement(), descriptionOrCode(u"d'água"_s));
        QCOMPARE(error.sqlState(), u"42000"_s);
    }
}

// As typed it makes the percent sign that follows it one of the text; what it says is searched when that
// finds nothing.
void TstTextoPesquisa::backslashFindsItself() {
    b->shop().produto(u"1"_s, u"CAIXA A% B"_s);
    b->shop().produto(u"2"_s, u"CAIXA A B"_s);
    QString text = u"A\\"_s;
    ModalHelper modals;
    modals.expect(unregistered, QMessageBox::Ok);
    QCOMPARE(PesquisaProduto(text, nullptr), QString());
    QCOMPARE(modals.problem(), QString());
    b->server().execute(u"INSERT INTO produtos SET codfabr='3', descricao=CONCAT('CAIXA A', CHAR(92), ' B'), "
                        "aplicacao=CONCAT('X', CHAR(92)), observacao=CONCAT('Y', CHAR(92))"_s);
    b->mark();
    QCOMPARE(PesquisaProduto(text, nullptr), u"3"_s);
    QCOMPARE(text, u"A\\"_s);
    QCOMPARE(b->statements(), QStringList({descriptionOrCode(u"A\\"_s), descriptionOrCode(u"A\\\\\\\\"_s)}));
    for (const QString& other : {u"=X\\"_s, u"*Y\\"_s, u"A\\ CAIXA"_s}) {
        text = other;
        QCOMPARE(PesquisaProduto(text, nullptr), u"3"_s);
    }
    b->shop().produto(u"4"_s, u"CAIXA A%"_s);
    text = u"A\\"_s;
    QCOMPARE(PesquisaProduto(text, nullptr), u"4"_s);
}

void TstTextoPesquisa::percentAndUnderscoreMatchAnything() {
    b->shop().produto(u"1"_s, u"PÃO DE SAL"_s);
    for (const QString& typed : {u"P%SAL"_s, u"P_O"_s, u"%%"_s, u"__"_s}) {
        QString text = typed;
        QCOMPARE(PesquisaProduto(text, nullptr), u"1"_s);
    }
}

void TstTextoPesquisa::numericCodeKindIsKnown() {
    QString text = u" 12 "_s;
    const ProductQuery numero = productQuery(text, u"NUMÉRICO");
    QCOMPARE(text, u"12"_s);
    QCOMPARE(numero.refusal, QString());
    QCOMPARE(numero.sql, u"Select * from Produtos where CodFabr='12' and ativo='S' order by descricao"_s);
    QCOMPARE(numero.alternative,
             u"Select * from Produtos where Descricao like '%12%' and ativo='S' order by Descricao"_s);

    text = u"AB"_s;
    const ProductQuery palavra = productQuery(text, u"NUMÉRICO");
    QCOMPARE(palavra.sql, descriptionOrCode(u"AB"_s));
    QCOMPARE(palavra.alternative, QString());
}

void TstTextoPesquisa::otherKindsSearchNumbersAsText() {
    QString text = u"12"_s;
    QCOMPARE(productQuery(text, u"OUTRO").sql, descriptionOrCode(u"12"_s));
    QCOMPARE(TipoCodigoBarras, u"EAN-13");
}

// The alternative statement is valid on the server and finds what the first one does not.
void TstTextoPesquisa::numericCodeKindFallsBackToTheDescription() {
    b->shop().produto(u"A1"_s, u"ROSCA 12 UN"_s);
    QString text = u"12"_s;
    const ProductQuery query = productQuery(text, u"NUMÉRICO");
    QVERIFY(!AbreRS(query.sql));
    QVERIFY(AbreRS(query.alternative));
    QCOMPARE(rs.field(u"codfabr").text(), u"A1"_s);
    rs.close();
}

QTEST_MAIN(TstTextoPesquisa)
#include "tst_texto_pesquisa.moc"

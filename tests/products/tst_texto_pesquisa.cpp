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

const QString semDescricao = u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s;
const QString curto = u"Pesquisa com no mínimo 2 caracteres. Verifique!!!"_s;
const QString naoCadastrada = u"Descrição não cadastrada. Verifique!!!"_s;
const QString inexistente = u"Descricao inexistente. Verifique!!!"_s;
const QString semCodigo = u"Select Descricao from produtos where CodFabr=''"_s;

QString barras(const QString& codigo) {
    return u"Select * from Produtos where CodFabr='"_s + codigo + u"' and ativo='S' order by descricao"_s;
}

QString descricaoOuCodigo(const QString& t) {
    return u"Select * from Produtos where (Descricao like '%"_s + t + u"%' or CodFabr like '%"_s + t +
           u"%') and ativo='S' order by Descricao"_s;
}

QString soDescricao(const QString& t) {
    return u"Select * from Produtos where (Descricao like '%"_s + t +
           u"%') and ativo='S' order by Descricao"_s;
}

QString marca(const QString& t) {
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
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("comando"); // empty for a refused text
    QTest::addColumn<QString>("recusa");
    const auto pesquisa = [](const char* nome, const QString& digitado, const QString& comando) {
        QTest::newRow(nome) << digitado << comando << QString();
    };
    const auto recusa = [](const char* nome, const QString& digitado, const QString& mensagem) {
        QTest::newRow(nome) << digitado << QString() << mensagem;
    };

    recusa("blanks only", u"   "_s, semDescricao);
    recusa("a no-break space only", u"\u00A0"_s, semDescricao);
    recusa("a single letter", u"a"_s, curto);
    recusa("a single accented letter", u" ã "_s, curto);
    recusa("an equals sign", u"="_s, curto);
    recusa("an asterisk", u"*"_s, curto);
    recusa("a minus alone", u"-"_s, curto);
    recusa("a plus alone", u"+"_s, curto);
    recusa("a comma alone", u","_s, curto);
    recusa("a point alone", u"."_s, curto);
    recusa("a percent sign alone", u"%"_s, curto);
    recusa("an apostrophe alone", u"'"_s, curto);
    recusa("one full-width digit is no number", u"\uFF11"_s, curto);
    recusa("one Arabic-Indic digit is no number", u"\u0663"_s, curto);

    pesquisa("a single digit", u"7"_s, barras(u"0000000000007"_s));
    pesquisa("a digit between blanks", u"  7  "_s, barras(u"0000000000007"_s));
    pesquisa("six digits", u"789123"_s, barras(u"0000000789123"_s));
    pesquisa("12 digits", u"123456789012"_s, barras(u"0123456789012"_s));
    pesquisa("13 digits", u"7891234567890"_s, barras(u"7891234567890"_s));
    pesquisa("14 digits", u"17891234567890"_s, barras(u"17891234567890"_s));
    pesquisa("15 digits lose the last", u"178912345678905"_s, barras(u"17891234567890"_s));
    pesquisa("20 digits lose six", u"12345678901234567890"_s, barras(u"12345678901234"_s));
    pesquisa("a plus sign is part of a number", u"+5"_s, barras(u"00000000000+5"_s));
    pesquisa("a minus sign is part of a number", u"-5"_s, barras(u"00000000000-5"_s));
    pesquisa("decimals", u"1,5"_s, barras(u"00000000001,5"_s));
    pesquisa("a comma behind the digits", u"5,"_s, barras(u"000000000005,"_s));
    pesquisa("a comma before the digits", u",5"_s, barras(u"00000000000,5"_s));
    pesquisa("a point between thousands", u"1.234"_s, barras(u"000000001.234"_s));
    pesquisa("thousands and decimals", u"1.234,5"_s, barras(u"0000001.234,5"_s));
    pesquisa("a point for decimals is no number", u"1.5"_s, descricaoOuCodigo(u"1.5"_s));
    pesquisa("two commas are no number", u"1,2,3"_s, descricaoOuCodigo(u"1,2,3"_s));
    pesquisa("two signs are no number", u"--5"_s, descricaoOuCodigo(u"--5"_s));
    pesquisa("an exponent is no number", u"1e5"_s, descricaoOuCodigo(u"1E5"_s));
    pesquisa("a hexadecimal is no number", u"0x10"_s, descricaoOuCodigo(u"0X10"_s));
    pesquisa("full-width digits are no number", u"\uFF11\uFF12"_s, descricaoOuCodigo(u"\uFF11\uFF12"_s));
    pesquisa("money is no number", u"R$5"_s, descricaoOuCodigo(u"R$5"_s));

    pesquisa("two letters", u"ab"_s, descricaoOuCodigo(u"AB"_s));
    pesquisa("accents", u"pão"_s, descricaoOuCodigo(u"PÃO"_s));
    pesquisa("15 characters look among the codes", u"abcdefghijklmno"_s,
             descricaoOuCodigo(u"ABCDEFGHIJKLMNO"_s));
    pesquisa("16 characters do not", u"abcdefghijklmnop"_s, soDescricao(u"ABCDEFGHIJKLMNOP"_s));
    pesquisa("200 characters", QString(200, u'x'), soDescricao(QString(200, u'X')));
    pesquisa("a character beyond the basic plane", u"\U0001F35E!"_s, descricaoOuCodigo(u"\U0001F35E!"_s));

    pesquisa("brand", u"=xy"_s, marca(u"XY"_s));
    pesquisa("brand of several words", u"=xy z"_s, marca(u"XY Z"_s));
    pesquisa("brand of digits", u"=12"_s, marca(u"12"_s));
    pesquisa("two equals signs", u"==x"_s, marca(u"=X"_s));
    pesquisa("an equals sign and one letter", u"=x"_s, descricaoOuCodigo(u"=X"_s));
    pesquisa("remark", u"*xy"_s, observacao(u"XY"_s));
    pesquisa("an asterisk and one letter", u"*x"_s, descricaoOuCodigo(u"*X"_s));

    pesquisa(
        "three words of 11 characters", u"pao sal 50g"_s,
        u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%SAL%' and  Descricao "
        "like '%50G%' or CodFabr like '%PAO SAL 50G%') and ativo='S' order by descricao"_s);
    pesquisa(
        "words of 15 characters", u"pao frances 50g"_s,
        u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%FRANCES%' and  "
        "Descricao like '%50G%' or CodFabr like '%PAO FRANCES 50G%') and ativo='S' order by descricao"_s);
    pesquisa("words of 16 characters", u"pao frances 100g"_s,
             u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%FRANCES%' and  "
             "Descricao like '%100G%') and ativo='S' order by descricao"_s);
    pesquisa(
        "two blanks between words", u"pao  sal"_s,
        u"Select * from Produtos where ( Descricao like '%PAO%' and  Descricao like '%%' and  Descricao like "
        "'%SAL%' or CodFabr like '%PAO  SAL%') and ativo='S' order by descricao"_s);
    pesquisa("numbers apart are words", u"1 2"_s,
             u"Select * from Produtos where ( Descricao like '%1%' and  Descricao like '%2%' or CodFabr like "
             "'%1 2%') and ativo='S' order by descricao"_s);
    pesquisa(
        "a number and a unit", u"12 un"_s,
        u"Select * from Produtos where ( Descricao like '%12%' and  Descricao like '%UN%' or CodFabr like "
        "'%12 UN%') and ativo='S' order by descricao"_s);

    pesquisa("apostrophe", u"d'água"_s, descricaoOuCodigo(u"D´ÁGUA"_s));
    pesquisa(
        "apostrophes around", u"' or '1'='1"_s,
        u"Select * from Produtos where ( Descricao like '%´%' and  Descricao like '%OR%' and  Descricao like "
        "'%´1´=´1%' or CodFabr like '%´ OR ´1´=´1%') and ativo='S' order by descricao"_s);
    pesquisa("backslash", u"a\\"_s, descricaoOuCodigo(u"A\\"_s));
    pesquisa("percent sign", u"%a"_s, descricaoOuCodigo(u"%A"_s));
    pesquisa("underscore", u"a_b"_s, descricaoOuCodigo(u"A_B"_s));
    pesquisa("quotation marks", u"\"ab\""_s, descricaoOuCodigo(u"\"AB\""_s));
    pesquisa("a comment's marks", u"--ab"_s, descricaoOuCodigo(u"--AB"_s));
    pesquisa("a tab and a line break are dropped", u"a\tb\r\nc"_s, descricaoOuCodigo(u"ABC"_s));
}

// Pasted into the product box and left with Tab, as the operator would.
void TstTextoPesquisa::statementOfEachTypedText() {
    QFETCH(QString, digitado);
    QFETCH(QString, comando);
    QFETCH(QString, recusa);
    PromocaoPedidos tela(nullptr);
    QVERIFY(showActive(&tela));
    auto* caixa = tela.findChild<TextBox*>(u"Descricao"_s);
    pasteInto(caixa, digitado);
    const QString mostrado = caixa->text();
    ModalHelper modais;
    modais.expect(comando.isEmpty() ? recusa : naoCadastrada, QMessageBox::Ok);
    modais.expect(inexistente, QMessageBox::Ok);
    QTest::keyClick(caixa, Qt::Key_Tab);
    QCoreApplication::processEvents();
    QCOMPARE(modais.problem(), QString());
    QStringList esperados = comando.isEmpty() ? QStringList() : QStringList(comando);
    if (digitado.contains(u'\\'))
        esperados.append(descricaoOuCodigo(u"A\\\\\\\\"_s));
    QCOMPARE(b->statements(), esperados + QStringList(semCodigo));
    QCOMPARE(caixa->text(), mostrado);
}

void TstTextoPesquisa::blanksAreCutFromTheCallersVariable() {
    b->shop().produto(u"1"_s, u"XABCX"_s);
    QString texto = u"  abc  "_s;
    QCOMPARE(PesquisaProduto(texto, nullptr), u"1"_s);
    QCOMPARE(texto, u"abc"_s);
    QCOMPARE(b->statements(), QStringList(descricaoOuCodigo(u"abc"_s)));
}

void TstTextoPesquisa::barCodeIsNormalisedInTheCallersVariable_data() {
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("codigo");
    QTest::newRow("padded") << u"7"_s << u"0000000000007"_s;
    QTest::newRow("13 as it is") << u"7891234567890"_s << u"7891234567890"_s;
    QTest::newRow("14 as it is") << u"17891234567890"_s << u"17891234567890"_s;
    QTest::newRow("15 cut") << u"178912345678905"_s << u"17891234567890"_s;
}

void TstTextoPesquisa::barCodeIsNormalisedInTheCallersVariable() {
    QFETCH(QString, digitado);
    QFETCH(QString, codigo);
    b->shop().produto(codigo, u"PÃO"_s);
    QString texto = digitado;
    QCOMPARE(PesquisaProduto(texto, nullptr), codigo);
    QCOMPARE(texto, codigo);
}

void TstTextoPesquisa::refusalsQueryNothing_data() {
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("mensagem");
    QTest::newRow("empty") << QString() << semDescricao;
    QTest::newRow("blanks") << u"   "_s << semDescricao;
    QTest::newRow("one letter") << u" a"_s << curto;
}

void TstTextoPesquisa::refusalsQueryNothing() {
    QFETCH(QString, digitado);
    QFETCH(QString, mensagem);
    CodigoSelecionado = u"LEFT OVER"_s;
    ModalHelper modais;
    modais.expect(mensagem, QMessageBox::Ok);
    QString texto = digitado;
    QCOMPARE(PesquisaProduto(texto, nullptr), QString());
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modais.boxes()[0].icon, QMessageBox::Warning);
    QCOMPARE(modais.boxes()[0].buttons, QMessageBox::Ok);
    QCOMPARE(CodigoSelecionado, QString());
    QCOMPARE(b->statements(), QStringList());
}

void TstTextoPesquisa::letterCaseGoesAsTyped() {
    b->shop().produto(u"1"_s, u"PÃO"_s);
    QString texto = u"pÃo"_s;
    QCOMPARE(PesquisaProduto(texto, nullptr), u"1"_s);
    QCOMPARE(b->statements(), QStringList(descricaoOuCodigo(u"pÃo"_s)));
}

void TstTextoPesquisa::apostropheInTheRoutineReachesTheServer() {
    QString texto = u"d'água"_s;
    try {
        PesquisaProduto(texto, nullptr);
        QFAIL("no error was raised");
    } catch (const RuntimeError& erro) {
        QCOMPARE(erro.statement(), descricaoOuCodigo(u"d'água"_s));
        QCOMPARE(erro.sqlState(), u"42000"_s);
    }
}

// As typed it makes the percent sign that follows it one of the text; what it says is searched when that
// finds nothing.
void TstTextoPesquisa::backslashFindsItself() {
    b->shop().produto(u"1"_s, u"CAIXA A% B"_s);
    b->shop().produto(u"2"_s, u"CAIXA A B"_s);
    QString texto = u"A\\"_s;
    ModalHelper modais;
    modais.expect(naoCadastrada, QMessageBox::Ok);
    QCOMPARE(PesquisaProduto(texto, nullptr), QString());
    QCOMPARE(modais.problem(), QString());
    b->server().execute(u"INSERT INTO produtos SET codfabr='3', descricao=CONCAT('CAIXA A', CHAR(92), ' B'), "
                        "aplicacao=CONCAT('X', CHAR(92)), observacao=CONCAT('Y', CHAR(92))"_s);
    b->mark();
    QCOMPARE(PesquisaProduto(texto, nullptr), u"3"_s);
    QCOMPARE(texto, u"A\\"_s);
    QCOMPARE(b->statements(), QStringList({descricaoOuCodigo(u"A\\"_s), descricaoOuCodigo(u"A\\\\\\\\"_s)}));
    for (const QString& outro : {u"=X\\"_s, u"*Y\\"_s, u"A\\ CAIXA"_s}) {
        texto = outro;
        QCOMPARE(PesquisaProduto(texto, nullptr), u"3"_s);
    }
    b->shop().produto(u"4"_s, u"CAIXA A%"_s);
    texto = u"A\\"_s;
    QCOMPARE(PesquisaProduto(texto, nullptr), u"4"_s);
}

void TstTextoPesquisa::percentAndUnderscoreMatchAnything() {
    b->shop().produto(u"1"_s, u"PÃO DE SAL"_s);
    for (const QString& digitado : {u"P%SAL"_s, u"P_O"_s, u"%%"_s, u"__"_s}) {
        QString texto = digitado;
        QCOMPARE(PesquisaProduto(texto, nullptr), u"1"_s);
    }
}

void TstTextoPesquisa::numericCodeKindIsKnown() {
    QString texto = u" 12 "_s;
    const ProductQuery numero = productQuery(texto, u"NUMÉRICO");
    QCOMPARE(texto, u"12"_s);
    QCOMPARE(numero.refusal, QString());
    QCOMPARE(numero.sql, u"Select * from Produtos where CodFabr='12' and ativo='S' order by descricao"_s);
    QCOMPARE(numero.alternative,
             u"Select * from Produtos where Descricao like '%12%' and ativo='S' order by Descricao"_s);

    texto = u"AB"_s;
    const ProductQuery palavra = productQuery(texto, u"NUMÉRICO");
    QCOMPARE(palavra.sql, descricaoOuCodigo(u"AB"_s));
    QCOMPARE(palavra.alternative, QString());
}

void TstTextoPesquisa::otherKindsSearchNumbersAsText() {
    QString texto = u"12"_s;
    QCOMPARE(productQuery(texto, u"OUTRO").sql, descricaoOuCodigo(u"12"_s));
    QCOMPARE(TipoCodigoBarras, u"EAN-13");
}

// The alternative statement is valid on the server and finds what the first one does not.
void TstTextoPesquisa::numericCodeKindFallsBackToTheDescription() {
    b->shop().produto(u"A1"_s, u"ROSCA 12 UN"_s);
    QString texto = u"12"_s;
    const ProductQuery consulta = productQuery(texto, u"NUMÉRICO");
    QVERIFY(!AbreRS(consulta.sql));
    QVERIFY(AbreRS(consulta.alternative));
    QCOMPARE(rs.field(u"codfabr").text(), u"A1"_s);
    rs.close();
}

QTEST_MAIN(TstTextoPesquisa)
#include "tst_texto_pesquisa.moc"

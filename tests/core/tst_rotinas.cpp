#include "base/Clock.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "support/ErrorOf.h"
#include "support/FaultProxy.h"
#include "support/PrivateServer.h"
#include "support/Program.h"
#include "support/StatementLog.h"

#include <QLineEdit>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// The shared routines; those that write are checked by the statements the server received.
class TstRotinas : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void productWithoutSheetLeavesTheStockItself();
    void quantityZeroCountsAsAnExit();
    void returnAddsToTheStock();
    void productCodeIsTrimmedOnlyInTheUpdate();
    void sheetOfThreeComponentsMovesEachComponent();
    void returnOfAComposedProductAddsItsComponents();
    void componentQuantityIsRoundedToFourPlaces();
    void callersWalkIsNotDisturbed();
    void lostConnectionSurfacesAndStops_data();
    void lostConnectionSurfacesAndStops();
    void stockLogRowLetterByLetter();
    void stockLogNamesTheUserOfTheSystem();
    void textIsCleaned_data();
    void textIsCleaned();
    void controlCharactersAreDroppedAndNoOthers();
    void onlyDigitsAreKept_data();
    void onlyDigitsAreKept();
    void codeOfAListText_data();
    void codeOfAListText();
    void codeTooLargeIsAnError();
    void wholeTextIsSelected();

  private:
    QString logOf(const QString& codigo, const QString& quantidade) const {
        return u"INSERT INTO logestoque SET data = '2024-03-01', hora = '09:08:07', usuario = '"_s + m_user +
               u"', tela = 'TELA', codproduto = '"_s + codigo + u"', qtdLoja = "_s + quantidade;
    }
    QString sheetOf(const QString& codigo) const {
        return u"select codigo, codigoprod, quantidade from FichaTecnica where Codigoprod = '"_s + codigo +
               u"'"_s;
    }
    QString estoque(const QString& codigo) {
        return m_server->query(
            u"SELECT CONCAT_WS('|', quantidade, Nitem, Ultima_Saida) FROM produtos WHERE codfabr = '%1'"_s
                .arg(codigo))[0][0];
    }

    std::unique_ptr<PrivateServer> m_server;
    QString m_user;
};

void TstRotinas::initTestCase() {
    m_server = std::make_unique<PrivateServer>();
    m_user = QString::fromLocal8Bit(runProgram(u"id"_s, {u"-un"_s}).output).trimmed();
    QVERIFY(!m_user.isEmpty());
}

void TstRotinas::init() {
    m_server->execute(
        u"TRUNCATE produtos; TRUNCATE FichaTecnica; TRUNCATE logestoque; "
        "INSERT INTO produtos (codfabr, quantidade, Nitem) VALUES ('X', 10, 5), ('KIT', 10, 5), "
        "('A', 100, 1), ('B', 100, 2), ('C', 100, 3); "
        "INSERT INTO FichaTecnica (codigoprod, codigo, quantidade) VALUES ('KIT', 'A', 1.500), "
        "('KIT', 'B', 2), ('KIT', 'C', 0.250)"_s);
    clock::fix(QDateTime(QDate(2024, 3, 1), QTime(9, 8, 7)));
    QVERIFY(IniciaBanco());
}

void TstRotinas::cleanup() {
    EncerraBanco();
    m_server->useSocket(m_server->socket());
    clock::fix({});
}

void TstRotinas::cleanupTestCase() {
    m_server.reset();
}

void TstRotinas::productWithoutSheetLeavesTheStockItself() {
    StatementLog log(*m_server);
    BaixaEstoque(u"X"_s, Dinheiro::dePonto(u"1.5"), u"TELA"_s);
    QCOMPARE(log.texts(),
             (QStringList{sheetOf(u"X"_s), logOf(u"X"_s, u"-1.5"_s),
                          u"update Produtos Set Ultima_Saida='2024-03-01',Quantidade=Quantidade -  1.5, "
                          "Nitem=Nitem+1 Where CodFabr='X'"_s}));
    QCOMPARE(estoque(u"X"_s), u"8.500|6|2024-03-01"_s);
    QCOMPARE(m_server->query(u"SELECT data, hora, usuario, tela, codproduto, qtdLoja FROM logestoque"_s),
             (QList<QStringList>{{u"2024-03-01"_s, u"09:08:07"_s, m_user, u"TELA"_s, u"X"_s, u"-1.500"_s}}));
}

void TstRotinas::quantityZeroCountsAsAnExit() {
    StatementLog log(*m_server);
    BaixaEstoque(u"X"_s, Dinheiro(), u"TELA"_s);
    QCOMPARE(log.texts(),
             (QStringList{sheetOf(u"X"_s), logOf(u"X"_s, u" 0"_s),
                          u"update Produtos Set Ultima_Saida='2024-03-01',Quantidade=Quantidade -  0, "
                          "Nitem=Nitem+1 Where CodFabr='X'"_s}));
    QCOMPARE(estoque(u"X"_s), u"10.000|6|2024-03-01"_s);
}

void TstRotinas::returnAddsToTheStock() {
    StatementLog log(*m_server);
    BaixaEstoque(u"X"_s, Dinheiro(-3), u"TELA"_s);
    QCOMPARE(log.texts(),
             (QStringList{sheetOf(u"X"_s), logOf(u"X"_s, u" 3"_s),
                          u"update Produtos Set Ultima_Saida='2024-03-01',Quantidade=Quantidade - -3, "
                          "Nitem=Nitem-1 Where CodFabr='X'"_s}));
    QCOMPARE(estoque(u"X"_s), u"13.000|4|2024-03-01"_s);
}

void TstRotinas::productCodeIsTrimmedOnlyInTheUpdate() {
    StatementLog log(*m_server);
    BaixaEstoque(u" X "_s, Dinheiro(1), u"TELA"_s);
    QCOMPARE(log.texts(),
             (QStringList{sheetOf(u" X "_s), logOf(u" X "_s, u"-1"_s),
                          u"update Produtos Set Ultima_Saida='2024-03-01',Quantidade=Quantidade -  1, "
                          "Nitem=Nitem+1 Where CodFabr='X'"_s}));
    QCOMPARE(estoque(u"X"_s), u"9.000|6|2024-03-01"_s);
}

void TstRotinas::sheetOfThreeComponentsMovesEachComponent() {
    StatementLog log(*m_server);
    BaixaEstoque(u"KIT"_s, Dinheiro(2), u"TELA"_s);
    QCOMPARE(
        log.texts(),
        (QStringList{sheetOf(u"KIT"_s), logOf(u"A"_s, u"-3"_s),
                     u"Update Produtos Set Ultima_Saida='2024-03-01', Quantidade = Quantidade -  3 where "
                     "Codfabr = 'A'"_s,
                     logOf(u"B"_s, u"-4"_s),
                     u"Update Produtos Set Ultima_Saida='2024-03-01', Quantidade = Quantidade -  4 where "
                     "Codfabr = 'B'"_s,
                     logOf(u"C"_s, u"-0.5"_s),
                     u"Update Produtos Set Ultima_Saida='2024-03-01', Quantidade = Quantidade -  0.5 where "
                     "Codfabr = 'C'"_s}));
    QCOMPARE(estoque(u"KIT"_s), u"10.000|5|1901-01-01"_s);
    QCOMPARE(estoque(u"A"_s), u"97.000|1|2024-03-01"_s);
    QCOMPARE(estoque(u"B"_s), u"96.000|2|2024-03-01"_s);
    QCOMPARE(estoque(u"C"_s), u"99.500|3|2024-03-01"_s);
}

void TstRotinas::returnOfAComposedProductAddsItsComponents() {
    BaixaEstoque(u"KIT"_s, Dinheiro(-2), u"TELA"_s);
    QCOMPARE(estoque(u"KIT"_s), u"10.000|5|1901-01-01"_s);
    QCOMPARE(estoque(u"A"_s), u"103.000|1|2024-03-01"_s);
    QCOMPARE(estoque(u"C"_s), u"100.500|3|2024-03-01"_s);
    QCOMPARE(m_server->query(u"SELECT codproduto, qtdLoja FROM logestoque ORDER BY id"_s),
             (QList<QStringList>{{u"A"_s, u"3.000"_s}, {u"B"_s, u"4.000"_s}, {u"C"_s, u"0.500"_s}}));
}

void TstRotinas::componentQuantityIsRoundedToFourPlaces() {
    m_server->execute(u"UPDATE FichaTecnica SET quantidade = 0.333 WHERE codigo = 'A'; "
                      "DELETE FROM FichaTecnica WHERE codigo <> 'A'"_s);
    StatementLog log(*m_server);
    BaixaEstoque(u"KIT"_s, Dinheiro::dePonto(u"1.25"), u"TELA"_s);
    QCOMPARE(log.texts()[1], logOf(u"A"_s, u"-0.4162"_s));
}

void TstRotinas::callersWalkIsNotDisturbed() {
    QVERIFY(AbreRS(u"SELECT codfabr FROM produtos ORDER BY codfabr"_s));
    QVERIFY(AbreRS2(u"SELECT codfabr FROM produtos ORDER BY codfabr DESC"_s));
    QStringList seen;
    for (; !rs.atEnd(); rs.moveNext()) {
        seen += rs.field(u"codfabr").text();
        BaixaEstoque(seen.last(), Dinheiro(1), u"TELA"_s);
    }
    QCOMPARE(seen, (QStringList{u"A"_s, u"B"_s, u"C"_s, u"KIT"_s, u"X"_s}));
    QCOMPARE(rs2.field(u"codfabr").text(), u"X"_s);
}

void TstRotinas::lostConnectionSurfacesAndStops_data() {
    QTest::addColumn<int>("k");
    QTest::addColumn<int>("logs");
    QTest::addColumn<QString>("estoqueDeA");
    QTest::newRow("before the sheet is read") << 1 << 0 << u"100.000"_s;
    QTest::newRow("before the first log row") << 2 << 0 << u"100.000"_s;
    QTest::newRow("before the first update") << 3 << 1 << u"100.000"_s;
    QTest::newRow("before the second log row") << 4 << 1 << u"97.000"_s;
}

void TstRotinas::lostConnectionSurfacesAndStops() {
    QFETCH(int, k);
    QFETCH(int, logs);
    QFETCH(QString, estoqueDeA);
    FaultProxy proxy(m_server->socket());
    EncerraBanco();
    m_server->useSocket(proxy.socket());
    QVERIFY(IniciaBanco());
    proxy.cutBefore(k);
    const auto error = errorOf([] { BaixaEstoque(u"KIT"_s, Dinheiro(2), u"TELA"_s); });
    QVERIFY(error);
    QVERIFY(error->isConnectionLost());
    QCOMPARE(proxy.texts().size(), k - 1);
    QCOMPARE(error->statement().toUtf8(), proxy.cutAt());
    QCOMPARE(m_server->query(u"SELECT COUNT(*) FROM logestoque"_s)[0][0], QString::number(logs));
    QCOMPARE(m_server->query(u"SELECT quantidade FROM produtos WHERE codfabr = 'A'"_s)[0][0], estoqueDeA);
}

void TstRotinas::stockLogRowLetterByLetter() {
    StatementLog log(*m_server);
    GravaLogEstoque(u"TELA D'ÁGUA \\ 1\r\n2"_s, u"0789"_s, Dinheiro::dePonto(u"-1.25"), Connection);
    QCOMPARE(log.texts(),
             QStringList{u"INSERT INTO logestoque SET data = '2024-03-01', hora = '09:08:07', usuario = '"_s +
                         m_user + u"', tela = 'TELA D´ÁGUA / 12', codproduto = '0789', qtdLoja = -1.25"_s});
    QCOMPARE(m_server->query(u"SELECT tela, qtdLoja FROM logestoque"_s),
             (QList<QStringList>{{u"TELA D´ÁGUA / 12"_s, u"-1.250"_s}}));
}

// Whatever the environment says.
void TstRotinas::stockLogNamesTheUserOfTheSystem() {
    for (const char* variable : {"USERNAME", "USER", "LOGNAME"})
        qputenv(variable, "OUTRO");
    GravaLogEstoque(u"TELA"_s, u"X"_s, Dinheiro(1), Connection);
    QCOMPARE(m_server->query(u"SELECT usuario FROM logestoque"_s)[0][0], m_user);
}

void TstRotinas::textIsCleaned_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("clean");
    QTest::newRow("null") << QString() << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("plain with accents") << u"Padaria São João Nº 1"_s << u"Padaria São João Nº 1"_s;
    QTest::newRow("every apostrophe") << u"D'Ávila's 'x'"_s << u"D´Ávila´s ´x´"_s;
    QTest::newRow("every backslash") << u"a\\b\\\\c"_s << u"a/b//c"_s;
    QTest::newRow("line break") << u"linha 1\r\nlinha 2\n3"_s << u"linha 1linha 23"_s;
    QTest::newRow("tab and null character") << u"a\tb"_s + QChar(0) + u"c"_s << u"abc"_s;
    QTest::newRow("code 131 of Windows-1252") << u"1 ƒ 2ƒ"_s << u"1  2"_s;
    QTest::newRow("other characters of its row stay")
        << u"€‚„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ"_s << u"€‚„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ"_s;
    QTest::newRow("characters outside the code page stay") << u"Ω Ł 東"_s << u"Ω Ł 東"_s;
    QTest::newRow("characters of four bytes stay") << u"\U0001F950 pão"_s << u"\U0001F950 pão"_s;
    QTest::newRow("blanks stay") << u"  a  "_s << u"  a  "_s;
    QTest::newRow("double quotes stay") << u"\"a\" `b`"_s << u"\"a\" `b`"_s;
}

void TstRotinas::textIsCleaned() {
    QFETCH(QString, text);
    QFETCH(QString, clean);
    QCOMPARE(LimpaTexto(text), clean);
}

void TstRotinas::controlCharactersAreDroppedAndNoOthers() {
    for (char16_t codigo = 0; codigo < 0x180; ++codigo) {
        const QString one(1, QChar(codigo));
        QString expected = codigo <= 31 ? QString() : one;
        if (codigo == u'\'')
            expected = u"´"_s;
        if (codigo == u'\\')
            expected = u"/"_s;
        QVERIFY2(LimpaTexto(one) == expected, qPrintable(QString::number(codigo)));
    }
}

void TstRotinas::onlyDigitsAreKept_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("digits");
    QTest::newRow("formatted CNPJ") << u"12.345.678/0001-95"_s << u"12345678000195"_s;
    QTest::newRow("formatted CPF") << u"123.456.789-09"_s << u"12345678909"_s;
    QTest::newRow("blanks and letters") << u" a1 b2 "_s << u"12"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("none") << u"ISENTO"_s << u""_s;
    QTest::newRow("digits of other scripts") << u"١٢１２½²"_s << u""_s;
}

void TstRotinas::onlyDigitsAreKept() {
    QFETCH(QString, text);
    QFETCH(QString, digits);
    QCOMPARE(SoNumeros(text), digits);
}

void TstRotinas::codeOfAListText_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("codigo");
    QTest::newRow("seller") << u"ANA PAULA   <<007>>"_s << 7;
    QTest::newRow("no mark") << u"(Todos)"_s << 0;
    QTest::newRow("empty") << u""_s << 0;
    QTest::newRow("one sign is no mark") << u"ANA <7>"_s << 0;
    QTest::newRow("first mark counts") << u"A <<5>> B <<9>>"_s << 5;
    QTest::newRow("mark at the start") << u"<<12>>"_s << 12;
    QTest::newRow("no closing mark") << u"ANA <<12"_s << 12;
    QTest::newRow("blanks before the digits") << u"ANA << 12 >>"_s << 12;
    QTest::newRow("nothing after it") << u"ANA <<"_s << 0;
    QTest::newRow("no digits after it") << u"ANA <<>>"_s << 0;
    QTest::newRow("more than three digits") << u"ANA   <<123456>>"_s << 123456;
}

void TstRotinas::codeOfAListText() {
    QFETCH(QString, text);
    QFETCH(int, codigo);
    QCOMPARE(CodigoDaLista(text), codigo);
}

void TstRotinas::codeTooLargeIsAnError() {
    QCOMPARE(errorNumberOf([] { CodigoDaLista(u"ANA <<2147483648>>"_s); }), number(ErrorNumber::Overflow));
}

void TstRotinas::wholeTextIsSelected() {
    QLineEdit caixa;
    caixa.setText(u"PÃO DE AÇÚCAR"_s);
    caixa.setCursorPosition(3);
    SelecionaTexto(&caixa);
    QCOMPARE(caixa.selectedText(), u"PÃO DE AÇÚCAR"_s);
    caixa.clear();
    SelecionaTexto(&caixa);
    QVERIFY(!caixa.hasSelectedText());
}

QTEST_MAIN(TstRotinas)
#include "tst_rotinas.moc"

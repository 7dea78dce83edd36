// Correcting the customers' terms in the listing grid, with real clicks and keys.

#include "closing/Balcao.h"
#include "closing/Colunas.h"
#include "support/ModalHelper.h"
#include "ui/TextBox.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

namespace {

const QString foraDaFaixa = u"A tabela de preço tem que ser entre 0 e 4. Verifique!!!"_s;

QString gravaTabela(const QString& tabela, const QString& mascara) {
    return u"Update Clientes Set colunaPreco='%1', tabelas_preco='%2' Where Codigo='C1'"_s.arg(tabela,
                                                                                               mascara);
}

QString gravaTermos(const QString& prazo, const QString& forma) {
    return u"Update Clientes Set Prazo=%1, FormaPG='%2' Where Codigo='C1'"_s.arg(prazo, forma);
}

} // namespace

class TestEdicao : public QObject {
    Q_OBJECT

  private:
    Balcao m;

    /// One pre-sale, 1, of customer C1 with these terms, listed and shown.
    void umaPv(int prazo, const QString& forma, const QString& tabela = u"1"_s) {
        m.cliente(u"C1"_s, u"CLIENTE UM"_s, prazo, forma, tabela);
        m.preVenda(1, u"C1"_s);
        m.abre();
    }

    QStringList termosNaTela(int linha = 1) const {
        return {m.celula(linha, colunas::DiasVenc), m.celula(linha, colunas::FormaPagto),
                m.celula(linha, colunas::Tabela)};
    }

    QStringList termosGravados() {
        return m.linhas(u"SELECT prazo, formapg, colunapreco, tabelas_preco FROM clientes"_s)[0];
    }

  private Q_SLOTS:
    void init() { m.zera(); }
    void cleanup() { m.fecha(); }

    void digitaUmTermo_data() {
        QTest::addColumn<int>("coluna");
        QTest::addColumn<int>("prazo");
        QTest::addColumn<QString>("forma");
        QTest::addColumn<QString>("digitado");
        QTest::addColumn<QString>("comando"); // empty for none
        QTest::addColumn<QString>("caixa");   // part of the box's text; empty for none
        QTest::addColumn<QStringList>("naTela");
        static constexpr int t = colunas::Tabela;
        const auto tabela = [](const char* nome, const QString& digitado, const QString& v,
                               const QString& mascara) {
            QTest::newRow(nome) << t << 0 << u"PIX"_s << digitado << gravaTabela(v, mascara) << QString()
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
        for (const QString& digitado :
             {u"5"_s, u"-1"_s, u"-0,5"_s, u"2,5"_s, u"2.5"_s, u"4,9"_s, u"10"_s, u"999999999999"_s,
              u"9999999999999999"_s, u"-9999999999999999999999"_s})
            QTest::addRow("table %s", qPrintable(digitado))
                << t << 0 << u"PIX"_s << digitado << QString() << foraDaFaixa
                << QStringList{u"0"_s, u"PIX"_s, u"1"_s};

        static constexpr int d = colunas::DiasVenc;
        const auto dias = [](const char* nome, int prazo, const QString& forma, const QString& digitado,
                             const QString& v, const QString& formaNova) {
            QTest::newRow(nome) << d << prazo << forma << digitado << gravaTermos(u' ' + v, formaNova)
                                << QString() << QStringList{v, formaNova, u"1"_s};
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
        for (const QString& digitado : {u"-1"_s, u"-0,1"_s, u"-30"_s, u"-9999999999999999999999"_s})
            QTest::addRow("days %s change nothing", qPrintable(digitado))
                << d << 7 << u"BOLETO"_s << digitado << QString() << QString()
                << QStringList{u"7"_s, u"BOLETO"_s, u"1"_s};
        for (const QString& digitado : {u"2147483648"_s, u"999999999999"_s, u"9999999999999999999999"_s})
            QTest::addRow("days %s overflow", qPrintable(digitado))
                << d << 7 << u"BOLETO"_s << digitado << QString() << u"Estouro"_s
                << QStringList{u"7"_s, u"BOLETO"_s, u"1"_s};
    }

    void digitaUmTermo() {
        QFETCH(int, coluna);
        QFETCH(int, prazo);
        QFETCH(QString, forma);
        QFETCH(QString, digitado);
        QFETCH(QString, comando);
        QFETCH(QString, caixa);
        QFETCH(QStringList, naTela);
        umaPv(prazo, forma);
        ModalHelper caixas;
        if (!caixa.isEmpty())
            caixas.esperaContendo(caixa, QMessageBox::Ok);

        m.clica(1, coluna);
        QVERIFY(m.editor()->hasFocus());
        Balcao::digita(digitado);
        Balcao::tecla(Qt::Key_Return);

        QVERIFY(!m.editor()->isVisible());
        QVERIFY(m.focoNaGrade());
        QCOMPARE(m.textos(), comando.isEmpty() ? QStringList() : QStringList{comando});
        QCOMPARE(termosNaTela(), naTela);
        const QStringList gravados = termosGravados();
        QCOMPARE(gravados.first(3), naTela);
        if (coluna == colunas::Tabela && !comando.isEmpty())
            QVERIFY(comando.contains(u"tabelas_preco='"_s + gravados[3] + u'\''));
        QCOMPARE(caixas.confere(), QString());
    }

    void apagaOTexto() {
        umaPv(30, u"BOLETO"_s, u"3"_s);
        m.clica(1, colunas::Tabela);
        Balcao::tecla(Qt::Key_Delete);
        QCOMPARE(m.editor()->text(), QString());
        Balcao::tecla(Qt::Key_Return);
        m.clica(1, colunas::DiasVenc);
        Balcao::tecla(Qt::Key_Delete);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(),
                 QStringList({gravaTabela(u"0"_s, u"1111"_s), gravaTermos(u" 0"_s, u"BOLETO"_s)}));
        QCOMPARE(termosNaTela(), QStringList({u"0"_s, u"BOLETO"_s, u"0"_s}));
    }

    void colaApostrofoEQuebraDeLinha() {
        umaPv(30, u"BOLETO"_s);
        QGuiApplication::clipboard()->setText(u"15' or 1=1\n-- x"_s);
        m.clica(1, colunas::DiasVenc);
        Balcao::tecla(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!m.editor()->text().contains(u'\''));
        QVERIFY(!m.editor()->text().contains(u'\n'));
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(), QStringList{gravaTermos(u" 15"_s, u"BOLETO"_s)});
    }

    void escolheUmaForma_data() {
        QTest::addColumn<int>("prazo");
        QTest::addColumn<QString>("forma");
        QTest::addColumn<QString>("escolhida");
        QTest::addColumn<QString>("prazoNovo");
        QTest::newRow("no cash and no term gets 7 days") << 0 << u"DINHEIRO"_s << u"BOLETO"_s << u"7"_s;
        QTest::newRow("no cash keeps its term") << 30 << u"BOLETO"_s << u"CARTÃO"_s << u"30"_s;
        QTest::newRow("cash loses the term") << 30 << u"BOLETO"_s << u"DINHEIRO"_s << u"0"_s;
        QTest::newRow("cash-like loses the term") << 30 << u"BOLETO"_s << u"PIX"_s << u"0"_s;
        QTest::newRow("cash without a term stays") << 0 << u"DINHEIRO"_s << u"PIX"_s << u"0"_s;
        QTest::newRow("a negative term stays, no cash") << -5 << u"PIX"_s << u"BOLETO"_s << u"-5"_s;
        QTest::newRow("a negative term stays, cash") << -5 << u"BOLETO"_s << u"PIX"_s << u"-5"_s;
    }

    void escolheUmaForma() {
        QFETCH(int, prazo);
        QFETCH(QString, forma);
        QFETCH(QString, escolhida);
        QFETCH(QString, prazoNovo);
        umaPv(prazo, forma);
        m.clica(1, colunas::FormaPagto);
        QVERIFY(m.combo()->hasFocus());
        QCOMPARE(m.combo()->currentText(), forma);
        Balcao::digita(escolhida.first(2)); // the list finds what one types
        QCOMPARE(m.combo()->currentText(), escolhida);
        Balcao::tecla(Qt::Key_Return);
        QVERIFY(!m.combo()->isVisible());
        QVERIFY(m.focoNaGrade());
        const QString ponto = (prazoNovo.startsWith(u'-') ? QString() : u" "_s) + prazoNovo;
        QCOMPARE(m.textos(), QStringList{gravaTermos(ponto, escolhida)});
        QCOMPARE(termosNaTela(), QStringList({prazoNovo, escolhida, u"1"_s}));
        QCOMPARE(termosGravados().first(2), QStringList({prazoNovo, escolhida}));
    }

    void formaForaDaListaNaoGravaNada() {
        umaPv(30, u"VALE"_s);
        m.clica(1, colunas::FormaPagto);
        QCOMPARE(m.combo()->currentIndex(), -1);
        Balcao::tecla(Qt::Key_Return);
        m.clica(1, colunas::FormaPagto);
        Balcao::tecla(Qt::Key_Escape);
        QCOMPARE(m.textos(), QStringList());
        QCOMPARE(termosNaTela(), QStringList({u"30"_s, u"VALE"_s, u"1"_s}));
        m.clica(1, colunas::FormaPagto);
        Balcao::tecla(Qt::Key_Down);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(), QStringList{gravaTermos(u" 0"_s, u"DINHEIRO"_s)});
    }

    void formaApagadaDoCadastroEntretanto() {
        umaPv(30, u"BOLETO"_s);
        m.servidor.executa(u"DELETE FROM Finalizadoras WHERE Descricao IN ('BOLETO','CARTÃO')"_s);
        m.clica(1, colunas::FormaPagto);
        QCOMPARE(m.combo()->currentText(), u"BOLETO"_s);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(), QStringList{gravaTermos(u" 30"_s, u"BOLETO"_s)});
    }

    void clienteApagadoEntretanto() {
        umaPv(30, u"BOLETO"_s);
        m.servidor.executa(u"DELETE FROM clientes"_s);
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"5"_s);
        Balcao::tecla(Qt::Key_Return);
        m.clica(1, colunas::Tabela);
        Balcao::digita(u"2"_s);
        Balcao::tecla(Qt::Key_Return);
        m.clica(1, colunas::FormaPagto);
        Balcao::digita(u"CA"_s);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(), QStringList({gravaTermos(u" 5"_s, u"BOLETO"_s), gravaTabela(u"2"_s, u"0100"_s),
                                          gravaTermos(u" 5"_s, u"CARTÃO"_s)}));
        QCOMPARE(m.valor(u"SELECT COUNT(*) FROM clientes"_s), u"0"_s);
    }

    void formaComApostrofoNaoVaiAoBanco_data() {
        QTest::addColumn<int>("coluna");
        QTest::newRow("days") << int(colunas::DiasVenc);
        QTest::newRow("method") << int(colunas::FormaPagto);
    }

    void formaComApostrofoNaoVaiAoBanco() {
        QFETCH(int, coluna);
        m.servidor.executa(u"INSERT INTO Finalizadoras (Descricao, avista) VALUES ('VALE D''AGUA', 'N')"_s);
        umaPv(30, coluna == colunas::DiasVenc ? u"VALE D'AGUA"_s : u"BOLETO"_s);
        const QStringList antes = termosNaTela();
        ModalHelper caixas;
        caixas.esperaContendo(u"a forma de pagamento VALE D'AGUA tem no nome um caractere"_s,
                              QMessageBox::Ok);
        m.clica(1, coluna);
        Balcao::digita(coluna == colunas::DiasVenc ? u"5"_s : u"VA"_s);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos(), QStringList());
        QCOMPARE(termosNaTela(), antes);
    }

    // Escape

    void escapeDeixaACelulaComoEstava_data() {
        QTest::addColumn<int>("coluna");
        QTest::addColumn<QString>("comando");
        QTest::newRow("days") << int(colunas::DiasVenc) << gravaTermos(u" 30"_s, u"BOLETO"_s);
        QTest::newRow("method") << int(colunas::FormaPagto) << gravaTermos(u" 30"_s, u"BOLETO"_s);
        QTest::newRow("table") << int(colunas::Tabela) << gravaTabela(u"2"_s, u"0100"_s);
    }

    void escapeDeixaACelulaComoEstava() {
        QFETCH(int, coluna);
        QFETCH(QString, comando);
        umaPv(30, u"BOLETO"_s, u"2"_s);
        m.clica(1, coluna);
        Balcao::digita(coluna == colunas::FormaPagto ? u"CA"_s : u"9"_s);
        Balcao::tecla(Qt::Key_Escape);
        QVERIFY(!m.editor()->isVisible() && !m.combo()->isVisible());
        QVERIFY(m.focoNaGrade());
        QVERIFY(m.painel().isVisible());
        QCOMPARE(m.textos(), QStringList{comando});
        QCOMPARE(termosNaTela(), QStringList({u"30"_s, u"BOLETO"_s, u"2"_s}));
    }

    // What is no number counts as 0 in the statement, and stays what it is on the screen.
    void escapeDeixaTambemOQueNaoEhNumero() {
        umaPv(30, u"BOLETO"_s, QString());
        for (int vez = 0; vez < 2; ++vez) {
            m.clica(1, colunas::Tabela);
            Balcao::digita(u"3"_s);
            Balcao::tecla(Qt::Key_Escape);
        }
        QCOMPARE(m.textos(), QStringList({gravaTabela(u"0"_s, u"1111"_s), gravaTabela(u"0"_s, u"1111"_s)}));
        QCOMPARE(termosNaTela(), QStringList({u"30"_s, u"BOLETO"_s, QString()}));
    }

    void escapeGravaComAsRegrasDosTermos() {
        umaPv(0, u"BOLETO"_s);
        m.clica(1, colunas::FormaPagto);
        Balcao::digita(u"DI"_s);
        Balcao::tecla(Qt::Key_Escape);
        QCOMPARE(m.textos(), QStringList{gravaTermos(u" 7"_s, u"BOLETO"_s)});
        QCOMPARE(termosNaTela(), QStringList({u"7"_s, u"BOLETO"_s, u"1"_s}));
    }

    void escapeEmTabelaForaDaFaixaSoAvisa() {
        umaPv(30, u"BOLETO"_s, u"5"_s);
        ModalHelper caixas;
        caixas.espera(foraDaFaixa, QMessageBox::Ok);
        m.clica(1, colunas::Tabela);
        Balcao::digita(u"3"_s);
        Balcao::tecla(Qt::Key_Escape);
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos(), QStringList());
        QCOMPARE(termosNaTela(), QStringList({u"30"_s, u"BOLETO"_s, u"5"_s}));
    }

    void escapeComFalhaDoBancoNaoEncerraOPrograma() {
        umaPv(30, u"BOLETO"_s);
        m.servidor.executa(u"RENAME TABLE clientes TO clientes_fora"_s);
        ModalHelper caixas;
        caixas.esperaContendo(u"Update Clientes Set Prazo= 30, FormaPG='BOLETO' Where Codigo='C1'"_s,
                              QMessageBox::Ok);
        m.clica(1, colunas::DiasVenc);
        // Only a running loop can be ended, and an end by Escape gives 0.
        constexpr int fimDoTeste = 7;
        QTimer::singleShot(0, this, [] {
            Balcao::tecla(Qt::Key_Escape);
            QTimer::singleShot(50, qApp, [] { QCoreApplication::exit(fimDoTeste); });
        });
        QCOMPARE(QCoreApplication::exec(), fimDoTeste);
        m.servidor.executa(u"RENAME TABLE clientes_fora TO clientes"_s);
        QCOMPARE(caixas.confere(), QString());
        QVERIFY(m.painel().isVisible());
        QCOMPARE(termosNaTela(), QStringList({u"30"_s, u"BOLETO"_s, u"1"_s}));
    }

    // Leaving

    void tabGravaEVoltaAGrade() {
        umaPv(0, u"PIX"_s);
        m.clica(1, colunas::Tabela);
        Balcao::digita(u"4"_s);
        Balcao::tecla(Qt::Key_Tab);
        QCOMPARE(m.textos(), QStringList{gravaTabela(u"4"_s, u"0001"_s)});
        QVERIFY(m.focoNaGrade());
        m.marca();
        m.clica(1, colunas::FormaPagto);
        Balcao::digita(u"BO"_s);
        Balcao::tecla(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(m.textos(), QStringList{gravaTermos(u" 7"_s, u"BOLETO"_s)});
        QVERIFY(m.focoNaGrade());
    }

    void cliqueEmOutraCelulaGravaUmaVezEAbreAOutra() {
        m.cliente(u"C2"_s, u"CLIENTE DOIS"_s, 10, u"BOLETO"_s, u"3"_s);
        m.preVenda(2, u"C2"_s);
        umaPv(30, u"BOLETO"_s);
        const int um = m.linhaDe(1);
        const int dois = m.linhaDe(2);
        m.clica(um, colunas::DiasVenc);
        Balcao::digita(u"31"_s);
        m.clica(dois, colunas::DiasVenc);
        QCOMPARE(m.textos(), QStringList{gravaTermos(u" 31"_s, u"BOLETO"_s)});
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"10"_s);
        QCOMPARE(m.editor()->selectedText(), u"10"_s);
        QCOMPARE(m.editor()->geometry(), m.lugar(dois, colunas::DiasVenc));
        m.clica(um, colunas::FormaPagto);
        QVERIFY(m.combo()->hasFocus());
        QVERIFY(!m.editor()->isVisible());
        m.clica(um, colunas::DiasVenc);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(),
                 QStringList({gravaTermos(u" 31"_s, u"BOLETO"_s),
                              u"Update Clientes Set Prazo= 10, FormaPG='BOLETO' Where Codigo='C2'"_s,
                              gravaTermos(u" 31"_s, u"BOLETO"_s), gravaTermos(u" 31"_s, u"BOLETO"_s)}));
        QCOMPARE(termosNaTela(dois), QStringList({u"10"_s, u"BOLETO"_s, u"3"_s}));
    }

    void recusaAoClicarEmOutraCelulaAvisaUmaVez() {
        m.preVenda(2, u"C1"_s);
        umaPv(30, u"BOLETO"_s);
        ModalHelper caixas;
        caixas.espera(foraDaFaixa, QMessageBox::Ok);
        m.clica(1, colunas::Tabela);
        Balcao::digita(u"5"_s);
        m.clica(2, colunas::Selecao);
        QTest::qWait(50);
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(caixas.caixas().size(), 1);
        QCOMPARE(caixas.caixas()[0].titulo, u"Atenção!!!"_s);
        QCOMPARE(caixas.caixas()[0].icone, QMessageBox::Information);
        QCOMPARE(caixas.caixas()[0].botoes, QMessageBox::StandardButtons(QMessageBox::Ok));
        QVERIFY(!m.editor()->isVisible());
        QCOMPARE(m.textos(), QStringList());
        QCOMPARE(m.celula(1, colunas::Tabela), u"1"_s);
    }

    void outraJanelaEFecharNaoGravam() {
        umaPv(30, u"BOLETO"_s);
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"44"_s);
        QWidget outra;
        outra.show();
        outra.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&outra));
        QVERIFY(m.editor()->isVisible());
        QCOMPARE(m.textos(), QStringList());
        outra.close();
        m.painel().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m.painel()));
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"44"_s);
        m.painel().close();
        QCoreApplication::processEvents();
        QCOMPARE(m.textos(), QStringList());
    }

    void oEncerramentoVeACelulaQueSeEditava() {
        m.cliente(u"C1"_s, u"CLIENTE UM"_s, 0, u"BOLETO"_s, u"1"_s);
        m.servidor.executa(u"INSERT INTO produtos (codfabr, quantidade) VALUES ('X', 100)"_s);
        m.preVenda(1, u"C1"_s);
        m.abre();
        ModalHelper caixas;
        caixas.espera(u"Lembrando que os pedidos de cliente com CPF serão cancelados."_s, QMessageBox::Ok);
        caixas.espera(u"Processamento efetuado com sucesso."_s, QMessageBox::Ok);
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"12"_s);
        m.clica("Command4");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos().value(0), gravaTermos(u" 12"_s, u"BOLETO"_s));
        QCOMPARE(m.valor(u"SELECT DATEDIFF(Vencto, CURDATE()) FROM areceber"_s), u"12"_s);
    }

    void atalhoDeBotaoGravaAntes() {
        umaPv(30, u"BOLETO"_s);
        m.botao("Command3")->setEnabled(true);
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"13"_s);
        QTest::keyClick(m.painel().windowHandle(), Qt::Key_C, Qt::AltModifier);
        QTRY_COMPARE(m.textos().size(), 2);
        QCOMPARE(m.textos()[0], gravaTermos(u" 13"_s, u"BOLETO"_s));
        QVERIFY(!m.editor()->isVisible());
        QCOMPARE(m.celula(1, colunas::DiasVenc), u"13"_s);
    }

    void operacaoNaoComecaComValorRecusado() {
        umaPv(30, u"BOLETO"_s);
        ModalHelper caixas;
        caixas.espera(foraDaFaixa, QMessageBox::Ok);
        m.clica(1, colunas::Tabela);
        Balcao::digita(u"7"_s);
        QTest::keyClick(m.painel().windowHandle(), Qt::Key_E, Qt::AltModifier);
        QTRY_COMPARE(caixas.caixas().size(), 1);
        QTest::qWait(300); // a pressed button clicks a little later
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos(), QStringList());
    }

    // Opening and place

    void editorFicaSobreACelula_data() {
        QTest::addColumn<int>("coluna");
        QTest::newRow("days") << int(colunas::DiasVenc);
        QTest::newRow("method") << int(colunas::FormaPagto);
        QTest::newRow("table") << int(colunas::Tabela);
    }

    void editorFicaSobreACelula() {
        QFETCH(int, coluna);
        m.cliente(u"C1"_s, u"CLIENTE UM"_s, 30, u"BOLETO"_s, u"2"_s);
        for (int numero = 1; numero <= 60; ++numero)
            m.preVenda(numero, u"C1"_s);
        m.abre();
        const QWidget* controle = coluna == colunas::FormaPagto ? static_cast<QWidget*>(m.combo())
                                                                : static_cast<QWidget*>(m.editor());
        m.clica(3, coluna);
        QVERIFY(controle->isVisible());
        QCOMPARE(controle->geometry(), m.lugar(3, coluna));
        QCOMPARE(controle->size(), m.grade()->cellRect(3, coluna).size());
        QCOMPARE(controle->accessibleName(), m.celula(0, coluna));
        if (coluna != colunas::FormaPagto)
            QCOMPARE(m.editor()->selectedText(), m.celula(3, coluna));

        const QRect antes = controle->geometry();
        m.grade()->verticalScrollBar()->setValue(1);
        QCOMPARE(controle->geometry(), m.lugar(3, coluna));
        QCOMPARE(controle->geometry().top(), antes.top() - m.grade()->rowHeight(0));
        m.painel().resize(m.painel().size() + QSize(37, 53));
        QCoreApplication::processEvents();
        QCOMPARE(controle->geometry(), m.lugar(3, coluna));
        m.grade()->verticalScrollBar()->setValue(40);
        QVERIFY(controle->height() <= 1);
        QVERIFY(controle->hasFocus());
        m.grade()->verticalScrollBar()->setValue(0);
        QCOMPARE(controle->geometry(), antes);
    }

    void abreSoComOTeclado() {
        umaPv(30, u"BOLETO"_s);
        m.grade()->setFocus();
        m.grade()->setCurrentCell(1, colunas::Total);
        Balcao::tecla(Qt::Key_Right);
        Balcao::tecla(Qt::Key_Space);
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"30"_s);
        Balcao::digita(u"21"_s);
        Balcao::tecla(Qt::Key_Enter);
        QCOMPARE(m.celula(1, colunas::DiasVenc), u"21"_s);
        QVERIFY(m.focoNaGrade());

        Balcao::tecla(Qt::Key_Right);
        Balcao::tecla(Qt::Key_Space);
        QVERIFY(m.combo()->hasFocus());
        Balcao::tecla(Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(m.combo()->view()->isVisible());
        QTest::keyClick(m.combo()->view(), Qt::Key_Down);
        QTest::keyClick(m.combo()->view(), Qt::Key_Return);
        QTRY_VERIFY(!m.combo()->view()->isVisible());
        QVERIFY(m.combo()->hasFocus());
        QCOMPARE(m.combo()->currentText(), u"PIX"_s);
        QCOMPARE(m.textos().size(), 1);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.celula(1, colunas::FormaPagto), u"PIX"_s);
        QCOMPARE(m.textos().size(), 2);
    }

    void escapeNaListaAbertaFechaSoALista() {
        umaPv(30, u"BOLETO"_s);
        m.clica(1, colunas::FormaPagto);
        m.combo()->showPopup();
        QTRY_VERIFY(m.combo()->view()->isVisible());
        QTest::keyClick(m.combo()->view(), Qt::Key_Escape);
        QTRY_VERIFY(!m.combo()->view()->isVisible());
        QVERIFY(m.combo()->isVisible());
        QCOMPARE(m.textos(), QStringList());
    }

    void listaAbertaMostraOsTextosInteiros() {
        m.servidor.executa(u"INSERT INTO Finalizadoras VALUES (6,'CARTÃO DE CRÉDITO PARCELADO 12X','N')"_s);
        umaPv(30, u"BOLETO"_s);
        m.clica(1, colunas::FormaPagto);
        m.combo()->showPopup();
        QTRY_VERIFY(m.combo()->view()->isVisible());
        QVERIFY(m.combo()->view()->viewport()->width() >= m.combo()->view()->sizeHintForColumn(0));
        m.combo()->hidePopup();
    }

    void tabelaTambemSeEditaNosDavs() {
        m.cliente(u"C1"_s, u"CLIENTE UM"_s, 30, u"BOLETO"_s, u"2"_s);
        m.documento(u"D"_s, 9, u"C1"_s, u"ANA"_s, {{u"X"_s, u"1"_s, u"1"_s}});
        m.abre();
        m.clica(1, colunas::Tabela);
        Balcao::digita(u"4"_s);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.textos(), QStringList{gravaTabela(u"4"_s, u"0001"_s)});
    }

    void soALinhaClicadaMudaNaTela() {
        m.preVenda(2, u"C1"_s);
        umaPv(30, u"BOLETO"_s);
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"60"_s);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(m.celula(1, colunas::DiasVenc), u"60"_s);
        QCOMPARE(m.celula(2, colunas::DiasVenc), u"30"_s);
        QCOMPARE(termosGravados()[0], u"60"_s);
    }

    void cabecalhoNaoAbreEditor() {
        umaPv(30, u"BOLETO"_s);
        QTest::mouseClick(
            m.painel().windowHandle(), Qt::LeftButton, Qt::NoModifier,
            m.grade()->mapTo(&m.painel(), QPoint(m.grade()->cellRect(1, colunas::Tabela).center().x(),
                                                 m.grade()->cellRect(1, 0).top() / 2)));
        QVERIFY(!m.editor()->isVisible());
    }

    void falhaAoGravarDeixaACelula() {
        umaPv(30, u"DINHEIRO"_s);
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"5"_s);
        m.servidor.mataConexoesDoPrograma();
        ModalHelper caixas;
        caixas.esperaContendo(u"A conexão com o banco de dados foi perdida"_s, QMessageBox::Ok);
        Balcao::tecla(Qt::Key_Return);
        QCOMPARE(caixas.confere(), QString());
        QVERIFY(!m.editor()->isVisible());
        QCOMPARE(termosNaTela(), QStringList({u"30"_s, u"DINHEIRO"_s, u"1"_s}));
    }
};

QTEST_MAIN(TestEdicao)
#include "tst_edicao.moc"

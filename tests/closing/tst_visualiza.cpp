// Looking at a document from the panel.

#include "closing/Balcao.h"
#include "closing/Colunas.h"
#include "core/AcessoDados.h"
#include "support/ModalHelper.h"

#include <QDialog>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

class TestVisualiza : public QObject {
    Q_OBJECT

  private:
    Balcao m;

    void prepara(const QString& tipo = u"P"_s) {
        m.zera();
        m.produto(u"A"_s, QStringList(4, u"1"_s));
        m.produto(u"***ENTREGA"_s, QStringList(4, u"15"_s));
        m.cliente(u"C1"_s, u"D'ÁVILA E FILHOS"_s, 28, u"BOLETO"_s, u"3"_s);
        m.documento(tipo, 7, u"C1"_s, u"ANA MARIA"_s,
                    {{u"A"_s, u"1234.5"_s, u"1.1"_s},
                     {u"***LIGAR ANTES"_s, u"0"_s, u"0"_s},
                     {u"***ENTREGA"_s, u"1"_s, u"15"_s},
                     {u"SUMIU"_s, u"2"_s, u"0.5"_s}});
        m.servidor.executa(u"UPDATE orcamento SET dataabertura = CURDATE() - INTERVAL 2 DAY"_s);
        m.abre();
    }

    static QString campo(const QWidget* tela, const char* nome) {
        const auto* caixa = tela->findChild<QLineEdit*>(QLatin1StringView(nome));
        return caixa ? caixa->text() : u"no such field"_s;
    }

    /// The text of the screen's cells, row by row; row 0 is the header.
    static QStringList itens(const QWidget* tela) {
        const auto* grade = tela->findChild<Grid*>(u"GridItens"_s);
        QStringList linhas;
        for (int linha = 0; linha < grade->rows(); ++linha) {
            QStringList celulas;
            for (int coluna = 0; coluna < grade->columns(); ++coluna)
                celulas += grade->text(linha, coluna);
            linhas += celulas.join(u'|');
        }
        return linhas;
    }

    QStringList tudoDoPainel() const {
        QStringList textos = {m.grade()->text(0, 0)};
        for (int linha = 1; linha < m.grade()->rows(); ++linha)
            for (int coluna = 0; coluna < m.grade()->columns(); ++coluna)
                textos += m.celula(linha, coluna);
        return textos;
    }

  private Q_SLOTS:
    void cleanup() { m.fecha(); }

    void mostraODocumento_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("nome");
        QTest::newRow("pre-sale") << u"P"_s << u"Pré-venda"_s;
        QTest::newRow("DAV") << u"D"_s << u"DAV"_s;
    }

    void mostraODocumento() {
        QFETCH(QString, tipo);
        QFETCH(QString, nome);
        prepara(tipo);
        const QStringList antes = tudoDoPainel();
        const QString data = m.valor(u"SELECT DATE_FORMAT(CURDATE() - INTERVAL 2 DAY, '%d/%m/%Y')"_s);
        ModalHelper janelas;
        bool vista = false;
        janelas.aoAbrir([&](QWidget* tela) {
            vista = true;
            QCOMPARE(tela->objectName(), u"VisualizaPedido"_s);
            QVERIFY(tela->isModal());
            QCOMPARE(campo(tela, "Pedido"), u"7"_s);
            QCOMPARE(campo(tela, "Tipo"), nome);
            QCOMPARE(campo(tela, "Situacao"), u"Aberto"_s);
            QCOMPARE(campo(tela, "Data"), data);
            QCOMPARE(campo(tela, "CodigoCli"), u"C1"_s);
            QCOMPARE(campo(tela, "Cliente"), u"D'ÁVILA E FILHOS"_s);
            QCOMPARE(campo(tela, "Fantasia"), u"FANTASIA"_s);
            QCOMPARE(campo(tela, "Cidade"), u"CAMPINAS"_s);
            QCOMPARE(campo(tela, "Vendedor"), u"ANA MARIA"_s);
            QCOMPARE(campo(tela, "DiasVenc"), u"28"_s);
            QCOMPARE(campo(tela, "FormaPagto"), u"BOLETO"_s);
            QCOMPARE(campo(tela, "Tabela"), u"3"_s);
            QCOMPARE(campo(tela, "Total"), u"1.373,95"_s);
            QCOMPARE(itens(tela),
                     QStringList({u"CÓDIGO|DESCRIÇÃO|QUANTIDADE|R$ UNITÁRIO|R$ TOTAL"_s,
                                  u"A|PRODUTO A|1.234,500|1,10|1.357,95"_s, u"***LIGAR ANTES||||"_s,
                                  u"***ENTREGA PRODUTO ***ENTREGA||1,000|15,00|15,00"_s,
                                  u"SUMIU||2,000|0,50|1,00"_s}));
            const auto* grade = tela->findChild<Grid*>(u"GridItens"_s);
            QCOMPARE(grade->columnSpan(1, 0), 5);
            QCOMPARE(grade->columnSpan(2, 0), 2);
            for (const QLineEdit* caixa : tela->findChildren<QLineEdit*>()) {
                QVERIFY(caixa->isReadOnly());
                QVERIFY(!caixa->accessibleName().isEmpty());
            }
            QVERIFY(grade->hasFocus());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        });
        m.duploClique(1, colunas::Cliente);
        QVERIFY(vista);
        QCOMPARE(janelas.confere(), QString());
        QVERIFY(m.painel().isVisible());
        QCOMPARE(tudoDoPainel(), antes);
        QCOMPARE(m.textos().size(), 1);
        QVERIFY(m.textos()[0].startsWith(u"SELECT o.nrpedido, "_s));
    }

    void abreDeTodaColunaAteOTotal_data() {
        QTest::addColumn<int>("coluna");
        for (int coluna = colunas::Pedido; coluna <= colunas::Total; ++coluna)
            QTest::addRow("column %d", coluna) << coluna;
    }

    void abreDeTodaColunaAteOTotal() {
        QFETCH(int, coluna);
        prepara();
        ModalHelper janelas;
        janelas.aoAbrir([](QWidget* tela) { QTest::keyClick(tela, Qt::Key_Escape); });
        m.duploClique(1, coluna);
        QCOMPARE(janelas.confere(), QString());
        QVERIFY(m.grade()->isTicked(1));
        QVERIFY(!m.editor()->isVisible());
    }

    void f3NaLinhaAbre() {
        prepara();
        m.grade()->setFocus();
        m.grade()->setCurrentCell(1, colunas::Tabela);
        ModalHelper janelas;
        janelas.aoAbrir([](QWidget* tela) {
            QTest::mouseClick(tela->findChild<QPushButton*>(u"Fechar"_s), Qt::LeftButton);
        });
        QTest::keyClick(m.painel().windowHandle(), Qt::Key_F3);
        QCOMPARE(janelas.confere(), QString());
        QVERIFY(m.focoNaGrade());
    }

    void f3GravaOQueSeEdita() {
        prepara();
        m.clica(1, colunas::DiasVenc);
        Balcao::digita(u"35"_s);
        ModalHelper janelas;
        janelas.aoAbrir([](QWidget* tela) {
            QCOMPARE(campo(tela, "DiasVenc"), u"35"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        QTest::keyClick(m.painel().windowHandle(), Qt::Key_F3);
        QCOMPARE(janelas.confere(), QString());
    }

    void f3SemLinhaNaoFazNada() {
        prepara();
        m.servidor.executa(u"DELETE FROM orcamento"_s);
        m.botao("Command3")->setEnabled(true);
        m.clica("Command3");
        m.marca();
        ModalHelper janelas;
        QTest::keyClick(m.painel().windowHandle(), Qt::Key_F3);
        QCOMPARE(janelas.confere(), QString());
        QCOMPARE(m.textos(), QStringList());
    }

    void nasColunasDeEdicaoSaoDoisCliques() {
        prepara();
        ModalHelper janelas; // nothing is announced, so nothing may open
        m.duploClique(1, colunas::Selecao);
        QVERIFY(m.grade()->isTicked(1));
        m.clica(1, colunas::Selecao);
        QVERIFY(!m.grade()->isTicked(1));
        m.duploClique(1, colunas::Selecao);
        QVERIFY(!m.grade()->isTicked(1));
        QCOMPARE(m.textos(), QStringList());

        m.duploClique(1, colunas::DiasVenc);
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"28"_s);
        QCOMPARE(m.textos(), QStringList());
        Balcao::tecla(Qt::Key_Return);

        m.duploClique(1, colunas::FormaPagto);
        QVERIFY(m.combo()->isVisible());
        m.combo()->hidePopup();
        QCOMPARE(janelas.confere(), QString());
    }

    void documentoQueSumiuAvisa() {
        prepara();
        m.servidor.executa(u"UPDATE orcamento SET nrpedido = 8"_s);
        ModalHelper caixas;
        caixas.espera(u"O pedido não foi encontrado no banco de dados. Verifique!!!"_s, QMessageBox::Ok);
        m.duploClique(1, colunas::Pedido);
        QCOMPARE(caixas.confere(), QString());
    }

    void camposVaziosNaoQuebram() {
        prepara();
        m.servidor.executa(
            u"DELETE FROM clientes; UPDATE orcamento SET codigocli = NULL, nomevendedor = NULL, "
            "quantidade = NULL, unitario = NULL, totalped = NULL, situacaoorc = 'X'"_s);
        ModalHelper janelas;
        janelas.aoAbrir([](QWidget* tela) {
            QCOMPARE(campo(tela, "Situacao"), u"Cancelado"_s);
            QCOMPARE(campo(tela, "Cliente"), QString());
            QCOMPARE(campo(tela, "Total"), u"0,00"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.duploClique(1, colunas::Pedido);
        QCOMPARE(janelas.confere(), QString());
    }

    void naoPerturbaORecordsetAberto() {
        prepara();
        QVERIFY(AbreRS(u"SELECT 1 AS um UNION SELECT 2"_s));
        ModalHelper janelas;
        janelas.aoAbrir([](QWidget* tela) { QTest::keyClick(tela, Qt::Key_Escape); });
        m.duploClique(1, colunas::Pedido);
        QCOMPARE(rs.field(u"um").text(), u"1"_s);
        rs.moveNext();
        QCOMPARE(rs.field(u"um").text(), u"2"_s);
        rs.close();
    }

    void milItens() {
        m.zera();
        m.cliente(u"C1"_s, u"UM"_s, 28, u"BOLETO"_s, u"3"_s);
        QList<Item> itens;
        for (int i = 0; i < 1000; ++i)
            itens += Item{i % 10 == 0 ? u"***N"_s : u"A"_s, u"1"_s, u"2"_s};
        m.documento(u"P"_s, 7, u"C1"_s, u"ANA"_s, itens);
        m.abre();
        ModalHelper janelas;
        janelas.aoAbrir([](QWidget* tela) {
            QCOMPARE(tela->findChild<Grid*>(u"GridItens"_s)->rows(), 1001);
            QCOMPARE(campo(tela, "Total"), u"2.000,00"_s);
            QVERIFY(tela->height() <= tela->screen()->availableSize().height());
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.duploClique(1, colunas::Pedido);
        QCOMPARE(janelas.confere(), QString());
    }
};

QTEST_MAIN(TestVisualiza)
#include "tst_visualiza.moc"

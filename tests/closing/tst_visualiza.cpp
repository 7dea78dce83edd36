// Looking at a document from the panel.

#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "core/AcessoDados.h"
#include "support/ModalHelper.h"

#include <QDialog>
#include <QLabel>
#include <QScopeGuard>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

class TstVisualiza : public QObject {
    Q_OBJECT

  private:
    PanelBench m;

    void prepara(const QString& tipo = u"P"_s) {
        m.reset();
        m.shop().basicoDosDocumentos();
        m.shop().produto({.codigo = u"A"_s, .descricao = u"PRODUTO A"_s, .precos = QList<Valor>(4, u"1"_s)});
        m.shop().produto({.codigo = u"***ENTREGA"_s,
                          .descricao = u"PRODUTO ***ENTREGA"_s,
                          .precos = QList<Valor>(4, u"15"_s)});
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"D'ÁVILA E FILHOS"_s,
                          .prazo = u"28"_s,
                          .formaPg = u"BOLETO"_s,
                          .colunaPreco = u"3"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        m.shop().documento(
            {.pedido = 7,
             .tipo = tipo,
             .nomeVendedor = u"ANA MARIA"_s,
             .diasAtras = 2,
             .linhas = {aoPreco(u"A"_s, u"1234.5"_s, u"1.1"_s), aoPreco(u"***LIGAR ANTES"_s, u"0"_s, u"0"_s),
                        aoPreco(u"***ENTREGA"_s, u"1"_s, u"15"_s), aoPreco(u"SUMIU"_s, u"2"_s, u"0.5"_s)},
             .controle = false});
        QVERIFY(m.open(PanelBench::wide));
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
        QStringList textos = {m.grid()->text(0, 0)};
        for (int linha = 1; linha < m.grid()->rows(); ++linha)
            for (int coluna = 0; coluna < m.grid()->columns(); ++coluna)
                textos += m.cell(linha, coluna);
        return textos;
    }

  private Q_SLOTS:
    void cleanup() { m.close(); }

    void showsTheDocument_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("nome");
        QTest::newRow("pre-sale") << u"P"_s << u"Pré-venda"_s;
        QTest::newRow("DAV") << u"D"_s << u"DAV"_s;
    }

    void showsTheDocument() {
        QFETCH(QString, tipo);
        QFETCH(QString, nome);
        prepara(tipo);
        const QStringList antes = tudoDoPainel();
        const QString data = u"13/03/2024"_s;
        ModalHelper janelas;
        bool vista = false;
        janelas.onOpen([&](QWidget* tela) {
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
        m.clickTwice(1, colunas::Cliente);
        QVERIFY(vista);
        QCOMPARE(janelas.problem(), QString());
        QVERIFY(m.panel()->isVisible());
        QCOMPARE(tudoDoPainel(), antes);
        QCOMPARE(m.texts().size(), 1);
        QVERIFY(m.texts()[0].startsWith(u"SELECT o.nrpedido, "_s));
    }

    void opensFromEveryColumnUpToTheTotal_data() {
        QTest::addColumn<int>("coluna");
        for (int coluna = colunas::Pedido; coluna <= colunas::Total; ++coluna)
            QTest::addRow("column %d", coluna) << coluna;
    }

    void opensFromEveryColumnUpToTheTotal() {
        QFETCH(int, coluna);
        prepara();
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) { QTest::keyClick(tela, Qt::Key_Escape); });
        m.clickTwice(1, coluna);
        QCOMPARE(janelas.problem(), QString());
        QVERIFY(m.grid()->isTicked(1));
        QVERIFY(!m.editor()->isVisible());
    }

    void f3NaLinhaAbre() {
        prepara();
        m.grid()->setFocus();
        m.grid()->setCurrentCell(1, colunas::Tabela);
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QTest::mouseClick(tela->findChild<QPushButton*>(u"Fechar"_s), Qt::LeftButton);
        });
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_F3);
        QCOMPARE(janelas.problem(), QString());
        QVERIFY(m.gridHasFocus());
    }

    void f3GravaOQueSeEdita() {
        prepara();
        m.click(1, colunas::DiasVenc);
        m.type(u"35"_s);
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QCOMPARE(campo(tela, "DiasVenc"), u"35"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_F3);
        QCOMPARE(janelas.problem(), QString());
    }

    void f3SemLinhaNaoFazNada() {
        prepara();
        m.server().execute(u"DELETE FROM orcamento"_s);
        m.button(u"Command3"_s)->setEnabled(true);
        m.press(u"Command3"_s);
        m.mark();
        ModalHelper janelas;
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_F3);
        QCOMPARE(janelas.problem(), QString());
        QCOMPARE(m.texts(), QStringList());
    }

    void editedColumnsTakeTwoClicks() {
        prepara();
        ModalHelper janelas; // nothing is announced, so nothing may open
        m.clickTwice(1, colunas::Selecao);
        QVERIFY(m.grid()->isTicked(1));
        m.click(1, colunas::Selecao);
        QVERIFY(!m.grid()->isTicked(1));
        m.clickTwice(1, colunas::Selecao);
        QVERIFY(!m.grid()->isTicked(1));
        QCOMPARE(m.texts(), QStringList());

        m.clickTwice(1, colunas::DiasVenc);
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"28"_s);
        QCOMPARE(m.texts(), QStringList());
        m.key(Qt::Key_Return);

        m.clickTwice(1, colunas::FormaPagto);
        QVERIFY(m.methods()->isVisible());
        m.methods()->hidePopup();
        QCOMPARE(janelas.problem(), QString());
    }

    void missingDocumentIsTold() {
        prepara();
        m.server().execute(u"UPDATE orcamento SET nrpedido = 8"_s);
        ModalHelper caixas;
        caixas.expect(u"O pedido não foi encontrado no banco de dados. Verifique!!!"_s, QMessageBox::Ok);
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(caixas.problem(), QString());
    }

    void emptyFieldsDoNoHarm() {
        prepara();
        m.server().execute(
            u"DELETE FROM clientes; UPDATE orcamento SET codigocli = NULL, nomevendedor = NULL, "
            "quantidade = NULL, unitario = NULL, totalped = NULL, situacaoorc = 'X'"_s);
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QCOMPARE(campo(tela, "Situacao"), u"Cancelado"_s);
            QCOMPARE(campo(tela, "Cliente"), QString());
            QCOMPARE(campo(tela, "Total"), u"0,00"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void settledDocumentAndNoMethod() {
        prepara();
        m.server().execute(
            u"UPDATE orcamento SET situacaoorc = 'B'; UPDATE clientes SET formapg = '(Nenhuma)'"_s);
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QCOMPARE(campo(tela, "Situacao"), u"Fechado"_s);
            QCOMPARE(campo(tela, "FormaPagto"), u"DINHEIRO"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void methodNoneByExactCase() {
        prepara();
        m.server().execute(u"UPDATE clientes SET formapg = '(NENHUMA)'"_s);
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QCOMPARE(campo(tela, "FormaPagto"), u"(NENHUMA)"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void doubleRowsOfACodeDoNotDoubleTheLines() {
        prepara();
        const auto semChaves = [this](const QString& tabela) {
            for (const QStringList& chave : m.server().query(
                     u"SELECT DISTINCT INDEX_NAME FROM information_schema.STATISTICS WHERE "
                     u"TABLE_SCHEMA=DATABASE() "
                     "AND TABLE_NAME='%1' AND NON_UNIQUE=0 AND COLUMN_NAME IN ('codigo','codfabr')"_s.arg(
                         tabela)))
                m.server().execute(u"ALTER TABLE %1_dobro DROP KEY `%2`"_s.arg(tabela, chave[0]));
        };
        // Copies without unique codes stand in for the tables.
        for (const QString& tabela : {u"clientes"_s, u"produtos"_s}) {
            m.server().execute(u"CREATE TABLE %1_dobro LIKE %1"_s.arg(tabela));
            semChaves(tabela);
            m.server().execute(
                u"INSERT INTO %1_dobro SELECT * FROM %1; INSERT INTO %1_dobro SELECT * FROM %1; "
                "RENAME TABLE %1 TO %1_fora, %1_dobro TO %1"_s.arg(tabela));
        }
        const auto volta = qScopeGuard([this] {
            for (const QString& tabela : {u"clientes"_s, u"produtos"_s})
                m.server().execute(u"DROP TABLE %1; RENAME TABLE %1_fora TO %1"_s.arg(tabela));
        });
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QCOMPARE(itens(tela).size(), 5);
            QCOMPARE(campo(tela, "Total"), u"1.373,95"_s);
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void enterCloses_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("from");
        QTest::newRow("in the lines") << Qt::Key_Return << u"GridItens"_s;
        QTest::newRow("in a field") << Qt::Key_Enter << u"Cliente"_s;
    }

    void enterCloses() {
        QFETCH(Qt::Key, key);
        QFETCH(QString, from);
        prepara();
        ModalHelper janelas;
        janelas.onOpen([&](QWidget* tela) {
            auto* control = tela->findChild<QWidget*>(from);
            control->setFocus();
            QTest::keyClick(control, key);
            QVERIFY(!tela->isVisible());
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void readOnlyFieldsLookReadOnly() {
        prepara();
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            const QImage imagem = tela->grab().toImage();
            const auto cor = [&](const QWidget* controle, QPoint ponto) {
                return imagem.pixelColor(controle->mapTo(tela, ponto) * imagem.devicePixelRatio());
            };
            const auto* fantasia = tela->findChild<QLineEdit*>(u"Fantasia"_s);
            const QPoint vazio = fantasia->rect().center() + QPoint(fantasia->width() / 4, 0);
            QCOMPARE(cor(fantasia, vazio), tela->palette().color(QPalette::Window));
            QVERIFY(tela->palette().color(QPalette::Window) != tela->palette().color(QPalette::Base));
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void altFCloses() {
        prepara();
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QVERIFY(QTest::qWaitForWindowActive(tela));
            QVERIFY(tela->findChild<QPushButton*>(u"Fechar"_s)->toolTip().contains(u"Alt+F"_s));
            QTest::keyClick(tela->windowHandle(), Qt::Key_F, Qt::AltModifier);
            QTRY_VERIFY(!tela->isVisible());
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }

    void leavesTheOpenResultAlone() {
        prepara();
        QVERIFY(AbreRS(u"SELECT 1 AS um UNION SELECT 2"_s));
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) { QTest::keyClick(tela, Qt::Key_Escape); });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(rs.field(u"um").text(), u"1"_s);
        rs.moveNext();
        QCOMPARE(rs.field(u"um").text(), u"2"_s);
        rs.close();
    }

    void thousandItems() {
        m.reset();
        m.shop().basicoDosDocumentos();
        m.shop().cliente({.codigo = u"C1"_s,
                          .nome = u"UM"_s,
                          .prazo = u"28"_s,
                          .formaPg = u"BOLETO"_s,
                          .colunaPreco = u"3"_s,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        QList<Linha> itens;
        for (int i = 0; i < 1000; ++i)
            itens += aoPreco(i % 10 == 0 ? u"***N"_s : u"A"_s, u"1"_s, u"2"_s);
        m.shop().documento({.pedido = 7, .diasAtras = 0, .linhas = itens, .controle = false});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper janelas;
        janelas.onOpen([](QWidget* tela) {
            QCOMPARE(tela->findChild<Grid*>(u"GridItens"_s)->rows(), 1001);
            QCOMPARE(campo(tela, "Total"), u"2.000,00"_s);
            QVERIFY(tela->height() <= tela->screen()->availableSize().height());
            QTest::keyClick(tela, Qt::Key_Escape);
        });
        m.clickTwice(1, colunas::Pedido);
        QCOMPARE(janelas.problem(), QString());
    }
};

QTEST_MAIN(TstVisualiza)
#include "tst_visualiza.moc"

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

    void prepare(const QString& tipo = u"P"_s) {
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

    static QString field(const QWidget* screen, const char* name) {
        const auto* box = screen->findChild<QLineEdit*>(QLatin1StringView(name));
        return box ? box->text() : u"no such field"_s;
    }

    /// The text of the screen's cells, row by row; row 0 is the header.
    static QStringList items(const QWidget* screen) {
        const auto* grid = screen->findChild<Grid*>(u"GridItens"_s);
        QStringList linhas;
        for (int row = 0; row < grid->rows(); ++row) {
            QStringList cells;
            for (int column = 0; column < grid->columns(); ++column)
                cells += grid->text(row, column);
            linhas += cells.join(u'|');
        }
        return linhas;
    }

    QStringList tudoDoPainel() const {
        QStringList texts = {m.grid()->text(0, 0)};
        for (int row = 1; row < m.grid()->rows(); ++row)
            for (int column = 0; column < m.grid()->columns(); ++column)
                texts += m.cell(row, column);
        return texts;
    }

  private Q_SLOTS:
    void cleanup() { m.close(); }

    void showsTheDocument_data() {
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("name");
        QTest::newRow("pre-sale") << u"P"_s << u"Pré-venda"_s;
        QTest::newRow("DAV") << u"D"_s << u"DAV"_s;
    }

    void showsTheDocument() {
        QFETCH(QString, tipo);
        QFETCH(QString, name);
        prepare(tipo);
        const QStringList before = tudoDoPainel();
        const QString data = u"13/03/2024"_s;
        ModalHelper windows;
        bool seen = false;
        windows.onOpen([&](QWidget* screen) {
            seen = true;
            QCOMPARE(screen->objectName(), u"VisualizaPedido"_s);
            QVERIFY(screen->isModal());
            QCOMPARE(field(screen, "Pedido"), u"7"_s);
            QCOMPARE(field(screen, "Tipo"), name);
            QCOMPARE(field(screen, "Situacao"), u"Aberto"_s);
            QCOMPARE(field(screen, "Data"), data);
            QCOMPARE(field(screen, "CodigoCli"), u"C1"_s);
            QCOMPARE(field(screen, "Cliente"), u"D'ÁVILA E FILHOS"_s);
            QCOMPARE(field(screen, "Fantasia"), u"FANTASIA"_s);
            QCOMPARE(field(screen, "Cidade"), u"CAMPINAS"_s);
            QCOMPARE(field(screen, "Vendedor"), u"ANA MARIA"_s);
            QCOMPARE(field(screen, "DiasVenc"), u"28"_s);
            QCOMPARE(field(screen, "FormaPagto"), u"BOLETO"_s);
            QCOMPARE(field(screen, "Tabela"), u"3"_s);
            QCOMPARE(field(screen, "Total"), u"1.373,95"_s);
            QCOMPARE(items(screen),
                     QStringList({u"CÓDIGO|DESCRIÇÃO|QUANTIDADE|R$ UNITÁRIO|R$ TOTAL"_s,
                                  u"A|PRODUTO A|1.234,500|1,10|1.357,95"_s, u"***LIGAR ANTES||||"_s,
                                  u"***ENTREGA PRODUTO ***ENTREGA||1,000|15,00|15,00"_s,
                                  u"SUMIU||2,000|0,50|1,00"_s}));
            const auto* grid = screen->findChild<Grid*>(u"GridItens"_s);
            QCOMPARE(grid->columnSpan(1, 0), 5);
            QCOMPARE(grid->columnSpan(2, 0), 2);
            for (const QLineEdit* box : screen->findChildren<QLineEdit*>()) {
                QVERIFY(box->isReadOnly());
                QVERIFY(!box->accessibleName().isEmpty());
            }
            QVERIFY(grid->hasFocus());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Cliente);
        QVERIFY(seen);
        QCOMPARE(windows.problem(), QString());
        QVERIFY(m.panel()->isVisible());
        QCOMPARE(tudoDoPainel(), before);
        QCOMPARE(m.texts().size(), 1);
        QVERIFY(m.texts()[0].startsWith(u"SELECT o.nrpedido, "_s));
    }

    void opensFromEveryColumnUpToTheTotal_data() {
        QTest::addColumn<int>("column");
        for (int column = painelfechamento::Pedido; column <= painelfechamento::Total; ++column)
            QTest::addRow("column %d", column) << column;
    }

    void opensFromEveryColumnUpToTheTotal() {
        QFETCH(int, column);
        prepare();
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) { QTest::keyClick(screen, Qt::Key_Escape); });
        m.clickTwice(1, column);
        QCOMPARE(windows.problem(), QString());
        QVERIFY(m.grid()->isTicked(1));
        QVERIFY(!m.editor()->isVisible());
    }

    void f3NaLinhaAbre() {
        prepare();
        m.grid()->setFocus();
        m.grid()->setCurrentCell(1, painelfechamento::Tabela);
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QTest::mouseClick(screen->findChild<QPushButton*>(u"Fechar"_s), Qt::LeftButton);
        });
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_F3);
        QCOMPARE(windows.problem(), QString());
        QVERIFY(m.gridHasFocus());
    }

    void f3GravaOQueSeEdita() {
        prepare();
        m.click(1, painelfechamento::DiasVenc);
        m.type(u"35"_s);
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QCOMPARE(field(screen, "DiasVenc"), u"35"_s);
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_F3);
        QCOMPARE(windows.problem(), QString());
    }

    void f3SemLinhaNaoFazNada() {
        prepare();
        m.server().execute(u"DELETE FROM orcamento"_s);
        m.button(u"Command3"_s)->setEnabled(true);
        m.press(u"Command3"_s);
        m.mark();
        ModalHelper windows;
        QTest::keyClick(m.panel()->windowHandle(), Qt::Key_F3);
        QCOMPARE(windows.problem(), QString());
        QCOMPARE(m.texts(), QStringList());
    }

    void editedColumnsTakeTwoClicks() {
        prepare();
        ModalHelper windows; // nothing is announced, so nothing may open
        m.clickTwice(1, painelfechamento::Selecao);
        QVERIFY(m.grid()->isTicked(1));
        m.click(1, painelfechamento::Selecao);
        QVERIFY(!m.grid()->isTicked(1));
        m.clickTwice(1, painelfechamento::Selecao);
        QVERIFY(!m.grid()->isTicked(1));
        QCOMPARE(m.texts(), QStringList());

        m.clickTwice(1, painelfechamento::DiasVenc);
        QVERIFY(m.editor()->hasFocus());
        QCOMPARE(m.editor()->text(), u"28"_s);
        QCOMPARE(m.texts(), QStringList());
        m.key(Qt::Key_Return);

        m.clickTwice(1, painelfechamento::FormaPagto);
        QVERIFY(m.methods()->isVisible());
        m.methods()->hidePopup();
        QCOMPARE(windows.problem(), QString());
    }

    void missingDocumentIsTold() {
        prepare();
        m.server().execute(u"UPDATE orcamento SET nrpedido = 8"_s);
        ModalHelper boxes;
        boxes.expect(u"O pedido não foi encontrado no banco de dados. Verifique!!!"_s, QMessageBox::Ok);
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(boxes.problem(), QString());
    }

    void emptyFieldsDoNoHarm() {
        prepare();
        m.server().execute(
            u"DELETE FROM clientes; UPDATE orcamento SET codigocli = NULL, nomevendedor = NULL, "
            "quantidade = NULL, unitario = NULL, totalped = NULL, situacaoorc = 'X'"_s);
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QCOMPARE(field(screen, "Situacao"), u"Cancelado"_s);
            QCOMPARE(field(screen, "Cliente"), QString());
            QCOMPARE(field(screen, "Total"), u"0,00"_s);
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }

    void settledDocumentAndNoMethod() {
        prepare();
        m.server().execute(
            u"UPDATE orcamento SET situacaoorc = 'B'; UPDATE clientes SET formapg = '(Nenhuma)'"_s);
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QCOMPARE(field(screen, "Situacao"), u"Fechado"_s);
            QCOMPARE(field(screen, "FormaPagto"), u"DINHEIRO"_s);
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }

    void methodNoneByExactCase() {
        prepare();
        m.server().execute(u"UPDATE clientes SET formapg = '(NENHUMA)'"_s);
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QCOMPARE(field(screen, "FormaPagto"), u"(NENHUMA)"_s);
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }

    void doubleRowsOfACodeDoNotDoubleTheLines() {
        prepare();
        const auto withoutKeys = [this](const QString& table) {
            for (const QStringList& keyName : m.server().query(
                     u"SELECT DISTINCT INDEX_NAME FROM information_schema.STATISTICS WHERE "
                     u"TABLE_SCHEMA=DATABASE() "
                     "AND TABLE_NAME='%1' AND NON_UNIQUE=0 AND COLUMN_NAME IN ('codigo','codfabr')"_s.arg(
                         table)))
                m.server().execute(u"ALTER TABLE %1_dobro DROP KEY `%2`"_s.arg(table, keyName[0]));
        };
        // Copies without unique codes stand in for the tables.
        for (const QString& table : {u"clientes"_s, u"produtos"_s}) {
            m.server().execute(u"CREATE TABLE %1_dobro LIKE %1"_s.arg(table));
            withoutKeys(table);
            m.server().execute(
                u"INSERT INTO %1_dobro SELECT * FROM %1; INSERT INTO %1_dobro SELECT * FROM %1; "
                "RENAME TABLE %1 TO %1_fora, %1_dobro TO %1"_s.arg(table));
        }
        const auto back = qScopeGuard([this] {
            for (const QString& table : {u"clientes"_s, u"produtos"_s})
                m.server().execute(u"DROP TABLE %1; RENAME TABLE %1_fora TO %1"_s.arg(table));
        });
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QCOMPARE(items(screen).size(), 5);
            QCOMPARE(field(screen, "Total"), u"1.373,95"_s);
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
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
        prepare();
        ModalHelper windows;
        windows.onOpen([&](QWidget* screen) {
            auto* control = screen->findChild<QWidget*>(from);
            control->setFocus();
            QTest::keyClick(control, key);
            QVERIFY(!screen->isVisible());
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }

    void readOnlyFieldsLookReadOnly() {
        prepare();
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            const QImage image = screen->grab().toImage();
            const auto colour = [&](const QWidget* of, QPoint ponto) {
                return image.pixelColor(of->mapTo(screen, ponto) * image.devicePixelRatio());
            };
            const auto* fantasia = screen->findChild<QLineEdit*>(u"Fantasia"_s);
            const QPoint empty = fantasia->rect().center() + QPoint(fantasia->width() / 4, 0);
            QCOMPARE(colour(fantasia, empty), screen->palette().color(QPalette::Window));
            QVERIFY(screen->palette().color(QPalette::Window) != screen->palette().color(QPalette::Base));
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }

    void altFCloses() {
        prepare();
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QVERIFY(QTest::qWaitForWindowActive(screen));
            QVERIFY(screen->findChild<QPushButton*>(u"Fechar"_s)->toolTip().contains(u"Alt+F"_s));
            QTest::keyClick(screen->windowHandle(), Qt::Key_F, Qt::AltModifier);
            QTRY_VERIFY(!screen->isVisible());
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }

    void leavesTheOpenResultAlone() {
        prepare();
        QVERIFY(AbreRS(u"SELECT 1 AS um UNION SELECT 2"_s));
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) { QTest::keyClick(screen, Qt::Key_Escape); });
        m.clickTwice(1, painelfechamento::Pedido);
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
        QList<Linha> items;
        for (int i = 0; i < 1000; ++i)
            items += aoPreco(i % 10 == 0 ? u"***N"_s : u"A"_s, u"1"_s, u"2"_s);
        m.shop().documento({.pedido = 7, .diasAtras = 0, .linhas = items, .controle = false});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper windows;
        windows.onOpen([](QWidget* screen) {
            QCOMPARE(screen->findChild<Grid*>(u"GridItens"_s)->rows(), 1001);
            QCOMPARE(field(screen, "Total"), u"2.000,00"_s);
            QVERIFY(screen->height() <= screen->screen()->availableSize().height());
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        m.clickTwice(1, painelfechamento::Pedido);
        QCOMPARE(windows.problem(), QString());
    }
};

QTEST_MAIN(TstVisualiza)
#include "tst_visualiza.moc"

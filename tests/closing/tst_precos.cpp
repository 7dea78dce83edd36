// Checking the listed pre-sales against the price tables.

#include "base/ProgramFolder.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/ModalHelper.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString pergunta = u"Deseja realmente o processo desta função?"_s;
const QString head = u"PEDIDOS COM PREÇOS CORRIGIDOS:\n\n"_s;

QString consulta(int numero, const QString& column) {
    return u"Select o.id, o.nrpedido, o.tipooperacao, o.unitario, p.%2 as Vnd From orcamento as o Left Join "
           "produtos as p ON o.codigo=p.codfabr Where o.nrpedido=%1 and o.TipoOperacao='P' and o.unitario <> "
           "p.%2 and p.%2<> 0"_s.arg(numero)
               .arg(column);
}

QString correction(const QString& preco, const QString& id) {
    return u"Update Orcamento Set Unitario=%1, TotalPed=Round(quantidade*%1,2) , UnitarioPAF = %1, TotalPaf "
           u"= "
           "Round(quantidade * %1, 2) Where ID=%2"_s.arg(preco, id);
}

/// Notes what the label showed each time it was painted, and whether it had the room for it.
class LabelPaints : public QObject {
  public:
    explicit LabelPaints(QLabel* caption) : m_caption(caption) { caption->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            m_texts += m_caption->text();
            m_isCut = m_isCut || m_caption->width() < m_caption->sizeHint().width();
        }
        return false;
    }

    QStringList texts() const { return m_texts; }
    bool clipped() const { return m_isCut; }

  private:
    QLabel* m_caption;
    QStringList m_texts;
    bool m_isCut = false;
};

} // namespace

class TstPrecos : public QObject {
    Q_OBJECT

  private:
    PanelBench m;

    QString file() const { return m.programFolder() + u"/LogTarvessa.log"_s; }

    QByteArray log() const {
        QFile read(file());
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray("no file");
    }

    QString id(int numero, const QString& codigo) {
        return m.valor(
            u"SELECT id FROM orcamento WHERE nrpedido=%1 AND codigo='%2'"_s.arg(numero).arg(codigo));
    }

    void pv(int numero, const QString& tabela, const QList<Linha>& items) {
        const QString codigo = u"C%1"_s.arg(numero);
        m.shop().cliente({.codigo = codigo,
                          .nome = u"CLIENTE %1"_s.arg(numero, 4, 10, QChar(u'0')),
                          .prazo = u"0"_s,
                          .formaPg = u"PIX"_s,
                          .colunaPreco = tabela,
                          .cnpjCpf = u"11222333000181"_s,
                          .fantasia = u"FANTASIA"_s,
                          .outros = u"tabelas_preco='9999'"_s});
        m.shop().documento(
            {.pedido = numero, .cliente = codigo, .diasAtras = 0, .linhas = items, .controle = false});
    }

    /// Unit price and total of each line, then those of its fiscal copy.
    QStringList precos(int numero) {
        QStringList lista;
        for (const QStringList& linha : m.server().query(
                 u"SELECT unitario, totalped, UnitarioPAF, TotalPaf FROM orcamento WHERE nrpedido=%1 "
                 "ORDER BY id"_s.arg(numero)))
            lista += linha.join(u' ');
        return lista;
    }

  private Q_SLOTS:
    void init() {
        m.reset();
        m.shop().basicoDosDocumentos();
        m.shop().produto({.codigo = u"A"_s,
                          .descricao = u"PRODUTO A"_s,
                          .precos = {u"10.00"_s, u"20.50"_s, u"30.25"_s, u"0.07"_s}});
        m.shop().produto({.codigo = u"B"_s,
                          .descricao = u"PRODUTO B"_s,
                          .precos = {u"1.00"_s, u"2.00"_s, u"3.00"_s, u"4.00"_s}});
        m.shop().produto({.codigo = u"ZERO"_s,
                          .descricao = u"PRODUTO ZERO"_s,
                          .precos = {u"0.00"_s, u"0.00"_s, u"0.00"_s, u"0.00"_s}});
        m.shop().produto({.codigo = u"NULO"_s,
                          .descricao = u"PRODUTO NULO"_s,
                          .precos = {std::nullopt, std::nullopt, std::nullopt, std::nullopt}});
    }

    void cleanup() { m.close(); }

    void eachTableHasItsColumn() {
        for (int tabela = 0; tabela <= 4; ++tabela)
            pv(10 + tabela, QString::number(tabela), {aoPreco(u"A"_s, u"3"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expect(head + u"PV Nº 11 - CLIENTE 0011\nPV Nº 12 - CLIENTE 0012\nPV Nº 13 - CLIENTE "
                            "0013\nPV Nº 14 - CLIENTE 0014\n"_s,
                     QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.texts().first(8),
                 QStringList({consulta(11, u"Venda"_s), correction(u" 10"_s, id(11, u"A"_s)),
                              consulta(12, u"Venda2"_s), correction(u" 20.5"_s, id(12, u"A"_s)),
                              consulta(13, u"Venda3"_s), correction(u" 30.25"_s, id(13, u"A"_s)),
                              consulta(14, u"Venda4"_s), correction(u" 0.07"_s, id(14, u"A"_s))}));
        QCOMPARE(m.texts().size(), 9); // and the listing again
        QVERIFY(m.texts()[8].contains(u"TipoOperacao='P'"_s));
        QCOMPARE(precos(10), QStringList{u"99.00 297.00 0.00 0.00"_s});
        QCOMPARE(precos(11), QStringList{u"10.00 30.00 10.00 30.00"_s});
        QCOMPARE(precos(12), QStringList{u"20.50 61.50 20.50 61.50"_s});
        QCOMPARE(precos(13), QStringList{u"30.25 90.75 30.25 90.75"_s});
        QCOMPARE(precos(14), QStringList{u"0.07 0.21 0.07 0.21"_s});
        QCOMPARE(m.cell(m.rowOf(11), painelfechamento::Total), u"30,00"_s);
        QCOMPARE(log(), "PV Nº 11 - CLIENTE 0011\r\nPV Nº 12 - CLIENTE 0012\r\nPV Nº 13 - CLIENTE "
                        "0013\r\nPV Nº 14 - CLIENTE 0014\r\n\r\n"_qba);
        QCOMPARE(boxes.boxes()[0].title, u"Atenção!!!"_s);
        QCOMPARE(boxes.boxes()[0].icon, QMessageBox::Question);
        QCOMPARE(boxes.boxes()[0].buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(boxes.boxes()[1].title, u"Atenção!!!"_s);
        QCOMPARE(boxes.boxes()[1].icon, QMessageBox::Information);
        QCOMPARE(boxes.boxes()[1].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }

    void noLeavesEverythingAsItIs() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"3"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        for (const auto answer : {QMessageBox::No, QMessageBox::NoButton}) {
            ModalHelper boxes;
            boxes.expect(pergunta, answer);
            m.press(u"Command5"_s);
            QCOMPARE(boxes.problem(), QString());
            QCOMPARE(m.total(), u"297,00"_s);
            QVERIFY(m.grid()->isTicked(1));
            QCOMPARE(m.panel()->findChild<QLabel*>(u"Label1"_s)->text(), u"TOTAL SELEÇÃO R$"_s);
        }
        QCOMPARE(m.texts(), QStringList());
        QCOMPARE(precos(1), QStringList{u"99.00 297.00 0.00 0.00"_s});
        QCOMPARE(log(), QByteArray("no file"));
        QCOMPARE(m.grid()->rows(), 2);
    }

    void threeWrongLinesOneText() {
        pv(1, u"2"_s,
           {aoPreco(u"A"_s, u"1.5"_s, u"1"_s), aoPreco(u"B"_s, u"2"_s, u"2"_s),
            aoPreco(u"B"_s, u"0.333"_s, u"7"_s), aoPreco(u"A"_s, u"2"_s, u"20.49"_s)});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expect(head + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.texts().filter(u"Update Orcamento"_s).size(), 3);
        QCOMPARE(m.panel()->focusWidget(), m.button(u"Command5"_s));
        QCOMPARE(precos(1), QStringList({u"20.50 30.75 20.50 30.75"_s, u"2.00 4.00 0.00 0.00"_s,
                                         u"2.00 0.67 2.00 0.67"_s, u"20.50 41.00 20.50 41.00"_s}));
        QCOMPARE(log(), "PV Nº 1 - CLIENTE 0001\r\n\r\n"_qba);
    }

    void nothingToCorrectNeitherTellsNorTouchesTheLog() {
        pv(1, u"1"_s,
           {aoPreco(u"A"_s, u"1"_s, u"10"_s),
            aoPreco(u"ZERO"_s, u"1"_s, u"5"_s),
            aoPreco(u"NULO"_s, u"1"_s, u"5"_s),
            aoPreco(u"SUMIU"_s, u"1"_s, u"5"_s),
            {u"***NOTA"_s, u"0"_s, u"0"_s}});
        pv(2, u"0"_s, {aoPreco(u"A"_s, u"1"_s, u"1"_s)});
        QFile old(file());
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("before");
        old.close();
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(log(), QByteArray("before"));
        QCOMPARE(m.texts().size(), 2);
        QCOMPARE(m.texts()[0], consulta(1, u"Venda"_s));
        QCOMPARE(precos(2), QStringList{u"1.00 1.00 0.00 0.00"_s});
    }

    void tableOutOfZeroToFourSkipsTheRow_data() {
        QTest::addColumn<QString>("tabela");
        for (const QString& tabela : {u"5"_s, u"9"_s, u"-"_s, u"A"_s, u""_s, u" "_s})
            QTest::addRow("table '%s'", qPrintable(tabela)) << tabela;
        QTest::newRow("table NULL") << QString();
    }

    void tableOutOfZeroToFourSkipsTheRow() {
        QFETCH(QString, tabela);
        pv(1, tabela, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        if (tabela.isNull())
            m.server().execute(u"UPDATE clientes SET colunapreco = NULL"_s);
        pv(2, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expect(head + u"PV Nº 2 - CLIENTE 0002\n"_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(precos(1), QStringList{u"99.00 99.00 0.00 0.00"_s});
    }

    void selectionDoesNotMatter() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        m.press(u"Command1"_s);
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expectContaining(u"PV Nº 1 - "_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(precos(1), QStringList{u"10.00 10.00 10.00 10.00"_s});
    }

    void logIsMadeAnewNotAppended() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        m.server().execute(u"UPDATE clientes SET nome = 'D''ÁVILA & AÇÚCAR €'"_s);
        QVERIFY(m.open(PanelBench::wide));
        for (int attempt = 0; attempt < 2; ++attempt) {
            m.server().execute(u"UPDATE orcamento SET unitario = 98"_s);
            ModalHelper boxes;
            boxes.expect(pergunta, QMessageBox::Yes);
            boxes.expect(head + u"PV Nº 1 - D'ÁVILA & AÇÚCAR €\n"_s, QMessageBox::Ok);
            m.press(u"Command5"_s);
            QCOMPARE(boxes.problem(), QString());
            QCOMPARE(log(), "PV Nº 1 - D'ÁVILA & AÇÚCAR €\r\n\r\n"_qba);
        }
    }

    void captionWaits() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"10"_s)});
        QVERIFY(m.open(PanelBench::wide));
        auto* caption = m.panel()->findChild<QLabel*>(u"Label1"_s);
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        const LabelPaints painter(caption);
        m.press(u"Command5"_s);
        QVERIFY(painter.texts().contains(u"AGUARDE PROCESSO"_s));
        QVERIFY(!painter.clipped());
        QCOMPARE(caption->text(), u"TOTAL SELEÇÃO R$"_s);
    }

    void rightAndWrongTogether() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"10"_s)});
        pv(2, u"2"_s, {aoPreco(u"A"_s, u"2"_s, u"99"_s), aoPreco(u"B"_s, u"1"_s, u"2"_s)});
        pv(3, u"3"_s, {aoPreco(u"A"_s, u"1"_s, u"30.25"_s)});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expect(head + u"PV Nº 2 - CLIENTE 0002\n"_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.texts().first(4),
                 QStringList({consulta(1, u"Venda"_s), consulta(2, u"Venda2"_s),
                              correction(u" 20.5"_s, id(2, u"A"_s)), consulta(3, u"Venda3"_s)}));
        QCOMPARE(precos(1) + precos(3),
                 QStringList({u"10.00 10.00 0.00 0.00"_s, u"30.25 30.25 0.00 0.00"_s}));
        QCOMPARE(precos(2), QStringList({u"20.50 41.00 20.50 41.00"_s, u"2.00 2.00 0.00 0.00"_s}));
        QCOMPARE(log(), "PV Nº 2 - CLIENTE 0002\r\n\r\n"_qba);
    }

    // The totals shown are no longer the documents': nothing may be closed with them.
    void withoutANewListingNothingIsLeftToClose() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        QTimer cut;
        boxes.expect(head + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        boxes.expectContaining(u"c.prazo"_s, QMessageBox::Ok);
        bool renamed = false;
        connect(&cut, &QTimer::timeout, this, [&] {
            const auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (renamed || !caixa || !caixa->text().startsWith(head))
                return;
            renamed = true;
            m.server().execute(u"RENAME TABLE clientes TO clientes_fora"_s);
        });
        cut.start(1);
        m.press(u"Command5"_s);
        QVERIFY(renamed);
        m.server().execute(u"RENAME TABLE clientes_fora TO clientes"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.grid()->rows(), 1);
        QCOMPARE(m.total(), u"0,00"_s);
        QVERIFY(!m.button(u"Command4"_s)->isEnabled());
        m.press(u"Command3"_s);
        QCOMPARE(m.cell(1, painelfechamento::Total), u"10,00"_s);
    }

    void failureOfTheDatabaseBringsTheCaptionBack() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        pv(2, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        m.server().execute(
            u"CREATE TRIGGER recusa BEFORE UPDATE ON orcamento FOR EACH ROW IF OLD.nrpedido = 2 "
            "THEN SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s);
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expectContaining(u"recusado"_s, QMessageBox::Ok);
        boxes.expect(head + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        m.server().execute(u"DROP TRIGGER recusa"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(m.panel()->findChild<QLabel*>(u"Label1"_s)->text(), u"TOTAL SELEÇÃO R$"_s);
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(precos(1), QStringList{u"10.00 10.00 10.00 10.00"_s});
        QCOMPARE(precos(2), QStringList{u"99.00 99.00 0.00 0.00"_s});
        QCOMPARE(log(), u"PV Nº 1 - CLIENTE 0001\r\n\r\n"_s.toUtf8());
        QCOMPARE(m.grid()->rows(), 1);
        QVERIFY(!m.button(u"Command4"_s)->isEnabled());
        QVERIFY(m.button(u"Command3"_s)->isEnabled());
    }

    void logThatCannotBeWrittenShowsTheList() {
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
        QVERIFY(m.open(PanelBench::wide));
        setProgramFolder(m.programFolder() + u"/missing"_s);
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expectContaining(QDir::toNativeSeparators(u"missing/LogTarvessa.log"_s), QMessageBox::Ok);
        boxes.expect(head + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QVERIFY(boxes.boxes()[1].text.startsWith(u"Erro em tempo de execução 75:"_s));
        QCOMPARE(precos(1), QStringList{u"10.00 10.00 10.00 10.00"_s});
        QCOMPARE(m.cell(1, painelfechamento::Total), u"10,00"_s);
    }

    void fiveHundredWrongLinesInOnePv() {
        QList<Linha> items;
        for (int i = 0; i < 500; ++i)
            items += aoPreco(u"B"_s, u"2"_s, u"7"_s);
        pv(1, u"4"_s, items);
        QVERIFY(m.open(PanelBench::wide));
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expect(head + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QCOMPARE(
            m.valor(u"SELECT COUNT(*) FROM orcamento WHERE unitario=4 AND totalped=8 AND UnitarioPAF=4 AND "
                    "TotalPaf=8"_s),
            u"500"_s);
    }

    void fiveHundredCorrectedPvsFitTheScreen() {
        QString text = head;
        for (int i = 1; i <= 500; ++i) {
            pv(i, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"99"_s)});
            text += u"PV Nº %1 - CLIENTE %2\n"_s.arg(i).arg(i, 4, 10, QChar(u'0'));
        }
        QVERIFY(m.open(PanelBench::wide));
        bool seen = false;
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            const auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!caixa || seen || !caixa->text().startsWith(head))
                return;
            seen = true;
            const auto* caption = caixa->findChild<QLabel*>(u"qt_msgbox_label"_s);
            auto* area = caixa->findChild<QScrollArea*>();
            QVERIFY(area);
            QVERIFY(caixa->height() <= caixa->screen()->availableSize().height());
            QVERIFY(caixa->rect().contains(caixa->button(QMessageBox::Ok)->geometry()));
            QCOMPARE(caption->text(), text);
            QVERIFY(area->verticalScrollBar()->maximum() > 0);
            QVERIFY(area->widget()->height() >= caption->sizeHint().height());
            QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
            QTest::keyClick(area, Qt::Key_PageDown);
            QVERIFY(area->verticalScrollBar()->value() > 0);
        });
        look.start(1);
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        boxes.expect(text, QMessageBox::Ok);
        m.press(u"Command5"_s);
        QCOMPARE(boxes.problem(), QString());
        QVERIFY(seen);
        QCOMPARE(log().count("\r\n"), 501);
    }

    void buttonFollowsTheListing() {
        QVERIFY(m.open(PanelBench::wide));
        QVERIFY(!m.button(u"Command5"_s)->isEnabled());
        pv(1, u"1"_s, {aoPreco(u"A"_s, u"1"_s, u"10"_s)});
        m.press(u"Command3"_s);
        QVERIFY(m.button(u"Command5"_s)->isEnabled());
        m.server().execute(u"UPDATE orcamento SET situacaoorc='B'"_s);
        ModalHelper boxes;
        boxes.expect(pergunta, QMessageBox::Yes);
        m.press(u"Command5"_s);
        QCOMPARE(m.grid()->rows(), 1);
        QVERIFY(!m.button(u"Command5"_s)->isEnabled());
        QVERIFY(m.button(u"Command3"_s)->isEnabled());
    }
};

QTEST_MAIN(TstPrecos)
#include "tst_precos.moc"

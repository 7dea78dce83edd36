// What the panel's status bar says of its list, its connection and a batch under way.

#include "closing/BatchProgress.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTest>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

class TstStatusBar : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void listingAndItsTicks();
    void thousandsAreGrouped();
    void oneDocument();
    void currentRowByKeyAndByClick();
    void conversionEmptiesIt();
    void batchLeavesWhatIsOpen();
    void failedListingShowsNoDocument();
    void serverAndDatabaseWithoutAStatement();
    void lostConnectionUntilItIsBack();
    void screenReaderHearsIt();
    void tooNarrowItIsCut();

    void timeLeft_data();
    void timeLeft();
    void progressTellsTheTimeLeft();

  private:
    QLabel* label() const { return b->control<QLabel>(u"Situacao"_s); }
    QString part(int index) const { return label()->text().section(u" · "_s, index, index); }
    QString connectedText() const;
    void openWith(int preSales);

    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_proxy;
};

void TstStatusBar::initTestCase() {
    b = std::make_unique<PanelBench>();
    m_proxy = std::make_unique<FaultProxy>(b->server().socket());
    QCoreApplication::setApplicationVersion(u"9.8.7"_s);
}

void TstStatusBar::cleanupTestCase() {
    b->close();
    m_proxy.reset();
    b.reset();
}

void TstStatusBar::init() {
    b->reset();
    b->server().useSocket(m_proxy->socket());
    m_proxy->mark();
    b->shop().basico();
}

QString TstStatusBar::connectedText() const {
    const QString address = b->server().socket();
    const QString server = address.startsWith(u'/') ? u"localhost"_s : address.section(u':', 0, 0);
    return server + u'/' + b->server().database();
}

void TstStatusBar::openWith(int preSales) {
    for (int number = 1; number <= preSales; ++number)
        b->shop().documento({.pedido = number, .nomeVendedor = u"V%1"_s.arg(number, 4, 10, QChar(u'0'))});
    QVERIFY(b->open());
}

void TstStatusBar::listingAndItsTicks() {
    openWith(3);
    QCOMPARE(part(0), u"3 documentos, 3 selecionados"_s);
    QCOMPARE(part(2), u"versão 9.8.7"_s);
    b->click(2, painelfechamento::Selecao);
    QCOMPARE(part(0), u"3 documentos, 2 selecionados, linha 2"_s);
    b->key(Qt::Key_Space);
    QCOMPARE(part(0), u"3 documentos, 3 selecionados, linha 2"_s);
    b->press(u"Command1"_s);
    QCOMPARE(part(0), u"3 documentos, 0 selecionados, linha 2"_s);
    b->press(u"Command1"_s);
    QCOMPARE(part(0), u"3 documentos, 3 selecionados, linha 2"_s);
}

void TstStatusBar::thousandsAreGrouped() {
    constexpr int many = 1001;
    b->server().execute(
        u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, dataabertura, "
        "codigo, quantidade, totalped) SELECT seq, 'P', 'A', 'C1', 'ANA', '2024-03-14', 'P1', 1, 10 FROM "
        "seq_1_to_%1"_s.arg(many));
    QVERIFY(b->open());
    b->click(1, painelfechamento::Selecao);
    b->grid()->setCurrentCell(many, painelfechamento::Pedido);
    QCOMPARE(part(0), u"1.001 documentos, 1.000 selecionados, linha 1.001"_s);
}

void TstStatusBar::oneDocument() {
    openWith(1);
    QCOMPARE(part(0), u"1 documento, 1 selecionado"_s);
}

void TstStatusBar::currentRowByKeyAndByClick() {
    openWith(3);
    b->click(1, painelfechamento::Cliente);
    b->key(Qt::Key_Down);
    QCOMPARE(part(0), u"3 documentos, 3 selecionados, linha 2"_s);
    b->click(3, painelfechamento::Cliente);
    QCOMPARE(part(0), u"3 documentos, 3 selecionados, linha 3"_s);
}

void TstStatusBar::conversionEmptiesIt() {
    b->shop().documento({.pedido = 1, .tipo = u"D"_s});
    b->shop().documento({.pedido = 2, .tipo = u"D"_s});
    QVERIFY(b->open());
    b->click(2, painelfechamento::Cliente);
    QCOMPARE(part(0), u"2 documentos, 2 selecionados, linha 2"_s);
    b->press(u"Command2"_s);
    QCOMPARE(part(0), u"0 documentos, 0 selecionados"_s);
    b->press(u"Command3"_s);
    QVERIFY2(part(0).startsWith(u"2 documentos, 2 selecionados"_s), qPrintable(part(0)));
}

void TstStatusBar::batchLeavesWhatIsOpen() {
    openWith(3);
    b->click(1, painelfechamento::Selecao);
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::sucesso, QMessageBox::Ok);
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(part(0), u"1 documento, 1 selecionado"_s);
}

// The prices are corrected, the listing behind it fails: the grid is emptied.
void TstStatusBar::failedListingShowsNoDocument() {
    b->shop().produto({.codigo = u"P9"_s, .precos = QList<Valor>(4, u"8.00"_s)});
    b->shop().documento({.pedido = 1, .linhas = {aoPreco(u"P9"_s, u"1"_s, u"7.00"_s)}});
    QVERIFY(b->open());
    b->click(1, painelfechamento::Cliente);
    QCOMPARE(part(0), u"1 documento, 1 selecionado, linha 1"_s);
    constexpr int listing = 3; // behind the search for wrong prices and the correction
    m_proxy->cutBefore(listing);
    ModalHelper modal;
    modal.expectContaining(u"Deseja realmente"_s, QMessageBox::Yes);
    modal.expectContaining(u"PEDIDOS COM PREÇOS CORRIGIDOS"_s, QMessageBox::Ok);
    modal.expectContaining(mensagens::conexaoPerdida, QMessageBox::Ok);
    b->press(u"Command5"_s);
    QCOMPARE(modal.problem(), QString());
    QVERIFY(m_proxy->cutAt().startsWith("SELECT o.codigocli"));
    QCOMPARE(part(0), u"0 documentos, 0 selecionados"_s);
}

void TstStatusBar::serverAndDatabaseWithoutAStatement() {
    if (!b->valor(u"SELECT VERSION()"_s).contains(u"MariaDB"_s))
        QSKIP("the driver asks this server itself, because it does not tell the database unasked");
    openWith(1);
    QCOMPARE(part(1), connectedText());
    for (const QByteArray& statement : m_proxy->texts())
        QVERIFY2(!statement.toUpper().contains("DATABASE()") && !statement.toUpper().contains("HOSTNAME"),
                 statement.constData());
}

void TstStatusBar::lostConnectionUntilItIsBack() {
    openWith(1);
    b->click(1, painelfechamento::Cliente);
    const QString connected = connectedText();
    const auto viewFails = [&] {
        ModalHelper modal;
        modal.expectContaining(mensagens::conexaoPerdida, QMessageBox::Ok);
        b->key(Qt::Key_F3);
        QCOMPARE(modal.problem(), QString());
    };
    m_proxy->cutBefore(1);
    viewFails();
    QCOMPARE(part(1), u"sem conexão"_s);

    // No server is to be had yet.
    b->server().useSocket(b->server().socket() + u".nada"_s);
    viewFails();
    QCOMPARE(part(1), u"sem conexão"_s);

    b->server().useSocket(m_proxy->socket());
    ModalHelper modal;
    QString inTheView;
    modal.onOpen([&](QWidget* view) {
        inTheView = part(1);
        QTest::keyClick(view, Qt::Key_Escape);
    });
    b->key(Qt::Key_F3);
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(inTheView, connected);
    QCOMPARE(part(1), connected);
    QCOMPARE(part(0), u"1 documento, 1 selecionado, linha 1"_s);
}

void TstStatusBar::screenReaderHearsIt() {
    openWith(2);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(label());
    QVERIFY(accessible);
    QCOMPARE(accessible->text(QAccessible::Name), label()->text());
}

void TstStatusBar::tooNarrowItIsCut() {
    openWith(2);
    const QImage whole = label()->grab().toImage();
    QCOMPARE(label()->toolTip(), label()->text());
    const int narrow = label()->width() / 2;
    QVERIFY(label()->minimumSizeHint().width() <= narrow);
    label()->resize(narrow, label()->height());
    // Cut by an ellipsis, so not simply the left half of the whole.
    QVERIFY(label()->grab().toImage() != whole.copy(0, 0, narrow, whole.height()));
}

void TstStatusBar::timeLeft_data() {
    QTest::addColumn<int>("elapsedMs");
    QTest::addColumn<int>("done");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing done") << 0 << 0 << 2000 << QString();
    QTest::newRow("too early") << 4999 << 500 << 2000 << QString();
    QTest::newRow("too few rows") << 60000 << 9 << 2000 << QString();
    QTest::newRow("as soon as it can be told") << 5000 << 10 << 100 << u"50 s"_s;
    QTest::newRow("seconds in steps of five") << 10000 << 100 << 210 << u"15 s"_s;
    QTest::newRow("less than a minute") << 10000 << 100 << 690 << u"60 s"_s;
    QTest::newRow("a minute") << 10000 << 100 << 700 << u"1 min"_s;
    QTest::newRow("rounded") << 10000 << 100 << 1000 << u"2 min"_s;
    QTest::newRow("hours of work") << 3600000 << 1000 << 3000 << u"120 min"_s;
    QTest::newRow("the last row") << 9000 << 29 << 30 << u"5 s"_s;
}

void TstStatusBar::timeLeft() {
    QFETCH(int, elapsedMs);
    QFETCH(int, done);
    QFETCH(int, rows);
    QTEST(BatchProgress::timeLeft(elapsedMs, done, rows), "text");
}

void TstStatusBar::progressTellsTheTimeLeft() {
    constexpr int preSales = 14;
    constexpr auto slow = std::chrono::milliseconds(600);
    openWith(preSales);
    auto* progress = b->control<BatchProgress>(u"progresso"_s);
    QStringList painted;
    m_proxy->onStatement([&](const QByteArray& statement) {
        // Between the rows: the program waits for the answer of the next one's first statement.
        if (!statement.startsWith("Select CNPJ_CPF"))
            return;
        painted.append(progress->text());
        std::this_thread::sleep_for(slow);
    });
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expect(mensagens::sucesso, QMessageBox::Ok);
    b->press(u"Command4"_s);
    m_proxy->onStatement({});
    QCOMPARE(modal.problem(), QString());
    QCOMPARE(painted.size(), preSales);
    QCOMPARE(painted.first(), u"Pré-venda 1 de 14"_s);
    QCOMPARE(painted[9], u"Pré-venda 10 de 14"_s);
    QCOMPARE(painted.last(), u"Pré-venda 14 de 14 · cerca de 5 s"_s);
}

QTEST_MAIN(TstStatusBar)
#include "tst_status_bar.moc"

// The window "Conferência": what the batch would do, seen before it does it. Whatever it says is compared
// with what the batch then does.

#include "base/Numeros.h"
#include "closing/ConferenciaColumns.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/PanelBench.h"
#include "support/FaultProxy.h"
#include "support/ModalHelper.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

namespace col = conferencia;

constexpr int patienceMs = 60'000;

/// What the window says of a reason, and what the closing log does.
struct Reason {
    QString detail;
    QString log;
};

const QList<Reason>& reasons() {
    static const QList<Reason> all = {
        {u"o código do cliente ("_s, u"CÓDIGO DE CLIENTE INVÁLIDO."_s},
        {u"fechamento interrompido: "_s,
         u"FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s},
        {u"o cliente "_s, u"CLIENTE NÃO CADASTRADO."_s},
        {u"forma de pagamento: "_s, u"FORMA DE PAGAMENTO INVÁLIDA."_s},
        {u"estoque: "_s, u"O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s},
        {u"prazo: "_s, u"PRAZO DE PAGAMENTO INVÁLIDO."_s},
        {u"um código de produto ou de componente tem "_s, u"CÓDIGO DE PRODUTO INVÁLIDO."_s},
        {u"uma conta contábil "_s, u"CONTA CONTÁBIL INVÁLIDA."_s},
        {u"o pedido já foi encerrado ou cancelado"_s, u"O PEDIDO JÁ FOI ENCERRADO OU CANCELADO."_s},
        {u"o pedido tem itens já encerrados"_s,
         u"O PEDIDO TEM ITENS JÁ ENCERRADOS OU CANCELADOS. CONFIRA O NÚMERO DO PEDIDO."_s},
        {u"o total mudou: "_s, u"O TOTAL DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s},
        {u"o pedido agora é de outro cliente"_s,
         u"O CLIENTE DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s}};
    return all;
}

/// The log lines that the batch must write for a row of the window.
QStringList logLinesOf(const QStringList& row) {
    const QString start = u"PRÉ-VENDA: %1 - "_s.arg(row[col::Pedido].toInt(), 7, 10, QChar(u'0'));
    if (row[col::Resultado].startsWith(u"CANCELADA"))
        return {start + u"O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s};
    QStringList lines;
    if (row[col::Resultado] == u"recusada")
        for (const Reason& reason : reasons())
            if (row[col::Detalhe].startsWith(reason.detail) ||
                row[col::Detalhe].contains(u"; "_s + reason.detail))
                lines.append(start + reason.log);
    return lines;
}

QString nameOf(QWidget* control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

QString situationOf(QWidget* window) {
    return control<QLabel>(window, "Label1")->text();
}

void waitUntilDone(QWidget* window) {
    QTRY_VERIFY_WITH_TIMEOUT(!situationOf(window).startsWith(u"Conferindo"), patienceMs);
}

/// Contrast of a text on its background, as accessibility guidelines count it.
double contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        const auto part = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const double one = luminance(a);
    const double other = luminance(b);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

/// Every row of every table, by table name.
using Snapshot = QMap<QString, QList<QStringList>>;

} // namespace

class TstConferencia : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void eachOutcome_data();
    void eachOutcome();
    void afterAnErrorNothingIsReached();
    void earlierRowsTakeStock_data();
    void earlierRowsTakeStock();
    void batchAgreesOnRandomPreSales();
    void totalsAndFilter();
    void detailOfTheCurrentRow();
    void enterGoesToThePreSale();
    void doubleClickGoesToThePreSale();
    void buttonGoesToThePreSale();
    void opensOnThePanelsRow();
    void byKeyboardAlone();
    void everyControlHasAName();
    void rowsTellAScreenReader();
    void markedRowsCanBeRead();
    void listIsCopiedSummedUpAndSearched();
    void menusNameTheKeysThatWork();
    void emptyListSaysWhy();
    void needsListedAndSelectedPreSales();
    void commitsWhatIsBeingEdited();
    void toolTipNamesTheKey();
    void writesNothingAndAsksOnce();
    void escapeCancels();
    void closingTheWindowCancels();
    void connectionLostHalfWay();

  private:
    struct Case {
        std::function<void()> shop;
        QString outcome;
        QString detail;
        QStringList log;                    ///< reasons, as the closing log has them
        std::function<void()> changed = {}; ///< happens after the listing
        QString end = u"Processo encerrado com alguns pedidos"_s;
    };

    void fillCases();
    void documents(int count);
    void confere(const std::function<void(QWidget*)>& look);
    QList<QStringList> rows();
    void closeAll(const QString& end, bool interrupted = false);
    void randomShop(QRandomGenerator& random);
    void changeSome(QRandomGenerator& random);
    void compareWithTheBatch(const QList<QStringList>& seen, const Snapshot& before);
    void compareShortages(const QList<QStringList>& seen, const Snapshot& before);
    QString stateOf(const QString& pedido) {
        return b->valor(u"SELECT GROUP_CONCAT(situacaoorc ORDER BY id) FROM orcamento WHERE nrpedido=%1 AND "
                        "TipoOperacao='P'"_s.arg(pedido));
    }

    std::unique_ptr<PanelBench> b;
    std::unique_ptr<FaultProxy> m_proxy;
    QMap<QString, Case> m_cases;
};

void TstConferencia::initTestCase() {
    b = std::make_unique<PanelBench>();
    m_proxy = std::make_unique<FaultProxy>(b->server().socket());
    fillCases();
}

void TstConferencia::cleanupTestCase() {
    b->close();
    m_proxy.reset();
    b.reset();
}

void TstConferencia::init() {
    m_proxy->onStatement({});
    m_proxy->mark();
    b->reset();
    b->server().useSocket(m_proxy->socket());
}

/// Pre-sales 1, 2 and so on of 10,00 each, listed in that order.
void TstConferencia::documents(int count) {
    for (int pedido = 1; pedido <= count; ++pedido)
        b->shop().documento({.pedido = pedido, .nomeVendedor = u"%1"_s.arg(pedido, 4, 10, QChar(u'0'))});
}

/// Opens the window by its key, waits until it is done and lets `look` operate it; what is then still open is
/// closed by Escape.
void TstConferencia::confere(const std::function<void(QWidget*)>& look) {
    ModalHelper modal;
    modal.onOpen([&look](QWidget* window) {
        QCOMPARE(window->objectName(), u"Conferencia"_s);
        waitUntilDone(window);
        if (look)
            look(window);
        if (window->isVisible())
            Hands(window).key(Qt::Key_Escape);
    });
    b->key(Qt::Key_F6);
    QCOMPARE(modal.problem(), QString());
}

QList<QStringList> TstConferencia::rows() {
    QList<QStringList> found;
    confere([&found](QWidget* window) { found = allCells(Hands(window).grid()); });
    return found;
}

/// Presses the closing button; `end` begins the message at the end.
void TstConferencia::closeAll(const QString& end, bool interrupted) {
    ModalHelper modal;
    modal.expect(mensagens::lembrete, QMessageBox::Ok);
    modal.expectContaining(end, QMessageBox::Ok);
    if (interrupted)
        modal.onOpen([](QWidget* window) { Hands(window).key(Qt::Key_Escape); });
    b->press(u"Command4"_s);
    QCOMPARE(modal.problem(), QString());
}

void TstConferencia::fillCases() {
    const QString success = u"Processamento efetuado com sucesso."_s;
    const auto buying = [this](const QString& method, const QString& days) {
        return [this, method, days] {
            b->shop().cliente({.codigo = u"C2"_s, .prazo = days, .formaPg = method});
            b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
        };
    };
    const auto person = [this](const Valor& document) {
        return [this, document] {
            b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = document});
            b->shop().documento({.pedido = 1, .cliente = u"C2"_s});
        };
    };
    const auto lines = [this](const QList<Linha>& sold) {
        return [this, sold] { b->shop().documento({.pedido = 1, .linhas = sold}); };
    };
    const auto server = [this](const QString& sql) { return [this, sql] { b->server().execute(sql); }; };
    const QString cancelled = u"O PEDIDO É DE PESSOA FÍSICA E FOI CANCELADO"_s;
    const QString payment = u"FORMA DE PAGAMENTO INVÁLIDA."_s;
    const QString stock = u"O PEDIDO NÃO POSSUI ESTOQUE DISPONÍVEL"_s;
    const auto plain = lines({Linha{}});

    m_cases[u"open receivable"_s] = {buying(u"BOLETO"_s, u"30"_s),
                                     u"encerrada"_s,
                                     u"em aberto, vencimento 14/04/2024, conta 1.05"_s,
                                     {},
                                     {},
                                     success};
    m_cases[u"settled receivable"_s] = {buying(u"DINHEIRO"_s, u"0"_s),
                                        u"encerrada"_s,
                                        u"liquidado, vencimento 15/03/2024, conta 1.01"_s,
                                        {},
                                        {},
                                        success};
    m_cases[u"cash with a term is due today"_s] = {buying(u"PIX"_s, u"10"_s),
                                                   u"encerrada"_s,
                                                   u"liquidado, vencimento 15/03/2024, conta 1.01"_s,
                                                   {},
                                                   {},
                                                   success};
    m_cases[u"card"_s] = {buying(u"CARTÃO"_s, u"30"_s),
                          u"encerrada"_s,
                          u"liquidado, vencimento 14/04/2024, conta 1.05"_s,
                          {},
                          {},
                          success};
    m_cases[u"cheque"_s] = {buying(u"CHEQUE PRÉ"_s, u"15"_s),
                            u"encerrada"_s,
                            u"liquidado, vencimento 30/03/2024, conta 1.05"_s,
                            {},
                            {},
                            success};
    m_cases[u"CPF"_s] = {person(u"123.456.789-09"_s),
                         u"CANCELADA"_s,
                         u"pessoa física, documento 123.456.789-09"_s,
                         {cancelled}};
    m_cases[u"no document"_s] = {
        person({}), u"CANCELADA"_s, u"pessoa física, cadastro sem documento"_s, {cancelled}};
    m_cases[u"document with letters"_s] = {
        person(u"12ABC34501DE35"_s),
        u"CANCELADA: LETRAS"_s,
        u"pessoa física, documento 12ABC34501DE35: TEM LETRAS, e só os algarismos contam. Se é uma empresa, "
        "não encerre com esta PV na lista"_s,
        {cancelled}};
    m_cases[u"document with two letters"_s] = {person(u"12A4567800B195"_s),
                                               u"encerrada"_s,
                                               u"em aberto, vencimento 14/04/2024, conta 1.05"_s,
                                               {},
                                               {},
                                               success};
    m_cases[u"method that is not in the list"_s] = {
        buying(u"FIADO"_s, u"30"_s),
        u"recusada"_s,
        u"forma de pagamento: FIADO não está na lista de finalizadoras"_s,
        {payment}};
    m_cases[u"no method"_s] = {buying({}, u"30"_s),
                               u"recusada"_s,
                               u"forma de pagamento: (vazia) não está na lista de finalizadoras"_s,
                               {payment}};
    m_cases[u"method without a term"_s] = {
        buying(u"BOLETO"_s, u"0"_s), u"recusada"_s, u"forma de pagamento: BOLETO com 0 dias"_s, {payment}};
    m_cases[u"negative term"_s] = {buying(u"DINHEIRO"_s, u"-1"_s),
                                   u"recusada"_s,
                                   u"forma de pagamento: DINHEIRO com -1 dias"_s,
                                   {payment}};
    m_cases[u"stock"_s] = {lines({{u"P1"_s, u"60"_s}, {u"P1"_s, u"40.5"_s}, {u"SUMIU"_s, u"1"_s}}),
                           u"recusada"_s,
                           u"estoque: P1: precisa de 100,500, há 100; SUMIU: precisa de 1, há 0"_s,
                           {stock}};
    m_cases[u"second stock counts"_s] = {
        [this] {
            b->shop().produto({.codigo = u"P2"_s, .estoque = u"1"_s, .estoque2 = u"2.5"_s});
            b->shop().documento({.pedido = 1, .linhas = {{u"P2"_s, u"3.5"_s}}});
        },
        u"encerrada"_s,
        u"em aberto, vencimento 14/04/2024, conta 1.05"_s,
        {},
        {},
        success};
    m_cases[u"no second stock known"_s] = {
        [this] {
            b->shop().produto({.codigo = u"P2"_s, .estoque2 = {}, .descricao = u"PAO"_s});
            b->shop().documento({.pedido = 1, .linhas = {{u"P2"_s, u"1"_s}}});
        },
        u"recusada"_s,
        u"estoque: P2 PAO: precisa de 1, há 0"_s,
        {stock}};
    m_cases[u"payment and stock"_s] = {
        [this] {
            b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"FIADO"_s});
            b->shop().documento({.pedido = 1, .cliente = u"C2"_s, .linhas = {{u"P1"_s, u"101"_s}}});
        },
        u"recusada"_s,
        u"forma de pagamento: FIADO não está na lista de finalizadoras; estoque: P1: precisa de 101, há 100"_s,
        {payment, stock}};
    m_cases[u"note with a quantity"_s] = {lines({{u"P1"_s, u"1"_s}, {u"***NOTA"_s, u"1"_s}}),
                                          u"recusada"_s,
                                          u"estoque: ***NOTA: precisa de 1, há 0"_s,
                                          {stock}};
    m_cases[u"no customer record"_s] = {[this] { b->shop().documento({.pedido = 1, .cliente = u"C9"_s}); },
                                        u"recusada"_s,
                                        u"o cliente C9 não está cadastrado"_s,
                                        {u"CLIENTE NÃO CADASTRADO."_s}};
    m_cases[u"customer's code"_s] = {[this] {
                                         b->shop().cliente({.codigo = u"D'AV"_s});
                                         b->shop().documento({.pedido = 1, .cliente = u"D'AV"_s});
                                     },
                                     u"recusada"_s,
                                     u"o código do cliente (D'AV) tem apóstrofo ou barra invertida"_s,
                                     {u"CÓDIGO DE CLIENTE INVÁLIDO."_s}};
    m_cases[u"product's code"_s] = {
        [this] {
            b->shop().produto({.codigo = u"D'P"_s});
            b->shop().documento({.pedido = 1, .linhas = {{u"D'P"_s, u"1"_s}}});
        },
        u"recusada"_s,
        u"um código de produto ou de componente tem apóstrofo ou barra invertida"_s,
        {u"CÓDIGO DE PRODUTO INVÁLIDO."_s}};
    m_cases[u"component's code"_s] = {
        [this] {
            b->shop().produto({.codigo = u"CESTA"_s});
            b->shop().ficha(u"cesta"_s, {{u"D'P"_s, u"1"_s}});
            b->shop().documento({.pedido = 1, .linhas = {{u"CESTA"_s, u"1"_s}}});
        },
        u"recusada"_s,
        u"um código de produto ou de componente tem apóstrofo ou barra invertida"_s,
        {u"CÓDIGO DE PRODUTO INVÁLIDO."_s}};
    m_cases[u"account"_s] = {[this] {
                                 b->server().execute(u"UPDATE empresa SET ContaCTB1 = '1.01/2/3/4/D\\'AV'"_s);
                                 b->shop().documento({.pedido = 1});
                             },
                             u"recusada"_s,
                             u"uma conta contábil da empresa tem apóstrofo ou barra invertida"_s,
                             {u"CONTA CONTÁBIL INVÁLIDA."_s}};
    m_cases[u"term beyond the calendar"_s] = {buying(u"BOLETO"_s, u"9999999"_s),
                                              u"recusada"_s,
                                              u"prazo: o vencimento em 9999999 dias passa do ano 9999"_s,
                                              {u"PRAZO DE PAGAMENTO INVÁLIDO."_s}};
    m_cases[u"closed elsewhere"_s] = {plain,
                                      u"recusada"_s,
                                      u"o pedido já foi encerrado ou cancelado"_s,
                                      {u"O PEDIDO JÁ FOI ENCERRADO OU CANCELADO."_s},
                                      server(u"UPDATE orcamento SET situacaoorc = 'B'"_s)};
    m_cases[u"deleted elsewhere"_s] = {plain,
                                       u"recusada"_s,
                                       u"o pedido já foi encerrado ou cancelado"_s,
                                       {u"O PEDIDO JÁ FOI ENCERRADO OU CANCELADO."_s},
                                       server(u"DELETE FROM orcamento"_s)};
    m_cases[u"partly closed"_s] = {
        lines({Linha{}, Linha{}}),
        u"recusada"_s,
        u"o pedido tem itens já encerrados ou cancelados"_s,
        {u"O PEDIDO TEM ITENS JÁ ENCERRADOS OU CANCELADOS. CONFIRA O NÚMERO DO PEDIDO."_s},
        server(u"UPDATE orcamento SET situacaoorc = 'X' ORDER BY id LIMIT 1"_s)};
    m_cases[u"changed total"_s] = {plain,
                                   u"recusada"_s,
                                   u"o total mudou: agora são R$ 1.012,50; carregue a lista novamente"_s,
                                   {u"O TOTAL DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s},
                                   server(u"UPDATE orcamento SET totalped = 1012.5"_s)};
    m_cases[u"another customer's"_s] = {plain,
                                        u"recusada"_s,
                                        u"o pedido agora é de outro cliente; carregue a lista novamente"_s,
                                        {u"O CLIENTE DO PEDIDO MUDOU. CARREGUE A LISTA NOVAMENTE."_s},
                                        server(u"UPDATE orcamento SET codigocli = 'OUTRO'"_s)};
    m_cases[u"interrupted"_s] = {plain,
                                 u"recusada"_s,
                                 u"fechamento interrompido: confira em F7, no painel"_s,
                                 {u"FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s},
                                 server(u"INSERT INTO logestoque SET data = '2024-03-15', tela = 'FECHAMENTO "
                                        "DA PV Nº 1', codproduto = 'P1', qtdLoja = -1"_s)};
    m_cases[u"seller's code out of range"_s] = {
        [this] { b->shop().documento({.pedido = 1, .vendedor = u"40000"_s}); },
        u"ERRO"_s,
        u"o encerramento pararia aqui: Estouro: o código de vendedor 40000 é grande demais."_s,
        {},
        {},
        u"o código de vendedor 40000 é grande demais"_s};
}

void TstConferencia::eachOutcome_data() {
    QTest::addColumn<QString>("name");
    for (auto it = m_cases.cbegin(); it != m_cases.cend(); ++it)
        QTest::newRow(qPrintable(it.key())) << it.key();
}

/// The row of pre-sale 1 as the window shows it; the batch then does just that.
void TstConferencia::eachOutcome() {
    QFETCH(QString, name);
    const Case& wanted = m_cases[name];
    b->shop().basico();
    wanted.shop();
    QVERIFY(b->open());
    if (wanted.changed)
        wanted.changed();
    const QString total = b->cell(1, painelfechamento::Total);
    const QList<QStringList> seen = rows();
    QCOMPARE(seen.size(), 1);
    QCOMPARE(seen[0][col::Pedido], u"1"_s);
    QCOMPARE(seen[0][col::Total], total);
    QCOMPARE(seen[0][col::Resultado], wanted.outcome);
    QCOMPARE(seen[0][col::Detalhe], wanted.detail);
    const Snapshot before = b->shop().retrato();
    closeAll(wanted.end,
             wanted.log.contains(u"FECHAMENTO INTERROMPIDO POR ERRO. CONFIRA ESTOQUE E FINANCEIRO."_s));
    QStringList log;
    for (const QString& reason : wanted.log)
        log.append(u"PRÉ-VENDA: 0000001 - "_s + reason);
    QCOMPARE(b->log(), PanelBench::logWith(log));
    QCOMPARE(logLinesOf(seen[0]), log);
    compareWithTheBatch(seen, before);
}

/// The receivable of each closed pre-sale is the one that the window told, all others have none; lines are
/// settled, cancelled or as they were.
void TstConferencia::compareWithTheBatch(const QList<QStringList>& seen, const Snapshot& before) {
    QMap<QString, QStringList> states;
    for (const QStringList& line : before[u"orcamento"_s])
        states[line[1]].append(line[3]);
    QMap<QString, QStringList> receivables;
    for (const QStringList& row : b->server().query(
             u"SELECT Nr_Pedido, SitBaixa, DATE_FORMAT(Vencto, '%d/%m/%Y'), ContaCTB FROM areceber"_s))
        receivables[row[0]].append(row[1] == u"B"
                                       ? u"liquidado, vencimento %1, conta %2"_s.arg(row[2], row[3])
                                       : u"em aberto, vencimento %1, conta %2"_s.arg(row[2], row[3]));
    for (const QStringList& row : seen) {
        const QString& pedido = row[col::Pedido];
        const bool closed = row[col::Resultado] == u"encerrada";
        QStringList state = states[pedido];
        if (closed || row[col::Resultado].startsWith(u"CANCELADA"))
            state.fill(closed ? u"B"_s : u"X"_s);
        QCOMPARE(stateOf(pedido), state.isEmpty() ? QString() : state.join(u','));
        QCOMPARE(receivables.value(pedido), closed ? QStringList{row[col::Detalhe]} : QStringList());
    }
}

void TstConferencia::afterAnErrorNothingIsReached() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .cnpjCpf = u"1"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .vendedor = u"40000"_s});
    b->shop().documento({.pedido = 3, .cliente = u"C2"_s, .nomeVendedor = u"C"_s});
    QVERIFY(b->open());
    const QList<QStringList> seen = rows();
    QCOMPARE(seen.size(), 3);
    QCOMPARE(seen[0][col::Resultado], u"encerrada"_s);
    QCOMPARE(seen[1][col::Resultado], u"ERRO"_s);
    QCOMPARE(seen[2][col::Resultado], u"não alcançada"_s);
    const Snapshot before = b->shop().retrato();
    closeAll(u"Pré-venda 2: "_s);
    compareWithTheBatch(seen, before);
}

void TstConferencia::earlierRowsTakeStock_data() {
    QTest::addColumn<QString>("paf");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("detail");
    const auto short3 = [](const QString& product, const QString& there) {
        return u"estoque: %1: precisa de 3, há %2 depois das PVs acima"_s.arg(product, there);
    };
    const QString closed = u"em aberto, vencimento 14/04/2024, conta 1.05"_s;
    QTest::newRow("the same product") << u"NAO"_s << u"A"_s << u"A"_s << u"8"_s << short3(u"A"_s, u"2"_s);
    QTest::newRow("just enough") << u"NAO"_s << u"A"_s << u"A"_s << u"7"_s << closed;
    QTest::newRow("other letter case") << u"NAO"_s << u"a"_s << u"A"_s << u"8"_s << short3(u"A"_s, u"2"_s);
    QTest::newRow("blank at the end") << u"NAO"_s << u"A "_s << u"A"_s << u"8"_s << short3(u"A"_s, u"2"_s);
    QTest::newRow("component of a technical sheet")
        << u"NAO"_s << u"CESTA"_s << u"A"_s << u"4"_s << short3(u"A"_s, u"2"_s);
    QTest::newRow("what is composed keeps its own stock")
        << u"NAO"_s << u"CESTA"_s << u"CESTA"_s << u"9"_s << closed;
    QTest::newRow("a return gives back") << u"NAO"_s << u"A"_s << u"B"_s << u"-1"_s << closed;
    QTest::newRow("what is rounded away is not taken")
        << u"NAO"_s << u"POUCO"_s << u"B"_s << u"0.4"_s << closed;
    QTest::newRow("what is rounded up is taken")
        << u"NAO"_s << u"POUCO"_s << u"B"_s << u"0.6"_s << short3(u"B"_s, u"2,999"_s);
    QTest::newRow("notes take nothing") << u"NAO"_s << u"***A"_s << u"B"_s << u"9"_s << closed;
    QTest::newRow("PAF-ECF") << u"SIM"_s << u"A"_s << u"A"_s << u"8"_s << closed;
}

/// Ten A, nine CESTA and three B in stock; a CESTA holds two A, a POUCO a thousandth of a B.
void TstConferencia::earlierRowsTakeStock() {
    QFETCH(QString, paf);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(QString, quantity);
    QFETCH(QString, detail);
    b->shop().basico();
    b->server().execute(u"UPDATE empresa SET PAF_ECF = '%1'"_s.arg(paf));
    b->shop().produto({.codigo = u"A"_s, .estoque = u"4"_s, .estoque2 = u"6"_s});
    b->shop().produto({.codigo = u"B"_s, .estoque = u"3"_s});
    b->shop().produto({.codigo = u"CESTA"_s, .estoque = u"9"_s});
    b->shop().produto({.codigo = u"POUCO"_s, .estoque = u"9"_s});
    b->shop().produto({.codigo = u"***A"_s, .estoque = u"9"_s});
    b->shop().ficha(u"CESTA"_s, {{u"A"_s, u"2"_s}});
    b->shop().ficha(u"POUCO"_s, {{u"B"_s, u"0.001"_s}});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s, .linhas = {{first, quantity}}});
    b->shop().documento({.pedido = 2, .nomeVendedor = u"B"_s, .linhas = {{second, u"3"_s}}});
    QVERIFY(b->open());
    const QList<QStringList> seen = rows();
    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen[0][col::Resultado], u"encerrada"_s);
    QCOMPARE(seen[1][col::Detalhe], detail);
    const Snapshot before = b->shop().retrato();
    const QStringList log = logLinesOf(seen[1]);
    closeAll(log.isEmpty() ? u"Processamento efetuado com sucesso."_s : u"Processo encerrado com"_s);
    QCOMPARE(b->log(), PanelBench::logWith(log));
    compareWithTheBatch(seen, before);
}

/// Forty customers, thirty products of which some are composed, 500 pre-sales of up to four lines. Stock is
/// scarce, so that what earlier rows take decides about later ones.
void TstConferencia::randomShop(QRandomGenerator& random) {
    const auto chance = [&random](double p) { return random.generateDouble() < p; };
    const auto pick = [&random](const QStringList& from) { return from[random.bounded(from.size())]; };
    const auto decimal = [&random](int most, int places) {
        const int scale = places == 0 ? 1 : places == 1 ? 10 : 100;
        return QString::number(1.0 * random.bounded(1, most * scale) / scale, 'f', places);
    };
    b->shop().empresa();
    b->shop().formas();
    for (int i = 1; i <= 40; ++i) {
        const QString document = chance(0.1)
                                     ? pick({u"123.456.789-09"_s, u""_s, u"12ABC34501DE35"_s, u"ISENTO"_s})
                                     : pick({u"12.345.678/0001-95"_s, u"12A4567800B195"_s});
        const QString method = pick({u"BOLETO"_s, u"DINHEIRO"_s, u"PIX"_s, u"CARTÃO"_s, u"CHEQUE"_s,
                                     u"CHEQUE PRÉ"_s, u"TICKET"_s, u"OUTROS"_s, u"(Nenhuma)"_s, u"FIADO"_s});
        b->shop().cliente({.codigo = u"C%1"_s.arg(i),
                           .prazo = pick({u"0"_s, u"1"_s, u"7"_s, u"30"_s, u"30"_s, u"45"_s}),
                           .formaPg = method,
                           .cnpjCpf = document});
    }
    for (int i = 1; i <= 30; ++i)
        b->shop().produto({.codigo = u"P%1"_s.arg(i),
                           .estoque = decimal(60, 2),
                           .estoque2 = chance(0.1) ? Valor() : Valor(decimal(30, 1)),
                           .descricao = u"PRODUTO %1"_s.arg(i)});
    for (int i = 21; i <= 30; ++i) {
        QList<Componente> sheet;
        for (int k = 0; k <= random.bounded(3); ++k)
            sheet.append({u"P%1"_s.arg(random.bounded(1, 25)), decimal(3, 1)});
        b->shop().ficha(u"P%1"_s.arg(i), sheet);
    }
    for (int pedido = 1; pedido <= 500; ++pedido) {
        QList<Linha> lines;
        for (int k = 0; k <= random.bounded(4); ++k) {
            const bool note = chance(0.05);
            lines.append(
                {note ? u"***NOTA"_s : u"%1%2"_s.arg(pick({u"P"_s, u"p"_s})).arg(random.bounded(1, 32)),
                 note ? u"0"_s : decimal(4, 2), QString::number(random.bounded(1, 9999) / 100.0, 'f', 2)});
        }
        b->shop().documento({.pedido = pedido,
                             .cliente = u"C%1"_s.arg(random.bounded(1, 42)),
                             .nomeVendedor = u"%1"_s.arg(pedido, 4, 10, QChar(u'0')),
                             .vendedor = QString::number(random.bounded(1, 9)),
                             .linhas = lines});
    }
}

/// What other stations and programs do after the listing, and what the operator unselects.
void TstConferencia::changeSome(QRandomGenerator& random) {
    const QStringList changes = {
        u"SET situacaoorc = 'B' WHERE nrpedido = %1"_s,
        u"SET situacaoorc = 'X' WHERE nrpedido = %1 ORDER BY id LIMIT 1"_s,
        u"SET totalped = totalped + 0.01 WHERE nrpedido = %1 ORDER BY id LIMIT 1"_s,
        u"SET nrpedido = nrpedido + 10000 WHERE nrpedido = %1 ORDER BY id LIMIT 1"_s};
    for (int i = 0; i < 40; ++i)
        b->server().execute(u"UPDATE orcamento "_s +
                            changes[random.bounded(changes.size())].arg(random.bounded(1, 501)));
    b->server().execute(u"INSERT INTO logestoque SET data = '2024-03-15', tela = 'FECHAMENTO DA PV Nº %1', "
                        "codproduto = 'P1', qtdLoja = -1"_s.arg(random.bounded(1, 501)));
    for (int row = 1; row < b->grid()->rows(); ++row)
        if (random.generateDouble() < 0.1)
            b->grid()->setTicked(row, false);
    b->panel()->TotalSelecionado();
}

void TstConferencia::batchAgreesOnRandomPreSales() {
    bool given = false;
    quint32 seed = qEnvironmentVariable("TARVESSA_SEED").toUInt(&given);
    if (!given)
        seed = QRandomGenerator::global()->generate();
    qInfo("TARVESSA_SEED=%u", seed);
    QRandomGenerator random(seed);
    b->server().useSocket(b->server().socket());
    randomShop(random);
    QVERIFY(b->open());
    QCOMPARE(b->grid()->rows(), 501);
    changeSome(random);
    const QList<QStringList> seen = rows();
    QCOMPARE(seen.size(), 500);
    const Snapshot before = b->shop().retrato();
    QStringList log;
    QMap<QString, int> outcomes;
    bool interrupted = false;
    for (const QStringList& row : seen) {
        log += logLinesOf(row);
        ++outcomes[row[col::Resultado]];
        interrupted = interrupted || row[col::Detalhe].startsWith(u"fechamento interrompido");
    }
    // Otherwise the comparison would say little.
    QVERIFY(outcomes[u"encerrada"_s] >= 20);
    QVERIFY(outcomes[u"recusada"_s] >= 20);
    closeAll(u"Processo encerrado com alguns pedidos"_s, interrupted);
    QCOMPARE(b->log(), PanelBench::logWith(log));
    compareWithTheBatch(seen, before);
    compareShortages(seen, before);
}

/// Each lack that the window told is what the batch found at that row: the stock before the batch without
/// what the closings of the rows above have logged.
void TstConferencia::compareShortages(const QList<QStringList>& seen, const Snapshot& before) {
    QMap<QString, Dinheiro> stock;
    for (const QStringList& row : b->server().query(
             u"SELECT codfabr, IFNULL(quantidade+quantidade2, 0), quantidade2 IS NULL FROM produtos"_s))
        stock[row[0]] = Dinheiro::dePonto(row[1]);
    QMap<QString, QList<QStringList>> moved;
    for (const QStringList& row : b->server().query(
             u"SELECT p.codfabr, SUBSTRING_INDEX(l.tela, ' ', -1), l.qtdLoja FROM logestoque AS l "
             "JOIN produtos AS p ON p.codfabr = l.codproduto WHERE l.usuario <> '' AND "
             "p.quantidade2 IS NOT NULL"_s)) {
        moved[row[1]].append(row);
        // Back to what there was before the batch.
        stock[row[0]] += -Dinheiro::dePonto(row[2]);
    }
    static const QRegularExpression lack(
        u"(?:estoque: |; )([Pp]\\d+)(?: PRODUTO \\d+)?: precisa de ([\\d.,]+), há (-?[\\d.,]+)( depois das PVs acima)?"_s);
    int lacks = 0;
    QSet<QString> taken;
    for (const QStringList& row : seen) {
        for (auto it = lack.globalMatch(row[col::Detalhe]); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            const QString product = match.captured(1).toUpper();
            ++lacks;
            QCOMPARE(match.captured(3), FormataQuantidade(stock.value(product)));
            QCOMPARE(!match.captured(4).isEmpty(), taken.contains(product));
            Dinheiro needed;
            for (const QStringList& line : before[u"orcamento"_s])
                if (line[1] == row[col::Pedido] && line[12].toUpper() == product)
                    needed += Dinheiro::dePonto(line[13]);
            QCOMPARE(match.captured(2), FormataQuantidade(needed));
        }
        for (const QStringList& movement : moved.value(row[col::Pedido])) {
            stock[movement[0]] += Dinheiro::dePonto(movement[2]);
            taken.insert(movement[0]);
        }
    }
    QVERIFY(lacks >= 20);
}

void TstConferencia::totalsAndFilter() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"PF"_s, .cnpjCpf = u"123.456.789-09"_s});
    b->shop().cliente({.codigo = u"LETRAS"_s, .cnpjCpf = u"12ABC34501DE35"_s});
    b->shop().cliente({.codigo = u"FIADO"_s, .formaPg = u"FIADO"_s});
    const auto pv = [this](int pedido, const QString& cliente, const QString& quantity,
                           const QString& total) {
        b->shop().documento({.pedido = pedido,
                             .cliente = cliente,
                             .nomeVendedor = u"V%1"_s.arg(pedido),
                             .linhas = {{u"P1"_s, quantity, total}}});
    };
    pv(1, u"C1"_s, u"1"_s, u"1000.00"_s);
    pv(2, u"PF"_s, u"1"_s, u"20.00"_s);
    pv(3, u"LETRAS"_s, u"1"_s, u"3.00"_s);
    pv(4, u"FIADO"_s, u"1"_s, u"0.40"_s);
    pv(5, u"FIADO"_s, u"500"_s, u"0.05"_s);
    pv(6, u"C1"_s, u"1"_s, u"7.00"_s);
    QVERIFY(b->open());
    b->click(6, painelfechamento::Selecao);
    confere([](QWidget* window) {
        const Hands hands(window);
        QCOMPARE(allCells(hands.grid(u"Totais"_s)),
                 (QList<QStringList>{{u"Todas"_s, u"6"_s, u"1.030,45"_s},
                                     {u"Encerradas"_s, u"1"_s, u"1.000,00"_s},
                                     {u"CANCELADAS (pessoa física)"_s, u"2"_s, u"23,00"_s},
                                     {u"CANCELADAS: documento com letras"_s, u"1"_s, u"3,00"_s},
                                     {u"Recusadas"_s, u"2"_s, u"0,45"_s},
                                     {u"Recusadas: forma de pagamento"_s, u"2"_s, u"0,45"_s},
                                     {u"Recusadas: estoque"_s, u"1"_s, u"0,05"_s},
                                     {u"Não selecionadas"_s, u"1"_s, u"7,00"_s}}));
        QCOMPARE(hands.list(u"Filtro"_s)->count(), 8);
        const auto shown = [&](const QString& caption) {
            hands.choose(u"Filtro"_s, caption);
            return columnCells(hands.grid(), col::Pedido);
        };
        QCOMPARE(shown(u"Encerradas"_s), QStringList{u"1"_s});
        QCOMPARE(shown(u"CANCELADAS (pessoa física)"_s), (QStringList{u"2"_s, u"3"_s}));
        QCOMPARE(shown(u"CANCELADAS: documento com letras"_s), QStringList{u"3"_s});
        QCOMPARE(shown(u"Recusadas: forma de pagamento"_s), (QStringList{u"4"_s, u"5"_s}));
        QCOMPARE(shown(u"Recusadas: estoque"_s), QStringList{u"5"_s});
        QCOMPARE(shown(u"Não selecionadas"_s), QStringList{u"6"_s});
        QCOMPARE(shown(u"Todas"_s).size(), 6);
        QCOMPARE(situationOf(window),
                 u"O que o encerramento faria em 15/03/2024, às 14:07. Nada foi gravado."_s);
    });
}

void TstConferencia::detailOfTheCurrentRow() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = 1, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"C2"_s, .nomeVendedor = u"B"_s});
    QVERIFY(b->open());
    confere([](QWidget* window) {
        const Hands hands(window);
        auto* detail = hands.control<QPlainTextEdit>(u"Detalhe"_s);
        QVERIFY(detail->isReadOnly());
        QCOMPARE(hands.focus(), u"Grid1"_s);
        QCOMPARE(detail->toPlainText(), u"em aberto, vencimento 14/04/2024, conta 1.05"_s);
        hands.key(Qt::Key_Down);
        QCOMPARE(detail->toPlainText(), u"forma de pagamento: FIADO não está na lista de finalizadoras"_s);
    });
}

void TstConferencia::enterGoesToThePreSale() {
    b->shop().basico();
    documents(30);
    QVERIFY(b->open());
    b->button(u"Command4"_s)->setFocus();
    confere([](QWidget* window) {
        const Hands hands(window);
        hands.key(Qt::Key_End, Qt::ControlModifier);
        hands.key(Qt::Key_Up);
        hands.key(Qt::Key_Return);
        QVERIFY(!window->isVisible());
    });
    QCOMPARE(b->cell(b->grid()->currentRow(), painelfechamento::Pedido), u"29"_s);
    QVERIFY(b->gridHasFocus());
    QVERIFY(b->grid()->isTicked(29));
}

void TstConferencia::doubleClickGoesToThePreSale() {
    b->shop().basico();
    documents(5);
    QVERIFY(b->open());
    confere([](QWidget* window) {
        Hands(window).clickTwice(4, col::Cliente);
        QVERIFY(!window->isVisible());
    });
    QCOMPARE(b->cell(b->grid()->currentRow(), painelfechamento::Pedido), u"4"_s);
    QVERIFY(b->gridHasFocus());
}

void TstConferencia::buttonGoesToThePreSale() {
    b->shop().basico();
    documents(5);
    QVERIFY(b->open());
    confere([](QWidget* window) {
        const Hands hands(window);
        hands.click(3, col::Detalhe);
        hands.press(u"Command1"_s);
        QVERIFY(!window->isVisible());
    });
    QCOMPARE(b->cell(b->grid()->currentRow(), painelfechamento::Pedido), u"3"_s);
}

void TstConferencia::opensOnThePanelsRow() {
    b->shop().basico();
    documents(5);
    QVERIFY(b->open());
    b->grid()->setCurrentCell(4, painelfechamento::Total);
    confere([](QWidget* window) {
        const Hands hands(window);
        QCOMPARE(hands.grid()->currentRow(), 4);
        // A filter keeps the row, if it shows it.
        hands.choose(u"Filtro"_s, u"Encerradas"_s);
        QCOMPARE(hands.grid()->currentRow(), 4);
    });
    QCOMPARE(b->grid()->currentRow(), 4);
    QCOMPARE(b->grid()->currentColumn(), int(painelfechamento::Total));
}

void TstConferencia::byKeyboardAlone() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .formaPg = u"FIADO"_s});
    documents(3);
    b->shop().documento({.pedido = 4, .cliente = u"C2"_s, .nomeVendedor = u"Z"_s});
    QVERIFY(b->open());
    confere([](QWidget* window) {
        const Hands hands(window);
        QStringList order{hands.focus()};
        for (int i = 0; i < 6; ++i) {
            // In the list Enter goes to the pre-sale, elsewhere to the next control.
            hands.key(i % 2 == 0 || hands.focus() == u"Grid1" ? Qt::Key_Tab : Qt::Key_Return);
            order.append(hands.focus());
        }
        QCOMPARE(order, (QStringList{u"Grid1"_s, u"Detalhe"_s, u"Totais"_s, u"Filtro"_s, u"Command1"_s,
                                     u"Fechar"_s, u"Grid1"_s}));
        hands.key(Qt::Key_M, Qt::AltModifier);
        QCOMPARE(hands.focus(), u"Filtro"_s);
        hands.key(Qt::Key_End);
        QCOMPARE(columnCells(hands.grid(), col::Pedido), QStringList{u"4"_s});
        hands.key(Qt::Key_I, Qt::AltModifier);
        QVERIFY(!window->isVisible());
    });
    QCOMPARE(b->cell(b->grid()->currentRow(), painelfechamento::Pedido), u"4"_s);
    confere([](QWidget* window) {
        Hands(window).key(Qt::Key_F, Qt::AltModifier);
        QVERIFY(!window->isVisible());
    });
    QVERIFY(b->panel()->isVisible());
}

void TstConferencia::everyControlHasAName() {
    b->shop().basico();
    documents(1);
    QVERIFY(b->open());
    confere([](QWidget* window) {
        QStringList names;
        for (QWidget* control : window->findChildren<QWidget*>())
            if (control->focusPolicy() & Qt::TabFocus && control->isVisible()) {
                QVERIFY2(!nameOf(control).isEmpty(), qPrintable(control->objectName()));
                names.append(nameOf(control));
            }
        for (const QString& name : {u"Conferência"_s, u"Totais por resultado"_s, u"Detalhe da pré-venda"_s})
            QVERIFY2(names.contains(name), qPrintable(name));
        // Where a screen reader finds a list's label by its relation, the name itself is the chosen text.
        QCOMPARE(Hands(window).list(u"Filtro"_s)->accessibleName(), u"Mostrar"_s);
        QCOMPARE(nameOf(Hands(window).control<QProgressBar>(u"progresso"_s)), u"Andamento da conferência"_s);
        QCOMPARE(window->windowTitle(), u"Conferência"_s);
    });
}

void TstConferencia::rowsTellAScreenReader() {
    b->shop().basico();
    documents(1);
    QVERIFY(b->open());
    confere([](QWidget* window) {
        QAccessibleInterface* table = QAccessible::queryAccessibleInterface(Hands(window).grid());
        QVERIFY(table && table->tableInterface());
        QAccessibleInterface* cell = table->tableInterface()->cellAt(0, col::Resultado);
        QVERIFY(cell);
        QCOMPARE(cell->text(QAccessible::Name), u"encerrada"_s);
    });
}

void TstConferencia::markedRowsCanBeRead() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"PF"_s, .cnpjCpf = u"123.456.789-09"_s});
    b->shop().cliente({.codigo = u"LETRAS"_s, .cnpjCpf = u"12ABC34501DE35"_s});
    b->shop().cliente({.codigo = u"FIADO"_s, .formaPg = u"FIADO"_s});
    b->shop().documento({.pedido = 1, .cliente = u"PF"_s, .nomeVendedor = u"A"_s});
    b->shop().documento({.pedido = 2, .cliente = u"LETRAS"_s, .nomeVendedor = u"B"_s});
    b->shop().documento({.pedido = 3, .cliente = u"FIADO"_s, .nomeVendedor = u"C"_s});
    QVERIFY(b->open());
    confere([](QWidget* window) {
        const Grid* grid = Hands(window).grid();
        QList<QColor> backgrounds;
        for (int row = 1; row <= 3; ++row) {
            QVERIFY(contrast(grid->backColor(row, col::Resultado), grid->foreColor(row, col::Resultado)) >=
                    7);
            QVERIFY(!backgrounds.contains(grid->backColor(row, col::Resultado)));
            backgrounds.append(grid->backColor(row, col::Resultado));
        }
        QVERIFY(grid->isBold(1, col::Resultado));
        QVERIFY(grid->isBold(2, col::Resultado));
        QVERIFY(!grid->isBold(3, col::Resultado));
    });
}

void TstConferencia::listIsCopiedSummedUpAndSearched() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"C2"_s, .nome = u"AÇOUGUE SÃO JOSÉ"_s, .formaPg = u"FIADO"_s});
    documents(2);
    b->shop().documento({.pedido = 3, .cliente = u"C2"_s, .nomeVendedor = u"Z"_s});
    QVERIFY(b->open());
    confere([this](QWidget* window) {
        const Hands hands(window);
        b->mark();
        hands.grid()->setCurrentCell(2, col::Total);
        hands.key(Qt::Key_Down, Qt::ShiftModifier);
        const auto* sum = hands.control<QLabel>(u"Soma"_s);
        QCOMPARE(sum->text(), u"2 linhas marcadas · R$ TOTAL: 2 valores, soma 20,00"_s);
        QVERIFY(sum->width() >= sum->fontMetrics().horizontalAdvance(sum->text()));
        hands.key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"PEDIDO\tCLIENTE\tR$ TOTAL\tRESULTADO\tDETALHE\n"
                 "2\tPADARIA MODELO\t10,00\tencerrada\tem aberto, vencimento 14/04/2024, conta 1.05\n"
                 "3\tAÇOUGUE SÃO JOSÉ\t10,00\trecusada\tforma de pagamento: FIADO não está na lista de "
                 "finalizadoras"_s);
        // From the totals as well the search is one in the list, and its Enter goes to no pre-sale.
        hands.grid()->setCurrentCell(1, col::Pedido);
        hands.grid(u"Totais"_s)->setFocus();
        hands.key(Qt::Key_F, Qt::ControlModifier);
        hands.type(u"fiado"_s);
        QCOMPARE(hands.grid()->currentRow(), 3);
        hands.key(Qt::Key_Return);
        QVERIFY(window->isVisible());
        hands.key(Qt::Key_Escape);
        QVERIFY(window->isVisible());
        QVERIFY(!hands.grid()->isFinding());
        hands.grid(u"Totais"_s)->setFocus();
        hands.key(Qt::Key_A, Qt::ControlModifier);
        hands.key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(
            QGuiApplication::clipboard()->text().startsWith(u"Todas\t3\t30,00\nEncerradas\t2\t20,00\n"_s));
        QCOMPARE(b->statements(), QStringList());
    });
}

void TstConferencia::menusNameTheKeysThatWork() {
    b->shop().basico();
    documents(1);
    QVERIFY(b->open());
    confere([](QWidget* window) {
        const Hands hands(window);
        const auto captions = [&hands](const QString& grid) {
            hands.grid(grid)->setFocus();
            hands.key(Qt::Key_F10, Qt::ShiftModifier);
            QStringList found;
            if (QWidget* menu = QApplication::activePopupWidget()) {
                for (const QAction* action : menu->actions())
                    if (action->isVisible() && action->isEnabled())
                        found.append(action->objectName());
                QTest::keyClick(menu, Qt::Key_Escape);
            }
            return found;
        };
        const QStringList list = captions(u"Grid1"_s);
        QVERIFY(list.contains(u"SalvarGrade"_s));
        QVERIFY(list.contains(u"LocalizarNaGrade"_s));
        const QStringList totals = captions(u"Totais"_s);
        QVERIFY(totals.contains(u"SalvarGrade"_s));
        QVERIFY(!totals.contains(u"LocalizarNaGrade"_s));
    });
}

// The first pre-sale's question fails, so that none is in the list.
void TstConferencia::emptyListSaysWhy() {
    b->shop().basico();
    documents(2);
    QVERIFY(b->open());
    QStringList told;
    QTimer watch;
    watch.callOnTimeout([&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            box->button(QMessageBox::Ok)->click();
        } else if (modal && !situationOf(modal).startsWith(u"Conferindo")) {
            watch.stop();
            for (const QString& name : {u"Grid1"_s, u"Totais"_s})
                told.append(Hands(modal).grid(name)->accessibleDescription());
            QTest::keyClick(modal, Qt::Key_Escape);
        }
    });
    watch.start(5);
    m_proxy->cutBefore(2);
    b->key(Qt::Key_F6);
    QVERIFY(!m_proxy->cutAt().isNull());
    QCOMPARE(told, QStringList(2, u"Nenhuma pré-venda conferida"_s));
}

void TstConferencia::needsListedAndSelectedPreSales() {
    const auto told = [this](const QString& text) {
        ModalHelper modal;
        modal.expect(text, QMessageBox::Ok);
        b->key(Qt::Key_F6);
        QCOMPARE(modal.problem(), QString());
        QCOMPARE(b->statements(), QStringList());
    };
    const QString nothing = u"Não há pré-venda listada para conferir. Verifique!!!"_s;
    b->shop().basico();
    QVERIFY(b->open());
    told(nothing);
    b->shop().documento({.pedido = 1, .tipo = u"D"_s});
    QVERIFY(b->open());
    told(nothing);
    b->server().execute(u"UPDATE orcamento SET TipoOperacao = 'P'"_s);
    QVERIFY(b->open());
    b->press(u"Command1"_s);
    told(mensagens::nadaSelecionado);
}

void TstConferencia::commitsWhatIsBeingEdited() {
    b->shop().basico();
    documents(1);
    QVERIFY(b->open());
    b->click(1, painelfechamento::DiasVenc);
    QVERIFY(b->editor()->isVisible());
    b->type(u"45"_s);
    QCOMPARE(rows().value(0).value(col::Detalhe), u"em aberto, vencimento 29/04/2024, conta 1.05"_s);
    QVERIFY(!b->editor()->isVisible());
    QCOMPARE(b->valor(u"SELECT prazo FROM clientes"_s), u"45"_s);
}

void TstConferencia::toolTipNamesTheKey() {
    b->shop().basico();
    QVERIFY(b->open());
    QCOMPARE(b->button(u"Command4"_s)->toolTip(),
             u"Tecla de atalho: Alt+E\nF6: Conferência, que mostra antes o que será feito"_s);
    auto* action = b->control<QAction>(u"MnConferencia"_s);
    QVERIFY(b->grid()->actions().contains(action));
    QCOMPARE(action->shortcut(), QKeySequence(Qt::Key_F6));
}

void TstConferencia::writesNothingAndAsksOnce() {
    b->shop().basico();
    b->shop().cliente({.codigo = u"PF"_s, .cnpjCpf = u"1"_s});
    b->shop().produto({.codigo = u"CESTA"_s});
    b->shop().ficha(u"CESTA"_s, {{u"P1"_s, u"2"_s}, {u"P1"_s, u"1"_s}});
    documents(3);
    b->shop().documento({.pedido = 4, .cliente = u"PF"_s, .nomeVendedor = u"4"_s});
    b->shop().documento({.pedido = 5, .nomeVendedor = u"5"_s, .linhas = {{u"CESTA"_s, u"2"_s}, {}, {}}});
    b->shop().documento({.pedido = 6, .nomeVendedor = u"6"_s});
    QVERIFY(b->open());
    b->click(6, painelfechamento::Selecao);
    const Snapshot before = b->shop().retrato();
    b->mark();
    QCOMPARE(rows().size(), 6);
    const QStringList sent = b->statements();
    QCOMPARE(sent.size(), 7);
    for (const QString& sql : sent)
        QVERIFY2(sql.startsWith(u"SELECT "_s, Qt::CaseInsensitive), qPrintable(sql));
    QVERIFY(sent[0].contains(u" From logestoque "_s));
    for (int pedido = 1; pedido <= 5; ++pedido)
        QVERIFY2(sent[pedido].contains(u"o.nrpedido=%1 "_s.arg(pedido)), qPrintable(sent[pedido]));
    QCOMPARE(sent[6], u"Select CNPJ_CPF From Clientes Where Codigo='C1'"_s);
    QCOMPARE(b->shop().retrato(), before);
    QVERIFY(b->log().isNull());
}

void TstConferencia::escapeCancels() {
    b->shop().basico();
    documents(200);
    QVERIFY(b->open());
    const Snapshot before = b->shop().retrato();
    m_proxy->onStatement(
        [](const QByteArray&) { std::this_thread::sleep_for(std::chrono::milliseconds(20)); });
    b->mark();
    qsizetype done = 0;
    {
        ModalHelper modal;
        modal.onOpen([&](QWidget* window) {
            const Hands hands(window);
            auto* progress = hands.control<QProgressBar>(u"progresso"_s);
            QTRY_VERIFY_WITH_TIMEOUT(progress->isVisible() && progress->value() >= 5, patienceMs);
            QCOMPARE(progress->maximum(), 200);
            QVERIFY(QApplication::overrideCursor());
            QCOMPARE(hands.grid()->rows(), 1);
            for (const QString& name : {u"Grid1"_s, u"Totais"_s})
                QCOMPARE(hands.grid(name)->accessibleDescription(), u"A conferência ainda não terminou"_s);
            QTest::keyClick(window, Qt::Key_Escape);
            QVERIFY(window->isVisible());
            QVERIFY(!progress->isVisible());
            QVERIFY(!QApplication::overrideCursor());
            done = hands.grid()->rows() - 1;
            QVERIFY(done >= 5 && done < 200);
            QCOMPARE(
                situationOf(window),
                u"Conferência interrompida: %1 de 200 pré-vendas conferidas; os totais são só dessas."_s.arg(
                    done));
            QCOMPARE(hands.grid(u"Totais"_s)->text(1, col::TotalsCount), QString::number(done));
            QTest::qWait(200);
            QCOMPARE(hands.grid()->rows() - 1, done);
            hands.key(Qt::Key_Escape);
            QVERIFY(!window->isVisible());
        });
        b->key(Qt::Key_F6);
        QCOMPARE(modal.problem(), QString());
    }
    m_proxy->onStatement({});
    QCOMPARE(b->statements().size(), done + 1);
    QCOMPARE(b->shop().retrato(), before);
    QVERIFY(b->panel()->isVisible());
}

void TstConferencia::closingTheWindowCancels() {
    b->shop().basico();
    documents(100);
    QVERIFY(b->open());
    m_proxy->onStatement(
        [](const QByteArray&) { std::this_thread::sleep_for(std::chrono::milliseconds(20)); });
    ModalHelper modal;
    modal.onOpen([](QWidget* window) {
        auto* progress = Hands(window).control<QProgressBar>(u"progresso"_s);
        QTRY_VERIFY_WITH_TIMEOUT(progress->isVisible(), patienceMs);
        window->close();
    });
    b->key(Qt::Key_F6);
    m_proxy->onStatement({});
    QCOMPARE(modal.problem(), QString());
    QVERIFY(!QApplication::overrideCursor());
    b->mark();
    QTest::qWait(200);
    QCOMPARE(b->statements(), QStringList());
}

// The report comes up out of the window's own work, possibly before the window has been looked at.
void TstConferencia::connectionLostHalfWay() {
    b->shop().basico();
    documents(5);
    QVERIFY(b->open());
    QStringList told;
    QStringList shown;
    QString situation;
    QTimer watch;
    watch.callOnTimeout([&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            told.append(box->informativeText());
            box->button(QMessageBox::Ok)->click();
        } else if (modal && !situationOf(modal).startsWith(u"Conferindo")) {
            watch.stop();
            situation = situationOf(modal);
            shown = columnCells(Hands(modal).grid(), col::Pedido);
            QVERIFY(!QApplication::overrideCursor());
            QTest::keyClick(modal, Qt::Key_Escape);
        }
    });
    watch.start(5);
    m_proxy->cutBefore(4);
    b->key(Qt::Key_F6);
    QVERIFY(!m_proxy->cutAt().isNull());
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].contains(mensagens::conexaoPerdida));
    QCOMPARE(shown, (QStringList{u"1"_s, u"2"_s}));
    QCOMPARE(situation,
             u"Conferência incompleta por causa de um erro: 2 de 5 pré-vendas conferidas; os totais "
             "são só dessas."_s);
    QCOMPARE(rows().size(), 5);
}

QTEST_MAIN(TstConferencia)
#include "tst_conferencia.moc"

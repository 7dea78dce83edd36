#include "closing/endurance/Day.h"

#include "base/Clock.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/Recovery.h"
#include "reports/ComissaoColumns.h"
#include "support/Preview.h"
#include "ui/DateBox.h"

#include <QApplication>
#include <QLabel>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

constexpr int customers = 40;
constexpr int products = 40;
constexpr int mostDocuments = 8;
constexpr int longestListing = 40;

const QStringList methods = {u"BOLETO"_s, u"CARTÃO"_s, u"CHEQUE"_s, u"DINHEIRO"_s, u"PIX"_s, u"(Nenhuma)"_s};

QString productCode(int number) {
    return u"%1"_s.arg(number, 13, 10, QLatin1Char('0'));
}

} // namespace

Day::Day(quint32 seed)
    : m_proxy(m_bench.server().socket()), m_random(seed), m_now(QDate(2024, 3, 1), QTime(14, 7, 9)) {
    m_attendant.operate(u"FechamentosInterrompidos"_s,
                        [this](QWidget* window) { concludeAll(window, m_lastMovementDone); });
    m_bench.reset();
    m_bench.server().useSocket(m_proxy.socket());
    m_bench.shop().movimento(seed);
    loadShop();
    begin();
}

Day::~Day() {
    m_bench.close();
}

/// Every fourth product is composed of two others.
void Day::loadShop() {
    Shop& shop = m_bench.shop();
    shop.empresa();
    shop.formas();
    m_bench.server().execute(u"UPDATE empresa SET Titulom1='VAREJO', Titulom2='ATACADO', Titulom3='REDE', "
                             "Titulom4='BALCAO'"_s);
    for (int i = 1; i <= customers; ++i)
        shop.cliente({.codigo = u"K%1"_s.arg(i),
                      .nome = u"MERCADO %1"_s.arg(i),
                      .prazo = u"28"_s,
                      .formaPg = methods[i % methods.size()],
                      .colunaPreco = QString::number(1 + i % 4),
                      .cnpjCpf = i % 10 == 0 ? u"123.456.789-09"_s : u"12.345.678/0001-95"_s});
    for (int i = 1; i <= products; ++i)
        shop.produto({.codigo = productCode(i),
                      .estoque = QString::number(initialStock),
                      .descricao = u"MERCADORIA %1"_s.arg(i),
                      .precos = {u"12.50"_s, u"11.90"_s, u"11.50"_s, u"10.90"_s}});
    for (int i = 4; i <= products; i += 4)
        shop.ficha(productCode(i), {{productCode(i - 1), u"2"_s}, {productCode(i - 2), u"0.5"_s}});
}

void Day::addDocuments() {
    const QStringList prices = {u"12.50"_s, u"11.90"_s, u"11.50"_s, u"10.90"_s, u"9.99"_s};
    for (int i = m_random.bounded(1, mostDocuments); i > 0; --i) {
        Documento document{.pedido = ++m_lastDocument};
        document.cliente = u"K%1"_s.arg(m_random.bounded(1, customers + 1));
        document.tipo = u"D"_s;
        document.nomeVendedor = u"VENDEDOR %1"_s.arg(m_random.bounded(1, 5));
        document.diasAtras = 0;
        document.linhas.clear();
        for (int line = m_random.bounded(1, 5); line > 0; --line)
            document.linhas.append(aoPreco(productCode(m_random.bounded(1, products + 1)),
                                           u"%1.5"_s.arg(m_random.bounded(5)),
                                           prices[m_random.bounded(prices.size())]));
        if (chance(3))
            document.linhas.append({.codigo = u"***NOTA"_s, .quantidade = u"0"_s, .total = u"0"_s});
        m_bench.shop().documento(document);
        m_bench.server().execute(
            u"INSERT INTO observacao SET nrpedido=%1, tipoOperacao='D', texto='ENTREGAR CEDO'"_s.arg(
                m_lastDocument));
    }
}

/// The next morning: a fresh panel, which lists the new documents.
void Day::begin() {
    count(u"new day"_s);
    m_bench.close();
    m_now = m_now.addDays(1);
    clock::fix(m_now);
    addDocuments();
    m_proxy.mark();
    if (!m_bench.open(PanelBench::wide))
        throw TestError(u"the panel does not start"_s);
}

void Day::doSomething() {
    struct Weighted {
        Task task;
        int weight;
    };
    static constexpr std::array<Weighted, 15> tasks = {{{&Day::convertOrList, 12},
                                                        {&Day::close, 8},
                                                        {&Day::tickSome, 8},
                                                        {&Day::editDays, 6},
                                                        {&Day::editMethod, 6},
                                                        {&Day::editTable, 6},
                                                        {&Day::checkPrices, 4},
                                                        {&Day::promote, 4},
                                                        {&Day::view, 6},
                                                        {&Day::pressSelection, 4},
                                                        {&Day::summary, 4},
                                                        {&Day::commission, 4},
                                                        {&Day::priceLevel, 4},
                                                        {&Day::targets, 4},
                                                        {&Day::lookAtInterrupted, 2}}};
    m_attendant.forget();
    const bool isIdle = m_bench.grid()->rows() == 1 && chance(2);
    if (isIdle || m_bench.grid()->rows() > longestListing) {
        begin();
        return;
    }
    int total = 0;
    for (const Weighted& each : tasks)
        total += each.weight;
    int left = m_random.bounded(total);
    for (const Weighted& each : tasks) {
        left -= each.weight;
        if (left < 0) {
            (this->*each.task)();
            return;
        }
    }
}

void Day::press(const QString& button) {
    if (m_bench.button(button)->isEnabled())
        m_bench.press(button);
}

/// Sometimes the connection ends before a statement of the operation, or before its answer comes.
void Day::pressWithCut(const QString& button) {
    constexpr int latestStatement = 40;
    constexpr int oneCutIn = 3;
    m_proxy.mark();
    const bool cut = chance(oneCutIn);
    if (cut) {
        const int k = m_random.bounded(1, latestStatement);
        if (chance(2))
            m_proxy.cutBefore(k);
        else
            m_proxy.cutAfter(k);
    }
    press(button);
    const bool wasCut = !m_proxy.cutAt().isNull();
    if (wasCut) {
        count(u"connection cut"_s);
        m_lastMovementDone = isLastMovementDone(m_proxy.texts());
    }
    m_proxy.mark();
    if (wasCut)
        comeBack();
}

/// The next press has a connection again, and with it comes the window of what was interrupted.
void Day::comeBack() {
    if (!waitForSessionsToEnd(m_bench.server()))
        throw TestError(u"the server does not end the session that was cut"_s);
    for (const QString& button : {u"Command4"_s, u"Command3"_s, u"Command2"_s})
        if (m_bench.button(button)->isEnabled()) {
            m_bench.press(button);
            return;
        }
}

void Day::convertOrList() {
    count(u"convert or list"_s);
    if (m_bench.button(u"Command2"_s)->isEnabled())
        pressWithCut(u"Command2"_s);
    else if (m_bench.button(u"Command3"_s)->isEnabled())
        pressWithCut(u"Command3"_s);
    else
        addDocuments();
}

void Day::close() {
    count(u"close"_s);
    pressWithCut(u"Command4"_s);
    closeLog();
}

/// The text viewer with the closing's log, when one has come up.
void Day::closeLog() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"TextViewer" && window->isVisible())
            window->close();
}

void Day::checkPrices() {
    count(u"check prices"_s);
    pressWithCut(u"Command5"_s);
}

void Day::pressSelection() {
    count(u"select all or none"_s);
    press(u"Command1"_s);
}

int Day::anyRow() {
    const int rows = m_bench.grid()->rows();
    return rows > 1 ? m_random.bounded(1, rows) : 0;
}

void Day::tickSome() {
    count(u"tick"_s);
    for (int i = 0; i < 3; ++i)
        if (const int row = anyRow())
            m_bench.click(row, painelfechamento::Selecao);
}

void Day::editDays() {
    count(u"edit days"_s);
    const int row = anyRow();
    if (row == 0 || m_bench.cell(row, painelfechamento::DiasVenc).isEmpty())
        return;
    m_bench.click(row, painelfechamento::DiasVenc);
    m_bench.type(QString::number(m_random.bounded(60)));
    m_bench.key(Qt::Key_Return);
}

void Day::editMethod() {
    count(u"edit method"_s);
    const int row = anyRow();
    if (row == 0 || m_bench.cell(row, painelfechamento::DiasVenc).isEmpty())
        return;
    m_bench.click(row, painelfechamento::FormaPagto);
    for (int steps = m_random.bounded(4); steps > 0; --steps)
        m_bench.key(chance(2) ? Qt::Key_Down : Qt::Key_Up);
    m_bench.key(Qt::Key_Return);
}

void Day::editTable() {
    count(u"edit price table"_s);
    const int row = anyRow();
    if (row == 0)
        return;
    m_bench.click(row, painelfechamento::Tabela);
    m_bench.type(QString::number(m_random.bounded(1, 6)));
    m_bench.key(Qt::Key_Return);
    // A table that was refused leaves its editor open; without one, Escape would end the program.
    if (m_bench.editor()->isVisible())
        m_bench.key(Qt::Key_Escape);
}

void Day::promote() {
    count(u"promote"_s);
    m_attendant.operate(u"PromocaoPedidos"_s, [this](QWidget* window) {
        const Hands hands(window);
        hands.fill(u"Descricao"_s, productCode(m_random.bounded(1, products + 1)));
        hands.key(Qt::Key_Return);
        hands.fill(u"Venda"_s, u"%1,%2"_s.arg(m_random.bounded(9, 14)).arg(m_random.bounded(10, 100)));
        hands.key(Qt::Key_Return);
        for (const QString& button : {u"Command2"_s, u"Command1"_s})
            if (window->isVisible() && hands.button(button)->isEnabled())
                hands.press(button);
    });
    press(u"Command6"_s);
}

void Day::view() {
    count(u"view"_s);
    if (const int row = anyRow())
        m_bench.clickTwice(row, painelfechamento::Cliente);
}

void Day::trigger(const QString& item) {
    m_bench.panel()->findChild<QAction*>(item)->trigger();
    m_bench.settle();
}

void Day::turnPages() {
    QWidget* preview = openPreview();
    if (!preview)
        return;
    for (const QString& action : {u"NextPage"_s, u"ZoomIn"_s, u"LastPage"_s, u"FitPage"_s, u"FirstPage"_s}) {
        preview->findChild<QAction*>(action)->trigger();
        QCoreApplication::processEvents();
    }
    m_bench.closePreviews();
}

void Day::summary() {
    count(u"sales summary"_s);
    m_attendant.operate(u"ResumoVendas"_s, [this](QWidget* window) {
        const Hands hands(window);
        hands.control<DateBox>(u"DataIni"_s)->setText(u"01/02/2024"_s);
        hands.control<DateBox>(u"DataFin"_s)->setText(u"29/02/2024"_s);
        hands.choose(u"order"_s, chance(2) ? u"ALFAB"_s : u"TOTAL V"_s);
        hands.press(u"Command4"_s);
        auto* tabs = hands.control<QTabWidget>(u"TabPreco"_s);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            hands.settle();
        }
    });
    trigger(u"MnResumoVendas"_s);
}

void Day::commission() {
    count(u"commission and statement"_s);
    m_attendant.operate(u"ExtratoVendedor"_s, [this](QWidget* window) {
        Hands(window).press(u"Command1"_s);
        turnPages();
    });
    m_attendant.operate(u"Comissao"_s, [this](QWidget* window) {
        const Hands hands(window);
        hands.control<DateBox>(u"DataIni"_s)->setText(u"01/02/2024"_s);
        hands.control<DateBox>(u"DataFin"_s)->setText(u"29/02/2024"_s);
        hands.press(u"Command4"_s);
        Grid* grid = hands.grid();
        const int sellers = grid->rows() - 1 - comissao::footerRows;
        if (sellers < 1)
            return;
        const int row = m_random.bounded(1, sellers + 1);
        hands.click(row, comissao::PorcPao);
        hands.type(u"%1,5"_s.arg(m_random.bounded(4)));
        hands.key(Qt::Key_Return);
        hands.click(row, comissao::Imprime);
        hands.press(u"Command1"_s);
        turnPages();
    });
    trigger(u"MnComissao"_s);
}

void Day::priceLevel() {
    count(u"customers by price level"_s);
    m_attendant.operate(u"RelatNivelPreco"_s, [this](QWidget* window) {
        const Hands hands(window);
        auto* levels = hands.list(u"TabelaPreco"_s);
        levels->setCurrentIndex(m_random.bounded(levels->count()));
        hands.press(u"Command4"_s);
        turnPages();
    });
    trigger(u"MnrelAlfaNivel"_s);
}

void Day::targets() {
    count(u"targets"_s);
    m_attendant.operate(u"MetasQuadro"_s, [this](QWidget* window) {
        const Hands hands(window);
        auto* sellers = hands.list(u"Vendedores"_s);
        sellers->setCurrentIndex(m_random.bounded(sellers->count()));
        hands.settle();
        hands.fill(u"Descricao"_s, productCode(m_random.bounded(1, products + 1)));
        hands.key(Qt::Key_Return);
        hands.fill(u"Quantidade"_s, QString::number(m_random.bounded(1, 500)));
        hands.press(u"Command1"_s);
        hands.control<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(1);
        hands.settle();
        hands.control<DateBox>(u"DataIni"_s)->setText(u"01/02/2024"_s);
        hands.control<DateBox>(u"DataFin"_s)->setText(u"29/02/2024"_s);
        hands.press(u"Command4"_s);
        if (hands.button(u"Command2"_s)->isEnabled()) {
            hands.press(u"Command2"_s);
            turnPages();
        }
    });
    trigger(u"Metas"_s);
}

void Day::lookAtInterrupted() {
    count(u"interrupted closings"_s);
    m_bench.key(Qt::Key_F7);
}

void Day::tidyUp() {
    m_bench.key(Qt::Key_F7);
    const auto* told = m_bench.control<QLabel>(u"Interrompidos"_s);
    if (told->isVisible())
        throw TestError(u"left half done: "_s + told->text());
}

} // namespace tarvessa::test

#include "bench/Screens.h"
#include "bench/support/BoxAnswerer.h"
#include "bench/support/ModalGrid.h"
#include "bench/support/Painted.h"
#include "bench/support/Workload.h"
#include "closing/PainelFechamento.h"
#include "closing/PainelFechamentoColumns.h"
#include "closing/VisualizaPedido.h"
#include "core/AcessoDados.h"
#include "support/Hands.h"
#include "ui/grid/Grid.h"

#include <QAction>
#include <QPushButton>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int fewestDocuments = 100;
constexpr int linesPerPv = 3;

void expect(bool done, const char* problem) {
    if (!done)
        throw std::runtime_error(problem);
}

/// The panel with its first listing on the screen.
class PanelStage : public Stage {
  public:
    using Operation = void (*)(PainelFechamento& panel, int size);

    PanelStage(Operation operation, int size) : m_operation(operation), m_size(size) {
        expect(m_panel.Form_Load() && test::showActive(&m_panel), "the panel did not start");
        waitPainted(m_panel.findChild<Grid*>(u"Grid1"_s)->viewport());
    }
    ~PanelStage() override { EncerraBanco(); }
    PanelStage(const PanelStage&) = delete;
    PanelStage& operator=(const PanelStage&) = delete;

    void run() override { m_operation(m_panel, m_size); }

  private:
    PainelFechamento m_panel;
    Operation m_operation;
    int m_size;
};

/// The start itself: connection, listing of the DAVs, payment methods, settings.
class StartStage : public Stage {
  public:
    explicit StartStage(int size) : m_size(size) {}
    ~StartStage() override { EncerraBanco(); }
    StartStage(const StartStage&) = delete;
    StartStage& operator=(const StartStage&) = delete;

    void run() override {
        m_panel = std::make_unique<PainelFechamento>();
        expect(m_panel->Form_Load(), "the panel did not start");
        const auto* grid = m_panel->findChild<Grid*>(u"Grid1"_s);
        waitPainted(grid->viewport());
        expect(grid->rows() == m_size + 1, "the panel did not list the DAVs");
    }

  private:
    std::unique_ptr<PainelFechamento> m_panel;
    int m_size;
};

std::function<std::unique_ptr<Stage>(int)> panelWith(PanelStage::Operation operation) {
    return [operation](int size) { return std::make_unique<PanelStage>(operation, size); };
}

Grid* gridOf(PainelFechamento& panel) {
    return panel.findChild<Grid*>(u"Grid1"_s);
}

QPushButton* buttonOf(PainelFechamento& panel, const QString& name) {
    return panel.findChild<QPushButton*>(name);
}

void list(PainelFechamento& panel, int size) {
    Grid* grid = gridOf(panel);
    QPushButton* button = buttonOf(panel, u"Command3"_s);
    grid->setRows(1);
    button->setEnabled(true);
    button->click();
    waitPainted(grid->viewport());
    expect(grid->rows() == size + 1, "the panel did not list the pre-sales");
}

void editPriceTables(PainelFechamento& panel, int size) {
    const test::Hands hands(&panel);
    for (int row = 1; row <= size; ++row) {
        hands.click(row, painelfechamento::Tabela);
        hands.type(u"3"_s);
        hands.key(Qt::Key_Return);
        expect(gridOf(panel)->text(row, painelfechamento::Tabela) == u"3"_s,
               "the price table was not stored");
    }
}

void view(PainelFechamento& panel, int size) {
    const ModalGrid lines(u"GridItens"_s);
    for (int number = 1; number <= size; ++number)
        VisualizaPedido::abre(&panel, number, u"P"_s);
    expect(lines.windows() == size, "the documents were not shown");
}

void convert(PainelFechamento& panel, int /*size*/) {
    buttonOf(panel, u"Command2"_s)->click();
    expect(gridOf(panel)->rows() == 1, "the conversion did not end well");
}

void checkPrices(PainelFechamento& panel, int size) {
    const BoxAnswerer answerer;
    buttonOf(panel, u"Command5"_s)->click();
    expect(answerer.boxes().size() == 2 && answerer.boxes()[1].text.count(u"PV Nº "_s) == size,
           "the price check did not end well");
}

void rehearse(PainelFechamento& panel, int size) {
    const ModalGrid rehearsed(u"Grid1"_s);
    panel.findChild<QAction*>(u"MnConferencia"_s)->trigger();
    expect(rehearsed.rows() == size, "the window did not list all pre-sales");
}

void closeAll(PainelFechamento& panel, int /*size*/) {
    const BoxAnswerer answerer;
    buttonOf(panel, u"Command4"_s)->click();
    expect(answerer.boxes().size() == 2 &&
               answerer.boxes()[1].text == u"Processamento efetuado com sucesso."_s,
           "the closing did not end well");
}

} // namespace

QList<Screen> panelScreens(const Workload& workload) {
    const auto listing = [&workload](int size) { workload.listing(size); };
    const auto pvs = [&workload](int size) { workload.trade(size, 'P'); };
    const auto davs = [&workload](int size) { workload.trade(size, 'D'); };
    return {
        {.what = u"start with %1 DAVs"_s,
         .load = davs,
         .open = [](int size) { return std::make_unique<StartStage>(size); },
         .linkSize = 10,
         .connects = true},
        {.what = u"listing of %1 PVs"_s,
         .load = listing,
         .open = panelWith(list),
         .linkSize = 10,
         .linkRuns = 10,
         .growth = {1000, 10000, 100000}},
        {.what = u"listing of %1 PVs"_s, .load = listing, .open = panelWith(list), .linkSize = 100000},
        {.what = u"price tables of %1 customers edited"_s,
         .load =
             [&workload](int size) {
                 workload.customers(Workload::usualCustomers);
                 workload.listing(size);
             },
         .open = panelWith(editPriceTables),
         .linkSize = 10,
         .changesData = true},
        {.what = u"%1 documents viewed"_s, .load = listing, .open = panelWith(view), .linkSize = 10},
        {.what = u"conversion of %1 DAVs"_s,
         .load = davs,
         .open = panelWith(convert),
         .linkSize = 5,
         .changesData = true,
         .growth = {10, 100, 1000}},
        {.what = u"price check of %1 PVs"_s,
         .load = pvs,
         .open = panelWith(checkPrices),
         .linkSize = 5,
         .changesData = true,
         .growth = {10, 100, 1000}},
        {.what = u"Conferência of %1 PVs"_s,
         .load = [&workload](int size) { workload.listing(size, linesPerPv); },
         .open = panelWith(rehearse),
         .linkSize = 20,
         .growth = {20, 200, 2000}},
        {.what = u"closing of %1 PVs"_s,
         .load = [&workload](int size) { workload.closing(size, std::max(size, fewestDocuments)); },
         .open = panelWith(closeAll),
         .linkSize = 2,
         .changesData = true,
         .growth = {10, 100, 1000}},
    };
}

} // namespace tarvessa::bench

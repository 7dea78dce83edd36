#include "base/ProgramFolder.h"
#include "bench/RunScreen.h"
#include "bench/Screens.h"
#include "bench/support/ModalGrid.h"
#include "bench/support/Workload.h"
#include "core/PrintLayout.h"
#include "printing/pages/Report.h"
#include "printing/preview/PreviewWindow.h"
#include "reports/Comissao.h"
#include "reports/ExtratoVendedor.h"
#include "reports/RelatNivelPreco.h"
#include "reports/ResumoVendas.h"
#include "targets/MetasQuadro.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QPointer>
#include <QTabWidget>
#include <QTest>

#include <algorithm>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

const QString paperLayout = u"RelatNivelPreco.RPT"_s;

/// A report screen in front of its run button.
template <typename Report>
class ReportStage : public Stage {
  public:
    explicit ReportStage(const QString& grid, void (*prepare)(Report&) = nullptr) : m_screen(grid, prepare) {}

    void run() override { m_screen.run(); }

  private:
    Session m_session;
    RunScreen<Report> m_screen;
};

class StatementStage : public Stage {
  public:
    void run() override {
        constexpr int seller = 5;
        const ModalGrid invoices(u"Grid1"_s);
        ExtratoVendedor screen;
        screen.Carrega(seller, u"MARIA LÚCIA"_s, firstOfYear, lastOfYear, u"3,0"_s, u"1,5"_s, u"0,00"_s);
        if (invoices.rows() == 0)
            throw std::runtime_error("the statement shows nothing");
    }

  private:
    Session m_session;
};

void goToBoard(MetasQuadro& screen) {
    screen.Form_Load();
    screen.findChild<QTabWidget*>(u"SSTab1"_s)->setCurrentIndex(1);
}

/// The maintenance of the targets; a run lists those of another seller.
class TargetsStage : public Stage {
  public:
    TargetsStage() {
        m_screen.Form_Load();
        m_screen.findChild<QComboBox*>(u"Vendedores"_s)->setCurrentIndex(0);
        m_screen.show();
        waitPainted(grid()->viewport());
    }

    void run() override {
        auto* sellers = m_screen.findChild<QComboBox*>(u"Vendedores"_s);
        QTest::keyClick(sellers, sellers->currentIndex() == 0 ? Qt::Key_Down : Qt::Key_Up);
        waitPainted(grid()->viewport());
        if (grid()->rows() < 2)
            throw std::runtime_error("the targets were not listed");
    }

  private:
    Grid* grid() const { return m_screen.findChild<Grid*>(u"Grid1"_s); }

    Session m_session;
    MetasQuadro m_screen;
};

/// The customers of a price level, printed: the preview with all of its rows read.
class PaperStage : public Stage {
  public:
    PaperStage() {
        CRW = &m_control;
        m_screen.show();
        waitPainted(&m_screen);
    }
    ~PaperStage() override {
        closePreviews();
        CRW = nullptr;
    }
    PaperStage(const PaperStage&) = delete;
    PaperStage& operator=(const PaperStage&) = delete;

    void run() override {
        constexpr int patienceMs = 60000;
        m_screen.findChild<QComboBox*>(u"TabelaPreco"_s)->setEditText(u"1"_s);
        m_screen.findChild<QPushButton*>(u"Command4"_s)->click();
        if (!m_control.lastReport() ||
            !QTest::qWaitFor([this] { return m_control.lastReport()->complete(); }, patienceMs))
            throw std::runtime_error("the paper was not printed");
    }

  private:
    static void closePreviews() {
        std::vector<QPointer<report::PreviewWindow>> previews;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* preview = qobject_cast<report::PreviewWindow*>(widget))
                previews.emplace_back(preview);
        for (const auto& preview : previews)
            delete preview;
    }

    Session m_session;
    ReportControl m_control{nullptr};
    RelatNivelPreco m_screen;
};

// What the screen prints from, where the program looks for it.
void provideLayout() {
    const QString folder = programFolder() + u"/rpt"_s;
    QDir().mkpath(folder);
    QFile::copy(QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/") + paperLayout, folder + u'/' + paperLayout);
}

} // namespace

QList<Screen> reportScreens(const Workload& workload) {
    constexpr int linkLines = 400;
    constexpr int linesPerCustomer = 4;
    const QList<int> lines = {10000, 100000, 1000000};
    const auto year = [&workload](int size) {
        workload.products();
        workload.customers(Workload::usualCustomers);
        workload.fiscalYear(size);
    };
    return {
        {.what = u"sales summary of %1 customers"_s,
         .load =
             [&workload](int size) {
                 workload.customers(std::max(size, Workload::usualCustomers));
                 workload.fiscalYear(size * linesPerCustomer, size);
             },
         .open = [](int) { return std::make_unique<ReportStage<ResumoVendas>>(u"TabelaPreco(1)"_s); },
         .linkSize = 100,
         .growth = {1000, 10000, 100000}},
        {.what = u"commission over %1 fiscal lines"_s,
         .load = year,
         .open = [](int) { return std::make_unique<ReportStage<Comissao>>(u"Grid1"_s); },
         .linkSize = linkLines,
         .growth = lines},
        {.what = u"statement over %1 fiscal lines"_s,
         .load = year,
         .open = [](int) { return std::make_unique<StatementStage>(); },
         .linkSize = linkLines,
         .linkRuns = 10,
         .growth = lines},
        {.what = u"targets' board over %1 fiscal lines"_s,
         .load =
             [year, &workload](int size) {
                 year(size);
                 workload.targets();
             },
         .open = [](int) { return std::make_unique<ReportStage<MetasQuadro>>(u"Grid2"_s, goToBoard); },
         .linkSize = linkLines,
         .growth = lines},
        {.what = u"targets of a seller listed"_s,
         .load =
             [year, &workload](int) {
                 year(linkLines);
                 workload.targets();
             },
         .open = [](int) { return std::make_unique<TargetsStage>(); },
         .linkSize = 1,
         .linkRuns = 10},
        {.what = u"paper of the customers of a price level"_s,
         .load = [](int) { provideLayout(); },
         .open = [](int) { return std::make_unique<PaperStage>(); },
         .linkSize = 1,
         .connects = true},
    };
}

QList<Screen> allScreens(test::PrivateServer& server, const Workload& workload) {
    return panelScreens(workload) + productScreens(server, workload) + reportScreens(workload);
}

} // namespace tarvessa::bench

#include "bench/ListingBench.h"

#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Workload.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "support/PrivateServer.h"
#include "support/StatementLog.h"
#include "ui/grid/Grid.h"

#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTableWidget>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr double clientGoal = 1.5;
constexpr double pluginGoal = 8;
constexpr int rounds = 7;
constexpr int roundsWhenLong = 5;
constexpr int longListing = 100000;

/// The panel as it stands after start-up, on the screen, ready to list.
class ListingPanel {
  public:
    ListingPanel() {
        if (!m_panel.Form_Load())
            throw std::runtime_error("the panel did not start");
        m_panel.resize(1100, 650);
        m_panel.show();
        m_grid = m_panel.findChild<Grid*>(u"Grid1"_s);
        m_button = m_panel.findChild<QPushButton*>(u"Command3"_s);
        waitPainted(m_grid->viewport());
    }
    ~ListingPanel() { EncerraBanco(); }
    ListingPanel(const ListingPanel&) = delete;
    ListingPanel& operator=(const ListingPanel&) = delete;

    void list() {
        m_button->click();
        waitPainted(m_grid->viewport());
    }

    void expectRows(int documents) const {
        if (m_grid->rows() != documents + 1)
            throw std::runtime_error("the panel did not list what there is");
    }

    /// Back to the panel without rows, from where the button can be pressed again.
    void empty() {
        m_grid->setRows(1);
        m_button->setEnabled(true);
        waitPainted(m_grid->viewport());
    }

  private:
    PainelFechamento m_panel;
    Grid* m_grid = nullptr;
    QPushButton* m_button = nullptr;
};

/// What a program would do with Qt's own means: the plugin reads, a table widget shows.
class PluginTable {
  public:
    PluginTable() {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QODBC"_s);
        database.setDatabaseName(u"QDX"_s);
        if (!database.open())
            throw std::runtime_error(database.lastError().text().toStdString());
        m_table.resize(1100, 650);
        m_table.show();
        waitPainted(m_table.viewport());
    }
    ~PluginTable() {
        QSqlDatabase::database().close();
        QSqlDatabase::removeDatabase(QLatin1StringView(QSqlDatabase::defaultConnection));
    }
    PluginTable(const PluginTable&) = delete;
    PluginTable& operator=(const PluginTable&) = delete;

    void list(const QString& sql) {
        QSqlQuery query;
        query.setForwardOnly(true);
        if (!query.exec(sql))
            throw std::runtime_error(query.lastError().text().toStdString());
        const int columns = query.record().count();
        m_table.setColumnCount(columns);
        for (int row = 0; query.next(); ++row) {
            m_table.insertRow(row);
            for (int column = 0; column < columns; ++column)
                m_table.setItem(row, column, new QTableWidgetItem(query.value(column).toString()));
        }
        waitPainted(m_table.viewport());
    }

    void expectRows(int documents) const {
        if (m_table.rowCount() != documents)
            throw std::runtime_error("the table widget did not list what there is");
    }

    void empty() {
        m_table.setRowCount(0);
        waitPainted(m_table.viewport());
    }

  private:
    QTableWidget m_table;
};

// The listing as the panel sends it, taken from the server's own log.
QString listingStatement(test::PrivateServer& server, ListingPanel& panel) {
    panel.empty();
    test::StatementLog log(server);
    panel.list();
    const QStringList texts = log.texts();
    server.execute(u"SET GLOBAL general_log = 0"_s);
    if (texts.size() != 1)
        throw std::runtime_error("the listing is not one statement");
    return texts.first();
}

// The server does all its work for the query and sends next to nothing.
QString oneRowOf(const QString& sql) {
    return u"SELECT SQL_CALC_FOUND_ROWS"_s + sql.sliced(u"SELECT"_s.size()) + u" LIMIT 1"_s;
}

struct Times {
    double ours;
    double client;
    double plugin;
    double server;
};

QList<Row> rowsOf(int documents, const Times& times) {
    const QString what = u"listing of "_s + countText(documents) + u" documents, against "_s;
    const double toClient = times.ours / times.client;
    const double toPlugin = times.plugin / times.ours;
    const double oursAlone = times.ours - times.server;
    const double pluginAlone = times.plugin - times.server;
    return {{what + u"the client"_s, timeText(times.ours), timeText(times.client), ratioText(toClient),
             u"at most 1.5 times"_s, toClient <= clientGoal},
            {what + u"Qt's ODBC plugin"_s, timeText(times.ours), timeText(times.plugin), ratioText(toPlugin),
             u"at least 8 times faster"_s, toPlugin >= pluginGoal},
            {u"- the same without the server's own %1"_s.arg(timeText(times.server)),
             timeText(oursAlone),
             timeText(pluginAlone),
             ratioText(pluginAlone / oursAlone),
             {},
             false}};
}

} // namespace

QList<Row> listingRows(test::PrivateServer& server, const Workload& workload) {
    QList<Row> rows;
    for (const int documents : {1000, 10000, longListing}) {
        workload.listing(documents);
        ListingPanel panel;
        PluginTable plugin;
        const QString sql = listingStatement(server, panel);
        const auto ours = [&] {
            panel.empty();
            const double seconds = secondsOf([&] { panel.list(); });
            panel.expectRows(documents);
            return seconds;
        };
        const auto client = [&] { return clientSeconds(server, {sql}); };
        const auto theirs = [&] {
            plugin.empty();
            const double seconds = secondsOf([&] { plugin.list(sql); });
            plugin.expectRows(documents);
            return seconds;
        };
        const auto serverAlone = [&] { return secondsOf([&] { server.query(oneRowOf(sql)); }); };
        const std::vector<double> times = interleaved(documents == longListing ? roundsWhenLong : rounds,
                                                      {ours, client, theirs, serverAlone});
        rows += rowsOf(documents, {times[0], times[1], times[2], times[3]});
    }
    return rows;
}

} // namespace tarvessa::bench

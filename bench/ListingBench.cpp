#include "bench/ListingBench.h"

#include "bench/ListingPanel.h"
#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/Painted.h"
#include "bench/support/Workload.h"
#include "support/PrivateServer.h"

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

struct Times {
    Taken ours;
    Taken plugin;
    double client;
};

QList<Row> rowsOf(int documents, const Times& times) {
    const QString what = u"listing of "_s + countText(documents) + u" documents, against "_s;
    const double toClient = times.ours.elapsed / times.client;
    const double toPlugin = times.plugin.own / times.ours.own;
    return {{what + u"the client"_s, timeText(times.ours.elapsed), timeText(times.client),
             ratioText(toClient), u"at most 1.5 times"_s, toClient <= clientGoal},
            {what + u"Qt's ODBC plugin, without the server's share"_s, timeText(times.ours.own),
             timeText(times.plugin.own), ratioText(toPlugin), u"at least 8 times faster"_s,
             toPlugin >= pluginGoal,
             u"so few rows cost less than the painting, which is the same for both"_s},
            {u"- the same by the clock, with the server"_s,
             timeText(times.ours.elapsed),
             timeText(times.plugin.elapsed),
             ratioText(times.plugin.elapsed / times.ours.elapsed),
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
        const QString sql = panel.statement(server);
        std::vector<double> ownOfOurs;
        std::vector<double> ownOfPlugin;
        const auto ours = [&] {
            panel.empty();
            const Taken taken = takenBy([&] { panel.list(); });
            panel.expectRows(documents);
            ownOfOurs.push_back(taken.own);
            return taken.elapsed;
        };
        const auto client = [&] { return clientSeconds(server, {sql}); };
        const auto theirs = [&] {
            plugin.empty();
            const Taken taken = takenBy([&] { plugin.list(sql); });
            plugin.expectRows(documents);
            ownOfPlugin.push_back(taken.own);
            return taken.elapsed;
        };
        const std::vector<double> times =
            interleaved(documents == longListing ? roundsWhenLong : rounds, {ours, client, theirs});
        rows += rowsOf(documents, {{times[0], median(ownOfOurs)}, {times[2], median(ownOfPlugin)}, times[1]});
    }
    return rows;
}

} // namespace tarvessa::bench

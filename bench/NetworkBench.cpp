#include "bench/NetworkBench.h"

#include "bench/Screens.h"
#include "bench/support/BareOdbc.h"
#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "bench/support/Recorded.h"
#include "bench/support/Relay.h"
#include "support/PrivateServer.h"

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarvessa::bench {

namespace {

constexpr double goal = 1.05;
constexpr int rounds = 3;
constexpr double enoughSeconds = 5; // longer work has fewer rounds

/// The lengths of the link; the first is what the others are measured against.
constexpr std::array<std::chrono::nanoseconds, 4> roundTrips = {0us, 200us, 1ms, 20ms};

/// What one side took over a link: by the clock, and how often it waited for an answer.
struct Sent {
    double seconds = 0;
    double answers = 0;
};

/// One way of sending what a screen sends.
using Side = std::function<Sent(std::chrono::nanoseconds roundTrip)>;

/// How often one side waits, in all or for each statement.
struct Waits {
    std::array<double, roundTrips.size() - 1> counted{}; // over each link but the first
    std::optional<double> byTheClock; // over the longest; none where other things take longer than the waits
};

Sent overLink(Relay& relay, std::chrono::nanoseconds roundTrip, const std::function<void()>& work) {
    relay.setRoundTrip(roundTrip);
    const qint64 before = relay.answers();
    const double seconds = secondsOf(work);
    relay.setRoundTrip(0ns);
    return {seconds, static_cast<double>(relay.answers() - before)};
}

// The least of some rounds: what else the machine does only ever adds to a time, and an answer that slips in
// between two parts of what was sent in one go only ever adds to a count.
Waits waitsOf(const Side& side, double unit) {
    std::array<Sent, roundTrips.size()> least;
    side(roundTrips.front());
    double elapsed = 0;
    for (int round = 0; round < rounds && elapsed < enoughSeconds; ++round)
        for (size_t i = 0; i < roundTrips.size(); ++i) {
            const Sent sent = side(roundTrips[i]);
            elapsed += sent.seconds;
            least[i] = round == 0 ? sent
                                  : Sent{std::min(least[i].seconds, sent.seconds),
                                         std::min(least[i].answers, sent.answers)};
        }
    Waits waits;
    for (size_t i = 1; i < roundTrips.size(); ++i)
        waits.counted[i - 1] = least[i].answers / unit;
    const double roundTrip = std::chrono::duration<double>(roundTrips.back()).count();
    if (least.back().answers * roundTrip > least.front().seconds)
        waits.byTheClock = (least.back().seconds - least.front().seconds) / roundTrip / unit;
    return waits;
}

// Over all links, or over each where they differ.
QString countedText(const Waits& waits) {
    QStringList texts;
    for (const double each : waits.counted)
        texts.append(ratioText(each));
    const bool alike = std::equal(texts.cbegin() + 1, texts.cend(), texts.cbegin());
    return alike ? texts.first() : texts.join(u" / "_s);
}

QString clockText(const Waits& waits) {
    return waits.byTheClock ? ratioText(*waits.byTheClock) : u"-"_s;
}

double most(const Waits& waits) {
    return *std::max_element(waits.counted.begin(), waits.counted.end());
}

/// The three sides of one screen.
class Contest {
  public:
    Contest(test::PrivateServer& server, Relay& relay, const Screen& screen)
        : m_server(server), m_relay(relay), m_screen(screen) {
        load();
        m_stage = screen.open(screen.linkSize);
        m_statements = recordedStatements(server, {}, [&] { run(*m_stage); });
    }

    Row row() {
        // Where a connection is made on the way, the round trips are those of all of it.
        const double unit = m_screen.connects ? 1 : static_cast<double>(m_statements.size());
        const Waits ours = waitsOf([this](auto roundTrip) { return throughScreen(roundTrip); }, unit);
        const Waits bare = waitsOf([this](auto roundTrip) { return throughBareLoop(roundTrip); }, unit);
        const Waits client = waitsOf([this](auto roundTrip) { return throughClient(roundTrip); }, unit);
        const QString what = u"%1 (%2), waits %3"_s.arg(
            m_screen.what.contains(u"%1"_s) ? m_screen.what.arg(countText(m_screen.linkSize)) : m_screen.what,
            m_statements.size() == 1 ? u"1 statement"_s : countText(m_statements.size()) + u" statements"_s,
            m_screen.connects ? u"with its connection"_s : u"per statement"_s);
        return {what,
                countedText(ours),
                u"loop %1, client %2"_s.arg(countedText(bare), countedText(client)),
                u"%1, loop %2, client %3"_s.arg(clockText(ours), clockText(bare), clockText(client)),
                m_screen.connects ? u"no more than the loop"_s : u"at most 1.05"_s,
                most(ours) <= (m_screen.connects ? most(bare) : goal)};
    }

  private:
    void run(Stage& stage) const {
        for (int i = 0; i < m_screen.linkRuns; ++i)
            stage.run();
    }

    // What only reads may be done again on the same connection.
    bool startsAnew() const { return m_screen.changesData || m_screen.connects; }

    // No statement waits for the disk, which would hide the shorter waits.
    void load() const {
        m_screen.load(m_screen.linkSize);
        m_server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 0"_s);
    }

    void loadAgain() const {
        if (m_screen.changesData)
            load();
    }

    Sent throughScreen(std::chrono::nanoseconds roundTrip) {
        if (startsAnew()) {
            m_stage.reset();
            loadAgain();
            m_stage = m_screen.open(m_screen.linkSize);
        }
        return overLink(m_relay, roundTrip, [&] { run(*m_stage); });
    }

    Sent throughBareLoop(std::chrono::nanoseconds roundTrip) {
        loadAgain();
        if (startsAnew())
            m_bare.reset();
        if (!m_bare && !m_screen.connects)
            m_bare.emplace();
        return overLink(m_relay, roundTrip, [&] {
            if (!m_bare)
                m_bare.emplace();
            m_bare->run(m_statements);
        });
    }

    Sent throughClient(std::chrono::nanoseconds roundTrip) const {
        loadAgain();
        std::optional<ClientSession> client;
        if (!m_screen.connects)
            client.emplace(m_server, m_relay.socket());
        return overLink(m_relay, roundTrip, [&] {
            if (!client)
                client.emplace(m_server, m_relay.socket());
            client->finish(m_statements);
        });
    }

    test::PrivateServer& m_server;
    Relay& m_relay;
    const Screen& m_screen;
    std::unique_ptr<Stage> m_stage;
    std::optional<BareOdbc> m_bare;
    QByteArrayList m_statements;
};

} // namespace

QList<Row> networkRows(test::PrivateServer& server, const Workload& workload) {
    Relay relay(server.socket());
    server.useSocket(relay.socket());
    QList<Row> rows;
    for (const Screen& screen : allScreens(server, workload))
        rows.append(Contest(server, relay, screen).row());
    server.useSocket(server.socket());
    server.execute(u"SET GLOBAL innodb_flush_log_at_trx_commit = 1"_s);
    return rows;
}

} // namespace tarvessa::bench

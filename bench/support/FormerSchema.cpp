#include "bench/support/FormerSchema.h"

#include "bench/support/Client.h"
#include "bench/support/Measure.h"
#include "support/PrivateServer.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

constexpr int rounds = 2; // half a minute each

// What the rows hold, whatever their order: another index walks them in another one. The numbers of the
// staged rows are left out, because InnoDB skips some.
QString digest(const QString& table, const QString& columns) {
    return u"SELECT COUNT(*), SUM(CRC32(CONCAT_WS('|', %2))), SUM(CRC32(REVERSE(CONCAT_WS('|', %2)))) FROM %1"_s
        .arg(table, columns);
}

QList<QStringList> contents(test::PrivateServer& server) {
    const QString staged =
        u"IFNULL(Codigo1, '-'), IFNULL(Codigo2, '-'), IFNULL(Texto1, '-'), IFNULL(Texto2, '-'), "
        u"IFNULL(Texto3, '-'), "
        "IFNULL(Valor1, '-'), IFNULL(Valor2, '-'), IFNULL(Valor3, '-'), IFNULL(Quant, '-'), IFNULL(Data1, '-')"_s;
    return server.query(digest(u"relat"_s, staged) + u" UNION ALL "_s + digest(u"relat2"_s, staged) +
                        u" UNION ALL "_s +
                        digest(u"metavendedoritem"_s, u"ID, Vendido, TotalVendas, QtdDevolucao"_s));
}

} // namespace

FormerSchema::FormerSchema(test::PrivateServer& server) : m_server(server) {
    m_server.execute(u"TRUNCATE relat; TRUNCATE relat2; ALTER TABLE relat ENGINE=InnoDB; "
                     "ALTER TABLE relat2 ENGINE=InnoDB, ADD KEY relat2_codigo1 (Codigo1); "
                     "ALTER TABLE movsaient DROP KEY movsaient_periodo, "
                     "ADD KEY movsaient_former (entrsai, dataemissao); ANALYZE TABLE movsaient"_s);
}

FormerSchema::~FormerSchema() {
    m_server.execute(u"TRUNCATE relat; TRUNCATE relat2; "
                     "ALTER TABLE relat ENGINE=Aria TRANSACTIONAL=0; "
                     "ALTER TABLE relat2 ENGINE=Aria TRANSACTIONAL=0, DROP KEY relat2_codigo1; "
                     "ALTER TABLE movsaient DROP KEY movsaient_former, "
                     "ADD KEY movsaient_periodo (dataemissao, entrsai); ANALYZE TABLE movsaient"_s);
}

Row schemaRow(test::PrivateServer& server, const QString& report, const QStringList& statements,
              double goal) {
    std::vector<double> now;
    std::vector<double> before;
    for (int round = 0; round < rounds; ++round) {
        now.push_back(clientSeconds(server, statements));
        const QList<QStringList> present = contents(server);
        const FormerSchema former(server);
        before.push_back(clientSeconds(server, statements));
        if (contents(server) != present)
            throw std::runtime_error("the former schema gives other rows");
    }
    const double ratio = median(before) / median(now);
    return {u"- the client alone, against InnoDB staging and the former index, "_s + report,
            timeText(median(now)),
            timeText(median(before)),
            ratioText(ratio),
            goal > 0 ? u"at least %1 times faster"_s.arg(goal) : QString(),
            ratio >= goal};
}

} // namespace tarvessa::bench

#include "closing/Recovery.h"

#include "base/Clock.h"
#include "support/Hands.h"
#include "support/PrivateServer.h"
#include "support/Shop.h"
#include "ui/grid/Grid.h"

#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

namespace {

bool isStockUpdate(const QByteArray& sql) {
    return sql.toLower().startsWith("update produtos");
}

bool isStockLog(const QByteArray& sql) {
    return sql.startsWith("INSERT INTO logestoque");
}

void twoProducts(Shop& shop) {
    shop.basico();
    shop.produto({.codigo = u"P2"_s});
    shop.documento({.pedido = 1, .linhas = {{u"P1"_s, u"2"_s}, {u"P2"_s, u"0.5"_s}}});
}

void sheetAndNote(Shop& shop) {
    shop.basico();
    for (const QString& code : {u"CESTA"_s, u"PAO"_s, u"CAFE"_s})
        shop.produto({.codigo = code});
    shop.ficha(u"CESTA"_s, {{u"PAO"_s, u"12"_s}, {u"CAFE"_s, u"0.5"_s}});
    shop.documento({.pedido = 1, .linhas = {{u"CESTA"_s, u"2"_s}, {}, {u"***NOTA"_s, u"0"_s}}});
}

void noStockMoved(Shop& shop) {
    shop.empresa(u"1.01/1.02/2.01/2.02/1.05"_s, u"SIM"_s);
    shop.formas();
    shop.cliente({.codigo = u"C1"_s});
    shop.produto({.codigo = u"P1"_s});
    shop.documento({.pedido = 1});
}

template <int method>
void paidBy(Shop& shop) {
    static const QList<std::pair<QString, QString>> terms = {
        {u"CARTÃO"_s, u"30"_s}, {u"CHEQUE"_s, u"30"_s}, {u"DINHEIRO"_s, u"0"_s}};
    shop.basico();
    shop.produto({.codigo = u"P2"_s});
    shop.cliente({.codigo = u"C2"_s, .prazo = terms[method].second, .formaPg = terms[method].first});
    shop.documento({.pedido = 1, .cliente = u"C2"_s, .linhas = {{u"P1"_s, u"2"_s}, {u"P2"_s, u"0.5"_s}}});
}

QStringList columnsOf(PrivateServer& server, const QString& table) {
    QStringList columns;
    for (const QStringList& row : server.query(
             u"SELECT column_name FROM information_schema.columns WHERE table_schema = DATABASE() AND "
             "table_name = '%1' AND extra NOT LIKE '%auto_increment%' ORDER BY ordinal_position"_s.arg(
                 table)))
        columns.append(u'`' + row[0] + u'`');
    return columns;
}

} // namespace

const QList<Sample>& samples() {
    static const QList<Sample> all = {{u"two products"_s, twoProducts, false},
                                      {u"technical sheet and note"_s, sheetAndNote, false},
                                      {u"no stock moved"_s, noStockMoved, false},
                                      {u"card"_s, paidBy<0>, true},
                                      {u"cheque"_s, paidBy<1>, true},
                                      {u"cash"_s, paidBy<2>, true}};
    return all;
}

void writeMixedPreSales(Shop& shop, int count) {
    const QString plenty = u"100000"_s;
    shop.empresa();
    shop.formas();
    int customer = 0;
    for (const QString& method : {u"BOLETO"_s, u"CARTÃO"_s, u"CHEQUE"_s, u"DINHEIRO"_s})
        shop.cliente({.codigo = u"C%1"_s.arg(++customer), .nome = u"CLIENTE "_s + method, .formaPg = method});
    for (const QString& code : {u"P1"_s, u"P2"_s, u"CESTA"_s, u"PAO"_s, u"CAFE"_s})
        shop.produto({.codigo = code, .estoque = plenty});
    shop.ficha(u"CESTA"_s, {{u"PAO"_s, u"12"_s}, {u"CAFE"_s, u"0.5"_s}});
    const QList<QList<Linha>> contents = {{{u"P1"_s, u"2"_s}, {u"P2"_s, u"0.5"_s}},
                                          {{u"CESTA"_s, u"2"_s}, {u"***NOTA"_s, u"0"_s}},
                                          {{u"P2"_s, u"1"_s}, {u"CESTA"_s, u"1"_s}, {u"P1"_s, u"3"_s}}};
    for (int i = 0; i < count; ++i)
        shop.documento({.pedido = i + 1,
                        .cliente = u"C%1"_s.arg(1 + i % customer),
                        .nomeVendedor = u"VENDEDOR %1"_s.arg(i, 4, 10, QLatin1Char('0')),
                        .linhas = contents[i % contents.size()]});
}

QString closerProgram() {
    return QStringLiteral(TARVESSA_CLOSER);
}

QString closeElsewhere(const QString& folder, bool lastMovementDone) {
    constexpr int limitMs = 120000;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(closerProgram(),
                  {clock::now().toString(Qt::ISODate), folder, lastMovementDone ? u"yes"_s : u"no"_s});
    process.write("\n");
    if (!process.waitForFinished(limitMs) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return u"%1 %2"_s.arg(process.exitCode()).arg(QString::fromUtf8(process.readAll()));
    return {};
}

Books booksOf(PrivateServer& server) {
    Books books;
    for (const QString& table : {u"orcamento"_s, u"orcamento_controle"_s, u"observacao"_s, u"produtos"_s,
                                 u"logestoque"_s, u"areceber"_s, u"caixa"_s, u"empresa"_s, u"clientes"_s}) {
        const QString columns = columnsOf(server, table).join(u", "_s);
        books.insert(table, server.query(u"SELECT %1 FROM %2 ORDER BY %1"_s.arg(columns, table)));
    }
    return books;
}

QString differenceBetween(const Books& books, const Books& expected) {
    const auto text = [](const QList<QStringList>& rows, qsizetype row) {
        return row < rows.size() ? rows[row].join(u'|') : u"no row"_s;
    };
    for (auto table = expected.cbegin(); table != expected.cend(); ++table) {
        const QList<QStringList> rows = books.value(table.key());
        for (qsizetype row = 0; row < std::max(rows.size(), table->size()); ++row)
            if (text(rows, row) != text(*table, row))
                return u"%1, row %2 of %3 (expected %4): %5 instead of %6"_s.arg(table.key())
                    .arg(row + 1)
                    .arg(rows.size())
                    .arg(table->size())
                    .arg(text(rows, row), text(*table, row));
    }
    return {};
}

bool isLastMovementDone(const QList<QByteArray>& executed) {
    const auto last = std::find_if(executed.crbegin(), executed.crend(), [](const QByteArray& sql) {
        return isStockUpdate(sql) || isStockLog(sql);
    });
    return last == executed.crend() || isStockUpdate(*last);
}

void concludeAll(QWidget* window, const std::function<bool()>& lastMovementDone) {
    const Hands hands(window);
    const Grid* grid = hands.grid();
    constexpr int mostTurns = 200;
    for (int turn = 0; turn < mostTurns && grid->rows() > 1 && window->isVisible(); ++turn) {
        if (hands.control<QWidget>(u"Frame1"_s)->isVisible())
            hands.control<QRadioButton>(lastMovementDone() ? u"JaSaiu"_s : u"NaoSaiu"_s)->click();
        QPushButton* conclude = hands.button(u"Command1"_s);
        (conclude->isEnabled() ? conclude : hands.button(u"Command2"_s))->click();
        hands.settle();
    }
}

bool waitForSessionsToEnd(PrivateServer& server) {
    const QString sessions =
        u"SELECT COUNT(*) FROM information_schema.processlist WHERE user = '%1'"_s.arg(server.user());
    return QTest::qWaitFor([&] { return server.query(sessions)[0][0] == u"0"; });
}

} // namespace tarvessa::test

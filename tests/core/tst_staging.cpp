#include "core/AcessoDados.h"
#include "core/Staging.h"
#include "support/FaultProxy.h"
#include "support/PrivateServer.h"

#include <QApplication>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// What the reports leave in a staging table, and what the operator sees meanwhile.
class TstStaging : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void emptiesThenInsertsInOrder();
    void pointerIsBusyAtEveryStatement();

  private:
    std::unique_ptr<PrivateServer> m_server;
    std::unique_ptr<FaultProxy> m_proxy;
    const QStringList m_inserts{u"Insert into relat2 (Texto1) values ('A')"_s,
                                u"Insert into relat2 (Texto1) values ('B')"_s};
};

void TstStaging::init() {
    m_server = std::make_unique<PrivateServer>();
    m_proxy = std::make_unique<FaultProxy>(m_server->socket());
    m_server->useSocket(m_proxy->socket());
    QVERIFY(IniciaBanco());
    m_proxy->mark();
}

void TstStaging::cleanup() {
    EncerraBanco();
    m_proxy.reset();
    m_server.reset();
}

void TstStaging::emptiesThenInsertsInOrder() {
    m_server->execute(u"INSERT INTO relat2 (Texto1) VALUES ('OLD')"_s);
    fillStaging(u"Truncate Relat2"_s, m_inserts);
    QCOMPARE(m_proxy->texts(),
             (QList<QByteArray>{"Truncate Relat2", m_inserts[0].toUtf8(), m_inserts[1].toUtf8()}));
    QCOMPARE(m_server->query(u"SELECT Texto1 FROM relat2 ORDER BY id"_s),
             (QList<QStringList>{{u"A"_s}, {u"B"_s}}));
}

void TstStaging::pointerIsBusyAtEveryStatement() {
    QList<bool> busy;
    m_proxy->onStatement([&busy](const QByteArray&) {
        const QCursor* shown = QGuiApplication::overrideCursor();
        busy.append(shown && shown->shape() == Qt::WaitCursor);
    });
    fillStaging(u"Truncate Relat2"_s, m_inserts);
    m_proxy->onStatement({});
    QCOMPARE(busy, QList<bool>(3, true));
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(TstStaging)
#include "tst_staging.moc"

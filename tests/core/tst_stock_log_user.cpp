#include "base/Datas.h"
#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <array>
#include <memory>
#include <pwd.h>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

// Takes the place of the system's look-up in this program: a desktop user may be called anything.
extern "C" passwd* getpwuid(uid_t /*user*/) {
    static std::array<char, 10> name{"D'AVI\\LA"};
    static passwd entry{};
    entry.pw_name = name.data();
    return &entry;
}

/// Whom the stock log names.
class TstStockLogUser : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void nameOfTheDesktopUserIsCleaned();
};

void TstStockLogUser::nameOfTheDesktopUserIsCleaned() {
    PrivateServer server;
    QVERIFY(IniciaBanco());
    GravaLogEstoque(u"TELA"_s, u"X"_s, Dinheiro(1), Connection);
    EncerraBanco();
    QCOMPARE(server.query(u"SELECT usuario, codproduto FROM logestoque"_s),
             (QList<QStringList>{{u"D´AVI/LA"_s, u"X"_s}}));
}

QTEST_MAIN(TstStockLogUser)
#include "tst_stock_log_user.moc"

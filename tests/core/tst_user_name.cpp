#include "core/AcessoDados.h"
#include "core/Rotinas.h"
#include "support/PrivateServer.h"

#include <QTest>

#include <pwd.h>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

// The system's answer for whoever runs this.
extern "C" passwd* getpwuid(uid_t) {
    static char name[] = "D'\xC3\x81VILA\\JOS\xC3\x89\t1";
    static passwd entry{};
    entry.pw_name = name;
    return &entry;
}

/// A user's name that would end the text it stands in.
class TstUserName : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void nameOfTheUserIsCleanedForTheLog();
};

void TstUserName::nameOfTheUserIsCleanedForTheLog() {
    PrivateServer server;
    QVERIFY(IniciaBanco());
    BaixaEstoque(u"PAO"_s, Dinheiro(1), u"TELA"_s);
    QCOMPARE(server.query(u"SELECT usuario, codproduto FROM logestoque"_s),
             (QList<QStringList>{{u"D´ÁVILA/JOSÉ1"_s, u"PAO"_s}}));
    EncerraBanco();
}

QTEST_MAIN(TstUserName)
#include "tst_user_name.moc"

#include "bench/support/Recorded.h"

#include "support/PrivateServer.h"
#include "support/StatementLog.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

QStringList recordedTexts(test::PrivateServer& server, const std::function<void()>& run) {
    test::StatementLog log(server);
    run();
    const QStringList texts = log.texts();
    server.execute(u"SET GLOBAL general_log = 0"_s);
    return texts;
}

QByteArrayList recordedStatements(test::PrivateServer& server, const QString& first,
                                  const std::function<void()>& run) {
    const QStringList texts = recordedTexts(server, run);
    QByteArrayList statements;
    for (auto text = std::find_if(texts.cbegin(), texts.cend(),
                                  [&first](const QString& each) { return each.startsWith(first); });
         text != texts.cend(); ++text)
        statements.append(text->toUtf8());
    return statements;
}

} // namespace tarvessa::bench

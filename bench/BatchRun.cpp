#include "bench/BatchRun.h"

#include "bench/StartedPanel.h"
#include "bench/support/BoxAnswerer.h"
#include "bench/support/Recorded.h"
#include "bench/support/Workload.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "support/PrivateServer.h"

#include <QPushButton>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

BatchRun closeAll(int presales) {
    PainelFechamento panel;
    startPanel(panel, presales);

    const BoxAnswerer answerer;
    panel.findChild<QPushButton*>(u"Command4"_s)->click();
    const std::vector<BoxAnswerer::Box>& boxes = answerer.boxes();
    if (boxes.size() != 2 || boxes[1].text != u"Processamento efetuado com sucesso.")
        throw std::runtime_error("the closing did not end well");
    EncerraBanco();
    return {BoxAnswerer::between(boxes[0], boxes[1]), BoxAnswerer::around(boxes[0], boxes[1])};
}

QByteArrayList batchStatements(test::PrivateServer& server, const Workload& workload, int presales) {
    workload.closing(presales);
    QByteArrayList statements = recordedStatements(server, u"Select CNPJ_CPF"_s, [&] { closeAll(presales); });
    if (statements.isEmpty() || !statements.takeLast().startsWith("SELECT o.codigocli"))
        throw std::runtime_error("the closing's statements are not in the log");
    return statements;
}

} // namespace tarvessa::bench

#include "closing/ClosingSettings.h"

#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tarvessa {

ClosingSettings::ClosingSettings() {
    contaCtb.fill(esquema::contaAusente.toString());
}

ClosingSettings ClosingSettings::read() {
    const QString query = u"Select ContaCTB1, PAF_ECF From Empresa"_s;
    TemRegistro = AbreRS(query);
    if (rs.atEnd())
        throw RuntimeError(static_cast<int>(ErrorNumber::NoCurrentRecord),
                           u"A tabela empresa não tem nenhum registro: não há contas para o financeiro nem "
                           "configuração de estoque. Cadastre a empresa e tente novamente."_s,
                           {}, query);
    ClosingSettings settings;
    settings.pafEcf = rs.field(esquema::empresa::pafEcf).text() == esquema::ligado;
    const QString accounts = rs.field(esquema::empresa::contaCtb1).text();
    const QStringList pieces = accounts.isEmpty() ? QStringList() : accounts.split(u'/');
    for (size_t i = 0; i < settings.contaCtb.size() && i < static_cast<size_t>(pieces.size()); ++i)
        settings.contaCtb[i] = pieces[static_cast<qsizetype>(i)];
    rs.close();
    return settings;
}

} // namespace tarvessa

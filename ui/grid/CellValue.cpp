#include "ui/grid/CellValue.h"

#include "base/Numeros.h"
#include "base/RuntimeError.h"

namespace tarvessa {

std::optional<Dinheiro> cellNumber(QStringView text) {
    const QStringView number = text.endsWith(u'%') ? text.chopped(1) : text;
    if (!EhNumero(number))
        return {};
    try {
        return ValorNumerico(number);
    } catch (const RuntimeError&) {
        return {};
    }
}

int decimalsOf(QStringView text) {
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0)
        return 0;
    qsizetype end = comma + 1;
    while (end < text.size() && text[end].isDigit())
        ++end;
    return static_cast<int>(end - comma - 1);
}

} // namespace tarvessa

#include "base/Text.h"

namespace tarvessa {

QString trimBlanks(const QString& texto) {
    qsizetype inicio = 0;
    qsizetype fim = texto.size();
    while (inicio < fim && texto[inicio] == u' ')
        ++inicio;
    while (fim > inicio && texto[fim - 1] == u' ')
        --fim;
    return texto.sliced(inicio, fim - inicio);
}

} // namespace tarvessa

#include "products/FormataCampo.h"

#include "base/Numeros.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace tarvessa {

QString FormataCampo(const odbc::Field& campo, QStringView mascara) {
    return campo.isNull() ? QString() : Formata(Dinheiro::dePonto(campo.text()), mascara);
}

QString DataCurta(const odbc::Field& campo) {
    constexpr int anoDeNenhumaData = 1901;
    constexpr qsizetype tamanho = 10; // "yyyy-mm-dd"; a date-time column brings its time behind it
    const QString texto = campo.text().left(tamanho);
    const QDate data = QDate::fromString(texto, Qt::ISODate);
    if (!data.isValid() || data.year() == anoDeNenhumaData)
        return {};
    return texto.sliced(8, 2) + u'/' + texto.sliced(5, 2) + u'/' + texto.sliced(2, 2);
}

} // namespace tarvessa

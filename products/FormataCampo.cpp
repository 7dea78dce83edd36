#include "products/FormataCampo.h"

#include "core/Numeros.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace tarvessa {

QString FormataCampo(const odbc::Field& campo, QStringView mascara) {
    return campo.isNull() ? QString() : Formata(Dinheiro::dePonto(campo.text()), mascara);
}

QString DataCurta(const odbc::Field& campo) {
    constexpr int anoDeNenhumaData = 1901;
    constexpr qsizetype tamanhoDaData = 10; // a date-time column brings its time behind it
    const QDate data =
        QDate::fromString(campo.text().first(qMin(tamanhoDaData, campo.text().size())), u"yyyy-MM-dd"_s);
    return data.isValid() && data.year() != anoDeNenhumaData ? data.toString(u"dd/MM/yy"_s) : QString();
}

} // namespace tarvessa

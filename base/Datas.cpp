#include "base/Datas.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

QString TextoSQL(QDate data) {
    return data.toString(Qt::ISODate);
}

QString TextoTela(QDate data) {
    return data.toString(u"dd/MM/yyyy"_s);
}

QDate DataDaTela(const QString& texto) {
    return QDate::fromString(texto, u"dd/MM/yyyy"_s);
}

QString DataSQL(const QVariant& valor) {
    QDate data = valor.typeId() == QMetaType::QString ? DataDaTela(valor.toString()) : valor.toDate();
    if (!data.isValid() && valor.typeId() == QMetaType::QString)
        data = QDate::fromString(valor.toString(), u"yyyy-MM-dd"_s);
    return data.isValid() ? TextoSQL(data) : u"1901-01-01"_s;
}

} // namespace tarvessa

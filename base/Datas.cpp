#include "base/Datas.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

// Every statement of a closing holds a date, and QDate's own formatting takes longer than the rest of its
// text.
QString TextoSQL(QDate data) {
    constexpr int ultimoAno = 9999;
    if (!data.isValid() || data.year() < 1 || data.year() > ultimoAno)
        return {};
    QString texto = u"0000-00-00"_s;
    const auto escreve = [&texto](qsizetype fim, int numero) {
        constexpr int dez = 10;
        for (; numero > 0; numero /= dez)
            texto[--fim] = QChar(u'0' + numero % dez);
    };
    constexpr qsizetype fimDoAno = 4;
    constexpr qsizetype fimDoMes = 7;
    escreve(fimDoAno, data.year());
    escreve(fimDoMes, data.month());
    escreve(texto.size(), data.day());
    return texto;
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

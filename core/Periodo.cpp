#include "core/Periodo.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "ui/DateBox.h"
#include "ui/Refusal.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

QDate primeiroDoMes(QDate dia) {
    return {dia.year(), dia.month(), 1};
}

QString textoDe(const DateBox* caixa) {
    return caixa->date().isValid() ? TextoTela(caixa->date()) : caixa->text();
}

} // namespace

Periodo::Periodo(DateBox* dataIni, DateBox* dataFin, Mensagens mensagens)
    : m_dataIni(dataIni), m_dataFin(dataFin), m_mensagens(std::move(mensagens)) {
}

void Periodo::mesCorrente() {
    m_dataIni->setDate(primeiroDoMes(clock::today()));
    m_dataFin->setDate(clock::today());
}

void Periodo::mesAnterior() {
    const QDate ultimo = primeiroDoMes(clock::today()).addDays(-1);
    m_dataFin->setDate(ultimo);
    m_dataIni->setDate(primeiroDoMes(ultimo));
}

bool Periodo::confere() const {
    if (!confereDatas())
        return false;
    if (m_dataIni->date() <= m_dataFin->date())
        return true;
    refuse(m_dataIni, m_mensagens.foraDeOrdem);
    return false;
}

bool Periodo::confereDatas() const {
    if (!m_dataIni->date().isValid())
        refuse(m_dataIni, m_mensagens.inicioInvalido);
    else if (!m_dataFin->date().isValid())
        refuse(m_dataFin, m_mensagens.fimInvalido);
    else
        return true;
    return false;
}

QString Periodo::inicioSQL() const {
    return TextoSQL(m_dataIni->date());
}

QString Periodo::fimSQL() const {
    return TextoSQL(m_dataFin->date());
}

QString Periodo::inicioTela() const {
    return textoDe(m_dataIni);
}

QString Periodo::fimTela() const {
    return textoDe(m_dataFin);
}

QString Periodo::inFileName() const {
    return periodInFileName(m_dataIni->date(), m_dataFin->date());
}

QString periodInFileName(const QDate& start, const QDate& end) {
    const bool isMonth = start.day() == 1 && end == start.addMonths(1).addDays(-1);
    if (isMonth)
        return start.toString(u"yyyy-MM");
    return start == end ? TextoSQL(start) : TextoSQL(start) + u" a "_s + TextoSQL(end);
}

} // namespace tarvessa

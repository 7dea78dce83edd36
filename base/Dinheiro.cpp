#include "base/Dinheiro.h"

#include "base/DecimalText.h"
#include "base/RuntimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using Largo = __int128;

constexpr int digitosDepoisDoPonto = 4;

[[noreturn]] void estouro() {
    throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o valor passa do maior número possível."_s);
}

Dinheiro estreito(Largo v) {
    if (v > std::numeric_limits<qint64>::max() || v < std::numeric_limits<qint64>::min())
        estouro();
    return Dinheiro::deDecimosMilesimos(static_cast<qint64>(v));
}

// Halves to even, as the four-place type always rounds.
Largo dividido(Largo n, Largo d) {
    Largo q = n / d;
    const Largo resto = n % d;
    const Largo dobro = (resto < 0 ? -resto : resto) * 2;
    const Largo divisor = d < 0 ? -d : d;
    if (dobro > divisor || (dobro == divisor && q % 2 != 0))
        q += (n < 0) == (d < 0) ? 1 : -1;
    return q;
}

void recusaZero(Dinheiro divisor) {
    if (divisor.zero())
        throw RuntimeError(ErrorNumber::DivisionByZero, u"Divisão por zero."_s);
}

} // namespace

void Dinheiro::estoura() {
    estouro();
}

Dinheiro Dinheiro::dePonto(QStringView texto) {
    QStringView t = texto.trimmed();
    QString expandido;
    if (t.contains(u'e', Qt::CaseInsensitive)) {
        expandido = withoutExponent(t);
        t = expandido;
    }
    qsizetype i = 0;
    const bool negativo = !t.isEmpty() && t[0] == u'-';
    if (!t.isEmpty() && (t[0] == u'-' || t[0] == u'+'))
        ++i;
    constexpr Largo limite = static_cast<Largo>(std::numeric_limits<qint64>::max());
    Largo v = 0;
    bool temDigito = t.isEmpty();
    bool depoisDoPonto = false;
    Largo divisor = 1;
    int lidas = 0;
    for (; i < t.size(); ++i) {
        if (t[i] == u'.' && !depoisDoPonto) {
            depoisDoPonto = true;
            continue;
        }
        if (t[i] < u'0' || t[i] > u'9')
            throw RuntimeError(ErrorNumber::TypeMismatch,
                               u"Tipos incompatíveis: \"%1\" não é um número."_s.arg(texto));
        temDigito = true;
        // Beyond these places no digit can change the rounding to four of them except from an exact half.
        if (depoisDoPonto && ++lidas > 2 * digitosDepoisDoPonto + 1) {
            if (t[i] != u'0')
                v |= 1;
            continue;
        }
        v = v * 10 + (t[i].unicode() - u'0');
        if (depoisDoPonto)
            divisor *= 10;
        if (v / divisor > limite / casas + 1)
            throw RuntimeError(ErrorNumber::Overflow, u"Estouro: o número %1 é grande demais."_s.arg(texto));
    }
    if (!temDigito)
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           u"Tipos incompatíveis: \"%1\" não é um número."_s.arg(texto));
    const Largo escalado = dividido(v * casas, divisor);
    return estreito(negativo ? -escalado : escalado);
}

QString Dinheiro::ponto() const {
    const quint64 modulo = m_v < 0 ? 0 - static_cast<quint64>(m_v) : static_cast<quint64>(m_v);
    QString texto = (m_v < 0 ? u"-"_s : u" "_s) + QString::number(modulo / casas);
    const quint64 fracao = modulo % casas;
    if (fracao == 0)
        return texto;
    QString decimais = QString::number(fracao).rightJustified(digitosDepoisDoPonto, u'0');
    while (decimais.endsWith(u'0'))
        decimais.chop(1);
    return texto + u'.' + decimais;
}

Dinheiro Dinheiro::operator-() const {
    return estreito(-static_cast<Largo>(m_v));
}

Dinheiro Dinheiro::operator+(Dinheiro b) const {
    return estreito(static_cast<Largo>(m_v) + b.m_v);
}

Dinheiro Dinheiro::operator-(Dinheiro b) const {
    return estreito(static_cast<Largo>(m_v) - b.m_v);
}

Dinheiro Dinheiro::operator*(Dinheiro b) const {
    return estreito(dividido(static_cast<Largo>(m_v) * b.m_v, casas));
}

Dinheiro Dinheiro::operator/(Dinheiro b) const {
    recusaZero(b);
    return estreito(dividido(static_cast<Largo>(m_v) * casas, b.m_v));
}

Dinheiro Proporcao(Dinheiro a, Dinheiro b, Dinheiro c, int casas) {
    recusaZero(c);
    qint64 unidade = 1;
    for (int i = casas; i < digitosDepoisDoPonto; ++i)
        unidade *= 10;
    const Largo n = static_cast<Largo>(a.decimosMilesimos()) * b.decimosMilesimos();
    const Largo d = static_cast<Largo>(c.decimosMilesimos()) * unidade;
    Largo q = n / d;
    const Largo resto = n % d;
    if ((resto < 0 ? -resto : resto) * 2 >= (d < 0 ? -d : d))
        q += (n < 0) == (d < 0) ? 1 : -1;
    return estreito(q * unidade);
}

} // namespace tarvessa

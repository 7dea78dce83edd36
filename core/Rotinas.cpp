#include "core/Rotinas.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/HostUser.h"
#include "base/Numeros.h"
#include "base/Text.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"

#include <QLineEdit>
#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace tarvessa {

QList<MovimentoDeEstoque> MovimentosPelaFicha(const QString& codigo, Dinheiro quantidade,
                                              const QList<ComponenteDaFicha>& ficha) {
    if (ficha.isEmpty())
        return {{codigo, quantidade, false}};
    QList<MovimentoDeEstoque> movimentos;
    for (const ComponenteDaFicha& componente : ficha)
        movimentos.append({componente.codigo, quantidade * componente.quantidade, true});
    return movimentos;
}

QList<MovimentoDeEstoque> MovimentosDeEstoque(const QString& codigo, Dinheiro quantidade) {
    odbc::ResultSet linhas = NovoRS(
        u"select codigo, codigoprod, quantidade from FichaTecnica where Codigoprod = '"_s % codigo % u"'"_s);
    QList<ComponenteDaFicha> ficha;
    for (; !linhas.atEnd(); linhas.moveNext())
        ficha.append({linhas.field(esquema::fichaTecnica::codigo).text(),
                      linhas.field(esquema::fichaTecnica::quantidade).decimal()});
    return MovimentosPelaFicha(codigo, quantidade, ficha);
}

QString comandoDeBaixa(const MovimentoDeEstoque& movimento) {
    const QString hoje = TextoSQL(clock::today());
    const QString quantidade = movimento.quantidade.ponto();
    if (movimento.componente)
        return u"Update Produtos Set Ultima_Saida='"_s % hoje % u"', Quantidade = Quantidade - "_s %
               quantidade % u" where Codfabr = '"_s % movimento.codigo % u"'"_s;
    return u"update Produtos Set Ultima_Saida='"_s % hoje % u"',Quantidade=Quantidade - "_s % quantidade %
           u", Nitem=Nitem"_s % (movimento.quantidade.negativo() ? u"-1"_s : u"+1"_s) %
           u" Where CodFabr='"_s % trimBlanks(movimento.codigo) % u"'"_s;
}

qint16 BaixaEstoque(const QString& codigo, Dinheiro quantidade, const QString& tela,
                    const std::function<void()>& antesDeGravar) {
    for (const MovimentoDeEstoque& movimento : MovimentosDeEstoque(codigo, quantidade)) {
        if (antesDeGravar)
            antesDeGravar();
        GravaLogEstoque(tela, movimento.codigo, -movimento.quantidade, Connection);
        Executa(comandoDeBaixa(movimento));
    }
    return 0;
}

QString comandoDeLogDeEstoque(const QString& tela, const QString& codigo, Dinheiro quantidade) {
    const QDateTime agora = clock::now();
    // The program has no login of its own, so the log names the desktop's user.
    return u"INSERT INTO logestoque SET data = '"_s % DataSQL(agora.date()) % u"', hora = '"_s %
           agora.toString(u"HH:mm:ss"_s) % u"', "_s % u"usuario = '"_s % LimpaTexto(hostUserName()) %
           u"', "_s % u"tela = '"_s % LimpaTexto(tela) % u"', "_s % u"codproduto = '"_s % codigo % u"', "_s %
           u"qtdLoja = "_s % quantidade.ponto();
}

qint16 GravaLogEstoque(const QString& tela, const QString& codigo, Dinheiro quantidade,
                       odbc::Connection& conexao) {
    conexao.execute(comandoDeLogDeEstoque(tela, codigo, quantidade));
    return 0;
}

QString LimpaTexto(const QString& texto) {
    constexpr char16_t ultimoControle = 31;
    QString limpo;
    limpo.reserve(texto.size());
    for (const QChar c : texto) {
        if (c == u'\'')
            limpo += QChar(u'´');
        else if (c == u'\\')
            limpo += u'/';
        else if (c.unicode() > ultimoControle && c != u'ƒ')
            limpo += c;
    }
    return limpo;
}

QString SoNumeros(const QString& texto) {
    QString digitos;
    for (const QChar c : texto)
        if (c >= u'0' && c <= u'9')
            digitos += c;
    return digitos;
}

qint32 CodigoDaLista(const QString& texto) {
    const qsizetype marca = texto.indexOf("<<"_L1);
    return marca < 0 ? 0 : ValorInteiro(QStringView(texto).sliced(marca + 2));
}

void SelecionaTexto(QLineEdit* caixa) {
    caixa->setSelection(0, static_cast<int>(caixa->text().size()));
}

} // namespace tarvessa

#include "products/TextoPesquisa.h"

#include "base/Numeros.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr qsizetype menorTexto = 2;
constexpr qsizetype menorTextoComPrefixo = 3;
constexpr qsizetype maiorCodigo = 15;
constexpr qsizetype digitosDoCodigoDeBarras = 13;
constexpr qsizetype maisDigitosDoCodigoDeBarras = 14;

// A text longer than any code is not looked for among the codes.
QString ouCodigo(const QString& texto) {
    return texto.size() <= maiorCodigo ? u" or CodFabr like '%"_s + texto + u"%'"_s : QString();
}

void normalizaCodigoDeBarras(QString& texto) {
    if (texto.size() >= digitosDoCodigoDeBarras)
        texto.truncate(maisDigitosDoCodigoDeBarras);
    else
        texto = (u"000000000000"_s + texto).last(digitosDoCodigoDeBarras);
}

// Two blanks in a row make an empty word, which any description contains.
QString todasAsPalavras(const QString& texto) {
    const QStringList palavras = texto.split(u' ');
    QString termos;
    for (qsizetype i = 0; i < palavras.size(); ++i)
        termos += u" Descricao like '%"_s + palavras[i] + (i + 1 < palavras.size() ? u"%' and "_s : u"%'"_s);
    return termos;
}

} // namespace

ConsultaProduto InterpretaTexto(QString& texto, QStringView tipoCodigoBarras) {
    texto = texto.trimmed();
    if (texto.isEmpty())
        return {u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s, {}, {}};
    const bool numerico = EhNumero(texto);
    if (texto.size() < menorTexto && !numerico)
        return {u"Pesquisa com no mínimo 2 caracteres. Verifique!!!"_s, {}, {}};
    if (texto.startsWith(u'=') && texto.size() >= menorTextoComPrefixo)
        return {{},
                u"Select * from Produtos where aplicacao like '%"_s + texto.sliced(1) +
                    u"%' and ativo='S' order by descricao"_s,
                {}};
    if (texto.startsWith(u'*') && texto.size() >= menorTextoComPrefixo)
        return {{},
                u"Select * from Produtos where observacao like '%"_s + texto.sliced(1) +
                    u"%' and ativo='S' order by descricao"_s,
                {}};
    if (tipoCodigoBarras == u"NUMÉRICO" && numerico)
        return {{},
                u"Select * from Produtos where CodFabr='"_s + texto + u"' and ativo='S' order by descricao"_s,
                u"Select * from Produtos where Descricao like '%"_s + texto +
                    u"%' and ativo='S' order by Descricao"_s};
    if (texto.contains(u' '))
        return {{},
                u"Select * from Produtos where ("_s + todasAsPalavras(texto) + ouCodigo(texto) +
                    u") and ativo='S' order by descricao"_s,
                {}};
    if (tipoCodigoBarras != u"EAN-13" || !numerico)
        return {{},
                u"Select * from Produtos where (Descricao like '%"_s + texto + u"%'"_s + ouCodigo(texto) +
                    u") and ativo='S' order by Descricao"_s,
                {}};
    normalizaCodigoDeBarras(texto);
    return {{},
            u"Select * from Produtos where CodFabr='"_s + texto + u"' and ativo='S' order by descricao"_s,
            {}};
}

} // namespace tarvessa

#include "products/ProductQuery.h"

#include "base/Numeros.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr qsizetype shortestText = 2;
constexpr qsizetype shortestPrefixedText = 3;
constexpr qsizetype longestCode = 15;
constexpr qsizetype barCodeDigits = 13;
constexpr qsizetype mostBarCodeDigits = 14;

// No code is longer, so a longer text is not looked for among the codes.
QString orCode(const QString& text) {
    return text.size() <= longestCode ? u" or CodFabr like '%"_s + text + u"%'"_s : QString();
}

void normalizeBarCode(QString& text) {
    if (text.size() >= barCodeDigits)
        text.truncate(mostBarCodeDigits);
    else
        text = (u"000000000000"_s + text).last(barCodeDigits);
}

// Two blanks in a row make an empty word, which every description contains.
QString allWords(const QString& text) {
    const QStringList words = text.split(u' ');
    QString terms;
    for (qsizetype i = 0; i < words.size(); ++i)
        terms += u" Descricao like '%"_s + words[i] + (i + 1 < words.size() ? u"%' and "_s : u"%'"_s);
    return terms;
}

} // namespace

ProductQuery productQuery(QString& text, QStringView barCodeType) {
    text = text.trimmed();
    if (text.isEmpty())
        return {u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s, {}, {}};
    const bool numeric = EhNumero(text);
    if (text.size() < shortestText && !numeric)
        return {u"Pesquisa com no mínimo 2 caracteres. Verifique!!!"_s, {}, {}};
    if (text.startsWith(u'=') && text.size() >= shortestPrefixedText)
        return {{},
                u"Select * from Produtos where aplicacao like '%"_s + text.sliced(1) +
                    u"%' and ativo='S' order by descricao"_s,
                {}};
    if (text.startsWith(u'*') && text.size() >= shortestPrefixedText)
        return {{},
                u"Select * from Produtos where observacao like '%"_s + text.sliced(1) +
                    u"%' and ativo='S' order by descricao"_s,
                {}};
    if (barCodeType == u"NUMÉRICO" && numeric)
        return {{},
                u"Select * from Produtos where CodFabr='"_s + text + u"' and ativo='S' order by descricao"_s,
                u"Select * from Produtos where Descricao like '%"_s + text +
                    u"%' and ativo='S' order by Descricao"_s};
    if (text.contains(u' '))
        return {{},
                u"Select * from Produtos where ("_s + allWords(text) + orCode(text) +
                    u") and ativo='S' order by descricao"_s,
                {}};
    if (barCodeType != u"EAN-13" || !numeric)
        return {{},
                u"Select * from Produtos where (Descricao like '%"_s + text + u"%'"_s + orCode(text) +
                    u") and ativo='S' order by Descricao"_s,
                {}};
    normalizeBarCode(text);
    return {
        {}, u"Select * from Produtos where CodFabr='"_s + text + u"' and ativo='S' order by descricao"_s, {}};
}

} // namespace tarvessa

#include "products/ProductQuery.h"

#include "base/Numeros.h"
#include "base/Text.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

constexpr qsizetype shortestText = 2;
constexpr qsizetype shortestPrefixedText = 3;
constexpr qsizetype longestCode = 15;
constexpr qsizetype barCodeDigits = 13;
constexpr qsizetype mostBarCodeDigits = 14;

bool hasPrefix(const QString& text, QChar prefix) {
    return text.startsWith(prefix) && text.size() >= shortestPrefixedText;
}

void normalizeBarCode(QString& text) {
    if (text.size() >= barCodeDigits)
        text.truncate(mostBarCodeDigits);
    else
        text = (u"000000000000"_s + text).last(barCodeDigits);
}

// A backslash that LIKE is to find: the literal takes one of two away, and the pattern once more.
QString escaped(const QString& text) {
    return QString(text).replace(u'\\', uR"(\\\\)"_s);
}

// Two blanks in a row make an empty word, which every description contains.
QString allWords(const QString& text) {
    const QStringList words = text.split(u' ');
    QString terms;
    for (qsizetype i = 0; i < words.size(); ++i)
        terms += u" Descricao like '%"_s + words[i] + (i + 1 < words.size() ? u"%' and "_s : u"%'"_s);
    return terms;
}

// The statement for any text that is not a bar code. `text` decides what is searched; `pattern` is its form
// in the SQL.
QString likeStatement(const QString& text, const QString& pattern) {
    if (hasPrefix(text, u'='))
        return u"Select * from Produtos where aplicacao like '%"_s + pattern.sliced(1) +
               u"%' and ativo='S' order by descricao"_s;
    if (hasPrefix(text, u'*'))
        return u"Select * from Produtos where observacao like '%"_s + pattern.sliced(1) +
               u"%' and ativo='S' order by descricao"_s;
    // No code is longer, so a longer text is not looked for among the codes.
    const QString orCode =
        text.size() <= longestCode ? u" or CodFabr like '%"_s + pattern + u"%'"_s : QString();
    if (text.contains(u' '))
        return u"Select * from Produtos where ("_s + allWords(pattern) + orCode +
               u") and ativo='S' order by descricao"_s;
    return u"Select * from Produtos where (Descricao like '%"_s + pattern + u"%'"_s + orCode +
           u") and ativo='S' order by Descricao"_s;
}

} // namespace

ProductQuery productQuery(QString& text, QStringView barCodeType) {
    text = trimBlanks(text);
    if (text.isEmpty())
        return {u"Impossível pesquisar sem uma descrição definida. Verifique!!!"_s, {}, {}};
    const bool numeric = EhNumero(text);
    if (text.size() < shortestText && !numeric)
        return {u"Pesquisa com no mínimo 2 caracteres. Verifique!!!"_s, {}, {}};
    if (numeric && barCodeType == u"NUMÉRICO")
        return {{},
                u"Select * from Produtos where CodFabr='"_s + text + u"' and ativo='S' order by descricao"_s,
                u"Select * from Produtos where Descricao like '%"_s + text +
                    u"%' and ativo='S' order by Descricao"_s};
    if (numeric && barCodeType == u"EAN-13" && !text.contains(u' ')) {
        normalizeBarCode(text);
        return {{},
                u"Select * from Produtos where CodFabr='"_s + text + u"' and ativo='S' order by descricao"_s,
                {}};
    }
    // As typed, a backslash escapes what follows it and a text that ends in one finds something else.
    const QString alternative = text.contains(u'\\') ? likeStatement(text, escaped(text)) : QString();
    return {{}, likeStatement(text, text), alternative};
}

} // namespace tarvessa

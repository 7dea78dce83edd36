#include "printing/layout/LayoutXml.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

// Editors find the schema of the file through this attribute.
bool isSchemaHint(const QXmlStreamAttribute& attribute) {
    return attribute.namespaceUri() == "http://www.w3.org/2001/XMLSchema-instance"_L1 &&
           attribute.name() == "noNamespaceSchemaLocation"_L1;
}

} // namespace

LayoutXml::LayoutXml(QString fileName, const QByteArray& contents) : m_fileName(std::move(fileName)) {
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    QByteArrayView start(contents);
    if (start.startsWith(byteOrderMark))
        start = start.sliced(byteOrderMark.size());
    if (!start.trimmed().startsWith('<') || contents.contains('\0'))
        raiseLayoutError(
            m_fileName, 1,
            u"o arquivo não é um layout em XML (parece um arquivo binário ou de outro programa)."_s);
    m_reader.addData(contents);
}

void LayoutXml::enterRoot(QStringView name) {
    if (!m_reader.readNextStartElement())
        failOnXmlError();
    if (m_reader.name() != name)
        fail(u"o elemento principal é \"%1\"; o esperado é \"%2\"."_s.arg(m_reader.name(), name));
}

bool LayoutXml::nextElement() {
    while (true) {
        const QXmlStreamReader::TokenType token = m_reader.readNext();
        failOnXmlError();
        if (token == QXmlStreamReader::StartElement)
            return true;
        if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::EndDocument)
            return false;
        if (token == QXmlStreamReader::Characters && !m_reader.isWhitespace())
            fail(u"o texto \"%1\" está fora de um elemento de texto."_s.arg(
                m_reader.text().toString().simplified()));
    }
}

QString LayoutXml::readText() {
    QString text = m_reader.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
    if (m_reader.error() == QXmlStreamReader::UnexpectedElementError)
        fail(u"o elemento \"%1\" não pode estar dentro de um texto."_s.arg(m_reader.name()));
    failOnXmlError();
    return text;
}

void LayoutXml::expectEmpty() {
    if (nextElement())
        failUnknownElement();
}

void LayoutXml::expectAttributes(std::initializer_list<QStringView> names) const {
    const QXmlStreamAttributes attributes = m_reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes)
        if (!isSchemaHint(attribute) &&
            std::find(names.begin(), names.end(), attribute.name()) == names.end())
            fail(u"o elemento \"%1\" não tem o atributo \"%2\"."_s.arg(m_reader.name(), attribute.name()));
}

bool LayoutXml::has(QStringView attribute) const {
    return m_reader.attributes().hasAttribute(attribute.toString());
}

QString LayoutXml::text(QStringView attribute) const {
    return m_reader.attributes().value(attribute.toString()).toString();
}

QString LayoutXml::requiredText(QStringView attribute) const {
    QString value = text(attribute);
    if (value.isEmpty())
        fail(u"falta o atributo \"%1\" no elemento \"%2\"."_s.arg(attribute, m_reader.name()));
    return value;
}

bool LayoutXml::flag(QStringView attribute) const {
    return choice(attribute, {u"false", u"true"}) == 1;
}

double LayoutXml::length(QStringView attribute, double missing, double dots) const {
    if (!has(attribute))
        return missing * dots;
    static const QRegularExpression form(u"^[0-9]{1,4}(\\.[0-9]+)?$"_s);
    const QString value = text(attribute);
    if (!form.match(value).hasMatch())
        fail(u"\"%1\" não é uma medida válida em \"%2\" (números como 12 ou 12.5)."_s.arg(value, attribute));
    return value.toDouble() * dots;
}

double LayoutXml::requiredLength(QStringView attribute) const {
    requiredText(attribute);
    return length(attribute, 0);
}

QColor LayoutXml::colour(QStringView attribute, const QColor& missing) const {
    if (!has(attribute))
        return missing;
    static const QRegularExpression form(u"^#[0-9A-Fa-f]{6}$"_s);
    const QString value = text(attribute);
    if (!form.match(value).hasMatch())
        fail(u"\"%1\" não é uma cor em \"%2\" (o esperado é #RRGGBB)."_s.arg(value, attribute));
    return QColor(value);
}

int LayoutXml::choice(QStringView attribute, std::initializer_list<QStringView> words) const {
    if (!has(attribute))
        return 0;
    const QString value = text(attribute);
    const auto* const found = std::find(words.begin(), words.end(), value);
    if (found == words.end()) {
        QStringList known;
        for (const QStringView word : words)
            known.append(word.toString());
        fail(u"\"%1\" não é um valor de \"%2\" (%3)."_s.arg(value, attribute, known.join(u", "_s)));
    }
    return static_cast<int>(found - words.begin());
}

void LayoutXml::fail(const QString& problem) const {
    raiseLayoutError(m_fileName, m_reader.lineNumber(), problem);
}

void LayoutXml::failUnknownElement() const {
    fail(u"o elemento \"%1\" não é conhecido neste lugar."_s.arg(m_reader.name()));
}

void LayoutXml::failOnXmlError() const {
    if (m_reader.hasError())
        raiseXmlError(m_fileName, m_reader);
}

void raiseXmlError(const QString& fileName, const QXmlStreamReader& reader) {
    raiseLayoutError(fileName, reader.lineNumber(), u"o XML está incorreto: %1"_s.arg(reader.errorString()));
}

} // namespace tarvessa::report

#include "core/ArquivoLog.h"

#include "base/ProgramFolder.h"
#include "base/RegularFile.h"
#include "base/RuntimeError.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

[[noreturn]] void naoGravou(const QString& caminho, const QString& motivo) {
    throw RuntimeError(ErrorNumber::FileNotWritable, u"Não foi possível gravar o arquivo %1: %2"_s.arg(
                                                         QDir::toNativeSeparators(caminho), motivo));
}

} // namespace

void ArquivoLog::abre(const QString& nome, QIODevice::OpenMode modo) {
    fecha();
    m_caminho = programFolder() + u'/' + nome;
    m_arquivo.setFileName(m_caminho);
    // Without a buffer, a line whose writing failed cannot turn up in the file later.
    const QString motivo = openRegularFile(m_arquivo, QIODevice::WriteOnly | QIODevice::Unbuffered | modo);
    if (!motivo.isEmpty())
        naoGravou(m_caminho, motivo);
}

void ArquivoLog::cria(const QString& nome) {
    abre(nome, QIODevice::Truncate);
}

void ArquivoLog::continua(const QString& nome) {
    abre(nome, QIODevice::Append);
}

void ArquivoLog::linha(const QString& texto) {
    const QByteArray bytes = texto.toUtf8() + "\r\n";
    if (m_arquivo.write(bytes) != bytes.size())
        naoGravou(m_caminho, m_arquivo.errorString());
}

} // namespace tarvessa

#include "core/ArquivoLog.h"

#include "base/RuntimeError.h"
#include "core/ProgramFolder.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

[[noreturn]] void naoGravou(const QFile& arquivo) {
    throw RuntimeError(ErrorNumber::FileNotWritable,
                       u"Não foi possível gravar o arquivo %1: %2"_s.arg(
                           QDir::toNativeSeparators(arquivo.fileName()), arquivo.errorString()));
}

} // namespace

void ArquivoLog::cria(const QString& nome) {
    fecha();
    m_arquivo.setFileName(programFolder() + u'/' + nome);
    if (!m_arquivo.open(QIODevice::WriteOnly | QIODevice::Truncate))
        naoGravou(m_arquivo);
}

void ArquivoLog::linha(const QString& texto) {
    const QByteArray bytes = texto.toUtf8() + "\r\n";
    if (m_arquivo.write(bytes) != bytes.size() || !m_arquivo.flush())
        naoGravou(m_arquivo);
}

} // namespace tarvessa

#include "printing/layout/LayoutFile.h"

#include "base/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvessa::report {

namespace {

constexpr qint64 largestFile = qint64{4} * 1024 * 1024;

// Why the file at this path cannot be a layout; empty when it can.
QString problemOf(const QFileInfo& file) {
    if (file.isSymLink())
        return u"é um atalho (link simbólico)"_s;
    if (file.isDir())
        return u"é uma pasta"_s;
    if (!file.isFile())
        return u"é um dispositivo ou um canal"_s;
    if (file.size() > largestFile)
        return u"tem mais de 4 MB"_s;
    return {};
}

} // namespace

QByteArray contentsOfLayout(const QString& path) {
    const QString name = QDir::toNativeSeparators(path);
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        throw RuntimeError(ErrorNumber::FileNotFound,
                           u"O layout de relatório não foi encontrado: %1"_s.arg(name));
    // Opening a pipe would wait for somebody to write into it.
    if (const QString problem = problemOf(info); !problem.isEmpty())
        throw RuntimeError(
            ErrorNumber::InvalidLayout,
            u"Layout de relatório inválido: %1 %2; o esperado é um arquivo comum."_s.arg(name, problem));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(
            ErrorNumber::FileNotFound,
            u"O layout de relatório não pode ser lido: %1: %2"_s.arg(name, file.errorString()));
    return file.read(largestFile);
}

} // namespace tarvessa::report

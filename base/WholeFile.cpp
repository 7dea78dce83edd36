#include "base/WholeFile.h"

#include "base/RuntimeError.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tarvessa {

void writeWholeFile(const QString& path, const std::function<void(QIODevice& file)>& write) {
    QSaveFile file(path);
    const auto fail = [&] {
        throw RuntimeError(ErrorNumber::FileNotWritable,
                           u"Não foi possível gravar %1: %2"_s.arg(path, file.errorString()));
    };
    if (!file.open(QIODevice::WriteOnly))
        fail();
    write(file);
    // Also fails when one of the writes has failed.
    if (!file.commit())
        fail();
}

} // namespace tarvessa

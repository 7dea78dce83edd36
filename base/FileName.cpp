#include "base/FileName.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvessa {

QString fileNameFor(const QString& title) {
    static const QRegularExpression reserved(u"[\\\\/:*?\"<>|\\x00-\\x1F\\x7F]+"_s);
    QString name = title;
    return name.replace(reserved, u"-"_s).simplified();
}

} // namespace tarvessa

#include "targets/TargetsBench.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::test {

void TargetsBench::reset() {
    Bench::reset();
    shop().empresa();
}

void TargetsBench::open() {
    close();
    connect();
    take(std::make_unique<MetasQuadro>());
    screen()->Form_Load();
    QVERIFY(show(QSize(1024, 640)));
}

void TargetsBench::enterProduct(const QString& name, const QString& text) const {
    fill(name, text);
    key(Qt::Key_Return);
}

void TargetsBench::goToTab(int tab) const {
    key(tab == 0 ? Qt::Key_1 : Qt::Key_2, Qt::AltModifier);
}

void TargetsBench::period(const QString& start, const QString& end) const {
    fill(u"DataIni"_s, QString(start).remove(u'/'));
    fill(u"DataFin"_s, QString(end).remove(u'/'));
}

} // namespace tarvessa::test

#include "ui/PlainText.h"

#include <QTest>
#include <QTextDocumentFragment>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// Texts that look like markup are shown letter by letter.
class TstPlainText : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void toolTip_data();
    void toolTip();
};

void TstPlainText::toolTip_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << u"PÃO DE FORMA"_s;
    QTest::newRow("picture") << u"<img src=\"x.png\">"_s;
    QTest::newRow("bold within") << u"PÃO <b>DE</b> FORMA"_s;
    QTest::newRow("entity") << u"A &lt; B"_s;
    QTest::newRow("blanks") << u"<i>A   B</i>"_s;
    QTest::newRow("less than") << u"1 < 2"_s;
    QTest::newRow("empty") << QString();
}

void TstPlainText::toolTip() {
    QFETCH(QString, text);
    QWidget widget;
    plain::setToolTip(&widget, text);
    const QString tip = widget.toolTip();
    QString shown = Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
    QCOMPARE(shown.replace(QChar::Nbsp, u' '), text);
}

QTEST_MAIN(TstPlainText)
#include "tst_plain_text.moc"

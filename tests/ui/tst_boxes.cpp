#include "support/ModalHelper.h"
#include "ui/MessageBoxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLibraryInfo>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// Does `acao` with the message box that comes up next.
template <typename Acao>
void comACaixa(QObject* dono, Acao acao) {
    auto* relogio = new QTimer(dono);
    QObject::connect(relogio, &QTimer::timeout, dono, [relogio, acao] {
        if (auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            relogio->stop();
            relogio->deleteLater();
            acao(caixa);
        }
    });
    relogio->start(2);
}

} // namespace

/// The program's message boxes.
class TstBoxes : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void titleIconAndButtons();
    void yesIsTrueAndNoIsFalse();
    void escapeMeansNo();
    void closingTheBoxMeansNo();
    void enterPressesTheFirstButton();
    void textIsNeverRichText_data();
    void textIsNeverRichText();
    void boxIsModalToItsForm();
    void buttonsAreInPortuguese();
};

void TstBoxes::titleIconAndButtons() {
    ModalHelper caixas;
    caixas.expect(u"Informação. Verifique!!!"_s, QMessageBox::Ok);
    boxes::inform(nullptr, u"Informação. Verifique!!!"_s);
    caixas.expect(u"Cuidado."_s, QMessageBox::Ok);
    boxes::exclaim(nullptr, u"Cuidado."_s);
    caixas.expect(u"Confirma?"_s, QMessageBox::Yes);
    boxes::ask(nullptr, u"Confirma?"_s, QMessageBox::Question);
    caixas.expect(u"Confirma mesmo?"_s, QMessageBox::No);
    boxes::ask(nullptr, u"Confirma mesmo?"_s, QMessageBox::Information);
    QCOMPARE(caixas.problem(), QString());

    const QMessageBox::StandardButtons simENao = QMessageBox::Yes | QMessageBox::No;
    const QList<QPair<QMessageBox::Icon, QMessageBox::StandardButtons>> esperadas{
        {QMessageBox::Information, QMessageBox::Ok},
        {QMessageBox::Warning, QMessageBox::Ok},
        {QMessageBox::Question, simENao},
        {QMessageBox::Information, simENao}};
    QCOMPARE(caixas.boxes().size(), esperadas.size());
    for (qsizetype i = 0; i < esperadas.size(); ++i) {
        QCOMPARE(caixas.boxes()[i].title, u"Atenção!!!"_s);
        QCOMPARE(caixas.boxes()[i].icon, esperadas[i].first);
        QCOMPARE(caixas.boxes()[i].buttons, esperadas[i].second);
    }
}

void TstBoxes::yesIsTrueAndNoIsFalse() {
    ModalHelper caixas;
    caixas.expect(u"?"_s, QMessageBox::Yes);
    QVERIFY(boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    caixas.expect(u"?"_s, QMessageBox::No);
    QVERIFY(!boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    QCOMPARE(caixas.problem(), QString());
}

void TstBoxes::escapeMeansNo() {
    ModalHelper caixas;
    caixas.expect(u"?"_s, QMessageBox::NoButton);
    QVERIFY(!boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    caixas.expect(u"!"_s, QMessageBox::NoButton);
    boxes::inform(nullptr, u"!"_s);
    QCOMPARE(caixas.problem(), QString());
}

void TstBoxes::closingTheBoxMeansNo() {
    comACaixa(this, [](QMessageBox* caixa) { caixa->close(); });
    QVERIFY(!boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    comACaixa(this, [](QMessageBox* caixa) { caixa->close(); });
    boxes::inform(nullptr, u"!"_s);
}

void TstBoxes::enterPressesTheFirstButton() {
    comACaixa(this, [](QMessageBox* caixa) { QTest::keyClick(caixa, Qt::Key_Return); });
    QVERIFY(boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    comACaixa(this, [](QMessageBox* caixa) { QTest::keyClick(caixa, Qt::Key_Return); });
    boxes::inform(nullptr, u"!"_s);
}

void TstBoxes::textIsNeverRichText_data() {
    QTest::addColumn<QString>("texto");
    QTest::newRow("tags") << u"<b>CLIENTE</b> & FILHOS <br> <img src='x'>"_s;
    QTest::newRow("entities") << u"A &amp; B &lt;"_s;
    QTest::newRow("line breaks") << u"um\ndois"_s;
}

void TstBoxes::textIsNeverRichText() {
    QFETCH(QString, texto);
    QString mostrado;
    Qt::TextFormat formato = Qt::RichText;
    comACaixa(this, [&](QMessageBox* caixa) {
        const auto* rotulo = caixa->findChild<QLabel*>(u"qt_msgbox_label"_s);
        mostrado = rotulo->text();
        formato = rotulo->textFormat();
        caixa->close();
    });
    boxes::inform(nullptr, texto);
    QCOMPARE(mostrado, texto);
    QCOMPARE(formato, Qt::PlainText);
}

void TstBoxes::boxIsModalToItsForm() {
    QWidget form;
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    bool modal = false;
    QPointer<QWidget> dona;
    comACaixa(this, [&](QMessageBox* caixa) {
        modal = caixa->isModal();
        dona = caixa->parentWidget();
        caixa->close();
    });
    boxes::inform(&form, u"!"_s);
    QVERIFY(modal);
    QCOMPARE(dona.data(), &form);
}

void TstBoxes::buttonsAreInPortuguese() {
    QTranslator textos;
    QVERIFY(textos.load(u"qtbase_pt_BR"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
    QVERIFY(QApplication::installTranslator(&textos));
    QStringList botoes;
    comACaixa(this, [&](QMessageBox* caixa) {
        for (const auto qual : {QMessageBox::Yes, QMessageBox::No})
            botoes += caixa->button(qual)->text().remove(u'&');
        caixa->close();
    });
    boxes::ask(nullptr, u"?"_s, QMessageBox::Question);
    QApplication::removeTranslator(&textos);
    QCOMPARE(botoes, (QStringList{u"Sim"_s, u"Não"_s}));
}

QTEST_MAIN(TstBoxes)
#include "tst_boxes.moc"

#include "support/ModalHelper.h"
#include "ui/MessageBoxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLibraryInfo>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QTimer>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

/// Does `acao` with the message box that comes up next.
template <typename Action>
void withTheBox(QObject* owner, Action action) {
    auto* timer = new QTimer(owner);
    QObject::connect(timer, &QTimer::timeout, owner, [timer, action] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            action(box);
        }
    });
    timer->start(2);
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
    void longTextScrolls();
    void boxIsModalToItsForm();
    void buttonsAreInPortuguese();
};

void TstBoxes::titleIconAndButtons() {
    ModalHelper modals;
    modals.expect(u"Informação. Verifique!!!"_s, QMessageBox::Ok);
    boxes::inform(nullptr, u"Informação. Verifique!!!"_s);
    modals.expect(u"Cuidado."_s, QMessageBox::Ok);
    boxes::exclaim(nullptr, u"Cuidado."_s);
    modals.expect(u"Confirma?"_s, QMessageBox::Yes);
    boxes::ask(nullptr, u"Confirma?"_s, QMessageBox::Question);
    modals.expect(u"Confirma mesmo?"_s, QMessageBox::No);
    boxes::ask(nullptr, u"Confirma mesmo?"_s, QMessageBox::Information);
    QCOMPARE(modals.problem(), QString());

    const QMessageBox::StandardButtons yesAndNo = QMessageBox::Yes | QMessageBox::No;
    const QList<QPair<QMessageBox::Icon, QMessageBox::StandardButtons>> expectedRows{
        {QMessageBox::Information, QMessageBox::Ok},
        {QMessageBox::Warning, QMessageBox::Ok},
        {QMessageBox::Question, yesAndNo},
        {QMessageBox::Information, yesAndNo}};
    QCOMPARE(modals.boxes().size(), expectedRows.size());
    for (qsizetype i = 0; i < expectedRows.size(); ++i) {
        QCOMPARE(modals.boxes()[i].title, u"Atenção!!!"_s);
        QCOMPARE(modals.boxes()[i].icon, expectedRows[i].first);
        QCOMPARE(modals.boxes()[i].buttons, expectedRows[i].second);
    }
}

void TstBoxes::yesIsTrueAndNoIsFalse() {
    ModalHelper modals;
    modals.expect(u"?"_s, QMessageBox::Yes);
    QVERIFY(boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    modals.expect(u"?"_s, QMessageBox::No);
    QVERIFY(!boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    QCOMPARE(modals.problem(), QString());
}

void TstBoxes::escapeMeansNo() {
    ModalHelper modals;
    modals.expect(u"?"_s, QMessageBox::NoButton);
    QVERIFY(!boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    modals.expect(u"!"_s, QMessageBox::NoButton);
    boxes::inform(nullptr, u"!"_s);
    QCOMPARE(modals.problem(), QString());
}

void TstBoxes::closingTheBoxMeansNo() {
    withTheBox(this, [](QMessageBox* box) { box->close(); });
    QVERIFY(!boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    withTheBox(this, [](QMessageBox* box) { box->close(); });
    boxes::inform(nullptr, u"!"_s);
}

void TstBoxes::enterPressesTheFirstButton() {
    withTheBox(this, [](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
    QVERIFY(boxes::ask(nullptr, u"?"_s, QMessageBox::Question));
    withTheBox(this, [](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
    boxes::inform(nullptr, u"!"_s);
}

void TstBoxes::textIsNeverRichText_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("tags") << u"<b>CLIENTE</b> & FILHOS <br> <img src='x'>"_s;
    QTest::newRow("entities") << u"A &amp; B &lt;"_s;
    QTest::newRow("line breaks") << u"um\ndois"_s;
}

void TstBoxes::textIsNeverRichText() {
    QFETCH(QString, text);
    QString shown;
    Qt::TextFormat format = Qt::RichText;
    withTheBox(this, [&](QMessageBox* box) {
        const auto* label = box->findChild<QLabel*>(u"qt_msgbox_label"_s);
        shown = label->text();
        format = label->textFormat();
        box->close();
    });
    boxes::inform(nullptr, text);
    QCOMPARE(shown, text);
    QCOMPARE(format, Qt::PlainText);
}

// Its buttons must stay on the screen.
void TstBoxes::longTextScrolls() {
    constexpr int lines = 500;
    int height = 0;
    int room = 0;
    bool scrolls = false;
    withTheBox(this, [&](QMessageBox* box) {
        height = box->height();
        room = box->screen()->availableGeometry().height();
        scrolls = box->findChild<QScrollArea*>(u"textoLongo"_s) != nullptr;
        box->close();
    });
    boxes::inform(nullptr, u"Linha de uma lista comprida\n"_s.repeated(lines));
    QVERIFY(scrolls);
    QVERIFY2(height <= room, qPrintable(u"%1 > %2"_s.arg(height).arg(room)));
}

void TstBoxes::boxIsModalToItsForm() {
    QWidget form;
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    bool modal = false;
    QPointer<QWidget> shownOwner;
    withTheBox(this, [&](QMessageBox* box) {
        modal = box->isModal();
        shownOwner = box->parentWidget();
        box->close();
    });
    boxes::inform(&form, u"!"_s);
    QVERIFY(modal);
    QCOMPARE(shownOwner.data(), &form);
}

void TstBoxes::buttonsAreInPortuguese() {
    QTranslator texts;
    QVERIFY(texts.load(u"qtbase_pt_BR"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
    QVERIFY(QApplication::installTranslator(&texts));
    QStringList buttons;
    withTheBox(this, [&](QMessageBox* box) {
        for (const auto which : {QMessageBox::Yes, QMessageBox::No})
            buttons += box->button(which)->text().remove(u'&');
        box->close();
    });
    boxes::ask(nullptr, u"?"_s, QMessageBox::Question);
    QApplication::removeTranslator(&texts);
    QCOMPARE(buttons, (QStringList{u"Sim"_s, u"Não"_s}));
}

QTEST_MAIN(TstBoxes)
#include "tst_boxes.moc"

#include "support/ModalHelper.h"
#include "ui/DateBox.h"
#include "ui/Refusal.h"
#include "ui/TextBox.h"

#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using tarvessa::test::ModalHelper;

/// After a refusal the next text typed replaces the refused one.
class TstRefusal : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { m_form.reset(); }

    void retypedAfterAButton();
    void retypedAfterAShortcutInTheField();
    void retypedDate();

  private:
    /// Refuses the field when the button is pressed, and answers the box.
    void pressRefusing(QLineEdit* field, const std::function<void()>& press);

    /// Types as the window system tells it, to whatever has the focus.
    void type(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(m_form->windowHandle(), character.toLatin1());
    }

    std::unique_ptr<QWidget> m_form;
    QPushButton* m_button = nullptr;
    TextBox* m_text = nullptr;
    DateBox* m_date = nullptr;
};

void TstRefusal::init() {
    m_form = std::make_unique<QWidget>();
    auto* page = new QVBoxLayout(m_form.get());
    page->addWidget(m_button = new QPushButton(u"&Grava"_s));
    page->addWidget(m_text = new TextBox);
    page->addWidget(m_date = new DateBox);
    m_text->setDecimal();
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TstRefusal::pressRefusing(QLineEdit* field, const std::function<void()>& press) {
    connect(m_button, &QPushButton::clicked, m_form.get(), [field] { refuse(field, u"Verifique!!!"_s); });
    ModalHelper modal;
    modal.expect(u"Verifique!!!"_s, QMessageBox::Ok);
    press();
    QTRY_COMPARE(modal.problem(), QString());
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    QCOMPARE(m_form->focusWidget(), field);
    QCOMPARE(field->selectedText(), field->displayText());
}

void TstRefusal::retypedAfterAButton() {
    m_text->setText(u"0,00"_s);
    pressRefusing(m_text, [this] { QTest::mouseClick(m_button, Qt::LeftButton); });
    type(u"4,5"_s);
    QCOMPARE(m_text->text(), u"4,5"_s);
}

void TstRefusal::retypedAfterAShortcutInTheField() {
    m_text->setFocus();
    type(u"9,9"_s);
    pressRefusing(m_text, [this] { QTest::keyClick(m_form->windowHandle(), Qt::Key_G, Qt::AltModifier); });
    type(u"4,5"_s);
    QCOMPARE(m_text->text(), u"4,5"_s);
}

void TstRefusal::retypedDate() {
    m_date->setText(u"31/02/2024"_s);
    m_date->setFocus();
    m_date->deselect();
    pressRefusing(m_date, [this] { QTest::keyClick(m_form->windowHandle(), Qt::Key_G, Qt::AltModifier); });
    type(u"1/3/2024"_s);
    QCOMPARE(m_date->date(), QDate(2024, 3, 1));
}

QTEST_MAIN(TstRefusal)
#include "tst_refusal.moc"

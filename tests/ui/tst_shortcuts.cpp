#include "ui/Shortcuts.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvessa;

/// Keys of buttons and tabs.
class TstShortcuts : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { m_form.reset(); }

    void altKeyPressesTheButton();
    void toolTipKeepsItsText();
    void captionKeepsTheKey();
    void keysTurnTheTabs();
    void disabledTabIsPassedOver();

  private:
    void press(int key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(m_form->windowHandle(), static_cast<Qt::Key>(key), modifiers);
    }

    std::unique_ptr<QWidget> m_form;
    QLineEdit* m_outside = nullptr;
    QPushButton* m_button = nullptr;
    QTabWidget* m_tabs = nullptr;
};

void TstShortcuts::init() {
    m_form = std::make_unique<QWidget>();
    auto* page = new QVBoxLayout(m_form.get());
    page->addWidget(m_outside = new QLineEdit);
    page->addWidget(m_button = new QPushButton(u"Gerar"_s));
    page->addWidget(m_tabs = new QTabWidget);
    for (int tab = 0; tab < 3; ++tab)
        m_tabs->addTab(new QLineEdit, u"Aba %1"_s.arg(tab));
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_outside->setFocus();
}

void TstShortcuts::altKeyPressesTheButton() {
    int clicks = 0;
    connect(m_button, &QPushButton::clicked, this, [&] { ++clicks; });
    setAltKey(m_button, Qt::Key_G);
    press(Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(clicks, 1);
    QCOMPARE(m_form->focusWidget(), m_outside);
    QCOMPARE(m_button->toolTip(),
             u"Tecla de atalho: "_s + QKeySequence(u"Alt+G"_s).toString(QKeySequence::NativeText));
}

void TstShortcuts::toolTipKeepsItsText() {
    m_button->setToolTip(u"Gera o relatório"_s);
    setAltKey(m_button, Qt::Key_G);
    QVERIFY(m_button->toolTip().startsWith(u"Gera o relatório\nTecla de atalho: "_s));
}

void TstShortcuts::captionKeepsTheKey() {
    int clicks = 0;
    connect(m_button, &QPushButton::clicked, this, [&] { ++clicks; });
    setAltKey(m_button, Qt::Key_G);
    setCaption(m_button, u"Outra legenda"_s);
    QCOMPARE(m_button->text(), u"Outra legenda"_s);
    press(Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(clicks, 1);
}

void TstShortcuts::keysTurnTheTabs() {
    setTabKeys(m_tabs);
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_tabs->currentIndex(), 1);
    press(Qt::Key_Tab, Qt::ControlModifier);
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_tabs->currentIndex(), 0);
    press(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(m_tabs->currentIndex(), 2);
    m_outside->setFocus();
    press(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(m_tabs->currentIndex(), 1);
    m_tabs->currentWidget()->setFocus();
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_tabs->currentIndex(), 2);
    press(Qt::Key_1, Qt::AltModifier);
    QCOMPARE(m_tabs->currentIndex(), 0);
    QVERIFY(m_tabs->tabToolTip(2).endsWith(u"+3"_s));
}

void TstShortcuts::disabledTabIsPassedOver() {
    setTabKeys(m_tabs);
    m_tabs->setTabEnabled(1, false);
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_tabs->currentIndex(), 2);
    m_tabs->setTabEnabled(0, false);
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_tabs->currentIndex(), 2);
}

QTEST_MAIN(TstShortcuts)
#include "tst_shortcuts.moc"

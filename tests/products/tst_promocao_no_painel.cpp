#include "base/Clock.h"
#include "base/Datas.h"
#include "closing/PainelFechamento.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "ui/TextBox.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

/// How the panel opens the promotional prices.
class TstPromocaoNoPainel : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init();
    void cleanup() { m_panel.reset(); }

    void buttonNeedsPresales();
    void buttonOpensTheScreen();
    void pricesAreAppliedFromThePanel();
    void panelHandsOverItsPicture();
    void missingViewerEndsTheProgramFromItsDepths();

  private:
    bool openScreen();
    QPushButton* command6() const { return m_panel->findChild<QPushButton*>(u"Command6"_s); }

    std::unique_ptr<Bench> b;
    std::unique_ptr<PainelFechamento> m_panel;
    QString m_id;
};

void TstPromocaoNoPainel::init() {
    b->resetConnected();
    b->shop().produto(u"0000000000007"_s, u"PÃO FRANCÊS"_s);
    b->shop().produto(u"0000000000008"_s, u"PÃO DOCE"_s);
    b->shop().cliente({.codigo = u"1"_s, .nome = u"ALFA"_s});
    m_id = b->shop().linhaAberta(u"0000000000007"_s, u"1"_s,
                                 u"dataabertura='"_s + TextoSQL(clock::today()) + u"', totalped=1"_s);
}

bool TstPromocaoNoPainel::openScreen() {
    m_panel = std::make_unique<PainelFechamento>();
    return m_panel->Form_Load() && showActive(m_panel.get());
}

void TstPromocaoNoPainel::buttonNeedsPresales() {
    QVERIFY(openScreen());
    QVERIFY(command6()->isEnabled());
    QCOMPARE(command6()->text(), u"Define os preços promocionais para os clientes"_s);
    b->server().execute(u"DELETE FROM orcamento"_s);
    QVERIFY(openScreen());
    QVERIFY(!command6()->isEnabled());
}

void TstPromocaoNoPainel::buttonOpensTheScreen() {
    QVERIFY(openScreen());
    ModalHelper modals;
    modals.onOpen([this](QWidget* screen) {
        QCOMPARE(screen->objectName(), u"PromocaoPedidos"_s);
        QVERIFY(screen->isModal());
        QCOMPARE(screen->parentWidget(), m_panel.get());
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    QTest::mouseClick(command6(), Qt::LeftButton);
    QCOMPARE(modals.problem(), QString());
    QVERIFY(m_panel->isVisible());
}

void TstPromocaoNoPainel::pricesAreAppliedFromThePanel() {
    QVERIFY(openScreen());
    ModalHelper modals;
    modals.onOpen([&modals](QWidget* screen) {
        QVERIFY(QTest::qWaitForWindowActive(screen));
        auto* descricao = screen->findChild<TextBox*>(u"Descricao"_s);
        auto* venda = screen->findChild<TextBox*>(u"Venda"_s);
        pasteInto(descricao, u"7"_s);
        QTest::keyClick(descricao, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QTest::keyClicks(venda, u"0.7"_s);
        QTest::mouseClick(screen->findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
        modals.expect(u"Deseja realmente realizar esse processo?"_s, QMessageBox::Yes);
        QTest::mouseClick(screen->findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    });
    QTest::mouseClick(command6(), Qt::LeftButton);
    QCOMPARE(modals.problem(), QString());
    QCOMPARE(b->server().query(u"SELECT unitario, totalped FROM orcamento WHERE id="_s + m_id),
             QList<QStringList>({{u"0.70"_s, u"0.70"_s}}));
}

void TstPromocaoNoPainel::panelHandsOverItsPicture() {
    QVERIFY(openScreen());
    const QPixmap image = m_panel->findChild<QLabel*>(u"picSucesso"_s)->pixmap(Qt::ReturnByValue);
    QVERIFY(!image.isNull());
    ModalHelper modals;
    modals.onOpen([&image](QWidget* screen) {
        QVERIFY(QTest::qWaitForWindowActive(screen));
        auto* descricao = screen->findChild<TextBox*>(u"Descricao"_s);
        pasteInto(descricao, u"7"_s);
        QTest::keyClick(descricao, Qt::Key_Tab);
        auto* all = screen->findChild<QPushButton*>(u"Command2"_s);
        QTRY_VERIFY(all->isEnabled()); // the search begins once the focus has moved
        QTest::mouseClick(all, Qt::LeftButton);
        const auto* grid = screen->findChild<Grid*>(u"Grid1"_s);
        QCOMPARE(grid->text(1, 6), u" "_s);
        const auto mark = grid->model()->index(0, 6).data(Qt::DecorationRole).value<QIcon>();
        QCOMPARE(mark.pixmap(image.size()).toImage(), image.toImage());
        QTest::keyClick(screen, Qt::Key_Escape);
    });
    QTest::mouseClick(command6(), Qt::LeftButton);
    QCOMPARE(modals.problem(), QString());
}

// Nothing here waits for a window to go: the windows go when the event loops have ended.
void TstPromocaoNoPainel::missingViewerEndsTheProgramFromItsDepths() {
    constexpr int gaveUp = 99;
    constexpr int intervalMs = 20;
    QVERIFY(openScreen());
    b->mark();
    QStringList seen;
    std::function<void()> operate = [&] {
        QTimer::singleShot(intervalMs, m_panel.get(), operate); // also inside the loops that open below
        QWidget* window = QApplication::activeModalWidget();
        const QString classe = window ? QString::fromLatin1(window->metaObject()->className()) : QString();
        if (!window || !window->isActiveWindow() || seen.contains(classe))
            return;
        seen.append(classe);
        if (auto* caixa = qobject_cast<QMessageBox*>(window)) {
            seen.append(caixa->text());
            QTest::mouseClick(caixa->button(QMessageBox::Ok), Qt::LeftButton);
        } else if (auto* descricao = window->findChild<TextBox*>(u"Descricao"_s)) {
            pasteInto(descricao, u"pão"_s);
            QTest::keyClick(descricao, Qt::Key_Tab);
        } else {
            QTest::keyClick(window, Qt::Key_F2);
        }
    };
    QTimer::singleShot(0, m_panel.get(), operate);
    QTimer::singleShot(0, m_panel.get(), [this] { QTest::mouseClick(command6(), Qt::LeftButton); });
    QTimer::singleShot(10000, m_panel.get(), [] { QApplication::exit(gaveUp); });
    const int result = QApplication::exec();
    QCOMPARE(seen,
             QStringList({u"tarvessa::PromocaoPedidos"_s, u"tarvessa::SelecionaProd"_s, u"QMessageBox"_s,
                          u"Erro em tempo de execução 424:\n\nO objeto é obrigatório: não há visualizador "
                          "de imagem."_s}));
    QCOMPARE(result, EXIT_FAILURE);
    // The search and the selection screen's setting; nothing after the error.
    QCOMPARE(b->statements().size(), 2);
}

QTEST_MAIN(TstPromocaoNoPainel)
#include "tst_promocao_no_painel.moc"

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
    void cleanup() { m_painel.reset(); }

    void buttonNeedsPresales();
    void buttonOpensTheScreen();
    void pricesAreAppliedFromThePanel();
    void panelHandsOverItsPicture();
    void missingViewerEndsTheProgramFromItsDepths();

  private:
    bool abre();
    QPushButton* command6() const { return m_painel->findChild<QPushButton*>(u"Command6"_s); }

    std::unique_ptr<Bench> b;
    std::unique_ptr<PainelFechamento> m_painel;
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

bool TstPromocaoNoPainel::abre() {
    m_painel = std::make_unique<PainelFechamento>();
    return m_painel->Form_Load() && showActive(m_painel.get());
}

void TstPromocaoNoPainel::buttonNeedsPresales() {
    QVERIFY(abre());
    QVERIFY(command6()->isEnabled());
    QCOMPARE(command6()->text(), u"Define os preços promocionais para os clientes"_s);
    b->server().execute(u"DELETE FROM orcamento"_s);
    QVERIFY(abre());
    QVERIFY(!command6()->isEnabled());
}

void TstPromocaoNoPainel::buttonOpensTheScreen() {
    QVERIFY(abre());
    ModalHelper modais;
    modais.onOpen([this](QWidget* tela) {
        QCOMPARE(tela->objectName(), u"PromocaoPedidos"_s);
        QVERIFY(tela->isModal());
        QCOMPARE(tela->parentWidget(), m_painel.get());
        QTest::keyClick(tela, Qt::Key_Escape);
    });
    QTest::mouseClick(command6(), Qt::LeftButton);
    QCOMPARE(modais.problem(), QString());
    QVERIFY(m_painel->isVisible());
}

void TstPromocaoNoPainel::pricesAreAppliedFromThePanel() {
    QVERIFY(abre());
    ModalHelper modais;
    modais.onOpen([&modais](QWidget* tela) {
        QVERIFY(QTest::qWaitForWindowActive(tela));
        auto* descricao = tela->findChild<TextBox*>(u"Descricao"_s);
        auto* venda = tela->findChild<TextBox*>(u"Venda"_s);
        pasteInto(descricao, u"7"_s);
        QTest::keyClick(descricao, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QTest::keyClicks(venda, u"0.7"_s);
        QTest::mouseClick(tela->findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
        modais.expect(u"Deseja realmente realizar esse processo?"_s, QMessageBox::Yes);
        QTest::mouseClick(tela->findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    });
    QTest::mouseClick(command6(), Qt::LeftButton);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(b->server().query(u"SELECT unitario, totalped FROM orcamento WHERE id="_s + m_id),
             QList<QStringList>({{u"0.70"_s, u"0.70"_s}}));
}

void TstPromocaoNoPainel::panelHandsOverItsPicture() {
    QVERIFY(abre());
    const QPixmap imagem = m_painel->findChild<QLabel*>(u"picSucesso"_s)->pixmap(Qt::ReturnByValue);
    QVERIFY(!imagem.isNull());
    ModalHelper modais;
    modais.onOpen([&imagem](QWidget* tela) {
        QVERIFY(QTest::qWaitForWindowActive(tela));
        auto* descricao = tela->findChild<TextBox*>(u"Descricao"_s);
        pasteInto(descricao, u"7"_s);
        QTest::keyClick(descricao, Qt::Key_Tab);
        auto* todos = tela->findChild<QPushButton*>(u"Command2"_s);
        QTRY_VERIFY(todos->isEnabled()); // the search begins once the focus has moved
        QTest::mouseClick(todos, Qt::LeftButton);
        const auto* grade = tela->findChild<Grid*>(u"Grid1"_s);
        QCOMPARE(grade->text(1, 6), u" "_s);
        const auto marca = grade->model()->index(0, 6).data(Qt::DecorationRole).value<QIcon>();
        QCOMPARE(marca.pixmap(imagem.size()).toImage(), imagem.toImage());
        QTest::keyClick(tela, Qt::Key_Escape);
    });
    QTest::mouseClick(command6(), Qt::LeftButton);
    QCOMPARE(modais.problem(), QString());
}

// Nothing here waits for a window to go: the windows go when the event loops have ended.
void TstPromocaoNoPainel::missingViewerEndsTheProgramFromItsDepths() {
    constexpr int desistiu = 99;
    constexpr int intervaloMs = 20;
    QVERIFY(abre());
    b->mark();
    QStringList vistas;
    std::function<void()> opera = [&] {
        QTimer::singleShot(intervaloMs, m_painel.get(), opera); // also inside the loops that open below
        QWidget* janela = QApplication::activeModalWidget();
        const QString classe = janela ? QString::fromLatin1(janela->metaObject()->className()) : QString();
        if (!janela || !janela->isActiveWindow() || vistas.contains(classe))
            return;
        vistas.append(classe);
        if (auto* caixa = qobject_cast<QMessageBox*>(janela)) {
            vistas.append(caixa->text());
            QTest::mouseClick(caixa->button(QMessageBox::Ok), Qt::LeftButton);
        } else if (auto* descricao = janela->findChild<TextBox*>(u"Descricao"_s)) {
            pasteInto(descricao, u"pão"_s);
            QTest::keyClick(descricao, Qt::Key_Tab);
        } else {
            QTest::keyClick(janela, Qt::Key_F2);
        }
    };
    QTimer::singleShot(0, m_painel.get(), opera);
    QTimer::singleShot(0, m_painel.get(), [this] { QTest::mouseClick(command6(), Qt::LeftButton); });
    QTimer::singleShot(10000, m_painel.get(), [] { QApplication::exit(desistiu); });
    const int resultado = QApplication::exec();
    QCOMPARE(vistas,
             QStringList({u"tarvessa::PromocaoPedidos"_s, u"tarvessa::SelecionaProd"_s, u"QMessageBox"_s,
                          u"Erro em tempo de execução 424:\n\nO objeto é obrigatório: não há visualizador "
                          "de imagem."_s}));
    QCOMPARE(resultado, EXIT_FAILURE);
    // The search and the selection screen's setting; nothing after the error.
    QCOMPARE(b->statements().size(), 2);
}

QTEST_MAIN(TstPromocaoNoPainel)
#include "tst_promocao_no_painel.moc"

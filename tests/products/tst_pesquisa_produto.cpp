#include "base/RuntimeError.h"
#include "core/AcessoDados.h"
#include "products/PesquisaProduto.h"
#include "products/SelecionaProd.h"
#include "support/Bench.h"
#include "support/ModalHelper.h"
#include "ui/Guard.h"
#include "ui/Twips.h"
#include "ui/grid/Grid.h"

#include <QAccessible>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::test;

namespace {

const QString consultaDaConfiguracao = u"SELECT ReservaAtualizaGridEstoque FROM EMPRESA"_s;
const QStringList rotulosDeDetalhe = {u"Label1"_s, u"Label2"_s, u"Label3"_s,
                                      u"Label4"_s, u"Label5"_s, u"Label7"_s};

Grid* gradeDe(QWidget* tela) {
    return tela->findChild<Grid*>(u"Grid"_s);
}

QString rotulo(QWidget* tela, const QString& nome) {
    return tela->findChild<QLabel*>(nome)->text();
}

QString nomeAcessivel(QWidget* controle) {
    QAccessibleInterface* acessivel = QAccessible::queryAccessibleInterface(controle);
    return acessivel ? acessivel->text(QAccessible::Name) : QString();
}

/// Width of a text, character by character, in twips.
double largura(const QFont& fonte, const QString& texto) {
    const QFontMetricsF medidas(fonte);
    double pixels = 0;
    for (const QChar c : texto)
        pixels += medidas.horizontalAdvance(c);
    return pixels * 1440 / QGuiApplication::primaryScreen()->logicalDotsPerInchX();
}

int alturaEsperada(double largura) {
    return largura > 3700 ? static_cast<int>(std::nearbyint((largura / 3700 + 1) * 240)) : 300;
}

/// A viewer that notes what it was asked for.
struct ViewerSpy {
    explicit ViewerSpy(bool hasPicture) {
        SelecionaProd::CarregaImagemProduto = [this, hasPicture](const QString& codigo,
                                                                 const QString& descricao) {
            pedidos.append({codigo, descricao});
            return hasPicture;
        };
    }
    ~ViewerSpy() { SelecionaProd::CarregaImagemProduto = nullptr; }
    ViewerSpy(const ViewerSpy&) = delete;
    ViewerSpy& operator=(const ViewerSpy&) = delete;

    QList<QStringList> pedidos;
};

} // namespace

/// What the search does with what it finds, and the screen in which one of several is picked.
class TstPesquisaProduto : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { b = std::make_unique<Bench>(); }
    void cleanupTestCase() { b.reset(); }
    void init() { b->resetConnected(); }

    void nothingFound();
    void singleMatchIsTakenWithoutAScreen();
    void inactiveProductsAreNeverFound();
    void severalMatchesOpenTheScreen();
    void captionsAndNames();
    void detailsInLettersOfOneWidth();
    void gridFormat();
    void rowOfTheGrid();
    void nullsShowNothing();
    void updateDate_data();
    void updateDate();
    void details();
    void detailsFollowTheCurrentRow();
    void detailsShowMarkupAsText();
    void warehouseStock_data();
    void warehouseStock();
    void descriptionWidthByNumberOfProducts_data();
    void descriptionWidthByNumberOfProducts();
    void preselectedRow_data();
    void preselectedRow();
    void preselectedRowComesToTheTop();
    void longDescriptionsGetHigherRows();
    void heightsFollowTheMainWindowsFont();
    void productLineIsPurple();
    void keysChoose_data();
    void keysChoose();
    void enterOnTheButtonChooses();
    void clickChoosesTheRow();
    void headerClickDoesNothing();
    void escapeGivesUp();
    void closingTheWindowGivesUp();
    void heldDownEnterChoosesNothing();
    void nextSearchStartsFresh();
    void thousandsOfMatches();
    void settingIsReadAtOpening();
    void missingSettingRowIsAnError();
    void imageIsShown();
    void missingImageIsToldAndTheGridGetsTheFocus();
    void missingViewerEndsTheProgram();

  private:
    /// Searches; `acao` operates the selection screen.
    QString pesquisa(const QString& texto, const std::function<void(QWidget*)>& acao,
                     QWidget* form = nullptr);

    std::unique_ptr<Bench> b;
};

QString TstPesquisaProduto::pesquisa(const QString& texto, const std::function<void(QWidget*)>& acao,
                                     QWidget* form) {
    ModalHelper modais;
    modais.onOpen([&acao](QWidget* tela) {
        if (!QTest::qWaitForWindowActive(tela))
            QTest::qFail("the selection screen did not become active", __FILE__, __LINE__);
        acao(tela);
    });
    QString variavel = texto;
    const QString codigo = PesquisaProduto(variavel, form);
    if (!modais.problem().isEmpty())
        QTest::qFail(qPrintable(modais.problem()), __FILE__, __LINE__);
    return codigo;
}

void TstPesquisaProduto::nothingFound() {
    CodigoSelecionado = u"LEFT OVER"_s;
    ModalHelper modais;
    modais.expect(u"Descrição não cadastrada. Verifique!!!"_s, QMessageBox::Ok);
    QString texto = u"ROSCA"_s;
    QCOMPARE(PesquisaProduto(texto, nullptr), QString());
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[0].title, u"Atenção!!!"_s);
    QCOMPARE(modais.boxes()[0].icon, QMessageBox::Warning);
    QVERIFY(!TemRegistro);
    QVERIFY(!rs.isOpen());
    QCOMPARE(CodigoSelecionado, QString());
}

void TstPesquisaProduto::singleMatchIsTakenWithoutAScreen() {
    b->shop().produto(u"0000000000007"_s, u"PÃO FRANCÊS"_s);
    b->shop().produto(u"0000000000008"_s, u"ROSCA"_s);
    QString texto = u"7"_s;
    QCOMPARE(PesquisaProduto(texto, nullptr), u"0000000000007"_s);
    QCOMPARE(CodigoSelecionado, u"0000000000007"_s);
    QVERIFY(TemRegistro);
    QVERIFY(!rs.isOpen());
    QCOMPARE(b->statements(),
             QStringList(
                 u"Select * from Produtos where CodFabr='0000000000007' and ativo='S' order by descricao"_s));
}

void TstPesquisaProduto::inactiveProductsAreNeverFound() {
    b->shop().produto(u"1"_s, u"ROSCA DOCE"_s, u"ativo='N', aplicacao='ROSCA', observacao='ROSCA'"_s);
    b->shop().produto(u"2"_s, u"ROSCA SALGADA"_s, u"ativo=NULL"_s);
    b->shop().produto(u"3"_s, u"ROSCA SIMPLES"_s, u"aplicacao='ROSCA', observacao='ROSCA'"_s);
    for (const QString& digitado : {u"ROSCA"_s, u"ROSCA S"_s, u"=ROSCA"_s, u"*ROSCA"_s}) {
        QString texto = digitado;
        QCOMPARE(PesquisaProduto(texto, nullptr), u"3"_s);
    }
}

void TstPesquisaProduto::severalMatchesOpenTheScreen() {
    b->shop().produtos(3);
    const QString codigo = pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        QCOMPARE(gradeDe(tela)->rows(), 4);
        QCOMPARE(CodigoSelecionado, QString());
        QVERIFY(TemRegistro);
        QVERIFY(tela->isModal());
        QTest::keyClick(gradeDe(tela), Qt::Key_Return);
    });
    QCOMPARE(codigo, u"0000000000001"_s);
    QCOMPARE(CodigoSelecionado, codigo);
    QVERIFY(!rs.isOpen());
    QVERIFY(!rs2.isOpen());
    QCOMPARE(
        b->statements(),
        QStringList({u"Select * from Produtos where (Descricao like '%PRODUTO%' or CodFabr like '%PRODUTO%') "
                     "and ativo='S' order by Descricao"_s,
                     consultaDaConfiguracao}));
}

void TstPesquisaProduto::captionsAndNames() {
    b->shop().produtos(2);
    pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        QCOMPARE(tela->objectName(), u"SelecionaProd"_s);
        QCOMPARE(tela->windowTitle(), u" Seleciona Produtos"_s);
        auto* botao = tela->findChild<QPushButton*>(u"cmbVisualizarImagem"_s);
        QCOMPARE(botao->text(), u"Visualizar Imagem (F2) "_s);
        QCOMPARE(botao->toolTip(), u"Utilize F2 como tecla de atalho"_s);
        QCOMPARE(nomeAcessivel(botao), u"Visualizar Imagem (F2) "_s);
        QVERIFY(!nomeAcessivel(gradeDe(tela)).isEmpty());
        QVERIFY(tela->findChild<QFrame*>(u"Frame1"_s));
        QCOMPARE(rotulo(tela, u"Label7"_s), u"OBSERVAÇÃO    :"_s);
        QCOMPARE(rotulo(tela, u"Label6"_s), u"DISPONÍVEL"_s);
        QVERIFY(tela->findChild<QLabel*>(u"Label6"_s)->isHidden());
        for (const QString& nome : rotulosDeDetalhe)
            QCOMPARE(tela->findChild<QLabel*>(nome)->font().family(), u"Courier New"_s);
        // Everything is reached by Tab from the grid.
        QVERIFY(gradeDe(tela)->hasFocus());
        auto* observacao = tela->findChild<QScrollArea*>(u"rolagem"_s);
        QVERIFY(!nomeAcessivel(observacao).isEmpty());
        QTest::keyClick(gradeDe(tela), Qt::Key_Tab);
        QVERIFY(observacao->hasFocus());
        QTest::keyClick(observacao, Qt::Key_Tab);
        QVERIFY(botao->hasFocus());
        QTest::keyClick(botao, Qt::Key_Tab);
        QVERIFY(gradeDe(tela)->hasFocus());
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::detailsInLettersOfOneWidth() {
    b->shop().produtos(2);
    pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        for (const QString& nome : rotulosDeDetalhe)
            QVERIFY2(QFontInfo(tela->findChild<QLabel*>(nome)->font()).fixedPitch(), qPrintable(nome));
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::gridFormat() {
    for (const QString& nome : NomeTabelaPreco)
        QCOMPARE(nome, QString());
    b->shop().produtos(2);
    pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        const Grid* grade = gradeDe(tela);
        QCOMPARE(grade->columns(), 12);
        const QStringList legendas = {
            u"CÓDIGO"_s, u"DESCRIÇAO"_s, u"ESTOQUE"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}};
        for (int coluna = 0; coluna < 12; ++coluna)
            QCOMPARE(grade->text(0, coluna), legendas[coluna]);
        const QList<int> larguras = {1500, 4100, 950, 950, 950, 950, 950, 0, 0, 0, 0};
        for (int coluna = 0; coluna < larguras.size(); ++coluna)
            QCOMPARE(grade->columnTwips(coluna), larguras[coluna]);
        for (int coluna = 7; coluna <= 10; ++coluna)
            QVERIFY(grade->isColumnHidden(coluna));
        QVERIFY(!grade->isColumnHidden(11));
        for (int coluna = 0; coluna < 7; ++coluna) {
            const auto alinhamento =
                grade->model()->index(0, coluna).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
            QCOMPARE(alinhamento & Qt::AlignHorizontal_Mask, coluna < 2 ? Qt::AlignLeft : Qt::AlignRight);
        }
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::rowOfTheGrid() {
    b->shop().produto(
        u"0000000000007"_s, u"A PÃO D´ÁGUA"_s,
        u"quantidade=1234.5, quantidade2=12, Venda=1234.50, Venda2=0.49, Venda3=-2.5, Venda4=1234567.89, "
        "Ultima_Alteracao='2024-02-29', aplicacao=' MARCA ', observacao='LINHA 1\\nLINHA\\t2', Unidade='UN'"_s);
    b->shop().produto(u"2"_s, u"B PÃO"_s);
    pesquisa(u"PÃO"_s, [](QWidget* tela) {
        QCOMPARE(cells(gradeDe(tela), 1),
                 QStringList({u"0000000000007"_s, u"A PÃO D´ÁGUA"_s, u"1.234,500"_s, u"1.235"_s, u"0"_s,
                              u"-3"_s, u"1.234.568"_s, u"29/02/24"_s, u" MARCA "_s, u"12,000"_s,
                              u"LINHA 1\nLINHA\t2"_s, u"UN"_s}));
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::nullsShowNothing() {
    b->server().execute(
        u"INSERT INTO produtos (codfabr, descricao, aplicacao, observacao, Venda, Venda2, Venda3, Venda4, "
        "ValidadePromo, ValidadePromo2, quantidade, quantidade2, Ultima_Saida, Ultima_Alteracao, "
        "Localizacao, "
        "Unidade, LinhaProd) VALUES ('99A', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
        "NULL, NULL, "
        "NULL, NULL, NULL, NULL), ('99B', 'X', NULL, NULL, 1, 1, 1, 1, NULL, NULL, 1, 1, NULL, NULL, NULL, "
        "NULL, "
        "1)"_s);
    const QString codigo = pesquisa(u"99_"_s, [](QWidget* tela) {
        QStringList vazias(12);
        vazias[0] = u"99A"_s;
        QCOMPARE(cells(gradeDe(tela), 1), vazias);
        QCOMPARE(rotulo(tela, u"Label1"_s), u"MARCA/REFERÊNCIA: "_s);
        QCOMPARE(rotulo(tela, u"Label2"_s), u"ATUALIZAÇÃO     : "_s);
        QCOMPARE(rotulo(tela, u"Label3"_s), u"DEPÓSITO    : "_s);
        QCOMPARE(rotulo(tela, u"Label5"_s), u"UNIDADE     : "_s);
        QCOMPARE(rotulo(tela, u"Label4"_s), QString());
        QVERIFY(!gradeDe(tela)->foreColor(1, 1).isValid());
        QTest::keyClick(gradeDe(tela), Qt::Key_Return);
    });
    QCOMPARE(codigo, u"99A"_s);
}

void TstPesquisaProduto::updateDate_data() {
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("mostrado");
    QTest::newRow("no date") << u"'1901-01-01'"_s << QString();
    QTest::newRow("another day of that year") << u"'1901-12-31'"_s << QString();
    QTest::newRow("the year before") << u"'1900-12-31'"_s << u"31/12/00"_s;
    QTest::newRow("the year after") << u"'1902-01-01'"_s << u"01/01/02"_s;
    QTest::newRow("a date") << u"'2023-01-17'"_s << u"17/01/23"_s;
    QTest::newRow("zero date") << u"'0000-00-00'"_s << QString();
    QTest::newRow("null") << u"NULL"_s << QString();
}

void TstPesquisaProduto::updateDate() {
    QFETCH(QString, valor);
    QFETCH(QString, mostrado);
    b->server().execute(u"SET sql_mode=''"_s);
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"Ultima_Alteracao="_s + valor);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    pesquisa(u"PÃO"_s, [&mostrado](QWidget* tela) {
        QCOMPARE(rotulo(tela, u"Label2"_s), u"ATUALIZAÇÃO     : "_s + mostrado);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::details() {
    b->shop().produto(u"1"_s, u"PÃO A"_s,
                      u"aplicacao='MARCA X', Ultima_Alteracao='2023-01-17', quantidade2=1.5, Unidade='KG', "
                      "observacao='NÃO CONGELAR'"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    pesquisa(u"PÃO"_s, [](QWidget* tela) {
        QCOMPARE(rotulo(tela, u"Label1"_s), u"MARCA/REFERÊNCIA: MARCA X"_s);
        QCOMPARE(rotulo(tela, u"Label2"_s), u"ATUALIZAÇÃO     : 17/01/23"_s);
        QCOMPARE(rotulo(tela, u"Label3"_s), u"DEPÓSITO    : 1,500"_s);
        QCOMPARE(rotulo(tela, u"Label5"_s), u"UNIDADE     : KG"_s);
        QCOMPARE(rotulo(tela, u"Label4"_s), u"NÃO CONGELAR"_s);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::detailsFollowTheCurrentRow() {
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"aplicacao='UM', observacao='PRIMEIRO'"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s, u"aplicacao='DOIS', observacao='SEGUNDO'"_s);
    pesquisa(u"PÃO"_s, [](QWidget* tela) {
        tela->findChild<QLabel*>(u"Label6"_s)->show();
        QTest::keyClick(gradeDe(tela), Qt::Key_Down);
        QCOMPARE(rotulo(tela, u"Label1"_s), u"MARCA/REFERÊNCIA: DOIS"_s);
        QCOMPARE(rotulo(tela, u"Label4"_s), u"SEGUNDO"_s);
        QVERIFY(tela->findChild<QLabel*>(u"Label6"_s)->isHidden());
        QTest::keyClick(gradeDe(tela), Qt::Key_Up);
        QCOMPARE(rotulo(tela, u"Label1"_s), u"MARCA/REFERÊNCIA: UM"_s);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::detailsShowMarkupAsText() {
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"aplicacao='<b>X</b>', observacao='<i>Y</i> & Z'"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    pesquisa(u"PÃO"_s, [](QWidget* tela) {
        for (const QString& nome : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"Label4"_s, u"Label5"_s})
            QCOMPARE(tela->findChild<QLabel*>(nome)->textFormat(), Qt::PlainText);
        QCOMPARE(rotulo(tela, u"Label4"_s), u"<i>Y</i> & Z"_s);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::warehouseStock_data() {
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("mostrado");
    QTest::newRow("whole") << u"12"_s << u"12"_s;
    QTest::newRow("thousands") << u"1234"_s << u"1.234"_s;
    QTest::newRow("decimals stay") << u"1.5"_s << u"1,500"_s;
    QTest::newRow("negative") << u"-3"_s << u"-3"_s;
    QTest::newRow("zero") << u"0"_s << u"0"_s;
}

void TstPesquisaProduto::warehouseStock() {
    QFETCH(QString, valor);
    QFETCH(QString, mostrado);
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"quantidade2="_s + valor);
    b->shop().produto(u"2"_s, u"PÃO B"_s);
    pesquisa(u"PÃO"_s, [&mostrado](QWidget* tela) {
        QCOMPARE(rotulo(tela, u"Label3"_s), u"DEPÓSITO    : "_s + mostrado);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::descriptionWidthByNumberOfProducts_data() {
    QTest::addColumn<int>("quantidade");
    QTest::addColumn<int>("largura");
    QTest::newRow("22") << 22 << 4100;
    QTest::newRow("23") << 23 << 3820;
    QTest::newRow("24") << 24 << 3820;
}

void TstPesquisaProduto::descriptionWidthByNumberOfProducts() {
    QFETCH(int, quantidade);
    QFETCH(int, largura);
    b->shop().produtos(quantidade);
    pesquisa(u"PRODUTO"_s, [quantidade, largura](QWidget* tela) {
        const Grid* grade = gradeDe(tela);
        QCOMPARE(grade->rows(), quantidade + 1);
        QCOMPARE(grade->columnTwips(1), largura);
        QCOMPARE(grade->columnWidth(1), twipsToPixels(grade, largura));
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::preselectedRow_data() {
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<int>("atual");
    QTest::newRow("the second starts with the word") << u"ROSCA"_s << 2;
    QTest::newRow("the word stands inside only") << u"OSCA"_s << 1;
    QTest::newRow("letter case counts") << u"rosca"_s << 1;
    QTest::newRow("several words preselect nothing") << u"ROSCA DOCE"_s << 1;
    QTest::newRow("a prefix is part of the text") << u"=FAB"_s << 1;
}

void TstPesquisaProduto::preselectedRow() {
    QFETCH(QString, digitado);
    QFETCH(int, atual);
    b->shop().produto(u"1"_s, u"MASSA DE ROSCA DOCE"_s, u"aplicacao='FAB'"_s);
    b->shop().produto(u"2"_s, u"ROSCA DOCE"_s, u"aplicacao='FAB'"_s);
    b->shop().produto(u"3"_s, u"ROSCA DOCE FINA"_s, u"aplicacao='FAB'"_s);
    const QString codigo = pesquisa(digitado, [atual](QWidget* tela) {
        QCOMPARE(gradeDe(tela)->currentRow(), atual);
        QCOMPARE(gradeDe(tela)->currentColumn(), 0);
        QTest::keyClick(gradeDe(tela), Qt::Key_Return);
    });
    QCOMPARE(codigo, QString::number(atual));
}

void TstPesquisaProduto::preselectedRowComesToTheTop() {
    b->server().execute(u"INSERT INTO produtos (codfabr, descricao) SELECT seq, CONCAT('A ROSCA ', "
                        "LPAD(seq, 3, '0')) FROM seq_1_to_60"_s);
    b->server().execute(u"INSERT INTO produtos (codfabr, descricao) SELECT 100 + seq, CONCAT('ROSCA ', "
                        "LPAD(seq, 3, '0')) FROM seq_1_to_60"_s);
    pesquisa(u"ROSCA"_s, [](QWidget* tela) {
        QCOMPARE(gradeDe(tela)->currentRow(), 61);
        QCOMPARE(gradeDe(tela)->topRow(), 61);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::longDescriptionsGetHigherRows() {
    const QList<qsizetype> tamanhos = {10, 60, 110};
    for (qsizetype i = 0; i < tamanhos.size(); ++i)
        b->shop().produto(QString::number(i),
                          QString::number(i) + u" PALAVRA"_s.repeated(20).first(tamanhos[i]));
    pesquisa(u"PALAVRA"_s, [](QWidget* tela) {
        Grid* grade = gradeDe(tela);
        for (int linha = 1; linha <= 3; ++linha)
            QCOMPARE(
                grade->rowHeight(linha - 1),
                twipsToPixels(grade, alturaEsperada(largura(QApplication::font(), grade->text(linha, 1)))));
        QVERIFY(grade->rowHeight(0) < grade->rowHeight(1));
        QVERIFY(grade->rowHeight(1) < grade->rowHeight(2));
        // What the row is high enough for is all there: the text wraps within the column without being cut.
        for (int linha = 1; linha <= 3; ++linha) {
            const QRect texto = grade->fontMetrics().boundingRect(
                QRect(0, 0, grade->columnWidth(1) - 6, 1000), Qt::TextWordWrap, grade->text(linha, 1));
            QVERIFY2(texto.height() <= grade->rowHeight(linha - 1), qPrintable(grade->text(linha, 1)));
        }
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::heightsFollowTheMainWindowsFont() {
    QWidget principal;
    QFont enorme = principal.font();
    enorme.setPointSize(40);
    principal.setFont(enorme);
    QDialog form(&principal);
    b->shop().produto(u"1"_s, u"PÃO DE FORMA A"_s);
    b->shop().produto(u"2"_s, u"PÃO DE FORMA B"_s);
    const auto confere = [&enorme](QWidget* tela) {
        const double larga = largura(enorme, u"PÃO DE FORMA A"_s);
        QVERIFY(larga > 3700);
        QCOMPARE(gradeDe(tela)->rowHeight(0), twipsToPixels(tela, alturaEsperada(larga)));
        QTest::keyClick(tela, Qt::Key_Escape);
    };
    // The searching screen has a font of its own.
    QVERIFY(form.font() != enorme);
    pesquisa(u"PÃO"_s, confere, &form);
}

void TstPesquisaProduto::productLineIsPurple() {
    b->shop().produto(u"1"_s, u"PÃO A"_s, u"LinhaProd=0"_s);
    b->shop().produto(u"2"_s, u"PÃO B"_s, u"LinhaProd=1"_s);
    b->shop().produto(u"3"_s, u"PÃO C"_s, u"LinhaProd=-1"_s);
    b->shop().produto(u"4"_s, u"PÃO D"_s, u"LinhaProd=37"_s);
    pesquisa(u"PÃO"_s, [](QWidget* tela) {
        const Grid* grade = gradeDe(tela);
        const QColor roxo(128, 0, 128);
        QVERIFY(!grade->foreColor(1, 1).isValid());
        QCOMPARE(grade->foreColor(2, 1), roxo);
        QVERIFY(!grade->foreColor(3, 1).isValid());
        QCOMPARE(grade->foreColor(4, 1), roxo);
        QVERIFY(!grade->foreColor(2, 0).isValid());
        QVERIFY(!grade->foreColor(2, 2).isValid());
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::keysChoose_data() {
    QTest::addColumn<QList<Qt::Key>>("teclas");
    QTest::addColumn<QString>("codigo");
    QTest::newRow("Enter") << QList<Qt::Key>{Qt::Key_Return} << u"0000000000001"_s;
    QTest::newRow("Enter of the number pad") << QList<Qt::Key>{Qt::Key_Enter} << u"0000000000001"_s;
    QTest::newRow("Space") << QList<Qt::Key>{Qt::Key_Space} << u"0000000000001"_s;
    QTest::newRow("down twice") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}
                                << u"0000000000003"_s;
    QTest::newRow("another column") << QList<Qt::Key>{Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}
                                    << u"0000000000002"_s;
}

void TstPesquisaProduto::keysChoose() {
    QFETCH(QList<Qt::Key>, teclas);
    QFETCH(QString, codigo);
    b->shop().produtos(40);
    QCOMPARE(pesquisa(u"PRODUTO"_s,
                      [&teclas](QWidget* tela) {
                          for (const Qt::Key tecla : teclas)
                              QTest::keyClick(gradeDe(tela), tecla);
                      }),
             codigo);
}

void TstPesquisaProduto::enterOnTheButtonChooses() {
    b->shop().produtos(3);
    QCOMPARE(pesquisa(u"PRODUTO"_s,
                      [](QWidget* tela) {
                          auto* botao = tela->findChild<QPushButton*>(u"cmbVisualizarImagem"_s);
                          botao->setFocus();
                          QTest::keyClick(botao, Qt::Key_Return);
                      }),
             u"0000000000001"_s);
}

void TstPesquisaProduto::clickChoosesTheRow() {
    b->shop().produtos(40);
    QCOMPARE(pesquisa(u"PRODUTO"_s, [](QWidget* tela) { Hands(tela).click(gradeDe(tela), 3, 1); }),
             u"0000000000003"_s);
    QCOMPARE(pesquisa(u"PRODUTO"_s, [](QWidget* tela) { Hands(tela).click(gradeDe(tela), 40, 0); }),
             u"0000000000040"_s);
}

void TstPesquisaProduto::headerClickDoesNothing() {
    b->shop().produtos(3);
    QCOMPARE(pesquisa(u"PRODUTO"_s,
                      [](QWidget* tela) {
                          Hands(tela).click(gradeDe(tela), 0, 1);
                          QVERIFY(tela->isVisible());
                          QTest::keyClick(tela, Qt::Key_Escape);
                      }),
             QString());
}

void TstPesquisaProduto::escapeGivesUp() {
    b->shop().produtos(3);
    for (const QString& onde : {u"Grid"_s, u"cmbVisualizarImagem"_s}) {
        QCOMPARE(pesquisa(u"PRODUTO"_s,
                          [&onde](QWidget* tela) {
                              auto* controle = tela->findChild<QWidget*>(onde);
                              controle->setFocus();
                              QTest::keyClick(controle, Qt::Key_Escape);
                          }),
                 QString());
        QCOMPARE(CodigoSelecionado, QString());
    }
}

void TstPesquisaProduto::closingTheWindowGivesUp() {
    b->shop().produtos(3);
    QCOMPARE(pesquisa(u"PRODUTO"_s, [](QWidget* tela) { tela->close(); }), QString());
    QCOMPARE(CodigoSelecionado, QString());
}

// The operator still holds the Enter that began the search.
void TstPesquisaProduto::heldDownEnterChoosesNothing() {
    b->shop().produtos(3);
    QCOMPARE(pesquisa(u"PRODUTO"_s,
                      [](QWidget* tela) {
                          for (int i = 0; i < 3; ++i)
                              QTest::simulateEvent(gradeDe(tela), true, Qt::Key_Return, Qt::NoModifier,
                                                   u"\r"_s, true);
                          QVERIFY(tela->isVisible());
                          QTest::keyClick(tela, Qt::Key_Escape);
                      }),
             QString());
}

void TstPesquisaProduto::nextSearchStartsFresh() {
    b->shop().produtos(30);
    pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        QTest::keyClick(gradeDe(tela), Qt::Key_Down);
        QTest::keyClick(gradeDe(tela), Qt::Key_Return);
    });
    pesquisa(u"PRODUTO 00"_s, [](QWidget* tela) {
        QCOMPARE(gradeDe(tela)->rows(), 10);
        QCOMPARE(gradeDe(tela)->currentRow(), 1);
        QCOMPARE(gradeDe(tela)->columnTwips(1), 4100);
        QTest::keyClick(tela, Qt::Key_Escape);
    });
}

void TstPesquisaProduto::thousandsOfMatches() {
    b->shop().produtos(5000);
    const QString codigo = pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        Grid* grade = gradeDe(tela);
        QCOMPARE(grade->rows(), 5001);
        QTest::keyClick(grade, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grade->currentRow(), 5000);
        QTest::keyClick(grade, Qt::Key_Return);
    });
    // Sorted as text: "PRODUTO 999" comes after "PRODUTO 5000".
    QCOMPARE(codigo, u"0000000000999"_s);
}

void TstPesquisaProduto::settingIsReadAtOpening() {
    QVERIFY(!SelecionaProd(nullptr).property("ReservaAtualizaGridEstoque").toBool());
    b->server().execute(u"UPDATE empresa SET ReservaAtualizaGridEstoque='SIM'"_s);
    b->statements();
    QVERIFY(SelecionaProd(nullptr).property("ReservaAtualizaGridEstoque").toBool());
    QCOMPARE(b->statements(), QStringList(consultaDaConfiguracao));
    b->server().execute(u"UPDATE empresa SET ReservaAtualizaGridEstoque='sim'"_s);
    QVERIFY(!SelecionaProd(nullptr).property("ReservaAtualizaGridEstoque").toBool());
}

void TstPesquisaProduto::missingSettingRowIsAnError() {
    b->shop().produtos(2);
    b->server().execute(u"DELETE FROM empresa"_s);
    QString texto = u"PRODUTO"_s;
    try {
        PesquisaProduto(texto, nullptr);
        QFAIL("no error was raised");
    } catch (const RuntimeError& erro) {
        QCOMPARE(erro.number(), static_cast<int>(ErrorNumber::NoCurrentRecord));
    }
    // The next search is not disturbed.
    b->server().execute(u"INSERT INTO empresa SET id=1"_s);
    QCOMPARE(pesquisa(u"PRODUTO"_s, [](QWidget* tela) { QTest::keyClick(tela, Qt::Key_Return); }),
             u"0000000000001"_s);
}

void TstPesquisaProduto::imageIsShown() {
    ViewerSpy visualizador(true);
    b->shop().produtos(3);
    const QString codigo = pesquisa(u"PRODUTO"_s, [](QWidget* tela) {
        QTest::keyClick(gradeDe(tela), Qt::Key_F2);
        QTest::keyClick(gradeDe(tela), Qt::Key_Down);
        QTest::mouseClick(tela->findChild<QPushButton*>(u"cmbVisualizarImagem"_s), Qt::LeftButton);
        QTest::keyClick(gradeDe(tela), Qt::Key_Return);
    });
    QCOMPARE(visualizador.pedidos, QList<QStringList>({{u"0000000000001"_s, u"PRODUTO 001"_s},
                                                       {u"0000000000002"_s, u"PRODUTO 002"_s}}));
    QCOMPARE(codigo, u"0000000000002"_s);
}

void TstPesquisaProduto::missingImageIsToldAndTheGridGetsTheFocus() {
    ViewerSpy visualizador(false);
    b->shop().produtos(3);
    ModalHelper modais;
    modais.onOpen([&modais](QWidget* tela) {
        modais.expect(u"O produto selecionado, não possuí imagem"_s, QMessageBox::Ok);
        QTest::mouseClick(tela->findChild<QPushButton*>(u"cmbVisualizarImagem"_s), Qt::LeftButton);
        QCOMPARE(tela->focusWidget(), gradeDe(tela));
        QTest::keyClick(tela, Qt::Key_Escape);
    });
    QString texto = u"PRODUTO"_s;
    QCOMPARE(PesquisaProduto(texto, nullptr), QString());
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[0].title, u"Atenção!"_s);
    QCOMPARE(modais.boxes()[0].icon, QMessageBox::Warning);
    QCOMPARE(visualizador.pedidos.size(), 1);
}

void TstPesquisaProduto::missingViewerEndsTheProgram() {
    constexpr int desistiu = 99;
    b->shop().produtos(3);
    ModalHelper modais;
    modais.onOpen([](QWidget* tela) { QTest::keyClick(gradeDe(tela), Qt::Key_F2); });
    modais.expectContaining(u"Erro em tempo de execução 424"_s, QMessageBox::Ok);
    QWidget form;
    bool continuou = false;
    QTimer::singleShot(0, &form, [&] {
        guarded(&form, [&] {
            QString texto = u"PRODUTO"_s;
            PesquisaProduto(texto, &form);
            continuou = true;
        });
    });
    QTimer::singleShot(10000, &form, [] { QApplication::exit(desistiu); });
    QCOMPARE(QApplication::exec(), EXIT_FAILURE);
    QVERIFY(!continuou);
    QCOMPARE(modais.problem(), QString());
    QCOMPARE(modais.boxes()[0].icon, QMessageBox::Critical);
    QVERIFY(modais.boxes()[0].informative.contains(u"O programa será encerrado."_s));
}

QTEST_MAIN(TstPesquisaProduto)
#include "tst_pesquisa_produto.moc"

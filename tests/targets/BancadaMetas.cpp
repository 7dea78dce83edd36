#include "targets/BancadaMetas.h"

#include "base/Datas.h"
#include "core/AcessoDados.h"
#include "core/Pastas.h"
#include "core/PrintLayout.h"
#include "targets/MetasQuadro.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::teste {

namespace {

constexpr int esperaDaJanelaMs = 5000;
// A button pressed by its shortcut clicks a tenth of a second later.
constexpr int esperaDoAtalhoMs = 200;

QString literal(const Valor& valor) {
    if (!valor)
        return u"NULL"_s;
    QString texto = *valor;
    return u'\'' + texto.replace(u'\\', u"\\\\"_s).replace(u'\'', u"''"_s) + u'\'';
}

} // namespace

BancadaMetas::BancadaMetas() {
    FixaRelogio(QDateTime(QDate(2024, 3, 15), QTime(14, 7, 9)));
    QDir().mkpath(m_pasta.filePath(u"rpt"_s));
    QFile::copy(QStringLiteral(TARVESSA_SOURCE_DIR "/rpt/Metas.RPT"), m_pasta.filePath(u"rpt/Metas.RPT"_s));
    FixaPastaDoPrograma(m_pasta.path());
}

BancadaMetas::~BancadaMetas() {
    fecha();
    CRW = nullptr;
    FixaPastaDoPrograma({});
    FixaRelogio({});
}

void BancadaMetas::arruma() {
    fecha();
    m_servidor.usaSocket(m_servidor.socket());
    m_servidor.recria();
    m_relatorio = std::make_unique<ReportControl>(nullptr);
    CRW = m_relatorio.get();
}

void BancadaMetas::vendedor(int codigo, const Valor& nome, const QString& ativo) {
    m_servidor.executa(u"INSERT INTO vendedores (codigovend, vendedor, Ativo) VALUES (%1, %2, %3)"_s.arg(
        QString::number(codigo), literal(nome), literal(ativo)));
}

void BancadaMetas::produto(const QString& codigo, const Valor& descricao) {
    m_servidor.executa(u"INSERT INTO produtos (codfabr, descricao, ativo) VALUES (%1, %2, 'S')"_s.arg(
        literal(codigo), literal(descricao)));
}

void BancadaMetas::meta(int vendedor, const QString& produto, const Valor& quantidade) {
    m_servidor.executa(
        u"INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) VALUES (%1, %2, %3)"_s.arg(
            QString::number(vendedor), literal(produto), literal(quantidade)));
}

void BancadaMetas::venda(const Venda& venda) {
    ++m_nota;
    m_servidor.executa(
        u"INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor) VALUES (%1, '1', %2)"_s.arg(m_nota).arg(
            venda.vendedor));
    m_servidor.executa(u"INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, codigo, "
                       u"descricao, quantunit, "
                       "totalvenda) VALUES (%1, '1', %2, %3, %4, %5, 'X', %6, %7)"_s.arg(
                           QString::number(m_nota), literal(venda.emissao), literal(venda.entrSai),
                           literal(venda.cancelado), literal(venda.produto), literal(venda.quantidade),
                           literal(venda.total)));
}

void BancadaMetas::devolucao(const Devolucao& devolucao) {
    m_servidor.executa(
        u"INSERT INTO Orcamento_Troca (codigo, Vendedor, quantidade, pcfabrica, situacaoorc, databaixa) "
        "VALUES (%1, %2, %3, 1, %4, %5)"_s.arg(
            literal(devolucao.produto), QString::number(devolucao.vendedor), literal(devolucao.quantidade),
            literal(devolucao.situacao), literal(devolucao.baixa)));
}

void BancadaMetas::basico() {
    vendedor(1, u"ANA"_s);
    vendedor(2, u"BRUNO"_s);
    produto(u"P1"_s, u"PAO FRANCES"_s);
    produto(u"P2"_s, u"PAO DOCE"_s);
    produto(u"P3"_s, u"LEITE"_s);
    m_servidor.executa(u"INSERT INTO empresa (ReservaAtualizaGridEstoque) VALUES ('NAO')"_s);
}

QList<QStringList> BancadaMetas::metas() {
    return m_servidor.consulta(
        u"SELECT CodVendedor, CodigoProduto, Quantidade, Vendido, TotalVendas, QtdDevolucao "
        "FROM metavendedoritem ORDER BY CodVendedor, CodigoProduto"_s);
}

QList<QStringList> BancadaMetas::estagio() {
    return m_servidor.consulta(
        u"SELECT codigo1, codigo2, texto1, texto2, texto3, texto4, texto5, texto6, texto7 FROM relat2 "
        "ORDER BY id"_s);
}

void BancadaMetas::abre() {
    fecha();
    QVERIFY(IniciaBanco());
    m_tela = std::make_unique<MetasQuadro>();
    m_tela->Form_Load();
    // The screen of a test may be narrower than any real one, and the form opens within it.
    m_tela->resize(m_tela->size().expandedTo(QSize(1024, 640)));
    m_tela->show();
    m_tela->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_tela.get(), esperaDaJanelaMs));
}

void BancadaMetas::fecha() {
    m_tela.reset();
    EncerraBanco();
}

QWidget* BancadaMetas::janela() const {
    return m_tela.get();
}

QLineEdit* BancadaMetas::caixa(const QString& nome) const {
    return controle<QLineEdit>(nome);
}

QComboBox* BancadaMetas::lista(const QString& nome) const {
    return controle<QComboBox>(nome);
}

Grid* BancadaMetas::grade(const QString& nome) const {
    return controle<Grid>(nome);
}

QString BancadaMetas::tag(const QString& nome) const {
    return caixa(nome)->property("tag").toString();
}

QStringList BancadaMetas::linha(const QString& grade, int linha) const {
    const Grid* g = this->grade(grade);
    QStringList celulas;
    for (int coluna = 0; coluna < g->columns(); ++coluna)
        celulas.append(g->text(linha, coluna));
    return celulas;
}

QList<QStringList> BancadaMetas::linhas(const QString& grade) const {
    QList<QStringList> todas;
    for (int i = 1; i < this->grade(grade)->rows(); ++i)
        todas.append(linha(grade, i));
    return todas;
}

int BancadaMetas::linhaDe(const QString& grade, const QString& codigo) const {
    for (int i = 1; i < this->grade(grade)->rows(); ++i)
        if (this->grade(grade)->text(i, 0) == codigo)
            return i;
    return 0;
}

void BancadaMetas::tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores) const {
    QWidget* alvo = QApplication::focusWidget();
    QTest::keyClick(alvo ? alvo : janela(), tecla, modificadores);
    if (modificadores.testFlag(Qt::AltModifier))
        QTest::qWait(esperaDoAtalhoMs);
    processa();
}

void BancadaMetas::digita(const QString& texto) const {
    QTest::keyClicks(QApplication::focusWidget(), texto);
    processa();
}

void BancadaMetas::cola(const QString& texto) const {
    QApplication::clipboard()->setText(texto);
    tecla(Qt::Key_A, Qt::ControlModifier);
    tecla(Qt::Key_V, Qt::ControlModifier);
}

void BancadaMetas::escolhe(const QString& nome, const QString& inicio) const {
    QComboBox* alvo = lista(nome);
    const int procurado = alvo->findText(inicio, Qt::MatchStartsWith);
    QVERIFY(procurado >= 0);
    alvo->setFocus();
    for (int passos = 0; alvo->currentIndex() != procurado && passos <= alvo->count(); ++passos)
        tecla(alvo->currentIndex() < procurado ? Qt::Key_Down : Qt::Key_Up);
    QCOMPARE(alvo->currentIndex(), procurado);
}

void BancadaMetas::entraProduto(const QString& nome, const QString& texto) const {
    caixa(nome)->setFocus();
    tecla(Qt::Key_A, Qt::ControlModifier);
    tecla(Qt::Key_Delete);
    digita(texto);
    tecla(Qt::Key_Return);
}

void BancadaMetas::clica(const QString& nome, int linha, int coluna) const {
    Grid* g = grade(nome);
    const QModelIndex celula = g->model()->index(linha - 1, coluna);
    g->scrollTo(celula);
    QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(celula).center());
    processa();
}

void BancadaMetas::aperta(const QString& nome) const {
    auto* botao = controle<QPushButton>(nome);
    QVERIFY2(botao->isEnabled(), qPrintable(nome));
    QTest::mousePress(botao, Qt::LeftButton);
    processa();
    QTest::mouseRelease(botao, Qt::LeftButton);
    processa();
}

void BancadaMetas::vaiParaAba(int aba) const {
    tecla(aba == 0 ? Qt::Key_1 : Qt::Key_2, Qt::AltModifier);
}

void BancadaMetas::periodo(const QString& inicio, const QString& fim) const {
    for (const auto& [nome, texto] : {std::pair(u"DataIni"_s, inicio), std::pair(u"DataFin"_s, fim)}) {
        caixa(nome)->setFocus();
        tecla(Qt::Key_A, Qt::ControlModifier);
        tecla(Qt::Key_Delete);
        caixa(nome)->setCursorPosition(0);
        digita(QString(texto).remove(u'/'));
    }
}

QString BancadaMetas::foco() {
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
}

void BancadaMetas::processa() const {
    // A posted key may post what follows from it.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    if (m_tela && m_tela->isVisible() && !QApplication::activeWindow()) {
        m_tela->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_tela.get(), esperaDaJanelaMs));
    }
}

} // namespace tarvessa::teste

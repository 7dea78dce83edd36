#include "closing/Bancada.h"

#include "base/Datas.h"
#include "closing/Colunas.h"
#include "closing/PainelFechamento.h"
#include "core/AcessoDados.h"
#include "core/Pastas.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::teste {

namespace mensagens {
const QString nadaSelecionado = u"Não há Pré-Venda selecionada. Verifique!!!"_s;
const QString lembrete = u"Lembrando que os pedidos de cliente com CPF serão cancelados."_s;
const QString comErros =
    u"Processo encerrado com alguns pedidos com erro de processamento. Na sequência será "
    "aberto um arquivo com as mensagens de erros."_s;
const QString sucesso = u"Processamento efetuado com sucesso."_s;
const QString semRegistro = u"Não há registro de venda. Verifique!!!"_s;
const QString semConexao = u"Não foi possível conectar ao banco de dados. Verifique!!!"_s;
const QString erroDeExecucao = u"Erro em tempo de execução"_s;
const QString inicieNovamente = u"feche o programa e inicie-o novamente"_s;
} // namespace mensagens

namespace {

constexpr int esperaDaJanelaMs = 5000;

QWidget* visualizador() {
    for (QWidget* janela : QApplication::topLevelWidgets())
        if (janela->objectName() == u"TextViewer" && janela->isVisible())
            return janela;
    return nullptr;
}

/// Scrolls the cell into view.
QPoint centroDaCelula(Grid* grade, int linha, int coluna) {
    const QModelIndex celula = grade->model()->index(linha - 1, coluna);
    grade->scrollTo(celula);
    return grade->visualRect(celula).center();
}

} // namespace

Bancada::Bancada() : m_cenario(m_servidor), m_caminhoAnterior(qgetenv("PATH")) {
    qputenv("PATH", QFile::encodeName(pastaDeComandos()));
    FixaRelogio(QDateTime(QDate(2024, 3, 15), QTime(14, 7, 9)));
    FixaPastaDoPrograma(pastaDoPrograma());
    QDir().mkpath(pastaDoPrograma());
    QDir().mkpath(pastaDeComandos());
}

Bancada::~Bancada() {
    fecha();
    fechaVisualizadores();
    FixaPastaDoPrograma({});
    FixaRelogio({});
    qputenv("PATH", m_caminhoAnterior);
}

void Bancada::arruma() {
    fecha();
    fechaVisualizadores();
    m_servidor.usaCharset({});
    m_servidor.usaSocket(m_servidor.socket());
    m_cenario.esvazia();
    for (const QString& pasta : {pastaDoPrograma(), pastaDeComandos()}) {
        QDir(pasta).removeRecursively();
        QDir().mkpath(pasta);
    }
}

bool Bancada::abre() {
    fecha();
    m_painel = std::make_unique<PainelFechamento>();
    if (!m_painel->Form_Load())
        return false;
    m_painel->show();
    m_painel->activateWindow();
    if (!QTest::qWaitForWindowActive(m_painel.get(), esperaDaJanelaMs))
        qWarning("the panel's window did not become active");
    return true;
}

void Bancada::fecha() {
    m_painel.reset();
    EncerraBanco();
}

Grid* Bancada::grade() const {
    return m_painel->findChild<Grid*>(u"Grid1"_s);
}

QPushButton* Bancada::botao(const QString& nome) const {
    return m_painel->findChild<QPushButton*>(nome);
}

QComboBox* Bancada::formas() const {
    return m_painel->findChild<QComboBox*>(u"Combo1"_s);
}

QString Bancada::total() const {
    return m_painel->findChild<QLineEdit*>(u"Text1"_s)->text();
}

QStringList Bancada::linha(int linha) const {
    QStringList celulas;
    for (int coluna = 0; coluna < grade()->columns(); ++coluna)
        celulas.append(grade()->text(linha, coluna));
    return celulas;
}

QStringList Bancada::coluna(int coluna) const {
    QStringList celulas;
    for (int linha = 1; linha < grade()->rows(); ++linha)
        celulas.append(grade()->text(linha, coluna));
    return celulas;
}

void Bancada::clica(int linha, int coluna) const {
    if (linha > 0) {
        QTest::mouseClick(grade()->viewport(), Qt::LeftButton, {}, centroDaCelula(grade(), linha, coluna));
        return;
    }
    centroDaCelula(grade(), 1, coluna);
    const QHeaderView* cabecalho = grade()->horizontalHeader();
    const QPoint centro(cabecalho->sectionViewportPosition(coluna) + cabecalho->sectionSize(coluna) / 2,
                        cabecalho->height() / 2);
    QTest::mouseClick(cabecalho->viewport(), Qt::LeftButton, {}, centro);
}

void Bancada::duploClique(int linha, int coluna) const {
    const QPoint centro = centroDaCelula(grade(), linha, coluna);
    QTest::mouseClick(grade()->viewport(), Qt::LeftButton, {}, centro);
    QTest::mouseDClick(grade()->viewport(), Qt::LeftButton, {}, centro);
}

void Bancada::aperta(const QString& nome) const {
    QPushButton* alvo = botao(nome);
    if (!alvo->isEnabled())
        QFAIL(qPrintable(nome + u" is disabled"_s));
    QTest::mouseClick(alvo, Qt::LeftButton);
}

QByteArray Bancada::log() const {
    QFile arquivo(caminhoDoLog());
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

QByteArray Bancada::logCom(const QStringList& linhas) {
    QByteArray bytes = "LOG DE FECHAMENTO:\r\n------------------\r\n\r\n";
    for (const QString& linha : linhas)
        bytes += linha.toUtf8() + "\r\n";
    return bytes;
}

QString Bancada::textoDoVisualizador() {
    const QWidget* janela = visualizador();
    return janela ? janela->findChild<QPlainTextEdit*>()->toPlainText() : QString();
}

void Bancada::fechaVisualizadores() {
    while (QWidget* janela = visualizador()) {
        janela->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace tarvessa::teste

#include "closing/Balcao.h"

#include "core/AcessoDados.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::teste {

namespace {

constexpr int larguraDaJanela = 1060;
constexpr int alturaDaJanela = 660;

QString aspas(const QString& texto) {
    QString dobrado = texto;
    return u'\'' + dobrado.replace(u'\'', "''"_L1) + u'\'';
}

} // namespace

Balcao::Balcao() = default;

Balcao::~Balcao() {
    fecha();
}

void Balcao::zera() {
    // Much faster than making the tables anew.
    for (const char* tabela : {"orcamento", "orcamento_controle", "observacao", "clientes", "produtos",
                               "Finalizadoras", "empresa", "areceber", "caixa", "logestoque"})
        servidor.executa(u"DELETE FROM "_s + QLatin1StringView(tabela));
    servidor.executa(
        u"INSERT INTO empresa (contadorPV, ultpedido, ContaCTB1, PAF_ECF) VALUES (100, 500, '1.01', 'NAO');"
        "INSERT INTO Finalizadoras (ID, Descricao, avista) VALUES (1,'DINHEIRO','S'), (2,'CARTÃO','N'), "
        "(3,'BOLETO','N'), (4,'PIX','S'), (5,'CHEQUE PRÉ','N')"_s);
}

void Balcao::cliente(const QString& codigo, const QString& nome, int prazo, const QString& forma,
                     const QString& tabela) {
    servidor.executa(u"INSERT INTO clientes (codigo, nome, fantasia, cidade, prazo, formapg, colunapreco, "
                     "tabelas_preco, CNPJ_CPF) VALUES (%1, %2, 'FANTASIA', 'CAMPINAS', %3, %4, %5, '9999', "
                     "'11222333000181')"_s.arg(aspas(codigo), aspas(nome), QString::number(prazo),
                                               aspas(forma), aspas(tabela)));
}

void Balcao::produto(const QString& codigo, const QStringList& precos) {
    servidor.executa(
        u"INSERT INTO produtos (codfabr, descricao, Venda, Venda2, Venda3, Venda4) VALUES (%1, %2, %3)"_s.arg(
            aspas(codigo), aspas(u"PRODUTO "_s + codigo), precos.join(u',')));
}

void Balcao::documento(const QString& tipo, int numero, const QString& cliente, const QString& vendedor,
                       const QList<Item>& itens) {
    QStringList linhas;
    for (const Item& item : itens)
        linhas += u"(%1, %2, 'A', %3, %4, 7, CURDATE(), %5, %6, %7, ROUND(%6*%7, 2))"_s.arg(
            QString::number(numero), aspas(tipo), aspas(cliente), aspas(vendedor), aspas(item.codigo),
            item.quantidade, item.unitario);
    servidor.executa(
        u"INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, Vendedor, "
        "dataabertura, codigo, quantidade, unitario, totalped) VALUES "_s +
        linhas.join(u','));
}

void Balcao::abre() {
    m_painel = std::make_unique<PainelFechamento>();
    QVERIFY(m_painel->Form_Load());
    // Wide enough for all columns, whatever the screen.
    m_painel->resize(larguraDaJanela, alturaDaJanela);
    m_painel->show();
    m_painel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_painel.get()));
    if (!m_log)
        m_log.emplace(servidor);
    marca();
}

void Balcao::fecha() {
    m_painel.reset();
    EncerraBanco();
}

QPushButton* Balcao::botao(const char* nome) const {
    return m_painel->findChild<QPushButton*>(QLatin1StringView(nome));
}

int Balcao::linhaDe(int numero) const {
    for (int linha = 1; linha < grade()->rows(); ++linha)
        if (celula(linha, 0) == QString::number(numero))
            return linha;
    return 0;
}

QRect Balcao::lugar(int linha, int coluna) const {
    QRect cell = grade()->cellRect(linha, coluna);
    cell.moveTopLeft(grade()->mapTo(editor()->parentWidget(), cell.topLeft()));
    return cell;
}

// Through the window, so that each press and release goes to whatever lies under the pointer by then.

void Balcao::clica(int linha, int coluna) {
    QTest::mouseClick(m_painel->windowHandle(), Qt::LeftButton, Qt::NoModifier, naJanela(linha, coluna));
}

void Balcao::duploClique(int linha, int coluna) {
    QTest::mouseDClick(m_painel->windowHandle(), Qt::LeftButton, Qt::NoModifier, naJanela(linha, coluna));
}

void Balcao::clica(const char* nomeDoBotao) {
    const QPushButton* alvo = botao(nomeDoBotao);
    QTest::mouseClick(m_painel->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      alvo->mapTo(m_painel.get(), alvo->rect().center()));
}

QPoint Balcao::naJanela(int linha, int coluna) const {
    return grade()->mapTo(m_painel.get(), grade()->cellRect(linha, coluna).center());
}

void Balcao::tecla(Qt::Key tecla, Qt::KeyboardModifiers modificador) {
    QTest::keyClick(QApplication::focusWidget(), tecla, modificador);
    // Enter is passed on as a Tab through the event queue.
    QCoreApplication::processEvents();
}

void Balcao::digita(const QString& texto) {
    for (const QChar c : texto)
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c),
                            Qt::NoModifier);
}

QString Balcao::valor(const QString& sql) {
    const QList<QStringList> resposta = linhas(sql);
    return resposta.isEmpty() ? u"(nenhuma linha)"_s : resposta[0][0];
}

} // namespace tarvessa::teste

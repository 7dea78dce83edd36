#include "products/Balcao.h"

#include "core/AcessoDados.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarvessa::teste {

Balcao::Balcao() : m_log(m_servidor) {
    if (!IniciaBanco())
        qFatal("the private server cannot be reached");
    arruma();
}

Balcao::~Balcao() {
    EncerraBanco();
}

void Balcao::arruma() {
    m_servidor.executa(
        u"DELETE FROM produtos; DELETE FROM orcamento; DELETE FROM clientes; DELETE FROM empresa; "
        "INSERT INTO empresa SET id=1"_s);
    m_log.marca();
}

void Balcao::reconecta() {
    EncerraBanco();
    if (!IniciaBanco())
        qFatal("the private server cannot be reached");
    m_log.marca();
}

void Balcao::produto(const QString& codigo, const QString& descricao, const QString& outros) {
    m_servidor.executa(u"INSERT INTO produtos SET codfabr='"_s + codigo + u"', descricao='"_s + descricao +
                       u"'"_s + (outros.isEmpty() ? QString() : u", "_s + outros));
}

void Balcao::produtos(int quantidade) {
    m_servidor.executa(u"INSERT INTO produtos (codfabr, descricao) SELECT LPAD(seq, 13, '0'), "
                       "CONCAT('PRODUTO ', LPAD(seq, 3, '0')) FROM seq_1_to_"_s +
                       QString::number(quantidade));
}

QString Balcao::linha(const QString& codigo, const QString& cliente, const QString& outros) {
    m_servidor.executa(
        u"INSERT INTO orcamento SET nrpedido=1, TipoOperacao='P', situacaoorc='A', codigo='"_s + codigo +
        u"', codigocli='"_s + cliente + u"', quantidade=1, unitario=1"_s);
    const QString id = m_servidor.consulta(u"SELECT LAST_INSERT_ID()"_s)[0][0];
    if (!outros.isEmpty())
        m_servidor.executa(u"UPDATE orcamento SET "_s + outros + u" WHERE id="_s + id);
    return id;
}

void Balcao::cliente(const QString& codigo, const QString& nome, const QString& outros) {
    m_servidor.executa(u"INSERT INTO clientes SET codigo='"_s + codigo + u"', nome='"_s + nome + u"'"_s +
                       (outros.isEmpty() ? QString() : u", "_s + outros));
}

QStringList Balcao::comandos() {
    const QStringList textos = m_log.textos();
    m_log.marca();
    return textos;
}

bool mostra(QWidget* form) {
    form->show();
    form->activateWindow();
    return QTest::qWaitForWindowActive(form);
}

void clica(Grid* grade, int linha, int coluna) {
    if (linha > 0) {
        const QModelIndex celula = grade->model()->index(linha - 1, coluna);
        grade->scrollTo(celula);
        QTest::mouseClick(grade->viewport(), Qt::LeftButton, {}, grade->visualRect(celula).center());
        return;
    }
    const QHeaderView* cabecalho = grade->horizontalHeader();
    QTest::mouseClick(cabecalho->viewport(), Qt::LeftButton, {},
                      QPoint(cabecalho->sectionViewportPosition(coluna) + cabecalho->sectionSize(coluna) / 2,
                             cabecalho->height() / 2));
}

QStringList celulas(Grid* grade, int linha) {
    QStringList textos;
    for (int coluna = 0; coluna < grade->columns(); ++coluna)
        textos.append(grade->text(linha, coluna));
    return textos;
}

void cola(QWidget* controle, const QString& texto) {
    QGuiApplication::clipboard()->setText(texto);
    QTest::keyClick(controle, Qt::Key_V, Qt::ControlModifier);
}

} // namespace tarvessa::teste

#include "reports/Movimento.h"

#include "base/Datas.h"
#include "core/AcessoDados.h"
#include "core/Pastas.h"
#include "core/PrintLayout.h"
#include "printing/pages/Report.h"
#include "support/Programa.h"
#include "ui/grid/Grid.h"

#include <QApplication>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tarvessa::teste {

namespace {

QString texto(const QString& valor) {
    return u"'"_s + valor + u"'"_s;
}

} // namespace

Movimento::Movimento() : m_log(m_servidor) {
    FixaRelogio(QDateTime(QDate(2024, 3, 15), QTime(14, 7, 9)));
    FixaPastaDoPrograma(QString::fromUtf8(TARVESSA_SOURCE_DIR));
    if (!IniciaBanco())
        qFatal("the private server cannot be reached");
    arruma();
}

Movimento::~Movimento() {
    fechaPrevias();
    CRW = nullptr;
    EncerraBanco();
    FixaPastaDoPrograma({});
    FixaRelogio({});
}

void Movimento::arruma() {
    fechaPrevias();
    m_crw = std::make_unique<ReportControl>(nullptr);
    m_crw->setClock(Agora);
    CRW = m_crw.get();
    m_servidor.executa(
        u"DELETE FROM movsaient; DELETE FROM nfsaida; DELETE FROM clientes; DELETE FROM vendedores; "
        "DELETE FROM produtos; DELETE FROM Orcamento_Troca; DELETE FROM empresa; DELETE FROM relat; DELETE "
        "FROM relat2; INSERT INTO empresa SET id=1"_s);
    m_log.marca();
}

void Movimento::cliente(const QString& codigo, const QString& nome, const QString& documento,
                        const QString& nivel, const QString& outros) {
    m_servidor.executa(u"INSERT INTO clientes SET codigo="_s + texto(codigo) + u", nome="_s + texto(nome) +
                       u", fantasia=CONCAT('F ', "_s + texto(nome) + u"), CNPJ_CPF="_s + texto(documento) +
                       u", colunapreco="_s + (nivel == u"NULL" ? nivel : texto(nivel)) +
                       (outros.isEmpty() ? QString() : u", "_s + outros));
}

void Movimento::vendedor(int codigo, const QString& nome, const QString& comissEsp1,
                         const QString& comissEsp2) {
    m_servidor.executa(
        u"INSERT INTO vendedores SET codigovend=%1, vendedor='%2', ComissEsp1=%3, ComissEsp2=%4"_s.arg(codigo)
            .arg(nome, comissEsp1, comissEsp2));
}

void Movimento::produto(const QString& codigo, const QString& descricao) {
    m_servidor.executa(u"INSERT INTO produtos SET codfabr='%1', descricao='%2'"_s.arg(codigo, descricao));
}

void Movimento::nota(int numero, int vendedor, const QString& razSoc, const QString& serie) {
    m_servidor.executa(
        u"INSERT INTO nfsaida SET nrnf=%1, SerieNF='%2', CodVendedor=%3, razsoc='%4'"_s.arg(numero)
            .arg(serie)
            .arg(vendedor)
            .arg(razSoc));
}

void Movimento::linha(const LinhaFiscal& l) {
    m_servidor.executa(
        u"INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, "
        "quantunit, totalvenda, vlr_tot_item, cnpj_cpf) VALUES ("_s +
        QString::number(l.nota) + u", "_s + texto(l.serie) + u", "_s + texto(l.data) + u", "_s +
        texto(l.entrsai) + u", "_s + texto(l.cancelado) + u", "_s + texto(l.cfop) + u", "_s +
        texto(l.codigo) + u", "_s + texto(l.descricao) + u", 1, "_s + l.totalVenda + u", "_s + l.valorItem +
        u", "_s + texto(l.cnpj) + u")"_s);
}

void Movimento::troca(const QString& cliente, const QString& vendedor, const QString& quantidade,
                      const QString& custo, const QString& data, const QString& situacao) {
    m_servidor.executa(u"INSERT INTO Orcamento_Troca (codigo, codigocli, Vendedor, quantidade, pcfabrica, "
                       "situacaoorc, databaixa) VALUES ('P1', "_s +
                       texto(cliente) + u", "_s + vendedor + u", "_s + quantidade + u", "_s + custo +
                       u", "_s + texto(situacao) + u", "_s + texto(data) + u")"_s);
}

void Movimento::semeia(quint32 semente) {
    QRandomGenerator sorte(semente);
    const auto um = [&sorte](const QStringList& de) { return de[sorte.bounded(de.size())]; };
    const auto quantia = [&sorte](int ate) {
        return u"%1.%2"_s.arg(sorte.bounded(ate)).arg(sorte.bounded(100), 2, 10, QLatin1Char('0'));
    };
    const QStringList dias = {u"2024-01-31"_s, u"2024-02-01"_s, u"2024-02-15"_s, u"2024-02-29"_s,
                              u"2024-03-01"_s};
    const QStringList descricoes = {u"PÃO FRANCÊS"_s,   u"PAO DE FORMA"_s,  u"pão de queijo"_s,
                                    u"PAOZINHO DOCE"_s, u"BOLO DE MILHO"_s, u"SONHO"_s,
                                    u"PA O FALSO"_s,    u"PAÇOCA"_s};
    const QStringList vendas = {u"5101"_s, u"5102"_s, u"5104"_s, u"5401"_s, u"5405"_s, u"6101"_s,
                                u"6404"_s, u"5656"_s, u"5910"_s, u"6656"_s, u"5103"_s};
    const QStringList devolucoes = {u"1202"_s, u"1411"_s, u"2202"_s, u"2411"_s, u"1201"_s};
    constexpr int clientes = 60;
    constexpr int sellers = 9;
    constexpr int notas = 150;
    constexpr int linhasPorNota = 4;
    m_servidor.executa(u"START TRANSACTION"_s);
    for (int i = 1; i <= clientes; ++i)
        cliente(u"C%1"_s.arg(i), u"CLIENTE %1"_s.arg(i, 3, 10, QLatin1Char('0')), u"900%1"_s.arg(i),
                um({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"0"_s, u"5"_s, u""_s}));
    for (int i = 1; i < sellers; ++i) // the last one has no row
        vendedor(i, u"VENDEDOR %1"_s.arg(i), quantia(10), um({quantia(10), u"NULL"_s}));
    for (int i = 1; i <= 5; ++i)
        produto(u"P%1"_s.arg(i), um(descricoes));
    for (int n = 1; n <= notas; ++n) {
        const bool devolvida = sorte.bounded(5) == 0;
        const QString documento = u"900%1"_s.arg(sorte.bounded(clientes + 2) + 1);
        const QString dia = um(dias);
        const QString serie = um({u"1"_s, u"2"_s});
        nota(n, sorte.bounded(sellers + 1), u"RAZÃO %1"_s.arg(n), u"1"_s);
        nota(n, sorte.bounded(sellers + 1), u"RAZÃO %1 B"_s.arg(n), u"2"_s);
        for (int l = 0; l < linhasPorNota; ++l)
            linha({n, dia, devolvida ? u"E"_s : u"S"_s, devolvida ? um(devolucoes) : um(vendas),
                   u"P%1"_s.arg(sorte.bounded(8)), um(descricoes), quantia(devolvida ? 50 : 900),
                   quantia(900), documento, um({u"N"_s, u"N"_s, u"N"_s, u"S"_s}), serie});
    }
    // Every seller with exchanges has sales as well.
    for (int v = 1; v <= sellers; ++v) {
        nota(notas + v, v, u"CERTA %1"_s.arg(v));
        linha({notas + v, u"2024-02-20"_s, u"S"_s, u"5102"_s, u"X"_s, um(descricoes), u"5000.00"_s,
               u"5000.00"_s, u"9001"_s, u"N"_s, u"1"_s});
        for (int t = 0; t < 6; ++t)
            troca(u"C%1"_s.arg(sorte.bounded(clientes + 2) + 1), QString::number(v),
                  u"%1.%2"_s.arg(sorte.bounded(5)).arg(sorte.bounded(1000), 3, 10, QLatin1Char('0')),
                  quantia(20), um(dias), um({u"B"_s, u"B"_s, u"A"_s}));
    }
    m_servidor.executa(u"COMMIT"_s);
}

QStringList Movimento::comandos() {
    const QStringList textos = m_log.textos();
    m_log.marca();
    return textos;
}

int Movimento::fechaPrevias() {
    int fechadas = 0;
    const QWidgetList janelas = QApplication::topLevelWidgets();
    for (QWidget* janela : janelas)
        if (janela->inherits("tarvessa::report::PreviewWindow") && janela->isVisible()) {
            janela->close();
            ++fechadas;
        }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return fechadas;
}

QString Movimento::textoDoPdf() const {
    const QTemporaryDir pasta;
    const QString arquivo = pasta.filePath(u"relatorio.pdf"_s);
    m_crw->lastReport()->savePdf(arquivo);
    return teste::textoDoPdf(arquivo);
}

bool mostra(QWidget* form) {
    form->show();
    form->activateWindow();
    return QTest::qWaitForWindowActive(form);
}

int comoPrograma(const std::function<void()>& acao) {
    constexpr int limiteMs = 20000;
    constexpr int ninguem = -1;
    QTimer limite;
    limite.setSingleShot(true);
    QObject::connect(&limite, &QTimer::timeout, [] { QApplication::exit(ninguem); });
    limite.start(limiteMs);
    QTimer::singleShot(0, acao);
    return QApplication::exec();
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
                      QPoint(cabecalho->sectionViewportPosition(coluna) + 2, cabecalho->height() / 2));
}

QStringList celulas(const Grid* grade, int linha) {
    QStringList textos;
    for (int coluna = 0; coluna < grade->columns(); ++coluna)
        textos.append(grade->text(linha, coluna));
    return textos;
}

QList<QStringList> linhas(const Grid* grade) {
    QList<QStringList> todas;
    for (int linha = 1; linha < grade->rows(); ++linha)
        todas.append(celulas(grade, linha));
    return todas;
}

QList<int> larguras(const Grid* grade) {
    QList<int> twips;
    for (int coluna = 0; coluna < grade->columns(); ++coluna)
        twips.append(grade->columnTwips(coluna));
    return twips;
}

QString alinhamentos(const Grid* grade) {
    const QAbstractItemModel* modelo = grade->model();
    QString marcas;
    for (int coluna = 0; coluna < grade->columns(); ++coluna) {
        const auto como = [](const QVariant& valor) {
            return valor.value<Qt::Alignment>() & Qt::AlignHorizontal_Mask;
        };
        const Qt::Alignment titulo = como(modelo->headerData(coluna, Qt::Horizontal, Qt::TextAlignmentRole));
        const bool diverge = modelo->rowCount() > 0 &&
                             como(modelo->data(modelo->index(0, coluna), Qt::TextAlignmentRole)) != titulo;
        marcas += diverge                      ? u'?'
                  : titulo == Qt::AlignLeft    ? u'<'
                  : titulo == Qt::AlignRight   ? u'>'
                  : titulo == Qt::AlignHCenter ? u'^'
                                               : u'?';
    }
    return marcas;
}

qint64 centavos(const QString& ponto) {
    if (ponto.isEmpty())
        return 0;
    const bool negativo = ponto.startsWith(u'-');
    const QStringList partes = (negativo ? ponto.mid(1) : ponto).split(u'.');
    const qint64 valor = partes[0].toLongLong() * 100 +
                         (partes.size() > 1 ? partes[1].leftJustified(2, u'0').toLongLong() : 0);
    return negativo ? -valor : valor;
}

qint64 centavosDeCentesimosMilesimos(qint64 valor) {
    return proporcao(valor, 1, 1000);
}

qint64 proporcao(qint64 a, qint64 b, qint64 c) {
    const bool negativo = (a < 0) != (b < 0) ? c > 0 : c < 0;
    const qint64 n = qAbs(a * b);
    const qint64 d = qAbs(c);
    const qint64 modulo = (2 * n + d) / (2 * d);
    return negativo ? -modulo : modulo;
}

QString comoTela(qint64 valor, int casas) {
    qint64 unidade = 1;
    for (int i = 0; i < casas; ++i)
        unidade *= 10;
    QString inteiro = QString::number(qAbs(valor) / unidade);
    for (qsizetype i = inteiro.size() - 3; i > 0; i -= 3)
        inteiro.insert(i, u'.');
    return (valor < 0 ? u"-"_s : QString()) + inteiro + u","_s +
           QString::number(qAbs(valor) % unidade).rightJustified(casas, u'0');
}

QString comoPonto(qint64 valor, int casas) {
    QString texto = comoTela(qAbs(valor), casas).remove(u'.').replace(u',', u'.');
    while (texto.endsWith(u'0'))
        texto.chop(1);
    if (texto.endsWith(u'.'))
        texto.chop(1);
    return (valor < 0 ? u"-"_s : u" "_s) + texto;
}

} // namespace tarvessa::teste

// Checking the listed pre-sales against the price tables.

#include "closing/Balcao.h"
#include "closing/Colunas.h"
#include "core/Pastas.h"
#include "support/ModalHelper.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarvessa;
using namespace tarvessa::teste;

namespace {

const QString pergunta = u"Deseja realmente o processo desta função?"_s;
const QString cabeca = u"PEDIDOS COM PREÇOS CORRIGIDOS:\n\n"_s;

QString consulta(int numero, const QString& coluna) {
    return u"Select o.id, o.nrpedido, o.tipooperacao, o.unitario, p.%2 as Vnd From orcamento as o Left Join "
           "produtos as p ON o.codigo=p.codfabr Where o.nrpedido=%1 and o.TipoOperacao='P' and o.unitario <> "
           "p.%2 and p.%2<> 0"_s.arg(numero)
               .arg(coluna);
}

QString correcao(const QString& preco, const QString& id) {
    return u"Update Orcamento Set Unitario=%1, TotalPed=Round(quantidade*%1,2) , UnitarioPAF = %1, TotalPaf "
           u"= "
           "Round(quantidade * %1, 2) Where ID=%2"_s.arg(preco, id);
}

/// Notes what the label showed each time it was painted, and whether it had the room for it.
class Pintor : public QObject {
  public:
    explicit Pintor(QLabel* legenda) : m_legenda(legenda) { legenda->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* evento) override {
        if (evento->type() == QEvent::Paint) {
            m_textos += m_legenda->text();
            m_cortado = m_cortado || m_legenda->width() < m_legenda->sizeHint().width();
        }
        return false;
    }

    QStringList textos() const { return m_textos; }
    bool cortado() const { return m_cortado; }

  private:
    QLabel* m_legenda;
    QStringList m_textos;
    bool m_cortado = false;
};

} // namespace

class TestPrecos : public QObject {
    Q_OBJECT

  private:
    Balcao m;
    std::unique_ptr<QTemporaryDir> m_pasta;

    QString arquivo() const { return m_pasta->filePath(u"LogTarvessa.log"_s); }

    QByteArray log() const {
        QFile lido(arquivo());
        return lido.open(QIODevice::ReadOnly) ? lido.readAll() : QByteArray("no file");
    }

    QString id(int numero, const QString& codigo) {
        return m.valor(
            u"SELECT id FROM orcamento WHERE nrpedido=%1 AND codigo='%2'"_s.arg(numero).arg(codigo));
    }

    void pv(int numero, const QString& tabela, const QList<Item>& itens) {
        const QString codigo = u"C%1"_s.arg(numero);
        m.cliente(codigo, u"CLIENTE %1"_s.arg(numero, 4, 10, QChar(u'0')), 0, u"PIX"_s, tabela);
        m.documento(u"P"_s, numero, codigo, u"ANA"_s, itens);
    }

    /// Unit price and total of each line, then those of its fiscal copy.
    QStringList precos(int numero) {
        QStringList lista;
        for (const QStringList& linha :
             m.linhas(u"SELECT unitario, totalped, UnitarioPAF, TotalPaf FROM orcamento WHERE nrpedido=%1 "
                      "ORDER BY id"_s.arg(numero)))
            lista += linha.join(u' ');
        return lista;
    }

  private Q_SLOTS:
    void init() {
        m.zera();
        m_pasta = std::make_unique<QTemporaryDir>();
        FixaPastaDoPrograma(m_pasta->path());
        m.produto(u"A"_s, {u"10.00"_s, u"20.50"_s, u"30.25"_s, u"0.07"_s});
        m.produto(u"B"_s, {u"1.00"_s, u"2.00"_s, u"3.00"_s, u"4.00"_s});
        m.produto(u"ZERO"_s, {u"0.00"_s, u"0.00"_s, u"0.00"_s, u"0.00"_s});
        m.produto(u"NULO"_s, {u"NULL"_s, u"NULL"_s, u"NULL"_s, u"NULL"_s});
    }

    void cleanup() {
        m.fecha();
        FixaPastaDoPrograma({});
    }

    void cadaTabelaTemASuaColuna() {
        for (int tabela = 0; tabela <= 4; ++tabela)
            pv(10 + tabela, QString::number(tabela), {{u"A"_s, u"3"_s, u"99"_s}});
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.espera(cabeca + u"PV Nº 11 - CLIENTE 0011\nPV Nº 12 - CLIENTE 0012\nPV Nº 13 - CLIENTE "
                               "0013\nPV Nº 14 - CLIENTE 0014\n"_s,
                      QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos().first(8),
                 QStringList({consulta(11, u"Venda"_s), correcao(u" 10"_s, id(11, u"A"_s)),
                              consulta(12, u"Venda2"_s), correcao(u" 20.5"_s, id(12, u"A"_s)),
                              consulta(13, u"Venda3"_s), correcao(u" 30.25"_s, id(13, u"A"_s)),
                              consulta(14, u"Venda4"_s), correcao(u" 0.07"_s, id(14, u"A"_s))}));
        QCOMPARE(m.textos().size(), 9); // and the listing again
        QVERIFY(m.textos()[8].contains(u"TipoOperacao='P'"_s));
        QCOMPARE(precos(10), QStringList{u"99.00 297.00 0.00 0.00"_s});
        QCOMPARE(precos(11), QStringList{u"10.00 30.00 10.00 30.00"_s});
        QCOMPARE(precos(12), QStringList{u"20.50 61.50 20.50 61.50"_s});
        QCOMPARE(precos(13), QStringList{u"30.25 90.75 30.25 90.75"_s});
        QCOMPARE(precos(14), QStringList{u"0.07 0.21 0.07 0.21"_s});
        QCOMPARE(m.celula(m.linhaDe(11), colunas::Total), u"30,00"_s);
        QCOMPARE(log(), "PV Nº 11 - CLIENTE 0011\r\nPV Nº 12 - CLIENTE 0012\r\nPV Nº 13 - CLIENTE "
                        "0013\r\nPV Nº 14 - CLIENTE 0014\r\n\r\n"_qba);
        QCOMPARE(caixas.caixas()[0].titulo, u"Atenção!!!"_s);
        QCOMPARE(caixas.caixas()[0].icone, QMessageBox::Question);
        QCOMPARE(caixas.caixas()[0].botoes, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(caixas.caixas()[1].titulo, u"Atenção!!!"_s);
        QCOMPARE(caixas.caixas()[1].icone, QMessageBox::Information);
        QCOMPARE(caixas.caixas()[1].botoes, QMessageBox::StandardButtons(QMessageBox::Ok));
    }

    void naoDeixaTudoComoEsta() {
        pv(1, u"1"_s, {{u"A"_s, u"3"_s, u"99"_s}});
        m.abre();
        for (const auto resposta : {QMessageBox::No, QMessageBox::NoButton}) {
            ModalHelper caixas;
            caixas.espera(pergunta, resposta);
            m.clica("Command5");
            QCOMPARE(caixas.confere(), QString());
            QCOMPARE(m.total(), u"297,00"_s);
            QVERIFY(m.grade()->isTicked(1));
            QCOMPARE(m.painel().findChild<QLabel*>(u"Label1"_s)->text(), u"TOTAL SELEÇÃO R$"_s);
        }
        QCOMPARE(m.textos(), QStringList());
        QCOMPARE(precos(1), QStringList{u"99.00 297.00 0.00 0.00"_s});
        QCOMPARE(log(), QByteArray("no file"));
        QCOMPARE(m.grade()->rows(), 2);
    }

    void tresLinhasErradasUmTextoSo() {
        pv(1, u"2"_s,
           {{u"A"_s, u"1.5"_s, u"1"_s},
            {u"B"_s, u"2"_s, u"2"_s},
            {u"B"_s, u"0.333"_s, u"7"_s},
            {u"A"_s, u"2"_s, u"20.49"_s}});
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.espera(cabeca + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos().filter(u"Update Orcamento"_s).size(), 3);
        QCOMPARE(m.painel().focusWidget(), m.botao("Command5"));
        QCOMPARE(precos(1), QStringList({u"20.50 30.75 20.50 30.75"_s, u"2.00 4.00 0.00 0.00"_s,
                                         u"2.00 0.67 2.00 0.67"_s, u"20.50 41.00 20.50 41.00"_s}));
        QCOMPARE(log(), "PV Nº 1 - CLIENTE 0001\r\n\r\n"_qba);
    }

    void nadaACorrigirNaoAvisaNemTocaOLog() {
        pv(1, u"1"_s,
           {{u"A"_s, u"1"_s, u"10"_s},
            {u"ZERO"_s, u"1"_s, u"5"_s},
            {u"NULO"_s, u"1"_s, u"5"_s},
            {u"SUMIU"_s, u"1"_s, u"5"_s},
            {u"***NOTA"_s, u"0"_s, u"0"_s}});
        pv(2, u"0"_s, {{u"A"_s, u"1"_s, u"1"_s}});
        QFile antigo(arquivo());
        QVERIFY(antigo.open(QIODevice::WriteOnly));
        antigo.write("before");
        antigo.close();
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(log(), QByteArray("before"));
        QCOMPARE(m.textos().size(), 2);
        QCOMPARE(m.textos()[0], consulta(1, u"Venda"_s));
        QCOMPARE(precos(2), QStringList{u"1.00 1.00 0.00 0.00"_s});
    }

    void tabelaForaDeZeroAQuatroPulaALinha_data() {
        QTest::addColumn<QString>("tabela");
        for (const QString& tabela : {u"5"_s, u"9"_s, u"-"_s, u"A"_s, u""_s, u" "_s})
            QTest::addRow("table '%s'", qPrintable(tabela)) << tabela;
        QTest::newRow("table NULL") << QString();
    }

    void tabelaForaDeZeroAQuatroPulaALinha() {
        QFETCH(QString, tabela);
        pv(1, tabela, {{u"A"_s, u"1"_s, u"99"_s}});
        if (tabela.isNull())
            m.servidor.executa(u"UPDATE clientes SET colunapreco = NULL"_s);
        pv(2, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.espera(cabeca + u"PV Nº 2 - CLIENTE 0002\n"_s, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(precos(1), QStringList{u"99.00 99.00 0.00 0.00"_s});
    }

    void aMarcaDeSelecaoNaoConta() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        m.abre();
        m.clica("Command1");
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.esperaContendo(u"PV Nº 1 - "_s, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(precos(1), QStringList{u"10.00 10.00 10.00 10.00"_s});
    }

    void oLogEhRefeitoENaoEmendado() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        m.servidor.executa(u"UPDATE clientes SET nome = 'D''ÁVILA & AÇÚCAR €'"_s);
        m.abre();
        for (int vez = 0; vez < 2; ++vez) {
            m.servidor.executa(u"UPDATE orcamento SET unitario = 98"_s);
            ModalHelper caixas;
            caixas.espera(pergunta, QMessageBox::Yes);
            caixas.espera(cabeca + u"PV Nº 1 - D'ÁVILA & AÇÚCAR €\n"_s, QMessageBox::Ok);
            m.clica("Command5");
            QCOMPARE(caixas.confere(), QString());
            QCOMPARE(log(), "PV Nº 1 - D'ÁVILA & AÇÚCAR €\r\n\r\n"_qba);
        }
    }

    void aLegendaEspera() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"10"_s}});
        m.abre();
        auto* legenda = m.painel().findChild<QLabel*>(u"Label1"_s);
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        const Pintor pintor(legenda);
        m.clica("Command5");
        QVERIFY(pintor.textos().contains(u"AGUARDE PROCESSO"_s));
        QVERIFY(!pintor.cortado());
        QCOMPARE(legenda->text(), u"TOTAL SELEÇÃO R$"_s);
    }

    void certasEErradasJuntas() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"10"_s}});
        pv(2, u"2"_s, {{u"A"_s, u"2"_s, u"99"_s}, {u"B"_s, u"1"_s, u"2"_s}});
        pv(3, u"3"_s, {{u"A"_s, u"1"_s, u"30.25"_s}});
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.espera(cabeca + u"PV Nº 2 - CLIENTE 0002\n"_s, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.textos().first(4),
                 QStringList({consulta(1, u"Venda"_s), consulta(2, u"Venda2"_s),
                              correcao(u" 20.5"_s, id(2, u"A"_s)), consulta(3, u"Venda3"_s)}));
        QCOMPARE(precos(1) + precos(3),
                 QStringList({u"10.00 10.00 0.00 0.00"_s, u"30.25 30.25 0.00 0.00"_s}));
        QCOMPARE(precos(2), QStringList({u"20.50 41.00 20.50 41.00"_s, u"2.00 2.00 0.00 0.00"_s}));
        QCOMPARE(log(), "PV Nº 2 - CLIENTE 0002\r\n\r\n"_qba);
    }

    // The totals shown are no longer the documents': nothing may be closed with them.
    void semNovaListaNadaFicaAEncerrar() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        QTimer corte;
        caixas.espera(cabeca + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        caixas.esperaContendo(u"c.prazo"_s, QMessageBox::Ok);
        bool renomeada = false;
        connect(&corte, &QTimer::timeout, this, [&] {
            const auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (renomeada || !caixa || !caixa->text().startsWith(cabeca))
                return;
            renomeada = true;
            m.servidor.executa(u"RENAME TABLE clientes TO clientes_fora"_s);
        });
        corte.start(1);
        m.clica("Command5");
        QVERIFY(renomeada);
        m.servidor.executa(u"RENAME TABLE clientes_fora TO clientes"_s);
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.grade()->rows(), 1);
        QCOMPARE(m.total(), u"0,00"_s);
        QVERIFY(!m.botao("Command4")->isEnabled());
        m.clica("Command3");
        QCOMPARE(m.celula(1, colunas::Total), u"10,00"_s);
    }

    void falhaDoBancoDevolveALegenda() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        pv(2, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        m.abre();
        m.servidor.executa(
            u"CREATE TRIGGER recusa BEFORE UPDATE ON orcamento FOR EACH ROW IF OLD.nrpedido = 2 "
            "THEN SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'recusado'; END IF"_s);
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.esperaContendo(u"recusado"_s, QMessageBox::Ok);
        m.clica("Command5");
        m.servidor.executa(u"DROP TRIGGER recusa"_s);
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(m.painel().findChild<QLabel*>(u"Label1"_s)->text(), u"TOTAL SELEÇÃO R$"_s);
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(precos(1), QStringList{u"10.00 10.00 10.00 10.00"_s});
        QCOMPARE(precos(2), QStringList{u"99.00 99.00 0.00 0.00"_s});
        QCOMPARE(log(), QByteArray("no file"));
        QCOMPARE(m.grade()->rows(), 1);
        QVERIFY(!m.botao("Command4")->isEnabled());
        QVERIFY(m.botao("Command3")->isEnabled());
    }

    void logQueNaoSeGravaMostraALista() {
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
        m.abre();
        FixaPastaDoPrograma(m_pasta->filePath(u"missing"_s));
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.esperaContendo(QDir::toNativeSeparators(u"missing/LogTarvessa.log"_s), QMessageBox::Ok);
        caixas.espera(cabeca + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QVERIFY(caixas.caixas()[1].texto.startsWith(u"Erro em tempo de execução 75:"_s));
        QCOMPARE(precos(1), QStringList{u"10.00 10.00 10.00 10.00"_s});
        QCOMPARE(m.celula(1, colunas::Total), u"10,00"_s);
    }

    void quinhentasLinhasErradasNumaPv() {
        QList<Item> itens;
        for (int i = 0; i < 500; ++i)
            itens += Item{u"B"_s, u"2"_s, u"7"_s};
        pv(1, u"4"_s, itens);
        m.abre();
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.espera(cabeca + u"PV Nº 1 - CLIENTE 0001\n"_s, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QCOMPARE(
            m.valor(u"SELECT COUNT(*) FROM orcamento WHERE unitario=4 AND totalped=8 AND UnitarioPAF=4 AND "
                    "TotalPaf=8"_s),
            u"500"_s);
    }

    void quinhentasPvsCorrigidasCabemNaTela() {
        QString texto = cabeca;
        for (int i = 1; i <= 500; ++i) {
            pv(i, u"1"_s, {{u"A"_s, u"1"_s, u"99"_s}});
            texto += u"PV Nº %1 - CLIENTE %2\n"_s.arg(i).arg(i, 4, 10, QChar(u'0'));
        }
        m.abre();
        bool vista = false;
        QTimer olho;
        connect(&olho, &QTimer::timeout, this, [&] {
            const auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!caixa || vista || !caixa->text().startsWith(cabeca))
                return;
            vista = true;
            const auto* legenda = caixa->findChild<QLabel*>(u"qt_msgbox_label"_s);
            auto* area = caixa->findChild<QScrollArea*>();
            QVERIFY(area);
            QVERIFY(caixa->height() <= caixa->screen()->availableSize().height());
            QVERIFY(caixa->rect().contains(caixa->button(QMessageBox::Ok)->geometry()));
            QCOMPARE(legenda->text(), texto);
            QVERIFY(area->verticalScrollBar()->maximum() > 0);
            QVERIFY(area->widget()->height() >= legenda->sizeHint().height());
            QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
            QTest::keyClick(area, Qt::Key_PageDown);
            QVERIFY(area->verticalScrollBar()->value() > 0);
        });
        olho.start(1);
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        caixas.espera(texto, QMessageBox::Ok);
        m.clica("Command5");
        QCOMPARE(caixas.confere(), QString());
        QVERIFY(vista);
        QCOMPARE(log().count("\r\n"), 501);
    }

    void botaoSegueALista() {
        m.abre();
        QVERIFY(!m.botao("Command5")->isEnabled());
        pv(1, u"1"_s, {{u"A"_s, u"1"_s, u"10"_s}});
        m.clica("Command3");
        QVERIFY(m.botao("Command5")->isEnabled());
        m.servidor.executa(u"UPDATE orcamento SET situacaoorc='B'"_s);
        ModalHelper caixas;
        caixas.espera(pergunta, QMessageBox::Yes);
        m.clica("Command5");
        QCOMPARE(m.grade()->rows(), 1);
        QVERIFY(!m.botao("Command5")->isEnabled());
        QVERIFY(m.botao("Command3")->isEnabled());
    }
};

QTEST_MAIN(TestPrecos)
#include "tst_precos.moc"

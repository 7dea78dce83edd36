#pragma once

#include "support/PrivateServer.h"
#include "support/StatementLog.h"

#include <QEvent>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

namespace tarvessa {
class Grid;
class ReportControl;
} // namespace tarvessa

namespace tarvessa::teste {

/// A fiscal line, as far as the reports look at one; amounts in point form.
struct LinhaFiscal {
    int nota = 1;
    QString data = QStringLiteral("2024-02-10");
    QString entrsai = QStringLiteral("S");
    QString cfop = QStringLiteral("5102");
    QString codigo = QStringLiteral("P1");
    QString descricao = QStringLiteral("PÃO FRANCÊS");
    QString totalVenda = QStringLiteral("10.00");
    QString valorItem = QStringLiteral("10.00");
    QString cnpj = QStringLiteral("11");
    QString cancelado = QStringLiteral("N");
    QString serie = QStringLiteral("1");
};

/// A workbench for the report screens: a database, the clock at 15/03/2024, the program's folder at the
/// layouts that are shipped, the report control, and what the server received.
class Movimento {
  public:
    Movimento();
    ~Movimento();
    Movimento(const Movimento&) = delete;
    Movimento& operator=(const Movimento&) = delete;

    PrivateServer& servidor() { return m_servidor; }

    /// Back to an empty database with one Empresa row, a new report control and no preview.
    void arruma();

    // Rows. Texts go into the statements as they are: "NULL" where a number may be missing, quotes doubled.
    void cliente(const QString& codigo, const QString& nome, const QString& documento, const QString& nivel,
                 const QString& outros = {});
    void vendedor(int codigo, const QString& nome, const QString& comissEsp1, const QString& comissEsp2);
    void produto(const QString& codigo, const QString& descricao);
    void nota(int numero, int vendedor, const QString& razSoc, const QString& serie = QStringLiteral("1"));
    void linha(const LinhaFiscal& linha);
    void troca(const QString& cliente, const QString& vendedor, const QString& quantidade,
               const QString& custo, const QString& data = QStringLiteral("2024-02-10"),
               const QString& situacao = QStringLiteral("B"));

    /// Some hundred customers, sellers, products, invoices, returns and exchanges in and around February
    /// 2024, the same for the same seed.
    void semeia(quint32 semente);

    /// The statements since the last call, `marca` or `arruma`.
    QStringList comandos();
    void marca() { m_log.marca(); }

    /// Closes all previews; the number of those that were open.
    int fechaPrevias();

    /// The text of the last report as its PDF holds it, laid out. Raises TestError when it cannot be read:
    /// without pdftotext, say.
    QString textoDoPdf() const;

    /// The same, blanks and line ends run together.
    QString palavrasDoPdf() const { return textoDoPdf().simplified(); }

  private:
    PrivateServer m_servidor;
    StatementLog m_log;
    std::unique_ptr<ReportControl> m_crw;
};

/// Shows a form and gives it the focus as a window manager would.
bool mostra(QWidget* form);

/// Runs it inside the program's own event loop; gives the code with which that ended, -1 when nothing ended
/// it.
int comoPrograma(const std::function<void()>& acao);

/// A control by its name; the test ends when there is none.
template <typename Controle>
Controle* controle(QWidget* form, const char* nome) {
    auto* achado = form->findChild<Controle*>(QString::fromUtf8(nome));
    if (!achado)
        qFatal("no control %s", nome);
    return achado;
}

/// Tells of the events of a widget before they are handled, as long as it lives.
class Observador : public QObject {
  public:
    Observador(QObject* alvo, std::function<void(QEvent::Type)> aoVer) : m_aoVer(std::move(aoVer)) {
        alvo->installEventFilter(this);
    }

    bool eventFilter(QObject* /*alvo*/, QEvent* evento) override {
        m_aoVer(evento->type());
        return false;
    }

  private:
    std::function<void(QEvent::Type)> m_aoVer;
};

/// A real left click on a cell; row 0 is the header.
void clica(Grid* grade, int linha, int coluna);

/// Texts of one row, the header being row 0, and of all data rows.
QStringList celulas(const Grid* grade, int linha);
QList<QStringList> linhas(const Grid* grade);

/// Widths of all columns in twips.
QList<int> larguras(const Grid* grade);

/// How the captions stand, one mark per column as in the grid's format: "<" left, ">" right, "^" centre.
/// Where there are rows the cells of the first one must stand alike; "?" for a column where they do not.
QString alinhamentos(const Grid* grade);

// Figures of the tests' own, in whole cents, sharing nothing with the program's arithmetic

/// Cents of an amount in point form with at most two decimals; 0 for an empty text.
qint64 centavos(const QString& ponto);

/// Cents from hundred-thousandths (quantity of three places times price of two), halves away from zero.
qint64 centavosDeCentesimosMilesimos(qint64 valor);

/// a times b through c, rounded to a whole number, halves away from zero.
qint64 proporcao(qint64 a, qint64 b, qint64 c);

/// "1.234,50" of cents; with other decimals, "12,345" of thousandths and so on.
QString comoTela(qint64 valor, int casas = 2);

/// " 1234.5" of cents.
QString comoPonto(qint64 valor, int casas = 2);

} // namespace tarvessa::teste

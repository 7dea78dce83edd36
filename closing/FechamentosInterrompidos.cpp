#include "closing/FechamentosInterrompidos.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/HostUser.h"
#include "base/Numeros.h"
#include "base/RuntimeError.h"
#include "closing/ClosingBatch.h"
#include "closing/PvClosing.h"
#include "closing/ServerLock.h"
#include "core/AcessoDados.h"
#include "core/ArquivoLog.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "ui/BusyPointer.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/MessageBoxes.h"
#include "ui_FechamentosInterrompidos.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips.
constexpr std::array<int, 7> columnTwips = {1000, 3400, 1200, 1500, 1500, 2900, 3300};
constexpr int rowTwips = 340;
constexpr int rowsShown = 9;

const QString logName = u"LogRetomada.txt"_s;

QString documentText(qint32 number) {
    return Formata(Dinheiro(number), u"0000000");
}

QString termsText(const InterruptedClosing& closing) {
    switch (closing.termsFrom) {
    case InterruptedClosing::TermsFrom::Note:
        return u"Os termos são os do fechamento interrompido."_s;
    case InterruptedClosing::TermsFrom::Receivable:
        return u"Os termos são os da conta a receber já gravada."_s;
    case InterruptedClosing::TermsFrom::Customer:
        break;
    }
    return u"Os termos do fechamento interrompido não são conhecidos: são mostrados os termos atuais do "
           u"cliente. "
           "Confira antes de concluir."_s;
}

QString stockText(const InterruptedClosing& closing) {
    const MovimentoDeEstoque& movement = closing.movements[closing.logged - 1];
    if (!closing.product)
        return u"%1: quantidade %2; o produto não está cadastrado."_s.arg(
            movement.codigo, FormataQuantidade(movement.quantidade));
    return u"%1 - %2: quantidade %3, estoque atual %4. O log de estoque tem esta baixa; o banco de dados não "
           u"mostra se "
           "o estoque chegou a mudar. Confira a prateleira."_s.arg(movement.codigo, closing.product->name,
                                                                   FormataQuantidade(movement.quantidade),
                                                                   FormataQuantidade(closing.product->stock));
}

} // namespace

FechamentosInterrompidos::FechamentosInterrompidos(QDate since, const ClosingSettings& settings,
                                                   QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::FechamentosInterrompidos>()), m_since(since),
      m_settings(settings) {
    ui->setupUi(this);
    ui->Grid1->setMinimumRowTwips(rowTwips);
    ui->Grid1->setFormat(u"<PEDIDO|<CLIENTE|>R$ TOTAL|<FORMA PAGTO|^VENCIMENTO|<JÁ GRAVADO|<FALTA GRAVAR"_s);
    for (size_t column = 0; column < columnTwips.size(); ++column)
        ui->Grid1->setColumnTwips(static_cast<int>(column), columnTwips[column]);
    ui->Grid1->setHeaderBold();
    ui->Grid1->setColumnKinds(
        {ColumnKind::Text, ColumnKind::Text, ColumnKind::Number, ColumnKind::Text, ColumnKind::Date});
    ui->Grid1->setEmptyText(u"Nenhum fechamento interrompido"_s);
    offerSaving(ui->Grid1, [] { return u"Fechamentos interrompidos - "_s + TextoSQL(clock::today()); });
    ui->Grid1->setPreferredRows(rowsShown);
    new Teclado(this, [this] { reject(); });
    manual::opensAt(this, u"fechamentos-interrompidos"_s);
    onSignal(ui->Grid1, &Grid::cellEntered, this, [this](int, int) { mostraAtual(); });
    onSignal(ui->JaSaiu, &QRadioButton::toggled, this,
             [this](bool) { ui->Command1->setEnabled(ui->JaSaiu->isChecked() || ui->NaoSaiu->isChecked()); });
    onSignal(ui->NaoSaiu, &QRadioButton::toggled, this,
             [this](bool) { ui->Command1->setEnabled(ui->JaSaiu->isChecked() || ui->NaoSaiu->isChecked()); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { Command1_Click(); });
    onSignal(ui->Command2, &QPushButton::clicked, this, [this](bool) { Command2_Click(); });
    connect(ui->Fechar, &QPushButton::clicked, this, &QDialog::accept);
}

FechamentosInterrompidos::~FechamentosInterrompidos() = default;

void FechamentosInterrompidos::carrega() {
    const BusyPointer pointer;
    m_closings.clear();
    for (const qint32 number : interruptedclosings::find(m_since))
        if (!m_leftAlone.contains(number))
            m_closings.append(interruptedclosings::examine(number, m_since, m_settings));
    m_conversions = interruptedclosings::strandedNotes();
    mostraLista();
}

int FechamentosInterrompidos::quantidade() const {
    return static_cast<int>(m_closings.size() + m_conversions.size());
}

void FechamentosInterrompidos::mostraLista() {
    ui->Grid1->setRows(1);
    for (const InterruptedClosing& closing : m_closings)
        ui->Grid1->addRow({documentText(closing.sale.nrPedido), closing.sale.nomeCli,
                           FormataDinheiro(closing.sale.valor), closing.sale.formaPG,
                           TextoTela(closing.sale.vencto), interruptedclosings::doneText(closing),
                           interruptedclosings::missingText(closing)});
    for (const interruptedclosings::StrandedNotes& notes : m_conversions)
        ui->Grid1->addRow({documentText(notes.number),
                           u"conversão do DAV %1"_s.arg(notes.document),
                           {},
                           {},
                           {},
                           u"itens convertidos"_s,
                           u"observações do documento"_s});
    if (quantidade() > 0)
        ui->Grid1->setCurrentCell(1, 0);
    mostraAtual();
    ui->Grid1->setFocus();
}

const InterruptedClosing* FechamentosInterrompidos::fechamentoAtual() const {
    const int index = ui->Grid1->currentRow() - 1;
    return index >= 0 && index < m_closings.size() ? &m_closings[index] : nullptr;
}

const interruptedclosings::StrandedNotes* FechamentosInterrompidos::conversaoAtual() const {
    const qsizetype index = ui->Grid1->currentRow() - 1 - m_closings.size();
    return index >= 0 && index < m_conversions.size() ? &m_conversions[index] : nullptr;
}

void FechamentosInterrompidos::mostraAtual() {
    const InterruptedClosing* closing = fechamentoAtual();
    const bool asks = closing && closing->asksForStock();
    for (QRadioButton* answer : {ui->JaSaiu, ui->NaoSaiu}) {
        answer->setAutoExclusive(false);
        answer->setChecked(false);
        answer->setAutoExclusive(true);
    }
    ui->Frame1->setVisible(asks);
    ui->Label2->setText(asks ? stockText(*closing) : QString());
    if (closing)
        ui->Label1->setText(
            closing->unclear.isEmpty()
                ? termsText(*closing)
                : u"O programa não pode concluir este fechamento: %1."_s.arg(closing->unclear));
    else if (conversaoAtual())
        ui->Label1->setText(u"As observações do documento ainda estão sob o número do DAV."_s);
    else
        ui->Label1->setText(u"Não há fechamento interrompido."_s);
    ui->Command1->setEnabled(!asks && (conversaoAtual() || (closing && closing->unclear.isEmpty())));
    ui->Command2->setEnabled(quantidade() > 0);
}

bool FechamentosInterrompidos::confirma(const InterruptedClosing& shown) {
    return boxes::ask(
        this,
        u"Deseja realmente concluir o fechamento da PV %1?\n\nCliente: %2\nTotal: R$ %3\nForma de "
        "pagamento: %4\nVencimento: %5\n\nSerá gravado: %6."_s.arg(
            documentText(shown.sale.nrPedido), shown.sale.nomeCli, FormataDinheiro(shown.sale.valor),
            shown.sale.formaPG, TextoTela(shown.sale.vencto), interruptedclosings::missingText(shown)),
        QMessageBox::Question);
}

void FechamentosInterrompidos::Command1_Click() {
    if (const InterruptedClosing* closing = fechamentoAtual()) {
        const InterruptedClosing shown = *closing;
        if (!confirma(shown))
            return;
        conclui(shown);
    } else if (const interruptedclosings::StrandedNotes* notes = conversaoAtual()) {
        concluiConversao(*notes);
    }
    carrega();
}

// The list may be old by the time its row is concluded: nothing is written unless the database still shows
// the same.
void FechamentosInterrompidos::conclui(const InterruptedClosing& shown) {
    std::optional<BusyPointer> pointer(std::in_place);
    std::optional<ServerLock> lock(std::in_place, closingLockName, closingLockSeconds);
    if (lock->isTaken()) {
        pointer.reset();
        boxes::inform(this, closingLockTaken);
        return;
    }
    if (interruptedclosings::examine(shown.sale.nrPedido, m_since, m_settings) != shown) {
        lock.reset(); // other stations do not wait for the answer to a box
        pointer.reset();
        boxes::inform(this, u"A PV %1 mudou desde que foi mostrada. Confira novamente. Verifique!!!"_s.arg(
                                documentText(shown.sale.nrPedido)));
        return;
    }
    ArquivoLog log;
    log.continua(logName);
    log.linha(u"%1 - ESTAÇÃO %2 (%3) - PV %4"_s.arg(clock::now().toString(u"dd/MM/yyyy HH:mm:ss"_s),
                                                    QSysInfo::machineHostName(), hostUserName(),
                                                    documentText(shown.sale.nrPedido)));
    if (shown.asksForStock())
        log.linha(ui->JaSaiu->isChecked() ? u"  última baixa registrada: já saiu do estoque"_s
                                          : u"  última baixa registrada: não saiu do estoque"_s);
    m_concluded = true; // an error on the way leaves something written as well
    interruptedclosings::conclude(shown, ui->JaSaiu->isChecked(), m_settings,
                                  [&log](const QString& sql) { log.linha(u"  "_s + sql); });
    log.linha(u"  CONCLUÍDO"_s);
}

void FechamentosInterrompidos::concluiConversao(const interruptedclosings::StrandedNotes& shown) {
    ArquivoLog log;
    log.continua(logName);
    log.linha(u"%1 - ESTAÇÃO %2 (%3) - CONVERSÃO DO DAV %4"_s.arg(
        clock::now().toString(u"dd/MM/yyyy HH:mm:ss"_s), QSysInfo::machineHostName(), hostUserName(),
        QString::number(shown.document)));
    interruptedclosings::moveNotes(shown, [&log](const QString& sql) { log.linha(u"  "_s + sql); });
}

void FechamentosInterrompidos::Command2_Click() {
    if (const InterruptedClosing* closing = fechamentoAtual())
        m_leftAlone.insert(closing->sale.nrPedido);
    carrega();
    if (quantidade() == 0)
        accept();
}

} // namespace tarvessa

#include "closing/Conferencia.h"

#include "base/Clock.h"
#include "base/Datas.h"
#include "base/Numeros.h"
#include "closing/ConferenciaColumns.h"
#include "closing/ConferenciaTexts.h"
#include "core/GridFile.h"
#include "core/Teclado.h"
#include "ui/FitToScreen.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/NameParts.h"
#include "ui/Twips.h"
#include "ui/grid/SummaryLabel.h"
#include "ui_Conferencia.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QShowEvent>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

using namespace conferencia;

// Twips
constexpr std::array<int, 5> listTwips = {1000, 3000, 1200, 2400, 2700};
constexpr std::array<int, 3> totalsTwips = {3600, 800, 1500};
constexpr int rowTwips = 340;
constexpr int totalsRowTwips = 300;
constexpr int totalsRows = 8;
constexpr int detailLines = 3;

// Short enough for Escape to be felt at once, long enough for the questions to take nearly all of the time.
constexpr qint64 sliceMs = 60;

struct Look {
    QColor background;
    QColor text = Qt::black;
};

std::optional<Look> lookOf(const RehearsedPv& rehearsed) {
    switch (rehearsed.outcome) {
    case RehearsedPv::Outcome::Cancel:
        return rehearsed.hasLetters() ? Look{QColor(0xa0, 0x00, 0x18), Qt::white}
                                      : Look{QColor(0xfb, 0xd5, 0xd5)};
    case RehearsedPv::Outcome::Stop:
        return Look{QColor(0xfb, 0xd5, 0xd5)};
    case RehearsedPv::Outcome::Refuse:
        return Look{QColor(0xff, 0xf1, 0xc2)};
    default:
        return {};
    }
}

QString countText(qsizetype count) {
    return Formata(Dinheiro(count), u"###,##0");
}

} // namespace

Conferencia::Conferencia(QList<ListedPv> pvs, ClosingRehearsal rehearsal, QString pedido, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::Conferencia>()), m_pvs(std::move(pvs)),
      m_rehearsal(std::move(rehearsal)), m_pedido(std::move(pedido)) {
    ui->setupUi(this);
    setUpGrids();
    ui->Detalhe->setFixedHeight(
        detailLines * ui->Detalhe->fontMetrics().lineSpacing() +
        2 * (ui->Detalhe->frameWidth() + static_cast<int>(ui->Detalhe->document()->documentMargin())));
    ui->progresso->setRange(0, static_cast<int>(m_pvs.size()));
    QSizePolicy kept = ui->progresso->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    ui->progresso->setSizePolicy(kept);
    ui->progresso->hide();
    m_slice.setSingleShot(true);
    nameParts(this);
    auto* keyboard = new Teclado(this, [this] { escape(); });
    manual::opensAt(this, u"conferencia"_s);
    keyboard->setKeyFilter([this](const QWidget* control, int key) { return keyInGrid(control, key); });
    connect(&m_slice, &QTimer::timeout, this, [this] { guarded(this, [this] { rehearseSlice(); }); });
    shareKeys();
    onSignal(ui->Grid1, &Grid::cellEntered, this, [this](int, int) { showDetail(); });
    onSignal(ui->Grid1, &Grid::cellDoubleClicked, this, [this](int, int) { goToPv(); });
    onSignal(ui->Filtro, &QComboBox::currentIndexChanged, this, [this](int) { showList(); });
    onSignal(ui->Command1, &QPushButton::clicked, this, [this](bool) { goToPv(); });
    connect(ui->Fechar, &QPushButton::clicked, this, &QDialog::reject);
    fitToScreen(this, size());
}

Conferencia::~Conferencia() = default;

void Conferencia::setUpGrids() {
    ui->Grid1->setMinimumRowTwips(rowTwips);
    ui->Grid1->setFormat(u"PEDIDO|<CLIENTE|>R$ TOTAL|<RESULTADO|<DETALHE"_s);
    for (size_t column = 0; column < listTwips.size(); ++column)
        ui->Grid1->setColumnTwips(static_cast<int>(column), listTwips[column]);
    ui->Grid1->setStretchedColumn(Detalhe);
    ui->Grid1->setHeaderBold();
    ui->Grid1->setColumnKinds({ColumnKind::Text, ColumnKind::Text, ColumnKind::Number});
    offerSaving(ui->Grid1, [] { return u"Conferência - "_s + TextoSQL(clock::today()); });
    ui->botoes->insertWidget(0, summaryLabel(ui->Grid1));
    ui->Totais->setMinimumRowTwips(totalsRowTwips);
    ui->Totais->setFormat(u"<RESULTADO|>PVS|>R$ TOTAL"_s);
    for (size_t column = 0; column < totalsTwips.size(); ++column)
        ui->Totais->setColumnTwips(static_cast<int>(column), totalsTwips[column]);
    ui->Totais->setHeaderBold();
    ui->Totais->setColumnKinds({ColumnKind::Text, ColumnKind::Number, ColumnKind::Number});
    offerSaving(ui->Totais, [] { return u"Totais da conferência - "_s + TextoSQL(clock::today()); });
    ui->Totais->setPreferredRows(totalsRows);
    for (Grid* grid : {ui->Grid1, ui->Totais})
        grid->setEmptyText(u"A conferência ainda não terminou"_s);
}

// Searching and saving are about the list, wherever the focus is; the totals are saved from within them.
void Conferencia::shareKeys() {
    auto* saveTotals = ui->Totais->findChild<QAction*>(u"SalvarGrade"_s);
    saveTotals->setShortcutContext(Qt::WidgetShortcut);
    const QList<QAction*> actions = ui->Totais->actions();
    for (QAction* action : actions)
        if (action->shortcutContext() == Qt::WindowShortcut && !action->isSeparator())
            ui->Totais->removeAction(action);
    auto* saveList = ui->Grid1->findChild<QAction*>(u"SalvarGrade"_s);
    connect(qApp, &QApplication::focusChanged, saveList,
            [totals = ui->Totais, saveList] { saveList->setEnabled(!totals->hasFocus()); });
}

void Conferencia::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous() || !m_rehearsed.isEmpty())
        return;
    m_pointer.emplace();
    ui->Label1->setText(u"Conferindo as pré-vendas; Esc interrompe."_s);
    m_slice.start(0);
}

// Enter in the list goes to the pre-sale instead of the next control.
bool Conferencia::keyInGrid(const QWidget* control, int key) {
    if (control != ui->Grid1 || (key != Qt::Key_Return && key != Qt::Key_Enter))
        return false;
    goToPv();
    return true;
}

void Conferencia::rehearseSlice() {
    const bool answered = guarded(this, [this] {
        QElapsedTimer elapsed;
        elapsed.start();
        while (m_rehearsed.size() < m_pvs.size() && elapsed.elapsed() < sliceMs)
            m_rehearsed.append(m_rehearsal.rehearse(m_pvs[m_rehearsed.size()]));
    });
    if (!answered)
        finish(End::Failed);
    else if (m_rehearsed.size() == m_pvs.size())
        finish(End::Complete);
    else {
        ui->progresso->setValue(static_cast<int>(m_rehearsed.size()));
        ui->progresso->show();
        m_slice.start(0);
    }
}

void Conferencia::finish(End end) {
    m_slice.stop();
    m_pointer.reset();
    ui->progresso->hide();
    showSituation(end);
    for (Grid* grid : {ui->Grid1, ui->Totais})
        grid->setEmptyText(u"Nenhuma pré-venda conferida"_s);
    showTotals();
    showList();
    ui->Grid1->setFocus();
}

void Conferencia::showSituation(End end) {
    const QString partial = u"%1 de %2 pré-vendas conferidas; os totais são só dessas."_s.arg(
        countText(m_rehearsed.size()), countText(m_pvs.size()));
    switch (end) {
    case End::Complete:
        ui->Label1->setText(u"O que o encerramento faria em %1. Nada foi gravado."_s.arg(
            clock::now().toString(u"dd/MM/yyyy, 'às' HH:mm"_s)));
        break;
    case End::Cancelled:
        ui->Label1->setText(u"Conferência interrompida: "_s + partial);
        break;
    case End::Failed:
        ui->Label1->setText(u"Conferência incompleta por causa de um erro: "_s + partial);
        break;
    }
}

void Conferencia::showTotals() {
    const QSignalBlocker blocker(ui->Filtro);
    ui->Totais->setRows(1);
    ui->Filtro->clear();
    ui->Filtro->addItem(u"Todas"_s, -1);
    const auto add = [this](const QString& caption, const auto& contains) {
        qsizetype count = 0;
        Dinheiro sum;
        for (qsizetype i = 0; i < m_rehearsed.size(); ++i)
            if (contains(m_rehearsed[i])) {
                ++count;
                sum += ValorNumerico(m_pvs[i].total);
            }
        if (count > 0)
            ui->Totais->addRow({caption, countText(count), FormataDinheiro(sum)});
        return count > 0;
    };
    add(u"Todas"_s, [](const RehearsedPv&) { return true; });
    for (qsizetype group = 0; group < groups().size(); ++group) {
        const QString caption = groupText(groups()[group]);
        if (add(caption, [group](const RehearsedPv& pv) { return groups()[group].contains(pv); }))
            ui->Filtro->addItem(caption, group);
    }
    ui->Totais->setCurrentCell(1, TotalsGroup);
}

void Conferencia::showList() {
    const QString pedido = m_pedido;
    const int group = ui->Filtro->currentData().toInt();
    ui->Grid1->setRows(1);
    int current = 1;
    {
        const Grid::Fill fill(ui->Grid1);
        for (qsizetype i = 0; i < m_rehearsed.size(); ++i) {
            const RehearsedPv& rehearsed = m_rehearsed[i];
            if (group >= 0 && !groups()[group].contains(rehearsed))
                continue;
            ui->Grid1->addRow({m_pvs[i].pedido, m_pvs[i].cliente, m_pvs[i].total, outcomeText(rehearsed),
                               detailText(m_pvs[i], rehearsed)});
            if (m_pvs[i].pedido == pedido)
                current = ui->Grid1->rows() - 1;
        }
    }
    int row = 0;
    for (const RehearsedPv& rehearsed : m_rehearsed)
        if (group < 0 || groups()[group].contains(rehearsed))
            mark(++row, rehearsed);
    ui->Command1->setEnabled(row > 0);
    ui->Grid1->setCurrentCell(current, Pedido);
    showDetail();
}

void Conferencia::mark(int row, const RehearsedPv& rehearsed) {
    const std::optional<Look> look = lookOf(rehearsed);
    if (!look)
        return;
    ui->Grid1->setBackColor(row, Resultado, look->background);
    ui->Grid1->setForeColor(row, Resultado, look->text);
    ui->Grid1->setBold(row, Resultado, rehearsed.outcome == RehearsedPv::Outcome::Cancel);
}

// The column is rarely wide enough for a whole line.
void Conferencia::showDetail() {
    const int row = ui->Grid1->currentRow();
    ui->Detalhe->setPlainText(row > 0 ? ui->Grid1->text(row, Detalhe) : QString());
    if (row > 0)
        m_pedido = ui->Grid1->text(row, Pedido);
}

void Conferencia::goToPv() {
    if (ui->Grid1->currentRow() == 0)
        return;
    m_chosen = ui->Grid1->text(ui->Grid1->currentRow(), Pedido);
    accept();
}

void Conferencia::escape() {
    if (isRunning())
        finish(End::Cancelled);
    else
        reject();
}

} // namespace tarvessa

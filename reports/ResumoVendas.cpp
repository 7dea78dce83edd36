#include "reports/ResumoVendas.h"

#include "base/Numeros.h"
#include "core/Teclado.h"
#include "ui/BusyLabel.h"
#include "ui/Guard.h"
#include "ui/grid/FitToGrids.h"
#include "ui/grid/Grid.h"
#include "ui_ResumoVendas.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace tarvessa {

namespace {

// Twips, by column.
constexpr std::array<int, 6> larguras = {1750, 4900, 3500, 1405, 1405, 1405};
constexpr int alturaDaLinha = 340;

} // namespace

ResumoVendas::ResumoVendas(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::ResumoVendas>()) {
    ui->setupUi(this);
    m_periodo = std::make_unique<Periodo>(
        ui->DataIni, ui->DataFin,
        Periodo::Mensagens{u"Data inicial inválida. Verifique!!!"_s, u"Data final inválida. Verifique!!!"_s,
                           u"Data inicial superior a final. Verifique!!!"_s});
    m_periodo->mesCorrente();
    BusyLabel::prepare(ui->Label3);
    ui->Command4->setShortcut(Qt::ALT | Qt::Key_G);
    ui->Command4->setToolTip(u"Tecla de atalho: "_s +
                             ui->Command4->shortcut().toString(QKeySequence::NativeText));
    fazAbas();
    FormataGrid();
    QList<Grid*> grades;
    for (const Nivel& nivel : m_niveis)
        grades.append(nivel.TabelaPreco);
    fitToGrids(this, grades, linhasSemRolagem);

    new Teclado(this, [this] { reject(); });
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { Command4_Click(); });
}

ResumoVendas::~ResumoVendas() = default;

void ResumoVendas::fazAbas() {
    for (int n = 1; n <= niveis; ++n) {
        const QString nome = u"Preço %1"_s.arg(n);
        auto* aba = new QWidget;
        auto* pagina = new QVBoxLayout(aba);
        auto* grade = new Grid;
        grade->setObjectName(u"TabelaPreco(%1)"_s.arg(n));
        grade->setAccessibleName(nome);
        grade->setMinimumRowTwips(alturaDaLinha);
        grade->setFormat(u"^CNPJ|<RAZÃO SOCIAL|<FANTASIA|>R$ TOTAL|>R$ DEVOLUÇÃO|>% DEVOLVIDO"_s);
        auto* total = new QLabel;
        total->setObjectName(u"Label4(%1)"_s.arg(n));
        total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        QFont negrito = total->font();
        negrito.setBold(true);
        total->setFont(negrito);
        pagina->addWidget(grade);
        pagina->addWidget(total);
        ui->TabPreco->addTab(aba, nome);
        m_niveis[static_cast<size_t>(n - 1)] = {grade, total};
    }
}

void ResumoVendas::FormataGrid() {
    for (const Nivel& nivel : m_niveis) {
        nivel.TabelaPreco->setRows(1);
        for (size_t coluna = 0; coluna < larguras.size(); ++coluna)
            nivel.TabelaPreco->setColumnTwips(static_cast<int>(coluna), larguras[coluna]);
        nivel.TabelaPreco->setHeaderBold();
        nivel.Label4->setText(u"TOTAL R$ 0,00"_s);
    }
}

// The place of a price level among the tabs. Documents without a customer have no level; they are shown with
// the first, where unknown levels go.
size_t ResumoVendas::nivelDe(const QString& texto3) {
    const qint32 n = ValorInteiro(texto3);
    return n >= 1 && n <= niveis ? static_cast<size_t>(n - 1) : 0;
}

} // namespace tarvessa

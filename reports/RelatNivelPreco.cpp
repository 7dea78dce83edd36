#include "reports/RelatNivelPreco.h"

#include "base/Numeros.h"
#include "core/AcessoDados.h"
#include "core/PrintLayout.h"
#include "core/Teclado.h"
#include "ui/Guard.h"
#include "ui/Manual.h"
#include "ui/MessageBoxes.h"
#include "ui/NameParts.h"
#include "ui/TextBox.h"
#include "ui_RelatNivelPreco.h"

using namespace Qt::StringLiterals;

namespace tarvessa {

RelatNivelPreco::RelatNivelPreco(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::RelatNivelPreco>()) {
    ui->setupUi(this);
    ui->TabelaPreco->setLineEdit(new TextBox);
    ui->TabelaPreco->lineEdit()->setAccessibleName(ui->Label1->text());
    TemRegistro = AbreRS(u"Select Titulom1,Titulom2,Titulom3,Titulom4 from Empresa"_s);
    listaNiveis(rs);
    rs.close();
    new Teclado(this, [this] { reject(); });
    nameParts(this);
    manual::opensAt(this, u"nivel-de-precos"_s);
    onSignal(ui->Command4, &QPushButton::clicked, this, [this](bool) { geraRelatorio(); });
}

RelatNivelPreco::~RelatNivelPreco() = default;

void RelatNivelPreco::listaNiveis(const odbc::ResultSet& empresa) {
    constexpr int levels = 4;
    ui->TabelaPreco->clear();
    for (int n = 1; n <= levels; ++n) {
        const QString number = QString::number(n);
        const QString titulo = NuloVazio(empresa.field(u"Titulom"_s + number));
        if (!titulo.isEmpty())
            ui->TabelaPreco->addItem(number + u" - "_s + titulo.toUpper());
    }
    ui->TabelaPreco->setCurrentIndex(-1);
}

void RelatNivelPreco::geraRelatorio() {
    const qint32 nivel = ValorInteiro(ui->TabelaPreco->currentText());
    if (nivel == 0) {
        boxes::inform(this, u"Obrigatória a seleção de um nível de preço. Verifique!!!"_s);
        ui->TabelaPreco->setFocus();
        ui->TabelaPreco->lineEdit()->selectAll();
        return;
    }
    printLayout(u"RelatNivelPreco.RPT"_s, u"Clientes do nível de preço %1"_s.arg(nivel), {},
                u"SELECT clientes1.`codigo`, clientes1.`nome`, clientes1.`fantasia`, "
                "clientes1.`colunapreco` From `clientes` clientes1 Where clientes1.`colunapreco`="_s +
                    QString::number(nivel) + u" And clientes1.ativocad='S' order By clientes1.`nome` ASC"_s);
}

} // namespace tarvessa

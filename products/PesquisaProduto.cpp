#include "products/PesquisaProduto.h"

#include "base/Operation.h"
#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/FieldText.h"
#include "products/ProductQuery.h"
#include "products/RowHeight.h"
#include "products/SelecionaProd.h"
#include "products/SelecionaProdColumns.h"
#include "ui/BusyPointer.h"
#include "ui/MessageBoxes.h"
#include "ui/TextMeasure.h"
#include "ui/grid/Grid.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace tarvessa {

QString CodigoSelecionado;

namespace {

constexpr QColor purple(0x80, 0x00, 0x80);

void openProducts(const ProductQuery& query) {
    const BusyPointer busy;
    TemRegistro = AbreRS(query.sql);
    if (rs.atEnd() && !query.alternative.isEmpty()) {
        rs.close();
        TemRegistro = AbreRS(query.alternative);
    }
}

struct ProductColumns {
    explicit ProductColumns(const odbc::ResultSet& products)
        : codFabr(products.column(esquema::produtos::codFabr)),
          descricao(products.column(esquema::produtos::descricao)),
          quantidade(products.column(esquema::produtos::quantidade)),
          venda(products.column(esquema::produtos::venda)),
          venda2(products.column(esquema::produtos::venda2)),
          venda3(products.column(esquema::produtos::venda3)),
          venda4(products.column(esquema::produtos::venda4)),
          ultimaAlteracao(products.column(esquema::produtos::ultimaAlteracao)),
          aplicacao(products.column(esquema::produtos::aplicacao)),
          quantidade2(products.column(esquema::produtos::quantidade2)),
          observacao(products.column(esquema::produtos::observacao)),
          unidade(products.column(esquema::produtos::unidade)),
          linhaProd(products.column(esquema::produtos::linhaProd)) {}

    int codFabr, descricao, quantidade, venda, venda2, venda3, venda4, ultimaAlteracao, aplicacao,
        quantidade2, observacao, unidade, linhaProd;
};

void addProduct(Grid* grid, const odbc::ResultSet& products, const ProductColumns& in) {
    constexpr QStringView whole = u"###,###,##0";
    constexpr QStringView quantity = u"###,##0.000";
    grid->addRow({products.textView(in.codFabr), products.textView(in.descricao),
                  maskedText(products.field(in.quantidade), quantity),
                  maskedText(products.field(in.venda), whole), maskedText(products.field(in.venda2), whole),
                  maskedText(products.field(in.venda3), whole), maskedText(products.field(in.venda4), whole),
                  shortDateText(products.field(in.ultimaAlteracao)), products.textView(in.aplicacao),
                  maskedText(products.field(in.quantidade2), quantity), products.textView(in.observacao),
                  products.textView(in.unidade)});
    if (products.field(in.linhaProd).integer() > 0)
        grid->setForeColor(grid->rows() - 1, selecionaprod::Descricao, purple);
}

// Screens are opened from one another; the first of them is the main window.
QFont mainWindowFont(const QWidget* form) {
    if (!form)
        return QApplication::font();
    while (form->parentWidget())
        form = form->parentWidget();
    return form->font();
}

/// Walks the products to their end into the grid; gives the first row whose description starts with the text,
/// 0 for none.
int fill(Grid* grid, odbc::ResultSet& products, const QString& text, TextMeasure printed) {
    const ProductColumns columns(products);
    const bool oneWord = !text.contains(u' ');
    int preselected = 0;
    std::vector<Grid::RowHeight> heights;
    {
        const Grid::Fill filling(grid);
        for (; !products.atEnd(); products.moveNext()) {
            addProduct(grid, products, columns);
            const int row = grid->rows() - 1;
            const QString description = grid->text(row, selecionaprod::Descricao);
            if (oneWord && preselected == 0 && description.startsWith(text))
                preselected = row;
            if (const int height = wrappedRowHeight(printed.twips(description)))
                heights.push_back({row, height});
        }
    }
    grid->setRowHeights(heights);
    return preselected;
}

/// Shows the selection screen over the products; CodigoSelecionado then holds the operator's choice.
void choose(odbc::ResultSet& products, const QString& text, QWidget* form) {
    SelecionaProd screen(form);
    {
        const BusyPointer busy;
        screen.showRow(fill(screen.grid(), products, text, TextMeasure(mainWindowFont(form))));
    }
    screen.exec();
    Operation::renew();
    products.close();
    screen.rethrow();
}

} // namespace

QString PesquisaProduto(QString& texto, QWidget* form) {
    CodigoSelecionado.clear();
    const ProductQuery query = productQuery(texto);
    if (!query.refusal.isEmpty()) {
        boxes::exclaim(form, query.refusal);
        return {};
    }
    openProducts(query);
    if (rs.atEnd()) {
        boxes::exclaim(form, u"Descrição não cadastrada. Verifique!!!"_s);
        rs.close();
        return {};
    }
    CodigoSelecionado = rs.field(esquema::produtos::codFabr).text();
    rs.moveNext();
    if (rs.atEnd()) {
        rs.close();
        return CodigoSelecionado;
    }
    CodigoSelecionado.clear();
    rs.moveFirst();
    choose(rs, texto, form);
    return CodigoSelecionado;
}

} // namespace tarvessa

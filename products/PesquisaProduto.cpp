#include "products/PesquisaProduto.h"

#include "core/AcessoDados.h"
#include "core/Esquema.h"
#include "core/FieldText.h"
#include "products/SelecionaProd.h"
#include "products/TextoPesquisa.h"
#include "ui/BusyPointer.h"
#include "ui/MessageBoxes.h"
#include "ui/TextMeasure.h"
#include "ui/grid/Grid.h"

#include <QApplication>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvessa {

QString CodigoSelecionado;

namespace {

constexpr double larguraDeUmaLinha = 3700;
constexpr int alturaDeUmaLinha = 240;
constexpr QColor roxo(0x80, 0x00, 0x80);

bool abre(const ConsultaProduto& consulta) {
    const BusyPointer ocupado;
    TemRegistro = AbreRS(consulta.sql);
    if (!TemRegistro && !consulta.alternativa.isEmpty()) {
        rs.close();
        TemRegistro = AbreRS(consulta.alternativa);
    }
    return TemRegistro;
}

// Screens are opened from one another; the first of them is the main window.
QFont mainWindowFont(const QWidget* form) {
    if (!form)
        return QApplication::font();
    while (form->parentWidget())
        form = form->parentWidget();
    return form->font();
}

/// Walks rs to its end into the grid; gives the first row whose description starts with the text, 0 for none.
int preenche(Grid* grid, const QString& texto, TextMeasure medida) {
    const int codigo = rs.column(esquema::produtos::codFabr);
    const int descricao = rs.column(esquema::produtos::descricao);
    const int estoque = rs.column(esquema::produtos::quantidade);
    const std::array precos = {rs.column(esquema::produtos::venda), rs.column(esquema::produtos::venda2),
                               rs.column(esquema::produtos::venda3), rs.column(esquema::produtos::venda4)};
    const int alteracao = rs.column(esquema::produtos::ultimaAlteracao);
    const int aplicacao = rs.column(esquema::produtos::aplicacao);
    const int deposito = rs.column(esquema::produtos::quantidade2);
    const int observacao = rs.column(esquema::produtos::observacao);
    const int unidade = rs.column(esquema::produtos::unidade);
    const int linhaProd = rs.column(esquema::produtos::linhaProd);
    constexpr QStringView inteiro = u"###,###,##0";
    constexpr QStringView quantidade = u"###,##0.000";

    const bool umaPalavra = !texto.contains(u' ');
    int preSelecionada = 0;
    std::vector<std::pair<int, int>> alturas;
    {
        const Grid::Fill preenchimento(grid);
        for (; !rs.atEnd(); rs.moveNext()) {
            const QString nome = rs.field(descricao).text();
            grid->addRow({rs.field(codigo).text(), nome, maskedText(rs.field(estoque), quantidade),
                          maskedText(rs.field(precos[0]), inteiro), maskedText(rs.field(precos[1]), inteiro),
                          maskedText(rs.field(precos[2]), inteiro), maskedText(rs.field(precos[3]), inteiro),
                          shortDateText(rs.field(alteracao)), rs.field(aplicacao).text(),
                          maskedText(rs.field(deposito), quantidade), rs.field(observacao).text(),
                          rs.field(unidade).text()});
            const int linha = grid->rows() - 1;
            if (umaPalavra && preSelecionada == 0 && nome.startsWith(texto))
                preSelecionada = linha;
            const double largura = medida.twips(nome);
            if (largura > larguraDeUmaLinha)
                alturas.emplace_back(linha, static_cast<int>(std::nearbyint(
                                                (largura / larguraDeUmaLinha + 1) * alturaDeUmaLinha)));
            if (rs.field(linhaProd).integer() > 0)
                grid->setForeColor(linha, SelecionaProd::Descricao, roxo);
        }
    }
    for (const auto& [linha, altura] : alturas)
        grid->setRowTwips(linha, altura);
    return preSelecionada;
}

} // namespace

QString PesquisaProduto(QString& texto, QWidget* form) {
    CodigoSelecionado.clear();
    const ConsultaProduto consulta = InterpretaTexto(texto);
    if (!consulta.recusa.isEmpty()) {
        boxes::exclaim(form, consulta.recusa);
        return {};
    }
    if (!abre(consulta)) {
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

    SelecionaProd tela(form);
    {
        const BusyPointer ocupado;
        tela.mostraLinha(preenche(tela.grid(), texto, TextMeasure(mainWindowFont(form))));
    }
    tela.exec();
    rs.close();
    tela.confere();
    return CodigoSelecionado;
}

} // namespace tarvessa

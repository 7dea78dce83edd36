#pragma once

#include <QStringView>

/// Value codes of the shop's database, and the names by which the screens read its columns. The statements
/// themselves stand whole where they are sent.
namespace tarvessa::esquema {

// Column names, letter case ignored by the reader

namespace orcamento {
inline constexpr QStringView id = u"id";
inline constexpr QStringView nrPedido = u"nrpedido";
inline constexpr QStringView tipoOperacao = u"TipoOperacao";
inline constexpr QStringView codigoCli = u"codigocli";
inline constexpr QStringView nomeVendedor = u"nomevendedor";
inline constexpr QStringView vendedor = u"Vendedor";
inline constexpr QStringView codigo = u"codigo";
inline constexpr QStringView quantidade = u"quantidade";
inline constexpr QStringView unitario = u"unitario";
inline constexpr QStringView totalPed = u"totalped";
inline constexpr QStringView situacao = u"situacaoorc";
inline constexpr QStringView dataAbertura = u"dataabertura";
inline constexpr QStringView dataBaixa = u"databaixa";
} // namespace orcamento

namespace clientes {
inline constexpr QStringView nome = u"nome";
inline constexpr QStringView fantasia = u"fantasia";
inline constexpr QStringView cidade = u"cidade";
inline constexpr QStringView prazo = u"prazo";
inline constexpr QStringView formaPg = u"formapg";
inline constexpr QStringView colunaPreco = u"colunapreco";
inline constexpr QStringView cnpjCpf = u"CNPJ_CPF";
} // namespace clientes

namespace produtos {
inline constexpr QStringView codFabr = u"CodFabr";
inline constexpr QStringView descricao = u"Descricao";
inline constexpr QStringView aplicacao = u"Aplicacao";
inline constexpr QStringView observacao = u"Observacao";
inline constexpr QStringView venda = u"Venda";
inline constexpr QStringView venda2 = u"Venda2";
inline constexpr QStringView venda3 = u"Venda3";
inline constexpr QStringView venda4 = u"Venda4";
inline constexpr QStringView quantidade = u"Quantidade";
inline constexpr QStringView quantidade2 = u"Quantidade2";
inline constexpr QStringView ultimaAlteracao = u"Ultima_Alteracao";
inline constexpr QStringView unidade = u"Unidade";
inline constexpr QStringView linhaProd = u"LinhaProd";
} // namespace produtos

namespace empresa {
inline constexpr QStringView contadorPv = u"contadorPV";
inline constexpr QStringView ultPedido = u"ultpedido";
inline constexpr QStringView contaCtb1 = u"ContaCTB1";
inline constexpr QStringView pafEcf = u"PAF_ECF";
inline constexpr QStringView reservaAtualizaGridEstoque = u"ReservaAtualizaGridEstoque";
} // namespace empresa

namespace finalizadoras {
inline constexpr QStringView descricao = u"Descricao";
inline constexpr QStringView avista = u"avista";
} // namespace finalizadoras

namespace vendedores {
inline constexpr QStringView comissEsp1 = u"ComissEsp1";
inline constexpr QStringView comissEsp2 = u"ComissEsp2";
} // namespace vendedores

namespace movsaient {
inline constexpr QStringView nrNf = u"nr_nf";
inline constexpr QStringView dataEmissao = u"dataemissao";
inline constexpr QStringView descricao = u"descricao";
inline constexpr QStringView totalVenda = u"totalvenda";
} // namespace movsaient

namespace nfsaida {
inline constexpr QStringView razSoc = u"razsoc";
} // namespace nfsaida

namespace relat {
inline constexpr QStringView codigo1 = u"Codigo1";
inline constexpr QStringView codigo2 = u"Codigo2";
inline constexpr QStringView texto1 = u"Texto1";
inline constexpr QStringView texto2 = u"Texto2";
inline constexpr QStringView texto3 = u"Texto3";
inline constexpr QStringView valor1 = u"Valor1";
inline constexpr QStringView valor2 = u"Valor2";
inline constexpr QStringView valor3 = u"Valor3";
} // namespace relat

namespace fichaTecnica {
inline constexpr QStringView codigo = u"codigo";
inline constexpr QStringView quantidade = u"quantidade";
} // namespace fichaTecnica

// Value codes

/// `orcamento`.`TipoOperacao`
inline constexpr QStringView dav = u"D";
inline constexpr QStringView preVenda = u"P";

/// `orcamento`.`situacaoorc`; any other open document has 'A' or 'C'
inline constexpr QStringView fechado = u"B";
inline constexpr QStringView cancelado = u"X";

/// `Finalizadoras`.`avista`, `produtos`.`ativo`, `clientes`.`ativocad`, `vendedores`.`Ativo`
inline constexpr QStringView sim = u"S";

/// `empresa`.`PAF_ECF`, `empresa`.`ReservaAtualizaGridEstoque`: switched on
inline constexpr QStringView ligado = u"SIM";

/// `clientes`.`formapg`: payment methods the closing knows by name
inline constexpr QStringView dinheiro = u"DINHEIRO";
inline constexpr QStringView cartao = u"CARTÃO";
inline constexpr QStringView cheque = u"CHEQUE";
inline constexpr QStringView boleto = u"BOLETO";
inline constexpr QStringView ticket = u"TICKET";
inline constexpr QStringView outros = u"OUTROS";
inline constexpr QStringView nenhumaForma = u"(Nenhuma)";

/// `empresa`.`ContaCTB1`: what an account that the setting does not provide counts as
inline constexpr QStringView contaAusente = u"00.000";

/// `relat2`.`Texto3` in the commission run; every other line is neither
inline constexpr QStringView classePao = u"PÃO";
inline constexpr QStringView classeDevolucao = u"***DEVOLUÇÃO";

/// First characters of `orcamento`.`codigo` on a line that is a note and no product
inline constexpr QStringView notaDoPedido = u"***";

} // namespace tarvessa::esquema

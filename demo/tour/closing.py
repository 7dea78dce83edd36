"""The panel's part of the tour: from the DAVs to the closed pre-sales."""

import os
from decimal import Decimal

from driver import Table, TourError, wait_for

PANEL = "Ormelind DAV/PV/NFE"

# Columns of the panel's grid
PEDIDO, TIPO, CLIENTE, VENDEDOR, CIDADE, TOTAL, DIAS, FORMA, TABELA, SELECAO, CODIGO = range(11)


# Of the window that rehearses a batch
RESULTADO = 3

# The buttons' keys, which their tool tips tell
KEYS = {"Tranformar os DAV´s em PV´s": "alt+t", "Carregar as Pré-Vendas": "alt+c",
        "Analisa tabela de preço das PRÉ-VENDAS": "alt+a", "Define os preços promocionais para os clientes": "alt+d",
        "Encerrar as Pré-Vendas": "alt+e"}


class Panel:
    def __init__(self, program):
        self.program = program
        self.window = program.window(PANEL)
        self.grid = Table(program, program.find("table", "Documentos", self.window))

    def button(self, caption):
        return self.program.find("push button", caption, self.window)

    def press(self, caption):
        button = self.button(caption)
        if not self.program.enabled(button):
            raise TourError(f"o botão «{caption}» está desligado")
        self.program.keys(KEYS[caption])


def expect(what, shown, right):
    if shown != right:
        raise TourError(f"{what}: {shown!r} em vez de {right!r}")


def in_period(kind):
    return (f"TipoOperacao='{kind}' and situacaoorc in ('A','C') "
            "and dataabertura >= CURDATE() - INTERVAL 7 DAY")


def list_davs(program, database):
    panel = Panel(program)
    listed = sorted(panel.grid.column(PEDIDO))
    stored = sorted(r[0] for r in database.rows(f"select distinct nrpedido from orcamento where {in_period('D')}"))
    expect("os DAVs listados", listed, stored)
    program.picture("davs", "o painel ao abrir: os DAVs dos últimos sete dias, todos selecionados", manual="davs")
    return panel


def convert_davs(program, database, panel):
    davs = [int(n) for n in panel.grid.column(PEDIDO)]
    first = int(database.value("select contadorPV from empresa")) + 1
    lines = {n: database.rows(f"select id from orcamento where nrpedido={n} and TipoOperacao='D' order by id")
             for n in davs}
    panel.press("Tranformar os DAV´s em PV´s")
    wait_for("a grade vazia", lambda: panel.grid.rows() == 0)
    program.picture("convertidos", "depois da conversão: a grade vazia, e só a carga das pré-vendas leva adiante")
    for place, number in enumerate(davs):
        expect(f"as linhas do DAV {number}",
               database.rows(f"select id from orcamento where nrpedido={first + place} and TipoOperacao='P' "
                             "order by id"), lines[number])
    panel.press("Carregar as Pré-Vendas")
    wait_for("as pré-vendas", lambda: panel.grid.rows() > 0)
    expect("as pré-vendas listadas", sorted(panel.grid.column(PEDIDO)), sorted(
        r[0] for r in database.rows(f"select distinct nrpedido from orcamento where {in_period('P')}")))
    program.picture("pre-vendas", "as pré-vendas, com prazo, forma de pagamento e tabela de preço de cada cliente",
                    manual="painel")


def row_of(panel, number):
    return panel.grid.column(PEDIDO).index(str(number))


def find_and_mark(program, panel):
    """Ctrl+F goes to a customer; Shift and the arrows mark rows, of which the status bar tells the sum."""
    customers = panel.grid.column(CLIENTE)
    panel.grid.go_to(0, TOTAL)
    program.keys("ctrl+f")
    program.type("mercado")
    hits = sum("MERCADO" in name for name in customers)
    program.find("label", f"1 de {hits}", panel.window)
    program.picture("localizar", "a linha de busca, com Ctrl+F: as ocorrências ficam coloridas", manual="localizar")
    program.keys("Escape")
    panel.grid.go_to(0, TOTAL)
    marked = 5
    program.keys(*["shift+Down"] * (marked - 1))
    total = sum(Decimal(panel.grid.text(row, TOTAL).replace(".", "").replace(",", ".")) for row in range(marked))
    shown = f"{total:,.2f}".translate(str.maketrans(",.", ".,"))
    told = f"{marked} linhas marcadas · R$ TOTAL: {marked} valores, soma {shown}"
    wait_for(told, lambda: any(told in text for text in program.labels(panel.window)))
    program.picture("marcadas", "linhas marcadas com Shift e as setas; a barra de baixo soma a coluna",
                    manual="marcadas")
    program.keys("Up")


def edit_term(program, database, panel):
    """A refused method gets its term: 10307 pays by BOLETO with no days."""
    row = row_of(panel, 10307)
    customer = panel.grid.text(row, CODIGO)
    expect("o prazo antes", panel.grid.text(row, DIAS), "0")
    panel.grid.press(row, DIAS)
    program.type("21")
    program.picture("prazo", "o prazo do cliente da PV 10307 em edição na própria célula", manual="edicao")
    program.keys("Return")
    wait_for("o prazo novo", lambda: panel.grid.text(row, DIAS) == "21")
    expect("o cadastro do cliente",
           database.rows(f"select prazo, formapg from clientes where codigo='{customer}'"), [["21", "BOLETO"]])


def view_order(program, panel):
    """F3 shows the order of the current row; Escape leaves the panel as it was."""
    row = row_of(panel, 10302)
    panel.grid.go_to(row, CLIENTE)
    program.keys("F3")
    wait_for("o pedido", lambda: len(program.windows()) > 1)
    program.picture("visualizacao", "a PV 10302 por inteiro, com F3 na linha", manual="visualizacao")
    program.keys("Escape")
    wait_for("o fim da visualização", lambda: len(program.windows()) == 1)


def correct_prices(program, database, panel):
    panel.press("Analisa tabela de preço das PRÉ-VENDAS")
    box, text = program.message()
    expect("a pergunta", text, "Deseja realmente o processo desta função?")
    program.picture("pergunta", "a pergunta antes da análise de preços", manual="pergunta")
    program.answer(box, "Sim")
    box, text = program.message()
    if not text.startswith("PEDIDOS COM PREÇOS CORRIGIDOS:"):
        raise TourError(f"a análise de preços respondeu {text!r}")
    program.picture("precos", "as pré-vendas em que a análise corrigiu preços", manual="precos-corrigidos")
    program.answer(box, "OK")
    wrong = database.rows(
        "select o.id from orcamento o join clientes c on c.codigo=o.codigocli join produtos p on p.codfabr=o.codigo "
        f"where {in_period('P')} and c.colunapreco between 1 and 4 and "
        "elt(c.colunapreco, p.Venda, p.Venda2, p.Venda3, p.Venda4) <> 0 and "
        "o.unitario <> elt(c.colunapreco, p.Venda, p.Venda2, p.Venda3, p.Venda4)")
    expect("linhas ainda fora da tabela", wrong, [])
    wait_for("as pré-vendas", lambda: panel.grid.rows() > 0)


def leave_one_open(program, panel):
    """Unselects 10301, which would close."""
    row = row_of(panel, 10301)
    panel.grid.press(row, SELECAO)
    wait_for("a linha desmarcada", lambda: panel.grid.text(row, SELECAO) == "Não selecionado")
    program.picture("desmarcada", "a PV 10301 desmarcada; o total da seleção acompanha")
    return 10301


def rehearse(program, panel):
    """F6 shows what the batch would do; gives the outcome of each listed pre-sale."""
    program.keys("F6")
    window = program.window("Conferência")
    rows = Table(program, program.find("table", "Conferência", window))
    wait_for("todas as pré-vendas conferidas", lambda: rows.rows() == panel.grid.rows())
    outcomes = dict(zip(rows.column(0), rows.column(RESULTADO)))
    program.picture("conferencia", "a conferência, com F6: o que o encerramento faria com cada pré-venda",
                    manual="conferencia")
    program.keys("Escape")
    wait_for("o fim da conferência", lambda: not program.has_window("Conferência"))
    return outcomes


def close_presales(program, database, panel, left, folder, outcomes):
    listed = {panel.grid.text(r, PEDIDO): panel.grid.text(r, TOTAL) for r in range(panel.grid.rows())}
    persons = {r[0] for r in database.rows(
        f"select distinct o.nrpedido from orcamento o join clientes c on c.codigo=o.codigocli where "
        f"{in_period('P')} and length(regexp_replace(ifnull(c.CNPJ_CPF,''),'[^0-9]','')) < 12")}
    panel.press("Encerrar as Pré-Vendas")
    box, text = program.message()
    expect("o aviso", text, "Lembrando que os pedidos de cliente com CPF serão cancelados.")
    program.picture("aviso", "o aviso antes do encerramento", manual="aviso")
    program.answer(box, "OK")
    box, text = program.message()
    expect("a mensagem final", text, "Processo encerrado com alguns pedidos com erro de processamento. Na sequência "
           "será aberto um arquivo com as mensagens de erros.")
    program.picture("encerrado", "a mensagem ao fim do encerramento, com recusas", manual="encerrado")
    program.answer(box, "OK")
    viewer = program.window("LogFechamento.txt")
    program.picture("log", "o log do encerramento, aberto ao fim", manual="log")
    program.keys("Escape")
    wait_for("o fim do visor", lambda: not program.has_window("LogFechamento.txt"))
    del viewer

    with open(os.path.join(folder, "LogFechamento.txt"), encoding="utf-8", newline="") as file:
        log = file.read()
    print(f"\nLogFechamento.txt\n{log}", flush=True)
    lines = log.split("\r\n")
    expect("o início do log", lines[:3], ["LOG DE FECHAMENTO:", "------------------", ""])
    refused = {str(int(line.split()[1])) for line in lines[3:] if line}
    if not persons <= refused:
        raise TourError("o log não traz todas as pré-vendas canceladas")
    check_rows(database, listed, persons, refused, left)
    expect("as canceladas da conferência", {n for n, told in outcomes.items() if told.startswith("CANCELADA")}, persons)
    expect("as recusadas da conferência", {n for n, told in outcomes.items() if told == "recusada"}, refused - persons)
    wait_for("a lista nova", lambda: panel.grid.rows() == len(refused - persons) + 1)
    program.picture("restantes", "depois do encerramento: só as recusadas e a desmarcada ficam na grade",
                    manual="restantes")


def check_rows(database, listed, persons, refused, left):
    """Every listed pre-sale is in the state that its outcome asks for, with the rows that go with it."""
    for number, total in listed.items():
        states = {r[0] for r in database.rows(
            f"select situacaoorc from orcamento where nrpedido={number} and TipoOperacao='P'")}
        money = total.replace(".", "").replace(",", ".")
        receivable = database.rows(f"select Valor from areceber where Nr_Pedido={number}")
        cash = database.rows(f"select Valor from caixa where CodigoLanc='PED:{int(number):07,}'".replace(",", "."))
        if number in persons:
            expect(f"a situação da PV {number}", states, {"X"})
        elif number in refused or int(number) == left:
            expect(f"a situação da PV {number}", bool(states & {"B", "X"}), False)
        else:
            expect(f"a situação da PV {number}", states, {"B"})
            expect(f"o recebimento da PV {number}", receivable, [[money]])
            expect(f"o caixa da PV {number}", cash, [[money]])
            continue
        expect(f"lançamentos da PV {number}", receivable + cash, [])
    database.show("Contas a receber", "select Nr_Pedido, NomeCli, Emissao, Vencto, Valor, DataBaixa, ValorPago, "
                  "SitBaixa, TipoPag, TipoCartao, CodigoVend, ContaCTB from areceber")
    database.show("Caixa", "select cd_cta, DataCx, Historico, Valor, Finaliza1, CodigoLanc, USUARIO from caixa")
    database.show("Estoque", "select tela, codproduto, qtdLoja, data, hora, usuario from logestoque")
    moved = database.value("select count(*) from logestoque")
    expect("movimentos de estoque sem produto", database.value(
        "select count(*) from logestoque where codproduto like '***%'"), "0")
    if moved == "0":
        raise TourError("nenhum produto saiu do estoque")

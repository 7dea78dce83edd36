"""The products' part of the tour: a search with several answers, and a promotional price for two orders."""

import unicodedata

from closing import expect, in_period
from driver import Table, wait_for

PROMOTION = " Atualiza preço nos pedidos"
SELECTION = " Seleciona Produtos"

# Columns of the promotion's grid
ID, TICK = 0, 6


def promote(program, database, panel):
    code, description = database.rows(
        "select o.codigo, p.descricao from orcamento o join produtos p on p.codfabr=o.codigo "
        "where o.TipoOperacao='P' and o.situacaoorc in ('A','C') and p.ativo='S' "
        "and (select count(*) from produtos q where q.ativo='S' and "
        "q.descricao like concat('%', substring_index(p.descricao,' ',1), '%')) > 3 "
        "group by o.codigo having count(*) >= 3 order by count(*) desc, o.codigo limit 1")[0]
    panel.press("Define os preços promocionais para os clientes")
    screen = program.window(PROMOTION)
    program.go_to(program.find("text", "CÓDIGO/DESCRIÇÃO", screen))
    # Accents do not matter to the search, and the display's keyboard has none.
    program.type(unicodedata.normalize("NFD", description.split()[0]).encode("ascii", "ignore").decode())
    program.keys("Return")
    choose(program, code)
    lines = Table(program, program.find("table", None, screen))
    wait_for("as linhas do produto", lambda: lines.rows() > 1)
    expect("as linhas listadas", sorted(lines.column(ID), key=int), [r[0] for r in database.rows(
        f"select id from orcamento where codigo='{code}' and TipoOperacao='P' and situacaoorc in ('A','C') "
        "order by id")])
    chosen = [lines.text(row, ID) for row in (0, 1)]
    price = program.find("text", "R$ VENDA DESEJADA", screen)
    program.go_to(price)
    program.type("12.5")
    # Before the ticks: the way from the grid to the price leads past the product, whose search empties the grid.
    for row in (0, 1):
        lines.press(row, TICK)
    expect("o preço ao sair da caixa", program.text(price), "12,50")
    program.picture("promocao", f"o preço promocional de {description} para duas das linhas em aberto",
                    manual="promocao")
    program.keys("alt+g")
    box, text = program.message()
    expect("a pergunta", text, "Deseja realmente realizar esse processo?")
    program.answer(box, "Sim")
    wait_for("o fim da tela", lambda: not program.has_window(PROMOTION))
    stored = database.rows(f"select id, unitario, totalped = round(quantidade*12.5,2) from orcamento "
                           f"where id in ({','.join(chosen)}) order by id")
    expect("os preços gravados", stored, [[i, "12.50", "1"] for i in sorted(chosen, key=int)])
    expect("outras linhas com o preço", database.value(
        f"select count(*) from orcamento where codigo='{code}' and unitario=12.5 and id not in ({','.join(chosen)}) "
        f"and {in_period('P')}"), "0")


def choose(program, code):
    """Goes down to the product of this code on the selection screen and takes it."""
    screen = program.window(SELECTION)
    products = Table(program, program.find("table", None, screen))
    wait_for(f"o produto {code}", lambda: code in products.column(0))
    codes = products.column(0)
    program.picture("selecao-de-produtos", "vários produtos servem: um se escolhe com Enter ou um clique",
                    manual="selecao-de-produtos")
    program.keys("Home", "Control_L+Home")
    program.keys(*["Down"] * codes.index(code))
    program.keys("Return")
    wait_for("o fim da seleção", lambda: not program.has_window(SELECTION))

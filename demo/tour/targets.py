"""The targets' part of the tour: a new target, the progress of all, and its report."""

from driver import Table, TourError, wait_for
from reports import leave, save_pdf

TARGETS = " Metas de vendas"

# Columns of the list of targets and of the progress board
CODE, QUANTITY = 0, 2


def targets(program, database, pictures):
    seller, name = database.rows(
        "select codigovend, vendedor from vendedores where Ativo='S' order by vendedor limit 1")[0]
    product = database.value(
        "select p.codfabr from produtos p where p.ativo='S' and length(p.codfabr)=13 and p.codfabr not in "
        f"(select CodigoProduto from metavendedoritem where CodVendedor={seller}) order by p.codfabr limit 1")
    program.keys("alt+m")
    screen = program.window(TARGETS)
    program.keys("Down")
    program.keys("Return")
    program.type(product)
    program.keys("Return")
    program.type("150")
    program.keys("alt+a")
    wait_for("a meta gravada", lambda: database.rows(
        f"select Quantidade from metavendedoritem where CodVendedor={seller} and CodigoProduto='{product}'"))
    stored = database.value(
        f"select Quantidade from metavendedoritem where CodVendedor={seller} and CodigoProduto='{product}'")
    if stored != "150.000":
        raise TourError(f"a meta de {name} ficou com {stored}")
    program.picture("metas-configura", f"as metas de {name}, com a que se acrescentou", manual="metas-configura")
    program.keys("ctrl+Tab")
    program.keys("alt+g")
    board = Table(program, program.find("table", "Andamento das metas", screen))
    wait_for("o andamento", lambda: board.rows() > 0)
    program.picture("metas-consulta", "quanto das metas foi atingido no mês", manual="metas-consulta")
    program.keys("alt+i")
    save_pdf(program, pictures, "relatorio-metas", name, "PERÍODO DE ")
    leave(program, TARGETS)

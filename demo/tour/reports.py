"""The reports' part of the tour: each screen run, each report looked at and saved as a PDF."""

import os
import subprocess

from driver import Table, TourError, wait_for

PREVIEW = "visualização"


MENU = ["Resumo de Vendas", "Relação alfabética de Nível de Preços", "Comissão"]


def open_from_menu(program, item):
    program.keys("alt+r")
    program.find("menu item", item)
    program.keys(*["Down"] * MENU.index(item), "Return")


def save_pdf(program, pictures, name, *texts):
    """Saves the report on the screen as a PDF, turns its pages into pictures and looks for texts in it."""
    window = program.window(PREVIEW)
    program.picture(f"{name}-na-tela", "o relatório na tela, como sairá no papel",
                    manual="relatorio" if name == "relatorio-comissao" else None)
    path = os.path.join(pictures, f"{name}.pdf")
    program.keys("ctrl+s")
    dialog = program.window("Salvar como PDF")
    program.keys("ctrl+a")
    program.type(path)
    program.keys("Return")
    wait_for("o fim da gravação", lambda: not program.has_window("Salvar como PDF"))
    wait_for(path, lambda: os.path.exists(path) and os.path.getsize(path) > 0)
    del dialog
    subprocess.run(["pdftoppm", "-png", "-r", "80", path, os.path.join(pictures, f"{name}-pagina")], check=True)
    print(f"{path}\n    o relatório em PDF; as páginas em {name}-pagina-*.png", flush=True)
    content = subprocess.run(["pdftotext", "-layout", path, "-"], check=True, capture_output=True, text=True).stdout
    for text in texts:
        if text not in content:
            raise TourError(f"o relatório {name} não traz {text!r}")
    program.keys("Escape")
    wait_for("o fim da visualização", lambda: not any(w == window for w in program.windows()))


def sales_summary(program):
    open_from_menu(program, "Resumo de Vendas")
    screen = program.window(" Resumo de Vendas")
    program.keys("alt+g")
    customers = Table(program, program.find("table", None, screen))
    wait_for("os clientes", lambda: customers.rows() > 0)
    program.picture("resumo-de-vendas", "o resumo de vendas por cliente, uma aba por nível de preço",
                    manual="resumo-de-vendas")
    leave(program, " Resumo de Vendas")


def commission(program, pictures):
    open_from_menu(program, "Comissão")
    screen = program.window(" Comissão dos Vendedores")
    program.keys("alt+g")
    sellers = Table(program, program.find("table", None, screen))
    wait_for("os vendedores", lambda: sellers.rows() > 0)
    program.picture("comissao", "a comissão de cada vendedor no mês anterior", manual="comissao")
    name = sellers.text(1, 1)
    program.keys("alt+i")
    save_pdf(program, pictures, "relatorio-comissao", name, "PERÍODO DE ")
    sellers.press(1, 12)
    program.window(" Extrato do Vendedor")
    program.picture("extrato-do-vendedor", "o extrato de um vendedor, nota por nota", manual="extrato-do-vendedor")
    program.keys("alt+i")
    save_pdf(program, pictures, "relatorio-extrato", name, "PERÍODO DE ")
    leave(program, " Extrato do Vendedor")
    leave(program, " Comissão dos Vendedores")


def price_levels(program, database, pictures):
    open_from_menu(program, "Relação alfabética de Nível de Preços")
    program.window(" Relatório de Nível de Preços")
    program.keys("Down")
    program.picture("nivel-de-precos", "a escolha do nível de preço", manual="nivel-de-precos")
    program.keys("alt+g")
    level = database.rows("select nome from clientes where colunapreco=1 and ativocad='S' order by nome limit 1")
    save_pdf(program, pictures, "relatorio-nivel", level[0][0])
    leave(program, " Relatório de Nível de Preços")


def leave(program, title):
    program.keys("Escape")
    wait_for("o fim da tela", lambda: not program.has_window(title))

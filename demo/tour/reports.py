"""The reports' part of the tour: each screen run, each report looked at and saved as a PDF."""

import os
import subprocess

from driver import Table, TourError, wait_for

PREVIEW = "visualização"


def open_from_menu(program, panel, item):
    program.click(program.find("menu item", "Relatório", panel.window))
    program.click(program.find("menu item", item))


def save_pdf(program, pictures, name, *texts):
    """Saves the report on the screen as a PDF, turns its pages into pictures and looks for texts in it."""
    window = program.window(PREVIEW)
    program.picture(f"{name}-na-tela", "o relatório na tela, como sairá no papel")
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


def sales_summary(program, panel):
    open_from_menu(program, panel, "Resumo de Vendas")
    screen = program.window(" Resumo de Vendas")
    program.click(program.find("push button", "Gera Relatório", screen))
    customers = Table(program, program.find("table", None, screen))
    wait_for("os clientes", lambda: customers.rows() > 0)
    program.picture("resumo-de-vendas", "o resumo de vendas por cliente, uma aba por nível de preço")
    leave(program, " Resumo de Vendas")


def commission(program, panel, pictures):
    open_from_menu(program, panel, "Comissão")
    screen = program.window(" Comissão dos Vendedores")
    program.click(program.find("push button", "Gerar Relatório", screen))
    sellers = Table(program, program.find("table", None, screen))
    wait_for("os vendedores", lambda: sellers.rows() > 0)
    program.picture("comissao", "a comissão de cada vendedor no mês anterior")
    name = sellers.text(1, 1)
    program.click(program.find("push button", "Imprime", screen))
    save_pdf(program, pictures, "relatorio-comissao", name, "PERÍODO DE ")
    sellers.click(1, 12)
    statement = program.window(" Extrato do Vendedor")
    program.picture("extrato-do-vendedor", "o extrato de um vendedor, nota por nota")
    program.click(program.find("push button", "Imprime", statement))
    save_pdf(program, pictures, "relatorio-extrato", name, "PERÍODO DE ")
    leave(program, " Extrato do Vendedor")
    leave(program, " Comissão dos Vendedores")


def price_levels(program, database, panel, pictures):
    open_from_menu(program, panel, "Relação alfabética de Nível de Preços")
    screen = program.window(" Relatório de Nível de Preços")
    program.keys("Down")
    program.picture("nivel-de-precos", "a escolha do nível de preço")
    program.click(program.find("push button", "Gerar Relatório", screen))
    level = database.rows("select nome from clientes where colunapreco=1 and ativocad='S' order by nome limit 1")
    save_pdf(program, pictures, "relatorio-nivel", level[0][0])
    leave(program, " Relatório de Nível de Preços")


def leave(program, title):
    program.keys("Escape")
    wait_for("o fim da tela", lambda: not program.has_window(title))

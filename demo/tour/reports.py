"""The reports' part of the tour: each screen run, each report looked at and saved as a PDF."""

import os
import subprocess
from decimal import Decimal

import openpyxl

from driver import Table, TourError, wait_for

PREVIEW = "visualização"
PRINTING = "Imprimir"
PRINTED_FILE = "Arquivo de saída:"

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
    name_file(program, "Salvar como PDF", path)
    check_pages(pictures, name, path, *texts)
    program.keys("Escape")
    wait_for("o fim da visualização", lambda: not any(w == window for w in program.windows()))


def name_file(program, title, path):
    """Answers the question for a file and waits until it is written."""
    program.window(title)
    program.keys("ctrl+a")
    program.type(path)
    program.keys("Return")
    wait_for("o fim da gravação", lambda: not program.has_window(title))
    wait_for(path, lambda: os.path.exists(path) and os.path.getsize(path) > 0)


def print_paper(program, pictures, name, *texts):
    """Prints the report on the screen; the file that the dialog prints to where there is no printer is the paper."""
    program.window(PREVIEW)
    path = os.path.join(pictures, f"{name}.pdf")
    program.keys("ctrl+p")
    dialog = program.window(PRINTING)
    program.picture(f"{name}-imprimir", "a escolha da impressora e das páginas")
    program.go_to(program.find("text", PRINTED_FILE, dialog))
    program.keys("ctrl+a")
    program.type(path)
    program.keys("Return")
    wait_for("o fim da impressão", lambda: not program.has_window(PRINTING))
    wait_for(path, lambda: os.path.exists(path) and os.path.getsize(path) > 0)
    check_pages(pictures, name, path, *texts)


def check_pages(pictures, name, path, *texts):
    """Turns a PDF's pages into pictures and looks for texts in it."""
    subprocess.run(["pdftoppm", "-png", "-r", "80", path, os.path.join(pictures, f"{name}-pagina")], check=True)
    print(f"{path}\n    o relatório em PDF; as páginas em {name}-pagina-*.png", flush=True)
    content = subprocess.run(["pdftotext", "-layout", path, "-"], check=True, capture_output=True, text=True).stdout
    for text in texts:
        if text not in content:
            raise TourError(f"o relatório {name} não traz {text!r}")


def sales_summary(program, pictures):
    open_from_menu(program, "Resumo de Vendas")
    screen = program.window(" Resumo de Vendas")
    program.keys("alt+g")
    customers = Table(program, program.find("table", None, screen))
    wait_for("os clientes", lambda: customers.rows() > 0)
    program.picture("resumo-de-vendas", "o resumo de vendas por cliente, uma aba por nível de preço",
                    manual="resumo-de-vendas")
    save_sheet(program, customers, os.path.join(pictures, "resumo-de-vendas.xlsx"))
    leave(program, " Resumo de Vendas")


def save_sheet(program, grid, path):
    """Saves the grid as a spreadsheet, which must show the same rows to another program."""
    program.keys("ctrl+s")
    name_file(program, "Salvar grade", path)
    box, text = program.message()
    if path not in text:
        raise TourError(f"a gravação da grade respondeu {text!r}")
    program.answer(box, "OK")
    rows = list(openpyxl.load_workbook(path).worksheets[0].iter_rows(min_row=2, values_only=True))
    shown = [[value(grid.text(row, column)) for column in range(len(rows[0]))] for row in range(grid.rows())]
    stored = [[Decimal(str(cell)) if isinstance(cell, (int, float)) else cell or "" for cell in row] for row in rows]
    if stored != shown:
        raise TourError(f"a planilha traz {stored} em vez de {shown}")
    print(f"{path}\n    a grade como planilha, com {len(rows)} linhas", flush=True)


def value(text):
    """A cell's text as a spreadsheet has it: what has a comma between digits is a number."""
    number = text.replace(".", "").replace(",", ".")
    return Decimal(number) if "," in text and number.lstrip("-").replace(".", "").isdigit() else text


def commission(program, pictures):
    open_from_menu(program, "Comissão")
    screen = program.window(" Comissão dos Vendedores")
    program.keys("alt+g")
    sellers = Table(program, program.find("table", None, screen))
    wait_for("os vendedores", lambda: sellers.rows() > 0)
    program.picture("comissao", "a comissão de cada vendedor no mês anterior", manual="comissao")
    name = sellers.text(1, 1)
    program.keys("alt+i")
    print_paper(program, pictures, "papel-comissao", name, "PERÍODO DE ")
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

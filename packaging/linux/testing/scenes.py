"""What an operator does with the installed program, and what the screen must then show."""

import os
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "..", "demo", "tour"))

from closing import PANEL, Panel, convert_davs, correct_prices, expect, list_davs  # noqa: E402
from database import Database  # noqa: E402
from driver import Program, TourError, wait_for  # noqa: E402
from reports import open_from_menu  # noqa: E402

NO_CONNECTION = "Não foi possível conectar ao banco de dados. Verifique!!!"
REPORT = "Erro de execução"


class ShopDatabase(Database):
    """The shop's database as its own user sees it, over the network."""

    def __init__(self):
        self._command = ["mariadb", "--no-defaults", "--host=127.0.0.1", "--user=tarvessa",
                         "--password=segredo", "--default-character-set=utf8mb4", "tarvessa"]


def expect_end(program):
    try:
        expect("o código de saída", program.wait_end(), 0)
    except subprocess.TimeoutExpired as late:
        raise TourError("o programa não terminou") from late


def end_with_escape(program):
    program.keys("Escape")
    expect_end(program)


def listing(program, database):
    """The sample on the screen, and the log of the price check in the program's folder."""
    panel = list_davs(program, database)
    convert_davs(program, database, panel)
    correct_prices(program, database, panel)
    end_with_escape(program)


def price_check(program, database):
    correct_prices(program, database, Panel(program))
    end_with_escape(program)


def error_report(program, beginning):
    """Answers the error report, which must begin so after its number."""
    box, text = program.message(REPORT)
    if beginning not in text:
        raise TourError(f"o aviso de erro diz {text!r}, não {beginning!r}")
    program.picture("erro", text)
    program.answer(box, "OK")


def log_not_writable(program, database):
    panel = Panel(program)
    panel.press("Analisa tabela de preço das PRÉ-VENDAS")
    box, _ = program.message()
    program.answer(box, "Sim")
    error_report(program, "Não foi possível gravar o arquivo /opt/tarvessa/LogTarvessa.log")
    box, _ = program.message()
    program.answer(box, "OK")
    wait_for("as pré-vendas", lambda: panel.grid.rows() > 0)
    end_with_escape(program)


def no_layouts(program, database):
    panel = Panel(program)
    open_from_menu(program, "Relação alfabética de Nível de Preços")
    program.window(" Relatório de Nível de Preços")
    program.keys("Down", "alt+g")
    error_report(program, "O layout de relatório não foi encontrado: /opt/tarvessa/rpt/RelatNivelPreco.RPT")
    program.keys("Escape")
    wait_for("o painel", lambda: len(program.windows()) == 1)
    end_with_escape(program)


def no_connection(program, database):
    """One message and the end, with no panel at any time."""
    box, text = program.message()
    expect("a mensagem", text, NO_CONNECTION)
    expect("as janelas", len(program.windows()), 1)
    program.picture("sem-conexao", text)
    program.press(program.find("push button", "OK", box))
    expect_end(program)


def no_rights(program, database):
    error_report(program, "semdireitos")
    program.window(PANEL)
    end_with_escape(program)


def panel_opens(program, database):
    expect("o painel", bool(program.window(PANEL)), True)
    expect("há documentos", Panel(program).grid.rows() > 0, True)
    program.picture("painel", "o painel")
    end_with_escape(program)


SCENES = {
    "listing": listing,
    "price check": price_check,
    "log not writable": log_not_writable,
    "no layouts": no_layouts,
    "no data source": no_connection,
    "wrong password": no_connection,
    "no server": no_connection,
    "computer refused": no_connection,
    "no driver": no_connection,
    "no rights": no_rights,
    "other authority": no_connection,
    "not encrypted": no_connection,
    "own data source": panel_opens,
    "second server": panel_opens,
    "encrypted": panel_opens,
}


class InstalledProgram(Program):
    """The program in the tree; its pictures carry the operator and the scene."""

    def __init__(self, scene, pictures):
        super().__init__(os.path.join(HERE, "in-tree"), pictures)
        self._scene = f"{os.environ['OPERATOR']}-{scene}".replace(" ", "-")

    def picture(self, name, what, manual=None):
        super().picture(f"{self._scene}-{name}", what, manual)


def main(scene, pictures):
    program = InstalledProgram(scene, pictures)
    try:
        SCENES[scene](program, ShopDatabase())
    except TourError:
        program.picture("parou", "onde parou")
        raise
    finally:
        program.kill()


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except TourError as error:
        sys.exit(f"{sys.argv[1]}: {error}")

"""The guided tour: a working day by keyboard alone on the sample data; checks what the database shows."""

import os
import shutil
import sys

from closing import (close_presales, convert_davs, correct_prices, edit_term, find_and_mark, leave_one_open,
                     list_davs, rehearse, view_order)
from database import Database
from driver import Program, TourError
from products import promote
from reports import commission, price_levels, sales_summary
from targets import targets


def main(binary, socket, pictures):
    shutil.rmtree(pictures, ignore_errors=True)
    os.makedirs(pictures)
    database = Database(socket)
    program = Program(binary, pictures)
    try:
        panel = list_davs(program, database)
        convert_davs(program, database, panel)
        find_and_mark(program, panel)
        edit_term(program, database, panel)
        view_order(program, panel)
        correct_prices(program, database, panel)
        promote(program, database, panel)
        left = leave_one_open(program, panel)
        outcomes = rehearse(program, panel)
        close_presales(program, database, panel, left, os.path.dirname(binary), outcomes)
        sales_summary(program, pictures)
        commission(program, pictures)
        price_levels(program, database, pictures)
        targets(program, database, pictures)
        program.keys("Escape")
        if program.wait_end() != 0:
            raise TourError("o programa não terminou em ordem com Escape")
    finally:
        program.kill()
    print("\nO passeio terminou: o banco de dados mostra o que devia.")


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except TourError as error:
        sys.exit(f"O passeio parou: {error}")

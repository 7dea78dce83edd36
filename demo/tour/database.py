"""Reads the sample database, apart from the program, to see what the program wrote."""

import subprocess


class Database:
    def __init__(self, socket):
        self._command = ["mariadb", "--no-defaults", "--user=root", f"--socket={socket}",
                         "--default-character-set=utf8mb4", "tarvessa"]

    def rows(self, sql):
        """The rows of a query, each a list of texts."""
        out = subprocess.run([*self._command, "--batch", "--raw", "--skip-column-names", "-e", sql],
                             check=True, capture_output=True, text=True).stdout
        return [line.split("\t") for line in out.splitlines()]

    def value(self, sql):
        """The first cell of a query, as text."""
        rows = self.rows(sql)
        return rows[0][0] if rows else None

    def show(self, title, sql):
        """Prints a query's rows as a table."""
        out = subprocess.run([*self._command, "--table", "-e", sql], check=True, capture_output=True,
                             text=True).stdout
        print(f"\n{title}\n{out}", flush=True)

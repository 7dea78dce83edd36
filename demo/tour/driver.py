"""Operates the program from outside, by keyboard alone: reads its screens through the accessibility interface, sends
real keys to the display, and takes pictures of it."""

import os
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

MANUAL = os.environ.get("TARVESSA_MANUAL_PICTURES")
# More controls than any window has.
MANY_CONTROLS = 40
PATIENCE = 30.0
PAUSE = 0.05
# Time for the display to paint what the program has already decided.
SETTLE = 0.25


class TourError(Exception):
    """The program did not show what it should."""


def wait_for(what, test):
    """The first true value of test(), asked again and again; raises TourError with `what` when none comes."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            value = test()
        except GLib.Error:  # a control that went away between two questions
            value = None
        if value:
            return value
        time.sleep(PAUSE)
    raise TourError(f"não apareceu: {what}")


def _walk(node, depth=12):
    yield node
    # A table's cells are asked for by row and column; walking them all would take minutes.
    if depth == 0 or node.get_role() in (Atspi.Role.TABLE, Atspi.Role.TABLE_CELL):
        return
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from _walk(child, depth - 1)


def _shows(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def _run(*arguments):
    subprocess.run(arguments, check=True, stdout=subprocess.DEVNULL)


class Program:
    """The running panel and its windows."""

    def __init__(self, binary, pictures):
        self._pictures = pictures
        self._count = 0
        # It finds no other program to show a log with, so its own window does, whatever the machine has.
        self._process = subprocess.Popen([binary], env={**os.environ, "PATH": ""})
        self._application = wait_for("o programa", self._find_application)

    def _find_application(self):
        if self._process.poll() is not None:
            raise TourError(f"o programa terminou com o código {self._process.returncode}")
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is not None and application.get_process_id() == self._process.pid:
                return application
        return None

    def windows(self):
        """The windows on the screen, the last opened last."""
        found = []
        for index in range(self._application.get_child_count()):
            window = self._application.get_child_at_index(index)
            if window is not None and _shows(window):
                found.append(window)
        return found

    def window(self, title):
        """Waits for the window whose title contains this text."""
        return wait_for(f"a janela «{title}»",
                        lambda: next((w for w in self.windows() if title in (w.get_name() or "")), None))

    def has_window(self, title):
        return any(title in (w.get_name() or "") for w in self.windows())

    def find(self, role, name=None, within=None):
        """The showing control of this role and name, in one window or in any."""
        def look():
            for window in [within] if within is not None else reversed(self.windows()):
                for node in _walk(window):
                    if node.get_role_name() == role and (name is None or node.get_name() == name) and _shows(node):
                        return node
            return None
        return wait_for(f"{role} «{name}»", look)

    def enabled(self, node):
        return node.get_state_set().contains(Atspi.StateType.ENABLED)

    def labels(self, window):
        """The texts of a window's labels."""
        return [node.get_name() or "" for node in _walk(window) if node.get_role_name() == "label" and _shows(node)]

    def text(self, node):
        """The content of a text box."""
        return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))

    # Real events

    def go_to(self, node):
        """Gives a control the focus, by Tab."""
        for _ in range(MANY_CONTROLS):
            if node.get_state_set().contains(Atspi.StateType.FOCUSED):
                return
            self.keys("Tab")
        raise TourError(f"Tab não chega a «{node.get_name()}»; as janelas ativas são {self._active_windows()}")

    def _active_windows(self):
        return [w.get_name() for w in self.windows() if w.get_state_set().contains(Atspi.StateType.ACTIVE)]

    def press(self, node):
        """Presses a button by the space bar."""
        self.go_to(node)
        self.keys("space")

    def keys(self, *names):
        _run("xdotool", "key", "--clearmodifiers", "--delay", "40", *names)
        time.sleep(SETTLE)

    def type(self, text):
        _run("xdotool", "type", "--delay", "30", text)
        time.sleep(SETTLE)

    # Message boxes

    def message(self, title="Atenção!!!"):
        """Waits for a message box; gives the box and its text."""
        box = self.window(title)

        def longest_label():
            labels = [n.get_name() for n in _walk(box) if n.get_role_name() == "label" and n.get_name()]
            return max(labels, key=len) if labels else None

        return box, wait_for("o texto da mensagem", longest_label)

    def answer(self, box, button):
        """Presses a button of a message box and waits until the box is gone."""
        self.press(self.find("push button", button, box))
        wait_for("o fim da mensagem", lambda: not any(w == box for w in self.windows()))
        time.sleep(SETTLE)

    # Pictures and the end

    def picture(self, name, what, manual=None):
        """Saves a picture of the whole display and names it in the output. Where the pictures of the manual are being
        made, the active window alone is saved there under the name `manual`."""
        time.sleep(SETTLE)
        if manual and MANUAL:
            active = subprocess.run(["xdotool", "getactivewindow"], check=True, capture_output=True, text=True).stdout
            _run("import", "-frame", "-window", active.strip(), "-define", "png:compression-level=9",
                 os.path.join(MANUAL, f"{manual}.png"))
        self._count += 1
        path = os.path.join(self._pictures, f"{self._count:02d}-{name}.png")
        _run("import", "-window", "root", path)
        print(f"{path}\n    {what}", flush=True)

    def wait_end(self):
        """Waits until the program has ended by itself; gives its exit code."""
        return self._process.wait(timeout=PATIENCE)

    def kill(self):
        if self._process.poll() is None:
            self._process.kill()
            self._process.wait()


class Table:
    """A grid, read and operated cell by cell; data rows count from 0."""

    def __init__(self, program, node):
        self._program = program
        self._node = node

    def rows(self):
        return Atspi.Table.get_n_rows(self._node)

    def cell(self, row, column):
        return Atspi.Table.get_accessible_at(self._node, row, column)

    def text(self, row, column):
        return self.cell(row, column).get_name() or ""

    def column(self, column):
        return [self.text(row, column) for row in range(self.rows())]

    def go_to(self, row, column):
        """Makes a cell the current one, by keys."""
        self._program.go_to(self._node)
        hidden = sum(1 for left in range(column) if self.cell(row, left).get_extents(Atspi.CoordType.SCREEN).width <= 0)
        self._program.keys("ctrl+Home", *["Down"] * row, *["Right"] * (column - hidden))

    def press(self, row, column):
        """Does what a click on the cell does."""
        self.go_to(row, column)
        self._program.keys("space")

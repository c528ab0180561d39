#!/usr/bin/python3
"""walk.py PROGRAM FOLDER [NAME...]: tries the program on every desktop (or on those whose names begin with a NAME), started
before and after what draws the desktop's own background. Prints a table and writes it to FOLDER/table.md, with the
pictures and logs beside it. The exit status is the number of failed checks, at most 100."""
import os
import pathlib
import subprocess
import sys

from checks import Checks, Failed, Wallpaper
from gnome import Gnome, GnomeWithoutX11
from kwin import Plasma
from session import CannotCheck, Session, wait_for
from sway import Sway
from x11 import Cinnamon, LXQt, Mate, Xfce

# Raised by a check or a start that the machine does not allow, or during which the desktop ends.
_UNABLE = (CannotCheck, OSError, LookupError, subprocess.SubprocessError)
DESKTOPS = (Plasma, Gnome, GnomeWithoutX11, Xfce, Mate, LXQt, Cinnamon, Sway)


class Row:
    """The results on one desktop in one order: a word for each check that applies, and notes."""

    def __init__(self, name, order):
        self.name, self.order = name, order
        self.surface = ""
        self.cells = {}
        self.notes = []
        self.failed = 0

    def judge(self, check, method, admitted):
        """`admitted` returns whether the wallpaper's log says that the check fails here."""
        try:
            method()
            self.cells[check] = "yes"
        except _UNABLE as reason:
            self.cells[check] = "not checked"
            self.notes.append(f"{check}: cannot be checked here: {reason}")
        except Failed as fault:
            told = admitted()
            self.cells[check] = "no, and the log says so" if told else "**no**"
            self.notes.append(f"{check}: no: {fault}")
            self.failed += not told

    def line(self):
        cells = [self.cells.get(check, "–") for check in Checks.COLUMNS]
        return "| " + " | ".join([self.name, self.order, self.surface, *cells]) + " |"


def surface_of(log):
    """The surface that the program says it has chosen."""
    named = [line.split("surface: ", 1)[1] for line in log.splitlines() if "surface: " in line]
    return next((text.split(",")[0] for text in named if text.startswith(("the desktop", "a ", "an "))), "none")


def start_in_order(desktop, wallpaper, order):
    desktop.start_display()
    if order == "first":
        wallpaper.start()
        wait_for(lambda: "first picture" in wallpaper.log() or not wallpaper.is_running())
        desktop.start_desktop()
    else:
        desktop.start_desktop()
        wallpaper.start()


def try_desktop(kind, order, program, folder):
    row = Row(kind.name, order)
    with Session(folder) as session:
        desktop = kind(session)
        wallpaper = Wallpaper(session, program)
        checks = Checks(desktop, wallpaper, folder)
        methods = {check: getattr(checks, check) for check in Checks.COLUMNS if checks.applies(check)}
        try:
            start_in_order(desktop, wallpaper, order)
        except _UNABLE as reason:
            row.cells = dict.fromkeys(methods, "not checked")
            row.notes.append(f"cannot be checked here: {reason}")
            return row
        for check, method in methods.items():
            words = kind.admitted.get(check)
            row.judge(check, method, lambda: bool(words) and words in wallpaper.log())
        row.surface = surface_of(wallpaper.log())
    return row


def as_table(rows):
    head = ["Desktop", "Nivlo starts", "shown as", *Checks.COLUMNS.values()]
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head), *(row.line() for row in rows)]
    notes = [f"- {row.name}, {row.order}: {note}" for row in rows for note in row.notes]
    results = [cell for row in rows for cell in row.cells.values()]
    failed, unchecked = sum(row.failed for row in rows), results.count("not checked")
    # ./test reads this line.
    sums = f"{len(results) - failed - unchecked} passed, {failed} failed, {unchecked} not checked"
    return "\n".join([*lines, "", *notes, "", sums]) + "\n"


def become_user():
    """Some desktops refuse to run for root. In a user namespace of its own, root is told to be somebody else."""
    if os.getuid() == 0:
        os.execvp("unshare", ["unshare", "--user", "--map-user=1000", "--map-group=1000", sys.executable, *sys.argv])


def main():
    become_user()
    program, folder = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    wanted = [name.lower() for name in sys.argv[3:]]
    rows = []
    for kind in DESKTOPS:
        if wanted and not any(kind.name.lower().startswith(name) for name in wanted):
            continue
        for order in kind.orders:
            print(f"{kind.name}, Nivlo starts {order}", flush=True)
            rows.append(try_desktop(kind, order, program, folder / f"{kind.__name__}-{order}"))
            for note in rows[-1].notes:
                print(f"  {note}", flush=True)
    table = as_table(rows)
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "table.md").write_text(table)
    print(table)
    sys.exit(min(sum(row.failed for row in rows), 100))


if __name__ == "__main__":
    main()

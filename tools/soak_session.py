#!/usr/bin/python3 -B
"""Uses kavendra on the display that DISPLAY names, samples memory and other resources, and looks for a trend.
usage: soak_session.py PROGRAM HEAP_PROBE MINUTES   (see tools/soak)"""

import os
import random
import shutil
import signal
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests/end_to_end"))
from session import (FOCUS_EVENT, REPOSITORY, Session, click, position, press, type_text,  # noqa: E402
                     xdotool)

SECONDS_BETWEEN_SAMPLES = 2
LINES_OF_TABLE = 12
# By how much the lowest sample of the last third may exceed that of the second third. The first third fills caches.
# The lowest one, because a larger table or an open menu needs more for a while. "Heap" is what the program has
# allocated and not freed; Qt keeps about 30 bytes of it for each action (docs/decisions/pixmap-cache-limit.md).
# "Own" is anonymous memory, which also has the gaps of the heap, and the stacks. The proportional set size is not
# used, because it depends on the other processes.
TOLERANCES = {"heap KiB": 64, "RSS KiB": 4096, "own KiB": 3072, "files": 1, "threads": 1, "children": 0}

WORDS = ["row", "notes", "folder", "tool", "1", "22", "row 7 tool", "absent", "keyword 5 row", "ひら"]


def sample(pid, heap_file):
    """The resources that the process uses now, in the order of TOLERANCES."""
    process = Path(f"/proc/{pid}")
    heap = int(heap_file.read_text()) // 1024
    memory = dict(line.split(":", 1) for line in (process / "smaps_rollup").read_text().splitlines()[1:])
    children = sum(len(path.read_text().split()) for path in process.glob("task/*/children"))
    return [heap, int(memory["Rss"].split()[0]), int(memory["Anonymous"].split()[0]),
            len(os.listdir(process / "fd")), len(os.listdir(process / "task")), children]


def write_rows(data, count):
    """Writes rows that are harmless to launch, and a last one that fails."""
    kinds = [("tool", "record", "'a b' row"), ("notes", "~/notes.txt", ""), ("folder", "~/folder", ""),
             ("web", "https://example.org/ひら", "")]
    rows = [",".join((f"row {i} {kinds[i % 4][0]}", *kinds[i % 4][1:], f"keyword {i}")) for i in range(count)]
    (data / "rows.csv").write_text("\n".join(["Title,Command,Params,Keywords", *rows, "wrong,no-such-program,,"]))


class Soak(Session):
    """What a user does; each of ACTIONS is a method."""

    def __init__(self, program):
        super().__init__(program)
        self.random = random.Random(1)
        self.heap_file = self.directory / "heap"
        (self.home / "folder").mkdir()
        (self.home / "notes.txt").write_text("notes\n")
        self.write_settings()
        shutil.copy(REPOSITORY / "tests/fixtures/libreoffice.xlsx", self.data / "_workbook.xlsx")
        write_rows(self.data, 2000)

    def settle(self):
        """Closes the menus and dialogs in front of the window."""
        for _ in range(5):
            if len(self.windows()) <= 1:
                return
            press("Escape")
            time.sleep(0.1)

    def click(self, place, button=1):
        if place:
            click(place, button)
            time.sleep(0.15)

    def search(self, text):
        xdotool("windowactivate", "--sync", self.window)
        self.click(position("Search"))
        press("ctrl+a")
        type_text(text)

    def type_words(self):
        self.search(self.random.choice(WORDS))
        press("BackSpace", "BackSpace")

    def launch_a_row(self):
        self.search(f"row {self.random.randrange(200)}")
        press("Down", "Return")

    def fail_to_launch(self):
        self.search("wrong")
        press("Return")
        time.sleep(0.3)

    def click_a_row(self):
        self.search("row")
        self.click(position("Launch items", self.random.random() * 0.9, self.random.randrange(40, 100)))

    def row_menu(self, *keys):
        self.search("row")
        self.click(position("Launch items", 0.1, 60), button=3)
        press(*keys)

    def copy_row(self):
        self.row_menu("Down", "Down", "Right", "Down", "Down", "Return")

    def reload(self):
        write_rows(self.data, self.random.choice([2000, 4000]))
        name = self.random.choice(["workbook.xlsx", "_workbook.xlsx"])
        next(self.data.glob("*workbook.xlsx")).rename(self.data / name)
        self.row_menu("Up", "Up", "Return")

    def change_a_setting(self):
        self.click(position("Settings"))
        press(*["Down"] * self.random.randrange(1, 4), "Return")

    def change_the_appearance(self):
        self.click(position("Settings"))
        press("Down", "Down", "Down", "Down", "Down", "Right", *["Down"] * self.random.randrange(3), "Return")

    def typed_path(self):
        self.search(self.random.choice(["~/notes.txt", "~/folder"]))
        self.click(position("Search path"))
        press("Down", "Right", "Down", "Escape", "Escape")

    def move_in_the_table(self):
        self.search("row")
        press("Tab", "Next", "Next", "Down", "ctrl+Down", "ctrl+Up", "shift+Tab")
        xdotool("click", "--repeat", 5, 5)

    def resize(self):
        size = self.random.randrange(480, 1200), self.random.randrange(200, 740)
        xdotool("windowsize", "--sync", self.window, *size)

    def resize_a_column(self):
        border = position("Launch items", 0.5, 12)
        if border:
            for x in range(border[0] - 200, border[0], 7): # one of these is a column border
                xdotool("mousemove", x, border[1], "mousedown", 1, "mousemove", x + 15, border[1], "mouseup", 1)


ACTIONS = [Soak.type_words, Soak.launch_a_row, Soak.fail_to_launch, Soak.click_a_row, Soak.copy_row,
           Soak.reload, Soak.change_a_setting, Soak.change_the_appearance, Soak.typed_path,
           Soak.move_in_the_table, Soak.resize, Soak.resize_a_column]


def use(session, seconds):
    """Calls random actions until the time is over. Returns the samples with their times, and the calls per action."""
    samples, done = [], {action.__name__: 0 for action in ACTIONS}
    begin = time.monotonic()
    while (elapsed := time.monotonic() - begin) < seconds:
        if session.process.poll() is not None:
            sys.exit(f"the program ended by itself with {session.process.returncode}")
        if not samples or elapsed - samples[-1][0] >= SECONDS_BETWEEN_SAMPLES:
            samples.append((elapsed, sample(session.process.pid, session.heap_file)))
        action = session.random.choice(ACTIONS)
        action(session)
        session.settle()
        done[action.__name__] += 1
    return samples, done


def lowest(samples):
    """The lowest value of each resource."""
    return [min(values) for values in zip(*(held for _, held in samples))]


def print_table(samples):
    print("   time  " + "".join(f"{name:>10}" for name in TOLERANCES))
    lines = min(LINES_OF_TABLE, len(samples))
    for line in range(lines):
        part = samples[len(samples) * line // lines:len(samples) * (line + 1) // lines]
        print(f"{part[-1][0]:6.0f} s " + "".join(f"{value:10}" for value in lowest(part)))


def trends(samples):
    """What grew from the second third to the last one by more than it may."""
    third = len(samples) // 3
    before, after = lowest(samples[third:2 * third]), lowest(samples[2 * third:])
    for (name, tolerance), old, new in zip(TOLERANCES.items(), before, after):
        if new - old > tolerance:
            yield f"{name} grew from {old} to {new}"


def main():
    program, probe, minutes = sys.argv[1], sys.argv[2], int(sys.argv[3])
    with Soak(program) as session:
        session.start(LD_PRELOAD=probe, HEAP_FILE=str(session.heap_file))
        session.listener.deregister(FOCUS_EVENT)
        samples, done = use(session, minutes * 60)
        session.quit()

        print_table(samples)
        launches = len(session.record.read_text().splitlines())
        log = session.log.read_text()
        loads, failures = log.count("CSV headers (rows.csv)"), log.count("Command not found: no-such-program")
        print("Done: " + ", ".join(f"{count} x {name.replace('_', ' ')}" for name, count in done.items()))
        print(f"The applications recorded {launches} launches, the log {loads} loads and {failures} failures")
        problems = list(trends(samples))
        if launches < done["launch_a_row"] or loads < done["reload"] or failures < done["fail_to_launch"]:
            problems.append("some actions did not reach the program")
        if problems:
            sys.exit("kavendra: " + "; ".join(problems))
        print("No trend")


signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that the session removes its directory
main()

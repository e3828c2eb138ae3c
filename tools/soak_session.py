#!/usr/bin/python3 -B
"""Drives kavendra on the display that it finds, samples what the process holds, and looks for a trend.
usage: soak_session.py PROGRAM MINUTES   (see tools/soak)"""

import json
import os
import random
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from accessibility import named

SECONDS_BETWEEN_SAMPLES = 2
LINES_OF_TABLE = 12
# What the median of the last third may be above that of the second; the first third warms the caches up.
# "Own" is the memory that is in no file: the heap and the stacks. The proportional set size would be no measure,
# because it changes with what other programs share.
TOLERANCES = {"RSS KiB": 4096, "own KiB": 3072, "files": 1, "threads": 1, "children": 0}

REPOSITORY = Path(__file__).resolve().parent.parent
WORDS = ["row", "notes", "folder", "tool", "1", "22", "row 7 tool", "absent", "keyword 5 row", "ひら"]


def sample(pid):
    """What the process holds now, in the order of TOLERANCES."""
    process = Path(f"/proc/{pid}")
    memory = dict(line.split(":", 1) for line in (process / "smaps_rollup").read_text().splitlines()[1:])
    children = sum(len(path.read_text().split()) for path in process.glob("task/*/children"))
    return [int(memory["Rss"].split()[0]), int(memory["Anonymous"].split()[0]), len(os.listdir(process / "fd")),
            len(os.listdir(process / "task")), children]


def prepare(desk):
    """Makes a desktop of the soak's own, whose applications only record, and the data to work with."""
    subprocess.run(["sh", REPOSITORY / "tests/support/make-test-desktop.sh", desk], check=True)
    for line in (desk / "environment").read_text().splitlines():
        name, value = line.split("=", 1)
        if name not in ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
            os.environ[name] = value
    os.environ["HOME"] = str(desk / "home")
    data = desk / "config/kavendra"
    for directory in (data, desk / "home/folder"):
        directory.mkdir(parents=True)
    (desk / "home/notes.txt").write_text("notes\n")
    # Without the built-in items: some of those start programs of the machine.
    settings = {"dataDirectoryPath": str(data), "logDirectoryPath": str(data), "showBuiltinItems": False}
    (data / "kavendra-settings.json").write_text(json.dumps(settings))
    shutil.copy(REPOSITORY / "tests/fixtures/libreoffice.xlsx", data / "_workbook.xlsx")
    return data


def write_rows(data, count):
    """Every row is harmless to launch, but for the last one, which fails."""
    kinds = [("tool", "record", "'a b' row"), ("notes", "~/notes.txt", ""), ("folder", "~/folder", ""),
             ("web", "https://example.org/ひら", "")]
    rows = [",".join((f"row {i} {kinds[i % 4][0]}", *kinds[i % 4][1:], f"keyword {i}")) for i in range(count)]
    (data / "rows.csv").write_text("\n".join(["Title,Command,Params,Keywords", *rows, "wrong,no-such-program,,"]))


class Session:
    """The window and what a person does to it; each public method is one thing that is done."""

    def __init__(self, program, desk, data):
        self.desk, self.data = desk, data
        os.environ["PATH"] = f"{desk / 'bin'}:{os.environ['PATH']}"
        self.process = subprocess.Popen([program])
        for _ in range(100):
            windows = self.windows()
            if windows:
                break
            time.sleep(0.1)
        else:
            sys.exit("the program showed no window")
        self.window = windows[0]
        self.random = random.Random(1)

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], timeout=20, check=False, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    def windows(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)],
                               capture_output=True, text=True, check=False)
        return found.stdout.split()

    def settle(self):
        """Closes the menus and dialogs that stand before the window."""
        for _ in range(5):
            if len(self.windows()) <= 1:
                return
            self.keys("Escape")
            time.sleep(0.1)

    def keys(self, *names):
        for name in names:
            self.xdotool("key", "--clearmodifiers", "--delay", 20, name)

    def point(self, name, x=0.5, y=0.5):
        """Where in the middle of something is, or at another share of its width and points below its top."""
        found = named(name)
        if found is None:
            return None
        box = found.get_extents(0)
        return int(box.x + box.width * x), int(box.y + (y if y > 1 else box.height * y))

    def click(self, point, button=1):
        if point:
            self.xdotool("mousemove", *point, "click", button)
            time.sleep(0.15)

    def query(self, text):
        self.xdotool("windowactivate", "--sync", self.window)
        self.click(self.point("Search"))
        self.keys("ctrl+a")
        self.xdotool("type", "--delay", 15, "--", text)

    def type_words(self):
        self.query(self.random.choice(WORDS))
        self.keys("BackSpace", "BackSpace")

    def launch(self):
        self.query(f"row {self.random.randrange(200)}")
        self.keys("Down", "Return")

    def fail_to_launch(self):
        self.query("wrong")
        self.keys("Return")
        time.sleep(0.3)

    def click_a_row(self):
        self.query("row")
        self.click(self.point("Launch items", self.random.random() * 0.9, self.random.randrange(40, 100)))

    def row_menu(self, *keys):
        self.query("row")
        self.click(self.point("Launch items", 0.1, 60), button=3)
        self.keys(*keys)

    def copy_row(self):
        self.row_menu("Down", "Down", "Right", "Down", "Down", "Return")

    def reload(self):
        write_rows(self.data, self.random.choice([2000, 4000]))
        name = self.random.choice(["workbook.xlsx", "_workbook.xlsx"])
        next(self.data.glob("*workbook.xlsx")).rename(self.data / name)
        self.row_menu("Up", "Up", "Return")

    def change_a_setting(self):
        self.click(self.point("Settings"))
        self.keys(*["Down"] * self.random.randrange(1, 4), "Return")

    def change_the_appearance(self):
        self.click(self.point("Settings"))
        self.keys("Down", "Down", "Down", "Down", "Down", "Right", *["Down"] * self.random.randrange(3), "Return")

    def typed_path(self):
        self.query(self.random.choice(["~/notes.txt", "~/folder"]))
        self.click(self.point("Search path"))
        self.keys("Down", "Right", "Down", "Escape", "Escape")

    def move_in_the_table(self):
        self.query("row")
        self.keys("Tab", "Next", "Next", "Down", "ctrl+Down", "ctrl+Up", "shift+Tab")
        self.xdotool("click", "--repeat", 5, 5)

    def resize(self):
        size = self.random.randrange(480, 1200), self.random.randrange(200, 740)
        self.xdotool("windowsize", "--sync", self.window, *size)

    def resize_a_column(self):
        border = self.point("Launch items", 0.5, 12)
        if border:
            for x in range(border[0] - 200, border[0], 7): # one of these is a border
                self.xdotool("mousemove", x, border[1], "mousedown", 1, "mousemove", x + 15, border[1], "mouseup", 1)


ACTIONS = [Session.type_words, Session.launch, Session.fail_to_launch, Session.click_a_row, Session.copy_row,
           Session.reload, Session.change_a_setting, Session.change_the_appearance, Session.typed_path,
           Session.move_in_the_table, Session.resize, Session.resize_a_column]


def run(session, seconds):
    """Acts until the time is over. Returns the samples with their times, and how often each thing was done."""
    samples, done = [], {action.__name__: 0 for action in ACTIONS}
    begin = time.monotonic()
    while (elapsed := time.monotonic() - begin) < seconds:
        if session.process.poll() is not None:
            sys.exit(f"the program ended by itself with {session.process.returncode}")
        if not samples or elapsed - samples[-1][0] >= SECONDS_BETWEEN_SAMPLES:
            samples.append((elapsed, sample(session.process.pid)))
        action = session.random.choice(ACTIONS)
        action(session)
        session.settle()
        done[action.__name__] += 1
    return samples, done


def print_table(samples):
    print("   time  " + "".join(f"{name:>10}" for name in TOLERANCES))
    lines = min(LINES_OF_TABLE, len(samples))
    for line in range(lines):
        part = samples[len(samples) * line // lines:len(samples) * (line + 1) // lines]
        medians = [statistics.median(values) for values in zip(*(held for _, held in part))]
        print(f"{part[-1][0]:6.0f} s " + "".join(f"{value:10.0f}" for value in medians))


def trends(samples):
    """What grew from the second third to the last one by more than it may."""
    third = len(samples) // 3
    for index, (name, tolerance) in enumerate(TOLERANCES.items()):
        before, after = (statistics.median(held[index] for _, held in part)
                         for part in (samples[third:2 * third], samples[2 * third:]))
        if after - before > tolerance:
            yield f"{name} grew from {before:.0f} to {after:.0f}"


def main():
    program, minutes = sys.argv[1], int(sys.argv[2])
    desk = Path(tempfile.mkdtemp())
    try:
        data = prepare(desk)
        write_rows(data, 2000)
        session = Session(program, desk, data)
        samples, done = run(session, minutes * 60)
        session.xdotool("windowactivate", "--sync", session.window)
        session.keys("alt+F4")
        status = session.process.wait(timeout=20)

        print_table(samples)
        launches = len((desk / "record").read_text().splitlines())
        log = (data / "kavendra.log").read_text()
        loads, failures = log.count("CSV headers (rows.csv)"), log.count("Command not found: no-such-program")
        print("Done: " + ", ".join(f"{count} x {name.replace('_', ' ')}" for name, count in done.items()))
        print(f"The applications recorded {launches} launches, the log {loads} loads and {failures} failures")
        problems = list(trends(samples))
        if status != 0:
            problems.append(f"the program ended with {status}")
        if launches < done["launch"] or loads < done["reload"] or failures < done["fail_to_launch"]:
            problems.append("what was done did not arrive at the program")
        if problems:
            sys.exit("kavendra: " + "; ".join(problems))
        print("No trend")
    finally:
        shutil.rmtree(desk)


signal.signal(signal.SIGTERM, lambda *_: sys.exit(1)) # removes the directory
main()

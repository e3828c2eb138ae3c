#!/usr/bin/python3 -B
"""Measures windows on the display that DISPLAY names, from outside: X reports what is painted, and keys are sent as
from a keyboard. An empty window and kavendra with different numbers of rows take turns. Prints medians, and their
ratios to those of the empty window.
usage: measure_window.py start|typing KAVENDRA EMPTY_WINDOW TURNS   (see tools/measure-start and tools/measure-typing)"""

import json
import os
import select
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from Xlib import XK, X, display, error
from Xlib.ext import damage, xtest

ROW_COUNTS = [1_000, 100_000, 1_000_000]
SENTENCE = "browser notes of the team"
ACCENT = bytes.fromhex("d6631f")  # of the selected row: blue, green, red
SECONDS_TO_WAIT = 30
FOCUS_INTERVAL = 0.002  # between two questions for the focus, in seconds
QUIET_SECONDS = 0.2  # painting has ended if nothing is painted for so long; the caret blinks every half second
# Areas of the window: the text of the search field, and a column of the table, below the progress line.
FIELD = (42, 18, 150, 16)
TABLE = (900, 90, 1, 390)


class Screen:
    """What is painted on the display, and its keyboard."""

    def __init__(self):
        self.display = display.Display()
        self.root = self.display.screen().root
        self.display.damage_query_version()  # required before any other request
        self.root.damage_create(damage.DamageReportRawRectangles)
        self.painted = self.display.extension_event.DamageNotify
        self.owner = self.display.intern_atom("_NET_WM_PID")

    def next_paint(self, seconds=SECONDS_TO_WAIT):
        """Returns the time of the next painting; none if nothing is painted for so long."""
        deadline = time.monotonic() + seconds
        while True:
            while self.display.pending_events():
                if self.display.next_event().type == self.painted:
                    return time.monotonic()
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self.display], [], [], left)[0]:
                return None

    def wait_until(self, condition, interval=SECONDS_TO_WAIT):
        """Returns the time at which a condition holds; it is asked after each painting, and after an interval
        without any."""
        deadline = time.monotonic() + SECONDS_TO_WAIT
        while not condition():
            self.next_paint(interval)
            if time.monotonic() > deadline:
                sys.exit("the window was not painted as expected")
        return time.monotonic()

    def end_of_paint(self):
        """Returns the time of the last painting before a pause."""
        moment = last = self.next_paint()
        while moment:
            last, moment = moment, self.next_paint(QUIET_SECONDS)
        return last

    def focus_window(self, pid):
        """Returns the window of the process if it has the keyboard."""
        window = self.display.get_input_focus().focus
        if isinstance(window, int):  # none, or the pointer's
            return None
        try:
            owner = window.get_full_property(self.owner, X.AnyPropertyType)
        except error.BadWindow:  # has just been closed
            return None
        return window if owner and owner.value[0] == pid else None

    def press(self, character):
        """Presses the key of a letter or of the space. Returns the time before."""
        code = self.display.keysym_to_keycode(XK.string_to_keysym("space" if character == " " else character))
        moment = time.monotonic()
        xtest.fake_input(self.display, X.KeyPress, code)
        xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()
        return moment


class Program:
    """A program with a window, from its start to its end."""

    def __init__(self, screen, path, home):
        self.screen = screen
        self.window = None
        self.started = time.monotonic()
        self.process = subprocess.Popen([path], env={**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home)})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.screen.end_of_paint()

    def has_keyboard(self):
        self.window = self.window or self.screen.focus_window(self.process.pid)
        return self.window is not None

    def pixels(self, area):
        data = self.window.get_image(*area, X.ZPixmap, 0xffffffff).data
        return [data[i:i + 3] for i in range(0, len(data), 4)]

    def rows_painted(self):
        """Returns the seconds from the start until the selected row is painted."""
        self.screen.wait_until(self.has_keyboard, FOCUS_INTERVAL)
        return self.screen.wait_until(lambda: ACCENT in self.pixels(TABLE)) - self.started

    def key_shown(self):
        """Returns the seconds from the start until a key is shown that was pressed as soon as the window had the
        keyboard."""
        self.screen.wait_until(self.has_keyboard, FOCUS_INTERVAL)
        self.screen.press("e")

        def is_shown():
            pixels = self.pixels(FIELD)
            background = max(set(pixels), key=pixels.count)
            columns = {i % FIELD[2] for i, pixel in enumerate(pixels) if pixel != background}
            return 3 <= len(columns) <= 30  # as wide as a letter; the placeholder is wider, the caret narrower

        return self.screen.wait_until(is_shown) - self.started

    def typing(self):
        """Types the sentence. Returns for each key the seconds from the press to the end of painting."""
        self.rows_painted()
        self.screen.end_of_paint()
        times = []
        for character in SENTENCE:
            pressed = self.screen.press(character)
            times.append(self.screen.end_of_paint() - pressed)
        return times


def write_rows(home, count):
    """Writes a data directory with rows of which one in 20 is Japanese."""
    data = home / "kavendra"
    data.mkdir(parents=True)
    settings = {"dataDirectoryPath": str(data), "logDirectoryPath": str(data), "appearanceMode": "Light"}
    (data / "kavendra-settings.json").write_text(json.dumps(settings))
    with open(data / "rows.csv", "w", encoding="utf-8") as file:
        file.write("Title,Command,Params,Keywords\n")
        for i in range(count):
            title = f"週次レポート {i}" if i % 20 == 19 else f"Browser {i} of the team"
            file.write(f"{title},https://example.org/items/{i},--profile {i % 97},browser notes {i % 1009}\n")


def report(what, times):
    """Prints one line for each row count. `times` has the seconds of each window."""
    floor = times.pop("empty")
    for count, value in times.items():
        print(f"| {what}, {count:,} rows | {1000 * floor:.0f} | {1000 * value:.0f} | {value / floor:.2f} |")


def main():
    kind, kavendra, empty, turns = sys.argv[1], sys.argv[2], sys.argv[3], int(sys.argv[4])
    os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", None)
    screen = Screen()
    with tempfile.TemporaryDirectory() as directory:
        programs = {"empty": (empty, Path(directory))}
        for count in ROW_COUNTS:
            programs[count] = (kavendra, Path(directory) / str(count))
            write_rows(programs[count][1], count)

        def measure(method):
            """Returns the results of all turns for each program."""
            results = {name: [] for name in programs}
            for _ in range(turns):
                for name, (path, home) in programs.items():
                    with Program(screen, path, home) as program:
                        results[name].append(method(program))
            return results

        def medians(results):
            return {name: statistics.median(values) for name, values in results.items()}

        load = f"load average {os.getloadavg()[0]:.1f}"
        print(f"| {turns} turns, {load} | empty window, ms | kavendra, ms | ratio |\n|---|---|---|---|", flush=True)
        if kind == "start":
            report("exec to a window that takes keys", medians(measure(Program.key_shown)))
            report("exec to painted rows", medians(measure(Program.rows_painted)))
        else:
            keys = measure(Program.typing)
            report("key press to end of paint",
                   medians({name: sum(runs, []) for name, runs in keys.items()}))
            report("the slowest key of the sentence",
                   medians({name: [max(run) for run in runs] for name, runs in keys.items()}))


main()

"""Runs kavendra on a test desktop and operates it with keyboard and mouse, on the display that DISPLAY names."""

import fnmatch
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

FOCUS_EVENT = "object:state-changed:focused"
REPOSITORY = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(REPOSITORY / "tools"))
from accessibility import (SECONDS_TO_WAIT, Atspi, GLib, descendants, named, position, shown,  # noqa: E402, F401
                           status, windows)


def output_of(*command, **options):
    """Runs a command and returns its standard output; empty when the command fails."""
    return subprocess.run([*map(str, command)], timeout=20, check=False, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, **options).stdout


def xdotool(*arguments):
    return output_of("xdotool", *arguments).splitlines()


def press(*keys):
    """Presses keys by their X names, one after the other."""
    xdotool("key", "--clearmodifiers", "--delay", 40, *keys)


def type_text(text):
    xdotool("type", "--delay", 5, "--", text)


def click(place, button=1):
    xdotool("mousemove", *place, "click", button)


def cell(row, column):
    """The screen position of the centre of a table cell."""
    return position(Atspi.Table.get_accessible_at(named("Launch items"), row, column))


def check(what, condition):
    if not condition:
        sys.exit(f"FAILED: {what}")
    print("ok:", what, flush=True)


class Freedesktop:
    """A freedesktop desktop below a directory: where the program has its files, and what starts applications."""

    has_desktop_entries = True

    def __init__(self, directory):
        self.data = directory / "config/kavendra"
        self.login_item = directory / "config/autostart/org.kavendra.Kavendra.desktop"
        self.browser = directory / "data/applications/test-other-browser.desktop"

    def command(self, application):
        """The beginning of the line that the start of an application records."""
        return [application]


class MacOS(Freedesktop):
    """The same for macOS, where open(1) starts applications."""

    has_desktop_entries = False

    def __init__(self, directory):
        super().__init__(directory)
        self.data = directory / "home/Library/Application Support/kavendra"
        self.login_item = directory / "home/Library/LaunchAgents/org.kavendra.Kavendra.plist"
        self.browser = directory / "Applications/Browser.app"

    def command(self, application):
        options = {"browser": [], "editor": [], "files": [], "terminal": ["-a", "Terminal"],
                   "other-browser": ["-a", self.browser]}
        return ["open", *options[application]] if application in options else [application]


class Session:
    """A test desktop in a temporary directory, and kavendra on it."""

    def __init__(self, program):
        """Makes the desktop. Its applications only append what they are started with to the file `record`."""
        self.program, self.process, self.window = program, None, None
        self.focused = []  # the widgets that got the focus, in order
        self.helpers = []
        self.directory = Path(tempfile.mkdtemp())
        subprocess.run(["sh", REPOSITORY / "tests/support/make-test-desktop.sh", self.directory], check=True)
        for line in (self.directory / "environment").read_text().splitlines():
            name, value = line.split("=", 1)
            if name not in ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
                os.environ[name] = value
        self.home, self.programs = self.directory / "home", self.directory / "bin"
        is_in_bundle = "/Contents/MacOS/" in program
        self.system = MacOS(self.directory) if is_in_bundle else Freedesktop(self.directory)
        self.data = self.system.data
        self.log, self.record = self.data / "kavendra.log", self.directory / "record"
        for name in ("Documents", "Downloads"):  # which built-in items show
            (self.home / name).mkdir(parents=True)
        self.record.touch()
        os.environ.update(HOME=str(self.home), ASAN_OPTIONS="detect_leaks=0",
                          PATH=f"{self.programs}:{self.directory}/usr/bin:{os.environ['PATH']}")
        Atspi.init()
        # The name of the widget is asked for later: the program may be busy now.
        self.listener = Atspi.EventListener.new(lambda event: event.detail1 and self.focused.append(event.source))
        self.listener.register(FOCUS_EVENT)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in [self.process, *self.helpers]:
            if process and process.poll() is None:
                process.kill()
                process.wait()
        shutil.rmtree(self.directory, ignore_errors=True)

    def write_items(self, rows):
        """Writes the data file tools.csv with these rows below the header."""
        self.data.mkdir(parents=True, exist_ok=True)
        (self.data / "tools.csv").write_text(f"Title,Command,Params,Keywords\n{rows}\n")

    def write_settings(self, **settings):
        """Writes the settings file. Without the built-in items, because some start programs of the machine."""
        self.data.mkdir(parents=True, exist_ok=True)
        (self.data / "kavendra-settings.json").write_text(json.dumps(
            {"dataDirectoryPath": str(self.data), "logDirectoryPath": str(self.data), "showBuiltinItems": False,
             **settings}))

    def install(self, name, script):
        """Makes a program of the test desktop, a shell script."""
        (self.programs / name).write_text(f"#!/bin/sh\n{script}\n")
        (self.programs / name).chmod(0o755)

    def start_helper(self, *command, **options):
        """Starts a program that ends with the session."""
        self.helpers.append(subprocess.Popen(command, text=True, **options))
        return self.helpers[-1]

    def start(self, **environment):
        self.process = subprocess.Popen([self.program], env={**os.environ, **environment})
        self.eventually("the window is shown", self.windows)
        self.window = self.windows()[0]
        xdotool("windowactivate", "--sync", self.window)
        shown_at = time.monotonic()

        def has_focus():
            if self.focus() == "text: Search":
                return True
            # The event may have come before the program was on the accessibility bus.
            return time.monotonic() - shown_at > 2 and named("Search").get_state_set().contains(Atspi.StateType.FOCUSED)

        self.eventually("the search field has the focus", has_focus)

    def quit(self):
        xdotool("windowactivate", "--sync", self.window)
        press("alt+F4")
        self.eventually("the program ends with its window", lambda: self.process.poll() is not None)
        check("the exit status is 0", self.process.returncode == 0)

    def minimise(self):
        xdotool("windowminimize", self.window)
        self.eventually("the window is minimised",
                        lambda: "Iconic" in output_of("xprop", "-id", self.window, "WM_STATE"))

    def is_active(self):
        return xdotool("getactivewindow") == [self.window]

    def start_again(self, what, token="token-of-the-second"):
        """Starts the program while it runs: the second process ends by itself, without an error."""
        environment = {**os.environ, "XDG_ACTIVATION_TOKEN": token}
        ended = subprocess.run([self.program], timeout=SECONDS_TO_WAIT, check=False, env=environment)
        check(what, ended.returncode == 0)

    def query(self, text):
        """Replaces the text of the search field, which has the focus."""
        press("ctrl+a")
        type_text(text)

    def launch(self, text):
        self.query(text)
        press("Return")

    def choose(self, *titles, click_at=None, button=1, windows_after=1):
        """Chooses an entry of the open menu, or of the menu that a click opens. Titles before the last are submenus.
        Then waits for this number of windows and dialogs."""
        if click_at:
            click(click_at, button)
        self.windows_become(2)
        key = "Down"
        for title in titles:
            seen = len(self.focused)
            press(key)

            def is_reached():
                nonlocal seen
                if len(self.focused) == seen:
                    return False
                if fnmatch.fnmatchcase(self.focus(), f"*menu item: {title}"):
                    return True
                seen = len(self.focused)
                press("Down")
                return False

            self.eventually(f'the keyboard reaches "{title}"', is_reached)
            key = "Right"
        press("Return")
        self.windows_become(windows_after)

    def windows(self):
        """The visible windows of the program, menus and dialogs included."""
        return xdotool("search", "--onlyvisible", "--pid", self.process.pid)

    def focus(self):
        """The widget that has the focus, as "role: name"."""
        return f"{self.focused[-1].get_role_name()}: {self.focused[-1].get_name()}" if self.focused else ""

    def eventually(self, what, condition):
        """Waits until a condition holds; otherwise ends the test and prints what the program did."""
        deadline = time.monotonic() + SECONDS_TO_WAIT
        while time.monotonic() < deadline:
            while GLib.MainContext.default().iteration(False):
                pass
            try:
                if condition():
                    print("ok:", what, flush=True)
                    return
            except (GLib.Error, AttributeError, OSError, TypeError):
                pass  # the widget or file is not there yet, or no longer
            time.sleep(0.05)
        log = self.log.read_text() if self.log.exists() else ""
        print(f"FAILED: {what}\nlog:\n{log}started:\n{self.record.read_text()}status line: {status()}", flush=True)
        sys.exit(f"focus: {self.focus()}")  # last, because the widget may be gone

    def windows_become(self, count):
        self.eventually(f"windows, dialogs and menus: {count}", lambda: len(self.windows()) == count)

    def status_becomes(self, text):
        self.eventually(f"the status line shows: {text}", lambda: status() == text)

    def field_becomes(self, what, text):
        self.eventually(what, lambda: Atspi.Text.get_text(named("Search"), 0, -1) == text)

    def focus_becomes(self, what, pattern):
        self.eventually(what, lambda: fnmatch.fnmatchcase(self.focus(), pattern))

    def starts(self, what, application, *words):
        """Waits until an application of the desktop was started with these words."""
        line = "\t".join(map(str, [*self.system.command(application), *words]))
        self.eventually(what, lambda: line in self.record.read_text().splitlines())


def run(*scenarios):
    """Calls the scenarios in order, with one session of the program that the command line names."""
    with Session(sys.argv[1]) as session:
        for scenario in scenarios:
            scenario(session)

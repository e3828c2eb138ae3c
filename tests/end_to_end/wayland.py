#!/usr/bin/python3 -B
"""The finished program on a Wayland compositor: typing, launching, clipboard, and which window comes forward.
usage: tools/on-sway tests/end_to_end/wayland.py PROGRAM"""

import json
import os
import shlex
import subprocess
import sys
from pathlib import Path

import session
from session import SECONDS_TO_WAIT, Session, check, output_of, status


def keys(*arguments):
    """Presses keys, in wtype's options. Waits first, because windows learn of the new keyboard."""
    output_of("wtype", "-s", 300, *arguments)


session.press = lambda *names: [keys("-k", name) for name in names]


def windows_below(node):
    yield from ([node] if node.get("pid") else [])
    for child in node["nodes"] + node["floating_nodes"]:
        yield from windows_below(child)


def windows():
    return list(windows_below(json.loads(output_of("swaymsg", "-t", "get_tree"))))


class WaylandSession(Session):
    def start(self):
        # A keyboard that is always there, because the one of each wtype ends with it.
        self.start_helper("wtype", "-s", "1000000")
        self.process = subprocess.Popen([self.program])
        self.comes_forward("the window has the focus", self.process)
        check("it has the application id", [each["app_id"] for each in windows()] == ["org.kavendra.Kavendra"])
        self.focus_becomes("the search field has the focus", "text: Search")

    def launch(self, text):
        keys("-M", "ctrl", "a", "-m", "ctrl", text)
        self.eventually(f"one row matches: {text}", lambda: status().startswith("1 items"))
        keys("-k", "Return")

    def windows_become(self, count):
        """Menus are no windows of the compositor."""

    def comes_forward(self, what, process):
        self.eventually(what, lambda: [each["pid"] for each in windows() if each["focused"]] == [process.pid])

    def tokens(self):
        """The activation tokens of the last recorded program, by the name of their variable."""
        entries = Path(f"{self.record}.environ").read_bytes().decode().split("\0")
        return {name: entry.partition("=")[2] for entry in entries
                for name in ("XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID") if entry.startswith(name + "=")}


def start_other(s):
    """Starts a kavendra of another session bus. Returns its process and the command that starts it again."""
    bus = s.start_helper("dbus-daemon", "--session", "--print-address", "--nofork", stdout=subprocess.PIPE)
    command = ["env", f"DBUS_SESSION_BUS_ADDRESS={bus.stdout.readline().strip()}",
               f"XDG_CONFIG_HOME={s.directory}/other", s.program]
    return s.start_helper(*command), command


def launch_and_come_forward(s):
    other = f"{s.directory}/start-other"
    s.write_items(f"Program,{s.programs}/record,program,one\nBrowser,https://example.org/,,two\n"
                  f"Other,sh,{other},three")
    s.start()
    s.launch("one")
    s.starts("a program is started by the keyboard", "program")
    first = s.tokens()
    check("it has an activation token", len(first) == 2 and all(first.values()))
    s.launch("two")
    s.starts("the browser is started", "browser", "https://example.org/")
    check("it has a token of its own", len(s.tokens()) == 2 and not set(s.tokens().values()) & set(first.values()))

    process, command = start_other(s)
    Path(other).write_text(shlex.join(command))
    s.comes_forward("another program comes forward when it shows its window", process)
    s.start_again("a second start ends", first["XDG_ACTIVATION_TOKEN"])
    s.comes_forward("a second start with a token raises the window", s.process)
    s.launch("three")
    s.comes_forward("a launched program comes forward with its token", process)
    process.terminate()
    s.comes_forward("the window is in front again", s.process)


def copy_and_paste(s):
    subprocess.run(["wl-copy", "two"], check=True)
    keys("-M", "ctrl", "a", "v", "-m", "ctrl")
    s.eventually("the field takes text of another program", lambda: status().startswith("1 items"))
    keys("-k", "Tab")
    s.focus_becomes("the table has the focus", "table*")
    keys("-k", "Menu")
    s.choose("Copy to Clipboard", "Copy Command to Execute")
    s.eventually("another program gets the copied text",
                 lambda: output_of("wl-paste", "--no-newline") == "https://example.org/")
    s.process.terminate()
    s.eventually("the program ends", lambda: s.process.poll() is not None)
    check("the exit status is 0", s.process.returncode == 0)


def report_a_missing_display(s):
    for variables in ({"WAYLAND_DISPLAY": "missing"}, {"QT_QPA_PLATFORM": "xcb", "DISPLAY": ":4711"}):
        ended = subprocess.run([s.program], check=False, text=True, capture_output=True, timeout=SECONDS_TO_WAIT,
                               env={**os.environ, **variables})
        check(f"without a display there is one line: {ended.stderr}", ended.returncode == 1
              and ended.stderr.startswith("kavendra: no display can be reached: ") and ended.stderr.count("\n") == 1)


with WaylandSession(sys.argv[1]) as test_session:
    for scenario in (launch_and_come_forward, copy_and_paste, report_a_missing_display):
        scenario(test_session)

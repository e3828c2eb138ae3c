#!/usr/bin/python3 -B
"""Uses the finished program as somebody would who does not see it: what is there and what happens is read from
the accessibility bus, and all that is done goes through it. There is no mouse.
usage: tools/on-virtual-desktop accessibility_end_to_end.py PROGRAM
"""

import fnmatch
import os
import pathlib
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "tools"))
from accessibility import Atspi, descendants, named, shown, windows  # noqa: E402
from gi.repository import GLib  # noqa: E402

SECONDS_TO_WAIT = 10
KEYS = {"Return": 0xFF0D, "Escape": 0xFF1B, "Tab": 0xFF09, "Down": 0xFF54, "space": 0x20}

focused = []  # what a screen reader would have said of the focus, in order


def note_focus(event):
    if event.detail1:
        focused.append(f"{event.source.get_role_name()}: {event.source.get_name()}")


def eventually(what, condition):
    deadline = time.monotonic() + SECONDS_TO_WAIT
    while time.monotonic() < deadline:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            if condition():
                print("ok:", what)
                return
        except (GLib.Error, AttributeError):
            pass  # what was asked for is not, or no longer, on the screen
        time.sleep(0.05)
    sys.exit(f"FAILED: {what}; the focus went over {focused[-6:]}; status: {status()}")


def press(*names):
    for name in names:
        Atspi.generate_keyboard_event(KEYS[name], None, Atspi.KeySynthType.SYM)


def after(*keys, told, what):
    """Presses the keys; the last that is told of the focus then matches a pattern."""
    press(*keys)
    eventually(what, lambda: fnmatch.fnmatchcase(focused[-1], told))


def status():
    line = named("Status")
    return [label.get_name() for label in descendants(line)] if line else []


def query(text):
    Atspi.EditableText.set_text_contents(named("Search"), text)


def texts(role):
    """All that can be read in the windows of a role: names, and what is in text boxes."""
    boxes = [each.get_text_iface() for each in shown(role)]
    contents = [Atspi.Text.get_text(box, 0, -1) for box in boxes if box]
    return [each.get_name() for each in shown(role)] + contents


def buttons():
    return [each for window in windows() for each in descendants(window) if each.get_role_name() == "push button"]


def make_desktop(directory):
    subprocess.run(["sh", HERE.parent / "support/make-test-desktop.sh", directory], check=True)
    for variable in pathlib.Path(directory, "environment").read_text().splitlines():
        name, value = variable.split("=", 1)
        if name not in ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
            os.environ[name] = value
    os.environ.update(HOME=directory, ASAN_OPTIONS="detect_leaks=0")
    data = pathlib.Path(directory, "config/kavendra")
    data.mkdir()
    (data / "items.csv").write_text(
        "Title,Command,Params,Keywords\n"
        "Team wiki,https://wiki.example/,,seeable\nBroken,no-such-program,,seeable\n"
    )
    record = pathlib.Path(directory, "record")
    record.touch()
    return record


def use(record):
    eventually("the window is there, with the focus in the search field", lambda: "text: Search" in focused)
    roles = {"Search": "text", "Launch items": "table", "Settings": "push button", "Status": "status bar"}
    for name, role in roles.items():
        eventually(f"{name} is a {role}", lambda: named(name).get_role_name() == role)

    eventually("the window is a frame", lambda: [each.get_role_name() for each in windows()] == ["frame"])
    eventually("every button has a name", lambda: all(each.get_name() for each in buttons()))

    query("seeable")
    eventually("the query narrows the table", lambda: Atspi.Table.get_n_rows(named("Launch items")) == 2)
    eventually("the status line says so", lambda: status()[0] == "2 items")
    after("Down", told="table cell: Broken, no-such-program", what="the row that one moves to is told")
    press("Return")
    message = "Command not found: no-such-program"
    eventually("the dialog's text can be read", lambda: message in texts("alert"))
    after(told="push button: OK", what="its button has the focus")
    after("Escape", told="text: Search", what="Escape brings one back to the search field")
    after("Return", told="push button: OK", what="the dialog comes again")
    after("Return", told="text: Search", what="Enter brings one back as well")
    eventually("the dialog is gone", lambda: message not in texts("alert"))

    query("wiki")
    press("Return")
    eventually("Enter opens the address", lambda: "browser\thttps://wiki.example/" in record.read_text())

    query(os.environ["HOME"])
    eventually("a path brings its button", lambda: named("Search path").get_role_name() == "push button")
    after("Tab", told="table*", what="Tab goes to the table")
    after("Tab", told="push button: Search path", what="Tab goes on to the path's button")
    after("space", "Down", told="menu item: Open", what="its menu is told")
    after("Escape", told="push button: Search path", what="Escape closes the menu")
    after("Tab", told="push button: Settings", what="Tab goes on to the settings")
    after("space", "Down", told="*Select All Text on Focus", what="the menu's entries are told")
    after("Down", "Down", told="*Show Debug Summary", what="one moves through them")
    press("Return")
    eventually(
        "the debug summary can be read",
        lambda: any(text.startswith("CSV columns: ") for text in texts("frame")),
    )


def main():
    Atspi.init()
    listener = Atspi.EventListener.new(note_focus)
    listener.register("object:state-changed:focused")
    with tempfile.TemporaryDirectory() as directory:
        record = make_desktop(directory)
        program = subprocess.Popen([sys.argv[1]])
        try:
            use(record)
        finally:
            program.terminate()
            program.wait()
    print("all steps passed")


main()

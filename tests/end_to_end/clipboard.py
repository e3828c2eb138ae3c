#!/usr/bin/python3 -B
"""Pastes into the finished program, also from programs that do not answer.
usage: tools/on-virtual-desktop tests/end_to_end/clipboard.py PROGRAM"""

import signal
import subprocess
import sys
import time

from session import cell, check, click, output_of, position, press, run, type_text, xdotool

SECONDS = 3  # Qt itself waits for five at least
# Owns the selection through which a closing program hands over the clipboard, and never takes it.
HANGING_CLIPBOARD_MANAGER = """
import ctypes, time
X = ctypes.CDLL("libX11.so.6")
X.XOpenDisplay.restype = ctypes.c_void_p
display = ctypes.c_void_p(X.XOpenDisplay(None))
X.XDefaultRootWindow.restype = X.XCreateSimpleWindow.restype = X.XInternAtom.restype = ctypes.c_ulong
window = X.XCreateSimpleWindow(display, ctypes.c_ulong(X.XDefaultRootWindow(display)), 0, 0, 1, 1, 0, 0, 0)
manager = X.XInternAtom(display, b"CLIPBOARD_MANAGER", 0)
X.XSetSelectionOwner(display, ctypes.c_ulong(manager), ctypes.c_ulong(window), 0)
X.XSync(display, 0)
print("ready", flush=True)
time.sleep(1000)
"""


def copy(s, selection, text):
    """Starts a program that owns a selection."""
    owner = s.start_helper("xclip", "-quiet", "-selection", selection, stdin=subprocess.PIPE,
                           stderr=subprocess.DEVNULL)
    owner.stdin.write(text)
    owner.stdin.close()
    s.eventually(f"another program owns the {selection} selection",
                 lambda: output_of("timeout", 5, "xclip", "-o", "-selection", selection) == text)
    return owner


def clear(s):
    press("ctrl+a", "BackSpace")
    s.field_becomes("the field is empty", "")


def paste(s):
    s.start()
    copy(s, "clipboard", "copied äöü 日本")
    for keys in ("ctrl+v", "shift+Insert"):
        press(keys, "x")
        s.field_becomes(f"{keys} pastes what was copied, before what is typed next", "copied äöü 日本x")
        clear(s)
    copy(s, "primary", "selected")  # now, because selecting all text of the field has replaced it
    click(position("Search"), 2)
    s.field_becomes("the middle button pastes what was selected", "selected")
    press("ctrl+a", "Menu")
    s.choose("Paste")
    s.field_becomes("the menu pastes what was copied", "copied äöü 日本")
    press("ctrl+a", "ctrl+x", "ctrl+v", "ctrl+v")
    s.field_becomes("its own text is pasted", "copied äöü 日本" * 2)
    copy(s, "clipboard", "12345678 " * 500_000)  # sent in pieces
    press("ctrl+a", "ctrl+v")
    s.field_becomes("a large text is pasted up to the size of the field", ("12345678 " * 5000)[:32767])
    clear(s)


def paste_from_programs_that_hang(s):
    pastes = {"ctrl+v": ("clipboard", ["key", "ctrl+v"]), "shift+Insert": ("clipboard", ["key", "shift+Insert"]),
              "the middle button": ("primary", ["mousemove", *position("Search"), "click", 2])}
    for what, (selection, keys) in pastes.items():
        copy(s, selection, "late").send_signal(signal.SIGSTOP)
        begin = time.monotonic()
        xdotool(*keys)
        type_text("abc")
        s.field_becomes(f"{what} does not stop typing", "abc")
        check("for long", time.monotonic() - begin < SECONDS)
        clear(s)
    begin = time.monotonic()
    press("Menu")
    s.windows_become(2)
    check("the field's menu opens at once", time.monotonic() - begin < SECONDS)
    press("Escape")
    s.windows_become(1)
    type_text("abc")
    time.sleep(1)
    s.field_becomes("nothing is pasted late", "abc")


def close_with_a_clipboard_manager_that_hangs(s):
    manager = s.start_helper(sys.executable, "-c", HANGING_CLIPBOARD_MANAGER, stdout=subprocess.PIPE)
    check("a clipboard manager runs", manager.stdout.readline() == "ready\n")
    s.query("open safari")
    s.choose("Copy to Clipboard", "Copy Row", click_at=cell(0, 0), button=3)
    s.status_becomes("1 items | Copied Row")
    begin = time.monotonic()
    s.quit()
    check("that takes about a second", time.monotonic() - begin < SECONDS)


run(paste, paste_from_programs_that_hang, close_with_a_clipboard_manager_that_hangs)

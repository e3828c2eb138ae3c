#!/usr/bin/python3 -B
"""The finished program in its desktop: starts of the program while it runs, and the desktop's light and dark.
usage: tools/on-virtual-desktop tests/end_to_end/desktop.py PROGRAM"""

import re
import signal
import subprocess
from pathlib import Path

from session import REPOSITORY, check, output_of, position, run, xdotool

LIGHT, DARK, BLACK = "#FFFFFF", "#1E1E20", "#000000"


def colour_becomes(s, what, colour):
    """Waits for the colour of the table below its last row."""
    def is_shown():
        x, y = position("Launch items", 0.5, 0.95)
        return colour in output_of("import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", 8, "txt:-")
    s.eventually(what, is_shown)


def follow_the_color_scheme(s):
    portal = s.start_helper(REPOSITORY / "tests/support/settings-portal", stdin=subprocess.PIPE,
                            stdout=subprocess.PIPE, bufsize=1)
    check("the settings portal is ready", portal.stdout.readline() == "ready\n")
    s.start(XDG_ACTIVATION_TOKEN="token-of-the-first", DESKTOP_STARTUP_ID="id-of-the-first_TIME0")
    colour_becomes(s, "the table is light without a preference", LIGHT)
    portal.stdin.write("color-scheme 1\n")
    colour_becomes(s, "the open window follows the desktop to dark", DARK)
    portal.stdin.write("contrast 1\n")
    colour_becomes(s, "it is black with high contrast", BLACK)
    portal.stdin.write("contrast 0\n")
    colour_becomes(s, "and dark again without", DARK)
    s.quit()
    s.start()
    colour_becomes(s, "the next start is dark", DARK)
    portal.stdin.write("color-scheme 2\n")
    colour_becomes(s, "the open window follows the desktop to light", LIGHT)


def raise_the_running_window(s):
    s.minimise()
    messages = s.directory / "messages"
    with messages.open("w") as output:
        s.start_helper("stdbuf", "-oL", "xev", "-root", "-event", "property", stdout=output)
    s.eventually("the messages to all windows are recorded", lambda: output_of(
        "xprop", "-root", "-f", "READY", "8s", "-set", "READY", "1") + messages.read_text())
    s.start_again("a second start ends")
    s.eventually("it ends its start-up notification", lambda: "_NET_STARTUP_INFO_BEGIN" in messages.read_text())
    s.eventually("it restores the minimised window", lambda: s.is_active())
    s.query("open safari")
    s.status_becomes("1 items | Loaded 12 items")

    s.start_helper("xev", "-name", "another window", stdout=subprocess.DEVNULL)
    xdotool("search", "--sync", "--onlyvisible", "--name", "^another window$", "windowactivate", "--sync")
    check("another window is active", not s.is_active())
    s.start_again("a second start ends")
    s.eventually("it activates the window", lambda: s.is_active())

    s.minimise()
    s.process.send_signal(signal.SIGSTOP)
    s.start_again("a second start ends while the first process is stopped")
    s.process.send_signal(signal.SIGCONT)
    s.eventually("the window is restored when the first process continues", lambda: s.is_active())
    s.quit()


def keep_tokens_from_launched_programs(s):
    s.write_items(f"Program,{s.programs}/record,program,one")
    s.start(XDG_ACTIVATION_TOKEN="token-of-the-third", DESKTOP_STARTUP_ID="id_TIME1")
    s.start_again("a second start ends")
    s.launch("one")
    s.starts("a program starts", "program")
    environment = Path(f"{s.record}.environ").read_bytes()
    check("the program gets no activation token of the window", b"token-of-" not in environment)
    identifiers = re.findall(rb"DESKTOP_STARTUP_ID=kavendra-\d+-\d+-[^\0]*_TIME[1-9]\d*\0", environment)
    check("the program gets a startup id with the time of the launch", len(identifiers) == 1)
    s.quit()


run(follow_the_color_scheme, raise_the_running_window, keep_tokens_from_launched_programs)

#!/usr/bin/python3 -B
"""The installed program, with its built-in items and launch at login.
usage: tools/on-virtual-desktop tests/end_to_end/installed.py PROGRAM [REQUEST]
With REQUEST, asks for an upgrade of the program while it runs: creates this file and waits until it is removed."""

import sys
import time
from pathlib import Path

from session import SECONDS_TO_WAIT, check, run


def upgrade(s, request):
    request.touch()
    for _ in range(12):
        if request.exists():
            time.sleep(SECONDS_TO_WAIT)
    check("the program was upgraded and still runs", not request.exists() and s.process.poll() is None)


def register_launch_at_login(s, program):
    autostart = s.directory / "config/autostart"
    s.toggle_launch_at_login()
    s.eventually("launch at login starts this program",
                 lambda: [program in entry.read_text() for entry in autostart.glob("*.desktop")] == [True])
    s.toggle_launch_at_login()
    s.eventually("the entry is removed", lambda: not list(autostart.glob("*.desktop")))


def use_the_program(s):
    s.write_items(f"Program,{s.programs}/record,program,one")
    s.start()
    s.eventually("the built-in items are read", lambda: "(Built-in.csv)" in s.log.read_text())
    if len(sys.argv) > 2:
        upgrade(s, Path(sys.argv[2]))
    s.launch("program one")
    s.starts("a program starts", "program")
    register_launch_at_login(s, str(Path(sys.argv[1]).resolve()))
    s.quit()


run(use_the_program)

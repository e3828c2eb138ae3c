#!/usr/bin/python3 -B
"""The installed program, with its built-in items.
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


def use_the_program(s):
    s.write_items(f"Program,{s.programs}/record,program,one")
    s.start()
    s.eventually("the built-in items are read", lambda: "(Built-in.csv)" in s.log.read_text())
    if len(sys.argv) > 2:
        upgrade(s, Path(sys.argv[2]))
    s.launch("program one")
    s.starts("a program starts", "program")
    s.quit()


run(use_the_program)

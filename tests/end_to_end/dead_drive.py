#!/usr/bin/python3 -B
"""Uses the finished program while the data directory is on a file system that never answers, so that a thread of the
program waits in the kernel. Needs the right to mount; exit status 77 means that the test was skipped.
usage: tools/on-virtual-desktop tests/end_to_end/dead_drive.py PROGRAM"""

import ctypes
import os
import signal
import struct
import sys
import time
from contextlib import contextmanager

from session import SECONDS_TO_WAIT, check, named, output_of, press, run, xdotool

SKIPPED = 77
SECONDS_TO_END = 3  # the program gives itself one
NAME = "org.kavendra.Kavendra"


def skip(reason):
    print(f"SKIPPED: a file system cannot be mounted here: {reason}")
    sys.exit(SKIPPED)


@contextmanager
def dead_file_system(directory):
    """Mounts a file system (Linux FUSE protocol, version 7.31) that takes all requests and answers only the first,
    INIT."""
    libc = ctypes.CDLL(None, use_errno=True)
    try:
        device = os.open("/dev/fuse", os.O_RDWR)
    except OSError as error:
        skip(f"/dev/fuse: {error.strerror}")
    options = f"fd={device},rootmode=40755,user_id={os.getuid()},group_id={os.getgid()}"
    if libc.mount(b"dead", str(directory).encode(), b"fuse", 0, options.encode()) != 0:
        skip(f"mount: {os.strerror(ctypes.get_errno())}")
    server = os.fork()
    if server == 0:
        unique, = struct.unpack_from("8xQ", os.read(device, 1 << 17))
        init = struct.pack("IIIIHHI36x", 7, 31, 0, 0, 12, 10, 1 << 16)
        os.write(device, struct.pack("IiQ", 16 + len(init), 0, unique) + init)
        while os.read(device, 1 << 17):
            pass
    os.close(device)
    try:
        yield
    finally:
        libc.umount2(str(directory).encode(), 2)  # MNT_DETACH
        os.kill(server, signal.SIGKILL)  # closes the device, which ends all requests with an error
        os.waitpid(server, 0)


def name_is_owned():
    return "true" in output_of("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/",
                               "--method", "org.freedesktop.DBus.NameHasOwner", NAME)


def use_a_dead_drive(s):
    drive, local = s.directory / "drive", s.directory / "local"
    drive.mkdir()
    local.mkdir()
    (local / "tools.csv").write_text("Title,Command,Params,Keywords\nLocal,/,,\n")
    with dead_file_system(drive):
        s.write_settings(dataDirectoryPath=str(drive))
        s.start()
        s.query("typed")
        s.field_becomes("keys work", "typed")
        s.eventually("the progress line is shown", lambda: named("Loading launch items"))
        check("the program owns its name on the bus", name_is_owned())
        xdotool("windowactivate", "--sync", s.window)
        begin = time.monotonic()
        press("alt+F4")
        s.eventually("the window is gone", lambda: not s.windows())
        s.eventually("the name on the bus is free", lambda: not name_is_owned())
        check("that takes about a second", time.monotonic() - begin < SECONDS_TO_END)
        s.write_settings(dataDirectoryPath=str(local))
        first = s.process
        s.start()
        s.status_becomes("1 items | Loaded 1 items")
        s.quit()
        check("a thread of the first process still waits for the drive", first.poll() is None)
    check("it ends with the drive", first.wait(SECONDS_TO_WAIT) == 0)


run(use_a_dead_drive)

#!/usr/bin/python3 -B
"""Uses the finished program while the data directory does not answer. Each call of the file system that touches it
takes longer than the test waits for anything, until the test lets the directory answer.
usage: tools/on-virtual-desktop tests/end_to_end/slow_drive.py PROGRAM SLOW-DIRECTORY-LIBRARY"""

import itertools
import os
import signal
import sys
import time

from session import SECONDS_TO_WAIT, cell, check, click, named, position, press, run, xdotool

SECONDS_OF_A_CALL = 3 * SECONDS_TO_WAIT
SECONDS_TO_END = 3  # the program gives itself one


def directory(s):
    return s.directory / "drive"


def answer(s, answers):
    """Lets the slow directory answer, or not."""
    switch = s.directory / "drive.fast"
    switch.touch() if answers else switch.unlink(missing_ok=True)


def write_items(where, rows):
    where.mkdir(exist_ok=True)
    (where / "tools.csv").write_text(f"Title,Command,Params,Keywords\n{rows}\n")


def start(s):
    options = f"{os.environ['ASAN_OPTIONS']}:verify_asan_link_order=0"
    s.start(LD_PRELOAD=sys.argv[2], SLOW_DIRECTORY=str(directory(s)), SLOW_SECONDS=str(SECONDS_OF_A_CALL),
            ASAN_OPTIONS=options)


def end(s, what, action):
    begin = time.monotonic()
    action()
    s.eventually(what, lambda: s.process.poll() is not None)
    check("that takes about a second", time.monotonic() - begin < SECONDS_TO_END)
    check("the exit status is 0", s.process.returncode == 0)


def close(s):
    xdotool("windowactivate", "--sync", s.window)
    end(s, "closing the window ends the program", lambda: press("alt+F4"))


def query(s, text):
    s.query(text)
    s.field_becomes(f"the search field shows: {text}", text)


def reload(s, places=itertools.cycle([0.2, 0.5, 0.8])):
    # In different places, because two clicks in one would be a double click.
    s.choose("Reload Data Files", click_at=position("Launch items", next(places), 0.9), button=3)


def is_loading():
    return named("Loading launch items") is not None


def start_as_fast(s):
    notes = s.directory / "notes.txt"
    notes.write_text("text\n")
    write_items(directory(s), f"Notes,{notes},,one\nRemote,{directory(s)}/remote.txt,,two")
    s.write_settings(dataDirectoryPath=str(directory(s)))

    def seconds_of_start(answers):
        answer(s, answers)
        begin = time.monotonic()
        start(s)
        seconds = time.monotonic() - begin
        close(s)
        return seconds

    seconds = [(seconds_of_start(True), seconds_of_start(False)) for _ in range(2)]
    fast, slow = (min(each) for each in zip(*seconds))
    print(f"start: {fast:.2f} s, with a directory that does not answer {slow:.2f} s")
    check("the window comes as fast as from a fast directory", slow < 2 * fast + 1)


def type_during_a_load(s):
    answer(s, False)
    start(s)
    query(s, "one")
    s.eventually("the progress line is shown", is_loading)
    s.status_becomes("0 items | No item launched")
    query(s, f"{directory(s)}/tools.csv")
    query(s, "one")
    s.minimise()
    s.start_again("a second start ends")
    s.eventually("it restores the window", lambda: s.is_active())
    answer(s, True)
    s.status_becomes("1 items | Loaded 2 items")
    s.eventually("the progress line is gone", lambda: not is_loading())
    query(s, f"{directory(s)}/tools.csv")
    s.eventually("an existing path shows its button", lambda: named("Search path"))


def launch_during_a_load(s):
    answer(s, False)
    s.query("")
    press("BackSpace")
    s.status_becomes("2 items | Loaded 2 items")
    write_items(directory(s), f"Notes,{s.directory}/notes.txt,,one")
    reload(s)
    s.eventually("the progress line is shown", is_loading)
    query(s, "two")
    press("Return")
    s.eventually("the launch of a row on the drive waits", is_loading)
    s.launch("one")
    s.starts("a local row is launched meanwhile", "editor", s.directory / "notes.txt")
    s.status_becomes("1 items | Launched (default app): Notes")
    query(s, "two")
    click(cell(0, 1), button=3)
    s.windows_become(2)  # the menu asks the drive
    press("Escape")
    s.windows_become(1)
    s.choose("Change Data Directory...", click_at=position("Settings"), windows_after=2)
    s.focus_becomes("the dialog opens in another directory", "text: Directory:")
    press("Escape")
    s.windows_become(1)
    answer(s, True)
    s.windows_become(2)  # the row's file does not exist
    press("Escape")
    s.windows_become(1)
    s.status_becomes(f"0 items | Command not found: {directory(s)}/remote.txt")


def change_the_data_directory(s):
    local = s.directory / "local"
    write_items(local, "Local,/,,local")
    answer(s, False)
    s.query("local")
    reload(s)
    s.write_settings(dataDirectoryPath=str(local))
    reload(s)
    s.status_becomes("1 items | Loaded 1 items")
    s.write_settings(dataDirectoryPath=str(directory(s)))
    reload(s)
    s.eventually("the progress line is shown", is_loading)
    close(s)


def end_during_a_load(s):
    answer(s, False)
    start(s)
    end(s, "a signal ends the program", lambda: s.process.send_signal(signal.SIGTERM))


run(start_as_fast, type_during_a_load, launch_during_a_load, change_the_data_directory, end_during_a_load)

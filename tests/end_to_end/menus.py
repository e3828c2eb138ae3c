#!/usr/bin/python3 -B
"""Uses the menus of the finished program with keyboard and mouse.
usage: tools/on-virtual-desktop tests/end_to_end/menus.py PROGRAM"""

import os

from session import cell, check, click, named, output_of, position, press, run, type_text


def clipboard_becomes(s, what, text):
    s.eventually(what, lambda: output_of("timeout", 5, "xclip", "-o", "-selection", "clipboard") == text)


def pointer_is_free():
    """Whether nothing grabs the pointer: xwininfo grabs it and waits for a click."""
    return output_of("sh", "-c", "timeout 0.5 xwininfo >/dev/null; echo $?") == "124\n"


def start(s):
    file = s.directory / "My 'Docs'" / '-n "quoted".txt'
    file.parent.mkdir()
    file.write_text("text\n")
    s.write_items("Other,other,,two\nNotes,{},a  b,three".format('"' + str(file).replace('"', '""') + '"'))
    desk = s.directory
    s.install("xdg-terminal-exec", f'"{desk}/bin/record" terminal "$PWD"; while [ -d "{desk}" ]; do sleep 0.2; done')
    # Runs until the test creates the file "go".
    s.install("slow-editor", f'"{desk}/bin/record" slow-editor "$@"\n'
                             f'while [ -d "{desk}" ] && [ ! -e "{desk}/go" ]; do sleep 0.05; done')
    s.write_settings(searchPathActions=[
        {"appName": "Slow & Steady", "binaryPath": "slow-editor", "targetType": "File"}])
    s.start()
    s.query("three")
    s.status_becomes("1 items | Loaded 2 items")
    return file


def use_row_menus(s, file):
    s.choose("Copy to Clipboard", "Copy Row", click_at=cell(0, 3), button=3)
    s.status_becomes("1 items | Copied Row")
    clipboard_becomes(s, "another program pastes the row", f"Notes\t{file}\ta  b\tthree\ttools.csv")
    type_text("x")
    s.status_becomes("0 items | Copied Row")
    press("BackSpace")
    s.status_becomes("1 items | Copied Row")

    # In another column, because two clicks in one place would be a double click.
    s.choose("Open Parent Directory", click_at=cell(0, 0), button=3)
    s.starts("the parent directory opens in the file manager", "files", file.parent)
    s.status_becomes("1 items | Opened parent directory")

    press("Tab")  # to the table
    press("Menu")
    s.choose("Copy to Clipboard", "Copy Command to Execute")
    clipboard_becomes(s, "another program pastes the command line", f'"{file}" a  b')
    press("shift+F10")
    s.windows_become(2)
    press("Escape")
    s.windows_become(1)


def use_path_menu(s, file):
    s.eventually("there is no path button", lambda: not named("Search path"))
    output_of("sh", "-c", "xclip -selection clipboard >/dev/null", input=f'"{file}"')
    click(position("Search"))
    press("ctrl+a", "ctrl+v")
    s.eventually("a pasted path in quotes shows the path button", lambda: named("Search path"))

    s.choose("Open", "Open Directory with Terminal", click_at=position("Search path"))
    s.starts("a terminal starts in the directory", "terminal", file.parent)
    s.status_becomes("0 items | Opened directory in Terminal")

    s.choose("Open", "Open File with Slow & Steady", click_at=position("Search path"))
    s.starts("the configured program gets the file", "slow-editor", file)
    s.eventually("the pointer is free while it runs", pointer_is_free)
    (s.directory / "go").touch()
    s.status_becomes("0 items | Opened file with Slow & Steady")

    click(position("Search"))
    press("End", "x")
    s.eventually("a path that does not exist hides the path button", lambda: not named("Search path"))


def toggle_launch_at_login(s):
    s.choose("Launch at Login", click_at=position("Settings"), windows_after=2)
    click(position("Yes"))
    s.windows_become(1)


def launch_at_login(s):
    toggle_launch_at_login(s)
    s.status_becomes("0 items | Enabled launch at login")
    check("the program is registered", os.path.realpath(s.program) in s.system.login_item.read_text())
    toggle_launch_at_login(s)
    s.status_becomes("0 items | Disabled launch at login")
    check("the program is no longer registered", not s.system.login_item.exists())


def menus(s):
    file = start(s)
    use_row_menus(s, file)
    use_path_menu(s, file)
    launch_at_login(s)
    s.quit()


run(menus)

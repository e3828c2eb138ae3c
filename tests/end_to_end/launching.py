#!/usr/bin/python3 -B
"""Launches rows of the finished program with keyboard and mouse.
usage: tools/on-virtual-desktop tests/end_to_end/launching.py PROGRAM"""

from session import cell, click, press, run, xdotool


def first_run(s):
    s.start()
    s.status_becomes("12 items | Loaded 12 items")
    names = ["kavendra-settings.json", "kavendra-state.json", "Sample.csv"]
    s.eventually("the first run writes its files", lambda: all((s.data / name).exists() for name in names))
    s.query("open safari apple")
    s.status_becomes("1 items | Loaded 12 items")
    s.query("open web apple")
    press("ctrl+Home", "Return")  # the selected row stays selected
    s.starts("Enter opens a web address in the browser", "browser", "https://www.apple.com/")
    s.quit()


def launching(s):
    notes, folder, unknown = s.directory / "notes.txt", s.home / "Some Folder", s.directory / "file.unknown"
    notes.write_text("text\n")
    unknown.write_bytes(b"\0")
    folder.mkdir()
    s.write_items(f'''Folder,~/Some Folder,,one
Notes,{notes},,two
Quoted,{s.programs}/record,"program ""b c"" 'd ""e' ~/x",three
Wrong,no-such-program,,four
Other Browser,{s.system.browser},https://other.example/?q=a b,five
Application,test-editor.desktop,{notes},six
Application,{s.directory}/data/applications/test-browser.desktop,,seven
Unknown,{unknown},,eight''')
    s.start()
    s.status_becomes("20 items | Loaded 20 items")
    s.launch("two")
    s.starts("a file opens in its default application", "editor", notes)
    s.status_becomes("1 items | Launched (default app): Notes")
    s.launch("one")
    s.starts("a directory opens in the file manager", "files", folder)
    s.launch("three")
    s.starts("a program gets its quoted params", "program", "b c", 'd "e', s.home / "x")
    s.launch("five")
    s.starts("a named browser gets the address", "other-browser", "https://other.example/?q=a%20b")
    if s.system.has_desktop_entries:
        s.launch("six")
        s.starts("an installed application gets a file", "editor", notes)
        s.status_becomes("1 items | Launched (default app): Application")
        s.launch("seven")
        s.starts("a desktop entry is started", "browser")

    for query, missing in [("eight", unknown), ("four", "no-such-program")]:
        failure = f"Command not found: {missing}"
        s.launch(query)
        s.eventually("a failure is logged", lambda: f"] {failure}\n" in s.log.read_text())
        s.windows_become(2)
        press("Escape")
        s.windows_become(1)
        s.status_becomes(f"1 items | {failure}")

    xdotool("windowactivate", "--sync", s.window)
    s.query("two")
    s.record.write_text("")
    s.eventually("the table shows the row", lambda: cell(0, 0))
    click(cell(0, 0))
    s.starts("a click launches the row", "editor", notes)
    s.record.write_text("")
    # The window manager handles a button before it passes it on, but not a key. Hence the pause.
    xdotool("mousedown", 1, "sleep", 0.5, "key", "r", "mouseup", 1)
    s.starts("typing during a click does not cancel it", "editor", notes)
    s.status_becomes("0 items | Launched (default app): Notes")
    s.quit()


run(first_run, launching)

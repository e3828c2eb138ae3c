#!/usr/bin/python3 -B
"""Uses the finished program without seeing it: everything is read from the accessibility bus. There is no mouse.
usage: tools/on-virtual-desktop tests/end_to_end/screen_reader.py PROGRAM"""

from session import Atspi, descendants, named, press, run, shown, windows


def query(text):
    Atspi.EditableText.set_text_contents(named("Search"), text)


def texts(role):
    """All that can be read in the windows of a role: the names, and the contents of text boxes."""
    contents = [Atspi.Text.get_text(each, 0, -1) for each in shown(role) if "Text" in each.get_interfaces()]
    return [each.get_name() for each in shown(role)] + contents


def buttons():
    return [each for window in windows() for each in descendants(window) if each.get_role_name() == "push button"]


def names_and_roles(s):
    s.write_items("Team wiki,https://wiki.example/,,seeable\nBroken,no-such-program,,seeable")
    s.start()
    roles = {"Search": "text", "Launch items": "table", "Settings": "push button", "Status": "status bar"}
    for name, role in roles.items():
        s.eventually(f"{name} is a {role}", lambda: named(name).get_role_name() == role)
    s.eventually("the window is a frame", lambda: [each.get_role_name() for each in windows()] == ["frame"])
    s.eventually("every button has a name", lambda: all(each.get_name() for each in buttons()))


def launch_and_fail(s):
    message = "Command not found: no-such-program"
    query("seeable")
    s.eventually("the query filters the table", lambda: Atspi.Table.get_n_rows(named("Launch items")) == 2)
    s.status_becomes("2 items | Loaded 14 items")
    press("Down")
    s.focus_becomes("the selected row is announced", "table cell: Broken, no-such-program")
    press("Return")
    s.eventually("the text of the dialog can be read", lambda: message in texts("alert"))
    s.focus_becomes("its button has the focus", "push button: OK")
    press("Escape")
    s.focus_becomes("Escape returns to the search field", "text: Search")
    press("Return")
    s.focus_becomes("Enter opens the dialog again", "push button: OK")
    press("Return")
    s.focus_becomes("Enter returns to the search field", "text: Search")
    s.eventually("the dialog is closed", lambda: message not in texts("alert"))
    query("wiki")
    press("Return")
    s.starts("Enter opens the address", "browser", "https://wiki.example/")


def move_by_keyboard(s):
    query(str(s.home))
    s.eventually("a path shows its button", lambda: named("Search path").get_role_name() == "push button")
    press("Tab")
    s.focus_becomes("Tab moves to the table", "table*")
    press("Tab")
    s.focus_becomes("Tab moves to the path button", "push button: Search path")
    press("space", "Down")
    s.focus_becomes("its menu is announced", "menu item: Open")
    press("Escape")
    s.focus_becomes("Escape closes the menu", "push button: Search path")
    press("Tab")
    s.focus_becomes("Tab moves to the settings button", "push button: Settings")
    press("space")
    s.choose("Show Debug Summary")
    s.eventually("the debug summary can be read",
                 lambda: any(text.startswith("CSV columns: ") for text in texts("frame")))
    s.quit()


run(names_and_roles, launch_and_fail, move_by_keyboard)

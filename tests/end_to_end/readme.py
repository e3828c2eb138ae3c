#!/usr/bin/python3 -B
"""Uses the finished program with the data file and the settings that the README shows.
usage: tools/on-virtual-desktop tests/end_to_end/readme.py PROGRAM"""

import json
import re

from session import REPOSITORY, click, named, position, press, run

README = (REPOSITORY / "README.md").read_text()


def example(begin):
    """The indented example of the README that begins with these words."""
    block = re.search(rf"^    {re.escape(begin)}.*\n(?:    .*\n)*", README, re.MULTILINE)[0]
    return re.sub("^    ", "", block, flags=re.MULTILINE)


def follow_the_readme(s):
    for name in ("meld", "kate"):
        s.install(name, f'exec "{s.programs}/record" {name} "$@"')
    (s.home / "Projects").mkdir()
    s.write_settings(**json.loads("{" + example('"searchPathActions"') + "}"))
    (s.data / "tools.csv").write_text(example("Title,Command"))
    s.start()
    s.status_becomes("6 items | Loaded 6 items")
    s.launch("wiki handbook")
    s.starts("a web address opens", "browser", "https://wiki.example.com/")
    s.launch("projects")
    s.starts("a directory opens", "files", s.home / "Projects")
    s.launch("compare")
    s.starts("quotes keep a path with a blank together", "meld", s.home / "a.txt", s.home / "my notes.txt")

    s.query(str(s.data / "tools.csv"))
    s.eventually("a path shows the folder button", lambda: named("Search path"))
    s.choose("Open", "Open File with Kate", click_at=position("Search path"))
    s.starts("a configured program opens a file", "kate", s.data / "tools.csv")

    click(position("Search"))
    (s.data / "_tools.csv").write_text("ignored")
    (s.data / "more.csv").write_text("Title;Command;Params;Keywords\n")
    press("F5")
    s.eventually("another separator fails", lambda: "CSV is missing required columns: more.csv" in s.log.read_text())
    press("Escape")
    s.quit()


run(follow_the_readme)

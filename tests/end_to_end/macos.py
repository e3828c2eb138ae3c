#!/usr/bin/python3 -B
"""What the finished program has only on macOS: its bundle, built-in items and Microsoft Excel.
usage: tools/on-virtual-desktop tests/end_to_end/macos.py PROGRAM"""

import plistlib
import re
from pathlib import Path

from session import cell, check, output_of, run


def have_a_bundle(s):
    contents = Path(s.program).parent.parent
    with open(contents / "Info.plist", "rb") as file:
        info = plistlib.load(file)
    check("the bundle names its program", (contents / "MacOS" / info["CFBundleExecutable"]).samefile(s.program))
    check("the bundle has the application id", info["CFBundleIdentifier"] == "org.kavendra.Kavendra")
    version = info["CFBundleShortVersionString"]
    check("the bundle has the program's version", output_of(s.program, "--version") == f"kavendra {version}\n")
    icon = output_of("icns2png", "--list", contents / "Resources" / f"{info['CFBundleIconFile']}.icns")
    sizes = set(re.findall(r"(\d+)x\1 32-bit icon", icon))
    check("the icon has all sizes", sizes == {"16", "32", "128", "256", "512", "1024"})


def start_built_in_items(s):
    s.start()
    for query, *words in [("terminal shell", "terminal"), ("browser web internet", "open", "-a", "Safari"),
                          ("kavendra files", "files", s.data)]:
        s.launch(query)
        s.starts(f"the built-in item {query}", *words)
    s.quit()


def open_in_excel(s):
    workbook = s.home / 'Book "1".xlsx'
    workbook.write_text("the workbook")
    s.write_items('Book,"~/Book ""1"".xlsx",,budget')
    s.start(TMPDIR=str(s.directory))
    s.query("budget")
    s.choose("Open in Excel", "New Session", click_at=cell(0, 0), button=3)
    s.status_becomes("1 items | Opened Command file in Excel (new session)")
    excel = s.directory / "Applications/Microsoft Excel.app"
    s.starts("Excel opens the workbook itself", "open", "-n", "-a", excel, workbook)
    s.choose("Open in Excel", "Read-Only", click_at=cell(0, 1), button=3)
    s.status_becomes("1 items | Opened Command file in Excel (read-only)")
    script = s.record.read_text().partition("osascript\t-e\t")[2]
    copy = re.search('open workbook workbook file name "(.*)" read only true', script)[1].replace('\\"', '"')
    check("Excel opens a copy", copy != str(workbook) and Path(copy).read_text() == "the workbook")
    check("the copy is write-protected", Path(copy).stat().st_mode & 0o777 == 0o444)
    Path(copy).parent.chmod(0o755)  # so that the session can remove it
    s.quit()


run(have_a_bundle, start_built_in_items, open_in_excel)

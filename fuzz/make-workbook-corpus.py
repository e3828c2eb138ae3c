#!/usr/bin/env python3
"""Creates the seeds of the workbook fuzzers from tests/fixtures: small archives and their parts. The entries are
not compressed, so that a changed byte changes the XML."""

import io
import pathlib
import re
import zipfile

FUZZ = pathlib.Path(__file__).resolve().parent
FIXTURES = FUZZ.parent / "tests" / "fixtures"

PARTS = [
    (r"xl/workbook\.xml", "workbook-part"),
    (r"xl/_rels/workbook\.xml\.rels", "relationships-part"),
    (r"xl/sharedStrings\.xml", "shared-strings-part"),
    (r"xl/worksheets/sheet1\.xml", "worksheet-part"),
]
NEEDED = re.compile("|".join(pattern for pattern, _ in PARTS) + r"|xl/worksheets/sheet\d\.xml")

SAME_AS_OTHERS = {"open", "stored", "zip64"}


def main():
    for fixture in sorted(FIXTURES.glob("[!~]*.xls?")):
        if fixture.stem in SAME_AS_OTHERS:
            continue
        archive = zipfile.ZipFile(fixture)
        small = io.BytesIO()
        with zipfile.ZipFile(small, "w") as target:
            for name in filter(NEEDED.fullmatch, archive.namelist()):
                target.writestr(zipfile.ZipInfo(name), archive.read(name))
        write("workbook", fixture.name, small.getvalue())
        for pattern, folder in PARTS:
            for name in archive.namelist():
                if re.fullmatch(pattern, name):
                    write(folder, fixture.stem + ".xml", archive.read(name))
    # Copies as the programs wrote them: deflated, with zip64 fields, with data descriptors.
    for name in ["zip64.xlsx", "libreoffice.xlsx"]:
        write("workbook", "packed-" + name, (FIXTURES / name).read_bytes())
    write("workbook", "lock-file.xlsx", (FIXTURES / "~$open.xlsx").read_bytes())
    for _, folder in PARTS:
        write(folder, "document-type.xml", b'<!DOCTYPE a [<!ENTITY b "c">]><a>&b;</a>')
        write(folder, "utf-16.xml", "<si><t>a</t></si>".encode("utf-16"))


def write(folder, name, data):
    directory = FUZZ / "corpus" / folder
    directory.mkdir(parents=True, exist_ok=True)
    (directory / name).write_bytes(data)


main()

#!/usr/bin/python3 -B
"""Checks that the folders of src include only lower layers."""

import re
import sys
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2] / "src"

# The folders of src, and which others each may include. main.cpp may include everything.
ALLOWED = {
    "base": "",
    "platform": "base",
    "platform/desktop": "base platform",
    "data": "base platform",
    "data/csv": "base platform data",
    "data/workbook": "base platform data",
    "search": "base platform data",
    "config": "base platform data",
    "launch": "base platform data search config",
    "app": "base platform data data/csv data/workbook search config launch",
    "ui": "base platform data search config launch app",
}


def folder_of(file):
    """The folder that a file counts to: files of one system belong to the folder above."""
    return re.sub("/(freedesktop|macos)$", "", str(Path(file).parent))


includes = [(file, folder_of(file), included)
            for file in (path.relative_to(SOURCES) for path in SOURCES.rglob("*.*") if path.parent != SOURCES)
            for included in re.findall(r'^#include "(.*)"', (SOURCES / file).read_text(), re.MULTILINE)]
problems = [f"{file} includes {included}" for file, folder, included in includes
            if folder_of(included) not in [folder, *ALLOWED[folder].split()]]
sys.exit("\n".join(problems) or ("the sources were not found" if len(includes) < 100 else 0))

#!/usr/bin/python3 -B
"""Checks that what the documents name exists: links, files, commands, tests, targets and messages.
usage: documents.py BUILD-DIRECTORY"""

import json
import re
import subprocess
import sys
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1])
MAXIMUM_README_LINES = 140
FOLDERS = "bench|cmake|docs|fuzz|resources|src|tests|tools"

problems = []


def require(condition, what):
    if not condition:
        problems.append(what)


def output_of(*command):
    return subprocess.run([*map(str, command)], check=True, text=True, stdout=subprocess.PIPE).stdout


def check_links_and_paths(document, text):
    for link in re.findall(r"\]\(([^)#:]+)\)", text):
        require((document.parent / link).exists(), f"link {link}")
    for path in re.findall(rf"`((?:{FOLDERS})/[\w./-]+)", text):
        is_there = (REPOSITORY / path).exists() or (REPOSITORY / f"{path}.h").exists()
        require(is_there or "KIND" in path, f"path {path}")


def check_commands(text):
    """Checks the commands in indented blocks and in backticks."""
    commands = re.findall(r"^    (.+)$", text, re.MULTILINE) + re.findall(r"`([^`\n]+)`", text)
    presets = {preset["name"] for preset in json.loads((REPOSITORY / "CMakePresets.json").read_text())["configurePresets"]}
    targets = set(re.findall(r"^([\w-]+): phony", output_of("ninja", "-C", BUILD, "-t", "targets", "all"), re.MULTILINE))
    tests = re.findall(r"Test +#\d+: (\S+)", output_of("ctest", "--test-dir", BUILD, "-N"))
    for command in commands:
        for script in re.findall(r"^(\./\w+|tools/[\w-]+)", command):
            require((REPOSITORY / script).is_file(), command)
        for preset in re.findall(r"--preset (\w+)", command):
            require(preset in presets, command)
        for target in re.findall(r"--target ([\w-]+)", command):
            require(target in targets or target == "package", command)
        for test in re.findall(r"ctest .*-R (\w+)", command):
            require(any(test in name for name in tests), command)
        for program, cases in re.findall(r"bin/(\w+) --gtest_filter='(\S+)'", command):
            require(cases.rstrip("*") in output_of(BUILD / "bin" / program, "--gtest_list_tests"), command)


def check_messages(text):
    sources = "".join(path.read_text() for path in (REPOSITORY / "src").rglob("*.[ch]*"))
    messages = re.findall(r"^\| ([A-Z][\w ]+)(?:: | \|)", text.partition("| Message |")[2], re.MULTILINE)
    require(len(messages) > 8, "the table of messages")
    for message in messages:
        require(f'"{message}' in sources, f"message {message}")


for document in [*REPOSITORY.glob("*.md"), *(REPOSITORY / "docs").rglob("*.md")]:
    before = len(problems)
    check_links_and_paths(document, document.read_text())
    if document.parent == REPOSITORY:
        check_commands(document.read_text())
    problems[before:] = [f"{document.relative_to(REPOSITORY)} names what does not exist: {each}"
                         for each in problems[before:]]
readme = (REPOSITORY / "README.md").read_text()
check_messages(readme)
require(readme.count("\n") < MAXIMUM_README_LINES, "README.md is too long")
sys.exit("\n".join(problems) or 0)

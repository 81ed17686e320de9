"""The source passes clang-format, clang-tidy, shellcheck, black, pyflakes and checks of our own."""

import os
import re
import subprocess
from collections import Counter
from graphlib import TopologicalSorter
from pathlib import Path

from project import TOP, output_of


def tracked(*patterns: str) -> list[str]:
    listed = output_of("git", "ls-files", "-z", *patterns, cwd=TOP)
    return [file for file in listed.split("\0") if (TOP / file).is_file()]


def findings(*command: str) -> str:
    run = subprocess.run(command, cwd=TOP, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return run.stdout if run.returncode else ""


def test_clang_format_changes_nothing():
    assert findings("clang-format", "--dry-run", "--Werror", *tracked("*.cpp", "*.h", "*.c")) == ""


def test_clang_tidy_finds_nothing():
    sources = [file for file in tracked("src/*.cpp") if "_windows" not in file and "/juce/" not in file]
    listed = TOP / "build" / "clang-tidy-sources"
    listed.write_text("\n".join(sources))
    assert findings("xargs", "-a", str(listed), "-P2", "-n4", "clang-tidy", "-p", "build/sanitize", "--quiet") == ""


def test_shellcheck_finds_nothing():
    assert findings("shellcheck", "--external-sources", *scripts("#!/usr/bin/env bash")) == ""


def test_black_changes_nothing():
    assert findings("black", "--quiet", "--diff", "--check", *python_sources()) == ""


def test_pyflakes_finds_nothing():
    assert findings("pyflakes3", *python_sources()) == ""


def test_a_checkout_on_windows_has_the_same_bytes(tmp_path):
    output_of("git", "clone", "--quiet", "--config=core.autocrlf=true", TOP, tmp_path / "clone")

    listed = output_of("git", "ls-files", "--eol", cwd=tmp_path / "clone").splitlines()

    assert listed
    assert [line for line in listed if line.split()[0][2:] != line.split()[1][2:]] == []


def test_contributing_lists_each_behaviour_that_a_comment_calls_deliberate():
    section = (TOP / "CONTRIBUTING.md").read_text().split("## Behaviour that must stay")[1].split("\n## ")[0]
    rows = re.findall(r"^\| .+ \| `(\S+)` \| `(\S+)` \|$", section, re.MULTILINE)

    sources = {file: (TOP / file).read_text() for file in tracked("src/*")}
    marked = {file.removeprefix("src/"): len(re.findall("deliberate", code, re.I)) for file, code in sources.items()}
    assert Counter(file for file, _ in rows) == Counter({file: number for file, number in marked.items() if number})

    tests = "".join((TOP / file).read_text() for file in tracked("tests/program/*.py", "tests/unit/*.cpp"))
    names = re.findall(r"\bdef (test_\w+)", tests)
    names += [f"{suite}.{name}" for suite, name in re.findall(r"\bTEST(?:_F|_P)? \((\w+), (\w+)\)", tests)]
    assert [test for _, test in rows if test not in names] == []


def test_the_includes_of_the_program_form_no_circle():
    includes = {}  # of each header together with its source

    for file in tracked("src/*.h", "src/*.cpp"):
        unit = os.path.splitext(file)[0]
        named = re.findall(r'^#include "([^"]+)\.h"', (TOP / file).read_text(), re.MULTILINE)
        paths = (os.path.normpath(os.path.join(os.path.dirname(file), name)) for name in named)
        includes.setdefault(unit, set()).update(path for path in paths if path != unit)

    TopologicalSorter(includes).prepare()  # raises CycleError for a circle


def python_sources() -> list[str]:
    return tracked("*.py") + scripts("#!/usr/bin/python3")


def scripts(first_line: str) -> list[str]:
    """The files without an extension that begin with this line."""
    return [file for file in tracked() if not Path(file).suffix and is_script(TOP / file, first_line)]


def is_script(file: Path, first_line: str) -> bool:
    with file.open("rb") as opened:
        return opened.readline().decode(errors="replace").rstrip() == first_line

"""The form of the source, as .clang-format, .clang-tidy and shellcheck demand it."""

import subprocess
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]


def tracked(*patterns: str) -> list[str]:
    listed = subprocess.run(["git", "ls-files", "-z", *patterns], cwd=TOP, check=True, capture_output=True, text=True)
    return [file for file in listed.stdout.split("\0") if file]


def findings(*command: str) -> str:
    run = subprocess.run(command, cwd=TOP, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return run.stdout if run.returncode else ""


def test_every_source_has_the_layout():
    assert findings("clang-format", "--dry-run", "--Werror", *tracked("*.cpp", "*.h", "*.c")) == ""


def test_clang_tidy_finds_nothing():
    sources = [file for file in tracked("src/*.cpp") if "_windows" not in file and "/juce/" not in file]
    assert findings("xargs", "-a", write_list(sources), "-P2", "-n4", "clang-tidy", "-p", "build/native", "--quiet") == ""


def test_shellcheck_finds_nothing():
    scripts = [file for file in tracked("scripts", "tests/isolated", ".ci/run") if is_shell(TOP / file)]
    assert findings("shellcheck", "--external-sources", *scripts) == ""


def is_shell(file: Path) -> bool:
    return file.read_bytes().startswith(b"#!/usr/bin/env bash")


def write_list(files: list[str]) -> str:
    listed = TOP / "build" / "clang-tidy-sources"
    listed.write_text("\n".join(files))
    return str(listed)

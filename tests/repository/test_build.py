"""The build: its libraries, warnings, presets and objects, and the guard of the unit tests."""

import os
import re
import shutil
import subprocess
from pathlib import Path

from project import BUILD, SUPPORT, TOP, output_of

JUCE_COMMIT = "4e68af7fde8a0a64e808fb1a37999a690873c9de"  # tag 7.0.4
GOOGLETEST_COMMIT = "6910c9d9165801d8827d628cb72eb7ea9dd538c5"  # tag v1.16.0


def configured(folder: Path, git_config: str, *options: str) -> str:
    """Configures a build with this git configuration alone, and returns the output."""
    (folder / "gitconfig").write_text(git_config)
    environment = {**os.environ, "GIT_CONFIG_GLOBAL": str(folder / "gitconfig")}
    command = ["cmake", "-S", TOP, "-B", folder / "build", "-G", "Ninja", *options]
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, env=environment)
    assert run.returncode == 0, run.stdout
    return run.stdout


def juce_of_build() -> Path:
    cache = (TOP / "build" / "sanitize" / "CMakeCache.txt").read_text()
    return Path(re.search("^ORVEX_JUCE_MODULES_DIR:PATH=(.+)$", cache, re.MULTILINE)[1])


def publish(repository: Path, commit: str) -> None:
    """Makes a git repository of a folder. Its own commit replaces the given commit of another repository."""
    git = ["git", "-C", str(repository), "-c", "user.name=test", "-c", "user.email=test@example.com"]

    for order in (
        ["-c", "init.defaultBranch=main", "init"],
        ["add", "--all"],
        ["commit", "--message=Stand in"],
        ["update-ref", f"refs/replace/{commit}", "HEAD"],
    ):
        subprocess.run([*git, *order], check=True, stdout=subprocess.DEVNULL)


def test_fetches_juce_7_0_4_and_googletest_by_their_commits(tmp_path):
    juce, googletest = tmp_path / "juce", tmp_path / "googletest"
    shutil.copytree(juce_of_build(), juce / "modules")
    shutil.copytree("/usr/src/googletest", googletest)
    header = juce / "modules" / "juce_core" / "system" / "juce_StandardHeader.h"
    header.write_text(re.sub(r"(?<=#define JUCE_BUILDNUMBER)\s+\d+", " 4", header.read_text()))
    publish(juce, JUCE_COMMIT)
    publish(googletest, GOOGLETEST_COMMIT)
    git_config = f"""\
[url "file://{juce}"]
    insteadOf = https://github.com/juce-framework/JUCE.git
[url "file://{googletest}"]
    insteadOf = https://github.com/google/googletest.git
[remote "origin"]
    fetch = +refs/replace/*:refs/replace/*
"""

    nothing_at_hand = ["-DORVEX_JUCE_MODULES_DIR=", "-DORVEX_GOOGLETEST_DIR=", "-DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON"]

    said = configured(tmp_path, git_config, *nothing_at_hand)

    assert f"JUCE 7.0.4 in {tmp_path}/build/_deps/juce-src/modules" in said
    assert (tmp_path / "build" / "_deps" / "juce-src" / ".git" / "HEAD").read_text() == f"{JUCE_COMMIT}\n"
    assert (tmp_path / "build" / "_deps" / "googletest-src" / ".git" / "HEAD").read_text() == f"{GOOGLETEST_COMMIT}\n"


def test_fetches_nothing_if_both_are_installed(tmp_path):
    said = configured(tmp_path, "")

    assert f"JUCE 7.0.5 in {juce_of_build()}" in said
    assert not (tmp_path / "build" / "_deps").exists()


def test_turns_warnings_into_errors_only_in_the_presets(tmp_path):
    configured(tmp_path, "")
    without_preset = (tmp_path / "build" / "compile_commands.json").read_text()
    with_preset = (BUILD / "sanitize" / "compile_commands.json").read_text()

    assert "-Wall" in without_preset and "-Werror" not in without_preset
    assert "-Wall" in with_preset and "-Werror" in with_preset


def test_lists_no_preset_that_needs_another_system():
    listed = output_of("cmake", "--list-presets=all", cwd=TOP)

    assert listed.count('"windows"') == 3  # to configure, to build and to test
    assert "visual-studio" not in listed


# As ctest does on Windows.
def test_starts_the_unit_tests_only_on_a_disposable_machine(tmp_path):
    unit_tests = tmp_path / "UnitTests"
    unit_tests.write_text('#!/bin/sh\ntouch "$0.started"\nexit 1\n')
    unit_tests.chmod(0o755)

    def ctest(may_clean: str) -> tuple[int, bool, bool]:
        command = [
            "cmake",
            "-D",
            f"PROGRAM={unit_tests}",
            "-P",
            TOP / "tests" / "shared" / "on-disposable-machine.cmake",
        ]
        environment = {**os.environ, "ORVEX_MAY_CLEAN_THIS_MACHINE": may_clean}
        run = subprocess.run(command, stderr=subprocess.PIPE, text=True, env=environment)
        is_skipped = "Skipped: the unit tests delete" in run.stderr
        return run.returncode, is_skipped, Path(f"{unit_tests}.started").exists()

    assert ctest("") == (0, True, False)
    assert ctest("yes") == (1, False, True)


def test_no_cleaner_throws_or_catches():
    sources = sorted(source.name for source in (TOP / "src" / "cleaning").glob("*.cpp"))
    objects = [f"CMakeFiles/orvex_cleaner.dir/src/cleaning/{name}.o" for name in sources if "_windows" not in name]
    output_of(SUPPORT / "build", "native", *objects)

    needed = output_of("nm", "--undefined-only", *objects, cwd=TOP / "build" / "native")

    assert "TessaraWorks" in needed
    assert re.findall(r"__cxa_(?:throw|rethrow|begin_catch)\b", needed) == []

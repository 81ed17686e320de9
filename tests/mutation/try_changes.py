#!/usr/bin/python3
"""Changes the code under src in one small place at a time, and lists the changes that no test notices.

Each change is built and tried with the unit tests and the whole-program tests until one of them fails: first on Linux,
then on Linux with the sanitizers; a change to a file that only Windows compiles is tried under Wine. A change that does
not compile does not count. tests/mutation/excuses.txt lists the changes that may survive, each with the reason. The
run fails if any other change survives, or if an excuse is no longer needed.

Every worker has a copy of the whole tree in build/mutation, with builds of its own. The commands that it starts see
the copy at the path of the tree itself.
"""

import argparse
import itertools
import os
import re
import shutil
import subprocess
import sys
import time
from collections import Counter
from collections.abc import Iterable
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import NamedTuple

from changes import TOP, Change, all_changes, excuses

COPIES = TOP / "build" / "mutation"
NO_CHANGE, SURVIVOR = "not compiled", "not noticed"

SLOW = "UninstallerTimeLimit*"  # these tests wait for the time limit


class Attempt(NamedTuple):
    """A command that runs tests on a kind of machine."""

    kind: str
    command: tuple[str, ...]


def attempts_on(kind: str) -> list[Attempt]:
    unit_tests = "scripts/support/unit-tests", f"build/{kind}", "build/unit-tests.xml", "--gtest_fail_fast"
    pytest = "/usr/bin/python3", "-m", "pytest", "-x", "-q", "-p", "no:cacheprovider", "--basetemp=build/pytest"
    return [
        Attempt(kind, (*unit_tests, f"--gtest_filter=-{SLOW}")),
        Attempt(kind, ("env", f"ORVEX_TEST_MACHINES={kind}", *pytest, "tests/program", "--full-size")),
        Attempt(kind, (*unit_tests, f"--gtest_filter={SLOW}")),
    ]


def attempts_for(file: str) -> list[Attempt]:
    """The attempts for a change to a file, in order, until one notices it."""
    if "_windows" in file:
        return attempts_on("windows")

    on_linux = attempts_on("native") + attempts_on("sanitize")
    return on_linux if "_linux" in file else on_linux + attempts_on("windows")[:1]


class Tree:
    """A worker's copy of the whole tree, with builds of its own."""

    def __init__(self, number: int):
        self.folder = COPIES / f"tree-{number}"

    def run(self, command: list[str], seconds: float | None = None, output=subprocess.DEVNULL) -> int | None:
        """Runs a command on this tree, at the path of the original, and ends all that it starts. Returns its exit code,
        or None after so many seconds."""
        options = ["--die-with-parent", "--unshare-pid", "--dev-bind", "/", "/", "--proc", "/proc", "--tmpfs", "/tmp"]
        options += ["--bind", str(self.folder), str(TOP), "--chdir", str(TOP)]
        limited = ["prlimit", f"--fsize={1 << 30}", *command]  # a changed program may write without end
        files = {"stdin": subprocess.DEVNULL, "stdout": output, "stderr": subprocess.STDOUT}

        with subprocess.Popen(["bwrap", *options, "--", *limited], **files) as process:
            try:
                return process.wait(seconds)
            except subprocess.TimeoutExpired:
                process.kill()
                return None


class Trial:
    """The trees, and how long the tests take on the program as it is."""

    def __init__(self, files: list[str], workers: int):
        self.trees = [Tree(number) for number in range(workers)]
        self.seconds = {}
        update(self.trees[0].folder, TOP)
        attempts = list(dict.fromkeys(attempt for file in files for attempt in attempts_for(file)))

        for kind in dict.fromkeys(attempt.kind for attempt in attempts):
            print(f"Building: {kind}", file=sys.stderr)
            self.demand(
                ["cmake", "--preset", kind, f"-DCMAKE_PROJECT_OrvexCleaner_INCLUDE={TOP}/tests/mutation/build.cmake"]
            )
            self.demand(build(kind))

        for attempt in attempts:
            print("Running:", *attempt.command, file=sys.stderr)
            start = time.monotonic()
            self.demand(attempt.command)
            self.seconds[attempt] = time.monotonic() - start

        for tree in self.trees[1:]:
            subprocess.run(["rm", "-rf", tree.folder], check=True)
            subprocess.run(["cp", "-a", "--reflink=auto", self.trees[0].folder, tree.folder], check=True)

    def demand(self, command: Iterable[str]) -> None:
        """Runs a command that must succeed while nothing is changed."""
        log = COPIES / "log"

        with log.open("wb") as output:
            exit_code = self.trees[0].run(command, output=output)

        if exit_code != 0:
            sys.exit(log.read_text(errors="replace"))

    def outcome(self, change: Change, tree: Tree) -> str:
        """Whether a change is noticed, and by what."""
        file = tree.folder / change.file
        unchanged = file.read_bytes()
        file.write_text(change.result)

        try:
            return self.outcome_in(tree, attempts_for(change.file))
        finally:
            file.write_bytes(unchanged)

    def outcome_in(self, tree: Tree, attempts: list[Attempt]) -> str:
        built = None

        for attempt in attempts:
            if attempt.kind != built and tree.run(build(attempt.kind)) != 0:
                return NO_CHANGE

            built = attempt.kind
            exit_code = tree.run(attempt.command, 30 + 5 * self.seconds[attempt])

            if exit_code != 0:
                noticed_by = {None: "a time-out", 1: "a failed test"}.get(exit_code, "a crash")
                return f"{attempt.kind}: {noticed_by}"

        return SURVIVOR


def build(kind: str) -> tuple[str, ...]:
    return "cmake", "--build", f"build/{kind}", "--target", "UnitTests", "OrvexCleaner", "TestTools"


def update(copy: Path, original: Path) -> None:
    """Makes a copy, and writes only files that differ, so that a build does not start from nothing."""
    if original.is_dir():
        copy.mkdir(parents=True, exist_ok=True)
        left_alone = {".git", "build", "dist"} if original == TOP else {"__pycache__"}
        names = {file.name for file in original.iterdir()} - left_alone

        for gone in {file.name for file in copy.iterdir()} - names - left_alone:
            subprocess.run(["rm", "-r", copy / gone], check=True)

        for name in names:
            update(copy / name, original / name)
    elif not copy.exists() or copy.read_bytes() != original.read_bytes():
        shutil.copy(original, copy)


def main() -> int:
    parser = argparse.ArgumentParser(
        prog="scripts/mutate", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--only", default="", metavar="PATTERN", help="only changes whose file or line matches")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="try so many at once")
    parser.add_argument("--list", action="store_true", help="only list the changes")
    options = parser.parse_args()

    changes = [c for c in all_changes() if re.search(options.only, f"{c.file}:{c.line_number}: {c.line}")]

    if options.list:
        print(*changes, f"{len(changes)} changes", sep="\n")
        return 0

    excused = excuses()
    files = [list(group) for _, group in itertools.groupby(changes, lambda change: change.file)]
    trial = Trial([group[0].file for group in files], options.jobs)
    outcomes: dict[Change, str] = {}

    def try_file(group: list[Change]) -> None:
        tree = trial.trees.pop()

        for change in group:
            outcome = outcomes[change] = trial.outcome(change, tree)
            print(f"{len(outcomes)} of {len(changes)}: {outcome}", file=sys.stderr, flush=True)

            if outcome == SURVIVOR or "time-out" in outcome:
                print(f"{outcome}: {change}", flush=True)

            if outcome == SURVIVOR:
                print(f"    {excused.get(change.key, 'NOT EXPLAINED')}", flush=True)

        trial.trees.append(tree)

    with ThreadPoolExecutor(options.jobs) as pool:
        list(pool.map(try_file, sorted(files, key=len, reverse=True)))

    print(f"{len(changes)} changes:")

    for outcome, count in sorted(Counter(outcomes.values()).items()):
        print(f"{count:5} {outcome}")

    survivors = {change.key for change, outcome in outcomes.items() if outcome == SURVIVOR}
    needless = {change.key for change in changes if change.key in excused} - survivors
    print(f"{len(survivors & excused.keys())} explained, {len(survivors - excused.keys())} not explained")

    for file, line, description in sorted(needless):
        print(f"Excused, but noticed: {file}: {line}\n    {description}")

    return 1 if needless or survivors - excused.keys() else 0


if __name__ == "__main__":
    sys.exit(main())

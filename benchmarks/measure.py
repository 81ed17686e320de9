"""Measures the program against yardsticks, and prints a table of the ratios.

The table is also written to docs/performance.md, with the prose of benchmarks/performance.md.in. That takes
about five minutes, two gigabytes in /dev/shm, and a machine that does nothing else. With --quick the
amounts are so small that the figures mean nothing, and nothing is written: it checks that the measuring works.
"""

import argparse
import os
import platform
import re
import resource
import shutil
import subprocess
import sys
import time
from dataclasses import dataclass
from datetime import date
from functools import partial
from itertools import chain, cycle, permutations
from pathlib import Path
from statistics import median, quantiles

TOP = Path(__file__).resolve().parents[1]
BUILD = TOP / "build"
SUPPORT = TOP / "scripts" / "support"
SCRATCH = Path(f"/dev/shm/orvex-bench-{os.getpid()}")  # in memory: a disk's time depends on what was on it before
CONSOLE = SCRATCH / "Console.txt"  # /dev/null is written to character by character, as if it were a real one
WINE_PREFIX = BUILD / "bench-windows"
DRIVE_C = WINE_PREFIX / "drive_c"


class Amounts:
    """How much of everything is measured."""

    def __init__(self, quick: bool):
        self.rounds, self.rounds_under_wine, self.warm_ups = (1, 1, 0) if quick else (6, 12, 1)
        self.starts, self.starts_under_wine = (5, 2) if quick else (402, 42)
        self.folders, self.files_in_folders = (20, 1000) if quick else (200, 100_000)
        self.files_in_one_folder = 1000 if quick else 400_000
        self.files_under_wine = 200 if quick else 20_000
        self.lines, self.lines_under_wine = (200, 50) if quick else (50_000, 20_000)


# Measurements: each function makes one run and returns what it took.


def make_files(folder: Path, folders: int, files: int) -> None:
    """Spreads small files over this number of new folders, or puts them into the folder itself for 0."""
    for number in range(max(folders, 1)):
        target = folder / f"Pack {number}" if folders else folder
        target.mkdir(parents=True)
        opened = os.open(target, os.O_RDONLY)

        for file in range(files // max(folders, 1)):
            written = os.open(f"Sample {file}.pack", os.O_CREAT | os.O_WRONLY, dir_fd=opened)
            os.write(written, b"samples")
            os.close(written)

        os.close(opened)


def on_linux(name: str) -> list[str]:
    return [str(BUILD / "native" / ("" if name == "OrvexCleaner" else "benchmarks") / name)]


def under_wine(name: str) -> list[str]:
    return ["wine", f"C:\\{name}.exe"]


@dataclass
class Use:
    """The resources that a command took."""

    seconds: float
    processor_seconds: float
    peak_megabytes: float


def use_of(command: list[str], environment: dict[str, str], folder: Path = SCRATCH) -> Use:
    """Runs a command, which must succeed."""
    with open(CONSOLE, "wb") as console:
        started = time.perf_counter()
        process = subprocess.Popen(command, env=environment, cwd=folder, stdin=subprocess.DEVNULL, stdout=console)
        _, status, usage = os.wait4(process.pid, 0)
        elapsed = time.perf_counter() - started

    process.returncode = os.waitstatus_to_exitcode(status)

    if process.returncode != 0:
        sys.exit(f"bench: exit code {process.returncode} of {command}")

    return Use(elapsed, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024)


def milliseconds_of_start(command: list[str], environment: dict[str, str]) -> float:
    """The time from the start of a short command to its end, with as little as possible around it."""
    console = [(os.POSIX_SPAWN_OPEN, 1, str(CONSOLE), os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)]
    started = time.perf_counter()
    process = os.posix_spawnp(command[0], command, environment, file_actions=console)
    _, status = os.waitpid(process, 0)
    elapsed = 1000 * (time.perf_counter() - started)

    if status != 0:
        sys.exit(f"bench: exit code {os.waitstatus_to_exitcode(status)} of {command}")

    return elapsed


def deletion_on_linux(folders: int, files: int, command: list[str]) -> Use:
    machine = SCRATCH / "machine"
    content = machine / "opt" / "TessaraWorks" / "Content"
    make_files(content, folders, files)
    program = ["--file", command[0], "/bin/program", "--", "/bin/program", *command[1:]]
    use = use_of([str(TOP / "tests" / "shared" / "isolated"), str(machine), *program], dict(os.environ))

    if content.exists():
        sys.exit(f"bench: not deleted by {command}")

    return use


def deletion_under_wine(folders: int, files: int, command: list[str]) -> float:
    content = DRIVE_C / "ProgramData" / "TessaraWorks" / "Content"
    make_files(content, folders, files)

    if "--clean=Content" in command:
        elapsed = seconds_until_the_end(command)
    else:
        elapsed = use_of(command, wine_environment(), DRIVE_C).seconds

    if content.exists():
        sys.exit(f"bench: not deleted by {command}")

    return elapsed


def seconds_until_the_end(command: list[str]) -> float:
    """The time until the program waits for Enter. After that, Explorer starts."""
    started = time.perf_counter()
    pipes = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE}

    with subprocess.Popen(command, env=wine_environment(), cwd=DRIVE_C, **pipes) as process:
        process.stdin.write(b"y\n")
        process.stdin.flush()

        for line in process.stdout:
            if line.startswith(b"Press enter"):
                break

        elapsed = time.perf_counter() - started
        process.kill()

    return elapsed


def lines_per_second(lines: int, program: list[str], folder: Path, environment: dict[str, str]) -> float:
    file = folder / "Lines.log"
    file.unlink(missing_ok=True)
    return lines / use_of([*program, str(lines), file.name], environment, folder).seconds


# Comparisons: each function yields rows of the table.


def deletions_on_linux(amounts: Amounts):
    content = "/opt/TessaraWorks/Content"
    program = [*on_linux("OrvexCleaner"), "--clean=Content"]
    bare_call = [*on_linux("DeleteRecursively"), content]
    rm = ["/bin/rm", "-rf", content]

    for place, folders, files in (
        (f"{amounts.folders} folders", amounts.folders, amounts.files_in_folders),
        ("one folder", 0, amounts.files_in_one_folder),
    ):
        runs = [partial(deletion_on_linux, folders, files, command) for command in (program, bare_call, rm)]
        uses = compare(amounts.rounds, amounts.warm_ups, runs)
        times = [[use.seconds for use in used] for used in uses]
        processor_times = [[use.processor_seconds for use in used] for used in uses]
        peaks = [[use.peak_megabytes for use in used] for used in uses]
        measured = f"Delete {files:,} files in {place}, Linux"
        yield row(measured, "s", times[0], "bare call", times[1])
        yield row(measured, "s", times[0], "`rm -rf`", times[2])
        yield row("Processor time of that", "s", processor_times[0], "bare call", processor_times[1])

    yield row("Peak memory of that", "MB", peaks[0], "bare call", peaks[1])


def deletions_under_wine(amounts: Amounts):
    content = "C:\\ProgramData\\TessaraWorks\\Content"
    program = [*under_wine("OrvexCleaner"), "--clean=Content"]
    bare_call = [*under_wine("DeleteRecursively"), content]

    # In one folder, Wine would take a minute: it looks for each name, in upper and lower case, among all.
    folders, files = amounts.folders, amounts.files_under_wine
    runs = [partial(deletion_under_wine, folders, files, command) for command in (program, bare_call)]
    times = compare(amounts.rounds_under_wine, amounts.warm_ups, runs)
    measured = f"Delete {files:,} files in {folders} folders, Wine"
    yield row(measured, "s", times[0], "bare call", times[1])


def starts(amounts: Amounts):
    for system, environment, command, nothing, number in (
        ("Linux", dict(os.environ), on_linux, "/nothing", amounts.starts),
        ("Wine", wine_environment(), under_wine, "C:\\nothing", amounts.starts_under_wine),
    ):
        program = [*command("OrvexCleaner"), "--version"]
        bare_call = [*command("DeleteRecursively"), nothing]
        runs = [partial(milliseconds_of_start, c, environment) for c in (program, command("HelloWorld"), bare_call)]
        times = compare(number, amounts.warm_ups, runs)
        yield row(f"Start `--version`, {system}", "ms", times[0], "hello-world", times[1])
        yield row(f"Start `--version`, {system}", "ms", times[0], "bare call for nothing", times[2])


def log_lines(amounts: Amounts):
    for system, environment, command, folder, lines, rounds in (
        ("Linux", dict(os.environ), on_linux, SCRATCH, amounts.lines, amounts.rounds),
        ("Wine", wine_environment(), under_wine, DRIVE_C, amounts.lines_under_wine, amounts.rounds_under_wine),
    ):
        programs = [command("LogLines"), command("AppendLines")]
        runs = [partial(lines_per_second, lines, program, folder, environment) for program in programs]
        rates = compare(rounds, amounts.warm_ups, runs)
        yield row(f"Log lines, {system}", "lines/s", rates[0], "appending directly", rates[1], more_is_better=True)


def size():
    kilobytes = [[os.path.getsize(DRIVE_C / file) / 1000] for file in ("OrvexCleaner.exe", "HelloWorld.exe")]
    yield row("Size of the executable, Windows", "kB", kilobytes[0], "hello-world", kilobytes[1])


def compare(rounds: int, warm_ups: int, runs: list) -> list[list]:
    """The results of each run, round by round. The runs take turns in every order, so that the order favours none."""
    results = [[] for _ in runs]
    orders = cycle(permutations(range(len(runs))))

    for number, order in zip(range(warm_ups + rounds), orders):
        for index in order:
            result = runs[index]()

            if number >= warm_ups:
                results[index].append(result)

    return results


def row(measured: str, unit: str, program, yardstick: str, its_own, more_is_better: bool = False) -> list[str]:
    """A row of the table. The ratio is that of the medians, the spread that of the middle half of the rounds."""
    ratios = [y / p if more_is_better else p / y for p, y in zip(program, its_own)]
    ratio = median(its_own) / median(program) if more_is_better else median(program) / median(its_own)
    spread = "{:.2f} to {:.2f}".format(*quantiles(ratios, method="inclusive")[::2]) if len(ratios) > 1 else ""
    medians = amount(median(program), unit), amount(median(its_own), unit)
    return [measured, medians[0], yardstick, medians[1], f"**{ratio:.2f}**", spread]


def amount(value: float, unit: str) -> str:
    return f"{value:,.0f} {unit}" if value >= 100 else f"{value:.3g} {unit}"


# The machine


def wine_environment() -> dict[str, str]:
    script = f'. "{SUPPORT}/wine-environment" "{WINE_PREFIX}" && unset DISPLAY && env -0'
    listed = subprocess.run(["bash", "-c", script], check=True, capture_output=True, text=True).stdout
    return dict(line.split("=", 1) for line in listed.split("\0") if line)


def described_machine() -> str:
    cpu = next(line.split(":")[1] for line in open("/proc/cpuinfo") if line.startswith("model name"))
    wine = output("wine", "--version")
    load = f"load average {os.getloadavg()[2]:.1f} (this program's own is 1)"
    return f"{cpu.strip()}, {os.cpu_count()} cores, Linux {platform.release()}, {wine}, {load}"


def output(*command: str) -> str:
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def prepare() -> None:
    for preset in ("native", "windows"):
        subprocess.run([SUPPORT / "build", preset, "OrvexCleaner", "benchmarks"], check=True)

    # The program does nothing unless it is root, but here it needs none of root's rights.
    if os.geteuid() != 0:
        os.execvp("unshare", ["unshare", "--map-root-user", sys.executable, *sys.argv])

    # Wine's programs and its server wait for each other all the time. On an idle machine, waking another core
    # for that takes longer than the work that is measured.
    os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})

    SCRATCH.mkdir(mode=0o700)
    subprocess.run([SUPPORT / "wine-prefix", WINE_PREFIX], check=True)
    in_memory = DRIVE_C / "ProgramData" / "TessaraWorks"
    in_memory.unlink(missing_ok=True)
    in_memory.symlink_to(SCRATCH)

    for program in [BUILD / "windows" / "OrvexCleaner.exe", *(BUILD / "windows" / "benchmarks").glob("*.exe")]:
        shutil.copy(program, DRIVE_C)


def main() -> None:
    parser = argparse.ArgumentParser(
        prog="scripts/bench", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--quick", action="store_true", help="measure very little, and write nothing")
    quick = parser.parse_args().quick
    amounts = Amounts(quick)
    prepare()
    # As in scripts/support/wine-environment, and the same for everything measured, under Wine or not.
    resource.setrlimit(resource.RLIMIT_DATA, (0, resource.getrlimit(resource.RLIMIT_DATA)[1]))
    subprocess.run(["wineserver", "--persistent"], env=wine_environment(), check=True)
    start_windows = ["wine", "cmd", "/c", "exit"]
    subprocess.run(start_windows, env=wine_environment(), cwd=DRIVE_C, check=True)
    header = ["Measured", "Orvex Cleaner", "Yardstick", "", "Ratio", "Spread"]
    lines = []
    ratios = {}  # by what was measured and the yardstick

    try:
        for cells in chain(
            [header, ["---"] * len(header)],
            deletions_on_linux(amounts),
            deletions_under_wine(amounts),
            starts(amounts),
            log_lines(amounts),
            size(),
        ):
            lines.append("| " + " | ".join(cells) + " |")
            print(lines[-1], flush=True)
            ratios[cells[0], cells[2]] = cells[4].strip("*")
    finally:
        subprocess.run(["wineserver", "--kill"], env=wine_environment(), check=False)
        subprocess.run(["rm", "-rf", SCRATCH], check=True)

    if not quick:
        prose = (TOP / "benchmarks" / "performance.md.in").read_text()
        prose = re.sub("@RATIO (.+?); (.+?)@", lambda place: ratios[place[1], place[2]], prose)
        prose = prose.replace("@DATE@", date.today().isoformat()).replace("@MACHINE@", described_machine())
        (TOP / "docs" / "performance.md").write_text(prose.replace("@TABLE@", "\n".join(lines)))


main()

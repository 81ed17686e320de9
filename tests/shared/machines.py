"""The machines on which the tests run the whole program.

A machine is a clean Windows or Linux of the tests' own. A test lays out files below its locations,
runs the program, and compares everything that the program said and did.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from contextlib import contextmanager
from functools import cache
from pathlib import Path

from project import BUILD, SUPPORT, TOP, output_of
from runs import Run
from texts import FAILURE

ISOLATED = TOP / "tests" / "shared" / "isolated"
AS_IN_CONTAINER = SUPPORT / "as-in-container"

# Each process that runs tests has a Windows of its own, a copy of the first.
FIRST_WINE_PREFIX = BUILD / "test-windows" / "first"
WINE_PREFIX = FIRST_WINE_PREFIX.with_name(
    os.environ.get("ORVEX_TEST_PART", "tests") + os.environ.get("PYTEST_XDIST_WORKER", "")
)

REQUIRES_ADMINISTRATOR = b'level="requireAdministrator"'
AS_INVOKER = b'level="asInvoker"'
UNINSTALL_KEY = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall"

DESKTOP = "/desktop"  # the argument of Wine's Explorer that starts those of the folders

CLOSED = object()  # the standard input of a program that is started without one

STAMP = re.compile(r"\[(?:0|1?[1-9]|10|2[0-3]):[0-5]\d:[0-5]\d:(?:0|[1-9]\d{0,2})\](?=\[)")
START = re.compile(
    r"(?<=Log started: )(?:[1-9]|[12]\d|3[01]) (?:Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) \d{4} "
    r"(?:[1-9]|1[0-2]):[0-5]\d:[0-5]\d[ap]m(?=\r\n)"
)


# A process of Wine that dies in this way has done its work, but its exit code is lost.
DEATH_AT_THE_END = "Inconsistency detected by ld.so: dl-fini.c"
WINE_MESSAGE = re.compile(rf"^(?:[0-9a-f]{{4}}:[a-z]+:[a-z]+:|{DEATH_AT_THE_END}).*\n".encode(), re.MULTILINE)


class VoidRun(BaseException):
    """A run that says nothing about the program. The test is repeated from its beginning."""


class Machine:
    """The common part of Windows and Linux. The locations are folders of the host."""

    newline: bytes
    shared_data: Path
    program_files: Path
    user_data: Path
    desktop: Path
    downloads: Path
    program: Path  # the file of the program
    working_folder: Path
    log_file: Path  # where the log file is expected
    kept_by_system: list[Path]  # what the system itself may change below the locations

    def __init__(self, scratch: Path, home: Path, downloads: Path):
        self.scratch = scratch
        self.downloads = downloads
        self.working_folder = downloads
        self.desktop = home / "Desktop"
        self.log_file = self.desktop / "OrvexCleaner.log"

    @property
    def vst3(self) -> Path:
        return self.program_files / "Common Files" / "VST3"

    @property
    def content(self) -> Path:
        """The one folder of the product that most tests use."""
        return self.shared_data / "TessaraWorks" / "Content"

    def tree(self) -> set[Path]:
        """Everything below the locations of products."""
        locations = (self.shared_data, self.program_files, self.user_data)
        paths = {path for location in locations for path in location.rglob("*")}
        return {path for path in paths if not any(path.is_relative_to(kept) for kept in self.kept_by_system)}

    def shown(self, path: Path) -> str:
        """The path as the program writes it."""
        raise NotImplementedError

    def command(self, arguments: tuple[str, ...], elevated: bool, has_input: bool) -> list[str]:
        raise NotImplementedError

    def environment(self) -> dict[str, str]:
        raise NotImplementedError

    def shown_folders(self) -> list[str]:
        raise NotImplementedError

    def make_undeletable(self, file: Path) -> None:
        """Lets every attempt to delete this file fail."""
        raise NotImplementedError

    def program_id(self, process: subprocess.Popen) -> int:
        """The host's id of the program itself."""
        raise NotImplementedError

    def start(self, *arguments: str, elevated: bool = True, stdin=subprocess.DEVNULL, stdout=None) -> subprocess.Popen:
        """Starts the program and goes on while it runs."""
        # Files instead of pipes: programs that it starts may outlive it and keep them open.
        with open(self.scratch / "console", "wb") as console, open(self.scratch / "errors", "wb") as errors:
            return subprocess.Popen(
                self.command(arguments, elevated, stdin is not CLOSED),
                stdin=subprocess.DEVNULL if stdin is CLOSED else stdin,
                stdout=stdout or console,
                stderr=errors,
                env=self.environment(),
                cwd=self.working_folder,
            )

    def kill(self, process: subprocess.Popen) -> None:
        """Kills the program, as the task manager does."""
        os.kill(self.program_id(process), signal.SIGKILL)

    def outcome(self, process: subprocess.Popen, timeout: float = 120) -> Run:
        """Waits for the program to end."""
        try:
            exit_code = process.wait(timeout)
        finally:
            process.kill()  # one that asks without end would fill the disk

        is_to_show = exit_code == 0 and not self.errors().endswith(FAILURE) and self.log_file.is_file()
        shown = wait_for(self.shown_folders, seconds=30) if is_to_show else self.shown_folders()

        return Run(
            console=self.console(),
            errors=self.errors(),
            exit_code=exit_code if exit_code >= 0 else 128 - exit_code,  # bubblewrap's code for a signal
            log=self.log(),
            revealed=shown,
        )

    def run(self, *arguments: str, answers: str | bytes = b"", elevated: bool = True, timeout: float = 120) -> Run:
        """Runs the program with these answers as its whole standard input."""
        with self.input(answers) as stdin:
            return self.outcome(self.start(*arguments, elevated=elevated, stdin=stdin), timeout)

    def input(self, answers: str | bytes):
        """A file of answers, open for reading."""
        given = self.scratch / "answers"
        given.write_bytes(answers.encode() if isinstance(answers, str) else answers)
        return open(given, "rb")

    def console(self) -> str:
        """The standard output of the program so far."""
        return self.text(self.scratch / "console")

    def errors(self) -> str:
        """Its standard error so far."""
        return self.text(self.scratch / "errors")

    def text(self, file: Path) -> str:
        content = WINE_MESSAGE.sub(b"", file.read_bytes())
        return STAMP.sub("[time]", without_line_ends(content, self.newline))

    def log(self) -> str | None:
        if not self.log_file.is_file():
            return None

        content = START.sub("<when>", self.log_file.read_bytes().decode())
        return STAMP.sub("[time]", without_line_ends(content.encode(), b"\r\n"))


class Windows(Machine):
    """A Wine prefix without access to the host's files. It is the same for all tests, and cleaned for each."""

    prefix = WINE_PREFIX
    newline = b"\r\n"
    build = BUILD / "windows"
    has_uninstall_entries = True  # of an earlier test, perhaps

    def __init__(self, scratch: Path):
        self.c = self.prefix / "drive_c"
        self.home = next(user for user in (self.c / "users").iterdir() if user.name != "Public")
        super().__init__(scratch, self.home, self.home / "Downloads")
        self.program = self.downloads / "OrvexCleaner.exe"
        self.shared_data = self.c / "ProgramData"
        self.program_files = self.c / "Program Files"
        self.user_data = self.home / "AppData" / "Roaming"
        self.kept_by_system = [self.shared_data / "Microsoft", self.user_data / "Microsoft"]
        self.clean()

    @classmethod
    def make(cls) -> None:
        """Makes the Windows unless it exists."""
        if (cls.prefix / ".ready").exists():
            return

        cls.prefix.parent.mkdir(parents=True, exist_ok=True)
        cls.carry_out(SUPPORT / "wine-prefix", FIRST_WINE_PREFIX)

        copy = cls.prefix.with_suffix(".copy")
        subprocess.run(["rm", "-rf", copy, cls.prefix], check=True)
        subprocess.run(["cp", "-a", "--reflink=auto", FIRST_WINE_PREFIX, copy], check=True)
        copy.rename(cls.prefix)

    @classmethod
    @contextmanager
    def started(cls):
        """Keeps the Windows running meanwhile."""
        cls.prepare()

        try:
            yield
        finally:
            cls.shut_down()

    @classmethod
    def prepare(cls) -> None:
        """Makes the Windows unless it exists, and starts it."""
        cls.make()
        cls.shut_down()  # an interrupted run may have left it on
        cls.carry_out("wineserver", "--persistent")

        # Its own processes come with the first one, and write to what that one was given.
        cls.carry_out("wine", "cmd", "/c", "exit")

    @classmethod
    def carry_out(cls, *command: str | Path) -> None:
        """Carries out a step that prepares the Windows, again if a process of Wine died while it ended."""
        folder = cls.prefix / "drive_c"

        for _ in range(3):
            # A file instead of a pipe: the first process of a Windows starts others, which keep it open.
            with tempfile.TemporaryFile() as output:
                exit_code = subprocess.run(
                    cls.entered(*command),
                    stdin=subprocess.DEVNULL,
                    stdout=output,
                    stderr=output,
                    env=cls.environment(),
                    cwd=folder if folder.is_dir() else TOP,
                ).returncode
                output.seek(0)
                said = output.read().decode(errors="replace")

            print(said, file=sys.stderr, end="")

            if exit_code == 0 or DEATH_AT_THE_END not in said:
                break

        assert exit_code == 0, f"{command}: {exit_code}\n{said}"

    @classmethod
    def shut_down(cls) -> None:
        subprocess.run(cls.entered("wineserver", "--kill"), env=cls.environment(), check=False)
        subprocess.run(cls.entered("wineserver", "--wait"), env=cls.environment(), check=True)

    @classmethod
    def entered(cls, *command: str) -> list[str]:
        """The command by which the host runs a command in the system that contains this Windows."""
        return ["prlimit", "--data=0:", *command]  # as scripts/support/wine-environment does

    @classmethod
    def environment(cls) -> dict[str, str]:
        return wine_environment(cls.prefix)

    def clean(self) -> None:
        self.close_explorers()

        for folder in (self.shared_data, self.program_files, self.user_data, self.desktop, self.downloads):
            folder.mkdir(parents=True, exist_ok=True)

        for folder in (self.shared_data, self.user_data):
            remove_all(folder, keep=["Microsoft"])

        remove_all(self.desktop)
        remove_all(self.downloads)
        remove_all(self.program_files, keep=["Common Files", "Internet Explorer", "Windows Media Player", "Windows NT"])
        remove_all(self.program_files / "Common Files", keep=["Microsoft Shared", "System"])
        remove_all(self.c, keep=["Program Files", "Program Files (x86)", "ProgramData", "users", "windows"])

        tools = self.build / "tests"
        shutil.copy(self.build / "OrvexCleaner.exe", self.program)
        shutil.copytree(tools, self.c / "tools", ignore=lambda folder, names: [n for n in names if ".exe" not in n])

        if self.has_uninstall_entries:
            self.register({})
            type(self).has_uninstall_entries = False

    def register(self, entries: dict[str, dict[str, str]]) -> None:
        """Makes these the machine's only uninstall entries: their values, by the names of their keys."""
        lines = [f"[-{UNINSTALL_KEY}]", f"[{UNINSTALL_KEY}]"]

        for key, values in entries.items():
            lines.append(f"[{UNINSTALL_KEY}\\{key}]")
            lines += [f'"{name}"="{escaped(value)}"' for name, value in values.items()]

        self.change_registry(*lines)

    def change_registry(self, *lines: str) -> None:
        """Imports the lines of a .reg file, which may change the uninstall entries and nothing else."""
        type(self).has_uninstall_entries = True
        content = "\r\n".join(["Windows Registry Editor Version 5.00", *lines, ""])
        (self.c / "tools" / "changes.reg").write_bytes(content.encode("utf-16"))
        self.carry_out("wine", "regedit", "/S", "C:\\tools\\changes.reg")

    def place_uninstaller(self, file: Path, *orders: str) -> None:
        """Places a stub that notes its calls and carries out its orders; see StubUninstaller.h."""
        file.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.build / "tests" / "StubUninstaller.exe", file)
        file.with_suffix(".orders").write_text("".join(f"{order}\n" for order in orders))

    def calls(self, file: Path) -> list[str]:
        """The command lines of the calls of a stub so far, each followed by "done" if the stub came to its end."""
        notes = file.with_suffix(".calls")
        return notes.read_text().splitlines() if notes.exists() else []

    @contextmanager
    def without(self, *locations: str):
        """Removes the folders of these locations, so that their lookup fails."""
        folders = [getattr(self, location) for location in locations]

        for folder in folders:
            folder.rename(self.c / f"{folder.name} aside")

        try:
            yield
        finally:
            for folder in folders:
                shutil.rmtree(folder, ignore_errors=True)
                (self.c / f"{folder.name} aside").rename(folder)

    def shown(self, path: Path) -> str:
        return "C:\\" + str(path.relative_to(self.c)).replace("/", "\\")

    def command(self, arguments: tuple[str, ...], elevated: bool, has_input: bool) -> list[str]:
        program = self.program
        runners = []

        if not elevated:
            # Wine 10 elevates a program whose manifest asks for an administrator.
            image = program.read_bytes()
            assert image.count(REQUIRES_ADMINISTRATOR) == 1
            program = self.c / "tools" / "OrvexCleaner.exe"
            program.write_bytes(image.replace(REQUIRES_ADMINISTRATOR, AS_INVOKER.ljust(len(REQUIRES_ADMINISTRATOR))))
            runners += ["C:\\tools\\Run.exe", "unelevated"]

        runners += [] if has_input else ["C:\\tools\\Run.exe", "without-input"]
        return self.entered("wine", *runners, self.shown(program), *arguments)

    def program_id(self, process: subprocess.Popen) -> int:
        return process.pid

    def outcome(self, process: subprocess.Popen, timeout: float = 120) -> Run:
        try:
            run = super().outcome(process, timeout)
        except subprocess.TimeoutExpired:
            # Once in some thousand runs, one does not end under Wine, which has only the log file left to show.
            if self.console().endswith("Press enter to exit\n"):
                raise VoidRun("The program has said everything, and did not end")
            raise

        messages = b"".join(WINE_MESSAGE.findall((self.scratch / "errors").read_bytes())).decode()
        print(messages, file=sys.stderr, end="")

        if DEATH_AT_THE_END in messages:
            raise VoidRun(messages)

        return run

    def tool(self, name: str, *arguments: str, **options) -> subprocess.Popen:
        """Starts one of the tests' small programs, or one of Windows' own."""
        return subprocess.Popen(self.entered("wine", name, *arguments), env=self.environment(), cwd=self.c, **options)

    @contextmanager
    def held(self, kind: str, name: str):
        """Another process holds something meanwhile; see Hold_windows.cpp for the kinds."""
        pipes = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE, "text": True}

        with self.tool("C:\\tools\\Hold.exe", kind, name, **pipes) as process:
            assert process.stdout.readline() == "held\n"
            yield

    def held_open(self, file: Path):
        """Keeps a file open in another process, without sharing it."""
        return self.held("file", self.shown(file))

    def programs(self) -> dict[int, list[str]]:
        """The command lines of the programs that run in this Windows, by process id."""
        found = {}

        for process in Path("/proc").glob("[0-9]*"):
            try:
                line = (process / "cmdline").read_bytes().decode(errors="replace").rstrip("\0").split("\0")
                if line[0][1:2] == ":" and self.is_of_this_windows(process):
                    found[int(process.name)] = line
            except OSError:
                pass  # it has ended meanwhile

        return found

    def is_of_this_windows(self, process: Path) -> bool:
        prefix = re.search(rb"(?:^|\0)WINEPREFIX=(.+?)\0", (process / "environ").read_bytes())
        return prefix is not None and Path(f"{process}/root{prefix[1].decode()}").samefile(self.prefix)

    def explorers(self) -> dict[int, str]:
        """The purpose of each Explorer of this Windows, a folder or the desktop, by process id."""
        programs = self.programs().items()
        return {process: " ".join(arguments) for process, (file, *arguments) in programs if "explorer.exe" in file}

    def close_explorers(self) -> None:
        # The desktop's Explorer ends a second after the last of the others, and shows no folder until then. One that was
        # just starting for a program that was killed does not end on its own.
        if not wait_for(self.end_explorers, seconds=5):
            self.prepare()

    def end_explorers(self) -> bool:
        """Ends those that show a folder, and returns whether none is left."""
        for explorer, shown in self.explorers().items():
            if shown != DESKTOP:
                os.kill(explorer, signal.SIGKILL)

        return not self.explorers()

    def shown_folders(self) -> list[str]:
        return [shown for shown in self.explorers().values() if shown != DESKTOP]

    def make_undeletable(self, file: Path) -> None:
        file.chmod(0o444)  # Wine shows this as the read-only attribute, with which Windows deletes nothing


class Linux(Machine):
    """A root folder of its own that the program takes for the whole machine."""

    newline = b"\n"

    def __init__(self, scratch: Path, preset: str):
        self.root = scratch / "machine"
        home = self.root / "home/user"
        super().__init__(scratch, home, home)
        self.program = home / "OrvexCleaner"
        self.preset = preset
        self.options = []  # of tests/shared/isolated
        self.launcher = []  # a command in front of the program
        self.shared_data = self.root / "opt"
        self.program_files = self.root / "usr"
        self.user_data = home / ".config"
        self.kept_by_system = [self.program_files / "lib", self.program_files / "lib64"]

        for folder in (self.shared_data, self.program_files, self.user_data, self.desktop):
            folder.mkdir(parents=True)

        shell = self.root / "usr/bin/xdg-open"
        shell.parent.mkdir()
        shell.write_text('#!/bin/sh\nprintf "%s\\n" "$1" >> /tmp/shown\n')
        shell.chmod(0o755)

    def shown(self, path: Path) -> str:
        return "/" + str(path.relative_to(self.root))

    def environment(self) -> dict[str, str]:
        return {**os.environ, "ISOLATED_WAY": way_of_isolation()}

    def command(self, arguments: tuple[str, ...], elevated: bool, has_input: bool) -> list[str]:
        launcher = self.launcher if has_input else ["/bin/sh", "-c", 'exec "$@" <&-', "sh", *self.launcher]
        return [
            str(ISOLATED), str(self.root),
            "--file", str(BUILD / self.preset / "OrvexCleaner"), self.shown(self.program),
            "--user", "0" if elevated else "1000",
            *self.options,
            "--", *launcher, self.shown(self.program), *arguments,
        ]  # fmt: skip

    def program_id(self, process: subprocess.Popen) -> int:
        if way_of_isolation() == "chroot":
            return process.pid

        (child,) = Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()
        return int(child)  # of bubblewrap, which the process has become

    def shown_folders(self) -> list[str]:
        calls = self.root / "tmp" / "shown"
        return calls.read_text().splitlines() if calls.exists() else []

    def make_undeletable(self, file: Path) -> None:
        if os.geteuid() == 0:
            # From a sticky folder, a file is deleted by its owner, the folder's, or one with a special right.
            for path in (file, file.parent):
                shutil.chown(path, "nobody")

            file.parent.chmod(0o1777)
        else:
            self.options += ["--file", str(file), self.shown(file)]  # which makes it a mount point


class Container(Linux):
    """A Linux that is made with the rights that root has in a container."""

    def __init__(self, scratch: Path):
        super().__init__(scratch, "native")

    def environment(self) -> dict[str, str]:
        return {**os.environ, "ISOLATED_WAY": ""}

    def command(self, arguments: tuple[str, ...], elevated: bool, has_input: bool) -> list[str]:
        return [str(AS_IN_CONTAINER), *super().command(arguments, elevated, has_input)]

    def program_id(self, process: subprocess.Popen) -> int:
        return process.pid


@cache
def way_of_isolation() -> str:
    """The way of tests/shared/isolated on this host."""
    return output_of(ISOLATED, "--way").strip()


def wine_environment(prefix: Path = WINE_PREFIX) -> dict[str, str]:
    """The environment of scripts/support/wine-environment, without a display."""
    listed = output_of("bash", "-c", f'. "{TOP}/scripts/support/wine-environment" "{prefix}" && env -0')
    environment = dict(line.split("=", 1) for line in listed.split("\0") if line)
    environment.pop("DISPLAY", None)
    environment["WINEDEBUG"] = "-all,err+all,err-winediag"
    return environment


def escaped(value: str) -> str:
    """A string as it is written between the quotes of a .reg file."""
    return value.replace("\\", "\\\\").replace('"', '\\"')


def without_line_ends(content: bytes, newline: bytes) -> str:
    """The content with "\\n" for each line end; fails at any other line end."""
    wrong = content.replace(newline, b"")
    assert b"\n" not in wrong and b"\r" not in wrong, content
    return content.replace(newline, b"\n").decode()


def answer(process: subprocess.Popen, text: bytes) -> None:
    """Types into the console of a program that runs."""
    process.stdin.write(text)
    process.stdin.flush()


def put(folder: Path, *files: str) -> None:
    """Makes files, with their folders."""
    for file in files:
        path = folder / file
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("data")


def contents_of(folder: Path) -> list[str]:
    """Everything in a folder, at any depth, by its path in it."""
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*"))


def remove_all(folder: Path, keep: list[str] = []) -> None:
    for child in folder.iterdir():
        if child.is_dir() and not child.is_symlink():
            if child.name not in keep:
                shutil.rmtree(child)
        else:
            child.unlink()


def wait_for(condition, seconds: float = 60):
    """Returns the result of the condition as soon as that is true, or its last one when the time is over."""
    end = time.monotonic() + seconds

    while not (answer := condition()) and time.monotonic() < end:
        time.sleep(0.01)

    return answer

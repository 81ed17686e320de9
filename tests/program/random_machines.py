"""Random machines, and a plain model of what the program must do on them.

A situation is all that a run depends on. The model predicts from it what the run leaves behind.
"""

from dataclasses import dataclass, field
from pathlib import Path, PurePosixPath

from hypothesis import strategies as st

from machines import UNINSTALL_KEY, put
from products import PRODUCTS
from runs import Run, failed, succeeded
from texts import (
    ALL_PRODUCTS,
    CANCELLED,
    NOT_STARTED,
    aborted,
    advice,
    cleaned,
    exited,
    file_deleted,
    file_not_deleted,
    folder_deleted,
    folder_not_deleted,
    question,
)

FOLDER, FILE, UNDELETABLE = "folder", "file", "undeletable file"
PROGRAM, TEXT = "program", "text"
KEY = UNINSTALL_KEY.removeprefix("HKEY_LOCAL_MACHINE\\")


@dataclass
class Uninstaller:
    kind: str  # a program, or a text or a folder in its place
    removes_paths: list[PurePosixPath]
    removes_keys: list[str]
    exit_code: int


@dataclass
class Situation:
    """A path's first part is the machine's location that it lies below."""

    paths: dict[PurePosixPath, str]
    arguments: list[str]
    answers: str
    uninstallers: dict[str, Uninstaller] = field(default_factory=dict)  # by the names of their files
    entries: dict[str, dict[str, str]] = field(default_factory=dict)  # their values, by the names of their keys


@dataclass
class Outcome:
    run: Run
    paths: set[Path]
    calls: dict[str, list[str]]  # what each uninstaller noted


# The random parts of a machine. A failure is shrunk to the first element of each choice.

LISTED = sorted({PurePosixPath(base) / child for product in PRODUCTS for base, child in product.table})
UNLISTED = [
    PurePosixPath("program_files/Orvex Studio 2"),
    PurePosixPath("program_files/Common Files/VST3/Other.vst3"),
    PurePosixPath("shared_data/TessaraWorks/Other"),
    PurePosixPath("shared_data/TessaraWorks/Plugins/Orvex Studio"),
    PurePosixPath("user_data/OrvexMonitor.ini"),
]

NAMES = st.sampled_from(["x", "a file", ".hidden", "Ünï", "Sub folder", "data.v1"])
FILES = st.sampled_from([FILE, FILE, FILE, UNDELETABLE])
FOLDERS = st.dictionaries(
    NAMES, st.recursive(FILES, lambda inner: st.dictionaries(NAMES, inner, max_size=3)), max_size=3
)


@st.composite
def random_paths(draw) -> dict[PurePosixPath, str]:
    paths = {}
    contents = [None, *draw(st.lists(FOLDERS | FILES, min_size=3, max_size=3))]

    # Parents come before their contents, and have none if they are files.
    for path in sorted(LISTED + UNLISTED):
        content = draw(st.sampled_from(contents))
        has_room = not any(paths.get(parent, FOLDER) != FOLDER for parent in path.parents)

        if content is not None and has_room:
            paths |= {parent: FOLDER for parent in list(path.parents)[:-2]} | tree_of(path, content)

    return paths


def tree_of(path: PurePosixPath, content: dict | str) -> dict[PurePosixPath, str]:
    if isinstance(content, str):
        return {path: content}

    below = [tree_of(path / name, inner) for name, inner in content.items()]
    return {path: FOLDER} | {inner: kind for tree in below for inner, kind in tree.items()}


KEYS = st.sampled_from("ABCDE")
PROGRAMS = ["1.exe", "2.exe"]
UNINSTALLER = st.builds(
    Uninstaller,
    kind=st.sampled_from([PROGRAM, PROGRAM, PROGRAM, TEXT, FOLDER]),
    removes_paths=st.lists(st.sampled_from(LISTED), max_size=5),
    removes_keys=st.lists(KEYS, max_size=1),
    exit_code=st.sampled_from([0, 1, 3, 259, 1602, 2**31, 2**32 - 1]),
)
UNINSTALLERS = st.fixed_dictionaries(dict.fromkeys(PROGRAMS, UNINSTALLER))

DISPLAY_NAMES = [
    "Orvex Studio",
    "Orvex version 1.4",
    "Orvex Product Manager",
    "The Orvex Studio 2",
    "Orvex version 1.4 (Orvex Studio)",
    "Orvex Product Manager for Orvex Studio",
    "orvex studio",
]
COMMANDS = [
    '"C:\\Uninstallers\\{}"',
    "C:\\Uninstallers\\{}",
    '"C:\\Uninstallers\\{}" /UNINSTALL',
    'C:\\"Uninstallers"\\{}',
    "",
]
VALUES = {
    "DisplayName": st.sampled_from(DISPLAY_NAMES),
    "UninstallString": st.builds(str.format, st.sampled_from(COMMANDS), st.sampled_from([*PROGRAMS, "Gone.exe"])),
}
ENTRIES = st.dictionaries(KEYS, st.fixed_dictionaries(VALUES), max_size=4)

ARGUMENTS = st.sampled_from(
    [[f"--clean={product.target}"] for product in PRODUCTS if product.target]
    + [["--clean=All"], ["--clean=All"], [], ["--Clean=Content"], ["Content"], ["--all", "--force"]]
)

YES_AND_NO = ["y", "Y", "", "n", "N"]
LINES = st.sampled_from(YES_AND_NO * 4 + ["yes", "no", " y", "n ", "nn", "ja", "ÿ", "0", "\t"])
UNFINISHED = st.sampled_from(YES_AND_NO)  # any other would be asked after for ever
ANSWERS = st.builds(lambda lines, last: "\n".join([*lines, last]), st.lists(LINES, max_size=12), UNFINISHED)

WITHOUT_REGISTRY = {"paths": random_paths(), "arguments": ARGUMENTS, "answers": ANSWERS}
WITH_REGISTRY = WITHOUT_REGISTRY | {"uninstallers": UNINSTALLERS, "entries": ENTRIES}


# The model of the program.

# The lines about a path, by whether it is a folder and whether it could be deleted.
DELETIONS = {
    (True, True): folder_deleted,
    (True, False): folder_not_deleted,
    (False, True): file_deleted,
    (False, False): file_not_deleted,
}


class Model:
    def __init__(self, machine, situation: Situation):
        self.machine = machine
        self.unread = situation.answers
        self.paths = dict(situation.paths)
        self.uninstallers = situation.uninstallers
        self.entries = dict(situation.entries)
        self.calls = {name: [] for name in self.uninstallers}
        self.transcript = ""

    def run(self, arguments: list[str]) -> Outcome:
        targets = {f"--clean={product.target}": product for product in PRODUCTS if product.target}

        if arguments and arguments[0] in targets:
            product = targets[arguments[0]]
            self.transcript += f"[time][Info] {product.first_line}\n"
            success = self.offer(product)
        else:
            self.transcript += ALL_PRODUCTS
            success = all([self.offer(product) for product in PRODUCTS])

        exit_code = int(bool(arguments) and arguments[0].startswith("--clean="))  # of a failure
        run = succeeded(self.machine, self.transcript) if success else failed(self.transcript, exit_code=exit_code)
        return Outcome(run, {on_machine(self.machine, path) for path in self.paths}, self.calls)

    def offer(self, product) -> bool:
        self.transcript += question(product)

        while True:
            answer, line_end, self.unread = self.unread.partition("\n")

            if answer in ("y", "Y", ""):
                return self.clean(product)

            if answer in ("n", "N"):
                self.transcript += CANCELLED
                return True

            assert line_end, "the program would ask for ever"
            self.transcript += "Y/n? "

    def clean(self, product) -> bool:
        # All lookups, even after one that failed.
        lookups = [self.uninstall(fragment, name) for fragment, name in product.lookups]
        steps = "".join(told for told, _ in lookups)

        if not all(success for _, success in lookups):
            self.transcript += aborted(product, steps)
            return False

        for path in (PurePosixPath(base) / child for base, child in product.table):
            if path in self.paths:
                is_folder = self.paths[path] == FOLDER
                steps += DELETIONS[is_folder, self.delete(path)](self.machine.shown(on_machine(self.machine, path)))

        self.transcript += cleaned(product, steps)
        return "Unable to delete" not in steps

    def delete(self, path: PurePosixPath) -> bool:
        """Leaves the undeletable files at or below the path, and the folders that they are in."""
        stubborn = [p for p, kind in self.paths.items() if kind == UNDELETABLE and p.is_relative_to(path)]
        kept = {p for p in self.paths if any(file.is_relative_to(p) for file in stubborn)}
        self.paths = {p: k for p, k in self.paths.items() if p in kept or not p.is_relative_to(path)}
        return not stubborn

    def uninstall(self, fragment: str, advised_name: str) -> tuple[str, bool]:
        """The lines about the uninstaller, and whether the run goes on."""
        found = [values for _, values in sorted(self.entries.items()) if fragment in values.get("DisplayName", "")]

        if not found:
            return "", True

        command = found[0].get("UninstallString", "").replace('"', "")
        name = command.removeprefix("C:\\Uninstallers\\")
        uninstaller = self.uninstallers.get(name)

        if uninstaller is None or uninstaller.kind != PROGRAM:
            is_file = uninstaller is not None and uninstaller.kind == TEXT
            return NOT_STARTED + advice(advised_name, command if is_file else None), False

        self.calls[name] += [f'"{command}" /SILENT', "done"]

        for path in uninstaller.removes_paths:
            self.delete(path)

        for key in uninstaller.removes_keys:
            self.entries.pop(key, None)

        return exited(uninstaller.exit_code), True


# A situation on a machine, and the outcome of a run.


def on_machine(machine, path: PurePosixPath) -> Path:
    return getattr(machine, path.parts[0]).joinpath(*path.parts[1:])


def lay_out(machine, situation: Situation) -> None:
    for path, kind in sorted(situation.paths.items()):
        place = on_machine(machine, path)

        if kind == FOLDER:
            place.mkdir(exist_ok=True)
        else:
            place.write_text(kind)

        if kind == UNDELETABLE:
            machine.make_undeletable(place)

    for name, uninstaller in situation.uninstallers.items():
        file = machine.c / "Uninstallers" / name

        if uninstaller.kind == PROGRAM:
            orders = [f"remove {machine.shown(on_machine(machine, path))}" for path in uninstaller.removes_paths]
            orders += [f"remove-key {KEY}\\{key}" for key in uninstaller.removes_keys]
            machine.place_uninstaller(file, *orders, f"exit {uninstaller.exit_code}")
        elif uninstaller.kind == TEXT:
            put(file.parent, file.name)
        else:
            file.mkdir(parents=True)

    if situation.entries:
        machine.register(situation.entries)


def run_on(machine, situation: Situation) -> Outcome:
    """Lays the situation out, runs the program, and collects the outcome."""
    before = machine.tree()
    lay_out(machine, situation)
    before -= {on_machine(machine, path) for path in situation.paths}

    run = machine.run(*situation.arguments, answers=situation.answers.encode().replace(b"\n", machine.newline))

    after = machine.tree()
    assert before <= after, "something was deleted that no test made"
    calls = {name: machine.calls(machine.c / "Uninstallers" / name) for name in situation.uninstallers}
    return Outcome(run, after - before, calls)

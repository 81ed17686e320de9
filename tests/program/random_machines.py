"""Random machines, and a plain model of what the program has to do on them.

A situation is all that a run depends on. The model predicts from it what the run leaves behind.
"""

from dataclasses import dataclass, field
from pathlib import PurePosixPath as Path

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
)

FOLDER, FILE, UNDELETABLE = "folder", "file", "undeletable file"


@dataclass
class Uninstaller:
    """A program, by the name of its file, or what stands in its place."""

    kind: str  # "program", "text", "folder" or "missing"
    removes_paths: list[Path] = field(default_factory=list)
    removes_keys: list[str] = field(default_factory=list)
    removes_uninstallers: list[str] = field(default_factory=list)
    exit_code: int = 0


@dataclass
class Situation:
    """A path's first part is the machine's location that it lies below."""

    paths: dict[Path, str]
    uninstallers: dict[str, Uninstaller]
    entries: dict[str, dict[str, str]]  # of uninstallers: their values, by the names of their keys
    arguments: list[str]
    answers: str

    def __str__(self) -> str:
        lines = [f"arguments: {self.arguments}", f"answers: {self.answers!r}"]
        lines += [f"{path}: {kind}" for path, kind in sorted(self.paths.items())]
        lines += [f"{name}: {uninstaller}" for name, uninstaller in self.uninstallers.items()]
        lines += [f"{key}: {entry}" for key, entry in self.entries.items()]
        return "\n".join(lines)


@dataclass
class Outcome:
    run: Run
    paths: set[Path]
    calls: dict[str, int]  # of each uninstaller


UNINSTALLERS = "C:\\Uninstallers\\"


def listed_paths(product) -> list[Path]:
    return [Path(base) / child for base, child in product.table]


# What is random about a machine. What comes first in a choice is what a failure is shrunk to.

LISTED = sorted({path for product in PRODUCTS for path in listed_paths(product)})
UNLISTED = [
    Path("program_files/Orvex Studio 2"),
    Path("program_files/Common Files/VST3/Other.vst3"),
    Path("shared_data/TessaraWorks/Other"),
    Path("shared_data/TessaraWorks/Plugins/Orvex Studio"),
    Path("user_data/OrvexMonitor.ini"),
]

NAMES = st.sampled_from(["x", "a file", ".hidden", "Ünï", "Sub folder", "data.v1"])
TREES = st.recursive(st.just(FILE), lambda inner: st.dictionaries(NAMES, inner, max_size=3), max_leaves=8)
FOLDERS = st.dictionaries(NAMES, TREES, max_size=3)


@st.composite
def random_paths(draw) -> dict[Path, str]:
    paths = {}
    kinds = draw(
        st.lists(st.sampled_from(["absent", FOLDER, FILE, UNDELETABLE, "stubborn folder"]), min_size=1, max_size=6)
    )

    # Parents come before what lies in them, which cannot be if they are files.
    for path in sorted(LISTED + UNLISTED):
        kind = draw(st.sampled_from(kinds))
        has_room = not any(paths.get(parent, FOLDER) != FOLDER for parent in path.parents)

        if kind == "absent" or not has_room:
            continue

        paths |= {parent: FOLDER for parent in list(path.parents)[:-2]}

        if kind in (FILE, UNDELETABLE):
            paths[path] = kind
            continue

        tree = tree_of(path, draw(FOLDERS))

        if kind == "stubborn folder":
            tree[draw(st.sampled_from([p for p, k in tree.items() if k == FOLDER])) / "stubborn"] = UNDELETABLE

        paths |= tree

    return paths


def tree_of(path: Path, content: dict | str) -> dict[Path, str]:
    if content == FILE:
        return {path: FILE}

    below = [tree_of(path / name, inner) for name, inner in content.items()]
    return {path: FOLDER} | {inner: kind for tree in below for inner, kind in tree.items()}


@st.composite
def random_uninstallers(draw) -> dict[str, Uninstaller]:
    names = [f"Uninstaller {number}.exe" for number in range(draw(st.integers(0, 3)))]
    return {
        name: Uninstaller(
            kind=draw(st.sampled_from(["program", "program", "program", "text", "folder", "missing"])),
            removes_paths=draw(st.lists(st.sampled_from(LISTED), max_size=5)),
            removes_keys=draw(st.lists(st.sampled_from("ABCDE"), max_size=1)),
            removes_uninstallers=[other for other in names if other != name and draw(st.booleans())],
            exit_code=draw(st.sampled_from([0, 1, 3, 259, 1602, 2**31, 2**32 - 1])),
        )
        for name in names
    }


def random_entries(uninstallers: dict[str, Uninstaller]):
    display_names = [
        None,
        "",
        "Orvex",
        "orvex studio",
        "Orvex Studio",
        "Orvex version 1.4",
        "Orvex Product Manager",
        "The Orvex Studio 2",
        "Orvex version 1.4 (Orvex Studio)",
        "Orvex Product Manager for Orvex Studio",
    ]
    commands = [None, "", UNINSTALLERS + "Uninstaller 9.exe"]

    for name in uninstallers:
        path = UNINSTALLERS + name
        commands += [path, f'"{path}"', f'"{path}"', f'"{path}" /UNINSTALL', f'C:\\"Uninstallers"\\{name}']

    entries = st.builds(entry, st.sampled_from(display_names), st.sampled_from(commands))
    return st.dictionaries(st.sampled_from("ABCDE"), entries, max_size=4)


def entry(display_name: str | None, command: str | None) -> dict[str, str]:
    values = {"DisplayName": display_name, "UninstallString": command}
    return {name: value for name, value in values.items() if value is not None}


ARGUMENTS = st.sampled_from(
    [[f"--clean={product.target}"] for product in PRODUCTS if product.target]
    + [["--clean=All"], ["--clean=All"], [], ["--Clean=Content"], ["Content"], ["--all", "--force"]]
)

YES_AND_NO = ["y", "Y", "", "n", "N"]
LINES = st.sampled_from(YES_AND_NO * 4 + ["yes", "no", " y", "n ", "nn", "ja", "ÿ", "0", "\t"])


@st.composite
def random_situations(draw, with_registry: bool) -> Situation:
    uninstallers = draw(random_uninstallers()) if with_registry else {}
    lines = draw(st.lists(LINES, max_size=12))
    unfinished = draw(st.sampled_from(YES_AND_NO))  # any other would be asked after for ever
    return Situation(
        paths=draw(random_paths()),
        uninstallers=uninstallers,
        entries=draw(random_entries(uninstallers)) if with_registry else {},
        arguments=draw(ARGUMENTS),
        answers="".join(f"{line}\n" for line in lines) + unfinished,
    )


# What the program has to do.

# What is told of a path, which is a folder or is not, and could be deleted or not.
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
        self.input_has_ended = False
        self.paths = dict(situation.paths)
        self.uninstallers = dict(situation.uninstallers)
        self.entries = dict(situation.entries)
        self.calls = {name: 0 for name, uninstaller in self.uninstallers.items() if uninstaller.kind == "program"}
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
        return Outcome(run, set(self.paths), self.calls)

    def offer(self, product) -> bool:
        self.transcript += f"[time][Info] {product.question}\n"

        if self.is_confirmed():
            return self.clean(product)

        self.transcript += CANCELLED
        return True

    def is_confirmed(self) -> bool:
        while True:
            self.transcript += "Y/n? "
            answer, line_end, self.unread = self.unread.partition("\n")

            if answer in ("y", "Y", ""):
                return True

            if answer in ("n", "N"):
                return False

            assert line_end, "the program would ask for ever"

    def clean(self, product) -> bool:
        # All lookups, also those behind a failed one.
        lookups = [self.uninstall(fragment, name) for fragment, name in product.lookups]
        steps = "".join(told for told, _ in lookups)

        if not all(success for _, success in lookups):
            self.transcript += aborted(product, steps)
            return False

        for path in listed_paths(product):
            if path in self.paths:
                is_folder = self.paths[path] == FOLDER
                steps += DELETIONS[is_folder, self.delete(path)](self.machine.shown(on_machine(self.machine, path)))

        self.transcript += cleaned(product, steps)
        return "Unable to delete" not in steps

    def delete(self, path: Path) -> bool:
        """Leaves the undeletable files at or below the path, and the folders that they are in."""
        stubborn = [p for p, kind in self.paths.items() if kind == UNDELETABLE and p.is_relative_to(path)]
        kept = {p for p in self.paths if any(file.is_relative_to(p) for file in stubborn)}
        self.paths = {p: k for p, k in self.paths.items() if p in kept or not p.is_relative_to(path)}
        return not stubborn

    def uninstall(self, fragment: str, advised_name: str) -> tuple[str, bool]:
        """What is told of the uninstaller, and whether the run goes on."""
        found = [values for _, values in sorted(self.entries.items()) if fragment in values.get("DisplayName", "")]

        if not found:
            return "", True

        command = found[0].get("UninstallString", "").replace('"', "")
        name = command.removeprefix(UNINSTALLERS)
        kind = self.uninstallers[name].kind if name in self.uninstallers else "missing"

        if kind == "program":
            self.carry_out(name)
            return exited(self.uninstallers[name].exit_code), True

        return NOT_STARTED + advice(advised_name, command if kind == "text" else None), False

    def carry_out(self, name: str) -> None:
        """Does what an uninstaller does."""
        uninstaller = self.uninstallers[name]
        self.calls[name] += 1

        for path in uninstaller.removes_paths:
            self.delete(path)

        for key in uninstaller.removes_keys:
            self.entries.pop(key, None)

        for other in uninstaller.removes_uninstallers:
            self.uninstallers.pop(other, None)


# The situation on a machine, and what a run leaves of it.


def on_machine(machine, path: Path):
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

    if not situation.entries:
        return

    for name, uninstaller in situation.uninstallers.items():
        file = machine.c / "Uninstallers" / name

        if uninstaller.kind == "program":
            removed = [machine.shown(on_machine(machine, path)) for path in uninstaller.removes_paths]
            removed += [UNINSTALLERS + other for other in uninstaller.removes_uninstallers]
            keys = [f"{UNINSTALL_KEY}\\{key}".partition("\\")[2] for key in uninstaller.removes_keys]
            orders = [f"remove {path}" for path in removed] + [f"remove-key {key}" for key in keys]
            machine.place_uninstaller(file, *orders, f"exit {uninstaller.exit_code}")
        elif uninstaller.kind == "text":
            put(file.parent, file.name)
        elif uninstaller.kind == "folder":
            file.mkdir(parents=True)

    machine.register(situation.entries)


def run_on(machine, situation: Situation) -> Outcome:
    """Lays the situation out, runs the program, and gathers what it left."""
    before = machine.tree()
    lay_out(machine, situation)
    before -= {on_machine(machine, path) for path in situation.paths}

    run = machine.run(*situation.arguments, answers=situation.answers.encode().replace(b"\n", machine.newline))

    after = machine.tree()
    assert before <= after, "something was deleted that no test made"
    return Outcome(
        run=run,
        paths={path_of_situation(machine, place) for place in after - before},
        calls={
            name: calls_of(machine, name)
            for name, uninstaller in situation.uninstallers.items()
            if uninstaller.kind == "program"
        },
    )


def path_of_situation(machine, place) -> Path:
    for location in ("shared_data", "program_files", "user_data"):
        if place.is_relative_to(getattr(machine, location)):
            return Path(location) / place.relative_to(getattr(machine, location))

    raise ValueError(place)


def calls_of(machine, name: str) -> int:
    """How often an uninstaller was called, each time in the right way and to its end."""
    notes = machine.calls(machine.c / "Uninstallers" / name)
    expected = [f'"{UNINSTALLERS}{name}" /SILENT', "done"]
    assert notes == expected * (len(notes) // 2)
    return len(notes) // 2

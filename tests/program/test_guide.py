"""The guide says what the program does: its folders, its messages, its exit codes."""

import re
import subprocess

from machines import TOP

GUIDE = (TOP / "docs" / "guide.md").read_text()


def sections(text: str) -> dict[str, str]:
    parts = re.split(r"^(.+)\n[=-]{3,}\n", text, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def indented_lines(text: str) -> list[str]:
    return re.findall(r"^    (\S.*)$", text, re.MULTILINE)


def test_lists_the_folders_that_the_tables_resolve_to(windows):
    tool = windows.tool("C:\\tools\\ListPaths.exe", stdout=subprocess.PIPE, text=True)
    listed = tool.communicate()[0]

    for location, variable in (
        (windows.program_files, "%ProgramFiles%"),
        (windows.shared_data, "%ProgramData%"),
        (windows.user_data, "%AppData%"),
    ):
        listed = listed.replace("\t" + windows.shown(location) + "\\", "\t" + variable + "\\")

    removed = sections(GUIDE)["What each target removes"]
    told = [
        (product, folder)
        for product, folders in re.findall(r"^(.+) \(.+\):\n\n((?:    .+\n)+)", removed, re.MULTILINE)
        for folder in indented_lines(folders)
    ]

    assert told == [tuple(line.split("\t")) for line in listed.splitlines()]


def test_tells_every_message_of_the_program_and_no_other():
    told = indented_lines(sections(GUIDE)["Messages"])
    patterns = message_patterns()

    assert [p for p in patterns if not any(re.fullmatch(p, message) for message in told)] == []
    assert [message for message in told if not any(re.fullmatch(p, message) for p in patterns)] == []


def test_tells_the_exit_codes_that_the_program_returns(windows):
    all_declined = "n\n" * 5 + "\n"

    def returned(*arguments, **options):
        return str(windows.run(*arguments, **options).exit_code)

    told = {}
    for row in indented_lines(sections(GUIDE)["Exit codes"])[1:]:
        start, outcome, exit_code = re.split(r"  +", row)
        told[start, outcome] = exit_code

    measured = {
        ("--help, --version", "the text was printed"): returned("--version"),
        ("--clean=TARGET", "all went well, or was declined"): returned("--clean=All", answers=all_declined),
        ("--clean, --clean=", "no target: nothing was done"): returned("--clean"),
        ("--clean=WORD", "no such target: nothing was done"): returned("--clean=content"),
        ("nothing, or an unknown option", "all went well, or was declined"): returned("--unknown"),
        ("anything", "no administrator rights: nothing was done"): returned("--version", elevated=False),
    }

    undeletable = windows.shared_data / "TessaraWorks" / "Content" / "Locked.pack"
    undeletable.parent.mkdir(parents=True)
    undeletable.write_text("samples")
    windows.make_undeletable(undeletable)

    measured |= {
        ("--clean=TARGET", "something failed"): returned("--clean=All"),
        ("nothing, or an unknown option", "something failed"): returned(),
    }

    assert told == measured


def test_names_tests_that_are_there():
    named = re.findall(r"^    (tests/\S+): (\w+)$", GUIDE, re.MULTILINE)

    assert named
    assert [(file, test) for file, test in named if f"def {test}(" not in (TOP / file).read_text()] == []


def test_reads_well_as_plain_text():
    assert [line for line in GUIDE.splitlines() if len(line) > 100 and not line.startswith("    ")] == []
    assert GUIDE.isascii()
    assert "\t" not in GUIDE


def message_patterns() -> list[str]:
    """A regular expression for each line that the sources can write, but for the banner and for JUCE's texts."""
    patterns = []

    for source in sorted((TOP / "src").rglob("*.cpp")):
        code = source.read_text()

        for level, message in re.findall(r"\blog \((\w+),\s*([^;]*)\);", code):
            if '"' in message:
                patterns.append(rf"\[{level}\] " + pattern(message))

        for text in re.findall(r'"(Target: [^"]+|Remove [^"]+\?)"', code):
            patterns.append(r"\[Info\] " + re.escape(text))

        for message in re.findall(r"\bfail \(([^;]*)\);", code) + re.findall(r"\b(?:cout|advice)\b\s*<<([^;]*);", code):
            lines = [line.removesuffix("\\ ") for line in pattern(message).split("\n")]
            patterns += [line for line in lines if re.search(r"\w", line)]

    return patterns


def pattern(expression: str) -> str:
    """Of joined C++ texts: the literals as they are, and ".+" for all that is known at run time only."""
    result = ""

    for piece in re.split(r"\s*(?:\+|<<)\s*(?=(?:[^\"]*\"[^\"]*\")*[^\"]*$)", expression.strip()):
        if piece.startswith('"'):
            result += re.escape(piece[1:-1])
        elif piece == "std::endl":
            result += "\n"
        elif piece != "std::flush":
            result += ".+"

    return result

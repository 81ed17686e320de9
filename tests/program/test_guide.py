"""The guide matches the program: its output, folders, messages and exit codes."""

import re
import subprocess

import pytest

from machines import STAMP, put, wait_for, wine_environment
from products import COMPANY, CONTENT, ORVEX_STUDIO, PRODUCT_MANAGER, PRODUCTS, TARGETS
from project import TOP
from release import SUPPORT_ADDRESS
from runs import clean
from texts import BANNER, FAILURE, LOG_BANNER, NO_TO_ALL, ending

# As the build makes it for the package.
GUIDE = (TOP / "docs" / "guide.md").read_text().replace("@ORVEX_CLEANER_SUPPORT_ADDRESS@", SUPPORT_ADDRESS)
FIRST_SCREEN, _, REFERENCE = GUIDE.partition("\nContents\n--------\n")


def sections(text: str) -> dict[str, str]:
    parts = re.split(r"^(.+)\n[=-]{3,}\n", text, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def indented_lines(text: str) -> list[str]:
    """The indented lines, each with the lines after it that are indented further."""
    lines = re.findall(r"^    (\S.*(?:\n {8,}\S.*)*)$", text, re.MULTILINE)
    return [re.sub(r"\s*\n\s*", " ", line) for line in lines]


def test_fits_the_essentials_on_one_screen():
    assert len(FIRST_SCREEN.rstrip().splitlines()) <= 65
    titles = ["Before you start", "Run it", "How it ends", "If it failed", "Getting help"]
    assert list(sections(FIRST_SCREEN))[1:] == titles


def test_shows_the_output_for_one_product(windows):
    studio = windows.program_files / "Orvex Studio"
    windows.place_uninstaller(studio / "unins000.exe")
    windows.register(
        {"A": {"DisplayName": "Orvex Studio 5", "UninstallString": f"{windows.shown(studio)}\\unins000.exe"}}
    )

    run = windows.run("--clean=All", answers="y\n" + NO_TO_ALL)

    shown = STAMP.sub("[time]", "\n".join(indented_lines(FIRST_SCREEN)) + "\n")
    assert shown.startswith(f"[time][Info] {ORVEX_STUDIO.question}\n")
    assert shown.replace("Y/n? y\n", "Y/n? ") in run.console


def test_names_the_lines_to_look_for_and_the_address_as_the_program_writes_them():
    named = re.findall(r'^- "(.+)":', sections(FIRST_SCREEN)["If it failed"], re.MULTILINE)
    (address,) = re.findall(r"send an email to: (\S+)", FAILURE)

    messages = [re.sub(r"\\(.)", r"\1", pattern) for pattern in message_patterns()]
    assert len(named) == 2
    assert [text for text in named if not any(text in message for message in messages)] == []
    assert f"Write to {address}." in sections(FIRST_SCREEN)["Getting help"]


def test_gives_the_time_limit_of_the_uninstallers():
    code = (TOP / "src" / "uninstall" / "RunUninstaller.cpp").read_text()
    (milliseconds,) = re.findall(r"timeLimitMilliseconds = (\d+);", code)
    seconds = int(milliseconds) // 1000

    assert f"An uninstaller gets up to {seconds} seconds" in FIRST_SCREEN
    assert set(re.findall(r"(\d+) seconds", GUIDE)) == {str(seconds)}


def test_names_the_settings_to_keep():
    kept = [child for product in PRODUCTS for base, child in product.table if base == "user_data"]

    assert "in %AppData% whose names begin with Orvex or Velantone" in FIRST_SCREEN
    assert kept
    assert [child for child in kept if not child.startswith(("Orvex", "Velantone"))] == []


def test_warns_that_the_last_question_includes_the_content(windows, content):
    shared = windows.vst3 / "TessaraWorks"
    shared.mkdir(parents=True)

    clean(windows, COMPANY)  # with a no to all other questions

    kept = [CONTENT, COMPANY]
    numbers = " and ".join(str(PRODUCTS.index(product) + 1) for product in kept)
    answers = " ".join("N" if product in kept else "Y" for product in PRODUCTS)
    assert f"answer N to questions {numbers}: {answers}." in FIRST_SCREEN
    assert not content.exists()
    assert not shared.exists()


def test_lists_its_sections():
    listed = re.findall(r"^- (.+)$", REFERENCE.split("\n\n\n")[0], re.MULTILINE)

    assert [entry.split(": ")[0] for entry in listed] == list(sections(REFERENCE))


def test_lists_the_targets_in_the_order_of_the_questions_with_their_folders():
    variables = {"program_files": "%ProgramFiles%", "shared_data": "%ProgramData%", "user_data": "%AppData%"}
    removed = sections(GUIDE)["What each target removes"]

    lists = re.findall(r"^(.+) \((?:--clean=)?(.+)\):\n\n((?:    .+\n)+)", removed, re.MULTILINE)

    assert [(name, target, indented_lines(folders)) for name, target, folders in lists] == [
        (
            product.name,
            product.target or "the last question of --clean=All",
            [variables[base] + "\\" + child.replace("/", "\\") for base, child in product.table],
        )
        for product in PRODUCTS
    ]
    assert [f"OrvexCleaner.exe --clean={product.target or 'All'}" for product in PRODUCTS] == indented_lines(
        sections(GUIDE)["Starting it from a console"]
    )


def test_lists_every_message_of_the_program_and_no_other():
    told = indented_lines(sections(GUIDE)["Messages"])
    patterns = message_patterns()

    assert [p for p in patterns if not any(re.fullmatch(p, message) for message in told)] == []
    assert [message for message in told if not any(re.fullmatch(p, message) for p in patterns)] == []
    assert told[-1].endswith("Valid targets are: " + ", ".join(TARGETS))


def test_lists_the_names_of_the_products_in_messages():
    *names, last = [product.name for product in PRODUCTS]
    advised = re.findall(r'", "/SILENT", "(.+?)" \}', all_code("products"))
    *others, last_advised = dict.fromkeys(advised)

    told = " ".join(sections(GUIDE)["Messages"].split())
    assert f"PRODUCT is {', '.join(names)}, or {last};" in told
    assert f"where an uninstaller failed, it is {', '.join(others)} or {last_advised}." in told


NO_SUCH_UNINSTALLER = {"A": {"DisplayName": "Orvex Studio 5", "UninstallString": "C:\\gone\\unins000.exe"}}


def test_shows_a_failed_run_in_full(windows):
    windows.register(NO_SUCH_UNINSTALLER)

    run = windows.run(f"--clean={ORVEX_STUDIO.target}", answers="y\n")

    shown = STAMP.sub("[time]", "\n".join(indented_lines(sections(GUIDE)["The log file"])) + "\n")
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + shown


def test_recognises_a_complete_run_by_the_end_of_each_question(windows, content):
    windows.register(NO_SUCH_UNINSTALLER)
    windows.make_undeletable(content / "Legato.pack")
    (windows.vst3 / "TessaraWorks").mkdir(parents=True)

    answered_with_yes = ORVEX_STUDIO, CONTENT, PRODUCT_MANAGER, COMPANY
    answers = "".join("y\n" if product in answered_with_yes else "n\n" for product in PRODUCTS)
    log = windows.run("--clean=All", answers=answers).log

    (paragraph,) = re.findall(r"^A run is complete.+?\n\n", GUIDE, re.MULTILINE | re.DOTALL)
    wholly, partly, not_at_all, stopped, declined = re.findall(r'"(.+?)"', " ".join(paragraph.split()))
    parts = [log.split(f"{product.question}\n")[1].split("[time][Info] Remove ")[0] for product in PRODUCTS]
    last_lines = [part.splitlines()[-1] for part in parts]
    ends = {ORVEX_STUDIO: stopped, CONTENT: not_at_all, PRODUCT_MANAGER: wholly, COMPANY: partly}
    ends_in_order = [ends.get(product, declined) for product in PRODUCTS]
    assert [end in line for end, line in zip(ends_in_order, last_lines)] == [True] * len(PRODUCTS)


def test_lists_the_exit_codes_that_the_program_returns(windows):
    def returned(*arguments, **options):
        return str(windows.run(*arguments, **options).exit_code)

    rows = [re.split(r"  +", row) for row in indented_lines(sections(GUIDE)["Exit codes"])[1:]]
    told = {(start, outcome): exit_code for start, outcome, exit_code in rows}

    measured = {
        ("--help, --version", "the text was printed"): returned("--version"),
        ("--clean=TARGET", "all went well, or you said no"): returned("--clean=All", answers=NO_TO_ALL),
        ("--clean, --clean=", "no target: nothing was done"): returned("--clean"),
        ("--clean=WORD", "no such target: nothing was done"): returned("--clean=content"),
        ("nothing, or an unknown option", "all went well, or you said no"): returned("--unknown"),
        ("anything", "no administrator rights: nothing was done"): returned("--version", elevated=False),
    }

    put(windows.content, "Locked.pack")
    windows.make_undeletable(windows.content / "Locked.pack")

    measured |= {
        ("--clean=TARGET", "something failed"): returned("--clean=All"),
        ("nothing, or an unknown option", "something failed"): returned(),
    }

    assert told == measured


# The command for many machines, as in the guide.
(COMMAND,) = re.findall(r'^    cmd /c "(.+)"$', GUIDE, re.MULTILINE)


@pytest.fixture
def content(windows):
    put(windows.content, "Legato.pack")
    return windows.content


@pytest.fixture
def output(windows):
    """The file to which the command redirects the program's output."""
    file = windows.c / "windows" / "logs" / "OrvexCleaner.txt"
    file.parent.mkdir(exist_ok=True)
    yield file
    file.unlink(missing_ok=True)


def exit_code_of(windows, command: str) -> int:
    """Runs a command in Windows' own shell beside the program, with a person there who would decline everything."""
    with windows.input(NO_TO_ALL) as person:
        run = windows.entered("wine", "cmd", "/c", command)
        return subprocess.run(run, env=wine_environment(), cwd=windows.downloads, stdin=person).returncode


LAST = len(PRODUCTS)  # the number of the last question
ALL = list(range(1, LAST + 1))

# The rows of the guide's table that can be tried: an input, and the questions that it answers with yes.
INPUTS = {
    "Enter alone": ("\n" + "n\n" * (LAST - 1), [1]),
    "Enter once too often": ("n\n\n" + "n\n" * (LAST - 2), [2]),
    "no input, or < NUL": ("", ALL),
    "fewer lines than questions": ("n\n" * (LAST - 2), ALL[-2:]),
    "only n, in UTF-8 with a byte order mark": ("\N{BYTE ORDER MARK}" + "n\n" * LAST, [LAST]),
    "only n, in UTF-16": (("n\r\n" * LAST).encode("utf-16"), []),
    "a last line without Enter, neither Y nor N": ("n\nno", []),
}
ECHOED = "echo n | OrvexCleaner.exe --clean=All"

# These need a person at the console, another machine, or a real Windows.
NOT_TRIED_HERE = [
    "a right click in the window",
    "Ctrl+Z and Enter",
    "Enter-PSSession, Invoke-Command",
    'a service, sudo with "Input closed"',
    "SSH or PsExec that breaks off",
    "a scheduled task without redirection",
]

# As the table words them.
QUESTIONS = {
    "this question": [1],
    "the next one": [2],
    "all": ALL,
    "the others": ALL[-2:],
    "the last": [LAST],
    "none": [],
}


def told_inputs() -> dict[str, tuple[str, str]]:
    rows = [re.split(r"  +", row) for row in indented_lines(sections(GUIDE)["What counts as a yes"])[1:]]
    return {row: (questions, why) for row, questions, why in rows}


def questions_answered_with_yes(windows) -> list[int]:
    log = windows.log()
    return [
        number
        for number, product in enumerate(PRODUCTS, start=1)
        if f"{product.question}\n[time][Info] Cleaning: {product.name}\n" in log
    ]


def test_lists_the_inputs_that_are_tried_here_and_those_that_cannot_be():
    assert sorted(told_inputs()) == sorted([*INPUTS, ECHOED, *NOT_TRIED_HERE])


@pytest.mark.parametrize("row", INPUTS)
def test_lists_which_inputs_count_as_a_yes(windows, row):
    answers, questions = INPUTS[row]
    told, why = told_inputs()[row]

    with windows.input(answers) as stdin:
        process = windows.start("--clean=All", stdin=stdin)

    assert wait_for(lambda: process.poll() is not None or windows.console().count("Y/n? ") > 1000, seconds=120)
    asks_without_end = process.poll() is None

    if asks_without_end:
        windows.kill(process)

    process.wait()

    assert questions_answered_with_yes(windows) == questions == QUESTIONS[told]
    assert asks_without_end == ("asks without end" in why)


def test_warns_that_an_echoed_no_is_a_yes(windows, output):
    exit_code = exit_code_of(windows, ECHOED + " > %SystemRoot%\\Logs\\OrvexCleaner.txt 2>&1")

    assert exit_code == 0
    assert questions_answered_with_yes(windows) == QUESTIONS[told_inputs()[ECHOED][0]]


def test_gives_every_tool_for_many_machines_the_same_command():
    assert [line for line in GUIDE.splitlines() if "2>&1" in line and COMMAND not in line] == []
    assert sections(GUIDE)["Many machines"].count(COMMAND) == 3


def test_the_command_for_many_machines_removes_everything_even_without_a_desktop(windows, content, output):
    output.write_text("of an earlier run")

    with windows.without("desktop"):
        exit_code = exit_code_of(windows, COMMAND)

    windows.log_file = windows.c / "OrvexCleaner.log"
    told = windows.text(output)
    assert exit_code == 0
    assert told.startswith(BANNER + "[time][Info] Target: All\n")
    assert told.endswith(ending("C:\\OrvexCleaner.log"))
    assert windows.log().startswith(LOG_BANNER + "[time][Info] Target: All\n")
    assert not content.parent.exists()


def test_the_command_for_many_machines_reports_a_failure(windows, content, output):
    windows.make_undeletable(content / "Legato.pack")

    exit_code = exit_code_of(windows, COMMAND)

    told = windows.text(output)
    assert exit_code == 1
    assert f"[Critical] Unable to delete directory: {windows.shown(content)}\n" in told
    assert told.endswith(FAILURE)


def test_the_answers_for_many_machines_keep_the_content(windows, content, output):
    (studio := windows.user_data / "Orvex").mkdir()
    making_the_answers = indented_lines(sections(GUIDE)["Unattended use"])[1 : 1 + len(PRODUCTS)]
    exit_code_of(windows, "&".join(making_the_answers))

    exit_code = exit_code_of(windows, COMMAND.replace("< NUL", "< answers.txt"))

    assert exit_code == 0
    assert windows.text(output).endswith("Press enter to exit\n")
    assert (content / "Legato.pack").exists()
    assert not studio.exists()


def test_the_command_for_many_machines_does_nothing_if_its_answers_are_missing(windows, content, output):
    exit_code_of(windows, COMMAND.replace("< NUL", "< answers.txt"))  # Wine returns another exit code than Windows

    assert windows.log() is None
    assert not output.exists()
    assert (content / "Legato.pack").exists()


@pytest.mark.parametrize(("is_locked", "exit_code"), [(False, 0), (True, 1)], ids=["success", "failure"])
def test_asks_nobody_without_a_console(windows, content, is_locked, exit_code):
    if is_locked:
        windows.make_undeletable(content / "Legato.pack")

    tool = windows.tool("C:\\tools\\Run.exe", "without-console", windows.shown(windows.program), "--clean=Content")

    assert tool.wait(timeout=60) == exit_code
    assert windows.log().startswith(LOG_BANNER + "[time][Info] Target: Content\n")
    assert content.exists() == is_locked


def test_names_existing_tests():
    named = re.findall(r"^    (tests/\S+): (\w+)$", GUIDE, re.MULTILINE)

    assert named
    assert [(file, test) for file, test in named if f"def {test}(" not in (TOP / file).read_text()] == []


def test_reads_well_as_plain_text():
    assert [line for line in GUIDE.splitlines() if len(line) > 100] == []
    assert GUIDE.isascii()
    assert "\t" not in GUIDE


def all_code(folder: str = "") -> str:
    return "".join(source.read_text() for source in sorted((TOP / "src" / folder).rglob("*.cpp")))


def message_patterns() -> list[str]:
    """A regular expression for each line that the sources can write, except the banner and JUCE's own output."""
    code = all_code()

    logged = re.findall(r"\blog \((\w+),\s*([^;]*\"[^;]*)\);", code)
    offered = re.findall(r'"(Target: [^"]+|Remove [^"]+\?)"', code)
    printed = re.findall(r"\bfail \(([^;]*)\);|\b(?:cout|advice)\b\s*<<([^;]*);", code)
    lines = [line.removesuffix("\\ ") for texts in printed for line in pattern("".join(texts)).split("\n")]

    return [
        *(rf"\[{level}\] " + pattern(message) for level, message in logged),
        *(r"\[Info\] " + re.escape(text) for text in offered),
        *(line for line in lines if re.search(r"\w", line)),
    ]


def pattern(expression: str) -> str:
    """A pattern for joined C++ strings: the literals as they are, and ".+" for every part known only at run time."""
    pieces = re.split(r"\s*(?:\+|<<)\s*(?=(?:[^\"]*\"[^\"]*\")*[^\"]*$)", expression.strip())
    manipulators = {"std::endl": "\n", "std::flush": ""}
    return "".join(
        re.escape(piece[1:-1]) if piece.startswith('"') else manipulators.get(piece, ".+") for piece in pieces
    )

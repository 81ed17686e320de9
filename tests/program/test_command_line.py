"""What the arguments ask for."""

import pytest

from products import TARGETS
from release import BUILD_TAG, VERSION
from runs import printed, refused, succeeded
from texts import ALL_DECLINED, CANCELLED, NO_TO_ALL, QUESTION

HELP = """\
Usage:
 OrvexCleaner --help|-h     Prints the list of commands
 OrvexCleaner --version|-v  Prints the current version number
 OrvexCleaner               Completely cleans out all Tessara Works products from the system.
 OrvexCleaner --clean       Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}

"""

VERSION_TEXT = f"Orvex Cleaner {VERSION} build {BUILD_TAG}\n"

INVALID = "Invalid --clean target: {}. Valid targets are: " + ", ".join(TARGETS) + "\n"


@pytest.fixture
def content(linux):
    folder = linux.shared_data / "TessaraWorks" / "Content"
    folder.mkdir(parents=True)
    return folder


@pytest.mark.parametrize(
    "arguments",
    [
        "--help",
        "-h",
        "-xh",
        "-vh",
        "-help",
        "--help=me",
        "-v -h",
        "--version --help",
        "--clean=Content -h",
        "--clean=wrong --help",
        "unknown words and then --help",
    ],
)
def test_prints_help_and_cleans_nothing(linux, content, arguments):
    run = linux.run(*arguments.split(), answers="y\n\n")

    assert run == printed(HELP)
    assert content.is_dir()


@pytest.mark.parametrize(
    "arguments",
    [
        "--version",
        "-v",
        "-zv",
        "-clean=OrvexStudio",  # one dash, and a v
        "--version=2",
        "--clean=All --version",
        "--clean=Content -v",
        "--clean --version",
    ],
)
def test_prints_the_version_and_cleans_nothing(linux, content, arguments):
    run = linux.run(*arguments.split(), answers="y\n\n")

    assert run == printed(VERSION_TEXT)
    assert content.is_dir()


def test_calls_itself_in_help_by_the_name_of_its_file(linux):
    linux.program = linux.downloads / "tidy"

    run = linux.run("--help")

    assert run == printed(
        """\
Usage:
 tidy --help|-h     Prints the list of commands
 tidy --version|-v  Prints the current version number
 tidy               Completely cleans out all Tessara Works products from the system.
 tidy --clean       Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}

"""
    )


def test_gives_a_long_name_in_help_a_line_of_its_own(windows):
    windows.program = windows.program.rename(windows.downloads / "Remove the products of Tessara Works.exe")

    run = windows.run("--help")

    assert run == printed(
        """\
Usage:
 Remove the products of Tessara Works.exe --help|-h
                                        Prints the list of commands
 Remove the products of Tessara Works.exe --version|-v
                                        Prints the current version number
 Remove the products of Tessara Works.exe \n\
                                        Completely cleans out all Tessara Works products from the system.
 Remove the products of Tessara Works.exe --clean
                                        Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}

"""
    )


@pytest.mark.parametrize(
    "arguments",
    [
        ["--clean"],
        ["--clean="],
        ["--clean= "],
        ["--clean", "Content"],
        ["--clean=", "Content"],
        ["--clean", "--clean=Content"],
    ],
)
def test_refuses_to_clean_without_a_value(linux, content, arguments):
    run = linux.run(*arguments, answers="y\n\n")

    assert run == refused("Missing --clean argument\n")
    assert content.is_dir()


@pytest.mark.parametrize(
    "value",
    [
        "all",
        "content",
        "CONTENT",
        "Contents",
        "Conten",
        " Content",
        '"Content"',
        "Content=All",
        "Content,All",
        "Company",
        "Velantone Content",
        "=",
    ],
)
def test_refuses_a_value_that_is_not_exactly_one_of_the_targets(linux, content, value):
    run = linux.run(f"--clean={value}", answers="y\n\n")

    assert run == refused(INVALID.format(value))
    assert content.is_dir()


def test_prints_and_refuses_on_windows_as_on_linux(windows):
    assert windows.run("--help") == printed(HELP.replace("OrvexCleaner ", "OrvexCleaner.exe "))
    assert windows.run("--version") == printed(VERSION_TEXT)
    assert windows.run("--clean") == refused("Missing --clean argument\n")
    assert windows.run("--clean=content") == refused(INVALID.format("content"))


def test_offers_all_products_without_an_argument(machine):
    run = machine.run(answers=NO_TO_ALL)

    assert run == succeeded(machine, ALL_DECLINED)


def test_offers_all_products_after_any_unknown_arguments(machine):
    misspelt = [
        "--CLEAN=All",
        "--Clean=Content",
        "--clear=Content",
        "--cleanContent",
        "---clean=Content",
        "clean=Content",
    ]
    misspelt += ["---help", "--HELP", "--Version", "--h", "--v", "-H", "-V", "help", "/?", "/h"]
    others = ["-1", "-c", "-", "--", "Content"]

    run = machine.run(*misspelt, *others, answers=NO_TO_ALL)

    assert run == succeeded(machine, ALL_DECLINED)


# Windows only: there, a program's own runtime may replace such arguments by the names of files.
def test_takes_arguments_with_wildcards_as_they_were_typed(windows):
    (windows.working_folder / "-h").write_text("")

    run = windows.run("*", "-?", answers=NO_TO_ALL)

    assert run == succeeded(windows, ALL_DECLINED)


def test_takes_the_first_of_two_targets(machine):
    run = machine.run("--clean=Content", "--clean=All", answers="n\n\n")

    assert run == succeeded(machine, QUESTION + CANCELLED)


@pytest.mark.parametrize("others", [["-1"], ["-c"], ["Content"], ["--all"], ["all", "of", "it"]])
def test_cleans_the_target_among_unknown_arguments(linux, others):
    run = linux.run(*others, "--clean=Content", *others, answers="n\n\n")

    assert run == succeeded(linux, QUESTION + CANCELLED)


def test_drops_blanks_and_quotes_around_an_argument_and_empty_arguments(machine):
    run = machine.run("", "   ", ' "--clean=Content" ', "-1", answers="n\n\n")

    assert run == succeeded(machine, QUESTION + CANCELLED)


def test_keeps_blanks_inside_of_quotes(linux):
    run = linux.run('" --clean=Content"', answers=NO_TO_ALL)

    assert run == succeeded(linux, ALL_DECLINED)

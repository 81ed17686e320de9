"""The arguments, and what they start."""

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
ASK_FOR_HELP = [
    "--help",
    "-h",
    "-xh",
    "-vh",
    "--help=me",
    "--version --help",
    "--clean=Content -h",
    "--clean=wrong --help",
    "unknown words and then --help",
]

VERSION_TEXT = f"Orvex Cleaner {VERSION} build {BUILD_TAG}\n"
ASK_FOR_THE_VERSION = [
    "--version",
    "-v",
    "-clean=OrvexStudio",  # one dash, and a v
    "--version=2",
    "--clean=All --version",
]

PRINTED = {arguments: HELP for arguments in ASK_FOR_HELP} | dict.fromkeys(ASK_FOR_THE_VERSION, VERSION_TEXT)

MISSING = "Missing --clean argument\n"
WITHOUT_A_VALUE = [
    ("--clean",),
    ("--clean=",),
    ("--clean= ",),
    ("--clean", "Content"),
    ("--clean=", "Content"),
    ("--clean", "--clean=Content"),
]

INVALID = "Invalid --clean target: {}. Valid targets are: " + ", ".join(TARGETS) + "\n"
NO_TARGETS = ["all", "content", "CONTENT", "Contents", "Conten", " Content", '"Content"', "Content=All", "Content,All"]
NO_TARGETS += ["Company", "Velantone Content", "="]

REFUSED = dict.fromkeys(WITHOUT_A_VALUE, MISSING)
REFUSED |= {(f"--clean={value}",): INVALID.format(value) for value in NO_TARGETS}


@pytest.mark.parametrize(("arguments", "text"), PRINTED.items(), ids=PRINTED)
def test_prints_help_or_the_version_and_cleans_nothing(linux, arguments, text):
    linux.content.mkdir(parents=True)

    run = linux.run(*arguments.split(), answers="y\n\n")

    assert run == printed(text)
    assert linux.content.is_dir()


def test_help_shows_the_name_of_the_program_s_file_and_gives_a_long_name_a_line_of_its_own(linux):
    linux.program = linux.downloads / "Remove the products of Tessara Works.exe"

    run = linux.run("--help")

    told = """\
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
    assert run == printed(told)


@pytest.mark.parametrize(("arguments", "errors"), REFUSED.items(), ids=map(" ".join, REFUSED))
def test_refuses_a_value_that_is_not_exactly_one_of_the_targets_and_cleans_nothing(linux, arguments, errors):
    linux.content.mkdir(parents=True)

    run = linux.run(*arguments, answers="y\n\n")

    assert run == refused(errors)
    assert linux.content.is_dir()


def test_prints_and_refuses_on_windows_as_on_linux(windows):
    assert windows.run("--help") == printed(HELP.replace("OrvexCleaner ", "OrvexCleaner.exe "))
    assert windows.run("--version") == printed(VERSION_TEXT)
    assert windows.run("--clean") == refused(MISSING)
    assert windows.run("--clean=content") == refused(INVALID.format("content"))


# Words, options and letters without a meaning; many of them nearly have one.
UNKNOWN = ["--unknown", "-1", "-c", "-x", "-", "--", "Content", "all", "of", "it", "help", "/?", "/h", "/clean=Content"]
UNKNOWN += ["--CLEAN=All", "--Clean=Content", "--clear=Content", "--cleanContent", "--clean-all", "---clean=Content"]
UNKNOWN += ["clean=Content", "---help", "--HELP", "--Version", "--h", "--v", "-H", "-V"]

CONTENT_DECLINED = QUESTION + CANCELLED
OFFERED = {
    "all products after nothing but unknown arguments": (UNKNOWN, ALL_DECLINED),
    "all products among unknown arguments": ([*UNKNOWN, "--clean=All", *UNKNOWN], ALL_DECLINED),
    "one product among unknown arguments": ([*UNKNOWN, "--clean=Content", *UNKNOWN], CONTENT_DECLINED),
    "the first of two targets": (["--clean=Content", "--clean=All"], CONTENT_DECLINED),
    "without spaces and quotes around it": (["", "   ", ' "--clean=Content" ', "-1"], CONTENT_DECLINED),
    "with spaces inside quotes": (['" --clean=Content"'], ALL_DECLINED),
}


@pytest.mark.parametrize(("arguments", "transcript"), OFFERED.values(), ids=OFFERED)
def test_offers_the_target_of_the_arguments_or_else_all_products(machine, arguments, transcript):
    run = machine.run(*arguments, answers=NO_TO_ALL)

    assert run == succeeded(machine, transcript)


# Windows only: there, a program's runtime may replace such arguments by file names.
def test_takes_wildcards_as_they_were_typed(windows):
    (windows.working_folder / "-h").write_text("")

    run = windows.run("*", "-?", answers=NO_TO_ALL)

    assert run == succeeded(windows, ALL_DECLINED)

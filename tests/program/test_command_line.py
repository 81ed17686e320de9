"""What the arguments ask for."""

import pytest

from release import BUILD_TAG, VERSION
from texts import BANNER, DECLINED, LOG_BANNER, ending, without_prompts

HELP = {
    "OrvexCleaner.exe": """\
Usage:
 OrvexCleaner.exe --help|-h     Prints the list of commands
 OrvexCleaner.exe --version|-v  Prints the current version number
 OrvexCleaner.exe               Completely cleans out all Tessara Works products from the system.
 OrvexCleaner.exe --clean       Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}

""",
    "OrvexCleaner": """\
Usage:
 OrvexCleaner --help|-h     Prints the list of commands
 OrvexCleaner --version|-v  Prints the current version number
 OrvexCleaner               Completely cleans out all Tessara Works products from the system.
 OrvexCleaner --clean       Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}

""",
}

ALL_DECLINED = """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning cancelled by the user.
"""


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
def test_prints_help_and_cleans_nothing(machine, arguments):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)

    run = machine.run(*arguments.split(), answers="y\n\n")

    assert run.console == HELP[machine.program.name]
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log is None
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
def test_prints_the_version_and_cleans_nothing(machine, arguments):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)

    run = machine.run(*arguments.split(), answers="y\n\n")

    assert run.console == f"Orvex Cleaner {VERSION} build {BUILD_TAG}\n"
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log is None
    assert content.is_dir()


def test_calls_itself_in_help_by_the_name_of_its_file(linux):
    linux.program = linux.downloads / "tidy"

    run = linux.run("--help")

    assert (
        run.console
        == """\
Usage:
 tidy --help|-h     Prints the list of commands
 tidy --version|-v  Prints the current version number
 tidy               Completely cleans out all Tessara Works products from the system.
 tidy --clean       Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}

"""
    )
    assert run.errors == ""
    assert run.exit_code == 0


def test_gives_a_long_name_in_help_a_line_of_its_own(windows):
    windows.program = windows.program.rename(windows.downloads / "Remove the products of Tessara Works.exe")

    run = windows.run("--help")

    assert (
        run.console
        == """\
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
    assert run.errors == ""
    assert run.exit_code == 0


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
def test_refuses_to_clean_without_a_value(machine, arguments):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)

    run = machine.run(*arguments, answers="y\n\n")

    assert run.console == ""
    assert run.errors == "Missing --clean argument\n"
    assert run.exit_code == 1
    assert run.log is None
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
def test_refuses_a_value_that_is_not_exactly_one_of_the_five(machine, value):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)

    run = machine.run(f"--clean={value}", answers="y\n\n")

    assert run.console == ""
    assert run.errors == (
        f"Invalid --clean target: {value}. "
        "Valid targets are: OrvexStudio, ProductManager, VelantoneMediaServer, Content, All\n"
    )
    assert run.exit_code == 1
    assert run.log is None
    assert content.is_dir()


def test_offers_all_products_without_an_argument(machine):
    run = machine.run(answers="n\nn\nn\nn\nn\n\n")

    assert run.console == BANNER + ALL_DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(ALL_DECLINED)
    assert run.revealed == [machine.shown(machine.desktop)]


UNKNOWN = [
    "--CLEAN=All",
    "--Clean=Content",
    "--clear=Content",
    "--cleanContent",
    "---clean=Content",
    "---help",
    "--HELP",
    "--Version",
    "--h",
    "--v",
    "-H",
    "-V",
    "-1",
    "-c",
    "-",
    "--",
    "Content",
    "clean=Content",
    "help",
    "/?",
    "/h",
]


@pytest.mark.parametrize("argument", UNKNOWN)
def test_offers_all_products_after_an_unknown_argument(linux, argument):
    run = linux.run(argument, answers="n\nn\nn\nn\nn\n\n")

    assert run.console == BANNER + ALL_DECLINED + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(ALL_DECLINED)


def test_offers_all_products_after_many_unknown_arguments(machine):
    run = machine.run(*UNKNOWN, answers="n\nn\nn\nn\nn\n\n")

    assert run.console == BANNER + ALL_DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(ALL_DECLINED)


# Windows only: there, a program's own runtime may replace such arguments by the names of files.
def test_takes_arguments_with_wildcards_as_they_were_typed(windows):
    (windows.working_folder / "-h").write_text("")

    run = windows.run("*", "-?", answers="n\nn\nn\nn\nn\n\n")

    assert run.console == BANNER + ALL_DECLINED + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(ALL_DECLINED)


def test_takes_the_first_of_two_targets(machine):
    run = machine.run("--clean=Content", "--clean=All", answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(DECLINED)


@pytest.mark.parametrize("others", [["-1"], ["-c"], ["Content"], ["--all"], ["all", "of", "it"]])
def test_cleans_the_target_among_unknown_arguments(linux, others):
    run = linux.run(*others, "--clean=Content", *others, answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(DECLINED)


def test_drops_blanks_and_quotes_around_an_argument_and_empty_arguments(machine):
    run = machine.run("", "   ", ' "--clean=Content" ', "-1", answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(DECLINED)


def test_keeps_blanks_inside_of_quotes(linux):
    run = linux.run('" --clean=Content"', answers="n\nn\nn\nn\nn\n\n")

    assert run.console == BANNER + ALL_DECLINED + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(ALL_DECLINED)

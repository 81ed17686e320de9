"""The sequence over all products, however it is started."""

from itertools import product as combinations

import pytest

from products import COMPANY, CONTENT, MEDIA_SERVER, ORVEX_STUDIO, PRODUCT_MANAGER, PRODUCTS
from texts import BANNER, FAILURE, LOG_BANNER, ending, without_prompts


def place_all_products(machine):
    for product in PRODUCTS:
        for path in product.paths(machine):
            path.mkdir(parents=True, exist_ok=True)


def test_asks_five_questions_and_succeeds_when_all_are_declined(machine):
    place_all_products(machine)
    before = machine.tree()

    run = machine.run("--clean=All", answers="n\nn\nn\nn\nn\n\n")

    transcript = """\
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
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before


ALL_ANSWERS = list(combinations("yn", repeat=5))


@pytest.mark.parametrize("answers", ALL_ANSWERS, ids=["".join(answers) for answers in ALL_ANSWERS])
def test_cleans_those_products_that_were_answered_with_yes(machine, answers):
    before = machine.tree()
    place_all_products(machine)
    present = {path for product in PRODUCTS for path in product.paths(machine)}
    transcript = """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
"""
    for product, answer in zip(PRODUCTS, answers):
        transcript += f"[time][Info] {product.question}\nY/n? "

        if answer == "n":
            transcript += "[time][Info] Cleaning cancelled by the user.\n"
            continue

        found = [path for path in product.paths(machine) if path in present]
        transcript += f"[time][Info] Cleaning: {product.name}\n"

        for path in found:
            present -= {below for below in present if below.is_relative_to(path)}
            transcript += f"[time][Info] Deleting directory: {machine.shown(path)}\n"
            transcript += f"[time][Info] Directory deleted: {machine.shown(path)}\n"

        transcript += f"""\
[time][Info] Directories removed: {len(found)}
[time][Info] Files removed: 0
[time][Info] {product.name} was successfully removed.
"""

    run = machine.run("--clean=All", answers="".join(f"{answer}\n" for answer in answers) + "\n")

    listed = {path for product in PRODUCTS for path in product.paths(machine)}
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert listed & machine.tree() == present
    assert machine.tree() >= before


@pytest.mark.parametrize("failing", PRODUCTS, ids=lambda product: product.name)
def test_carries_out_the_steps_behind_a_failed_one(machine, failing):
    folders = {
        ORVEX_STUDIO: machine.user_data / "Orvex",
        CONTENT: machine.shared_data / "TessaraWorks" / "Content",
        MEDIA_SERVER: machine.user_data / "VelantonePlayer",
        PRODUCT_MANAGER: machine.program_files / "Orvex Product Manager",
        COMPANY: machine.shared_data / "TessaraWorks",
    }
    for folder in folders.values():
        folder.mkdir(exist_ok=True, parents=True)

    # The content lies in the company's folder, which cannot be deleted either then.
    failed = [CONTENT, COMPANY] if failing is CONTENT else [failing]
    undeletable = folders[failing] / "File.dat"
    undeletable.write_text("data")
    machine.make_undeletable(undeletable)

    run = machine.run("--clean=All", answers="y\ny\ny\ny\ny\n")

    transcript = """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
"""
    for product, folder in folders.items():
        transcript += f"""\
[time][Info] {product.question}
Y/n? [time][Info] Cleaning: {product.name}
[time][Info] Deleting directory: {machine.shown(folder)}
"""
        if product in failed:
            transcript += f"""\
[time][Critical] Unable to delete directory: {machine.shown(folder)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] {product.name} encountered errors and could not be removed.
"""
        else:
            transcript += f"""\
[time][Info] Directory deleted: {machine.shown(folder)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] {product.name} was successfully removed.
"""

    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert [product for product, folder in folders.items() if folder.exists()] == failed


def test_carries_out_the_steps_behind_one_whose_uninstaller_could_not_be_started(windows):
    folders = [
        windows.program_files / "Orvex",
        windows.shared_data / "TessaraWorks",
        windows.user_data / "VelantonePlayer",
        windows.user_data / "OrvexProductManager",
    ]
    for folder in folders:
        folder.mkdir()

    windows.register(
        {
            "A": {"DisplayName": "Orvex Studio", "UninstallString": "C:\\Uninstallers\\Gone.exe"},
            "B": {"DisplayName": "Orvex Product Manager", "UninstallString": "C:\\Uninstallers\\Gone.exe"},
        }
    )

    run = windows.run("--clean=All", answers="y\ny\ny\ny\ny\n")

    player = windows.shown(windows.user_data / "VelantonePlayer")
    transcript = f"""\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Studio software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning: Velantone Content
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning: Velantone Media Server
[time][Info] Deleting directory: {player}
[time][Info] Directory deleted: {player}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Media Server was successfully removed.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Product Manager software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
[time][Info] Deleting directory: C:\\ProgramData\\TessaraWorks
[time][Info] Directory deleted: C:\\ProgramData\\TessaraWorks
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Tessara Works Global Directories was successfully removed.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert [folder.exists() for folder in folders] == [True, False, False, True]


NOTHING_BUT_CONTENT = """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning: Velantone Content
{content_run}\
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning cancelled by the user.
"""


@pytest.mark.parametrize(
    "arguments",
    [["--clean=All"], [], ["--unknown"], ["--CLEAN=All"], ["--clean-all"], ["-x"], ["Content"], ["/clean=Content"]],
    ids=lambda arguments: " ".join(arguments) or "no argument",
)
def test_runs_for_any_arguments_that_are_no_command_and_exits_with_0_after_a_success(machine, arguments):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)

    run = machine.run(*arguments, answers="n\ny\nn\nn\nn\n\n")

    transcript = NOTHING_BUT_CONTENT.format(
        content_run=f"""\
[time][Info] Deleting directory: {machine.shown(content)}
[time][Info] Directory deleted: {machine.shown(content)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""
    )
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]


@pytest.mark.parametrize(
    ("arguments", "exit_code"),
    [(["--clean=All"], 1), ([], 0), (["--unknown"], 0)],
    ids=["--clean=All", "no argument", "--unknown"],
)
def test_exits_with_1_after_a_failure_only_if_it_was_asked_for_by_its_name(machine, arguments, exit_code):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)
    (content / "File.dat").write_text("data")
    machine.make_undeletable(content / "File.dat")

    run = machine.run(*arguments, answers="n\ny\nn\nn\nn\n")

    transcript = NOTHING_BUT_CONTENT.format(
        content_run=f"""\
[time][Info] Deleting directory: {machine.shown(content)}
[time][Critical] Unable to delete directory: {machine.shown(content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""
    )
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == exit_code
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []


@pytest.mark.parametrize("answers", ["", "y", "\n\n"], ids=["no input", "one yes", "two empty lines"])
def test_takes_the_end_of_the_input_for_a_yes_to_all_that_follows(machine, answers):
    place_all_products(machine)

    run = machine.run(answers=answers)

    def removed(*paths):
        return "".join(
            f"""\
[time][Info] Deleting directory: {machine.shown(path)}
[time][Info] Directory deleted: {machine.shown(path)}
"""
            for path in paths
        )

    transcript = f"""\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
{removed(*ORVEX_STUDIO.paths(machine))}\
[time][Info] Directories removed: 15
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning: Velantone Content
{removed(*CONTENT.paths(machine))}\
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning: Velantone Media Server
{removed(*MEDIA_SERVER.paths(machine))}\
[time][Info] Directories removed: 4
[time][Info] Files removed: 0
[time][Info] Velantone Media Server was successfully removed.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
{removed(*PRODUCT_MANAGER.paths(machine))}\
[time][Info] Directories removed: 8
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
{removed(machine.shared_data / "TessaraWorks")}\
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Tessara Works Global Directories was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]


def test_declines_what_was_answered_before_the_input_ended(machine):
    run = machine.run("--clean=All", answers="n\nn")

    transcript = """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning: Velantone Media Server
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Media Server was successfully removed.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Tessara Works Global Directories was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]

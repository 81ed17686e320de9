"""The uninstallers that two of the products run before anything is deleted."""

import subprocess
import time
from contextlib import contextmanager

import pytest

from machines import UNINSTALL_KEY, wait_for
from products import CONTENT, MEDIA_SERVER
from texts import BANNER, FAILURE, LOG_BANNER, ending, without_prompts


@pytest.fixture
def uninstallers(windows):
    """Where the uninstallers lie. No product lists this folder."""
    return windows.c / "Uninstallers"


@pytest.fixture
def studio(windows):
    folder = windows.program_files / "Orvex Studio"
    folder.mkdir()
    (folder / "Orvex Studio.dat").write_text("data")
    return folder


@pytest.fixture
def product_manager(windows):
    folder = windows.program_files / "Orvex Product Manager"
    folder.mkdir()
    (folder / "Orvex Product Manager.dat").write_text("data")
    return folder


def program_at(path: str, name: str) -> dict[str, str]:
    """The values of an entry whose command is the program's path in quotes."""
    return {"DisplayName": name, "UninstallString": f'"{path}"'}


@contextmanager
def refused(windows, key: str):
    """Adds an uninstall entry that nobody may open."""
    path = f"{UNINSTALL_KEY}\\{key}".removeprefix("HKEY_LOCAL_MACHINE\\")
    tool = windows.tool("C:\\tools\\RefuseKey.exe", path, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    assert tool.stdout.readline().strip() == b"refused"

    yield
    tool.communicate()


def test_studio_is_removed_in_silence_when_no_entry_has_its_names(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Other.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Other.exe", "orvex studio"),
            "B": program_at("C:\\Uninstallers\\Other.exe", "Orvex Version 2"),
            "C": program_at("C:\\Uninstallers\\Other.exe", "OrvexStudio"),
            "D": program_at("C:\\Uninstallers\\Other.exe", "Orvex Product Manager version 2"),
            "E": program_at("C:\\Uninstallers\\Other.exe", ""),
            "F": {"UninstallString": "C:\\Uninstallers\\Other.exe"},
        }
    )

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Other.exe") == []


def test_studio_looks_in_silence_for_its_first_name_when_only_the_second_is_registered(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": program_at("C:\\Uninstallers\\Orvex Studio.exe", "The Orvex Studio for Windows")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Orvex Studio.exe") == ['"C:\\Uninstallers\\Orvex Studio.exe" /SILENT', "done"]


def test_studio_runs_both_uninstallers_in_its_own_order_and_goes_on_whatever_their_exit_codes(
    windows, uninstallers, studio
):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "exit 3")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "exit 4294967295")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio"),
            "B": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex version 1.4"),
        }
    )

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 3
[time][Info] Uninstaller exit code: 4294967295
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Orvex.exe") == ['"C:\\Uninstallers\\Orvex.exe" /SILENT', "done"]
    assert windows.calls(uninstallers / "Orvex Studio.exe") == ['"C:\\Uninstallers\\Orvex Studio.exe" /SILENT', "done"]


def test_shows_nothing_of_what_an_uninstaller_prints(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "print 1000", "print-error 1000")
    windows.register({"A": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Orvex Studio.exe") == ['"C:\\Uninstallers\\Orvex Studio.exe" /SILENT', "done"]


def test_an_uninstaller_leaves_nothing_to_delete_of_what_it_removed_itself(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "remove C:\\Program Files\\Orvex Studio")
    windows.register({"A": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]


def test_an_uninstaller_is_deleted_with_the_folder_that_it_lies_in(windows, studio):
    windows.place_uninstaller(studio / "unins000.exe", "remove C:\\Program Files\\Orvex Studio\\Orvex Studio.dat")
    windows.register({"A": program_at("C:\\Program Files\\Orvex Studio\\unins000.exe", "Orvex Studio")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert not studio.exists()


def test_studio_runs_the_second_uninstaller_after_the_first_could_not_be_started_and_deletes_nothing(
    windows, uninstallers, studio
):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Gone.exe", "Orvex version 1.4"),
            "B": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio"),
        }
    )
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex has been uninstalled to clean up any final files.
[time][Info] Uninstaller exit code: 0
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.calls(uninstallers / "Orvex Studio.exe") == ['"C:\\Uninstallers\\Orvex Studio.exe" /SILENT', "done"]
    assert windows.tree() == before


def test_studio_deletes_nothing_when_only_the_second_uninstaller_could_not_be_started(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "exit 3")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex version 1.4"),
            "B": program_at("C:\\Uninstallers\\Gone.exe", "Orvex Studio"),
        }
    )
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 3
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Studio software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.tree() == before


def test_studio_advises_twice_and_names_an_uninstaller_only_if_it_is_a_file(windows, uninstallers, studio):
    uninstallers.mkdir()
    (uninstallers / "Orvex uninstaller.exe").write_text("This is no program.")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Orvex uninstaller.exe", "Orvex version 1.4"),
            "B": program_at("C:\\Uninstallers\\Gone.exe", "Orvex Studio"),
        }
    )
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can also run the uninstaller directly: C:\\Uninstallers\\Orvex uninstaller.exe
[time][Info] You can re-run this cleaner after Orvex has been uninstalled to clean up any final files.
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Studio software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.tree() == before


def test_studio_runs_one_uninstaller_twice_that_both_of_its_names_find(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Both.exe", "exit 1")
    windows.register({"A": program_at("C:\\Uninstallers\\Both.exe", "Orvex version 1.4 (Orvex Studio)")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 1
[time][Info] Uninstaller exit code: 1
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Both.exe") == ['"C:\\Uninstallers\\Both.exe" /SILENT', "done"] * 2


def test_studio_runs_it_once_if_the_first_launch_removes_the_entry(windows, uninstallers, studio):
    key = UNINSTALL_KEY.removeprefix("HKEY_LOCAL_MACHINE\\")
    windows.place_uninstaller(uninstallers / "Both.exe", f"remove-key {key}\\A")
    windows.register({"A": program_at("C:\\Uninstallers\\Both.exe", "Orvex version 1.4 (Orvex Studio)")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Both.exe") == ['"C:\\Uninstallers\\Both.exe" /SILENT', "done"]


def test_studio_deletes_nothing_when_its_entry_has_no_command_although_a_later_one_has(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register(
        {
            "A": {"DisplayName": "Orvex Studio"},
            "B": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio"),
        }
    )
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Studio software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []
    assert windows.tree() == before


def test_studio_goes_on_after_20_seconds_beside_an_uninstaller_that_comes_to_its_own_end(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "sleep 24000")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex version 1.4"),
            "B": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio"),
        }
    )
    before = windows.tree()
    start = time.monotonic()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert 20 <= time.monotonic() - start
    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 259
[time][Info] Existing Orvex software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can also run the uninstaller directly: C:\\Uninstallers\\Orvex.exe
[time][Info] You can re-run this cleaner after Orvex has been uninstalled to clean up any final files.
[time][Info] Uninstaller exit code: 0
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.calls(uninstallers / "Orvex.exe") == ['"C:\\Uninstallers\\Orvex.exe" /SILENT']
    assert windows.calls(uninstallers / "Orvex Studio.exe") == ['"C:\\Uninstallers\\Orvex Studio.exe" /SILENT', "done"]
    assert windows.tree() == before
    assert wait_for(lambda: windows.calls(uninstallers / "Orvex.exe")[1:]) == ["done"]


def test_studio_is_removed_although_the_entries_cannot_be_read(windows, studio):
    windows.change_registry(f"[-{UNINSTALL_KEY}]")

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Critical] Failed to open the Windows registry key: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall
[time][Critical] Failed to open the Windows registry key: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]


def test_an_entry_that_cannot_be_opened_hides_those_behind_it_but_not_those_before_it(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex version 1.4"),
            "C": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Studio"),
        }
    )

    with refused(windows, "B"):
        run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Critical] Failed to open the Windows registry subkey: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\B
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []


def test_product_manager_is_removed_in_silence_when_only_the_studio_is_registered(
    windows, uninstallers, product_manager
):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex version 1.4 (Orvex Studio)"),
            "B": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex Manager"),
            "C": program_at("C:\\Uninstallers\\Orvex Studio.exe", "Orvex product manager"),
        }
    )

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Deleting directory: C:\\Program Files\\Orvex Product Manager
[time][Info] Directory deleted: C:\\Program Files\\Orvex Product Manager
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []


def test_product_manager_runs_the_first_uninstaller_of_its_name_and_goes_on_whatever_its_exit_code(
    windows, uninstallers, product_manager
):
    windows.place_uninstaller(uninstallers / "First.exe", "exit 1602")
    windows.place_uninstaller(uninstallers / "Second.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\First.exe", "Orvex Product Manager 2"),
            "B": program_at("C:\\Uninstallers\\Second.exe", "Orvex Product Manager"),
        }
    )

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Uninstaller exit code: 1602
[time][Info] Deleting directory: C:\\Program Files\\Orvex Product Manager
[time][Info] Directory deleted: C:\\Program Files\\Orvex Product Manager
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "First.exe") == ['"C:\\Uninstallers\\First.exe" /SILENT', "done"]
    assert windows.calls(uninstallers / "Second.exe") == []


@pytest.mark.parametrize(
    "values",
    [
        pytest.param({}, id="no command"),
        pytest.param({"UninstallString": ""}, id="empty command"),
        pytest.param({"UninstallString": '"C:\\Uninstallers\\Gone.exe"'}, id="no file"),
        pytest.param({"UninstallString": "C:\\Uninstallers"}, id="folder"),
        pytest.param({"UninstallString": '"C:\\Uninstallers\\Orvex.exe" /REMOVE'}, id="arguments"),
    ],
)
def test_product_manager_is_left_alone_when_its_uninstaller_is_no_file(windows, uninstallers, product_manager, values):
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    windows.register({"A": {"DisplayName": "Orvex Product Manager"} | values})
    before = windows.tree()

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Product Manager software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.calls(uninstallers / "Orvex.exe") == []
    assert windows.tree() == before


def test_product_manager_is_left_alone_when_its_uninstaller_is_no_program(windows, uninstallers, product_manager):
    uninstallers.mkdir()
    (uninstallers / "Orvex.exe").write_text("This is no program.")
    windows.register({"A": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex Product Manager")})
    before = windows.tree()

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
[time][Info] Existing Orvex Product Manager software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can also run the uninstaller directly: C:\\Uninstallers\\Orvex.exe
[time][Info] You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.tree() == before


def test_product_manager_is_left_alone_after_20_seconds_while_its_uninstaller_comes_to_its_own_end(
    windows, uninstallers, product_manager
):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "sleep 24000")
    windows.register({"A": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex Product Manager")})
    before = windows.tree()
    start = time.monotonic()

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    assert 20 <= time.monotonic() - start
    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 259
[time][Info] Existing Orvex Product Manager software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can also run the uninstaller directly: C:\\Uninstallers\\Orvex.exe
[time][Info] You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert windows.calls(uninstallers / "Orvex.exe") == ['"C:\\Uninstallers\\Orvex.exe" /SILENT']
    assert windows.tree() == before
    assert wait_for(lambda: windows.calls(uninstallers / "Orvex.exe")[1:]) == ["done"]


def test_product_manager_is_removed_although_an_entry_cannot_be_opened(windows, uninstallers, product_manager):
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    windows.register({"B": program_at("C:\\Uninstallers\\Orvex.exe", "Orvex Product Manager")})

    with refused(windows, "A"):
        run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Critical] Failed to open the Windows registry subkey: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\A
[time][Info] Deleting directory: C:\\Program Files\\Orvex Product Manager
[time][Info] Directory deleted: C:\\Program Files\\Orvex Product Manager
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Orvex.exe") == []


@pytest.mark.parametrize("product", [CONTENT, MEDIA_SERVER], ids=lambda product: product.name)
def test_the_other_products_run_no_uninstaller(windows, uninstallers, product):
    windows.place_uninstaller(uninstallers / "Any.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Any.exe", "Orvex version 1.4 (Orvex Studio)"),
            "B": program_at("C:\\Uninstallers\\Any.exe", "Orvex Product Manager"),
            "C": program_at("C:\\Uninstallers\\Any.exe", "Velantone Content"),
            "D": program_at("C:\\Uninstallers\\Any.exe", "Velantone Media Server"),
        }
    )

    run = windows.run(f"--clean={product.target}", answers="y\n\n")

    transcript = f"""\
[time][Info] {product.first_line}
[time][Info] {product.question}
Y/n? [time][Info] Cleaning: {product.name}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] {product.name} was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Any.exe") == []


def test_the_company_folders_are_removed_without_an_uninstaller(windows, uninstallers):
    maker = windows.shared_data / "TessaraWorks"
    maker.mkdir()
    windows.place_uninstaller(uninstallers / "Any.exe")
    windows.register(
        {
            "A": program_at("C:\\Uninstallers\\Any.exe", "Orvex version 1.4 (Orvex Studio)"),
            "B": program_at("C:\\Uninstallers\\Any.exe", "Orvex Product Manager"),
            "C": program_at("C:\\Uninstallers\\Any.exe", "Tessara Works Global Directories"),
            "D": program_at("C:\\Uninstallers\\Gone.exe", "Tessara Works"),
        }
    )

    run = windows.run("--clean=All", answers="n\nn\nn\nn\ny\n\n")

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
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
[time][Info] Deleting directory: C:\\ProgramData\\TessaraWorks
[time][Info] Directory deleted: C:\\ProgramData\\TessaraWorks
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Tessara Works Global Directories was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert windows.calls(uninstallers / "Any.exe") == []
    assert not maker.exists()

"""The uninstallers that two of the products run before anything is deleted."""

import subprocess
import time
from contextlib import contextmanager
from pathlib import Path

import pytest

from machines import UNINSTALL_KEY, wait_for
from products import COMPANY, CONTENT, MEDIA_SERVER, ORVEX_STUDIO, PRODUCT_MANAGER, PRODUCTS
from runs import failed, succeeded
from texts import NOT_STARTED, advice, opening, removed

STUDIO = opening(ORVEX_STUDIO) + "[time][Info] Cleaning: Orvex Studio\n"
STUDIO_REMOVED = """\
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""

MANAGER = opening(PRODUCT_MANAGER) + "[time][Info] Cleaning: Orvex Product Manager\n"
MANAGER_REMOVED = """\
[time][Info] Deleting directory: C:\\Program Files\\Orvex Product Manager
[time][Info] Directory deleted: C:\\Program Files\\Orvex Product Manager
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""

TOO_SLOW = """\
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 259
"""

ABORTED = """\
[time][Warning] Cleaning was aborted.
"""


@pytest.fixture
def uninstallers(windows):
    """Where the uninstallers lie. No product lists this folder."""
    folder = windows.c / "Uninstallers"
    folder.mkdir()
    return folder


@pytest.fixture
def studio(windows):
    return place_data(windows.program_files / "Orvex Studio")


@pytest.fixture
def product_manager(windows):
    return place_data(windows.program_files / "Orvex Product Manager")


def place_data(folder: Path) -> Path:
    folder.mkdir()
    (folder / f"{folder.name}.dat").write_text("data")
    return folder


def entry(name: str, uninstaller: str) -> dict[str, str]:
    """The values of an entry whose command is the path of an uninstaller in quotes."""
    return {"DisplayName": name, "UninstallString": f'"C:\\Uninstallers\\{uninstaller}"'}


def called(uninstaller: str) -> list[str]:
    """What a stub notes when it is called once, in the right way, and comes to its end."""
    return [f'"C:\\Uninstallers\\{uninstaller}" /SILENT', "done"]


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
    names = ["orvex studio", "Orvex Version 2", "OrvexStudio", "Orvex Product Manager version 2", ""]
    entries = {f"A{number}": entry(name, "Other.exe") for number, name in enumerate(names)}
    windows.register(entries | {"B": {"UninstallString": "C:\\Uninstallers\\Other.exe"}})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == succeeded(windows, STUDIO + STUDIO_REMOVED)
    assert windows.calls(uninstallers / "Other.exe") == []


def test_studio_looks_in_silence_for_its_first_name_when_only_the_second_is_registered(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": entry("The Orvex Studio for Windows", "Orvex Studio.exe")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == succeeded(windows, STUDIO + "[time][Info] Uninstaller exit code: 0\n" + STUDIO_REMOVED)
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")


def test_studio_runs_both_uninstallers_in_its_own_order_and_goes_on_whatever_their_exit_codes(
    windows, uninstallers, studio
):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "exit 3")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "exit 4294967295")
    windows.register({"A": entry("Orvex Studio", "Orvex Studio.exe"), "B": entry("Orvex version 1.4", "Orvex.exe")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = f"""{STUDIO}\
[time][Info] Uninstaller exit code: 3
[time][Info] Uninstaller exit code: 4294967295
{STUDIO_REMOVED}"""
    assert run == succeeded(windows, transcript)
    assert windows.calls(uninstallers / "Orvex.exe") == called("Orvex.exe")
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")


def test_shows_nothing_of_what_an_uninstaller_prints(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "print 1000", "print-error 1000")
    windows.register({"A": entry("Orvex Studio", "Orvex Studio.exe")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == succeeded(windows, STUDIO + "[time][Info] Uninstaller exit code: 0\n" + STUDIO_REMOVED)
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")


def test_an_uninstaller_leaves_nothing_to_delete_of_what_it_removed_itself(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "remove C:\\Program Files\\Orvex Studio")
    windows.register({"A": entry("Orvex Studio", "Orvex Studio.exe")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = f"""{STUDIO}\
[time][Info] Uninstaller exit code: 0
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run == succeeded(windows, transcript)


def test_an_uninstaller_is_deleted_with_the_folder_that_it_lies_in(windows, studio):
    windows.place_uninstaller(studio / "unins000.exe", "remove C:\\Program Files\\Orvex Studio\\Orvex Studio.dat")
    command = '"C:\\Program Files\\Orvex Studio\\unins000.exe"'
    windows.register({"A": {"DisplayName": "Orvex Studio", "UninstallString": command}})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == succeeded(windows, STUDIO + "[time][Info] Uninstaller exit code: 0\n" + STUDIO_REMOVED)
    assert not studio.exists()


def test_studio_runs_the_second_uninstaller_after_the_first_could_not_be_started_and_deletes_nothing(
    windows, uninstallers, studio
):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": entry("Orvex version 1.4", "Gone.exe"), "B": entry("Orvex Studio", "Orvex Studio.exe")})
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = f"""\
{STUDIO}{NOT_STARTED}{advice("Orvex")}\
[time][Info] Uninstaller exit code: 0
{ABORTED}"""
    assert run == failed(transcript)
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")
    assert windows.tree() == before


def test_studio_deletes_nothing_when_only_the_second_uninstaller_could_not_be_started(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "exit 3")
    windows.register({"A": entry("Orvex version 1.4", "Orvex.exe"), "B": entry("Orvex Studio", "Gone.exe")})
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = f"""{STUDIO}\
[time][Info] Uninstaller exit code: 3
{NOT_STARTED}{advice("Orvex Studio")}{ABORTED}"""
    assert run == failed(transcript)
    assert windows.tree() == before


def test_studio_advises_twice_and_names_an_uninstaller_only_if_it_is_a_file(windows, uninstallers, studio):
    (uninstallers / "Orvex uninstaller.exe").write_text("This is no program.")
    windows.register({"A": entry("Orvex version 1.4", "Orvex uninstaller.exe"), "B": entry("Orvex Studio", "Gone.exe")})
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == failed(
        """\
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
    )
    assert windows.tree() == before


def test_studio_runs_one_uninstaller_twice_that_both_of_its_names_find(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Both.exe", "exit 1")
    windows.register({"A": entry("Orvex version 1.4 (Orvex Studio)", "Both.exe")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == succeeded(windows, STUDIO + "[time][Info] Uninstaller exit code: 1\n" * 2 + STUDIO_REMOVED)
    assert windows.calls(uninstallers / "Both.exe") == called("Both.exe") * 2


def test_studio_runs_it_once_if_the_first_launch_removes_the_entry(windows, uninstallers, studio):
    key = UNINSTALL_KEY.removeprefix("HKEY_LOCAL_MACHINE\\")
    windows.place_uninstaller(uninstallers / "Both.exe", f"remove-key {key}\\A")
    windows.register({"A": entry("Orvex version 1.4 (Orvex Studio)", "Both.exe")})

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == succeeded(windows, STUDIO + "[time][Info] Uninstaller exit code: 0\n" + STUDIO_REMOVED)
    assert windows.calls(uninstallers / "Both.exe") == called("Both.exe")


def test_studio_deletes_nothing_when_its_entry_has_no_command_although_a_later_one_has(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": {"DisplayName": "Orvex Studio"}, "B": entry("Orvex Studio", "Orvex Studio.exe")})
    before = windows.tree()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert run == failed(STUDIO + NOT_STARTED + advice("Orvex Studio") + ABORTED)
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []
    assert windows.tree() == before


@pytest.mark.xdist_group("the studio waits")
def test_studio_goes_on_after_20_seconds_beside_an_uninstaller_that_comes_to_its_own_end(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "sleep 24000")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": entry("Orvex version 1.4", "Orvex.exe"), "B": entry("Orvex Studio", "Orvex Studio.exe")})
    before = windows.tree()
    start = time.monotonic()

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    assert 20 <= time.monotonic() - start
    told = advice("Orvex", "C:\\Uninstallers\\Orvex.exe")
    assert run == failed(STUDIO + TOO_SLOW + told + "[time][Info] Uninstaller exit code: 0\n" + ABORTED)
    assert windows.calls(uninstallers / "Orvex.exe") == called("Orvex.exe")[:1]
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")
    assert windows.tree() == before
    assert wait_for(lambda: windows.calls(uninstallers / "Orvex.exe")[1:]) == ["done"]


def test_studio_is_removed_although_the_entries_cannot_be_read(windows, studio):
    windows.change_registry(f"[-{UNINSTALL_KEY}]")

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = f"""{STUDIO}\
[time][Critical] Failed to open the Windows registry key: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall
[time][Critical] Failed to open the Windows registry key: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall
{STUDIO_REMOVED}"""
    assert run == succeeded(windows, transcript)


def test_an_entry_that_cannot_be_opened_hides_those_behind_it_but_not_those_before_it(windows, uninstallers, studio):
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": entry("Orvex version 1.4", "Orvex.exe"), "C": entry("Orvex Studio", "Orvex Studio.exe")})

    with refused(windows, "B"):
        run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = f"""{STUDIO}\
[time][Info] Uninstaller exit code: 0
[time][Critical] Failed to open the Windows registry subkey: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\B
{STUDIO_REMOVED}"""
    assert run == succeeded(windows, transcript)
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []


def test_product_manager_is_removed_in_silence_when_only_the_studio_is_registered(
    windows, uninstallers, product_manager
):
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    names = ["Orvex version 1.4 (Orvex Studio)", "Orvex Manager", "Orvex product manager"]
    windows.register({f"A{number}": entry(name, "Orvex.exe") for number, name in enumerate(names)})

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    assert run == succeeded(windows, MANAGER + MANAGER_REMOVED)
    assert windows.calls(uninstallers / "Orvex.exe") == []


def test_product_manager_runs_the_first_uninstaller_of_its_name_and_goes_on_whatever_its_exit_code(
    windows, uninstallers, product_manager
):
    windows.place_uninstaller(uninstallers / "First.exe", "exit 1602")
    windows.place_uninstaller(uninstallers / "Second.exe")
    windows.register(
        {"A": entry("Orvex Product Manager 2", "First.exe"), "B": entry("Orvex Product Manager", "Second.exe")}
    )

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    assert run == succeeded(windows, MANAGER + "[time][Info] Uninstaller exit code: 1602\n" + MANAGER_REMOVED)
    assert windows.calls(uninstallers / "First.exe") == called("First.exe")
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

    assert run == failed(MANAGER + NOT_STARTED + advice("Orvex Product Manager") + ABORTED)
    assert windows.calls(uninstallers / "Orvex.exe") == []
    assert windows.tree() == before


def test_product_manager_is_left_alone_when_its_uninstaller_is_no_program(windows, uninstallers, product_manager):
    (uninstallers / "Orvex.exe").write_text("This is no program.")
    windows.register({"A": entry("Orvex Product Manager", "Orvex.exe")})
    before = windows.tree()

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    told = advice("Orvex Product Manager", "C:\\Uninstallers\\Orvex.exe")
    assert run == failed(MANAGER + NOT_STARTED + told + ABORTED)
    assert windows.tree() == before


@pytest.mark.xdist_group("the product manager waits")
def test_product_manager_is_left_alone_after_20_seconds_when_nobody_reads_what_its_uninstaller_prints(
    windows, uninstallers, product_manager
):
    windows.place_uninstaller(uninstallers / "Orvex.exe", "print 1000000")  # far more than a pipe holds
    windows.register({"A": entry("Orvex Product Manager", "Orvex.exe")})
    before = windows.tree()
    start = time.monotonic()

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    assert 20 <= time.monotonic() - start
    told = advice("Orvex Product Manager", "C:\\Uninstallers\\Orvex.exe")
    assert run == failed(MANAGER + TOO_SLOW + told + ABORTED)
    assert windows.tree() == before
    assert wait_for(lambda: windows.calls(uninstallers / "Orvex.exe")[1:]) == ["done"]


def test_product_manager_is_removed_although_an_entry_cannot_be_opened(windows, uninstallers, product_manager):
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    windows.register({"B": entry("Orvex Product Manager", "Orvex.exe")})

    with refused(windows, "A"):
        run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = f"""{MANAGER}\
[time][Critical] Failed to open the Windows registry subkey: SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\A
{MANAGER_REMOVED}"""
    assert run == succeeded(windows, transcript)
    assert windows.calls(uninstallers / "Orvex.exe") == []


@pytest.mark.parametrize(
    ("product", "arguments", "answers"),
    [
        (CONTENT, "--clean=Content", "y\n\n"),
        (MEDIA_SERVER, "--clean=VelantoneMediaServer", "y\n\n"),
        (COMPANY, "--clean=All", "n\n" * PRODUCTS.index(COMPANY) + "y\n\n"),
    ],
    ids=["content", "media server", "company"],
)
def test_the_other_products_run_no_uninstaller(windows, uninstallers, product, arguments, answers):
    windows.place_uninstaller(uninstallers / "Any.exe")
    names = ["Orvex version 1.4 (Orvex Studio)", "Orvex Product Manager", product.name, "Velantone", "Tessara Works"]
    windows.register({f"A{number}": entry(name, "Any.exe") for number, name in enumerate(names)})

    run = windows.run(arguments, answers=answers)

    assert run == succeeded(windows, opening(product) + removed(product))
    assert windows.calls(uninstallers / "Any.exe") == []

"""The uninstallers that two of the products run before anything is deleted."""

import time

import pytest

from machines import UNINSTALL_KEY, put, wait_for
from products import ORVEX_STUDIO, PRODUCT_MANAGER
from runs import clean, failed, succeeded
from texts import NOT_STARTED, TOO_SLOW, aborted, advice, exited, opening, removed

KEY = UNINSTALL_KEY.removeprefix("HKEY_LOCAL_MACHINE\\")


@pytest.fixture
def uninstallers(windows):
    """The folder of the uninstallers. No product lists it."""
    folder = windows.c / "Uninstallers"
    folder.mkdir()
    return folder


def entry(name: str, uninstaller: str) -> dict[str, str]:
    """The values of an entry whose command is the path of an uninstaller in quotes."""
    return {"DisplayName": name, "UninstallString": f'"C:\\Uninstallers\\{uninstaller}"'}


def called(uninstaller: str) -> list[str]:
    """The notes of a stub that was called once, correctly, and ended."""
    return [f'"C:\\Uninstallers\\{uninstaller}" /SILENT', "done"]


def test_studio_runs_both_uninstallers_in_its_own_order_and_is_removed_whatever_they_return(windows, uninstallers):
    put(windows.program_files, "Orvex Studio/File.dat")
    windows.place_uninstaller(uninstallers / "Orvex.exe", "exit 3")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe", "exit 4294967295")
    windows.register({"A": entry("Orvex Studio", "Orvex Studio.exe"), "B": entry("Orvex version 1.4", "Orvex.exe")})

    run = clean(windows, ORVEX_STUDIO)

    steps = removed(ORVEX_STUDIO, "C:\\Program Files\\Orvex Studio", after=exited(3, 4294967295))
    assert run == succeeded(windows, opening(ORVEX_STUDIO) + steps)
    assert windows.calls(uninstallers / "Orvex.exe") == called("Orvex.exe")
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")
    assert not (windows.program_files / "Orvex Studio").exists()


def test_studio_stays_if_one_uninstaller_cannot_be_started_and_the_second_still_runs(windows, uninstallers):
    put(windows.program_files, "Orvex Studio/File.dat")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": entry("Orvex version 1.4", "Gone.exe"), "B": entry("Orvex Studio", "Orvex Studio.exe")})
    before = windows.tree()

    run = clean(windows, ORVEX_STUDIO)

    told = NOT_STARTED + advice("Orvex") + exited(0)
    assert run == failed(opening(ORVEX_STUDIO) + aborted(ORVEX_STUDIO, told))
    assert windows.calls(uninstallers / "Orvex Studio.exe") == called("Orvex Studio.exe")
    assert windows.tree() == before


def test_studio_stays_if_its_entry_has_no_command_although_a_later_one_has(windows, uninstallers):
    put(windows.program_files, "Orvex Studio/File.dat")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": {"DisplayName": "Orvex Studio"}, "B": entry("Orvex Studio", "Orvex Studio.exe")})
    before = windows.tree()

    run = clean(windows, ORVEX_STUDIO)

    told = NOT_STARTED + advice("Orvex Studio")
    assert run == failed(opening(ORVEX_STUDIO) + aborted(ORVEX_STUDIO, told))
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []
    assert windows.tree() == before


def test_product_manager_stays_if_its_uninstaller_takes_over_20_seconds_and_goes_on(windows, uninstallers):
    put(windows.program_files, "Orvex Product Manager/File.dat")
    windows.place_uninstaller(uninstallers / "Orvex.exe", "sleep 24000")
    windows.register({"A": entry("Orvex Product Manager", "Orvex.exe")})
    before = windows.tree()
    start = time.monotonic()

    run = clean(windows, PRODUCT_MANAGER)

    assert 20 <= time.monotonic() - start
    assert windows.calls(uninstallers / "Orvex.exe") == called("Orvex.exe")[:1]
    told = TOO_SLOW + advice("Orvex Product Manager", "C:\\Uninstallers\\Orvex.exe")
    assert run == failed(opening(PRODUCT_MANAGER) + aborted(PRODUCT_MANAGER, told))
    assert windows.tree() == before
    assert wait_for(lambda: windows.calls(uninstallers / "Orvex.exe")[1:]) == ["done"]


def test_an_entry_that_cannot_be_opened_hides_those_after_it_but_not_those_before_it(windows, uninstallers):
    put(windows.program_files, "Orvex Studio/File.dat")
    windows.place_uninstaller(uninstallers / "Orvex.exe")
    windows.place_uninstaller(uninstallers / "Orvex Studio.exe")
    windows.register({"A": entry("Orvex version 1.4", "Orvex.exe"), "C": entry("Orvex Studio", "Orvex Studio.exe")})

    with windows.held("key", f"{KEY}\\B"):
        run = clean(windows, ORVEX_STUDIO)

    told = exited(0) + f"[time][Critical] Failed to open the Windows registry subkey: {KEY}\\B\n"
    steps = removed(ORVEX_STUDIO, "C:\\Program Files\\Orvex Studio", after=told)
    assert run == succeeded(windows, opening(ORVEX_STUDIO) + steps)
    assert windows.calls(uninstallers / "Orvex Studio.exe") == []

"""Setups of NSIS. Their uninstallers ignore /SILENT, and work through a copy that nothing waits for."""

from machines import put
from products import ORVEX_STUDIO, PRODUCT_MANAGER
from runs import clean, failed, succeeded
from setups import (
    MANAGER_FILES,
    OK,
    SOURCES,
    STUDIO_FILES,
    clean_again,
    copies_of_nsis,
    install_by_nsis,
    left,
    listed_programs,
    makensis,
    outcomes,
    press,
    wait_for_the_end_of_all,
)
from texts import NOT_STARTED, aborted, advice, exited, opening, removed

STUDIO = "C:\\Program Files\\Orvex Studio"
VST3 = "C:\\Program Files\\Common Files\\VST3"
ENTRY = {"Orvex Studio 5": f'"{STUDIO}\\uninstall.exe"'}


def test_an_uninstaller_that_asks_returns_at_once_and_its_entry_stops_every_further_run(windows):
    install_by_nsis(windows, "Orvex Studio 5", *STUDIO_FILES)
    put(windows.user_data, "Orvex/recent.xml")

    run = clean(windows, ORVEX_STUDIO)

    folders = STUDIO, windows.shown(windows.user_data / "Orvex"), f"{VST3}\\Orvex.vst3"
    transcript = opening(ORVEX_STUDIO) + removed(ORVEX_STUDIO, *folders, after=exited(0))
    assert run == succeeded(windows, transcript)
    wait_for_the_end_of_all(windows)
    assert len(copies_of_nsis(windows)) == 1
    assert left(windows) == [VST3]
    assert listed_programs(windows) == ENTRY

    put(windows.user_data, "Orvex/recent.xml")
    run = clean_again(windows, ORVEX_STUDIO)

    assert run == failed(opening(ORVEX_STUDIO) + aborted(ORVEX_STUDIO, NOT_STARTED + advice("Orvex Studio")))
    assert left(windows) == [VST3, windows.shown(windows.user_data / "Orvex/recent.xml")]
    assert listed_programs(windows) == ENTRY


def test_an_uninstaller_that_asks_removes_its_entry_when_answered_after_its_folder_is_gone(inno_windows):
    windows = inno_windows  # which has a display
    install_by_nsis(windows, "Orvex Studio 5", *STUDIO_FILES)

    run = clean(windows, ORVEX_STUDIO)

    transcript = opening(ORVEX_STUDIO) + removed(ORVEX_STUDIO, STUDIO, f"{VST3}\\Orvex.vst3", after=exited(0))
    assert run == succeeded(windows, transcript)
    assert listed_programs(windows) == ENTRY

    press(windows, "Orvex Studio 5 Uninstall: Confirmation", OK)
    press(windows, "Orvex Studio 5 Uninstall: Completed", OK)
    wait_for_the_end_of_all(windows)
    assert left(windows) == [VST3]
    assert listed_programs(windows) == {}


def test_an_uninstaller_that_is_always_silent_removes_its_entry_after_the_program_went_on(windows):
    install_by_nsis(windows, "Orvex version 2.4.1", "Orvex/bridge.exe", "Orvex/Licence.txt", options=("-DSILENT",))

    run = clean(windows, ORVEX_STUDIO)
    wait_for_the_end_of_all(windows)

    assert run in outcomes(windows, ORVEX_STUDIO, exited(0), ["C:\\Program Files\\Orvex"])
    assert listed_programs(windows) == {}

    clean_again(windows, ORVEX_STUDIO)
    assert left(windows) == []


def test_an_uninstaller_that_waits_for_the_real_one_leaves_the_rest_to_the_program(windows):
    makensis(SOURCES / "waiting.nsi", f"-DPROGRAM={windows.scratch}/waiting.exe")
    waiting = (f"-DWAITING={windows.scratch}/waiting.exe",)
    install_by_nsis(windows, "Orvex Product Manager", *MANAGER_FILES, options=waiting)

    run = clean(windows, PRODUCT_MANAGER)

    folder = "C:\\Program Files\\Orvex Product Manager"
    transcript = opening(PRODUCT_MANAGER) + removed(PRODUCT_MANAGER, folder, after=exited(0))
    assert run == succeeded(windows, transcript)
    assert left(windows) == []
    assert listed_programs(windows) == {}

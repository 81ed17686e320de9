"""Setups of Inno Setup. Their uninstallers know /SILENT, and work through a copy that ends last."""

import time

import pytest

from machines import put
from products import ORVEX_STUDIO, PRODUCT_MANAGER
from runs import clean, failed, succeeded
from setups import (
    MANAGER_FILES,
    OK,
    STUDIO_FILES,
    YES,
    clean_again,
    install_by_inno,
    left,
    listed_programs,
    outcomes,
    press,
    wait_for_the_end_of_all,
)
from texts import TOO_SLOW, aborted, advice, exited, file_deleted, folder_deleted, opening, removed


@pytest.fixture
def windows(inno_windows):
    return inno_windows


def test_both_uninstallers_of_the_studio_run_and_their_remains_are_removed(windows):
    install_by_inno(windows, "Orvex", "2.4.1", "Orvex/Orvex.exe", "Orvex/Licence.txt")
    install_by_inno(windows, "Orvex Studio", "5.0", *STUDIO_FILES)
    assert listed_programs(windows) == {
        "Orvex version 2.4.1": '"C:\\Program Files\\Orvex\\unins000.exe"',
        "Orvex Studio version 5.0": '"C:\\Program Files\\Orvex Studio\\unins000.exe"',
    }
    put(windows.program_files, "Orvex Studio/Templates/Mine.song", "Common Files/VST3/OrvexMonitor.vst3")
    put(windows.program_files, "Common Files/VST3/Another Maker.vst3")
    put(windows.user_data, "Orvex/recent.xml")

    run = clean(windows, ORVEX_STUDIO)
    wait_for_the_end_of_all(windows)

    contested = ["C:\\Program Files\\Orvex", "C:\\Program Files\\Orvex Studio"]
    rest = folder_deleted(windows.shown(windows.user_data / "Orvex"))
    rest += file_deleted("C:\\Program Files\\Common Files\\VST3\\OrvexMonitor.vst3")
    assert run in outcomes(windows, ORVEX_STUDIO, exited(0, 0), contested, rest)
    assert listed_programs(windows) == {}

    clean_again(windows, ORVEX_STUDIO)  # in case both deleted the same folder
    assert left(windows) == ["C:\\Program Files\\Common Files\\VST3\\Another Maker.vst3"]

    run = clean_again(windows, ORVEX_STUDIO)

    assert run == succeeded(windows, opening(ORVEX_STUDIO) + removed(ORVEX_STUDIO))


def run_in_vain(windows, product) -> None:
    """Runs the program on a product whose uninstaller takes too long, so that the product stays."""
    everything = left(windows)
    uninstallers = listed_programs(windows)

    start = time.monotonic()
    run = clean(windows, product)

    assert time.monotonic() - start >= 20
    advised = advice(product.name, f"C:\\Program Files\\{product.name}\\unins000.exe")
    assert run == failed(opening(product) + aborted(product, TOO_SLOW + advised))
    assert left(windows) == everything
    assert listed_programs(windows) == uninstallers


def test_an_uninstaller_that_asks_gets_20_seconds_and_the_next_run_removes_its_remains(windows):
    install_by_inno(windows, "Orvex Studio", "5.0", *STUDIO_FILES, options=("/DQuestion=Remove it?",))
    put(windows.user_data, "Orvex/recent.xml")

    run_in_vain(windows, ORVEX_STUDIO)

    press(windows, "Uninstall", YES)
    wait_for_the_end_of_all(windows)
    run = clean_again(windows, ORVEX_STUDIO)

    transcript = opening(ORVEX_STUDIO) + removed(ORVEX_STUDIO, windows.shown(windows.user_data / "Orvex"))
    assert run == succeeded(windows, transcript)
    assert left(windows) == []
    assert listed_programs(windows) == {}


def test_an_uninstaller_waits_while_its_application_runs_and_continues_after_it_ends(windows):
    install_by_inno(windows, "Orvex Product Manager", "2.0", *MANAGER_FILES, options=("/DMutex=OrvexProductManager",))
    put(windows.shared_data, "TessaraWorks/OrvexProductManager/partial.bin")

    with windows.held("mutex", "OrvexProductManager"):
        run_in_vain(windows, PRODUCT_MANAGER)

    press(windows, "Orvex Product Manager Uninstall", OK)
    wait_for_the_end_of_all(windows)
    run = clean_again(windows, PRODUCT_MANAGER)

    folder = "C:\\ProgramData\\TessaraWorks\\OrvexProductManager"
    assert run == succeeded(windows, opening(PRODUCT_MANAGER) + removed(PRODUCT_MANAGER, folder))
    assert left(windows) == ["C:\\ProgramData\\TessaraWorks"]
    assert listed_programs(windows) == {}


def test_a_32_bit_installation_is_not_found_and_the_64_bit_folders_are_cleaned(windows):
    install_by_inno(windows, "Orvex Studio", "3.2", *STUDIO_FILES, options=("/DOld",))
    installed = left(windows)
    put(windows.program_files, "Common Files/VST3/Orvex.vst3/Orvex.vst3")
    put(windows.user_data, "Orvex/recent.xml")

    run = clean(windows, ORVEX_STUDIO)

    folders = windows.shown(windows.user_data / "Orvex"), "C:\\Program Files\\Common Files\\VST3\\Orvex.vst3"
    assert run == succeeded(windows, opening(ORVEX_STUDIO) + removed(ORVEX_STUDIO, *folders))
    assert left(windows) == sorted([*installed, "C:\\Program Files\\Common Files\\VST3"])
    assert "C:\\Program Files (x86)\\Orvex Studio\\Orvex Studio.exe" in installed
    assert listed_programs(windows) == {}
    assert listed_programs(windows, bits=32) == {
        "Orvex Studio version 3.2": '"C:\\Program Files (x86)\\Orvex Studio\\unins000.exe"'
    }

    windows.tool("C:\\Program Files (x86)\\Orvex Studio\\unins000.exe", "/VERYSILENT").wait()
    wait_for_the_end_of_all(windows)

"""Setups of Inno Setup, whose uninstallers know /SILENT and end through a copy that is the last to go."""

import subprocess
from contextlib import contextmanager

import pytest

from runs import failed, succeeded
from setups import (
    OK,
    YES,
    install_by_inno,
    left,
    listed_programs,
    outcomes,
    press,
    put,
    run_again,
    seconds_waited,
    wait_for_the_end_of_all,
)

ORVEX = ["Orvex/Orvex.exe", "Orvex/Licence.txt"]
STUDIO = ["Orvex Studio/Orvex Studio.exe", "Orvex Studio/Licence.txt", "Common Files/VST3/Orvex.vst3/Orvex.vst3"]
MANAGER = ["Orvex Product Manager/Orvex Product Manager.exe", "Orvex Product Manager/Licence.txt"]


@pytest.fixture
def windows(inno_windows):
    return inno_windows


@contextmanager
def running_application(windows, mutex: str):
    pipes = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE}

    with windows.tool("C:\\tools\\HoldMutex.exe", mutex, **pipes) as application:
        assert application.stdout.readline() == b"running\r\n"
        yield


def test_both_of_the_studio_s_uninstallers_run_and_what_they_leave_goes(windows):
    install_by_inno(windows, "Orvex", "2.4.1", *ORVEX)
    install_by_inno(windows, "Orvex Studio", "5.0", *STUDIO)
    assert listed_programs(windows) == {
        "Orvex version 2.4.1": '"C:\\Program Files\\Orvex\\unins000.exe"',
        "Orvex Studio version 5.0": '"C:\\Program Files\\Orvex Studio\\unins000.exe"',
    }
    put(windows.program_files, "Orvex Studio/Templates/Mine.song", "Common Files/VST3/OrvexMonitor.vst3")
    put(windows.program_files, "Common Files/VST3/Another Maker.vst3")
    put(windows.user_data, "Orvex/recent.xml")

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")
    wait_for_the_end_of_all(windows)

    start = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Uninstaller exit code: 0
"""
    contested = ["C:\\Program Files\\Orvex", "C:\\Program Files\\Orvex Studio"]
    rest = """\
[time][Info] Deleting directory: ROAMING\\Orvex
[time][Info] Directory deleted: ROAMING\\Orvex
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: C:\\Program Files\\Common Files\\VST3\\OrvexMonitor.vst3
""".replace(
        "ROAMING", windows.shown(windows.user_data)
    )
    assert run in outcomes(windows, "Orvex Studio", start, contested, rest)
    assert listed_programs(windows) == {}

    run_again(windows, "--clean=OrvexStudio", answers="y\n\n")  # for the case that both were at it
    assert left(windows) == ["C:\\Program Files\\Common Files\\VST3\\Another Maker.vst3"]

    run = run_again(windows, "--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run == succeeded(windows, transcript)


def test_an_uninstaller_that_asks_is_given_20_seconds_and_the_next_run_removes_what_it_leaves(windows):
    install_by_inno(windows, "Orvex Studio", "5.0", *STUDIO, options=("/DQuestion=Remove it?",))
    put(windows.user_data, "Orvex/recent.xml")
    everything = left(windows)
    uninstallers = listed_programs(windows)

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 259
[time][Info] Existing Orvex Studio software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can also run the uninstaller directly: C:\\Program Files\\Orvex Studio\\unins000.exe
[time][Info] You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run == failed(transcript)
    assert 20 <= seconds_waited(windows) < 30
    assert left(windows) == everything
    assert listed_programs(windows) == uninstallers

    press(windows, "Uninstall", YES)
    wait_for_the_end_of_all(windows)
    run = run_again(windows, "--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Deleting directory: ROAMING\\Orvex
[time][Info] Directory deleted: ROAMING\\Orvex
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
""".replace(
        "ROAMING", windows.shown(windows.user_data)
    )
    assert run == succeeded(windows, transcript)
    assert left(windows) == []
    assert listed_programs(windows) == {}


def test_an_uninstaller_whose_application_is_running_waits_and_goes_on_once_that_was_closed(windows):
    install_by_inno(windows, "Orvex Product Manager", "2.0", *MANAGER, options=("/DMutex=OrvexProductManager",))
    put(windows.shared_data, "TessaraWorks/OrvexProductManager/partial.bin")
    everything = left(windows)
    uninstallers = listed_programs(windows)

    with running_application(windows, "OrvexProductManager"):
        run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 259
[time][Info] Existing Orvex Product Manager software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
[time][Info] You can also run the uninstaller directly: C:\\Program Files\\Orvex Product Manager\\unins000.exe
[time][Info] You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean up any final files.
[time][Warning] Cleaning was aborted.
"""
    assert run == failed(transcript)
    assert 20 <= seconds_waited(windows) < 30
    assert left(windows) == everything
    assert listed_programs(windows) == uninstallers

    press(windows, "Orvex Product Manager Uninstall", OK)
    wait_for_the_end_of_all(windows)
    run = run_again(windows, "--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Deleting directory: C:\\ProgramData\\TessaraWorks\\OrvexProductManager
[time][Info] Directory deleted: C:\\ProgramData\\TessaraWorks\\OrvexProductManager
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""
    assert run == succeeded(windows, transcript)
    assert left(windows) == ["C:\\ProgramData\\TessaraWorks"]
    assert listed_programs(windows) == {}


def test_an_installation_for_32_bits_is_not_found_and_what_lies_in_the_64_bit_folders_goes(windows):
    install_by_inno(windows, "Orvex Studio", "3.2", *STUDIO, options=("/DOld",))
    installed = left(windows)
    put(windows.program_files, "Common Files/VST3/Orvex.vst3/Orvex.vst3")
    put(windows.user_data, "Orvex/recent.xml")

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Deleting directory: ROAMING\\Orvex
[time][Info] Directory deleted: ROAMING\\Orvex
[time][Info] Deleting directory: C:\\Program Files\\Common Files\\VST3\\Orvex.vst3
[time][Info] Directory deleted: C:\\Program Files\\Common Files\\VST3\\Orvex.vst3
[time][Info] Directories removed: 2
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
""".replace(
        "ROAMING", windows.shown(windows.user_data)
    )
    assert run == succeeded(windows, transcript)
    assert left(windows) == sorted([*installed, "C:\\Program Files\\Common Files\\VST3"])
    assert "C:\\Program Files (x86)\\Orvex Studio\\Orvex Studio.exe" in installed
    assert listed_programs(windows) == {}
    assert listed_programs(windows, bits=32) == {
        "Orvex Studio version 3.2": '"C:\\Program Files (x86)\\Orvex Studio\\unins000.exe"'
    }

    windows.tool("C:\\Program Files (x86)\\Orvex Studio\\unins000.exe", "/VERYSILENT").wait()
    wait_for_the_end_of_all(windows)

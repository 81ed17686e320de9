"""Setups of NSIS, whose uninstallers know nothing of /SILENT and work through a copy that nobody waits for."""

from runs import failed, succeeded
from setups import (
    OK,
    SOURCES,
    copies_of_nsis,
    install_by_nsis,
    left,
    listed_programs,
    makensis,
    outcomes,
    press,
    put,
    run_again,
    wait_for_the_end_of_all,
)

STUDIO = ["Orvex Studio/Orvex Studio.exe", "Orvex Studio/Licence.txt", "Common Files/VST3/Orvex.vst3/Orvex.vst3"]
MANAGER = ["Orvex Product Manager/Orvex Product Manager.exe", "Orvex Product Manager/Licence.txt"]


def test_an_uninstaller_that_asks_returns_at_once_and_loses_its_folder_but_not_its_entry(windows):
    install_by_nsis(windows, "Orvex Studio 5", *STUDIO)
    put(windows.user_data, "Orvex/recent.xml")

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Deleting directory: ROAMING\\Orvex
[time][Info] Directory deleted: ROAMING\\Orvex
[time][Info] Deleting directory: C:\\Program Files\\Common Files\\VST3\\Orvex.vst3
[time][Info] Directory deleted: C:\\Program Files\\Common Files\\VST3\\Orvex.vst3
[time][Info] Directories removed: 3
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
""".replace(
        "ROAMING", windows.shown(windows.user_data)
    )
    assert run == succeeded(windows, transcript)
    wait_for_the_end_of_all(windows)
    assert len(copies_of_nsis(windows)) == 1
    assert left(windows) == ["C:\\Program Files\\Common Files\\VST3"]
    assert listed_programs(windows) == {"Orvex Studio 5": '"C:\\Program Files\\Orvex Studio\\uninstall.exe"'}


def test_an_uninstaller_that_asks_removes_its_entry_when_it_is_answered_after_its_folder_has_gone(inno_windows):
    windows = inno_windows  # which has a display
    install_by_nsis(windows, "Orvex Studio 5", *STUDIO)

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Studio
[time][Info] Directory deleted: C:\\Program Files\\Orvex Studio
[time][Info] Deleting directory: C:\\Program Files\\Common Files\\VST3\\Orvex.vst3
[time][Info] Directory deleted: C:\\Program Files\\Common Files\\VST3\\Orvex.vst3
[time][Info] Directories removed: 2
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
"""
    assert run == succeeded(windows, transcript)
    assert listed_programs(windows) == {"Orvex Studio 5": '"C:\\Program Files\\Orvex Studio\\uninstall.exe"'}

    press(windows, "Orvex Studio 5 Uninstall: Confirmation", OK)
    press(windows, "Orvex Studio 5 Uninstall: Completed", OK)
    wait_for_the_end_of_all(windows)
    assert left(windows) == ["C:\\Program Files\\Common Files\\VST3"]
    assert listed_programs(windows) == {}


def test_an_entry_whose_uninstaller_has_gone_stops_every_further_run(windows):
    install_by_nsis(windows, "Orvex Studio 5", *STUDIO)
    windows.run("--clean=OrvexStudio", answers="y\n\n")
    wait_for_the_end_of_all(windows)
    put(windows.user_data, "Orvex/recent.xml")

    run = run_again(windows, "--clean=OrvexStudio", answers="y\n\n")

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
    assert run == failed(transcript)
    assert left(windows) == [
        "C:\\Program Files\\Common Files\\VST3",
        windows.shown(windows.user_data / "Orvex/recent.xml"),
    ]
    assert listed_programs(windows) == {"Orvex Studio 5": '"C:\\Program Files\\Orvex Studio\\uninstall.exe"'}


def test_an_uninstaller_that_is_silent_by_itself_removes_its_entry_after_the_program_has_gone_on(windows):
    install_by_nsis(windows, "Orvex version 2.4.1", "Orvex/bridge.exe", "Orvex/Licence.txt", options=("-DSILENT",))

    run = windows.run("--clean=OrvexStudio", answers="y\n\n")
    wait_for_the_end_of_all(windows)

    start = """\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Uninstaller exit code: 0
"""
    assert run in outcomes(windows, "Orvex Studio", start, ["C:\\Program Files\\Orvex"])
    assert listed_programs(windows) == {}

    run_again(windows, "--clean=OrvexStudio", answers="y\n\n")
    assert left(windows) == []


def test_an_uninstaller_that_waits_for_the_real_one_leaves_only_what_it_did_not_install(windows):
    makensis(SOURCES / "waiting.nsi", f"-DPROGRAM={windows.scratch}/waiting.exe")
    waiting = (f"-DWAITING={windows.scratch}/waiting.exe",)
    install_by_nsis(windows, "Orvex Product Manager", *MANAGER, options=waiting)

    run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Uninstaller exit code: 0
[time][Info] Deleting directory: C:\\Program Files\\Orvex Product Manager
[time][Info] Directory deleted: C:\\Program Files\\Orvex Product Manager
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""
    assert run == succeeded(windows, transcript)
    assert left(windows) == []
    assert listed_programs(windows) == {}

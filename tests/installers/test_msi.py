"""Packages of Windows' own installer, whose command in the list of programs names no program as a whole."""

import re

from runs import failed, succeeded
from setups import install_by_msi, left, listed_programs, put, run_again

MANAGER = ["Orvex Product Manager/Orvex Product Manager.exe"]


def test_a_package_is_left_alone_and_what_it_leaves_goes_after_it_was_uninstalled_by_hand(windows):
    install_by_msi(windows, *MANAGER)
    put(windows.program_files, "Orvex Product Manager/settings.json")
    put(windows.user_data, "OrvexProductManager/account.json")
    account = windows.shown(windows.user_data / "OrvexProductManager" / "account.json")
    (command,) = listed_programs(windows).values()
    product = re.fullmatch(r"MsiExec\.exe /I(\{[0-9A-F-]+\})", command)[1]
    everything = left(windows)

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
    assert run == failed(transcript)
    assert (
        left(windows)
        == everything
        == sorted(
            [
                "C:\\Program Files\\Orvex Product Manager\\Orvex Product Manager.exe",
                "C:\\Program Files\\Orvex Product Manager\\settings.json",
                account,
            ]
        )
    )
    assert listed_programs(windows) == {"Orvex Product Manager": command}

    assert windows.tool("msiexec", "/x", product, "/qn").wait() == 0
    assert left(windows) == ["C:\\Program Files\\Orvex Product Manager\\settings.json", account]
    run = run_again(windows, "--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Deleting directory: C:\\Program Files\\Orvex Product Manager
[time][Info] Directory deleted: C:\\Program Files\\Orvex Product Manager
[time][Info] Deleting directory: ROAMING\\OrvexProductManager
[time][Info] Directory deleted: ROAMING\\OrvexProductManager
[time][Info] Directories removed: 2
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
""".replace(
        "ROAMING", windows.shown(windows.user_data)
    )
    assert run == succeeded(windows, transcript)
    assert left(windows) == []
    assert listed_programs(windows) == {}

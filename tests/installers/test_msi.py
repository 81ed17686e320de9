"""Windows Installer packages. Their uninstall command is not the path of a program."""

import re

from machines import put
from products import PRODUCT_MANAGER
from runs import clean, failed, succeeded
from setups import clean_again, install_by_msi, left, listed_programs
from texts import NOT_STARTED, aborted, advice, opening, removed

PROGRAM = "C:\\Program Files\\Orvex Product Manager\\Orvex Product Manager.exe"
SETTINGS = "C:\\Program Files\\Orvex Product Manager\\settings.json"


def test_a_package_stays_until_uninstalled_by_hand_and_then_its_remains_are_removed(windows):
    install_by_msi(windows, "Orvex Product Manager/Orvex Product Manager.exe")
    put(windows.program_files, "Orvex Product Manager/settings.json")
    put(windows.user_data, "OrvexProductManager/account.json")
    account = windows.shown(windows.user_data / "OrvexProductManager" / "account.json")
    (command,) = listed_programs(windows).values()
    product = re.fullmatch(r"MsiExec\.exe /I(\{[0-9A-F-]+\})", command)[1]
    everything = left(windows)

    run = clean(windows, PRODUCT_MANAGER)

    advised = NOT_STARTED + advice("Orvex Product Manager")
    assert run == failed(opening(PRODUCT_MANAGER) + aborted(PRODUCT_MANAGER, advised))
    assert left(windows) == everything == sorted([PROGRAM, SETTINGS, account])
    assert listed_programs(windows) == {"Orvex Product Manager": command}

    assert windows.tool("msiexec", "/x", product, "/qn").wait() == 0
    assert left(windows) == [SETTINGS, account]
    run = clean_again(windows, PRODUCT_MANAGER)

    folders = windows.program_files / "Orvex Product Manager", windows.user_data / "OrvexProductManager"
    transcript = opening(PRODUCT_MANAGER) + removed(PRODUCT_MANAGER, *map(windows.shown, folders))
    assert run == succeeded(windows, transcript)
    assert left(windows) == []
    assert listed_programs(windows) == {}

"""The uninstallers that two of the products run before anything is deleted."""

import time
from dataclasses import dataclass
from pathlib import Path

import pytest

from machines import UNINSTALL_KEY, put, wait_for
from products import COMPANY, CONTENT, MEDIA_SERVER, ORVEX_STUDIO, PRODUCT_MANAGER, Product
from runs import clean, failed, succeeded
from texts import NOT_STARTED, TOO_SLOW, aborted, advice, exited, opening, removed

KEY = UNINSTALL_KEY.removeprefix("HKEY_LOCAL_MACHINE\\")


@pytest.fixture
def uninstallers(windows):
    """Where the uninstallers lie. No product lists this folder."""
    folder = windows.c / "Uninstallers"
    folder.mkdir()
    return folder


def entry(name: str, uninstaller: str) -> dict[str, str]:
    """The values of an entry whose command is the path of an uninstaller in quotes."""
    return {"DisplayName": name, "UninstallString": f'"C:\\Uninstallers\\{uninstaller}"'}


def called(uninstaller: str) -> list[str]:
    """What a stub notes when it is called once, in the right way, and comes to its end."""
    return [f'"C:\\Uninstallers\\{uninstaller}" /SILENT', "done"]


@dataclass
class Case:
    product: Product
    uninstallers: dict[str, list[str] | None]  # with their orders; None for one that is no program
    entries: list[dict[str, str]]
    told: str = ""  # of the uninstallers
    called: tuple[str, ...] = ()

    def lay_out(self, windows, uninstallers: Path) -> Path:
        """Gives the one folder of the product that is there."""
        folder = self.product.paths(windows)[0]
        put(folder, "File.dat")
        windows.register(dict(zip("ABCDEF", self.entries)))

        for name, orders in self.uninstallers.items():
            if orders is None:
                put(uninstallers, name)
            else:
                windows.place_uninstaller(uninstallers / name, *orders)

        return folder

    @property
    def calls(self) -> dict[str, list[str]]:
        """What the uninstallers note."""
        return {name: called(name) * self.called.count(name) for name in self.uninstallers}


def calls(windows, uninstallers: Path) -> dict[str, list[str]]:
    """What the uninstallers there have noted."""
    return {file.name: windows.calls(file) for file in uninstallers.glob("*.exe")}


BOTH = entry("Orvex version 1.4 (Orvex Studio)", "Both.exe")

GOES_ON = {
    "studio without an entry of its names": Case(
        ORVEX_STUDIO,
        {"Any.exe": []},
        [
            entry("orvex studio", "Any.exe"),
            entry("Orvex Version 2", "Any.exe"),
            entry("OrvexStudio", "Any.exe"),
            entry("Orvex Product Manager version 2", "Any.exe"),
            entry("", "Any.exe"),
            {"UninstallString": "C:\\Uninstallers\\Any.exe"},
        ],
    ),
    "studio with both, in its own order and whatever their exit codes": Case(
        ORVEX_STUDIO,
        {"Orvex.exe": ["exit 3"], "Orvex Studio.exe": ["exit 4294967295"]},
        [entry("Orvex Studio", "Orvex Studio.exe"), entry("Orvex version 1.4", "Orvex.exe")],
        told=exited(3, 4294967295),
        called=("Orvex.exe", "Orvex Studio.exe"),
    ),
    "product manager with an entry of the studio": Case(
        PRODUCT_MANAGER,
        {"Both.exe": []},
        [BOTH, entry("Orvex Manager", "Both.exe"), entry("Orvex product manager", "Both.exe")],
    ),
    "product manager with two, of which the first runs, whatever its exit code": Case(
        PRODUCT_MANAGER,
        {"First.exe": ["exit 1602"], "Second.exe": []},
        [entry("Orvex Product Manager 2", "First.exe"), entry("Orvex Product Manager", "Second.exe")],
        told=exited(1602),
        called=("First.exe",),
    ),
}

for product in (CONTENT, MEDIA_SERVER, COMPANY):
    names = ["Orvex Product Manager", product.name, "Velantone", "Tessara Works"]
    entries = [BOTH, *(entry(name, "Both.exe") for name in names)]
    GOES_ON[f"{product.name}, which runs none"] = Case(product, {"Both.exe": []}, entries)


@pytest.mark.parametrize("case", GOES_ON.values(), ids=GOES_ON)
def test_a_product_is_removed_after_its_uninstallers(windows, uninstallers, case):
    folder = case.lay_out(windows, uninstallers)

    run = clean(windows, case.product)

    steps = removed(case.product, windows.shown(folder), after=case.told)
    assert run == succeeded(windows, opening(case.product) + steps)
    assert calls(windows, uninstallers) == case.calls
    assert not folder.exists()


STOPS = {
    "studio, which runs the second after the first could not be started": Case(
        ORVEX_STUDIO,
        {"Orvex Studio.exe": []},
        [entry("Orvex version 1.4", "Gone.exe"), entry("Orvex Studio", "Orvex Studio.exe")],
        told=NOT_STARTED + advice("Orvex") + exited(0),
        called=("Orvex Studio.exe",),
    ),
    "studio of which only the second could not be started": Case(
        ORVEX_STUDIO,
        {"Orvex.exe": ["exit 3"]},
        [entry("Orvex version 1.4", "Orvex.exe"), entry("Orvex Studio", "Gone.exe")],
        told=exited(3) + NOT_STARTED + advice("Orvex Studio"),
        called=("Orvex.exe",),
    ),
    "studio whose entry has no command, although a later one has": Case(
        ORVEX_STUDIO,
        {"Orvex Studio.exe": []},
        [{"DisplayName": "Orvex Studio"}, entry("Orvex Studio", "Orvex Studio.exe")],
        told=NOT_STARTED + advice("Orvex Studio"),
    ),
    "studio, which advises twice and names an uninstaller only if it is a file": Case(
        ORVEX_STUDIO,
        {"Orvex.exe": None},
        [entry("Orvex version 1.4", "Orvex.exe"), entry("Orvex Studio", "Gone.exe")],
        told=NOT_STARTED + advice("Orvex", "C:\\Uninstallers\\Orvex.exe") + NOT_STARTED + advice("Orvex Studio"),
    ),
    "product manager whose uninstaller is no program": Case(
        PRODUCT_MANAGER,
        {"Orvex.exe": None},
        [entry("Orvex Product Manager", "Orvex.exe")],
        told=NOT_STARTED + advice("Orvex Product Manager", "C:\\Uninstallers\\Orvex.exe"),
    ),
    "product manager whose command has arguments": Case(
        PRODUCT_MANAGER,
        {"Orvex.exe": []},
        [{"DisplayName": "Orvex Product Manager", "UninstallString": '"C:\\Uninstallers\\Orvex.exe" /REMOVE'}],
        told=NOT_STARTED + advice("Orvex Product Manager"),
    ),
}


@pytest.mark.parametrize("case", STOPS.values(), ids=STOPS)
def test_a_product_is_left_alone_when_one_of_its_uninstallers_could_not_be_started(windows, uninstallers, case):
    case.lay_out(windows, uninstallers)
    before = windows.tree()

    run = clean(windows, case.product)

    assert run == failed(opening(case.product) + aborted(case.product, case.told))
    assert calls(windows, uninstallers) == case.calls
    assert windows.tree() == before


def test_product_manager_is_left_alone_after_20_seconds_beside_an_uninstaller_that_goes_on(windows, uninstallers):
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


def test_an_entry_that_cannot_be_opened_hides_those_behind_it_but_not_those_before_it(windows, uninstallers):
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

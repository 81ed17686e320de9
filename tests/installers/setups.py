"""Setups of the maker's products: built by the compiler of their family, and run as a user would run them."""

import re
import shutil
import subprocess
from itertools import product as each_with_each
from pathlib import Path

from machines import UNINSTALL_KEY, put, wait_for
from runs import Run, clean, failed, succeeded
from texts import cleaned, file_deleted, folder_deleted, folder_not_deleted, opening

STUDIO_FILES = ["Orvex Studio/Orvex Studio.exe", "Orvex Studio/Licence.txt", "Common Files/VST3/Orvex.vst3/Orvex.vst3"]
MANAGER_FILES = ["Orvex Product Manager/Orvex Product Manager.exe", "Orvex Product Manager/Licence.txt"]

SOURCES = Path(__file__).resolve().parent / "setups"
OK, YES = 1, 6  # the IDs of dialog buttons


def install_by_nsis(windows, name: str, *files: str, options: tuple[str, ...] = ()) -> None:
    """Installs files below Program Files, the first of them in the product's own folder."""
    source = windows.scratch / name
    put(source, *files)
    setup = windows.scratch / "product-setup.exe"
    names = {"NAME": name, "FOLDER": Path(files[0]).parts[0], "FILES": source, "SETUP": setup}
    makensis(SOURCES / "product.nsi", *(f"-D{key}={value}" for key, value in names.items()), *options)
    run_setup(windows, setup, "/S")


def makensis(script: Path, *options: str) -> None:
    subprocess.run(["makensis", "-V2", "-WX", *options, script], check=True)


def install_by_msi(windows, *files: str) -> None:
    """Installs the product manager's package with these files below Program Files."""
    source = windows.scratch / "files"
    put(source, *files)
    shutil.copy(SOURCES / "manager.wxs", source)
    package = windows.c / "manager.msi"
    subprocess.run(["wixl", "-a", "x64", "-o", package, "manager.wxs"], cwd=source, check=True)
    assert windows.tool("msiexec", "/i", "C:\\manager.msi", "/qn").wait() == 0
    package.unlink()


def install_by_inno(windows, name: str, version: str, *files: str, options: tuple[str, ...] = ()) -> None:
    """Installs files below Program Files, the first of them in the product's own folder."""
    workshop = windows.c / "workshop"
    shutil.copytree(windows.debian / "innosetup", workshop / "innosetup")
    shutil.copy(SOURCES / "product.iss", workshop)
    put(workshop / "files", *files)
    names = {"Name": name, "Version": version, "Folder": Path(files[0]).parts[0], "Files": "C:\\workshop\\files"}
    defines = [f"/D{key}={value}" for key, value in names.items()]
    compiler = ["C:\\workshop\\innosetup\\ISCC.exe", "/Q", *defines, *options, "/OC:\\workshop", "/Fproduct-setup"]
    assert windows.tool(*compiler, "C:\\workshop\\product.iss").wait() == 0
    setup = shutil.move(workshop / "product-setup.exe", windows.scratch / "product-setup.exe")
    shutil.rmtree(workshop)
    run_setup(windows, setup, "/VERYSILENT", "/SUPPRESSMSGBOXES", "/NORESTART")


def run_setup(windows, setup: Path, *options: str) -> None:
    started = Path(shutil.copy(setup, windows.c))
    assert windows.tool(windows.shown(started), *options).wait() == 0
    started.unlink()


def press(windows, title: str, button: int) -> None:
    """Presses a button of a dialog."""
    assert windows.tool("C:\\tools\\AnswerDialog.exe", title, str(button)).wait(60) == 0


def clean_again(windows, product) -> Run:
    """Runs the program after removing the traces of the previous run."""
    windows.close_explorers()
    windows.log_file.unlink()
    return clean(windows, product)


def wait_for_the_end_of_all(windows) -> None:
    """Waits until only Windows' own programs are running."""

    def ended() -> bool:
        return all(line[0].startswith("C:\\windows\\") for line in windows.programs().values())

    assert wait_for(ended, seconds=60), windows.programs()


def copies_of_nsis(windows) -> list[Path]:
    """The copies of themselves that uninstallers have started. They stay until Windows restarts."""
    return list(windows.home.rglob("~nsu*.tmp/*.exe"))


def everything(windows) -> set[Path]:
    """Everything on the drive except Windows' own files, temporary files and the desktop."""
    others = [windows.c / "windows", windows.home / "AppData" / "Local", windows.home / "Temp", windows.desktop]
    others += windows.kept_by_system
    return {path for path in windows.c.rglob("*") if not any(path.is_relative_to(other) for other in others)}


def left(windows) -> list[str]:
    """The files and the empty folders on the drive that were not there before the setups."""
    paths = everything(windows)
    parents = {path.parent for path in paths}
    return sorted(windows.shown(path) for path in paths - windows.clean_drive - parents)


def listed_programs(windows, bits: int = 64) -> dict[str, str]:
    """The uninstall commands in one of the two lists of installed programs, by program name."""
    query = windows.tool("reg", "query", UNINSTALL_KEY, "/s", f"/reg:{bits}", stdout=subprocess.PIPE, text=True)
    entries = query.communicate()[0].split("HKEY_LOCAL_MACHINE\\")[1:]
    values = (dict(re.findall(r"^ {4}(\w+) {4}REG\w+ {4}(.*)$", entry, re.MULTILINE)) for entry in entries)
    return {value["DisplayName"]: value["UninstallString"] for value in values if value}


def outcomes(machine, product, start: str, contested: list[str], rest: str = "") -> list[Run]:
    """The possible outcomes of a run while the uninstallers of these folders are still working."""
    ways = (
        folder_deleted,
        lambda _: "",  # the uninstaller was faster
        file_deleted,  # it was faster between two checks
        folder_not_deleted,  # it removed something in the folder first
    )
    choices = each_with_each(*([way(folder) for way in ways] for folder in contested))
    transcripts = [opening(product) + cleaned(product, start + "".join(choice) + rest) for choice in choices]
    return [failed(text) if "Unable to delete" in text else succeeded(machine, text) for text in transcripts]

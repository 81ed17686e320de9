"""The README's sample run, picture, paths and table of folders match the repository."""

import re
import zlib

import pytest

from machines import STAMP, Windows
from project import SUPPORT, TOP, output_of

README = (TOP / "README.md").read_text()
(SAMPLE_RUN,) = (STAMP.sub("[time]", shown) for shown in re.findall(r"```console\n(.*?)```", README, re.DOTALL))


@pytest.fixture
def tracked():
    """The files of the repository."""
    return output_of("git", "ls-files", cwd=TOP).split()


def test_the_sample_installation_is_cleaned_as_the_readme_shows(windows):
    Windows.has_uninstall_entries = True
    windows.carry_out(SUPPORT / "install-sample-products", windows.c)

    run = windows.run("--clean=Content", answers="y\n\n")

    expected = SAMPLE_RUN.replace("Y/n? y\n", "Y/n? ")
    assert run.console == expected.replace("C:\\users\\you\\", f"C:\\users\\{windows.home.name}\\")
    assert run.errors == ""
    assert run.exit_code == 0


def test_the_picture_shows_the_same_run():
    _, _, packed = (TOP / "docs" / "run.png").read_bytes().partition(b"zTXtLog\0\0")
    log = STAMP.sub("[time]", zlib.decompressobj().decompress(packed).decode())
    logged_line = re.compile(r"^\[time\][^\r\n]+", re.MULTILINE)

    assert logged_line.findall(log) == logged_line.findall(SAMPLE_RUN)


def test_every_path_in_the_readme_and_contributing_exists(tracked):
    documents = README + (TOP / "CONTRIBUTING.md").read_text()
    folders = {file.rsplit("/", depth)[0] for file in tracked for depth in range(1, file.count("/") + 1)}
    named = re.findall(r"\]\((?!http)([^)]+)\)|`((?:src|tests|docs|scripts|benchmarks)/[\w./-]+)", documents)

    assert {link or path for link, path in named} - set(tracked) - folders == {"src/products/NameCleaner.h"}


def test_the_readme_lists_every_folder(tracked):
    folders = {file.split("/")[0] for file in tracked if "/" in file and not file.startswith(".")} - {"src"}
    folders |= {"/".join(file.split("/")[:2]) for file in tracked if file.startswith("src/")}

    assert set(re.findall(r"^\| `(\S+)` \|", README.split("## Find your way")[1], re.MULTILINE)) == folders

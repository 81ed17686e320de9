"""The log file on the desktop."""

import pytest

from machines import contents_of, wait_for
from runs import succeeded
from texts import BANNER, CANCELLED, LOG_BANNER, QUESTION, ending, without_prompts

DECLINED = QUESTION + CANCELLED
SESSION = LOG_BANNER + without_prompts(DECLINED)


FIRST_LINES = "the first line\r\nthe second line\r\n"


# A file that is one byte too long loses its first line.
@pytest.mark.parametrize(("size", "dropped"), [(5_000_000, ""), (5_000_001, "the first line")])
def test_of_earlier_runs_is_trimmed_to_the_limit_before_a_run_and_may_grow_past_it_then(machine, size, dropped):
    old = FIRST_LINES + "x" * (size - len(FIRST_LINES) - 2) + "\r\n"
    machine.log_file.write_bytes(old.encode())

    run = machine.run("--clean=Content", answers="n\n\n")

    # A failure must not print five million characters: the old lines are only compared.
    kept = old.removeprefix(dropped).replace("\r\n", "\n")
    is_kept = run.log.startswith(kept)
    run.log = run.log[len(kept) :]
    assert is_kept
    assert run == succeeded(machine, DECLINED)
    assert machine.log_file.stat().st_size > 5_000_000
    assert contents_of(machine.desktop) == ["OrvexCleaner.log"]


def test_is_not_needed_where_its_path_is_a_folder(machine):
    machine.log_file.mkdir()

    run = machine.run("--clean=Content", answers="n\n\n")

    assert run == succeeded(machine, DECLINED, log=None, revealed=[])
    assert wait_for(machine.shown_folders, seconds=0.5) == []
    assert list(machine.log_file.iterdir()) == []


# Windows only: Linux lets two programs write to one file.
def test_that_another_program_holds_open_stays_as_it_is(windows):
    windows.log_file.write_bytes(b"an earlier run\r\n")

    with windows.held_open(windows.log_file):
        run = windows.run("--clean=Content", answers="n\n\n")

    assert run == succeeded(windows, DECLINED, log="an earlier run\n")


# Windows only: on Linux the location of the desktop is always known. The test does not look whether the log file is
# shown, since Wine's Explorer shows nothing without a desktop.
def test_lies_in_the_root_of_the_current_drive_without_a_desktop(windows, drive_d):
    with windows.without("desktop"):
        run = windows.run("--clean=Content", answers="n\n\n")

    console = BANNER + DECLINED + ending("D:\\OrvexCleaner.log")
    assert run == succeeded(windows, DECLINED, console=console, log=None, revealed=run.revealed)
    windows.log_file = drive_d / "OrvexCleaner.log"
    assert windows.log() == SESSION
    assert contents_of(windows.desktop) == []


# Linux only: there, a missing desktop still has a location.
def test_is_made_together_with_the_desktop(linux):
    linux.options += ["--set", "HOME", "/home/newcomer"]
    linux.desktop = linux.root / "home/newcomer/Desktop"
    linux.log_file = linux.desktop / "OrvexCleaner.log"

    run = linux.run("--clean=Content", answers="n\n\n")

    assert linux.shown(linux.log_file) == "/home/newcomer/Desktop/OrvexCleaner.log"
    assert run == succeeded(linux, DECLINED)

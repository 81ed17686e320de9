"""The log file on the desktop."""

import re

from machines import contents_of, wait_for
from texts import BANNER, DECLINED, FAILURE, LOG_BANNER, QUESTION, ending, without_prompts


def test_is_text_with_windows_line_ends_behind_a_banner_with_the_time_of_the_start(machine):
    machine.run("--clean=Content", answers="n\n\n")

    assert re.fullmatch(
        rb"\r\n"
        rb"\*{58}\r\n"
        rb"Orvex Cleaner session starting\r\n"
        rb"Log started: [1-9]\d? [A-Z][a-z]{2} \d{4} [1-9]\d?:\d\d:\d\d[ap]m\r\n"
        rb"\r\n"
        rb"\[\d{1,2}:\d\d:\d\d:\d{1,3}\]\[Info\] Target: Content\r\n"
        rb"\[\d{1,2}:\d\d:\d\d:\d{1,3}\]\[Info\] Remove all Velantone content & playlist files\?\r\n"
        rb"\[\d{1,2}:\d\d:\d\d:\d{1,3}\]\[Info\] Cleaning cancelled by the user\.\r\n",
        machine.log_file.read_bytes(),
    )


def test_of_an_earlier_run_is_appended_to(machine):
    first = machine.run("--clean=Content", answers="n\n\n")
    second = machine.run("--clean=Content", answers="n\n\n")

    assert first.log == LOG_BANNER + without_prompts(DECLINED)
    assert second.log == LOG_BANNER + without_prompts(DECLINED) + LOG_BANNER + without_prompts(DECLINED)
    assert second.console == BANNER + DECLINED + ending(machine)
    assert second.errors == ""
    assert second.exit_code == 0


# The three tests of the limit compare the old lines apart from the new ones and tell only whether they
# are alike: nobody wants to be shown five million characters.


def test_that_is_5000000_bytes_long_is_kept_whole(machine):
    old = "the first line\n" + "the second line\n" + "x" * (5_000_000 - 33 - 2) + "\n"
    machine.log_file.write_bytes(old.replace("\n", "\r\n").encode())
    assert machine.log_file.stat().st_size == 5_000_000

    run = machine.run("--clean=Content", answers="n\n\n")

    is_kept = run.log.startswith(old)
    assert is_kept
    assert run.log[len(old) :] == LOG_BANNER + without_prompts(DECLINED)
    assert run.console == BANNER + DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0


def test_that_is_5000001_bytes_long_loses_the_line_that_exceeds_the_limit(machine):
    old = "the first line\n" + "the second line\n" + "x" * (5_000_001 - 33 - 2) + "\n"
    machine.log_file.write_bytes(old.replace("\n", "\r\n").encode())
    assert machine.log_file.stat().st_size == 5_000_001

    run = machine.run("--clean=Content", answers="n\n\n")

    kept = old.removeprefix("the first line")
    is_kept = run.log.startswith(kept)
    assert is_kept
    assert run.log[len(kept) :] == LOG_BANNER + without_prompts(DECLINED)
    assert run.console == BANNER + DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert [file.name for file in machine.desktop.iterdir()] == ["OrvexCleaner.log"]


def test_may_grow_past_the_limit_during_a_run(machine):
    old = "x" * (5_000_000 - 2) + "\n"
    machine.log_file.write_bytes(old.replace("\n", "\r\n").encode())

    run = machine.run("--clean=Content", answers="n\n\n")

    is_kept = run.log.startswith(old)
    assert machine.log_file.stat().st_size > 5_000_000
    assert is_kept
    assert run.log[len(old) :] == LOG_BANNER + without_prompts(DECLINED)
    assert run.console == BANNER + DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0


def test_is_not_missed_where_its_path_is_a_folder(machine):
    machine.log_file.mkdir()

    run = machine.run("--clean=Content", answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log is None
    assert wait_for(machine.shown_folders, seconds=0.5) == []
    assert list(machine.log_file.iterdir()) == []


# Linux only: Wine lets its user write everything.
def test_that_may_not_be_written_stays_as_it_is(linux):
    linux.log_file.write_bytes(b"an earlier run\r\n")
    linux.log_file.chmod(0o444)

    run = linux.run("--clean=Content", answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == "an earlier run\n"
    assert run.revealed == [linux.shown(linux.desktop)]


# Linux only, for the same reason.
def test_is_not_missed_where_it_may_not_be_made(linux):
    linux.desktop.chmod(0o555)

    run = linux.run("--clean=Content", answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log is None
    assert wait_for(linux.shown_folders, seconds=0.5) == []


# Windows only: Linux lets two programs write to one file.
def test_that_another_program_holds_open_stays_as_it_is(windows):
    windows.log_file.write_bytes(b"an earlier run\r\n")

    with windows.held_open(windows.log_file):
        run = windows.run("--clean=Content", answers="n\n\n")

    assert run.console == BANNER + DECLINED + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == "an earlier run\n"
    assert run.revealed == [windows.shown(windows.desktop)]


# Windows only: on Linux the location of the desktop is always known. Whether the log file is shown is
# left out, since Wine's Explorer shows nothing without a desktop.
def test_lies_in_the_root_of_the_current_drive_without_a_desktop(windows, drive_d):
    with windows.without("desktop"):
        run = windows.run("--clean=Content", answers="n\n\n")

    assert (
        run.console
        == BANNER
        + DECLINED
        + """\
Cleaning finished successfully.
Log file written to: D:\\OrvexCleaner.log
Press enter to exit
"""
    )
    assert run.errors == ""
    assert run.exit_code == 0
    windows.log_file = drive_d / "OrvexCleaner.log"
    assert windows.log() == LOG_BANNER + without_prompts(DECLINED)
    assert contents_of(windows.desktop) == []


# Linux only: there, a desktop that is not there still has a place.
def test_is_made_together_with_the_desktop(linux):
    linux.options += ["--setenv", "HOME", "/home/newcomer"]
    linux.desktop = linux.root / "home/newcomer/Desktop"
    linux.log_file = linux.desktop / "OrvexCleaner.log"

    run = linux.run("--clean=Content", answers="n\n\n")

    assert (
        run.console
        == BANNER
        + DECLINED
        + """\
Cleaning finished successfully.
Log file written to: /home/newcomer/Desktop/OrvexCleaner.log
Press enter to exit
"""
    )
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(DECLINED)
    assert run.revealed == ["/home/newcomer/Desktop"]


def test_has_everything_up_to_a_failure_and_is_not_shown_then(machine):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)
    (content / "Legato.pack").write_text("samples")
    machine.make_undeletable(content / "Legato.pack")

    run = machine.run("--clean=Content", answers="y\n")

    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {machine.shown(content)}
[time][Critical] Unable to delete directory: {machine.shown(content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""
    assert run.console == BANNER + QUESTION + "Y/n? " + steps
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + QUESTION + steps
    assert wait_for(machine.shown_folders, seconds=1) == []

"""Sessions on machines that fail, or that are out of the ordinary."""

import fcntl
import os
import shutil
import subprocess
from contextlib import contextmanager
from pathlib import Path

import pytest

from machines import Windows, answer, put, wait_for
from products import CONTENT, MEDIA_SERVER, ORVEX_STUDIO
from project import output_of
from runs import Run, failed, succeeded
from texts import (
    ALL_PRODUCTS,
    BANNER,
    CANCELLED,
    LOG_BANNER,
    QUESTION,
    YES_TO_ALL,
    not_removed,
    question,
    removed,
    removed_as_files,
    without_prompts,
)


def place_content(machine) -> Path:
    put(machine.content, "Packs/Strings/Legato.pack", "Favourites.playlist")
    return machine.content


def wait_for_prompt(machine, number: int = 1) -> None:
    assert wait_for(lambda: machine.console().count("Y/n? ") == number)


def killed(run: Run, transcript: str) -> Run:
    """A session that was killed, with any exit code."""
    return failed(transcript, errors="", exit_code=run.exit_code)


def test_has_every_line_in_the_log_file_when_it_is_killed_at_a_prompt(machine):
    content = place_content(machine)

    with machine.start("--clean=All", stdin=subprocess.PIPE) as process:
        answer(process, b"n\ny\n")
        wait_for_prompt(machine, 3)
        machine.kill(process)
        run = machine.outcome(process)

    transcript = ALL_PRODUCTS + question(ORVEX_STUDIO) + CANCELLED
    transcript += question(CONTENT) + removed(CONTENT, machine.shown(content)) + question(MEDIA_SERVER)
    assert run == killed(run, transcript)
    assert not content.exists()


# A limit on the size of every file stands in for a full disk: not every machine can get a disk of its own.
DISK_SIZE = 1 << 20
ON_A_FULL_DISK = ["/bin/sh", "-c", f'trap "" XFSZ; ulimit -f {DISK_SIZE // 512}; exec "$@"', "sh"]


# Linux only: Wine ignores the limit.
@pytest.mark.parametrize("room", [0, 400])
def test_fills_the_disk_with_the_log_and_goes_on_without_it(linux, room):
    content = place_content(linux)
    earlier = " " * (DISK_SIZE - room)
    linux.log_file.write_text(earlier)
    linux.launcher = ON_A_FULL_DISK

    run = linux.run("--clean=Content", answers="y\n\n")

    transcript = QUESTION + removed(CONTENT, linux.shown(content))
    assert run == succeeded(linux, transcript, log=run.log)
    assert linux.log_file.stat().st_size == DISK_SIZE
    assert (earlier + LOG_BANNER + without_prompts(transcript)).startswith(run.log)
    assert not content.exists()


def test_goes_on_without_a_log_when_the_desktop_disappears_between_two_lines(machine):
    content = place_content(machine)

    with machine.start("--clean=Content", stdin=subprocess.PIPE) as process:
        wait_for_prompt(machine)
        shutil.rmtree(machine.desktop)
        answer(process, b"y\n\n")
        run = machine.outcome(process)

    assert run == succeeded(machine, QUESTION + removed(CONTENT, machine.shown(content)), log=None, revealed=[])
    assert wait_for(machine.shown_folders, seconds=0.5) == []
    assert not machine.desktop.exists()
    assert not content.exists()


def test_has_every_line_in_the_log_file_when_the_output_goes_to_a_full_disk(machine):
    content = place_content(machine)

    with machine.input("y\n\n") as stdin, open("/dev/full", "wb") as full_disk:
        run = machine.outcome(machine.start("--clean=Content", stdin=stdin, stdout=full_disk))

    assert run == succeeded(machine, QUESTION + removed(CONTENT, machine.shown(content)), console="")
    assert not content.exists()


@contextmanager
def full_pipe(room: int):
    """Both ends of a pipe that has room for this number of bytes."""
    reader, writer = os.pipe()
    fcntl.fcntl(writer, fcntl.F_SETPIPE_SZ, 4096)
    os.write(writer, b"." * (4096 - room))

    with open(reader, "rb") as readable, open(writer, "wb") as writable:
        yield readable, writable


# Linux only: the state of a process under Wine does not tell whether its program sleeps.
@pytest.mark.parametrize("room", range(350, 1700, 75))
def test_has_every_line_in_the_log_file_when_it_is_killed_between_any_two(linux, room):
    with linux.input(YES_TO_ALL) as stdin, full_pipe(room) as (reader, writer):
        process = linux.start("--clean=All", stdin=stdin, stdout=writer)
        writer.close()
        assert wait_for(lambda: linux.log() and is_asleep(linux.program_id(process)))
        linux.kill(process)
        process.wait()
        console = reader.read()[4096 - room :]
        (linux.scratch / "console").write_bytes(console)
        run = linux.outcome(process)

    assert room - 100 < len(console) <= room
    assert run == killed(run, run.console.removeprefix(BANNER))


def is_asleep(process_id: int) -> bool:
    return Path(f"/proc/{process_id}/stat").read_text().rpartition(")")[2].split()[0] == "S"


# Windows only: Linux deletes open files.
def test_fails_at_a_file_that_is_opened_during_the_question_and_removes_it_the_next_time(windows):
    content = place_content(windows)
    locked = content / "Packs" / "Strings" / "Legato.pack"

    with windows.start("--clean=Content", stdin=subprocess.PIPE) as process:
        wait_for_prompt(windows)

        with windows.held_open(locked):
            answer(process, b"y\n")
            first = windows.outcome(process)

    left = [path for path in content.rglob("*") if path.is_file()]
    second = windows.run("--clean=Content", answers="y\n\n")

    folder = windows.shown(content)
    transcript = QUESTION + removed(CONTENT, folder)
    assert first == failed(QUESTION + not_removed(CONTENT, folder))
    assert left == [locked]
    assert second == succeeded(windows, transcript, log=first.log + LOG_BANNER + without_prompts(transcript))
    assert not content.exists()


@pytest.fixture
def bury():
    """Puts a file into nested folders of one name, and removes what a test leaves of them."""
    made = []

    def bury(folder: Path, name: str, depth: int) -> None:
        made.append(folder)
        put(folder, "Legato.pack")

        # From the inside out, since no path may be as long as all of them.
        for _ in range(depth):
            inner = folder.rename(folder.with_name("inner"))
            folder.mkdir()
            inner.rename(folder / name)

    yield bury

    for folder in made:
        subprocess.run(["rm", "-rf", folder], check=True)


def test_removes_folders_that_lie_deep_in_one_another(machine, bury, full_size):
    content = machine.content
    bury(content, "d", 250 if isinstance(machine, Windows) and not full_size else 1000)

    # Wine takes a minute or more for 1000, as it looks up each folder from the root on.
    run = machine.run("--clean=Content", answers="y\n\n", timeout=400)

    assert run == succeeded(machine, QUESTION + removed(CONTENT, machine.shown(content)))
    assert not content.exists()


# A path has at most 4,095 bytes on Linux, and so under Wine. On Windows it has 259 characters, or 32,766 where long
# paths are allowed.
def test_leaves_a_branch_whose_paths_are_too_long_and_removes_the_rest(machine, bury, full_size):
    content = place_content(machine)
    depth = 1000 if full_size else 400
    bury(content / "Deep", "folder-0001", depth)

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run == failed(QUESTION + not_removed(CONTENT, machine.shown(content)))
    assert os.listdir(content) == ["Deep"]
    left = output_of("find", ".", "-type", "f", cwd=content / "Deep")
    assert left == "./" + "folder-0001/" * depth + "Legato.pack\n"


@pytest.mark.parametrize("linux", ["native"], indirect=True)
def test_removes_400000_files_in_one_folder(linux):
    content = place_content(linux)
    output_of("sh", "-c", "seq --format=%.0f.pack 400000 | xargs touch", cwd=content)

    run = linux.run("--clean=Content", answers="y\n\n", timeout=400)

    assert run == succeeded(linux, QUESTION + removed(CONTENT, linux.shown(content)))
    assert not content.exists()


def test_shares_the_log_file_with_a_copy_that_runs_while_it_waits(machine, other_copy):
    content = place_content(machine)

    with machine.start("--clean=Content", stdin=subprocess.PIPE) as process:
        wait_for_prompt(machine)
        other = other_copy.run("--clean=Content", answers="y\n\n")
        answer(process, b"y\n\n")
        run = machine.outcome(process)

    deleted = removed(CONTENT, machine.shown(content))
    asked = LOG_BANNER + without_prompts(QUESTION)
    log = asked + asked + deleted
    assert other == succeeded(machine, QUESTION + deleted, log=log)
    assert run == succeeded(machine, QUESTION + removed(CONTENT), log=log + removed(CONTENT), revealed=run.revealed)
    assert not content.exists()


def test_ends_as_usual_beside_a_copy_that_deletes_the_same_at_the_same_time(machine, other_copy):
    content = place_content(machine)
    put(content, *(f"{number}.pack" for number in range(500)))

    with (
        machine.start("--clean=Content", stdin=subprocess.PIPE) as process,
        other_copy.start("--clean=Content", stdin=subprocess.PIPE) as other_process,
    ):
        wait_for_prompt(machine)
        wait_for_prompt(other_copy)
        answer(process, b"y\n\n")
        answer(other_process, b"y\n\n")
        runs = [machine.outcome(process), other_copy.outcome(other_process)]

    folder = machine.shown(content)
    successes = [removed(CONTENT, folder), removed(CONTENT), removed_as_files(CONTENT, folder)]
    outcomes = [succeeded(machine, QUESTION + steps) for steps in successes]
    outcomes.append(failed(QUESTION + not_removed(CONTENT, folder)))

    for run in runs:
        assert [run.console, run.errors, run.exit_code] in [[o.console, o.errors, o.exit_code] for o in outcomes]

    assert not content.exists()

    # Windows lets only one of them write at a time: the other's line is lost, but no line is broken. On Linux, the
    # library writes where the file ended when it was opened, and one line may overwrite another.
    if isinstance(machine, Windows):
        lines = machine.log().split("\n")
        assert set(lines) <= {line for outcome in outcomes for line in outcome.log.split("\n")}
        assert any(line.startswith("[time]") for line in lines)

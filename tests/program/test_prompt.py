"""The input that counts as an answer, and the end of the input."""

import subprocess

import pytest

from machines import CLOSED, answer, wait_for
from products import CONTENT
from runs import failed, succeeded
from texts import BANNER, CANCELLED, QUESTION, ending, removed

ANSWERS = {
    "y": (b"y\n\n", True),
    "Y": (b"Y\n\n", True),
    "empty line": (b"\n\n", True),
    "no input": (b"", True),
    "y at the end of the input": (b"y", True),
    "Y at the end of the input": (b"Y", True),
    "n": (b"n\n\n", False),
    "N": (b"N\n\n", False),
    "n at the end of the input": (b"n", False),
}


@pytest.mark.parametrize(("answers", "is_yes"), ANSWERS.values(), ids=ANSWERS)
def test_cleans_only_after_a_yes(linux, answers, is_yes):
    check_answers(linux, answers, is_yes)


@pytest.mark.parametrize("name", ["y", "empty line", "n"])
def test_cleans_only_after_a_yes_on_windows_too(windows, name):
    check_answers(windows, *ANSWERS[name])


def check_answers(machine, answers, is_yes):
    machine.content.mkdir(parents=True)

    run = machine.run("--clean=Content", answers=answers)

    steps = removed(CONTENT, machine.shown(machine.content)) if is_yes else CANCELLED
    assert run == succeeded(machine, QUESTION + steps)
    assert machine.content.exists() == (not is_yes)


def test_asks_again_until_there_is_an_answer(machine):
    words = ["yes", "no", "YES", "No", "yy", "nn", "y.", "Y/n", "1", "はい", "👍", "y" * 100_000]
    padded = [" y", "y ", " n", "n ", " ", "\t", "y\t", "\tn"]
    letters = ["Ж", "Ÿ", "ÿ", "ñ", "ｙ", "Ｎ"]
    of_a_console = [b"\x80", b"\x80a va, et tout le reste", b"\xc1\xb9", b"y\xff", b"\xfb"]  # not UTF-8
    lines = [line.encode() for line in words + padded + letters] + of_a_console

    run = machine.run("--clean=Content", answers=b"\n".join([*lines, b"n", b"", b""]))

    assert run == succeeded(machine, QUESTION + "Y/n? " * len(lines) + CANCELLED)


# A console of Windows 10 sends this for three characters beyond ASCII in code page 65001.
def test_asks_again_after_a_line_of_nuls(machine):
    machine.content.mkdir(parents=True)

    run = machine.run("--clean=Content", answers=b"\0\0\0\nn\n")

    assert run == succeeded(machine, QUESTION + "Y/n? " + CANCELLED)
    assert machine.content.is_dir()


def test_treats_cr_lf_as_a_line_end_on_windows(windows):
    run = windows.run("--clean=Content", answers="y \r\nn\r\n\r\n")

    assert run == succeeded(windows, QUESTION + "Y/n? " + CANCELLED)


# The second is a file of five n in UTF-16, as Windows PowerShell makes it.
@pytest.mark.parametrize("answers", ["no\nЖ".encode(), ("n\r\n" * 5).encode("utf-16")], ids=["letter", "UTF-16"])
def test_asks_without_end_after_an_unfinished_line_that_is_no_answer(machine, answers):
    machine.content.mkdir(parents=True)

    with machine.input(answers) as stdin:
        process = machine.start("--clean=Content", stdin=stdin)

    has_asked_often = wait_for(lambda: machine.console().count("Y/n? ") > 1000)
    still_runs = process.poll() is None
    machine.kill(process)
    run = machine.outcome(process)

    prompts = "Y/n? " * (run.console.count("Y/n? ") - 1)
    assert has_asked_often
    assert still_runs
    assert run == failed(QUESTION + prompts, errors="", exit_code=run.exit_code)
    assert machine.content.is_dir()


def test_treats_a_closed_input_as_a_yes(machine):
    run = machine.outcome(machine.start("--clean=Content", stdin=CLOSED))

    assert run == succeeded(machine, QUESTION + removed(CONTENT))


def test_shows_the_prompt_before_it_reads_and_waits_for_enter_at_the_end(machine):
    with machine.start("--clean=Content", stdin=subprocess.PIPE) as process:
        wait_for(lambda: machine.console().endswith("? "))
        console_at_the_prompt = machine.console()

        answer(process, b"n\n")
        wait_for(lambda: machine.console().endswith("exit\n"))
        console_at_the_end = machine.console()
        revealed_at_the_end = wait_for(machine.shown_folders, seconds=0.5)
        still_runs = process.poll() is None

        answer(process, b"any text\n")
        run = machine.outcome(process)

    assert console_at_the_prompt == BANNER + QUESTION
    assert console_at_the_end == BANNER + QUESTION + CANCELLED + ending(machine.shown(machine.log_file))
    assert revealed_at_the_end == []
    assert still_runs
    assert run == succeeded(machine, QUESTION + CANCELLED)

"""Without administrator rights the program does nothing."""

import pytest

from runs import Run
from texts import YES_TO_ALL

REFUSAL = "[time][Critical] This application must be run with Administrator privileges. Aborting...\n"


@pytest.mark.parametrize("arguments", ["", "--help", "--version", "--clean=wrong", "unknown"])
def test_refuses_everything_without_administrator_rights(linux, arguments):
    linux.content.mkdir(parents=True)

    run = linux.run(*arguments.split(), answers=YES_TO_ALL, elevated=False)

    assert run == Run(console=REFUSAL, errors="", exit_code=1, log=None, revealed=[])
    assert linux.content.is_dir()


def test_leaves_the_content_and_an_earlier_log_file_alone_without_administrator_rights(machine):
    machine.content.mkdir(parents=True)
    machine.log_file.write_bytes(b"an earlier run\r\n")

    run = machine.run("--clean=Content", answers="y\n\n", elevated=False)

    assert run == Run(console=REFUSAL, errors="", exit_code=1, log="an earlier run\n", revealed=[])
    assert machine.content.is_dir()

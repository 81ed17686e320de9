"""Without administrator rights the program does nothing."""

import pytest


@pytest.mark.parametrize("arguments", ["", "--clean=Content", "--help", "--version", "--clean=wrong", "unknown"])
def test_refuses_everything_without_administrator_rights(machine, arguments):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)

    run = machine.run(*arguments.split(), answers="y\ny\ny\ny\ny\n\n", elevated=False)

    assert run.console == "[time][Critical] This application must be run with Administrator privileges. Aborting...\n"
    assert run.errors == ""
    assert run.exit_code == 1
    assert run.log is None
    assert content.is_dir()


def test_leaves_an_existing_log_file_alone_without_administrator_rights(machine):
    machine.log_file.write_bytes(b"an earlier run\r\n")

    run = machine.run("--clean=Content", answers="y\n\n", elevated=False)

    assert run.console == "[time][Critical] This application must be run with Administrator privileges. Aborting...\n"
    assert run.errors == ""
    assert run.exit_code == 1
    assert run.log == "an earlier run\n"

"""The tests' own Windows voids a run, and repeats a step, only after a defect of Wine."""

import subprocess

import pytest

from machines import VoidRun

DEATH = "Inconsistency detected by ld.so: dl-fini.c: 87: _dl_fini: Assertion `ns != LM_ID_BASE || i == nloaded' failed!"


def test_a_run_is_void_if_a_wine_process_died_while_ending(windows):
    (windows.scratch / "console").touch()
    (windows.scratch / "errors").write_text(f"{DEATH}\n")

    with pytest.raises(VoidRun, match="ld.so"):
        windows.outcome(subprocess.Popen(["true"]))


def test_a_run_counts_despite_any_other_message_of_wine_which_is_shown(windows, capfd):
    (windows.scratch / "console").touch()
    (windows.scratch / "errors").write_bytes(b"00e8:err:systray:initialize_systray Could not\nof the program\r\n")

    run = windows.outcome(subprocess.Popen(["false"]))

    assert (run.errors, run.exit_code) == ("of the program\n", 1)
    assert capfd.readouterr().err == "00e8:err:systray:initialize_systray Could not\n"


@pytest.mark.parametrize(("said", "attempts"), [(DEATH, 3), ("any other failure", 1)], ids=["death", "failure"])
def test_a_step_is_repeated_only_after_such_a_death_and_at_most_twice(windows, tmp_path, said, attempts):
    with pytest.raises(AssertionError):
        windows.carry_out("sh", "-c", 'echo >> "$0"; echo "$1" >&2; exit 1', str(tmp_path / "attempts"), said)

    assert (tmp_path / "attempts").read_text() == "\n" * attempts

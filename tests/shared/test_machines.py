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


@pytest.mark.parametrize(("said", "kind"), [("Press enter to exit\r\n", VoidRun), ("Y/n? ", subprocess.TimeoutExpired)])
def test_a_run_that_does_not_end_is_void_only_if_it_has_said_everything(windows, said, kind):
    (windows.scratch / "console").write_text(said, newline="")
    (windows.scratch / "errors").touch()

    with pytest.raises(kind):
        windows.outcome(subprocess.Popen(["sleep", "60"]), timeout=0.1)


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

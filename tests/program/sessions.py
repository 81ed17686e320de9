"""What all sessions have in common around the transcript of the cleaning."""

from texts import BANNER, FAILURE, LOG_BANNER


def assert_success(machine, run, transcript: str) -> None:
    """The transcript stands between the banner and the closing lines, and without the prompts in the log."""
    closing_lines = f"""\
Cleaning finished successfully.
Log file written to: {machine.shown(machine.log_file)}
Press enter to exit
"""
    assert run.console == BANNER + transcript + closing_lines
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + transcript.replace("Y/n? ", "")
    assert run.revealed == [machine.shown(machine.desktop)]


def assert_failure(run, transcript: str, exit_code: int = 1) -> None:
    """The transcript stands behind the banner, and without the prompts in the log. The advice follows."""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == exit_code
    assert run.log == LOG_BANNER + transcript.replace("Y/n? ", "")
    assert run.revealed == []

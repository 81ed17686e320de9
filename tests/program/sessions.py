"""What all sessions have in common around the transcript of the cleaning."""

BANNER = """\
================================================================
Orvex Cleaner
================================================================

"""

LOG_BANNER = """\

**********************************************************
Orvex Cleaner session starting
Log started: <when>

"""

FAILURE = """\

Product cleaning failed!

Follow all instructions in the log entries above (if any), then retry.
If an entry failed to delete, ensure it is not open in another application.
If issues persist, send an email to: support@tessaraworks.example
Attach the 'OrvexCleaner.log' file from your desktop to the email.

"""


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

"""What many runs write alike."""

from release import SUPPORT_ADDRESS

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

FAILURE = f"""\

Product cleaning failed!

Follow all instructions in the log entries above (if any), then retry.
If an entry failed to delete, ensure it is not open in another application.
If issues persist, send an email to: {SUPPORT_ADDRESS}
Attach the 'OrvexCleaner.log' file from your desktop to the email.

"""

# Of --clean=Content, which most tests are about since it has one folder.

QUESTION = """\
[time][Info] Target: Content
[time][Info] Remove all Velantone content & playlist files?
"""

DECLINED = """\
[time][Info] Target: Content
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning cancelled by the user.
"""


def ending(machine) -> str:
    """The closing lines of a session without a failure."""
    return f"""\
Cleaning finished successfully.
Log file written to: {machine.shown(machine.log_file)}
Press enter to exit
"""


def without_prompts(transcript: str) -> str:
    """The transcript of the console as the log has it."""
    return transcript.replace("Y/n? ", "")

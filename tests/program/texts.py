"""What every run writes alike."""

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

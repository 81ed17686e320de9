"""What many runs write alike."""

from products import CONTENT, PRODUCTS
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

ALL_PRODUCTS = """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
"""

CANCELLED = """\
[time][Info] Cleaning cancelled by the user.
"""

NOT_STARTED = """\
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 0
"""

NO_TO_ALL = "n\n" * len(PRODUCTS) + "\n"
YES_TO_ALL = "y\n" * len(PRODUCTS) + "\n"


def question(product) -> str:
    return f"[time][Info] {product.question}\nY/n? "


def opening(product) -> str:
    """All up to the answer. What only the sequence over all products offers comes last there, behind a no to each other."""
    if product.target:
        return f"[time][Info] {product.first_line}\n" + question(product)

    return ALL_PRODUCTS + "".join(question(other) + CANCELLED for other in PRODUCTS[:-1]) + question(product)


ALL_DECLINED = ALL_PRODUCTS + "".join(question(product) + CANCELLED for product in PRODUCTS)

QUESTION = opening(CONTENT)  # which most tests are about, since it has one folder


def removed(product, *folders: str) -> str:
    """A run that finds and deletes these folders."""
    deletions = (
        f"""\
[time][Info] Deleting directory: {folder}
[time][Info] Directory deleted: {folder}
"""
        for folder in folders
    )
    return f"""\
[time][Info] Cleaning: {product.name}
{"".join(deletions)}\
[time][Info] Directories removed: {len(folders)}
[time][Info] Files removed: 0
[time][Info] {product.name} was successfully removed.
"""


def not_removed(product, folder: str) -> str:
    """A run that finds this folder, and cannot delete it."""
    return f"""\
[time][Info] Cleaning: {product.name}
[time][Info] Deleting directory: {folder}
[time][Critical] Unable to delete directory: {folder}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] {product.name} encountered errors and could not be removed.
"""


def removed_as_files(product, *files: str) -> str:
    """A run that finds and deletes files where folders are expected."""
    deletions = (
        f"""\
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {file}
"""
        for file in files
    )
    return f"""\
[time][Info] Cleaning: {product.name}
{"".join(deletions)}\
[time][Info] Directories removed: 0
[time][Info] Files removed: {len(files)}
[time][Info] {product.name} was successfully removed.
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


def advice(name: str, uninstaller: str | None = None) -> str:
    """What to do about an uninstaller that did not run. It is named if it is a file."""
    directly = f"[time][Info] You can also run the uninstaller directly: {uninstaller}\n" if uninstaller else ""
    return f"""\
[time][Info] Existing {name} software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
{directly}\
[time][Info] You can re-run this cleaner after {name} has been uninstalled to clean up any final files.
"""

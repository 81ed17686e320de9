"""The output that many runs have in common."""

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

TOO_SLOW = """\
[time][Warning] Cleaner failed to launch the uninstaller.
[time][Info] Uninstaller exit code: 259
"""

NO_TO_ALL = "n\n" * len(PRODUCTS) + "\n"
YES_TO_ALL = "y\n" * len(PRODUCTS) + "\n"


def question(product) -> str:
    return f"[time][Info] {product.question}\nY/n? "


def opening(product) -> str:
    """The output up to the answer. A product without a target is offered last, after a no to each other product."""
    if product.target:
        return f"[time][Info] {product.first_line}\n" + question(product)

    return ALL_PRODUCTS + "".join(question(other) + CANCELLED for other in PRODUCTS[:-1]) + question(product)


def over_all(outcomes: dict) -> str:
    """A run over all products with these outcomes. A product without one is declined."""
    return ALL_PRODUCTS + "".join(question(product) + outcomes.get(product, CANCELLED) for product in PRODUCTS)


ALL_DECLINED = over_all({})

QUESTION = opening(CONTENT)  # of the product in most tests, since it has one folder


def cleaned(product, steps: str) -> str:
    """A run with these steps, followed by their totals."""
    folders = steps.count("Directory deleted:")
    files = steps.count("File deleted:")

    if "Unable to delete" not in steps:
        verdict = f"[Info] {product.name} was successfully removed."
    elif folders + files > 0:
        verdict = f"[Warning] {product.name} was partially removed, but encountered some errors."
    else:
        verdict = f"[Info] {product.name} encountered errors and could not be removed."

    return f"""\
[time][Info] Cleaning: {product.name}
{steps}\
[time][Info] Directories removed: {folders}
[time][Info] Files removed: {files}
[time]{verdict}
"""


def removed(product, *folders: str, after: str = "") -> str:
    """A run that finds and deletes these folders, after its output about the uninstallers."""
    return cleaned(product, after + "".join(map(folder_deleted, folders)))


def not_removed(product, folder: str) -> str:
    """A run that finds this folder and cannot delete it."""
    return cleaned(product, folder_not_deleted(folder))


def removed_as_files(product, *files: str) -> str:
    """A run that finds and deletes files where folders are expected."""
    return cleaned(product, "".join(map(file_deleted, files)))


def aborted(product, steps: str) -> str:
    """A run that ends after its output about the uninstallers."""
    return f"""\
[time][Info] Cleaning: {product.name}
{steps}\
[time][Warning] Cleaning was aborted.
"""


def folder_deleted(folder: str) -> str:
    return f"""\
[time][Info] Deleting directory: {folder}
[time][Info] Directory deleted: {folder}
"""


def folder_not_deleted(folder: str) -> str:
    return f"""\
[time][Info] Deleting directory: {folder}
[time][Critical] Unable to delete directory: {folder}
"""


def file_deleted(file: str) -> str:
    return f"""\
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {file}
"""


def file_not_deleted(file: str) -> str:
    return f"""\
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Critical] Unable to delete file: {file}
"""


def exited(*exit_codes: int) -> str:
    """The output about uninstallers that ended."""
    return "".join(f"[time][Info] Uninstaller exit code: {exit_code}\n" for exit_code in exit_codes)


def ending(log_file: str) -> str:
    """The closing lines of a session without a failure."""
    return f"""\
Cleaning finished successfully.
Log file written to: {log_file}
Press enter to exit
"""


def without_prompts(transcript: str) -> str:
    """The console's transcript as the log has it."""
    return transcript.replace("Y/n? ", "")


def advice(name: str, uninstaller: str | None = None) -> str:
    """The advice about an uninstaller that did not run, with its path if that is a file."""
    directly = f"[time][Info] You can also run the uninstaller directly: {uninstaller}\n" if uninstaller else ""
    return f"""\
[time][Info] Existing {name} software installation detected.
[time][Info] Please first uninstall this software using Add/Remove Programs.
{directly}\
[time][Info] You can re-run this cleaner after {name} has been uninstalled to clean up any final files.
"""

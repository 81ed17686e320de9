"""The outcome of a run of the program, to be compared as a whole."""

from dataclasses import dataclass, replace

from products import PRODUCTS
from texts import BANNER, FAILURE, LOG_BANNER, ending, without_prompts


@dataclass
class Run:
    """The outcome of a run of the program.

    The strings have "\\n" for the machine's line ends, "[time]" for each well-formed time stamp, and
    "<when>" for the well-formed time of a log file's banner.
    """

    console: str
    errors: str
    exit_code: int
    log: str | None  # None without a log file
    revealed: list[str]  # the folders that the shell was asked to show


def succeeded(machine, transcript: str, **others) -> Run:
    """A session without a failure that writes this transcript. Others replace single fields."""
    run = Run(
        console=BANNER + transcript + ending(machine.shown(machine.log_file)),
        errors="",
        exit_code=0,
        log=LOG_BANNER + without_prompts(transcript),
        revealed=[machine.shown(machine.desktop)],
    )
    return replace(run, **others)


def failed(transcript: str, **others) -> Run:
    """A session with a failure that writes this transcript. Others replace single fields."""
    run = Run(
        console=BANNER + transcript,
        errors=FAILURE,
        exit_code=1,
        log=LOG_BANNER + without_prompts(transcript),
        revealed=[],
    )
    return replace(run, **others)


def refused(errors: str) -> Run:
    """A run that only reports why it does nothing."""
    return Run(console="", errors=errors, exit_code=1, log=None, revealed=[])


def printed(text: str) -> Run:
    """A run that only prints a text."""
    return Run(console=text, errors="", exit_code=0, log=None, revealed=[])


def clean(machine, product) -> Run:
    """Runs the program on one product. One without a target is offered after all others, which are declined."""
    if product.target:
        return machine.run(f"--clean={product.target}", answers="y\n\n")

    return machine.run("--clean=All", answers="n\n" * (len(PRODUCTS) - 1) + "y\n\n")

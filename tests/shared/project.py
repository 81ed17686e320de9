"""The project's folders, and the output of commands."""

import subprocess
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILD = TOP / "build"
SUPPORT = TOP / "scripts" / "support"


def output_of(*command: str | Path, **options) -> str:
    """Returns the output of a command, which must succeed."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout

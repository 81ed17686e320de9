"""Where the project's files are, and what its commands print."""

import subprocess
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILD = TOP / "build"
SUPPORT = TOP / "scripts" / "support"


def output_of(*command: str | Path, **options) -> str:
    """What a command prints, which has to succeed."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout

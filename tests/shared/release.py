"""The release's values in CMakeLists.txt."""

import re
from pathlib import Path

from project import TOP


def value_of(pattern: str) -> str:
    """Returns the group of this pattern, which must match exactly one line."""
    (value,) = re.findall(rf"^ *{pattern}$", (TOP / "CMakeLists.txt").read_text(), re.MULTILINE)
    return value


VERSION = value_of(r"VERSION ([\d.]+)")
BUILD_TAG = value_of(r'set \(ORVEX_CLEANER_BUILD_TAG "(.+)"\)')
SUPPORT_ADDRESS = value_of(r'set \(ORVEX_CLEANER_SUPPORT_ADDRESS "(.+)"\)')

# Packages are made with Debian 12's tools. Other tools produce other bytes.
IS_MADE_HERE = 'VERSION_ID="12"' in Path("/etc/os-release").read_text()

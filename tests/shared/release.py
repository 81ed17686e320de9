"""What CMakeLists.txt says of the release."""

import re
from pathlib import Path

from project import TOP


def value_of(pattern: str) -> str:
    """What stands there once, in the group of this pattern of a line."""
    (value,) = re.findall(rf"^ *{pattern}$", (TOP / "CMakeLists.txt").read_text(), re.MULTILINE)
    return value


VERSION = value_of(r"VERSION ([\d.]+)")
BUILD_TAG = value_of(r'set \(ORVEX_CLEANER_BUILD_TAG "(.+)"\)')
SUPPORT_ADDRESS = value_of(r'set \(ORVEX_CLEANER_SUPPORT_ADDRESS "(.+)"\)')

# A package is made with its tools. Those of other systems give the program other bytes.
IS_MADE_HERE = 'VERSION_ID="12"' in Path("/etc/os-release").read_text()

"""What the tests of the whole program and those of real setups share."""

import sys
from pathlib import Path

import pytest

sys.path.append(str(Path(__file__).resolve().parent / "program"))

from machines import Windows  # noqa: E402


@pytest.fixture(scope="module")
def windows_is_up():
    """A Windows that is started anew for each module, so that little can pile up in it."""
    with Windows.started():
        yield

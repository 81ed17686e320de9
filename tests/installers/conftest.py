from pathlib import Path

import pytest

pytest.register_assert_rewrite("setups")

from inno import InnoWindows  # noqa: E402
from machines import Windows  # noqa: E402
from setups import copies_of_nsis, everything  # noqa: E402


@pytest.fixture
def windows(windows_is_up, tmp_path):
    Windows.has_uninstall_entries = True  # registered by setups, not by tests
    return cleaned(Windows, tmp_path)


@pytest.fixture
def inno_windows(tmp_path):
    """A Windows that also runs 32-bit programs, with a display, restarted for each test."""
    unavailable = InnoWindows.debian.with_suffix(".unavailable")

    if unavailable.exists():
        pytest.skip(unavailable.read_text().strip())

    # A test must not make it: that installs packages.
    assert (InnoWindows.debian / ".ready").exists(), f"See {InnoWindows.debian.with_suffix('.log')}"

    with InnoWindows.started():
        yield cleaned(InnoWindows, tmp_path)


def cleaned(kind, scratch: Path):
    """A machine that records the content of its drive before any setup has run."""
    machine = kind(scratch)

    for copy in copies_of_nsis(machine):
        copy.unlink()

    machine.clean_drive = everything(machine)
    return machine

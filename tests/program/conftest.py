import copy

import pytest

from machines import WINE_PREFIX

pytest.register_assert_rewrite("random_machines")


def pytest_addoption(parser):
    parser.addoption(
        "--fresh",
        type=int,
        default=0,
        metavar="NUMBER",
        help="try this many fresh random machines instead of the fixed ones",
    )
    parser.addoption("--full-size", action="store_true", help="try the large sizes on Windows too")


@pytest.fixture
def full_size(request):
    """Whether to try the large sizes, which take long under Wine."""
    return request.config.getoption("full_size")


@pytest.fixture
def drive_d(windows, tmp_path):
    """A second drive of the Windows, with the working folder on it."""
    drive = tmp_path / "d"
    windows.working_folder = drive / "work"
    windows.working_folder.mkdir(parents=True)
    letter = WINE_PREFIX / "dosdevices" / "d:"
    letter.symlink_to(drive)
    yield drive
    letter.unlink()


@pytest.fixture
def other_copy(machine):
    """The same machine for a second copy of the program, with a console of its own."""
    other = copy.copy(machine)
    other.scratch = machine.scratch / "other"
    other.scratch.mkdir()
    return other

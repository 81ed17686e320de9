import os

import pytest

from machines import BUILD, WINE_PREFIX, Linux, Windows

pytest.register_assert_rewrite("random_machines")

# Each is Windows or a preset that was built for Linux.
MACHINES = os.environ.get("ORVEX_TEST_MACHINES", "windows native sanitize").split()


@pytest.fixture(scope="module")
def windows_is_up():
    """A Windows that is started anew for each module, so that little can pile up in it."""
    if "windows" not in MACHINES:
        pytest.skip("without Windows")

    Windows.prepare()
    yield
    Windows.shut_down()


@pytest.fixture
def windows(windows_is_up, tmp_path):
    """A clean Windows with the program in the Downloads folder."""
    return Windows(tmp_path)


@pytest.fixture
def drive_d(windows, tmp_path):
    """A second drive of the Windows, which has the working folder in it."""
    drive = tmp_path / "d"
    windows.working_folder = drive / "work"
    windows.working_folder.mkdir(parents=True)
    letter = WINE_PREFIX / "dosdevices" / "d:"
    letter.symlink_to(drive)
    yield drive
    letter.unlink()


@pytest.fixture(params=[name for name in MACHINES if name != "windows"])
def linux(request, tmp_path):
    """A clean Linux with the program in the Downloads folder."""
    return Linux(tmp_path, request.param)


@pytest.fixture(params=MACHINES)
def machine(request, tmp_path):
    """A clean machine of each kind in turn."""
    if request.param == "windows":
        request.getfixturevalue("windows_is_up")
        return Windows(tmp_path)

    return Linux(tmp_path, request.param)


@pytest.fixture
def windows_executable():
    """The executable as it was built for Windows."""
    return BUILD / "windows" / "OrvexCleaner.exe"

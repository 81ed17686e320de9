import pytest

from machines import BUILD, WINE_PREFIX, Linux, Windows

pytest.register_assert_rewrite("sessions", "random_machines")


@pytest.fixture(scope="session")
def windows_is_up():
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


@pytest.fixture(params=["native", "sanitize"])
def linux(request, tmp_path):
    """A clean Linux with the program in the Downloads folder."""
    return Linux(tmp_path, request.param)


@pytest.fixture(params=["windows", "native", "sanitize"])
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

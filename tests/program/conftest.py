import pytest

pytest.register_assert_rewrite("sessions")

from machines import BUILD, Linux, Windows


@pytest.fixture(scope="session")
def windows_is_up():
    Windows.prepare()
    yield
    Windows.shut_down()


@pytest.fixture
def windows(windows_is_up, tmp_path):
    """A clean Windows with the program in the Downloads folder."""
    return Windows(tmp_path)


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

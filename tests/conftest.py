"""The machines that tests are given, and the order of the tests."""

import os
import sys
from pathlib import Path

import pytest

sys.path.append(str(Path(__file__).resolve().parent / "shared"))

from machines import Linux, Windows  # noqa: E402
from project import BUILD  # noqa: E402

# Each is Windows or a preset that was built for Linux, the strictest last.
MACHINES = os.environ.get("ORVEX_TEST_MACHINES", "windows sanitize").split()
LINUX = [name for name in MACHINES if name != "windows"][-1:]


@pytest.hookimpl(tryfirst=True)
def pytest_collection_modifyitems(config, items):
    # A test that runs on no kind of machine is left out where only one kind is wanted.
    wanted = MACHINES if len(MACHINES) == 1 else [*MACHINES, None]
    left_out = [item for item in items if kind_of(item) not in wanted]
    config.hook.pytest_deselected(items=left_out)

    # Where several workers share the tests, those that go to one together go first: those of the packages, which take
    # longest, and those of a module that need Windows.
    items[:] = sorted(
        (item for item in items if item not in left_out),
        key=lambda item: (item.module.__name__ != "test_package", kind_of(item) != "windows"),
    )
    for item in items:
        if kind_of(item) == "windows" and not item.get_closest_marker("xdist_group"):
            item.add_marker(pytest.mark.xdist_group(item.module.__name__))


def kind_of(item) -> str | None:
    """The kind of machine that a test runs on, if it does."""
    if "windows_is_up" in item.fixturenames or "windows_executable" in item.fixturenames:
        return "windows"

    parameters = item.callspec.params if hasattr(item, "callspec") else {}
    return parameters.get("machine", parameters.get("linux"))


@pytest.fixture(scope="module")
def windows_is_up():
    """A Windows that is started anew for each module, so that little can pile up in it."""
    with Windows.started():
        yield


@pytest.fixture
def windows(windows_is_up, tmp_path):
    """A clean Windows with the program in the Downloads folder."""
    return Windows(tmp_path)


@pytest.fixture(params=LINUX)
def linux(request, tmp_path):
    """A clean Linux with the program in the Downloads folder."""
    return Linux(tmp_path, request.param)


@pytest.fixture(params=[name for name in MACHINES if name == "windows"] + LINUX)
def machine(request, tmp_path):
    """A clean Windows and a clean Linux in turn."""
    if request.param == "windows":
        request.getfixturevalue("windows_is_up")
        return Windows(tmp_path)

    return Linux(tmp_path, request.param)


@pytest.fixture
def windows_executable():
    """The executable as it was built for Windows."""
    return BUILD / "windows" / "OrvexCleaner.exe"

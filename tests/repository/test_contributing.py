"""The commands of CONTRIBUTING.md do what it says."""

import os
import re
import subprocess

import pytest

from project import TOP

DOCUMENT = (TOP / "CONTRIBUTING.md").read_text().split("## Style")[0]
COMMANDS = re.findall(r"^\| .+ \| `(.+)` \|$", DOCUMENT, re.MULTILINE)


@pytest.mark.xdist_group("contributing")  # one at a time: they share build folders
@pytest.mark.parametrize("command", COMMANDS)
def test_every_command_succeeds(command, tmp_path):
    if command.startswith("scripts/debug --gtest") and os.environ.get("ISOLATED_WAY") == "chroot":
        pytest.skip("gdbserver needs /proc, which machines made by chroot do not have")

    # The tests in these commands keep their own results. The seed makes their fresh random machines repeatable.
    environment = {name: value for name, value in os.environ.items() if not name.startswith("PYTEST_")} | {
        "ORVEX_TEST_RESULTS": str(tmp_path / "results"),
        "PYTEST_ADDOPTS": "--hypothesis-seed=1",
    }

    typed = "break confirmWithUser\ncontinue\n" if command.startswith("scripts/debug") else ""

    run = subprocess.run(["bash", "-c", command], cwd=TOP, env=environment, input=typed, capture_output=True, text=True)

    assert run.returncode == 0, run.stdout + run.stderr
    if command.startswith("scripts/test"):
        assert re.search(r"^[1-9]\d* passed, 0 failed$", run.stdout, re.MULTILINE)
    if command.startswith("scripts/debug"):
        assert re.search(
            r"^Breakpoint 1, .*confirmWithUser \(\)\s+at \S+/ConfirmWithUser\.cpp:\d+$", run.stdout, re.MULTILINE
        )

"""The machine that tests/shared/isolated makes: nothing on it is the host's, whichever way it is made."""

import os
import subprocess
from pathlib import Path

import pytest

from machines import AS_IN_CONTAINER, ISOLATED, way_of_isolation


@pytest.fixture
def root_of_container():
    if os.geteuid() != 0:
        pytest.skip("only root can change the root folder")


@pytest.fixture(params=["namespaces", "chroot"])
def isolated(request):
    """The command that makes a machine in each way."""
    if request.param == "namespaces":
        if way_of_isolation() != "namespaces":
            pytest.skip("the kernel allows no new namespaces")

        return [str(ISOLATED)]

    request.getfixturevalue("root_of_container")
    return [str(AS_IN_CONTAINER), str(ISOLATED)]


def run(*command) -> subprocess.CompletedProcess:
    environment = {name: value for name, value in os.environ.items() if name != "ISOLATED_WAY"}
    return subprocess.run(command, capture_output=True, text=True, env=environment)


def in_shell(isolated, tmp_path, script: str, *options) -> subprocess.CompletedProcess:
    return run(*isolated, tmp_path / "machine", *options, "--", "/bin/sh", "-c", script)


def test_has_only_the_given_files_of_the_host(isolated, tmp_path):
    (tmp_path / "hosts").write_text("the host's")

    done = in_shell(isolated, tmp_path, f"cd / && echo * && pwd && < {tmp_path}/hosts")

    assert done.stdout == "bin dev home lib lib64 opt proc tmp usr\n/\n"
    assert done.stderr == f"/bin/sh: 1: cannot open {tmp_path}/hosts: No such file\n"


def test_has_no_environment_of_the_host(isolated, tmp_path):
    done = in_shell(isolated, tmp_path, "export -p; pwd", "--set", "EXTRA", "of the test")

    told = f"""\
export ASAN_SYMBOLIZER_PATH='{Path("/usr/bin/llvm-symbolizer").resolve()}'
export EXTRA='of the test'
export HOME='/home/user'
export LLVM_PROFILE_FILE='/tmp/%m.profraw'
export ORVEX_MAY_CLEAN_THIS_MACHINE='yes'
export PATH='/usr/bin'
export PWD='/home/user'
export TMPDIR='/tmp'
export UBSAN_OPTIONS='print_stacktrace=1'
/home/user
"""
    assert done.stdout == told


@pytest.mark.parametrize("user", ["0", "1000"])
def test_gives_no_capability_and_no_way_to_get_one(isolated, tmp_path, user):
    capsh = ["--file", "/usr/sbin/capsh", "/bin/capsh", "--user", user]

    done = in_shell(isolated, tmp_path, f"/bin/capsh --current --has-no-new-privs --is-uid={user}", *capsh)

    assert done.stdout.splitlines()[0] == "Current: ="
    assert done.stderr == ""
    assert done.returncode == 0


def test_does_not_let_a_command_leave_its_root_folder(isolated, tmp_path):
    chroot = ["--file", "/usr/sbin/chroot", "/bin/chroot"]

    done = in_shell(isolated, tmp_path, "/bin/chroot / /bin/sh -c 'echo free'", *chroot)

    assert done.stdout == ""
    assert done.stderr.removeprefix("/bin/") == "chroot: cannot change root directory to '/': Operation not permitted\n"


@pytest.mark.parametrize("order", ["/bin/rm -f /bin/given", "echo changed > /bin/given"])
def test_can_neither_delete_nor_change_a_file_of_the_host(isolated, tmp_path, order):
    given = tmp_path / "given"
    given.write_text("the host's")
    given.chmod(0o666)
    options = ["--file", "/bin/rm", "/bin/rm", "--file", given, "/bin/given"]

    in_shell(isolated, tmp_path, order, *options)
    again = in_shell(isolated, tmp_path, "read -r content < /bin/given; echo $content", *options)

    assert given.read_text() == "the host's"
    assert again.stdout == "the host's\n"


def test_reports_a_machine_that_allows_neither_way(root_of_container, tmp_path):
    without_rights = ["setpriv", "--bounding-set", "-all"]

    done = run(AS_IN_CONTAINER, *without_rights, ISOLATED, tmp_path / "machine", "--", "/bin/sh", "-c", "echo ran")

    assert done.stdout == ""
    assert done.stderr == (
        "tests/shared/isolated: This machine allows neither new namespaces, which bubblewrap needs, nor what root may do "
        "in a container (chroot, setgid, setpcap, setuid).\n"
    )
    assert done.returncode == 1
    assert not (tmp_path / "machine").exists()

"""scripts/package, run in fresh clones of the last commit."""

import hashlib
import http.server
import os
import re
import subprocess
import threading
import zipfile
from pathlib import Path

import pytest

from machines import TOP
from release import VERSION

PACKAGE = f"OrvexCleaner-{VERSION}-windows-x64.zip"
FOREIGN_TOOLS = (
    "scripts/package: these are not the tools and the JUCE of Debian 12, so that the package has other bytes\n"
)
CONTENTS = ["OrvexCleaner.exe", "guide.txt", "third-party-notices.txt", "SHA256SUMS"]


def clone(folder: Path) -> Path:
    subprocess.run(["git", "clone", "--quiet", TOP, folder], check=True)
    return folder


def package(
    sources: Path, *options, password: str | None = None, stdin=subprocess.DEVNULL
) -> subprocess.CompletedProcess:
    """Runs scripts/package, without a terminal if none is given, and takes a word on foreign tools out of what it says."""
    environment = {name: value for name, value in os.environ.items() if name != "ORVEX_SIGN_PASSWORD"}

    if password is not None:
        environment["ORVEX_SIGN_PASSWORD"] = password

    command = [sources / "scripts" / "package", *options]
    run = subprocess.run(command, env=environment, stdin=stdin, capture_output=True, text=True)
    run.stderr = run.stderr.replace(FOREIGN_TOOLS, "", 1)
    return run


@pytest.fixture(scope="module")
def sources(tmp_path_factory):
    """A fresh clone in which the package was made."""
    folder = clone(tmp_path_factory.mktemp("package") / "clone")
    run = package(folder)
    assert run.returncode == 0, run.stderr
    return folder


@pytest.fixture
def certificate(tmp_path):
    """A throwaway certificate with its key, under the password "secret"."""
    key, public, file = tmp_path / "key.pem", tmp_path / "certificate.pem", tmp_path / "certificate.p12"
    make = ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Throwaway"]
    use = ["-addext", "extendedKeyUsage=codeSigning", "-keyout", key, "-out", public]
    join = ["openssl", "pkcs12", "-export", "-inkey", key, "-in", public, "-out", file, "-passout", "pass:secret"]
    subprocess.run([*make, *use], check=True, capture_output=True)
    subprocess.run(join, check=True, capture_output=True)
    return file


@pytest.fixture
def time_server(certificate):
    """The address of a server that confirms times, with the throwaway certificate time.pem beside the other."""
    folder = certificate.parent
    make = ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Throwaway time"]
    use = ["-addext", "extendedKeyUsage=critical,timeStamping", "-keyout", "time.key", "-out", "time.pem"]
    subprocess.run([*make, *use], cwd=folder, check=True, capture_output=True)
    (folder / "time.conf").write_text(
        """\
[tsa]
default_tsa = here
[here]
serial = serial
signer_cert = time.pem
signer_key = time.key
certs = time.pem
signer_digest = sha256
default_policy = 1.2.3.4
digests = sha256
"""
    )

    class Server(http.server.BaseHTTPRequestHandler):
        def do_POST(self):
            (folder / "query").write_bytes(self.rfile.read(int(self.headers["Content-Length"])))
            reply = ["openssl", "ts", "-reply", "-config", "time.conf", "-queryfile", "query"]
            answer = subprocess.run(reply, cwd=folder, check=True, capture_output=True).stdout
            self.send_response(200)
            self.send_header("Content-Type", "application/timestamp-reply")
            self.end_headers()
            self.wfile.write(answer)

        def log_message(self, *_):
            pass

    with http.server.HTTPServer(("127.0.0.1", 0), Server) as server:
        threading.Thread(target=server.serve_forever).start()
        yield f"http://127.0.0.1:{server.server_port}/"
        server.shutdown()


def verify(executable: Path, certificate: Path, *options) -> str:
    """What osslsigncode says of the signature; fails if it is not good."""
    command = ["osslsigncode", "verify", "-CAfile", certificate.with_suffix(".pem"), *options, executable]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def test_makes_the_same_bytes_in_any_folder_at_any_time(sources, tmp_path):
    elsewhere = clone(tmp_path / "a folder with blanks" / "and one below" / "Orvex Cleaner")

    run = package(elsewhere)

    assert run.returncode == 0, run.stderr
    assert (elsewhere / "dist" / PACKAGE).read_bytes() == (sources / "dist" / PACKAGE).read_bytes()


def test_says_what_it_is_doing(sources, tmp_path):
    run = package(sources, "--output", tmp_path)

    assert (
        run.stderr
        == f"""\
Building the program for Windows
Packing {PACKAGE}
Made {tmp_path / PACKAGE}
"""
    )
    assert run.stdout == ""


def test_packs_the_executable_the_guide_the_notices_and_their_sums(sources):
    commit_time = subprocess.run(
        ["git", "log", "-1", "--format=%cd", "--date=format-local:%Y %m %d %H %M %S"],
        cwd=sources,
        env=os.environ | {"TZ": "UTC"},
        check=True,
        capture_output=True,
    )
    *minute, second = map(int, commit_time.stdout.split())

    with zipfile.ZipFile(sources / "dist" / PACKAGE) as archive:
        entries = archive.infolist()
        content = {entry.filename: archive.read(entry) for entry in entries}

    assert list(content) == CONTENTS
    assert {entry.date_time for entry in entries} == {(*minute, second // 2 * 2)}  # a zip counts two seconds at a time
    assert {(oct(entry.external_attr >> 16), entry.extra) for entry in entries} == {("0o100644", b"")}
    assert content["OrvexCleaner.exe"] == (sources / "build" / "package" / "OrvexCleaner.exe").read_bytes()
    assert content["guide.txt"] == with_windows_line_ends(sources / "docs" / "guide.md")
    assert content["third-party-notices.txt"] == with_windows_line_ends(sources / "docs" / "third-party-notices.txt")
    assert content["SHA256SUMS"].decode() == "".join(
        f"{hashlib.sha256(content[name]).hexdigest()}  {name}\n" for name in CONTENTS[:3]
    )


def test_packs_the_program_that_all_other_tests_run(sources, windows_executable):
    if subprocess.run(["git", "status", "--porcelain"], cwd=TOP, check=True, capture_output=True).stdout:
        pytest.skip("the other tests run a program that is not the committed one")

    with zipfile.ZipFile(sources / "dist" / PACKAGE) as archive:
        assert archive.read("OrvexCleaner.exe") == windows_executable.read_bytes()


def test_gives_the_licences_of_what_is_linked_in_word_for_word():
    documents = Path("/usr/share/doc")
    headers = Path("/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++")
    originals = " ".join(
        words(file.read_text())
        for file in (
            Path("/usr/share/juce/modules/juce_core/juce_core.h"),
            documents / "libz-mingw-w64-dev" / "copyright",
            documents / "gcc-mingw-w64-base" / "copyright",
            headers / "bits" / "stl_algo.h",
            documents / "mingw-w64-common" / "copyright",
        )
    )

    notices = (TOP / "docs" / "third-party-notices.txt").read_text()
    quoted = re.findall(r"^    .+\n(?:    .+\n)*", notices, re.MULTILINE)

    assert re.findall(r"^(.+)\n-+\n", notices, re.MULTILINE) == [
        "JUCE, the module juce_core",
        "zlib",
        "The runtime libraries of GCC: libgcc and libstdc++",
        "The runtime of mingw-w64",
        "winpthreads, the threads of mingw-w64",
    ]
    assert [q for q in quoted if not q.startswith("    Copyright") and words(q) not in originals] == []


def test_signs_the_executable(sources, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed", password="secret")

    assert run.returncode == 0, run.stderr
    assert (
        run.stderr
        == f"""\
Building the program for Windows
Signing OrvexCleaner.exe
Packing {PACKAGE}
Made {tmp_path / "signed" / PACKAGE}
"""
    )
    with zipfile.ZipFile(tmp_path / "signed" / PACKAGE) as archive:
        archive.extractall(tmp_path)
        assert archive.namelist() == CONTENTS

    verified = verify(tmp_path / "OrvexCleaner.exe", certificate)
    assert "Signature verification: ok" in verified
    assert "Subject: /CN=Throwaway" in verified
    assert "Timestamp is not available" in verified
    subprocess.run(["sha256sum", "--check", "--strict", "--quiet", "SHA256SUMS"], cwd=tmp_path, check=True)


def test_has_the_time_of_the_signature_confirmed_on_demand(sources, certificate, time_server, tmp_path):
    signed = ["--sign", certificate, "--timestamp", time_server, "--output", tmp_path]

    run = package(sources, *signed, password="secret")

    assert run.returncode == 0, run.stderr
    assert f"Signing OrvexCleaner.exe, with the time of {time_server}\n" in run.stderr

    with zipfile.ZipFile(tmp_path / PACKAGE) as archive:
        archive.extract("OrvexCleaner.exe", tmp_path)

    verified = verify(tmp_path / "OrvexCleaner.exe", certificate, "-TSA-CAfile", certificate.with_name("time.pem"))
    assert "Timestamp Server Signature verification: ok" in verified
    assert "Signature verification: ok" in verified


def test_asks_for_the_password_on_a_terminal(sources, certificate, tmp_path):
    person, terminal = os.openpty()
    os.write(person, b"secret\n")

    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed", stdin=terminal)
    os.close(person)
    os.close(terminal)

    assert run.stderr.startswith(f"Password of {certificate}: \nBuilding the program for Windows\n")
    assert run.returncode == 0, run.stderr
    assert (tmp_path / "signed" / PACKAGE).is_file()


def test_makes_no_package_without_the_certificate(sources, tmp_path):
    run = package(sources, "--sign", tmp_path / "missing.p12", "--output", tmp_path / "signed", password="secret")

    assert (
        run.stderr
        == f"""\
scripts/package: there is no certificate to read in {tmp_path / "missing.p12"}
No package was made.
"""
    )
    assert run.returncode == 1
    assert not (tmp_path / "signed").exists()


def test_makes_no_package_with_a_wrong_password(sources, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed", password="guessed")

    assert run.stderr.endswith(
        f"""\
scripts/package: the password does not open {certificate}, or it is no PKCS#12 file
No package was made.
"""
    )
    assert run.returncode == 1
    assert not (tmp_path / "signed").exists()


def test_asks_no_password_where_there_is_no_terminal(sources, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed")

    assert (
        run.stderr
        == """\
scripts/package: there is no terminal to ask for the certificate's password: set ORVEX_SIGN_PASSWORD
No package was made.
"""
    )
    assert run.returncode == 1
    assert not (tmp_path / "signed").exists()


def test_makes_no_package_if_the_time_cannot_be_confirmed(sources, certificate, tmp_path):
    signed_at_nobodys = ["--sign", certificate, "--timestamp", "http://127.0.0.1:9/", "--output", tmp_path / "signed"]

    run = package(sources, *signed_at_nobodys, password="secret")

    assert run.stderr.endswith(
        """\
scripts/package: OrvexCleaner.exe cannot be signed
No package was made.
"""
    )
    assert run.returncode == 1
    assert not (tmp_path / "signed").exists()


def test_makes_no_package_of_what_is_not_committed(tmp_path):
    changed = clone(tmp_path / "clone")
    (changed / "CMakeLists.txt").write_text("changed")
    (changed / "notes.txt").write_text("new")

    run = package(changed)

    assert (
        run.stderr
        == """\
scripts/package: these files are not as they are committed, and a package is made of a commit:
 M CMakeLists.txt
?? notes.txt
No package was made.
"""
    )
    assert run.returncode == 1
    assert not (changed / "dist").exists()


def test_says_that_its_tools_or_its_juce_are_not_those_of_debian_12(tmp_path):
    changed = clone(tmp_path / "clone")
    (changed / "CMakeLists.txt").write_text("changed")
    environment = {**os.environ, "ORVEX_JUCE_MODULES_DIR": "/juce/modules"}

    run = subprocess.run([changed / "scripts" / "package"], env=environment, capture_output=True, text=True)

    assert run.stderr.startswith(FOREIGN_TOOLS)
    assert run.returncode == 1


def test_refuses_options_that_it_does_not_know(sources):
    run = package(sources, "--singn")

    assert run.stderr.startswith("scripts/package: there is no option '--singn'\nUsage: scripts/package ")
    assert run.returncode == 2


def test_tells_how_it_is_used(sources):
    run = package(sources, "--help")

    assert run.stdout.startswith("Usage: scripts/package [--output FOLDER] [--sign FILE [--timestamp URL]]\n")
    assert run.stderr == ""
    assert run.returncode == 0


def with_windows_line_ends(file: Path) -> bytes:
    return file.read_bytes().replace(b"\n", b"\r\n")


def words(text: str) -> str:
    """The text without its layout: line ends, indentation, and the signs of comments and of empty lines."""
    return " ".join(word for word in text.split() if word not in {"//", "*", "/*", "*/", "."})

"""scripts/package and scripts/verify-package, run in fresh clones.

Most run on the next release: a commit that changes version and support address, since what cannot be
supported is not signed.
"""

import hashlib
import http.server
import json
import os
import re
import shutil
import subprocess
import threading
import zipfile
from pathlib import Path

import pytest

from machines import TOP
from release import BUILD_TAG, SUPPORT_ADDRESS, VERSION

MAJOR_MINOR, _, PATCH = VERSION.rpartition(".")
NEXT_VERSION = f"{MAJOR_MINOR}.{int(PATCH) + 1}"
NEXT_ADDRESS = "next@tessaraworks.test"

PACKAGE = f"OrvexCleaner-{NEXT_VERSION}-windows-x64.zip"
RECORD = f"OrvexCleaner-{NEXT_VERSION}.buildinfo"
UNSTRIPPED = f"OrvexCleaner-{NEXT_VERSION}-unstripped.exe"
MAP = f"OrvexCleaner-{NEXT_VERSION}.map"
CONTENTS = ["OrvexCleaner.exe", "guide.txt", "third-party-notices.txt", "OrvexCleaner.cdx.json", "SHA256SUMS"]

SOFTHSM = "/usr/lib/softhsm/libsofthsm2.so"
NOTICES = "docs/third-party-notices.txt"
NO_TIMESTAMP = "Without --timestamp, the signature ends with its certificate.\n"
DEBIAN_12 = 'VERSION_ID="12"' in Path("/etc/os-release").read_text()
FOREIGN_TOOLS = (
    "scripts/package: these are not the tools and the JUCE of Debian 12, so that the package has other bytes\n"
)


def clone(folder: Path, origin: Path = TOP) -> Path:
    subprocess.run(["git", "clone", "--quiet", origin, folder], check=True)
    return folder


def commit_settings(sources: Path, changes: dict[str, str]):
    settings = sources / "CMakeLists.txt"
    text = settings.read_text()

    for old, new in changes.items():
        text = text.replace(old, new)

    settings.write_text(text)
    author = ["-c", "user.name=Somebody", "-c", "user.email=somebody@localhost"]
    subprocess.run(["git", *author, "commit", "--quiet", "--all", "--message=Next"], cwd=sources, check=True)


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


def verify(sources: Path, packed: Path, with_clock=()) -> subprocess.CompletedProcess:
    """Runs scripts/verify-package of these sources."""
    command = [*with_clock, sources / "scripts" / "verify-package", packed]
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)


@pytest.fixture(scope="module")
def sources(tmp_path_factory):
    """A fresh clone in which the package was made."""
    folder = clone(tmp_path_factory.mktemp("package") / "clone")
    commit_settings(folder, {f"VERSION {VERSION}": f"VERSION {NEXT_VERSION}", SUPPORT_ADDRESS: NEXT_ADDRESS})
    run = package(folder)
    assert run.returncode == 0, run.stderr
    return folder


@pytest.fixture(scope="module")
def elsewhere(sources, tmp_path_factory):
    """Another clone of the same commit."""
    return clone(tmp_path_factory.mktemp("elsewhere") / "a folder with blanks" / "Orvex Cleaner", sources)


@pytest.fixture(scope="module")
def verified(sources, elsewhere):
    """A run of scripts/verify-package that has the package made anew, elsewhere and years later."""
    return verify(elsewhere, sources / "dist" / PACKAGE, with_clock=["faketime", "-f", "+2000d"])


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
def token(certificate, monkeypatch):
    """The options for the same key on a software token with the PIN "secret"."""
    folder = certificate.parent
    (folder / "tokens").mkdir()
    (folder / "softhsm2.conf").write_text(f"directories.tokendir = {folder}/tokens\n")
    monkeypatch.setenv("SOFTHSM2_CONF", str(folder / "softhsm2.conf"))
    make = ["softhsm2-util", "--init-token", "--free", "--label=Orvex", "--pin=secret", "--so-pin=secret"]
    fill = ["softhsm2-util", "--import=key.pem", "--token=Orvex", "--label=release", "--id=01", "--pin=secret"]
    subprocess.run(make, check=True, capture_output=True)
    subprocess.run(fill, cwd=folder, check=True, capture_output=True)
    key = "pkcs11:token=Orvex;object=release"
    return ["--pkcs11-module", SOFTHSM, "--key", key, "--certificate", folder / "certificate.pem"]


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


def signature_of(executable: Path, certificate: Path, *options) -> str:
    """What osslsigncode says of the signature; fails if it is not good."""
    command = ["osslsigncode", "verify", "-CAfile", certificate.with_suffix(".pem"), *options, executable]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def content_of(packed: Path) -> dict[str, bytes]:
    with zipfile.ZipFile(packed) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def sum_of(content: bytes) -> str:
    return hashlib.sha256(content).hexdigest()


def head_of(sources: Path) -> str:
    return subprocess.run(["git", "rev-parse", "HEAD"], cwd=sources, check=True, capture_output=True, text=True).stdout


def test_makes_the_same_bytes_in_any_folder_at_any_time(sources, elsewhere, verified):
    again = elsewhere / "build" / "verify" / "dist" / head_of(sources).strip()

    made = {file.name: file.read_bytes() for file in (sources / "dist").iterdir()}

    assert set(made) == {PACKAGE, PACKAGE + ".sha256", RECORD, UNSTRIPPED, MAP}
    assert [name for name in made if made[name] != (again / name).read_bytes()] == []


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


def test_packs_the_executable_the_guide_the_notices_the_bill_and_their_sums(sources):
    commit_time = subprocess.run(["git", "log", "-1", "--format=%cd", "--date=format-local:%Y %m %d %H %M %S"],
                                 cwd=sources, env=os.environ | {"TZ": "UTC"}, check=True, capture_output=True)  # fmt: skip
    *minute, second = map(int, commit_time.stdout.split())

    with zipfile.ZipFile(sources / "dist" / PACKAGE) as archive:
        entries = archive.infolist()
    content = content_of(sources / "dist" / PACKAGE)
    guide = (sources / "docs" / "guide.md").read_bytes().replace(b"\n", b"\r\n")

    assert list(content) == CONTENTS
    assert {entry.date_time for entry in entries} == {(*minute, second // 2 * 2)}  # a zip counts two seconds at a time
    assert {(oct(entry.external_attr >> 16), entry.extra) for entry in entries} == {("0o100644", b"")}
    assert content["OrvexCleaner.exe"] == (sources / "build" / "package" / "OrvexCleaner.exe").read_bytes()
    assert content["guide.txt"] == guide.replace(b"@ORVEX_CLEANER_SUPPORT_ADDRESS@", NEXT_ADDRESS.encode())
    assert content["third-party-notices.txt"] == (TOP / NOTICES).read_bytes().replace(b"\n", b"\r\n")
    assert content["SHA256SUMS"].decode() == "".join(f"{sum_of(content[name])}  {name}\n" for name in CONTENTS[:-1])


def test_makes_a_release_of_what_one_place_says(sources):
    executable = content_of(sources / "dist" / PACKAGE)["OrvexCleaner.exe"]

    assert executable.count("\0".join(NEXT_VERSION).encode() + b"\0\0\0") == 2  # of the file and of the product
    assert f'version="{NEXT_VERSION}.0"'.encode() in executable
    assert [text for text in (NEXT_VERSION, BUILD_TAG, NEXT_ADDRESS) if text.encode() not in executable] == []
    assert [text for text in (VERSION, SUPPORT_ADDRESS) if text.encode() in executable] == []


def test_packs_the_program_that_all_other_tests_run(windows_executable, tmp_path):
    if subprocess.run(["git", "status", "--porcelain"], cwd=TOP, check=True, capture_output=True).stdout:
        pytest.skip("the other tests run a program that is not the committed one")

    run = package(clone(tmp_path / "clone"), "--output", tmp_path)

    assert run.returncode == 0, run.stderr
    packed = content_of(tmp_path / f"OrvexCleaner-{VERSION}-windows-x64.zip")
    assert packed["OrvexCleaner.exe"] == windows_executable.read_bytes()


@pytest.mark.skipif(not DEBIAN_12, reason="names packages of Debian 12")
def test_records_what_made_the_package(sources):
    record = (sources / "dist" / RECORD).read_text()
    content = content_of(sources / "dist" / PACKAGE)
    sums = {PACKAGE: sum_of((sources / "dist" / PACKAGE).read_bytes())}
    sums |= {name: sum_of(content[name]) for name in content}

    commit, tools, checksums = re.fullmatch(
        r"Commit: (\w+\n)Installed:\n((?: .*\n)+)Checksums-Sha256:\n((?: .*\n)+)", record
    ).groups()

    assert commit == head_of(sources)
    assert checksums == "".join(f" {sum}  {name}\n" for name, sum in sums.items())
    assert (sources / "dist" / (PACKAGE + ".sha256")).read_text() == f"{sums[PACKAGE]}  {PACKAGE}\n"

    named = {tool.split(":")[0]: version for tool, version in re.findall(r"^ (\S+) \(= (\S+)\)$", tools, re.MULTILINE)}
    assert {"clang-14", "lld-14", "libllvm14", "mingw-w64-common", "juce-modules-source-data", "zip"} <= set(named)
    query = ["dpkg-query", "--show", "--showformat", "${Package} ${Version}\n", *named]
    installed = subprocess.run(query, check=True, capture_output=True, text=True).stdout
    assert dict(line.split() for line in installed.splitlines()) == named


def test_keeps_what_reads_the_addresses_in_a_report_of_a_crash(sources, tmp_path):
    unstripped = sources / "dist" / UNSTRIPPED
    symbol = "_ZNK4juce4File17deleteRecursivelyEb"
    (address,) = re.findall(rf" {symbol} +([0-9a-f]{{16}}) +libjuce_core:", (sources / "dist" / MAP).read_text())
    offset = hex(int(address, 16) - 0x140000000 + 20)

    symbolizer = ["llvm-symbolizer", "--obj", unstripped, "--relative-address", offset]
    told = subprocess.run(symbolizer, check=True, capture_output=True, text=True).stdout
    subprocess.run(["llvm-strip", unstripped, "-o", tmp_path / "stripped.exe"], check=True)

    assert told.startswith("juce::File::deleteRecursively(bool) const\n")
    assert (tmp_path / "stripped.exe").read_bytes() == content_of(sources / "dist" / PACKAGE)["OrvexCleaner.exe"]


@pytest.mark.skipif(not DEBIAN_12, reason="names packages of Debian 12")
def test_bills_all_that_is_linked_in(sources):
    bill = json.loads(content_of(sources / "dist" / PACKAGE)["OrvexCleaner.cdx.json"])

    assert bill["metadata"]["component"]["version"] == NEXT_VERSION
    assert [(part["name"], part["version"], part["licenses"][0]["expression"]) for part in bill["components"]] == [
        ("juce_core", version_of("juce-modules-source-data"), "ISC"),
        ("zlib", version_of("libz-mingw-w64-dev"), "Zlib"),
        (
            "libiberty",
            version_of("g++-mingw-w64-x86-64-posix"),
            "GPL-2.0-or-later WITH GCC-exception-2.0",
        ),
        (
            "libstdc++",
            version_of("g++-mingw-w64-x86-64-posix"),
            "GPL-3.0-or-later WITH GCC-exception-3.1 AND HPND-sell-variant",
        ),
        ("libgcc", version_of("gcc-mingw-w64-x86-64-posix"), "GPL-3.0-or-later WITH GCC-exception-3.1"),
        ("winpthreads", version_of("mingw-w64-x86-64-dev"), "MIT AND BSD-3-Clause"),
        (
            "mingw-w64",
            version_of("mingw-w64-x86-64-dev"),
            "ZPL-2.1 AND LicenseRef-Lucent AND LicenseRef-David-Gay AND LicenseRef-Keith-Marshall",
        ),
    ]


def test_bills_in_the_form_of_cyclonedx(sources, validator):
    bill = content_of(sources / "dist" / PACKAGE)["OrvexCleaner.cdx.json"]

    assert validator(bill) == "valid\n"
    assert "must have required property 'type'" in validator(bill.replace(b'"type"', b'"kind"'))
    assert "Unexpected `E`" in validator(bill.replace(b'"ISC"', b'"ISC OR ELSE"'))


def test_bills_nothing_that_is_not_in_its_table(sources, tmp_path):
    linker_map = (sources / "dist" / MAP).read_text()
    (tmp_path / "map").write_text(linker_map.replace(" libz:", " libpng:"))

    assert "libpng:adler32.o is linked into the program" in bill_refused(tmp_path / "map", TOP / NOTICES)


def test_bills_nothing_that_the_notices_do_not_name(sources, tmp_path):
    (tmp_path / "notices").write_text((TOP / NOTICES).read_text().replace("zlib\n----\n", ""))

    refused = bill_refused(sources / "dist" / MAP, tmp_path / "notices")

    assert refused == "zlib is linked into the program, and the notices have no 'zlib'\n"


def bill_refused(linker_map: Path, notices: Path) -> str:
    bill = [TOP / "scripts/support/bill-of-materials", linker_map, notices, VERSION, "2026-11-21T00:00:00Z", "7.0.5"]
    run = subprocess.run(bill, capture_output=True, text=True)
    assert run.returncode == 1
    return run.stderr


def version_of(name: str) -> str:
    """The upstream part of the version of Debian's package."""
    query = ["dpkg-query", "--show", "--showformat", "${Version}", name]
    return re.match(r"[\d.]+", subprocess.run(query, check=True, capture_output=True, text=True).stdout)[0]


@pytest.fixture(scope="module")
def validator(tmp_path_factory):
    """Says "valid" of a bill, or what is wrong with it."""
    folder = tmp_path_factory.mktemp("validator")
    shutil.copy(TOP / "tests" / "tools" / "validate-bill.js", folder)
    packages = ["@cyclonedx/cyclonedx-library@6.13.1", "ajv@8.17.1", "ajv-formats@3.0.1"]
    packages += ["ajv-formats-draft2019@1.6.1", "spdx-expression-parse@4.0.0"]
    install = ["npm", "install", "--omit=optional", "--ignore-scripts", "--no-audit", "--no-fund", *packages]
    subprocess.run(install, cwd=folder, check=True, capture_output=True)

    def validate(bill: bytes) -> str:
        return subprocess.run(["node", folder / "validate-bill.js"], input=bill, capture_output=True).stdout.decode()

    return validate


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

    assert re.findall(r"^(.+)\n-+\n", notices, re.MULTILINE) == [
        "JUCE, the module juce_core",
        "zlib",
        "The runtime libraries of GCC: libgcc and libstdc++",
        "libiberty, the demangler of GCC",
        "The runtime of mingw-w64",
        "winpthreads, the threads of mingw-w64",
    ]
    # No package of Debian's has the source of the demangler, which its notice is from.
    demangler = re.compile(r"^libiberty, .*?(?=^The runtime of mingw-w64)", re.DOTALL | re.MULTILINE)
    quoted = re.findall(r"^    .+\n(?:    .+\n)*", demangler.sub("", notices), re.MULTILINE)
    assert [words(q)[:40] for q in quoted if not q.startswith("    Copyright") and words(q) not in originals] == []


def test_signs_the_executable_by_a_key_in_a_file(sources, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed", password="secret")

    signed_by(run, certificate, tmp_path)


def test_signs_the_executable_by_a_key_on_a_token(sources, certificate, token, tmp_path):
    run = package(sources, *token, "--output", tmp_path / "signed", password="secret")

    signed_by(run, certificate, tmp_path)


def signed_by(run: subprocess.CompletedProcess, certificate: Path, folder: Path):
    packed = folder / "signed" / PACKAGE

    assert run.returncode == 0, run.stderr
    assert (
        run.stderr
        == f"""\
{NO_TIMESTAMP}Building the program for Windows
Signing OrvexCleaner.exe
Packing {PACKAGE}
Made {packed}
"""
    )
    with zipfile.ZipFile(packed) as archive:
        archive.extractall(folder)
        assert archive.namelist() == CONTENTS

    signature = signature_of(folder / "OrvexCleaner.exe", certificate)
    assert "Signature verification: ok" in signature
    assert "Subject: /CN=Throwaway" in signature
    assert "Timestamp is not available" in signature
    subprocess.run(["sha256sum", "--check", "--strict", "--quiet", "SHA256SUMS"], cwd=folder, check=True)


def test_has_the_time_of_the_signature_confirmed_on_demand(sources, certificate, time_server, tmp_path):
    signed = ["--sign", certificate, "--timestamp", time_server, "--output", tmp_path]

    run = package(sources, *signed, password="secret")

    assert run.returncode == 0, run.stderr
    assert f"Signing OrvexCleaner.exe, with the time of {time_server}\n" in run.stderr
    assert NO_TIMESTAMP not in run.stderr

    with zipfile.ZipFile(tmp_path / PACKAGE) as archive:
        archive.extract("OrvexCleaner.exe", tmp_path)

    times = ["-TSA-CAfile", certificate.with_name("time.pem")]
    signature = signature_of(tmp_path / "OrvexCleaner.exe", certificate, *times)
    assert "Timestamp Server Signature verification: ok" in signature
    assert "Signature verification: ok" in signature


def test_asks_for_the_password_on_a_terminal(sources, certificate, tmp_path):
    person, terminal = os.openpty()
    os.write(person, b"secret\n")

    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed", stdin=terminal)
    os.close(person)
    os.close(terminal)

    assert run.stderr.startswith(f"Password of {certificate}: \n{NO_TIMESTAMP}Building the program for Windows\n")
    assert run.returncode == 0, run.stderr
    assert (tmp_path / "signed" / PACKAGE).is_file()


def test_makes_no_package_without_the_certificate(sources, tmp_path):
    missing = tmp_path / "missing.p12"

    run = package(sources, "--sign", missing, "--output", tmp_path / "signed", password="secret")

    no_package_made(run, tmp_path / "signed", f"there is nothing to read in {missing}")


def test_makes_no_package_with_a_wrong_password(sources, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed", password="guessed")

    no_package_made(run, tmp_path / "signed", f"the password does not open {certificate}, or it is no PKCS#12 file")


def test_makes_no_package_with_a_wrong_pin(sources, token, tmp_path):
    run = package(sources, *token, "--output", tmp_path / "signed", password="guessed")

    assert "PIN incorrect" in run.stderr
    no_package_made(run, tmp_path / "signed", "OrvexCleaner.exe cannot be signed")


def test_asks_no_password_where_there_is_no_terminal(sources, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path / "signed")

    told = f"there is no terminal to ask for the password of {certificate}: set ORVEX_SIGN_PASSWORD"
    no_package_made(run, tmp_path / "signed", told)


def test_makes_no_package_if_the_time_cannot_be_confirmed(sources, certificate, tmp_path):
    signed_at_nobodys = ["--sign", certificate, "--timestamp", "http://127.0.0.1:9/", "--output", tmp_path / "signed"]

    run = package(sources, *signed_at_nobodys, password="secret")

    no_package_made(run, tmp_path / "signed", "OrvexCleaner.exe cannot be signed")


def test_does_not_sign_what_nobody_can_support(sources, certificate, tmp_path):
    unsupported = clone(tmp_path / "clone", sources)
    commit_settings(unsupported, {NEXT_ADDRESS: "support@tessaraworks.example"})

    run = package(unsupported, "--sign", certificate, "--output", tmp_path / "signed", password="secret")

    told = "nobody can write to the support address in CMakeLists.txt, so the program is not signed"
    no_package_made(run, tmp_path / "signed", told)


def no_package_made(run: subprocess.CompletedProcess, output: Path, reason: str):
    assert run.stderr.endswith(f"scripts/package: {reason}\nNo package was made.\n")
    assert run.returncode == 1
    assert not output.exists()


@pytest.mark.parametrize(
    "options, told",
    [
        (["--key", "pkcs11:token=Orvex"], "--pkcs11-module, --key and --certificate go together"),
        (
            ["--pkcs11-module", SOFTHSM, "--certificate", "c.pem"],
            "--pkcs11-module, --key and --certificate go together",
        ),
        (
            ["--sign", "c.p12", "--pkcs11-module", SOFTHSM, "--key", "pkcs11:token=Orvex", "--certificate", "c.pem"],
            "the key is in a file or on a token, not both",
        ),
        (["--timestamp", "http://127.0.0.1:9/"], "--timestamp goes with a signature"),
        (["--sign"], "--sign needs a value"),
        (["--singn"], "there is no option '--singn'"),
    ],
)
def test_refuses_options_that_it_does_not_understand(sources, options, told):
    run = package(sources, *options)

    assert run.stderr.startswith(f"scripts/package: {told}\nUsage: scripts/package ")
    assert run.returncode == 2


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


def test_tells_how_it_is_used(sources):
    run = package(sources, "--help")

    assert run.stdout.startswith("Usage: scripts/package [--output FOLDER] [--sign FILE | --pkcs11-module LIBRARY ")
    assert run.stderr == ""
    assert run.returncode == 0


def test_verifies_a_package_without_a_signature(sources, verified):
    assert verified.stdout == f"Verified: commit {head_of(sources)}"
    assert verified.returncode == 0


def test_verifies_a_package_apart_from_its_signature(sources, elsewhere, certificate, tmp_path):
    run = package(sources, "--sign", certificate, "--output", tmp_path, password="secret")
    assert run.returncode == 0, run.stderr

    run = verify(elsewhere, tmp_path / PACKAGE)

    of_whom = "apart from the signature, which is that of /CN=Throwaway"
    assert run.stdout == f"Verified {of_whom}: commit {head_of(sources)}"
    assert run.returncode == 0


@pytest.mark.parametrize("name", ["OrvexCleaner.exe", "guide.txt"])
def test_finds_a_changed_byte(sources, elsewhere, tmp_path, name):
    run = verify(elsewhere, changed(sources, tmp_path, name, at=0x3E9))

    assert run.stdout == f"Different: {name}, from offset 1001 on\n"
    assert run.returncode == 1


def test_finds_a_changed_byte_under_a_signature(sources, elsewhere, certificate, tmp_path):
    packed = changed(sources, tmp_path, "OrvexCleaner.exe", at=0x8000)
    plain, signed = tmp_path / "plain.exe", tmp_path / "signed.exe"
    plain.write_bytes(content_of(packed)["OrvexCleaner.exe"])
    sign = ["osslsigncode", "sign", "-pkcs12", certificate, "-pass", "secret", "-in", plain, "-out", signed]
    subprocess.run(sign, check=True, capture_output=True)
    executable = bytearray(signed.read_bytes())

    replace(packed, "OrvexCleaner.exe", executable)
    run = verify(elsewhere, packed)

    assert run.stdout == "Different: OrvexCleaner.exe, from offset 32768 on\n"
    assert run.returncode == 1

    executable[0x8000] ^= 1  # as it was before
    replace(packed, "OrvexCleaner.exe", executable)
    run = verify(elsewhere, packed)

    assert run.stdout == "Different: the signature of OrvexCleaner.exe is not of this executable\n"
    assert run.returncode == 1


def test_finds_other_files_than_the_package_has(sources, elsewhere, tmp_path):
    packed = copy(sources, tmp_path)
    with zipfile.ZipFile(packed, "a") as archive:
        archive.writestr("winmm.dll", "planted")

    run = verify(elsewhere, packed)

    assert run.stdout == f"Different: the package has the files {[*CONTENTS, 'winmm.dll']} and not {CONTENTS}\n"
    assert run.returncode == 1


def test_finds_a_record_of_another_package(sources, elsewhere, tmp_path):
    packed = copy(sources, tmp_path)
    record = tmp_path / RECORD
    record.write_text(record.read_text().replace(sum_of(packed.read_bytes()), sum_of(b"another")))

    run = verify(elsewhere, packed)

    assert run.stdout == "Different: the sums in the record are not those of the package\n"
    assert run.returncode == 1


def test_finds_a_changed_byte_of_the_zip(sources, elsewhere, tmp_path):
    packed = copy(sources, tmp_path)
    content = bytearray(packed.read_bytes())
    content[len(content) // 2] ^= 1
    packed.write_bytes(content)

    run = verify(elsewhere, packed)

    assert re.fullmatch(r"Different: OrvexCleaner\.exe cannot be unpacked: .+\n", run.stdout)
    assert run.returncode == 1


def test_verifies_nothing_that_is_no_package(elsewhere, tmp_path):
    (tmp_path / PACKAGE).write_text("no zip")

    run = verify(elsewhere, tmp_path / PACKAGE)

    assert run.stdout == f"Not verifiable here: {tmp_path / PACKAGE} is no package: File is not a zip file\n"
    assert run.returncode == 2


def test_verifies_nothing_without_its_record(sources, elsewhere, tmp_path):
    packed = copy(sources, tmp_path)
    (tmp_path / RECORD).unlink()

    run = verify(elsewhere, packed)

    assert run.stdout == f"Not verifiable here: there is no record {tmp_path / RECORD}\n"
    assert run.returncode == 2


@pytest.mark.parametrize(
    "recorded, forged, told",
    [
        (r"lld-14 \(= \S+\)", "lld-14 (= 1:13.0)", r"the package was made with lld-14 1:13\.0, and here is 1:14\S+"),
        (r"lld-14 \(= \S+\)", "lld-99 (= 1:99)", r"the package was made with lld-99 1:99, and here is none"),
        (r"Commit: \S+", f"Commit: {'0' * 40}", f"commit {'0' * 40} is not in this repository"),
        (r"Commit: \S+", "Commit: ", r"\S+\.buildinfo names no commit"),
    ],
)
def test_verifies_nothing_that_cannot_be_made_here(sources, elsewhere, tmp_path, recorded, forged, told):
    packed = copy(sources, tmp_path)
    record = tmp_path / RECORD
    record.write_text(re.sub(recorded, forged, record.read_text()))

    run = verify(elsewhere, packed)

    assert re.fullmatch(f"Not verifiable here: {told}\n", run.stdout)
    assert run.returncode == 2


def copy(sources: Path, folder: Path) -> Path:
    """A copy of the package with its record."""
    shutil.copy(sources / "dist" / RECORD, folder)
    return Path(shutil.copy(sources / "dist" / PACKAGE, folder))


def changed(sources: Path, folder: Path, name: str, at: int) -> Path:
    """A copy of the package in which one byte of this file is another."""
    packed = copy(sources, folder)
    content = bytearray(content_of(packed)[name])
    content[at] ^= 1
    replace(packed, name, content)
    return packed


def replace(packed: Path, name: str, replacement: bytes):
    content = content_of(packed) | {name: bytes(replacement)}
    with zipfile.ZipFile(packed, "w") as archive:
        for entry in content:
            archive.writestr(entry, content[entry])


def words(text: str) -> str:
    """The text without its layout: line ends, indentation, and the signs of comments and of empty lines."""
    return " ".join(word for word in text.split() if word not in {"//", "*", "/*", "*/", "."})

"""scripts/package and scripts/verify-package, run in fresh clones.

Most of them package the next release: a commit that changes the version and the support address, since
scripts/package signs nothing without a real support address.
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

from npm import needs_npm, output_of_node
from project import SUPPORT, TOP, output_of
from release import BUILD_TAG, IS_MADE_HERE, SUPPORT_ADDRESS, VERSION

MAJOR_MINOR, _, PATCH = VERSION.rpartition(".")
NEXT_VERSION = f"{MAJOR_MINOR}.{int(PATCH) + 1}"
NEXT_ADDRESS = "next@tessaraworks.test"

PACKAGE = f"OrvexCleaner-{NEXT_VERSION}-windows-x64.zip"
RECORD = f"OrvexCleaner-{NEXT_VERSION}.buildinfo"
UNSTRIPPED = f"OrvexCleaner-{NEXT_VERSION}-unstripped.exe"
MAP = f"OrvexCleaner-{NEXT_VERSION}.map"
CONTENTS = ["OrvexCleaner.exe", "guide.txt", "third-party-notices.txt", "OrvexCleaner.cdx.json", "SHA256SUMS"]

SOFTHSM = "/usr/lib/softhsm/libsofthsm2.so"
IN_A_FILE = ["--sign", "release.p12"]
ON_A_TOKEN = ["--pkcs11-module", SOFTHSM, "--key", "pkcs11:token=Orvex;object=release", "--certificate", "release.pem"]
NOT_VERIFIED = "the signature of OrvexCleaner.exe does not verify against its certificate"
NOTICES = "docs/third-party-notices.txt"
FOREIGN_TOOLS = (
    "scripts/package: these are not the tools and the JUCE of Debian 12, so that the package has other bytes\n"
)

pytestmark = pytest.mark.xdist_group("package")  # one worker makes the package that all of them inspect


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
    sources: Path, *options, password: str | None = None, stdin=subprocess.DEVNULL, cwd: Path | None = None
) -> subprocess.CompletedProcess:
    """Runs scripts/package, without a terminal unless one is given, and drops its warning about foreign tools."""
    environment = {name: value for name, value in os.environ.items() if name != "ORVEX_SIGN_PASSWORD"}
    environment |= {} if password is None else {"ORVEX_SIGN_PASSWORD": password}
    command = [sources / "scripts" / "package", *options]
    run = subprocess.run(command, env=environment, stdin=stdin, cwd=cwd, capture_output=True, text=True)
    run.stderr = run.stderr if IS_MADE_HERE else run.stderr.replace(FOREIGN_TOOLS, "", 1)
    return run


def verify(sources: Path, packed: Path, with_clock=()) -> tuple[str, int]:
    """Runs scripts/verify-package of these sources, and returns its output and its exit code."""
    command = [*with_clock, sources / "scripts" / "verify-package", packed]
    run = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
    return run.stdout, run.returncode


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
    return clone(tmp_path_factory.mktemp("elsewhere") / "a folder with spaces" / "Orvex Cleaner", sources)


@pytest.fixture(scope="module")
def verified(sources, elsewhere):
    """The result of scripts/verify-package, which rebuilds the package in another folder and years later."""
    return verify(elsewhere, sources / "dist" / PACKAGE, with_clock=["faketime", "-f", "+2000d"])


@pytest.fixture(scope="module")
def content(sources):
    """The files in the package."""
    return content_of(sources / "dist" / PACKAGE)


@pytest.fixture
def packed(sources, tmp_path):
    """A copy of the package with its record."""
    shutil.copy(sources / "dist" / RECORD, tmp_path)
    return Path(shutil.copy(sources / "dist" / PACKAGE, tmp_path))


@pytest.fixture(scope="module")
def keys(tmp_path_factory):
    """A folder with throwaway certificates with the password "secret".

    The release certificate has its key in a file and on a token. It comes with its issuer, without its root.
    """
    folder = tmp_path_factory.mktemp("keys")
    make_certificate(folder, "root", "codeSigning")
    make_certificate(folder, "issuer", "codeSigning", "-CA", "root.pem", "-CAkey", "root.key")
    make_certificate(folder, "release", "codeSigning", "-CA", "issuer.pem", "-CAkey", "issuer.key")
    make_certificate(folder, "expired", "codeSigning", with_clock=["faketime", "-f", "-9d"])
    make_certificate(folder, "time", "critical,timeStamping")

    make_key_file(folder, "expired.p12", "expired")
    make_key_file(folder, "without_issuer.p12", "release")
    with (folder / "release.pem").open("a") as certificates:
        certificates.write((folder / "issuer.pem").read_text())
    make_key_file(folder, "release.p12", "release")

    (folder / "tokens").mkdir()
    (folder / "softhsm2.conf").write_text(f"directories.tokendir = {folder}/tokens\n")

    with pytest.MonkeyPatch.context() as patch:
        patch.setenv("SOFTHSM2_CONF", str(folder / "softhsm2.conf"))
        token = ["softhsm2-util", "--pin=secret"]
        output_of(*token, "--init-token", "--free", "--label=Orvex", "--so-pin=secret")
        output_of(*token, f"--import={folder}/release.key", "--token=Orvex", "--label=release", "--id=01")
        yield folder


def make_certificate(folder: Path, name: str, usage: str, *options: str, with_clock=()):
    make = [*with_clock, "openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", *options]
    make += ["-subj", f"/CN=Throwaway {name}", "-addext", f"extendedKeyUsage={usage}"]
    output_of(*make, "-keyout", f"{name}.key", "-out", f"{name}.pem", cwd=folder)


def make_key_file(folder: Path, file: str, name: str):
    make = ["openssl", "pkcs12", "-export", "-passout", "pass:secret", "-out", file]
    output_of(*make, "-inkey", f"{name}.key", "-in", f"{name}.pem", cwd=folder)


@pytest.fixture
def time_server(keys, tmp_path):
    """The address of a time stamp server."""
    (tmp_path / "demoCA").mkdir()  # where OpenSSL keeps the last serial number

    class Server(http.server.BaseHTTPRequestHandler):
        def do_POST(self):
            (tmp_path / "query").write_bytes(self.rfile.read(int(self.headers["Content-Length"])))
            reply = ["openssl", "ts", "-reply", "-queryfile", "query", "-inkey", keys / "time.key"]
            reply += ["-signer", keys / "time.pem", "-chain", keys / "time.pem"]
            answer = subprocess.run(reply, cwd=tmp_path, check=True, capture_output=True).stdout
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


def signature_of(packed: Path, keys: Path, folder: Path) -> str:
    """Returns osslsigncode's report on the signature in a package; fails if the signature is not good."""
    (folder / "signed.exe").write_bytes(content_of(packed)["OrvexCleaner.exe"])
    certificates = ["-CAfile", keys / "root.pem", "-TSA-CAfile", keys / "time.pem"]
    return output_of("osslsigncode", "verify", *certificates, folder / "signed.exe")


def content_of(packed: Path) -> dict[str, bytes]:
    with zipfile.ZipFile(packed) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def sum_of(content: bytes) -> str:
    return hashlib.sha256(content).hexdigest()


def head_of(sources: Path) -> str:
    return output_of("git", "rev-parse", "HEAD", cwd=sources)


def test_makes_the_same_bytes_in_any_folder_at_any_time(sources, elsewhere, verified):
    again = elsewhere / "build" / "verify" / "dist" / head_of(sources).strip()

    made = {file.name: file.read_bytes() for file in (sources / "dist").iterdir()}

    assert set(made) == {PACKAGE, PACKAGE + ".sha256", RECORD, UNSTRIPPED, MAP}
    assert [name for name in made if made[name] != (again / name).read_bytes()] == []


def test_packs_the_executable_the_guide_the_notices_the_bill_and_their_sums(sources, content):
    show_time = ["git", "log", "-1", "--format=%cd", "--date=format-local:%Y %m %d %H %M %S"]
    *minute, second = map(int, output_of(*show_time, cwd=sources, env=os.environ | {"TZ": "UTC"}).split())

    with zipfile.ZipFile(sources / "dist" / PACKAGE) as archive:
        entries = archive.infolist()
    guide = (sources / "docs" / "guide.md").read_bytes().replace(b"\n", b"\r\n")

    assert list(content) == CONTENTS
    assert {entry.date_time for entry in entries} == {
        (*minute, second // 2 * 2)
    }  # a zip file stores time in steps of two seconds
    assert {(oct(entry.external_attr >> 16), entry.extra) for entry in entries} == {("0o100644", b"")}
    assert content["OrvexCleaner.exe"] == (sources / "build" / "package" / "OrvexCleaner.exe").read_bytes()
    assert content["guide.txt"] == guide.replace(b"@ORVEX_CLEANER_SUPPORT_ADDRESS@", NEXT_ADDRESS.encode())
    assert content["third-party-notices.txt"] == (TOP / NOTICES).read_bytes().replace(b"\n", b"\r\n")


def test_takes_version_tag_and_support_address_from_one_place(content):
    executable = content["OrvexCleaner.exe"]

    assert executable.count("\0".join(NEXT_VERSION).encode() + b"\0\0\0") == 2  # of the file and of the product
    assert f'version="{NEXT_VERSION}.0"'.encode() in executable
    assert [text for text in (NEXT_VERSION, BUILD_TAG, NEXT_ADDRESS) if text.encode() not in executable] == []
    assert [text for text in (VERSION, SUPPORT_ADDRESS) if text.encode() in executable] == []


def test_packs_the_program_that_all_other_tests_run(windows_executable, tmp_path):
    if output_of("git", "status", "--porcelain", cwd=TOP):
        pytest.skip("the other tests run a program that is not the committed one")

    run = package(clone(tmp_path / "clone"), "--output", tmp_path)

    assert run.returncode == 0, run.stderr
    packed = content_of(tmp_path / f"OrvexCleaner-{VERSION}-windows-x64.zip")
    assert packed["OrvexCleaner.exe"] == windows_executable.read_bytes()


@pytest.mark.skipif(not IS_MADE_HERE, reason="names packages of Debian 12")
def test_records_the_tools_that_made_the_package(sources):
    packed = sources / "dist" / PACKAGE
    record = (sources / "dist" / RECORD).read_text()

    (tools,) = re.fullmatch(
        r"Commit: \w+\nInstalled:\n((?: \S+ \(= \S+\)\n)+)Checksums-Sha256:\n(?: \w+  \S+\n)+", record
    ).groups()

    tools = set(re.findall(r"^ ([^\s:]+)", tools, re.MULTILINE))
    assert {"clang-14", "lld-14", "libllvm14", "mingw-w64-common", "juce-modules-source-data", "zip"} <= tools
    assert packed.with_name(f"{PACKAGE}.sha256").read_text() == f"{sum_of(packed.read_bytes())}  {PACKAGE}\n"


def test_keeps_the_files_that_resolve_addresses_in_a_crash_report(sources, content, tmp_path):
    unstripped = sources / "dist" / UNSTRIPPED
    symbol = "_ZNK4juce4File17deleteRecursivelyEb"
    (address,) = re.findall(rf" {symbol} +([0-9a-f]{{16}}) +libjuce_core:", (sources / "dist" / MAP).read_text())
    offset = hex(int(address, 16) - 0x140000000 + 20)

    told = output_of("llvm-symbolizer", "--obj", unstripped, "--relative-address", offset)
    subprocess.run(["llvm-strip", unstripped, "-o", tmp_path / "stripped.exe"], check=True)

    assert told.startswith("juce::File::deleteRecursively(bool) const\n")
    assert (tmp_path / "stripped.exe").read_bytes() == content["OrvexCleaner.exe"]


@pytest.mark.skipif(not IS_MADE_HERE, reason="names packages of Debian 12")
def test_the_bill_lists_everything_that_is_linked_in(content):
    bill = json.loads(content["OrvexCleaner.cdx.json"])
    gcc, cpp, mingw = "gcc-mingw-w64-x86-64-posix", "g++-mingw-w64-x86-64-posix", "mingw-w64-x86-64-dev"
    gcc_licence = "GPL-3.0-or-later WITH GCC-exception-3.1"
    own_licences = "LicenseRef-Lucent AND LicenseRef-David-Gay AND LicenseRef-Keith-Marshall"

    assert bill["metadata"]["component"]["version"] == NEXT_VERSION
    assert [(part["name"], part["version"], part["licenses"][0]["expression"]) for part in bill["components"]] == [
        ("juce_core", version_of("juce-modules-source-data"), "ISC"),
        ("zlib", version_of("libz-mingw-w64-dev"), "Zlib"),
        ("libiberty", version_of(cpp), "GPL-2.0-or-later WITH GCC-exception-2.0"),
        ("libstdc++", version_of(cpp), f"{gcc_licence} AND HPND-sell-variant"),
        ("libgcc", version_of(gcc), gcc_licence),
        ("winpthreads", version_of(mingw), "MIT AND BSD-3-Clause"),
        ("mingw-w64", version_of(mingw), f"ZPL-2.1 AND {own_licences}"),
    ]


@needs_npm
def test_the_bill_is_valid_cyclonedx(content):
    bill = content["OrvexCleaner.cdx.json"]

    assert validated(bill) == "valid\n"
    assert "must have required property 'type'" in validated(bill.replace(b'"type"', b'"kind"'))
    assert "Unexpected `E`" in validated(bill.replace(b'"ISC"', b'"ISC OR ELSE"'))


@pytest.mark.parametrize(
    ("linked", "named", "told"),
    [
        (
            "libpng:",
            "zlib\n----\n",
            "libpng:adler32.o is linked into the program, and no component in the table has it\n",
        ),
        ("libz:", "", "zlib is linked into the program, and the notices have no 'zlib'\n"),
    ],
    ids=["linked", "noticed"],
)
def test_makes_no_bill_of_a_component_missing_from_its_table_or_the_notices(sources, tmp_path, linked, named, told):
    (tmp_path / "map").write_text((sources / "dist" / MAP).read_text().replace(" libz:", f" {linked}"))
    (tmp_path / "notices").write_text((TOP / NOTICES).read_text().replace("zlib\n----\n", named))

    bill = [SUPPORT / "bill-of-materials", "map", "notices", VERSION, "2026-11-21T00:00:00Z", "7.0.5"]
    run = subprocess.run(bill, cwd=tmp_path, capture_output=True, text=True)

    assert run.stderr == told
    assert run.returncode == 1


def version_of(name: str) -> str:
    """The upstream version of a Debian package."""
    return re.match(r"[\d.]+", output_of("dpkg-query", "--show", "--showformat", "${Version}", name))[0]


def validated(bill: bytes) -> str:
    """Returns "valid" for a bill, or the error."""
    return output_of_node(TOP / "tests" / "repository" / "validate-bill.js", input=bill.decode())


@pytest.mark.skipif(not IS_MADE_HERE, reason="reads the texts of Debian 12's packages")
def test_quotes_the_licences_of_linked_code_word_for_word():
    documents = Path("/usr/share/doc")
    files = [
        documents / name / "copyright" for name in ("libz-mingw-w64-dev", "gcc-mingw-w64-base", "mingw-w64-common")
    ]
    files.append(Path("/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++/bits/stl_algo.h"))
    files.append(Path("/usr/share/juce/modules/juce_core/juce_core.h"))
    originals = " ".join(words(file.read_text()) for file in files)

    notices = (TOP / "docs" / "third-party-notices.txt").read_text()

    assert re.findall(r"^(.+)\n-+\n", notices, re.MULTILINE) == [
        "JUCE, the module juce_core",
        "zlib",
        "The runtime libraries of GCC: libgcc and libstdc++",
        "libiberty, the demangler of GCC",
        "The runtime of mingw-w64",
        "winpthreads, the threads of mingw-w64",
    ]
    # The demangler's notice comes from its source, which no Debian package contains.
    demangler = re.compile(r"^libiberty, .*?(?=^The runtime of mingw-w64)", re.DOTALL | re.MULTILINE)
    quoted = re.findall(r"^    .+\n(?:    .+\n)*", demangler.sub("", notices), re.MULTILINE)
    assert [words(q)[:40] for q in quoted if not q.startswith("    Copyright") and words(q) not in originals] == []


def test_signs_the_executable_with_a_key_in_a_file_and_asks_for_its_password(sources, elsewhere, keys, tmp_path):
    person, terminal = os.openpty()
    os.write(person, b"secret\n")

    run = package(sources, *IN_A_FILE, "--no-timestamp", "--output", tmp_path, stdin=terminal, cwd=keys)
    os.close(person)
    os.close(terminal)

    is_signed(run, f"Password of {keys}/release.p12: \n", sources, elsewhere, keys, tmp_path)


def test_signs_the_executable_with_a_key_on_a_token(sources, elsewhere, keys, tmp_path):
    run = package(sources, *ON_A_TOKEN, "--no-timestamp", "--output", tmp_path, password="secret", cwd=keys)

    is_signed(run, "", sources, elsewhere, keys, tmp_path)


def is_signed(run, opening: str, sources: Path, elsewhere: Path, keys: Path, folder: Path):
    packed = folder / PACKAGE
    said = ["Building the program for Windows", "Signing OrvexCleaner.exe", f"Packing {PACKAGE}", f"Made {packed}"]
    assert run.stderr == opening + "".join(f"{line}\n" for line in said)
    assert run.stdout == ""
    assert run.returncode == 0

    signature = signature_of(packed, keys, folder)
    assert "Signature verification: ok" in signature
    assert "Timestamp is not available" in signature

    of_whom = "apart from the signature, which is that of /CN=Throwaway release"
    assert verify(elsewhere, packed) == (f"Verified {of_whom}: commit {head_of(sources)}", 0)


def test_time_stamps_the_signature_on_demand(sources, keys, time_server, tmp_path):
    options = ["--timestamp", time_server, "--output", tmp_path]

    run = package(sources, *IN_A_FILE, *options, password="secret", cwd=keys)

    assert run.returncode == 0, run.stderr
    assert f"Signing OrvexCleaner.exe, with the time of {time_server}\n" in run.stderr

    signature = signature_of(tmp_path / PACKAGE, keys, tmp_path)
    assert "Timestamp Server Signature verification: ok" in signature
    assert "Signature verification: ok" in signature


@pytest.mark.parametrize(
    ("options", "password", "told"),
    [
        (["--sign", "missing.p12", "--no-timestamp"], "secret", "there is nothing to read in {keys}/missing.p12"),
        (
            [*IN_A_FILE, "--no-timestamp"],
            "guessed",
            "the password does not open {keys}/release.p12, or it is no PKCS#12 file",
        ),
        (
            [*IN_A_FILE, "--no-timestamp"],
            None,
            "there is no terminal to ask for the password of {keys}/release.p12: set ORVEX_SIGN_PASSWORD",
        ),
        ([*IN_A_FILE, "--timestamp", "http://127.0.0.1:9/"], "secret", "OrvexCleaner.exe cannot be signed"),
    ],
    ids=["without_the_certificate", "wrong_password", "no_password", "no_time"],
)
def test_makes_no_package_that_it_cannot_sign(sources, keys, tmp_path, options, password, told):
    run = package(sources, *options, "--output", tmp_path / "signed", password=password, cwd=keys)

    no_package_made(run, tmp_path / "signed", told.format(keys=keys))


def test_makes_no_package_with_a_wrong_pin(sources, keys, tmp_path):
    options = ["--no-timestamp", "--output", tmp_path / "signed"]

    run = package(sources, *ON_A_TOKEN, *options, password="guessed", cwd=keys)

    assert "PIN incorrect" in run.stderr
    no_package_made(run, tmp_path / "signed", "OrvexCleaner.exe cannot be signed")


@pytest.mark.parametrize("key", ["expired.p12", "without_issuer.p12"])
def test_packs_no_signature_with_a_bad_certificate(sources, keys, tmp_path, key):
    options = ["--sign", key, "--no-timestamp", "--output", tmp_path / "signed"]

    run = package(sources, *options, password="secret", cwd=keys)

    no_package_made(run, tmp_path / "signed", NOT_VERIFIED)


def test_packs_no_signature_that_does_not_match_the_executable(sources, keys, tmp_path, monkeypatch):
    signs_badly = tmp_path / "osslsigncode"
    signs_badly.write_text(
        f"""#!/bin/bash
        {shutil.which("osslsigncode")} "$@" || exit
        [ "$1" != sign ] || printf damaged | dd of="${{@: -1}}" bs=1 seek=32768 conv=notrunc status=none
        """
    )
    signs_badly.chmod(0o755)
    monkeypatch.setenv("PATH", str(tmp_path), prepend=os.pathsep)
    options = ["--no-timestamp", "--output", tmp_path / "signed"]

    run = package(sources, *IN_A_FILE, *options, password="secret", cwd=keys)

    no_package_made(run, tmp_path / "signed", NOT_VERIFIED)


def test_does_not_sign_without_a_real_support_address(sources, keys, tmp_path):
    unsupported = clone(tmp_path / "clone", sources)
    commit_settings(unsupported, {NEXT_ADDRESS: "support@tessaraworks.example"})

    options = ["--no-timestamp", "--output", tmp_path / "signed"]
    run = package(unsupported, *IN_A_FILE, *options, password="secret", cwd=keys)

    told = "nobody can write to the support address in CMakeLists.txt, so the program is not signed"
    no_package_made(run, tmp_path / "signed", told)


def no_package_made(run: subprocess.CompletedProcess, output: Path, reason: str):
    assert run.stderr.endswith(f"scripts/package: {reason}\nNo package was made.\n")
    assert run.returncode == 1
    assert not output.exists()


@pytest.mark.parametrize(
    ("options", "told"),
    [
        (ON_A_TOKEN[2:4], "--pkcs11-module, --key and --certificate go together"),
        (ON_A_TOKEN[:2] + ON_A_TOKEN[4:], "--pkcs11-module, --key and --certificate go together"),
        (IN_A_FILE + ON_A_TOKEN, "the key is in a file or on a token, not both"),
        (IN_A_FILE, "a signature without --timestamp ends with its certificate; if that is meant, say --no-timestamp"),
        (
            [*IN_A_FILE, "--timestamp", "http://127.0.0.1:9/", "--no-timestamp"],
            "--timestamp and --no-timestamp exclude each other",
        ),
        (["--timestamp", "http://127.0.0.1:9/"], "--timestamp and --no-timestamp go with a signature"),
        (["--no-timestamp"], "--timestamp and --no-timestamp go with a signature"),
        (["--sign"], "--sign needs a value"),
        (["--singn"], "there is no option '--singn'"),
    ],
)
def test_refuses_unknown_incomplete_and_contradictory_options(sources, options, told):
    run = package(sources, *options)

    assert run.stderr.startswith(f"scripts/package: {told}\nUsage: scripts/package ")
    assert run.returncode == 2


def test_makes_no_package_of_uncommitted_files_and_warns_of_a_foreign_juce(tmp_path, monkeypatch):
    changed = clone(tmp_path / "clone")
    (changed / "CMakeLists.txt").write_text("changed")
    (changed / "notes.txt").write_text("new")
    monkeypatch.setenv("ORVEX_JUCE_MODULES_DIR", "/juce/modules")

    run = subprocess.run([changed / "scripts" / "package"], capture_output=True, text=True)

    told = "scripts/package: these files are not as they are committed, and a package is made of a commit:"
    assert run.stderr == f"{FOREIGN_TOOLS}{told}\n M CMakeLists.txt\n?? notes.txt\nNo package was made.\n"
    assert run.returncode == 1
    assert not (changed / "dist").exists()


def test_prints_its_usage(sources):
    run = package(sources, "--help")

    assert run.stdout.startswith("Usage: scripts/package [--output FOLDER]\n")
    assert run.stderr == ""
    assert run.returncode == 0


def test_verifies_a_package_without_a_signature(sources, verified):
    assert verified == (f"Verified: commit {head_of(sources)}", 0)


def test_finds_a_changed_byte_under_a_signature(elsewhere, packed, keys, tmp_path):
    plain, signed = tmp_path / "plain.exe", tmp_path / "signed.exe"
    plain.write_bytes(changed(content_of(packed)["OrvexCleaner.exe"], at=0x8000))
    key = ["-pkcs12", keys / "release.p12", "-pass", "secret"]
    output_of("osslsigncode", "sign", *key, "-in", plain, "-out", signed)

    pack(packed, content_of(packed) | {"OrvexCleaner.exe": signed.read_bytes()})
    with_the_signature = verify(elsewhere, packed)
    change_file(packed, "OrvexCleaner.exe", at=0x8000)  # as it was before
    without_the_change = verify(elsewhere, packed)

    assert with_the_signature == ("Different: OrvexCleaner.exe, at byte 32769\n", 1)
    told = "Different: the signature of OrvexCleaner.exe is not of this executable\n"
    assert without_the_change == (told, 1)


# The expected message, as a regular expression, and the change to the package that causes it.
DIFFERENT = {
    "OrvexCleaner.exe, at byte 1002": lambda packed: change_file(packed, "OrvexCleaner.exe", at=0x3E9),
    "guide.txt, at byte 1002": lambda packed: change_file(packed, "guide.txt", at=0x3E9),
    f"the package has other files: {', '.join([*CONTENTS, 'winmm.dll'])}": (
        lambda packed: pack(packed, content_of(packed) | {"winmm.dll": b"planted"})
    ),
    r"OrvexCleaner\.exe cannot be unpacked": (
        lambda packed: packed.write_bytes(changed(packed.read_bytes(), at=packed.stat().st_size // 2))
    ),
    "the sums in the record are not those of the package": (
        lambda packed: change_record(packed, f"[0-9a-f]+(?=  {PACKAGE})", sum_of(b"another"))
    ),
}
NOT_VERIFIABLE = {
    r"\S+\.zip is no package": lambda packed: packed.write_text("no zip"),
    r"there is no record \S+\.buildinfo": lambda packed: packed.with_name(RECORD).unlink(),
    r"the package was made with lld-\d+ 1:9\.0, and here is 1:\d\d\S+": (
        lambda packed: change_record(packed, r"(lld-\d+) \(= \S+\)", r"\1 (= 1:9.0)")
    ),
    "the package was made with lld-99 1:99, and here is none": (
        lambda packed: change_record(packed, r"lld-\d+ \(= \S+\)", "lld-99 (= 1:99)")
    ),
    "commit 0{40} is not in this repository": (
        lambda packed: change_record(packed, r"Commit: \S+", f"Commit: {'0' * 40}")
    ),
    r"\S+\.buildinfo names no commit": lambda packed: change_record(packed, r"Commit: \S+", "Commit: "),
}


@pytest.mark.parametrize("told", DIFFERENT)
def test_reports_any_difference_from_the_commit(elsewhere, packed, told):
    DIFFERENT[told](packed)

    said, exit_code = verify(elsewhere, packed)

    assert re.fullmatch(f"Different: {told}\n", said)
    assert exit_code == 1


@pytest.mark.parametrize("told", NOT_VERIFIABLE)
def test_verifies_nothing_that_it_cannot_rebuild(elsewhere, packed, told):
    NOT_VERIFIABLE[told](packed)

    said, exit_code = verify(elsewhere, packed)

    assert re.fullmatch(f"Not verifiable here: {told}\n", said)
    assert exit_code == 2


def changed(content: bytes, at: int) -> bytes:
    """The content with the byte at this offset changed."""
    return content[:at] + bytes([content[at] ^ 1]) + content[at + 1 :]


def change_file(packed: Path, name: str, at: int):
    content = content_of(packed)
    pack(packed, content | {name: changed(content[name], at)})


def pack(packed: Path, content: dict[str, bytes]):
    with zipfile.ZipFile(packed, "w") as archive:
        for name in content:
            archive.writestr(name, content[name])


def change_record(packed: Path, recorded: str, forged: str):
    record = packed.with_name(RECORD)
    record.write_text(re.sub(recorded, forged, record.read_text()))


def words(text: str) -> str:
    """The text without its layout: line ends, indentation, and the markers of comments and of empty lines."""
    return " ".join(word for word in text.split() if word not in {"//", "*", "/*", "*/", "."})

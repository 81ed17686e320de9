"""What the executable for Windows is made of, read from the file itself.

Wine does not obey all of it, so that only the file can show it.
"""

import re
import struct
import subprocess
from pathlib import Path
from xml.etree import ElementTree

import pytest

from machines import BUILD, TOP, output_of
from release import IS_MADE_HERE, VERSION

# What the program may call of each DLL. All of these lie in the system's folder of every Windows from 7 to 11.
ALLOWED_IMPORTS = Path(__file__).with_name("imports.txt")


@pytest.fixture
def described(windows_executable):
    """The file's headers and tables as llvm-readobj shows them."""
    tables = ["--file-headers", "--sections", "--coff-imports", "--coff-load-config", "--coff-resources"]
    return output_of("llvm-readobj", *tables, windows_executable)


def field(described: str, name: str) -> str:
    """The value of the one field of this name."""
    (value,) = re.findall(rf"^ *{name}: (.*)$", described, re.MULTILINE)
    return value


def resource(described: str, kind: str) -> bytes:
    """The one resource of this kind."""
    (dump,) = re.findall(rf"Type: {kind} \(ID \d+\).*?Data \(\n(.*?)\n *\)", described, re.DOTALL)
    return bytes.fromhex("".join(re.findall(r"^ *[0-9A-F]+: ([0-9A-F ]+?)  \|", dump, re.MULTILINE)))


def test_is_a_console_program_for_64_bit_windows_7_and_later(described):
    assert field(described, "Machine") == "IMAGE_FILE_MACHINE_AMD64 (0x8664)"
    assert field(described, "Subsystem") == "IMAGE_SUBSYSTEM_WINDOWS_CUI (0x3)"
    versions = field(described, "MajorSubsystemVersion"), field(described, "MinorSubsystemVersion")
    assert tuple(map(int, versions)) <= (6, 1)


def test_imports_what_it_needs_and_nothing_else(described):
    allowed = re.findall(r"^(\S+)\n((?: .+\n)+)", ALLOWED_IMPORTS.read_text(), re.MULTILINE)
    allowed = {dll: set(functions.split()) for dll, functions in allowed}

    imports = re.findall(r"^(?:Delay)?Import \{\n +Name: (\S+)\n((?: .+\n)+)\}", described, re.MULTILINE)
    imports = {dll.lower(): set(re.findall(r"Symbol: (\w+)", symbols)) for dll, symbols in imports}

    assert imports.keys() == allowed.keys()
    assert {dll: functions - allowed[dll] for dll, functions in imports.items()} == dict.fromkeys(allowed, set())


def test_loads_dlls_from_the_folder_of_the_system_alone(described):
    load_library_search_system32 = 0x800

    assert int(field(described, "DependentLoadFlags"), 16) == load_library_search_system32


def test_lets_windows_choose_any_address_and_execute_no_data(described):
    flags = set(re.findall(r"IMAGE_DLL_CHARACTERISTICS_(\w+)", described))

    assert {"DYNAMIC_BASE", "HIGH_ENTROPY_VA", "NX_COMPAT"} <= flags
    assert "IMAGE_FILE_RELOCS_STRIPPED" not in described
    assert int(field(described, "BaseRelocationTableSize"), 16) > 0


def test_has_no_section_that_is_writable_and_executable(described):
    sections = re.findall(r"^  Section \{\n.*?^  \}", described, re.MULTILINE | re.DOTALL)

    assert len(sections) == int(field(described, "SectionCount"))
    assert [s for s in sections if "IMAGE_SCN_MEM_WRITE" in s and "IMAGE_SCN_MEM_EXECUTE" in s] == []


def test_has_a_stack_for_folders_as_deep_as_a_path_is_long(described):
    deepest = 32766 // 2
    bytes_of_a_call = 128  # of juce::File::deleteRecursively, optimised for size

    assert int(field(described, "SizeOfStackReserve")) >= deepest * bytes_of_a_call * 3 // 2


@pytest.mark.skipif(not IS_MADE_HERE, reason="the size is that of Debian 12's tools")
def test_is_small(windows_executable):
    assert windows_executable.stat().st_size <= 850_000


def test_tells_neither_when_nor_where_it_was_built(described, windows_executable):
    content = windows_executable.read_bytes()
    places = [str(TOP), str(Path.home()), "/usr/share/juce", "/usr/lib/gcc"]

    assert set(re.findall(r"TimeDateStamp: (.*)", described)) == {"1970-01-01 00:00:00 (0x0)"}
    assert [p for p in places if p.encode() in content or p.encode("utf-16-le") in content] == []
    assert re.findall(rb"/(?:build|home|mnt|opt|root|srv|tmp|usr|var)/[\w.+-]+", content) == []


def test_asks_for_administrator_rights_and_long_paths_and_no_code_page(described):
    manifest = ElementTree.fromstring(resource(described, "MANIFEST"))
    asm = "{urn:schemas-microsoft-com:asm.v1}"
    trust = "{urn:schemas-microsoft-com:asm.v3}"
    compatibility = "{urn:schemas-microsoft-com:compatibility.v1}"
    settings_2016 = "{http://schemas.microsoft.com/SMI/2016/WindowsSettings}"

    assert manifest.find(f"{asm}assemblyIdentity").attrib == {
        "type": "win32",
        "name": "TessaraWorks.OrvexCleaner",
        "version": f"{VERSION}.0",
        "processorArchitecture": "amd64",
    }
    assert [level.attrib for level in manifest.iter(f"{trust}requestedExecutionLevel")] == [
        {"level": "requireAdministrator", "uiAccess": "false"}
    ]
    assert {system.get("Id") for system in manifest.iter(f"{compatibility}supportedOS")} == {
        "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",  # Windows 7
        "{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",  # Windows 8
        "{1f676c76-80e1-4239-95bb-83d0f6d0da78}",  # Windows 8.1
        "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}",  # Windows 10 and 11
    }
    (settings,) = manifest.iter(f"{trust}windowsSettings")
    assert [(setting.tag, setting.text) for setting in settings] == [(f"{settings_2016}longPathAware", "true")]


def test_tells_its_name_its_maker_and_its_version(described):
    key, fixed, blocks = version_block(resource(described, "VERSIONINFO"))
    major, minor, patch = map(int, VERSION.split("."))
    numbers = [major << 16 | minor, patch << 16]

    assert key == "VS_VERSION_INFO"
    assert struct.unpack("<13I", fixed) == (
        0xFEEF04BD,  # the signature
        0x00010000,  # of this structure's version
        *numbers,  # the file's version
        *numbers,  # the product's version
        0x3F, 0,  # neither a debug nor a special build
        0x00040004,  # for Windows
        1, 0,  # an application
        0, 0,  # no date
    )  # fmt: skip
    assert blocks == [
        ("StringFileInfo", b"", [
            ("040904b0", b"", [
                ("CompanyName", text("Tessara Works"), []),
                ("FileDescription", text("Orvex Cleaner"), []),
                ("FileVersion", text(VERSION), []),
                ("InternalName", text("OrvexCleaner"), []),
                ("OriginalFilename", text("OrvexCleaner.exe"), []),
                ("ProductName", text("Orvex Cleaner"), []),
                ("ProductVersion", text(VERSION), []),
            ]),
        ]),
        ("VarFileInfo", b"", [
            ("Translation", struct.pack("<HH", 0x0409, 1200), []),
        ]),
    ]  # fmt: skip


# Visual Studio has a resource compiler of its own, which llvm-rc is written to equal.
def test_has_the_resources_that_another_compiler_makes(described, tmp_path):
    headers = "/usr/x86_64-w64-mingw32/include"
    compiled = tmp_path / "OrvexCleaner.res"

    # Named from its folder: a path from the root can look like an option, /check/... like /C.
    command = ["llvm-rc", "/I", headers, "/FO", compiled, "OrvexCleaner.rc"]
    subprocess.run(command, cwd=BUILD / "windows", check=True)

    resources = compiled.read_bytes()
    assert resource(described, "MANIFEST") in resources
    assert resource(described, "VERSIONINFO") in resources


def text(value: str) -> bytes:
    return (value + "\0").encode("utf-16-le")


def version_block(block: bytes) -> tuple[str, bytes, list]:
    """A block of a version resource: its key, its value, and the blocks in it."""
    length, value_length, is_text = struct.unpack_from("<HHH", block)
    key_end = next(i for i in range(6, length, 2) if block[i : i + 2] == b"\0\0")
    value_start = aligned(key_end + 2)
    value_end = value_start + value_length * (2 if is_text else 1)
    blocks = []
    position = aligned(value_end)

    while position < length:
        (child_length,) = struct.unpack_from("<H", block, position)
        blocks.append(version_block(block[position : position + child_length]))
        position = aligned(position + child_length)

    return block[6:key_end].decode("utf-16-le"), block[value_start:value_end], blocks


def aligned(position: int) -> int:
    return (position + 3) & ~3

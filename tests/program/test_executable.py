"""The headers, imports and resources of the Windows executable, read from the file.

Wine ignores some of them, so only the file can show them.
"""

import re
import subprocess
from pathlib import Path
from xml.etree import ElementTree

import pytest
from pefile import PE, RESOURCE_TYPE

from project import BUILD, TOP
from release import IS_MADE_HERE, VERSION

# The functions that the program may call in each DLL. Every Windows from 7 to 11 has them in its system folder.
ALLOWED_IMPORTS = Path(__file__).with_name("imports.txt")


@pytest.fixture
def image(windows_executable):
    return PE(windows_executable)


def resource(image: PE, kind: str) -> bytes:
    """The only resource of this kind."""
    entries = [entry for entry in image.DIRECTORY_ENTRY_RESOURCE.entries if entry.id == RESOURCE_TYPE[kind]]

    while hasattr(entries[0], "directory"):  # of its names, and of the languages of its name
        entries = entries[0].directory.entries

    (entry,) = entries
    return image.get_data(entry.data.struct.OffsetToData, entry.data.struct.Size)


def test_is_a_console_program_for_64_bit_windows_7_and_later(image):
    amd64 = 0x8664
    console = 3
    windows_7 = 6, 1
    header = image.OPTIONAL_HEADER

    assert image.FILE_HEADER.Machine == amd64
    assert header.Subsystem == console
    assert (header.MajorOperatingSystemVersion, header.MinorOperatingSystemVersion) == windows_7
    assert (header.MajorSubsystemVersion, header.MinorSubsystemVersion) == windows_7


def test_imports_only_the_allowed_functions(image):
    allowed = re.findall(r"^(\S+)\n((?: .+\n)+)", ALLOWED_IMPORTS.read_text(), re.MULTILINE)
    allowed = {dll: set(functions.split()) for dll, functions in allowed}

    dlls = image.DIRECTORY_ENTRY_IMPORT + getattr(image, "DIRECTORY_ENTRY_DELAY_IMPORT", [])
    imports = {dll.dll.decode().lower(): {function.name.decode() for function in dll.imports} for dll in dlls}

    assert imports.keys() == allowed.keys()
    assert {dll: functions - allowed[dll] for dll, functions in imports.items()} == dict.fromkeys(allowed, set())


def test_loads_dlls_only_from_the_system_folder(image):
    load_library_search_system32 = 0x800
    dependent_load_flags = image.DIRECTORY_ENTRY_LOAD_CONFIG.struct.get_file_offset() + 0x4E

    assert image.get_word_from_offset(dependent_load_flags) == load_library_search_system32


def test_lets_windows_choose_any_address_and_execute_no_data(image):
    assert image.OPTIONAL_HEADER.IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE
    assert image.OPTIONAL_HEADER.IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA
    assert image.OPTIONAL_HEADER.IMAGE_DLLCHARACTERISTICS_NX_COMPAT
    assert not image.FILE_HEADER.IMAGE_FILE_RELOCS_STRIPPED
    assert image.DIRECTORY_ENTRY_BASERELOC


def test_has_no_section_that_is_writable_and_executable(image):
    assert [s.Name for s in image.sections if s.IMAGE_SCN_MEM_WRITE and s.IMAGE_SCN_MEM_EXECUTE] == []


def test_has_a_stack_for_the_deepest_folder_that_a_path_can_name(image):
    deepest = 32766 // 2
    bytes_of_a_call = 128  # of juce::File::deleteRecursively, optimised for size

    assert image.OPTIONAL_HEADER.SizeOfStackReserve >= deepest * bytes_of_a_call * 3 // 2


@pytest.mark.skipif(not IS_MADE_HERE, reason="the size is that of Debian 12's tools")
def test_is_small(windows_executable):
    assert windows_executable.stat().st_size <= 850_000


def test_does_not_reveal_when_or_where_it_was_built(image, windows_executable):
    content = windows_executable.read_bytes()
    places = [f"{TOP}/src", f"{TOP}/build", str(Path.home()), "/usr/share/juce", "/usr/lib/gcc"]

    assert set(re.findall(r"TimeDateStamp: +(\S+)", image.dump_info())) == {"0x0"}
    assert [p for p in places if p.encode() in content or p.encode("utf-16-le") in content] == []
    assert re.findall(rb"/(?:build|home|mnt|opt|root|srv|tmp|usr|var)/[\w.+-]+", content) == []


def test_asks_for_administrator_rights_and_long_paths_and_no_code_page(image):
    manifest = ElementTree.fromstring(resource(image, "RT_MANIFEST"))
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


def test_states_its_name_maker_and_version(image):
    major, minor, patch = map(int, VERSION.split("."))
    numbers = major << 16 | minor, patch << 16
    (fixed,) = image.VS_FIXEDFILEINFO
    ((strings, variables),) = image.FileInfo
    (table,) = strings.StringTable
    (variable,) = variables.Var

    assert (fixed.FileVersionMS, fixed.FileVersionLS) == numbers
    assert (fixed.ProductVersionMS, fixed.ProductVersionLS) == numbers
    assert (fixed.FileFlagsMask, fixed.FileFlags) == (0x3F, 0)  # neither a debug nor a special build
    assert (fixed.FileOS, fixed.FileType, fixed.FileSubtype) == (0x00040004, 1, 0)  # an application for Windows
    assert (fixed.FileDateMS, fixed.FileDateLS) == (0, 0)
    assert table.LangID == b"040904b0"
    assert {name.decode(): value.decode() for name, value in table.entries.items()} == {
        "CompanyName": "Tessara Works",
        "FileDescription": "Orvex Cleaner",
        "FileVersion": VERSION,
        "InternalName": "OrvexCleaner",
        "LegalCopyright": "Copyright Tessara Works. All rights reserved.",
        "OriginalFilename": "OrvexCleaner.exe",
        "ProductName": "Orvex Cleaner",
        "ProductVersion": VERSION,
    }
    assert variable.entry == {b"Translation": "0x0409 0x04b0"}


# llvm-rc is written to match Visual Studio's resource compiler.
def test_has_the_resources_that_another_compiler_makes(image, tmp_path):
    headers = "/usr/x86_64-w64-mingw32/include"
    compiled = tmp_path / "OrvexCleaner.res"

    # Named relative to its folder: an absolute path can look like an option, /check/... like /C.
    command = ["llvm-rc", "/I", headers, "/FO", compiled, "OrvexCleaner.rc"]
    subprocess.run(command, cwd=BUILD / "windows", check=True)

    resources = compiled.read_bytes()
    assert resource(image, "RT_MANIFEST") in resources
    assert resource(image, "RT_VERSION") in resources

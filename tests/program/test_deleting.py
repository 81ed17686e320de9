"""What becomes of the content, whatever lies in its place."""

import subprocess

import pytest

from machines import contents_of
from texts import BANNER, FAILURE, LOG_BANNER, QUESTION, ending


def test_finds_nothing_to_remove_and_calls_it_a_success(machine):
    steps = """\
[time][Info] Cleaning: Velantone Content
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert run.revealed == [machine.shown(machine.desktop)]


def test_removes_a_file_in_the_folders_place_and_warns(machine):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.parent.mkdir()
    content.write_text("not a folder")
    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {machine.shown(content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 1
[time][Info] Velantone Content was successfully removed.
"""

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert not content.exists()


def test_removes_files_and_folders_of_any_name_and_leaves_the_neighbours_alone(machine):
    content = machine.shared_data / "TessaraWorks" / "Content"
    neighbours = [content.with_name("Content 2"), content.with_name("Contents"), machine.shared_data / "Content"]
    names = ["two words", " blank", ".hidden", "...dots", "Ночь", "音楽", "é", "🎻", "x" * 255, "a&b;%c'd'"]

    for name in names:
        (content / "Folders" / name / "empty").mkdir(parents=True)
        (content / "Folders" / name / "Legato.pack").write_text("samples")

    (content / "Files").mkdir()

    for name in names:
        (content / "Files" / name).write_text("samples")

    for neighbour in neighbours:
        neighbour.mkdir()

    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {machine.shown(content)}
[time][Info] Directory deleted: {machine.shown(content)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert not content.exists()
    assert [neighbour.is_dir() for neighbour in neighbours] == [True, True, True]


def set_attributes(windows, path, letters: str) -> None:
    """Sets the attributes of these letters and sees that they are set."""
    for letter in letters:
        windows.tool("attrib", f"+{letter}", windows.shown(path)).wait()

    shown, _ = windows.tool("attrib", windows.shown(path), stdout=subprocess.PIPE, text=True).communicate()
    assert set(letters) <= set(shown.removesuffix(windows.shown(path) + "\n")), shown


# Windows only: on Linux a hidden file is one whose name begins with a dot.
def test_removes_hidden_files_and_system_files(windows):
    content = windows.shared_data / "TessaraWorks" / "Content"
    (content / "Cache").mkdir(parents=True)
    (content / "Cache" / "index").write_text("index")
    (content / "desktop.ini").write_text("icon")
    set_attributes(windows, content / "Cache", "H")
    set_attributes(windows, content / "Cache" / "index", "H")
    set_attributes(windows, content / "desktop.ini", "SH")
    steps = r"""[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: C:\ProgramData\TessaraWorks\Content
[time][Info] Directory deleted: C:\ProgramData\TessaraWorks\Content
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    run = windows.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert not content.exists()


@pytest.mark.parametrize("undeletable", ["Legato.pack", "Packs/Strings/Legato.pack"])
def test_removes_the_rest_of_a_tree_around_a_file_that_cannot_be_deleted(machine, undeletable):
    content = machine.shared_data / "TessaraWorks" / "Content"
    (content / "Packs" / "Strings").mkdir(parents=True)
    (content / "Aaa").mkdir()
    (content / "Zzz").mkdir()

    for name in ["a", "z", "Aaa/a", "Zzz/z", "Packs/a", "Packs/z", "Packs/Strings/a", "Packs/Strings/z"]:
        (content / name).write_text("samples")

    (content / undeletable).write_text("samples")
    machine.make_undeletable(content / undeletable)
    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {machine.shown(content)}
[time][Critical] Unable to delete directory: {machine.shown(content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + QUESTION + steps
    assert [path for path in contents_of(content) if (content / path).is_file()] == [undeletable]
    assert not (content / "Aaa").exists()
    assert not (content / "Zzz").exists()


def test_fails_at_an_undeletable_file_in_the_folders_place(machine):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.parent.mkdir()
    content.write_text("not a folder")
    machine.make_undeletable(content)
    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Critical] Unable to delete file: {machine.shown(content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + QUESTION + steps
    assert content.read_text() == "not a folder"


# Windows only: Linux deletes a file although it is open.
@pytest.mark.parametrize("held", ["Legato.pack", "Packs/Strings/Legato.pack"])
def test_fails_at_a_file_that_another_program_holds_open(windows, held):
    content = windows.shared_data / "TessaraWorks" / "Content"
    held_file = content / held
    held_file.parent.mkdir(parents=True)
    held_file.write_text("samples")
    (content / "Favourites.playlist").write_text("songs")
    steps = r"""[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: C:\ProgramData\TessaraWorks\Content
[time][Critical] Unable to delete directory: C:\ProgramData\TessaraWorks\Content
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""

    with windows.held_open(held_file):
        run = windows.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + QUESTION + steps
    assert held_file.read_text() == "samples"
    assert not (content / "Favourites.playlist").exists()


def test_ends_a_failed_run_without_waiting_for_the_user(machine):
    content = machine.shared_data / "TessaraWorks" / "Content"
    content.mkdir(parents=True)
    (content / "Legato.pack").write_text("samples")
    machine.make_undeletable(content / "Legato.pack")

    with machine.start("--clean=Content", stdin=subprocess.PIPE) as process:
        process.stdin.write(b"y\n")
        process.stdin.flush()
        run = machine.outcome(process, timeout=10)

    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {machine.shown(content)}
[time][Critical] Unable to delete directory: {machine.shown(content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""
    assert run.console == BANNER + QUESTION + "Y/n? " + steps
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + QUESTION + steps


# Links are tested on Linux only: Wine shows the host's links as what they point to.


def test_removes_links_that_lead_nowhere_or_in_a_circle(linux):
    content = linux.shared_data / "TessaraWorks" / "Content"
    (content / "Packs").mkdir(parents=True)
    (content / "Packs" / "dangling").symlink_to("nowhere")
    (content / "Packs" / "self").symlink_to("self")
    (content / "Packs" / "circle").symlink_to("..")
    steps = """\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: /opt/TessaraWorks/Content
[time][Info] Directory deleted: /opt/TessaraWorks/Content
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert contents_of(content.parent) == []


def test_removes_a_link_to_the_folder_that_it_lies_in(linux):
    content = linux.shared_data / "TessaraWorks" / "Content"
    content.parent.mkdir()
    content.symlink_to(".")
    (content.parent / "Keys.txt").write_text("keys")
    steps = """\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: /opt/TessaraWorks/Content
[time][Info] Directory deleted: /opt/TessaraWorks/Content
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert contents_of(content.parent) == ["Keys.txt"]


def test_removes_a_link_to_a_file_as_a_file(linux):
    content = linux.shared_data / "TessaraWorks" / "Content"
    content.parent.mkdir()
    (content.parent / "Keys.txt").write_text("keys")
    content.symlink_to("Keys.txt")
    steps = """\
[time][Info] Cleaning: Velantone Content
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: /opt/TessaraWorks/Content
[time][Info] Directories removed: 0
[time][Info] Files removed: 1
[time][Info] Velantone Content was successfully removed.
"""

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert contents_of(content.parent) == ["Keys.txt"]


# JUCE looks through a link on Linux, so that there is nothing where it leads nowhere.
@pytest.mark.parametrize("target", ["nowhere", "Content"])
def test_finds_nothing_in_the_place_of_a_link_that_leads_nowhere(linux, target):
    content = linux.shared_data / "TessaraWorks" / "Content"
    content.parent.mkdir()
    content.symlink_to(target)
    steps = """\
[time][Info] Cleaning: Velantone Content
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert content.is_symlink()


# Windows only: on Linux the location is always known.
def test_removes_the_folder_in_the_root_of_the_current_drive_when_the_location_is_unknown(windows, drive_d):
    (windows.c / "TessaraWorks" / "Content").mkdir(parents=True)
    (drive_d / "TessaraWorks" / "Content").mkdir(parents=True)
    (drive_d / "TessaraWorks" / "Content" / "Legato.pack").write_text("samples")
    steps = r"""[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: D:\TessaraWorks\Content
[time][Info] Directory deleted: D:\TessaraWorks\Content
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""

    with windows.without("shared_data"):
        run = windows.run("--clean=Content", answers="y\n\n")

    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert contents_of(drive_d / "TessaraWorks") == []
    assert (windows.c / "TessaraWorks" / "Content").is_dir()

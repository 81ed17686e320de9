"""What becomes of the content, whatever lies in its place."""

import subprocess

import pytest

from machines import answer, contents_of, put, wait_for
from products import CONTENT
from runs import failed, succeeded
from texts import QUESTION, not_removed, removed, removed_as_files


# Windows only: on Linux, this is tried with every product.
def test_removes_a_file_in_the_folders_place_and_warns(windows):
    put(windows.content.parent, "Content")

    run = windows.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(windows, QUESTION + removed_as_files(CONTENT, windows.shown(windows.content)))
    assert not windows.content.exists()


def test_removes_files_and_folders_of_any_name_and_leaves_the_neighbours_alone(machine):
    content = machine.content
    neighbours = [content.with_name("Content 2"), content.with_name("Contents"), machine.shared_data / "Content"]
    names = ["two words", " blank", ".hidden", "...dots", "Ночь", "音楽", "é", "🎻", "x" * 255, "a&b;%c'd'"]

    for name in names:
        (content / "Folders" / name / "empty").mkdir(parents=True)
        put(content, f"Folders/{name}/Legato.pack", f"Files/{name}")

    for neighbour in neighbours:
        neighbour.mkdir()

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(machine, QUESTION + removed(CONTENT, machine.shown(content)))
    assert not content.exists()
    assert [neighbour.is_dir() for neighbour in neighbours] == [True, True, True]


def set_attributes(windows, path, letters: str) -> None:
    """Sets the attributes of these letters and sees that they are set."""
    for letter in letters:
        windows.carry_out("wine", "attrib", f"+{letter}", windows.shown(path))

    shown, _ = windows.tool("attrib", windows.shown(path), stdout=subprocess.PIPE, text=True).communicate()
    assert set(letters) <= set(shown.removesuffix(windows.shown(path) + "\n")), shown


# Windows only: on Linux a hidden file is one whose name begins with a dot.
def test_removes_hidden_files_and_system_files(windows):
    content = windows.content
    put(content, "Cache/index", "desktop.ini")
    set_attributes(windows, content / "Cache", "H")
    set_attributes(windows, content / "Cache" / "index", "H")
    set_attributes(windows, content / "desktop.ini", "SH")

    run = windows.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(windows, QUESTION + removed(CONTENT, "C:\\ProgramData\\TessaraWorks\\Content"))
    assert not content.exists()


@pytest.mark.parametrize("undeletable", ["Legato.pack", "Packs/Strings/Legato.pack"])
def test_removes_the_rest_of_a_tree_around_a_file_that_cannot_be_deleted(machine, undeletable):
    content = machine.content
    put(content, "a", "z", "Aaa/a", "Zzz/z", "Packs/a", "Packs/z", "Packs/Strings/a", "Packs/Strings/z", undeletable)
    machine.make_undeletable(content / undeletable)

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run == failed(QUESTION + not_removed(CONTENT, machine.shown(content)))
    assert [path for path in contents_of(content) if (content / path).is_file()] == [undeletable]
    assert not (content / "Aaa").exists()
    assert not (content / "Zzz").exists()


def test_fails_at_an_undeletable_file_in_the_folders_place(machine):
    put(machine.content.parent, "Content")
    machine.make_undeletable(machine.content)

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run == failed(
        QUESTION
        + f"""\
[time][Info] Cleaning: Velantone Content
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Critical] Unable to delete file: {machine.shown(machine.content)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content encountered errors and could not be removed.
"""
    )
    assert machine.content.read_text() == "data"


# Windows only: Linux deletes a file although it is open.
@pytest.mark.parametrize("held", ["Legato.pack", "Packs/Strings/Legato.pack"])
def test_fails_at_a_file_that_another_program_holds_open(windows, held):
    put(windows.content, held, "Favourites.playlist")

    with windows.held_open(windows.content / held):
        run = windows.run("--clean=Content", answers="y\n\n")

    assert run == failed(QUESTION + not_removed(CONTENT, "C:\\ProgramData\\TessaraWorks\\Content"))
    assert [path for path in contents_of(windows.content) if (windows.content / path).is_file()] == [held]
    assert (windows.content / held).read_text() == "data"


def test_ends_a_failed_run_without_waiting_for_the_user_and_does_not_show_its_log_file(machine):
    put(machine.content, "Legato.pack")
    machine.make_undeletable(machine.content / "Legato.pack")

    with machine.start("--clean=Content", stdin=subprocess.PIPE) as process:
        answer(process, b"y\n")
        run = machine.outcome(process, timeout=10)

    assert run == failed(QUESTION + not_removed(CONTENT, machine.shown(machine.content)))
    assert wait_for(machine.shown_folders, seconds=1) == []


# Windows only: on Linux the location is always known.
def test_removes_the_folder_in_the_root_of_the_current_drive_when_the_location_is_unknown(windows, drive_d):
    (windows.c / "TessaraWorks" / "Content").mkdir(parents=True)
    put(drive_d, "TessaraWorks/Content/Legato.pack")

    with windows.without("shared_data"):
        run = windows.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(windows, QUESTION + removed(CONTENT, "D:\\TessaraWorks\\Content"))
    assert contents_of(drive_d / "TessaraWorks") == []
    assert (windows.c / "TessaraWorks" / "Content").is_dir()

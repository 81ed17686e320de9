"""The deletion of the content folder, or of what is in its place."""

import pytest

from machines import contents_of, put, wait_for
from products import CONTENT
from runs import failed, succeeded
from texts import QUESTION, not_removed, removed


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


def test_fails_at_an_undeletable_file_in_the_folders_place_and_does_not_show_its_log_file(machine):
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

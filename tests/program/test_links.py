"""Links are removed, and what they point to stays."""

from texts import BANNER, LOG_BANNER, QUESTION, ending


def test_removes_a_link_that_is_listed_and_leaves_its_target_alone(linux):
    samples = linux.root / "home/user/Samples"
    samples.mkdir()
    (samples / "Legato.pack").write_text("samples")
    link = linux.shared_data / "TessaraWorks" / "Content"
    link.parent.mkdir()
    link.symlink_to("/home/user/Samples")

    run = linux.run("--clean=Content", answers="y\n\n")

    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {linux.shown(link)}
[time][Info] Directory deleted: {linux.shown(link)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""
    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert not link.is_symlink()
    assert (samples / "Legato.pack").read_text() == "samples"


def test_removes_a_link_deep_in_a_folder_and_leaves_its_target_alone(linux):
    samples = linux.root / "home/user/Samples"
    samples.mkdir()
    (samples / "Legato.pack").write_text("samples")
    (samples / "Notes.txt").write_text("notes")
    content = linux.shared_data / "TessaraWorks" / "Content"
    (content / "Packs" / "Strings").mkdir(parents=True)
    (content / "Packs" / "Strings" / "Mine").symlink_to("/home/user/Samples")
    (content / "Packs" / "Strings" / "Notes.txt").symlink_to("/home/user/Samples/Notes.txt")

    run = linux.run("--clean=Content", answers="y\n\n")

    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {linux.shown(content)}
[time][Info] Directory deleted: {linux.shown(content)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""
    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert not content.exists()
    assert (samples / "Legato.pack").read_text() == "samples"
    assert (samples / "Notes.txt").read_text() == "notes"


def test_follows_a_link_that_is_above_an_entry(linux):
    other_drive = linux.root / "home/user/OtherDrive"
    (other_drive / "Content").mkdir(parents=True)
    (other_drive / "Diary.txt").write_text("diary")
    link = linux.shared_data / "TessaraWorks"
    link.symlink_to("/home/user/OtherDrive")

    run = linux.run("--clean=Content", answers="y\n\n")

    steps = f"""\
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {linux.shown(link / "Content")}
[time][Info] Directory deleted: {linux.shown(link / "Content")}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""
    assert run.console == BANNER + QUESTION + "Y/n? " + steps + ending(linux)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + QUESTION + steps
    assert not (other_drive / "Content").exists()
    assert (other_drive / "Diary.txt").read_text() == "diary"
    assert link.is_symlink()

"""--clean=Content from end to end."""

from machines import put
from runs import Run


def test_removes_the_content_folder_after_a_yes(machine):
    content = machine.content
    put(content, "Packs/Strings/Legato.pack", "Favourites.playlist")

    run = machine.run("--clean=Content", answers="y\n\n")

    assert run == Run(
        console=f"""\
================================================================
Orvex Cleaner
================================================================

[time][Info] Target: Content
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {machine.shown(content)}
[time][Info] Directory deleted: {machine.shown(content)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
Cleaning finished successfully.
Log file written to: {machine.shown(machine.log_file)}
Press enter to exit
""",
        errors="",
        exit_code=0,
        log=f"""\

**********************************************************
Orvex Cleaner session starting
Log started: <when>

[time][Info] Target: Content
[time][Info] Remove all Velantone content & playlist files?
[time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {machine.shown(content)}
[time][Info] Directory deleted: {machine.shown(content)}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
""",
        revealed=[machine.shown(machine.desktop)],
    )
    assert not content.exists()
    assert content.parent.is_dir()

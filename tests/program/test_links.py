"""Links are removed, and what they point to stays.

They are tested on Linux only: Wine shows the host's links as what they point to.
"""

import pytest

from machines import contents_of, put
from products import CONTENT
from runs import succeeded
from texts import QUESTION, removed, removed_as_files

SAMPLES = {"Legato.pack": "data", "Notes.txt": "data"}
REMOVED = QUESTION + removed(CONTENT, "/opt/TessaraWorks/Content")


@pytest.fixture
def content(linux):
    """Where the content would lie."""
    linux.content.parent.mkdir()
    return linux.content


@pytest.fixture
def samples(linux):
    """A folder of the user's own."""
    folder = linux.root / "home/user/Samples"
    put(folder, *SAMPLES)
    return folder


def texts_in(folder) -> dict[str, str]:
    return {file.name: file.read_text() for file in folder.iterdir()}


def test_removes_a_link_that_is_listed_and_leaves_its_target_alone(linux, content, samples):
    content.symlink_to("/home/user/Samples")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert not content.is_symlink()
    assert texts_in(samples) == SAMPLES


def test_removes_a_link_deep_in_a_folder_and_leaves_its_target_alone(linux, content, samples):
    (content / "Packs" / "Strings").mkdir(parents=True)
    (content / "Packs" / "Strings" / "Mine").symlink_to("/home/user/Samples")
    (content / "Packs" / "Strings" / "Notes.txt").symlink_to("/home/user/Samples/Notes.txt")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert not content.exists()
    assert texts_in(samples) == SAMPLES


def test_follows_a_link_that_is_above_an_entry(linux, samples):
    (samples / "Content").mkdir()
    maker = linux.shared_data / "TessaraWorks"
    maker.symlink_to("/home/user/Samples")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert texts_in(samples) == SAMPLES
    assert maker.is_symlink()


def test_removes_links_that_lead_nowhere_or_in_a_circle(linux, content):
    (content / "Packs").mkdir(parents=True)
    (content / "Packs" / "dangling").symlink_to("nowhere")
    (content / "Packs" / "self").symlink_to("self")
    (content / "Packs" / "circle").symlink_to("..")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert contents_of(content.parent) == []


def test_removes_a_link_to_the_folder_that_it_lies_in(linux, content):
    content.symlink_to(".")
    put(content.parent, "Keys.txt")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert contents_of(content.parent) == ["Keys.txt"]


def test_removes_a_link_to_a_file_as_a_file(linux, content):
    put(content.parent, "Keys.txt")
    content.symlink_to("Keys.txt")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, QUESTION + removed_as_files(CONTENT, "/opt/TessaraWorks/Content"))
    assert contents_of(content.parent) == ["Keys.txt"]


# JUCE looks through a link on Linux, so that there is nothing where it leads nowhere.
@pytest.mark.parametrize("target", ["nowhere", "Content"])
def test_finds_nothing_in_the_place_of_a_link_that_leads_nowhere(linux, content, target):
    content.symlink_to(target)

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, QUESTION + removed(CONTENT))
    assert content.is_symlink()

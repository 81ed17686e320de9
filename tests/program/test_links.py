"""Links are removed, and what they point to stays.

They are tested on Linux only: Wine shows the host's links as what they point to.
"""

import pytest

from machines import contents_of, put
from products import CONTENT
from runs import succeeded
from texts import QUESTION, removed

REMOVED = QUESTION + removed(CONTENT, "/opt/TessaraWorks/Content")


@pytest.fixture
def samples(linux):
    """A folder of the user's own."""
    folder = linux.root / "home/user/Samples"
    put(folder, "Content/Legato.pack", "Notes.txt")
    return folder


def test_removes_a_link_that_is_listed_and_leaves_its_target_alone(linux, samples):
    linux.content.parent.mkdir()
    linux.content.symlink_to("/home/user/Samples")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert contents_of(linux.content.parent) == []
    assert contents_of(samples) == ["Content", "Content/Legato.pack", "Notes.txt"]


def test_removes_a_link_deep_in_a_folder_and_leaves_its_target_alone(linux, samples):
    strings = linux.content / "Packs" / "Strings"
    strings.mkdir(parents=True)
    (strings / "Mine").symlink_to("/home/user/Samples")
    (strings / "Notes.txt").symlink_to("/home/user/Samples/Notes.txt")
    (strings / "circle").symlink_to("..")
    (strings / "nowhere").symlink_to("nowhere")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert contents_of(linux.content.parent) == []
    assert contents_of(samples) == ["Content", "Content/Legato.pack", "Notes.txt"]


def test_follows_a_link_that_is_above_an_entry(linux, samples):
    linux.content.parent.symlink_to("/home/user/Samples")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert linux.content.parent.is_symlink()
    assert contents_of(samples) == ["Notes.txt"]


def test_removes_a_link_to_the_folder_that_it_lies_in(linux):
    put(linux.content.parent, "Keys.txt")
    linux.content.symlink_to(".")

    run = linux.run("--clean=Content", answers="y\n\n")

    assert run == succeeded(linux, REMOVED)
    assert contents_of(linux.content.parent) == ["Keys.txt"]

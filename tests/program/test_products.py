"""Each product from its question to its verdict, on machines that have all of it, a part, or nothing."""

import shutil
import subprocess

import pytest

from machines import contents_of, put
from products import MEDIA_SERVER, PRODUCT_MANAGER, PRODUCTS
from runs import clean, failed, succeeded
from texts import (
    YES_TO_ALL,
    cleaned,
    folder_deleted,
    folder_not_deleted,
    not_removed,
    opening,
    over_all,
    removed,
    removed_as_files,
)

ENTRIES = [(product, order) for product in PRODUCTS for order in range(len(product.table))]
LOCATIONS = [(product, base) for product in PRODUCTS for base in sorted({base for base, _ in product.table})]

each_product = pytest.mark.parametrize("product", PRODUCTS, ids=lambda product: product.name)
each_entry = pytest.mark.parametrize(
    ("product", "order"), ENTRIES, ids=[f"{product.name}-{order + 1}" for product, order in ENTRIES]
)
each_location = pytest.mark.parametrize(
    ("product", "location"), LOCATIONS, ids=[f"{product.name}-{location}" for product, location in LOCATIONS]
)


def place_folder(path):
    put(path, "Sub folder/File.dat", ".hidden")


def place_file(path):
    put(path.parent, path.name)


def test_has_the_paths_that_the_program_lists(windows):
    tool = windows.tool("C:\\tools\\ListPaths.exe", stdout=subprocess.PIPE, text=True)
    listed = [tuple(line.split("\t")) for line in tool.communicate()[0].splitlines()]

    expected = [(product.name, windows.shown(path)) for product in PRODUCTS for path in product.paths(windows)]
    assert sorted(listed, key=lambda row: [product.name for product in PRODUCTS].index(row[0])) == expected


def place_neighbours(paths):
    """Places folders and files whose names are longer than those of the paths, or shorter, by a few characters."""
    for path in paths:
        place_folder(path.with_name(f"{path.name} 2"))
        place_file(path.with_name(path.name[:-1]))


@each_product
def test_removes_all_of_the_product_and_nothing_else(machine, product):
    paths = product.paths(machine)
    place_neighbours(paths)
    before = machine.tree()

    for path in paths:
        place_folder(path)

    run = clean(machine, product)

    assert run == succeeded(machine, opening(product) + removed(product, *map(machine.shown, paths)))
    assert machine.tree() == before


@each_product
def test_removes_files_where_folders_are_expected(linux, product):
    paths = product.paths(linux)
    place_neighbours(paths)
    before = linux.tree()

    for path in paths:
        place_file(path)

    run = clean(linux, product)

    assert run == succeeded(linux, opening(product) + removed_as_files(product, *map(linux.shown, paths)))
    assert linux.tree() == before


@each_entry
def test_removes_everything_but_the_one_folder_that_holds_an_undeletable_file(linux, product, order):
    paths = product.paths(linux)

    for path in paths:
        place_folder(path)

    stubborn = paths[order]
    left = stubborn / "Sub folder" / "File.dat"
    linux.make_undeletable(left)

    run = clean(linux, product)

    steps = (folder_not_deleted if path == stubborn else folder_deleted for path in paths)
    transcript = "".join(step(linux.shown(path)) for step, path in zip(steps, paths))
    assert run == failed(opening(product) + cleaned(product, transcript))
    assert [path for path in paths if path.exists()] == [stubborn]
    assert contents_of(stubborn) == ["Sub folder", "Sub folder/File.dat"]


@each_location
def test_takes_the_root_of_the_drive_for_a_location_that_cannot_be_found(windows, product, location):
    paths = product.paths(windows, missing=[location])

    with windows.without(location):
        for path in paths:
            place_folder(path)

        run = clean(windows, product)

    assert run == succeeded(windows, opening(product) + removed(product, *map(windows.shown, paths)))
    assert [path for path in paths if path.exists()] == []


def test_lists_a_path_once_that_two_missing_locations_give(windows):
    paths = PRODUCT_MANAGER.paths(windows, missing=["program_files", "user_data"])
    undeletable = windows.c / "OrvexProductManager" / "File.dat"
    assert paths[:2] == paths[6:]

    with windows.without("program_files", "user_data"):
        place_file(undeletable)
        windows.make_undeletable(undeletable)

        run = clean(windows, PRODUCT_MANAGER)

    assert run == failed(opening(PRODUCT_MANAGER) + not_removed(PRODUCT_MANAGER, "C:\\OrvexProductManager"))


@pytest.fixture
def other_home(windows):
    """The home of an account that the program does not run as."""
    home = windows.home.with_name("another")
    yield home
    shutil.rmtree(home)


def test_leaves_the_folders_of_other_accounts_alone(windows, other_home):
    for child in (child for product in PRODUCTS for base, child in product.table if base == "user_data"):
        place_folder(other_home / "AppData" / "Roaming" / child)

    before = contents_of(other_home)
    own = MEDIA_SERVER.paths(windows)[-1]
    place_folder(own)

    run = windows.run("--clean=All", answers=YES_TO_ALL)

    outcomes = {product: removed(product) for product in PRODUCTS}
    outcomes |= {MEDIA_SERVER: removed(MEDIA_SERVER, windows.shown(own))}
    assert run == succeeded(windows, over_all(outcomes))
    assert contents_of(other_home) == before

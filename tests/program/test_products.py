"""Each product from its question to its verdict, on machines that have all of it, a part, or nothing."""

import shutil
import subprocess

import pytest

from machines import contents_of, put
from products import COMPANY, MEDIA_SERVER, PRODUCT_MANAGER, PRODUCTS
from runs import clean, failed, succeeded
from texts import (
    YES_TO_ALL,
    cleaned,
    file_not_deleted,
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


def lay_out(machine, place, paths):
    """Places something at each path. Gives what there was without that, but for the folders around it."""
    for path in paths:
        path.parent.mkdir(parents=True, exist_ok=True)

    before = machine.tree()

    for path in paths:
        place(path)

    return before


def test_has_each_path_listed_as_the_program_has_it(windows):
    tool = windows.tool("C:\\tools\\ListPaths.exe", stdout=subprocess.PIPE, text=True)
    listed = [tuple(line.split("\t")) for line in tool.communicate()[0].splitlines()]

    expected = [(product.name, windows.shown(path)) for product in PRODUCTS for path in product.paths(windows)]
    assert sorted(listed, key=lambda row: [product.name for product in PRODUCTS].index(row[0])) == expected


@each_product
def test_removes_all_of_the_product_and_nothing_else(machine, product):
    paths = product.paths(machine)
    place_folder(paths[0].with_name("Another maker"))
    before = lay_out(machine, place_folder, paths)

    run = clean(machine, product)

    assert run == succeeded(machine, opening(product) + removed(product, *map(machine.shown, paths)))
    assert machine.tree() == before


def test_removes_the_company_folders_with_all_that_other_products_keep_in_them(machine):
    folders = COMPANY.paths(machine)
    before = lay_out(machine, place_folder, folders)

    for path in (path for product in PRODUCTS for path in product.paths(machine)):
        if path.is_relative_to(folders[0]):
            path.mkdir(parents=True, exist_ok=True)

    run = clean(machine, COMPANY)

    assert run == succeeded(machine, opening(COMPANY) + removed(COMPANY, *map(machine.shown, folders)))
    assert machine.tree() == before


def test_removes_folders_and_files_side_by_side_each_as_what_it_is(linux):
    lay_out(linux, place_folder, MEDIA_SERVER.paths(linux)[:3])
    lay_out(linux, place_file, MEDIA_SERVER.paths(linux)[3:])

    run = clean(linux, MEDIA_SERVER)

    transcript = """\
[time][Info] Target: Velantone Media Server
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning: Velantone Media Server
[time][Info] Deleting directory: /opt/TessaraWorks/Applications/VelantoneMediaServer
[time][Info] Directory deleted: /opt/TessaraWorks/Applications/VelantoneMediaServer
[time][Info] Deleting directory: /opt/TessaraWorks/Applications/VelantonePlayer
[time][Info] Directory deleted: /opt/TessaraWorks/Applications/VelantonePlayer
[time][Info] Deleting directory: /home/user/.config/VelantoneMediaServer
[time][Info] Directory deleted: /home/user/.config/VelantoneMediaServer
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: /home/user/.config/VelantonePlayer
[time][Info] Directories removed: 3
[time][Info] Files removed: 1
[time][Info] Velantone Media Server was successfully removed.
"""
    assert run == succeeded(linux, transcript)


@each_product
def test_finds_nothing_to_remove_on_a_machine_without_the_product(linux, product):
    for path in product.paths(linux):
        place_folder(path.with_name(path.name + " 2"))

    before = linux.tree()

    run = clean(linux, product)

    assert run == succeeded(linux, opening(product) + removed(product))
    assert linux.tree() == before


@each_product
def test_removes_files_where_folders_are_expected(linux, product):
    paths = product.paths(linux)
    before = lay_out(linux, place_file, paths)

    run = clean(linux, product)

    assert run == succeeded(linux, opening(product) + removed_as_files(product, *map(linux.shown, paths)))
    assert linux.tree() == before


@each_entry
def test_removes_everything_but_the_one_folder_that_holds_an_undeletable_file(linux, product, order):
    paths = product.paths(linux)
    before = lay_out(linux, place_folder, paths)
    stubborn = paths[order]
    left = stubborn / "Sub folder" / "File.dat"
    linux.make_undeletable(left)

    run = clean(linux, product)

    steps = (folder_not_deleted if path == stubborn else folder_deleted for path in paths)
    transcript = "".join(step(linux.shown(path)) for step, path in zip(steps, paths))
    assert run == failed(opening(product) + cleaned(product, transcript))
    assert left.read_text() == "data"
    assert linux.tree() - before == {stubborn, left.parent, left}


@each_product
def test_could_not_remove_a_product_that_is_one_undeletable_file(linux, product):
    file = product.paths(linux)[-1]
    place_file(file)
    linux.make_undeletable(file)

    run = clean(linux, product)

    assert run == failed(opening(product) + cleaned(product, file_not_deleted(linux.shown(file))))
    assert file.read_text() == "data"


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
def other_user_data(machine):
    """The per-user folder of an account that the program does not run as."""
    home = machine.desktop.parent
    other_home = home.with_name("another")
    yield other_home / machine.user_data.relative_to(home)
    shutil.rmtree(other_home)


def test_leaves_the_folders_of_other_accounts_alone(machine, other_user_data):
    children = [child for product in PRODUCTS for base, child in product.table if base == "user_data"]

    for child in children:
        place_folder(other_user_data / child)

    before = contents_of(other_user_data)
    own = MEDIA_SERVER.paths(machine)[-1]
    place_folder(own)

    run = machine.run("--clean=All", answers=YES_TO_ALL)

    outcomes = {product: removed(product) for product in PRODUCTS}
    outcomes |= {MEDIA_SERVER: removed(MEDIA_SERVER, machine.shown(own))}
    assert run == succeeded(machine, over_all(outcomes))
    assert contents_of(other_user_data) == before

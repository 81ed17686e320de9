"""Each product from its question to its verdict, on machines that have all of it, a part, or nothing."""

import shutil

import pytest

from machines import contents_of
from products import MEDIA_SERVER, ORVEX_STUDIO, PRODUCT_MANAGER, PRODUCTS
from texts import BANNER, FAILURE, LOG_BANNER, ending, without_prompts

ENTRIES = [(product, order) for product in PRODUCTS for order in range(len(product.table))]

each_product = pytest.mark.parametrize("product", PRODUCTS, ids=lambda product: product.name)
each_entry = pytest.mark.parametrize(
    ("product", "order"), ENTRIES, ids=[f"{product.name}-{order + 1}" for product, order in ENTRIES]
)


def clean(machine, product):
    """Runs the program on the one product, and declines all others where only all are offered together."""
    if product.target is None:
        return machine.run("--clean=All", answers="n\nn\nn\nn\ny\n\n")

    return machine.run(f"--clean={product.target}", answers="y\n\n")


def opening(product):
    """The transcript up to the run."""
    if product.target is None:
        return """\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
"""

    return f"""\
[time][Info] {product.first_line}
[time][Info] {product.question}
Y/n? [time][Info] Cleaning: {product.name}
"""


def place_folder(path):
    (path / "Sub folder").mkdir(parents=True)
    (path / "Sub folder" / "File.dat").write_text("data")
    (path / ".hidden").write_text("settings")


def place_file(path):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("a file")


def test_removes_all_of_the_studio_folders_and_single_files_alike(machine):
    before = machine.tree()

    for path in ORVEX_STUDIO.paths(machine)[:12]:
        place_folder(path)

    for path in ORVEX_STUDIO.paths(machine)[12:]:
        place_file(path)

    run = machine.run("--clean=OrvexStudio", answers="y\n\n")

    programs = machine.program_files
    plugins = machine.shared_data / "TessaraWorks" / "Plugins"
    user = machine.user_data
    vst3 = machine.program_files / "Common Files" / "VST3"
    transcript = f"""\
[time][Info] Target: Orvex Studio
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Deleting directory: {machine.shown(programs / "Orvex")}
[time][Info] Directory deleted: {machine.shown(programs / "Orvex")}
[time][Info] Deleting directory: {machine.shown(programs / "OrvexStudio")}
[time][Info] Directory deleted: {machine.shown(programs / "OrvexStudio")}
[time][Info] Deleting directory: {machine.shown(programs / "Orvex Studio")}
[time][Info] Directory deleted: {machine.shown(programs / "Orvex Studio")}
[time][Info] Deleting directory: {machine.shown(plugins / "Orvex")}
[time][Info] Directory deleted: {machine.shown(plugins / "Orvex")}
[time][Info] Deleting directory: {machine.shown(plugins / "OrvexStudio")}
[time][Info] Directory deleted: {machine.shown(plugins / "OrvexStudio")}
[time][Info] Deleting directory: {machine.shown(user / "Orvex")}
[time][Info] Directory deleted: {machine.shown(user / "Orvex")}
[time][Info] Deleting directory: {machine.shown(user / "OrvexMonitor")}
[time][Info] Directory deleted: {machine.shown(user / "OrvexMonitor")}
[time][Info] Deleting directory: {machine.shown(user / "Orvex Monitor")}
[time][Info] Directory deleted: {machine.shown(user / "Orvex Monitor")}
[time][Info] Deleting directory: {machine.shown(user / "OrvexMonitorHeadless")}
[time][Info] Directory deleted: {machine.shown(user / "OrvexMonitorHeadless")}
[time][Info] Deleting directory: {machine.shown(user / "VelantoneEQ")}
[time][Info] Directory deleted: {machine.shown(user / "VelantoneEQ")}
[time][Info] Deleting directory: {machine.shown(vst3 / "TessaraWorks")}
[time][Info] Directory deleted: {machine.shown(vst3 / "TessaraWorks")}
[time][Info] Deleting directory: {machine.shown(vst3 / "Orvex.vst3")}
[time][Info] Directory deleted: {machine.shown(vst3 / "Orvex.vst3")}
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {machine.shown(vst3 / "OrvexAudioBus.vst3")}
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {machine.shown(vst3 / "OrvexMonitor.vst3")}
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {machine.shown(vst3 / "OrvexReference.vst3")}
[time][Info] Directories removed: 12
[time][Info] Files removed: 3
[time][Info] Orvex Studio was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before | {plugins, plugins.parent, vst3, vst3.parent}


def test_removes_all_of_the_product_manager(machine):
    before = machine.tree()

    for path in PRODUCT_MANAGER.paths(machine):
        place_folder(path)

    run = machine.run("--clean=ProductManager", answers="y\n\n")

    programs = machine.program_files
    maker = machine.shared_data / "TessaraWorks"
    applications = machine.shared_data / "TessaraWorks" / "Applications"
    user = machine.user_data
    transcript = f"""\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Deleting directory: {machine.shown(programs / "OrvexProductManager")}
[time][Info] Directory deleted: {machine.shown(programs / "OrvexProductManager")}
[time][Info] Deleting directory: {machine.shown(programs / "Orvex Product Manager")}
[time][Info] Directory deleted: {machine.shown(programs / "Orvex Product Manager")}
[time][Info] Deleting directory: {machine.shown(maker / "OrvexProductManager")}
[time][Info] Directory deleted: {machine.shown(maker / "OrvexProductManager")}
[time][Info] Deleting directory: {machine.shown(maker / "Orvex Product Manager")}
[time][Info] Directory deleted: {machine.shown(maker / "Orvex Product Manager")}
[time][Info] Deleting directory: {machine.shown(applications / "OrvexProductManager")}
[time][Info] Directory deleted: {machine.shown(applications / "OrvexProductManager")}
[time][Info] Deleting directory: {machine.shown(applications / "Orvex Product Manager")}
[time][Info] Directory deleted: {machine.shown(applications / "Orvex Product Manager")}
[time][Info] Deleting directory: {machine.shown(user / "OrvexProductManager")}
[time][Info] Directory deleted: {machine.shown(user / "OrvexProductManager")}
[time][Info] Deleting directory: {machine.shown(user / "Orvex Product Manager")}
[time][Info] Directory deleted: {machine.shown(user / "Orvex Product Manager")}
[time][Info] Directories removed: 8
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before | {maker, applications}


def test_removes_all_of_the_media_server(machine):
    before = machine.tree()

    for path in MEDIA_SERVER.paths(machine):
        place_folder(path)

    run = machine.run("--clean=VelantoneMediaServer", answers="y\n\n")

    applications = machine.shared_data / "TessaraWorks" / "Applications"
    user = machine.user_data
    transcript = f"""\
[time][Info] Target: Velantone Media Server
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning: Velantone Media Server
[time][Info] Deleting directory: {machine.shown(applications / "VelantoneMediaServer")}
[time][Info] Directory deleted: {machine.shown(applications / "VelantoneMediaServer")}
[time][Info] Deleting directory: {machine.shown(applications / "VelantonePlayer")}
[time][Info] Directory deleted: {machine.shown(applications / "VelantonePlayer")}
[time][Info] Deleting directory: {machine.shown(user / "VelantoneMediaServer")}
[time][Info] Directory deleted: {machine.shown(user / "VelantoneMediaServer")}
[time][Info] Deleting directory: {machine.shown(user / "VelantonePlayer")}
[time][Info] Directory deleted: {machine.shown(user / "VelantonePlayer")}
[time][Info] Directories removed: 4
[time][Info] Files removed: 0
[time][Info] Velantone Media Server was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before | {applications, applications.parent}


def test_removes_all_of_the_content(machine):
    before = machine.tree()
    place_folder(machine.shared_data / "TessaraWorks" / "Content")

    run = machine.run("--clean=Content", answers="y\n\n")

    content = machine.shown(machine.shared_data / "TessaraWorks" / "Content")
    transcript = f"""\
[time][Info] Target: Content
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning: Velantone Content
[time][Info] Deleting directory: {content}
[time][Info] Directory deleted: {content}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before | {machine.shared_data / "TessaraWorks"}


def test_removes_the_company_folders_with_all_that_other_products_keep_in_them(machine):
    maker = machine.shared_data / "TessaraWorks"
    vst3 = machine.program_files / "Common Files" / "VST3"
    place_folder(vst3 / "Other maker")
    before = machine.tree()

    for product in PRODUCTS:
        for path in product.paths(machine):
            if path.is_relative_to(maker):
                path.mkdir(parents=True, exist_ok=True)

    place_folder(vst3 / "TessaraWorks")

    run = machine.run("--clean=All", answers="n\nn\nn\nn\ny\n\n")

    transcript = f"""\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning cancelled by the user.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
[time][Info] Deleting directory: {machine.shown(maker)}
[time][Info] Directory deleted: {machine.shown(maker)}
[time][Info] Deleting directory: {machine.shown(vst3 / "TessaraWorks")}
[time][Info] Directory deleted: {machine.shown(vst3 / "TessaraWorks")}
[time][Info] Directories removed: 2
[time][Info] Files removed: 0
[time][Info] Tessara Works Global Directories was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before


@each_product
def test_finds_nothing_to_remove_on_a_machine_without_the_product(machine, product):
    similar = [path.with_name(path.name + " 2") for path in product.paths(machine)]

    for path in similar:
        place_folder(path)

    before = machine.tree()

    run = clean(machine, product)

    transcript = (
        opening(product)
        + f"""\
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] {product.name} was successfully removed.
"""
    )
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert machine.tree() == before


@each_product
def test_removes_files_where_folders_are_expected(machine, product):
    for path in product.paths(machine):
        place_file(path)

    run = clean(machine, product)

    removals = "".join(
        f"""\
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Info] File deleted: {machine.shown(path)}
"""
        for path in product.paths(machine)
    )
    transcript = (
        opening(product)
        + removals
        + f"""\
[time][Info] Directories removed: 0
[time][Info] Files removed: {len(product.table)}
[time][Info] {product.name} was successfully removed.
"""
    )
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [machine.shown(machine.desktop)]
    assert [path for path in product.paths(machine) if path.exists()] == []


@each_entry
def test_removes_everything_but_the_one_folder_that_holds_an_undeletable_file(machine, product, order):
    before = machine.tree()
    paths = product.paths(machine)

    for path in paths:
        place_folder(path)

    stubborn = paths[order]
    machine.make_undeletable(stubborn / "Sub folder" / "File.dat")

    run = clean(machine, product)

    outcomes = "".join(
        f"""\
[time][Info] Deleting directory: {machine.shown(path)}
[time][Critical] Unable to delete directory: {machine.shown(path)}
"""
        if path == stubborn
        else f"""\
[time][Info] Deleting directory: {machine.shown(path)}
[time][Info] Directory deleted: {machine.shown(path)}
"""
        for path in paths
    )
    verdict = (
        f"[Warning] {product.name} was partially removed, but encountered some errors."
        if len(paths) > 1
        else f"[Info] {product.name} encountered errors and could not be removed."
    )
    transcript = (
        opening(product)
        + outcomes
        + f"""\
[time][Info] Directories removed: {len(paths) - 1}
[time][Info] Files removed: 0
[time]{verdict}
"""
    )
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    left = stubborn / "Sub folder" / "File.dat"
    parents_of_entries = {parent for path in paths for parent in path.parents} - set(paths)
    assert left.read_text() == "data"
    assert machine.tree() - before - parents_of_entries == {stubborn, stubborn / "Sub folder", left}


@each_product
def test_could_not_remove_a_product_that_is_one_undeletable_file(machine, product):
    file = product.paths(machine)[-1]
    place_file(file)
    machine.make_undeletable(file)

    run = clean(machine, product)

    transcript = (
        opening(product)
        + f"""\
[time][Warning] Directory is actually a file, attempting to delete file...
[time][Critical] Unable to delete file: {machine.shown(file)}
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] {product.name} encountered errors and could not be removed.
"""
    )
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []
    assert file.read_text() == "a file"


LOCATIONS = [(product, base) for product in PRODUCTS for base in sorted({base for base, _ in product.table})]


@pytest.mark.parametrize(
    ("product", "location"), LOCATIONS, ids=[f"{product.name}-{location}" for product, location in LOCATIONS]
)
def test_takes_the_root_of_the_drive_for_a_location_that_cannot_be_found(windows, product, location):
    paths = product.paths(windows, missing=[location])

    with windows.without(location):
        for path in paths:
            place_folder(path)

        run = clean(windows, product)

    removals = "".join(
        f"""\
[time][Info] Deleting directory: {windows.shown(path)}
[time][Info] Directory deleted: {windows.shown(path)}
"""
        for path in paths
    )
    transcript = (
        opening(product)
        + removals
        + f"""\
[time][Info] Directories removed: {len(paths)}
[time][Info] Files removed: 0
[time][Info] {product.name} was successfully removed.
"""
    )
    assert run.console == BANNER + transcript + ending(windows)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == [windows.shown(windows.desktop)]
    assert [path for path in paths if path.exists()] == []


def test_lists_a_path_once_that_two_missing_locations_give(windows):
    paths = PRODUCT_MANAGER.paths(windows, missing=["program_files", "user_data"])
    undeletable = windows.c / "OrvexProductManager" / "File.dat"
    assert paths[:2] == paths[6:]

    with windows.without("program_files", "user_data"):
        place_file(undeletable)
        windows.make_undeletable(undeletable)

        run = windows.run("--clean=ProductManager", answers="y\n\n")

    transcript = """\
[time][Info] Target: Orvex Product Manager
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Deleting directory: C:\\OrvexProductManager
[time][Critical] Unable to delete directory: C:\\OrvexProductManager
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager encountered errors and could not be removed.
"""
    assert run.console == BANNER + transcript
    assert run.errors == FAILURE
    assert run.exit_code == 1
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert run.revealed == []


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
    place_folder(machine.user_data / "VelantonePlayer")

    run = machine.run("--clean=All", answers="y\ny\ny\ny\ny\n\n")

    transcript = f"""\
[time][Info] Target: All
[time][Info] All installed Orvex & Velantone products will be cleaned.
[time][Info] Remove Orvex Studio and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Studio
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Studio was successfully removed.
[time][Info] Remove all Velantone content & playlist files?
Y/n? [time][Info] Cleaning: Velantone Content
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Velantone Content was successfully removed.
[time][Info] Remove Velantone Media Server and all of its associated files?
Y/n? [time][Info] Cleaning: Velantone Media Server
[time][Info] Deleting directory: {machine.shown(machine.user_data / "VelantonePlayer")}
[time][Info] Directory deleted: {machine.shown(machine.user_data / "VelantonePlayer")}
[time][Info] Directories removed: 1
[time][Info] Files removed: 0
[time][Info] Velantone Media Server was successfully removed.
[time][Info] Remove Orvex Product Manager and all of its associated files?
Y/n? [time][Info] Cleaning: Orvex Product Manager
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Orvex Product Manager was successfully removed.
[time][Info] Remove all Tessara Works global directories and files?
Y/n? [time][Info] Cleaning: Tessara Works Global Directories
[time][Info] Directories removed: 0
[time][Info] Files removed: 0
[time][Info] Tessara Works Global Directories was successfully removed.
"""
    assert run.console == BANNER + transcript + ending(machine)
    assert run.errors == ""
    assert run.exit_code == 0
    assert run.log == LOG_BANNER + without_prompts(transcript)
    assert contents_of(other_user_data) == before

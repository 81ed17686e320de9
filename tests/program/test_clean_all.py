"""The sequence over all products, however it is started."""

from itertools import product as combinations

import pytest

from machines import put
from products import COMPANY, CONTENT, MEDIA_SERVER, ORVEX_STUDIO, PRODUCT_MANAGER, PRODUCTS
from runs import failed, succeeded
from texts import ALL_DECLINED, NO_TO_ALL, NOT_STARTED, YES_TO_ALL, aborted, advice, not_removed, over_all, removed


def place_all_products(machine):
    for product in PRODUCTS:
        for path in product.paths(machine):
            path.mkdir(parents=True, exist_ok=True)


# Windows only: on Linux, it is one of the combinations below.
def test_asks_every_question_and_succeeds_when_all_are_declined(windows):
    place_all_products(windows)
    before = windows.tree()

    run = windows.run("--clean=All", answers=NO_TO_ALL)

    assert run == succeeded(windows, ALL_DECLINED)
    assert windows.tree() == before


ALL_ANSWERS = list(combinations("yn", repeat=len(PRODUCTS)))


@pytest.mark.parametrize("answers", ALL_ANSWERS, ids=["".join(answers) for answers in ALL_ANSWERS])
def test_cleans_those_products_that_were_answered_with_yes(linux, answers):
    before = linux.tree()
    place_all_products(linux)
    listed = {path for product in PRODUCTS for path in product.paths(linux)}
    present = set(listed)
    outcomes = {}

    for product, answer in zip(PRODUCTS, answers):
        if answer == "y":
            found = [path for path in product.paths(linux) if path in present]
            outcomes[product] = removed(product, *map(linux.shown, found))
            present -= {path for path in present for folder in found if path.is_relative_to(folder)}

    run = linux.run("--clean=All", answers="".join(f"{answer}\n" for answer in answers) + "\n")

    assert run == succeeded(linux, over_all(outcomes))
    assert listed & linux.tree() == present
    assert linux.tree() >= before


@pytest.mark.parametrize("failing", PRODUCTS, ids=lambda product: product.name)
def test_carries_out_the_steps_behind_a_failed_one(linux, failing):
    folders = {product: product.paths(linux)[0] for product in PRODUCTS}

    for folder in folders.values():
        folder.mkdir(exist_ok=True, parents=True)

    # What lies in the company's folder keeps that from being deleted, too.
    in_company = folders[failing].is_relative_to(folders[COMPANY])
    failed_ones = {failing, COMPANY} if in_company else {failing}
    put(folders[failing], "File.dat")
    linux.make_undeletable(folders[failing] / "File.dat")

    run = linux.run("--clean=All", answers=YES_TO_ALL)

    outcomes = {
        product: (not_removed if product in failed_ones else removed)(product, linux.shown(folder))
        for product, folder in folders.items()
    }
    assert run == failed(over_all(outcomes))
    assert {product for product, folder in folders.items() if folder.exists()} == failed_ones


def test_carries_out_the_steps_behind_one_whose_uninstaller_could_not_be_started(windows):
    folders = [
        windows.program_files / "Orvex",
        windows.shared_data / "TessaraWorks",
        windows.user_data / "VelantonePlayer",
        windows.user_data / "OrvexProductManager",
    ]
    for folder in folders:
        folder.mkdir()

    windows.register(
        {
            "A": {"DisplayName": "Orvex Studio", "UninstallString": "C:\\Uninstallers\\Gone.exe"},
            "B": {"DisplayName": "Orvex Product Manager", "UninstallString": "C:\\Uninstallers\\Gone.exe"},
        }
    )

    run = windows.run("--clean=All", answers=YES_TO_ALL)

    outcomes = {product: removed(product) for product in PRODUCTS} | {
        ORVEX_STUDIO: aborted(ORVEX_STUDIO, NOT_STARTED + advice("Orvex Studio")),
        MEDIA_SERVER: removed(MEDIA_SERVER, windows.shown(folders[2])),
        PRODUCT_MANAGER: aborted(PRODUCT_MANAGER, NOT_STARTED + advice("Orvex Product Manager")),
        COMPANY: removed(COMPANY, windows.shown(folders[1])),
    }
    assert run == failed(over_all(outcomes))
    assert [folder.exists() for folder in folders] == [True, False, False, True]


@pytest.mark.parametrize(
    ("arguments", "exit_code"),
    [(["--clean=All"], 1), ([], 0), (["--unknown"], 0)],
    ids=["--clean=All", "no argument", "--unknown"],
)
def test_exits_with_1_after_a_failure_only_if_it_was_asked_for_by_its_name(machine, arguments, exit_code):
    put(machine.content, "File.dat")
    machine.make_undeletable(machine.content / "File.dat")

    run = machine.run(*arguments, answers="".join("y\n" if product is CONTENT else "n\n" for product in PRODUCTS))

    outcome = not_removed(CONTENT, machine.shown(machine.content))
    assert run == failed(over_all({CONTENT: outcome}), exit_code=exit_code)


@pytest.mark.parametrize("answers", ["", "y", "\n\n"], ids=["no input", "one yes", "two empty lines"])
def test_takes_the_end_of_the_input_for_a_yes_to_all_that_follows(machine, answers):
    place_all_products(machine)

    run = machine.run(answers=answers)

    listed = {product: set(product.paths(machine)) for product in PRODUCTS}
    outcomes = {}

    for product in PRODUCTS:
        # Of the company's two folders, the studio has deleted one.
        found = [path for path in product.paths(machine) if product is not COMPANY or path not in listed[ORVEX_STUDIO]]
        outcomes[product] = removed(product, *map(machine.shown, found))

    assert run == succeeded(machine, over_all(outcomes))
    assert machine.tree() & set.union(*listed.values()) == set()


def test_declines_what_was_answered_before_the_input_ended(linux):
    run = linux.run("--clean=All", answers="n\nn")

    outcomes = {product: removed(product) for product in PRODUCTS[2:]}
    assert run == succeeded(linux, over_all(outcomes))

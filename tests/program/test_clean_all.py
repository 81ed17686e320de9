"""The sequence over all products, however it is started."""

import pytest

from products import ORVEX_STUDIO, PRODUCTS
from runs import failed, succeeded
from texts import YES_TO_ALL, cleaned, folder_deleted, folder_not_deleted, over_all


def yes_to(*accepted) -> str:
    return "".join("y\n" if product in accepted else "n\n" for product in PRODUCTS)


def make_all_products(machine) -> set:
    """Makes a folder at each listed path, and returns the paths."""
    listed = {path for product in PRODUCTS for path in product.paths(machine)}

    for path in listed:
        path.mkdir(parents=True, exist_ok=True)

    return listed


def outcomes_of(accepted, machine, present: set, undeletable=None) -> dict:
    """The output about the accepted products, whose folders are removed from those that are present."""
    outcomes = {}

    for product in accepted:
        steps = ""

        for folder in (path for path in product.paths(machine) if path in present):
            steps += (folder_not_deleted if folder == undeletable else folder_deleted)(machine.shown(folder))
            present -= {path for path in present if path.is_relative_to(folder)} - {undeletable}

        outcomes[product] = cleaned(product, steps)

    return outcomes


# The typed input, and the products that it accepts. After the end of the input, every answer is a yes.
ANSWERS = {
    "yes to all": (yes_to(*PRODUCTS) + "\n", PRODUCTS),
    "no to all": (yes_to() + "\n", []),
    **{f"yes to {product.name}": (yes_to(product) + "\n", [product]) for product in PRODUCTS},
    "no input": ("", PRODUCTS),
    "one yes": ("y", PRODUCTS),
    "two empty lines": ("\n\n", PRODUCTS),
    "two noes": ("n\nn", PRODUCTS[2:]),
}


@pytest.mark.parametrize(("typed", "accepted"), ANSWERS.values(), ids=ANSWERS)
def test_cleans_the_products_that_were_answered_with_yes(linux, typed, accepted):
    listed = make_all_products(linux)
    present = set(listed)
    outcomes = outcomes_of(accepted, linux, present)

    run = linux.run("--clean=All", answers=typed)

    assert run == succeeded(linux, over_all(outcomes))
    assert listed & linux.tree() == present


@pytest.mark.parametrize(
    ("arguments", "exit_code"),
    [(["--clean=All"], 1), ([], 0), (["--unknown"], 0)],
    ids=["--clean=All", "no argument", "--unknown"],
)
def test_goes_on_after_a_failure_and_exits_with_1_only_if_a_target_was_named(machine, arguments, exit_code):
    listed = make_all_products(machine)
    undeletable = ORVEX_STUDIO.paths(machine)[0]
    (undeletable / "File.dat").touch()
    machine.make_undeletable(undeletable / "File.dat")
    outcomes = outcomes_of(PRODUCTS, machine, set(listed), undeletable)

    run = machine.run(*arguments, answers=YES_TO_ALL)

    assert run == failed(over_all(outcomes), exit_code=exit_code)
    assert listed & machine.tree() == {undeletable}

"""The sequence over all products, however it is started."""

import pytest

from machines import put
from products import CONTENT, PRODUCTS
from runs import failed, succeeded
from texts import not_removed, over_all, removed


def yes_to(*accepted) -> str:
    return "".join("y\n" if product in accepted else "n\n" for product in PRODUCTS)


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
    listed = {path for product in PRODUCTS for path in product.paths(linux)}
    present = set(listed)
    outcomes = {}

    for path in listed:
        path.mkdir(parents=True, exist_ok=True)

    for product in accepted:
        found = [path for path in product.paths(linux) if path in present]
        outcomes[product] = removed(product, *map(linux.shown, found))
        present -= {path for path in present for folder in found if path.is_relative_to(folder)}

    run = linux.run("--clean=All", answers=typed)

    assert run == succeeded(linux, over_all(outcomes))
    assert listed & linux.tree() == present


@pytest.mark.parametrize(
    ("arguments", "exit_code"),
    [(["--clean=All"], 1), ([], 0), (["--unknown"], 0)],
    ids=["--clean=All", "no argument", "--unknown"],
)
def test_exits_with_1_after_a_failure_only_if_a_target_was_named(machine, arguments, exit_code):
    put(machine.content, "File.dat")
    machine.make_undeletable(machine.content / "File.dat")

    run = machine.run(*arguments, answers=yes_to(CONTENT))

    outcome = not_removed(CONTENT, machine.shown(machine.content))
    assert run == failed(over_all({CONTENT: outcome}), exit_code=exit_code)

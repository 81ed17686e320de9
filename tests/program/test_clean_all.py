"""The sequence over all products, however it is started."""

from itertools import product as combinations

import pytest

from products import COMPANY, CONTENT, MEDIA_SERVER, ORVEX_STUDIO, PRODUCT_MANAGER, PRODUCTS
from runs import failed, succeeded
from texts import (
    ALL_DECLINED,
    ALL_PRODUCTS,
    CANCELLED,
    NO_TO_ALL,
    NOT_STARTED,
    YES_TO_ALL,
    advice,
    not_removed,
    question,
    removed,
)


def place_all_products(machine):
    for product in PRODUCTS:
        for path in product.paths(machine):
            path.mkdir(parents=True, exist_ok=True)


def test_asks_every_question_and_succeeds_when_all_are_declined(machine):
    place_all_products(machine)
    before = machine.tree()

    run = machine.run("--clean=All", answers=NO_TO_ALL)

    assert run == succeeded(machine, ALL_DECLINED)
    assert machine.tree() == before


ALL_ANSWERS = list(combinations("yn", repeat=len(PRODUCTS)))


@pytest.mark.parametrize("answers", ALL_ANSWERS, ids=["".join(answers) for answers in ALL_ANSWERS])
def test_cleans_those_products_that_were_answered_with_yes(linux, answers):
    before = linux.tree()
    place_all_products(linux)
    listed = {path for product in PRODUCTS for path in product.paths(linux)}
    present = set(listed)
    transcript = ALL_PRODUCTS

    for product, answer in zip(PRODUCTS, answers):
        found = [path for path in product.paths(linux) if path in present]
        transcript += question(product)

        if answer == "n":
            transcript += CANCELLED
        else:
            transcript += removed(product, *map(linux.shown, found))
            present -= {path for path in present for folder in found if path.is_relative_to(folder)}

    run = linux.run("--clean=All", answers="".join(f"{answer}\n" for answer in answers) + "\n")

    assert run == succeeded(linux, transcript)
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
    undeletable = folders[failing] / "File.dat"
    undeletable.write_text("data")
    linux.make_undeletable(undeletable)

    run = linux.run("--clean=All", answers=YES_TO_ALL)

    transcript = ALL_PRODUCTS

    for product, folder in folders.items():
        outcome = not_removed if product in failed_ones else removed
        transcript += question(product) + outcome(product, linux.shown(folder))

    assert run == failed(transcript)
    assert {product for product, folder in folders.items() if folder.exists()} == failed_ones


def not_started(product) -> str:
    """A run that ends with an uninstaller that could not be started."""
    return f"""\
[time][Info] Cleaning: {product.name}
{NOT_STARTED}{advice(product.name)}\
[time][Warning] Cleaning was aborted.
"""


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
        ORVEX_STUDIO: not_started(ORVEX_STUDIO),
        MEDIA_SERVER: removed(MEDIA_SERVER, windows.shown(folders[2])),
        PRODUCT_MANAGER: not_started(PRODUCT_MANAGER),
        COMPANY: removed(COMPANY, windows.shown(folders[1])),
    }
    transcript = ALL_PRODUCTS + "".join(question(product) + outcome for product, outcome in outcomes.items())
    assert run == failed(transcript)
    assert [folder.exists() for folder in folders] == [True, False, False, True]


YES_TO_CONTENT = "".join("y\n" if product is CONTENT else "n\n" for product in PRODUCTS) + "\n"


def only_content(run: str) -> str:
    """The transcript when all but this run is declined."""
    declined = {product: CANCELLED for product in PRODUCTS} | {CONTENT: run}
    return ALL_PRODUCTS + "".join(question(product) + step for product, step in declined.items())


@pytest.mark.parametrize(
    "arguments",
    [["--clean=All"], [], ["--unknown"], ["--CLEAN=All"], ["--clean-all"], ["-x"], ["Content"], ["/clean=Content"]],
    ids=lambda arguments: " ".join(arguments) or "no argument",
)
def test_runs_for_any_arguments_that_are_no_command_and_exits_with_0_after_a_success(linux, arguments):
    content = CONTENT.paths(linux)[0]
    content.mkdir(parents=True)

    run = linux.run(*arguments, answers=YES_TO_CONTENT)

    assert run == succeeded(linux, only_content(removed(CONTENT, linux.shown(content))))


@pytest.mark.parametrize(
    ("arguments", "exit_code"),
    [(["--clean=All"], 1), ([], 0), (["--unknown"], 0)],
    ids=["--clean=All", "no argument", "--unknown"],
)
def test_exits_with_1_after_a_failure_only_if_it_was_asked_for_by_its_name(machine, arguments, exit_code):
    content = CONTENT.paths(machine)[0]
    content.mkdir(parents=True)
    (content / "File.dat").write_text("data")
    machine.make_undeletable(content / "File.dat")

    run = machine.run(*arguments, answers=YES_TO_CONTENT)

    assert run == failed(only_content(not_removed(CONTENT, machine.shown(content))), exit_code=exit_code)


@pytest.mark.parametrize("answers", ["", "y", "\n\n"], ids=["no input", "one yes", "two empty lines"])
def test_takes_the_end_of_the_input_for_a_yes_to_all_that_follows(machine, answers):
    place_all_products(machine)

    run = machine.run(answers=answers)

    transcript = ALL_PRODUCTS
    listed = [set(product.paths(machine)) for product in PRODUCTS]

    for product in PRODUCTS:
        # Of the company's two folders, the studio has deleted one.
        found = [path for path in product.paths(machine) if product is not COMPANY or path not in listed[0]]
        transcript += question(product) + removed(product, *map(machine.shown, found))

    assert run == succeeded(machine, transcript)
    assert machine.tree() & set.union(*listed) == set()


def test_declines_what_was_answered_before_the_input_ended(linux):
    run = linux.run("--clean=All", answers="n\nn")

    transcript = ALL_PRODUCTS + "".join(question(product) + CANCELLED for product in PRODUCTS[:2])
    transcript += "".join(question(product) + removed(product) for product in PRODUCTS[2:])
    assert run == succeeded(linux, transcript)

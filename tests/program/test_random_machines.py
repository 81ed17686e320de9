"""Random machines: what the program does on them is what a plain model of it says.

A number of machines is fixed. Any others, on each kind of machine, come with

    ORVEX_SEEDS=1000:2000 python3 -m pytest tests/program/test_random_machines.py

where -k windows, -k native or -k sanitize chooses the kind. A seed that fails shows the situation
that it stands for, and where the run differs from the prediction.
"""

import difflib
import os

import pytest

from random_machines import Model, random_situation, run_on

USUAL_SEEDS = {"windows": range(40), "native": range(150), "sanitize": range(150, 190)}


def seeds(kind):
    asked_for = os.environ.get("ORVEX_SEEDS")
    return range(*map(int, asked_for.split(":"))) if asked_for else USUAL_SEEDS[kind]


@pytest.mark.parametrize(
    ("machine", "seed"), [(kind, seed) for kind in USUAL_SEEDS for seed in seeds(kind)], indirect=["machine"]
)
def test_does_what_the_model_says(machine, seed):
    situation = random_situation(seed, with_registry=hasattr(machine, "register"))

    outcome = run_on(machine, situation)

    predicted = Model(machine, situation).run(situation.arguments)
    lines = [str(predicted).split("\n"), str(outcome).split("\n")]
    difference = "\n".join(difflib.unified_diff(*lines, "as the model says", "as it is", lineterm=""))
    assert difference == "", f"on this machine:\n{situation}\n\n{difference}"

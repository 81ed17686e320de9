"""Random machines: the program does on them what a plain model says.

Which machines is fixed. Any number of fresh ones, on each kind of machine, comes with

    scripts/test program -k random --fresh 1000

On Linux, a failure is shrunk to the smallest machine that shows it. Under Wine that would take too long.
"""

from tempfile import TemporaryDirectory

import pytest
from hypothesis import HealthCheck, Phase, given, settings
from hypothesis import strategies as st

from machines import Linux, Windows
from random_machines import WITH_REGISTRY, WITHOUT_REGISTRY, Model, Situation, run_on

USUAL_NUMBERS = {"windows": 40, "native": 150, "sanitize": 40}


@pytest.mark.parametrize("machine", USUAL_NUMBERS, indirect=True)
def test_does_what_the_model_says(machine, request, tmp_path):
    fresh = request.config.getoption("fresh")
    on_windows = isinstance(machine, Windows)
    usual_number = USUAL_NUMBERS["windows" if on_windows else machine.preset]

    @settings(
        max_examples=fresh or usual_number,
        derandomize=not fresh,
        database=None,
        deadline=None,
        phases=[Phase.generate] if on_windows else [Phase.generate, Phase.shrink],
        suppress_health_check=list(HealthCheck),
    )
    @given(st.builds(Situation, **(WITH_REGISTRY if on_windows else WITHOUT_REGISTRY)))
    def does_what_the_model_says(situation):
        with TemporaryDirectory(dir=tmp_path) as folder:
            scratch = tmp_path / folder
            clean = Windows(scratch) if on_windows else Linux(scratch, machine.preset)
            outcome = run_on(clean, situation)

        assert outcome == Model(clean, situation).run(situation.arguments)

    does_what_the_model_says()

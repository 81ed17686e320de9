"""Random machines: the program does on them what a plain model says.

The machines are the same each time. To try any number of fresh ones on each kind of machine:

    scripts/test all program -k random --fresh 1000

On Linux, a failure is shrunk to the smallest machine that shows it. Under Wine that would take too long.
"""

from tempfile import TemporaryDirectory

import pytest
from hypothesis import HealthCheck, Phase, given, settings
from hypothesis import strategies as st

from machines import Linux, Windows
from random_machines import WITH_REGISTRY, WITHOUT_REGISTRY, Model, Situation, run_on

NUMBERS = {"windows": 15, "native": 150, "sanitize": 40}
FULL_NUMBERS = NUMBERS | {"windows": 40}


@pytest.mark.parametrize("machine", NUMBERS, indirect=True)
def test_does_what_the_model_says(machine, request, full_size, tmp_path):
    fresh = request.config.getoption("fresh")
    on_windows = isinstance(machine, Windows)
    numbers = FULL_NUMBERS if full_size else NUMBERS

    @settings(
        max_examples=fresh or numbers["windows" if on_windows else machine.preset],
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

"""A short run of each fuzz target, the same one each time; scripts/fuzz runs them for longer."""

import subprocess

import pytest

from project import TOP

# Each target takes about ten seconds at most.
RUNS = {
    "FuzzCommandLine": 100_000,
    "FuzzPrompt": 50_000,
    "FuzzRegistry": 20_000,
}


@pytest.mark.parametrize("target", RUNS)
def test_program_and_model_agree_on_any_input(target, tmp_path):
    learnt = tmp_path / "corpus"
    learnt.mkdir()

    run = subprocess.run(
        [
            TOP / "build/sanitize/tests/fuzz" / target,
            f"-runs={RUNS[target]}", "-seed=1", f"-artifact_prefix={tmp_path}/",
            learnt, TOP / "tests/fuzz/corpus" / target,
        ],
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
    )  # fmt: skip

    assert run.returncode == 0, run.stdout[-5000:]
    assert f"Done {RUNS[target]} runs" in run.stdout

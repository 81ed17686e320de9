"""The npm packages, which scripts/support/npm-packages installs before the tests run."""

import os

import pytest

from project import BUILD, output_of

NPM = BUILD / "npm"

needs_npm = pytest.mark.skipif(
    not (NPM / "installed").exists(),
    reason="npm's packages are missing: scripts/support/npm-packages could not fetch them",
)


def output_of_node(*arguments, **options) -> str:
    """Returns the output of Node.js, which finds the packages and must succeed."""
    return output_of("node", *arguments, env=os.environ | {"NODE_PATH": str(NPM / "node_modules")}, **options)

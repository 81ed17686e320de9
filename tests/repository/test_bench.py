"""scripts/bench measures every row of its document. No test checks the figures themselves."""

import re
import subprocess

from project import TOP


def test_a_quick_run_prints_a_ratio_for_each_row_and_leaves_the_document_unchanged():
    document = TOP / "docs" / "performance.md"
    figures = document.read_bytes()

    run = subprocess.run([TOP / "scripts" / "bench", "--quick"], capture_output=True, text=True)

    assert run.returncode == 0, run.stderr
    assert document.read_bytes() == figures
    measured = rows(run.stdout)
    assert [row for row in measured[2:] if float(row[4].strip("*")) <= 0] == []
    assert list(map(without_figures, measured)) == list(map(without_figures, rows(figures.decode())))


def rows(text: str) -> list[list[str]]:
    return [line.strip("| ").split(" | ") for line in text.splitlines() if line.startswith("| ")]


def without_figures(row: list[str]) -> list[str]:
    """The subject of the row and its yardstick, without the number of files: a quick run deletes fewer."""
    return [re.sub(r"[\d,]+ (files|folders)", r"\1", row[0]), row[2]]

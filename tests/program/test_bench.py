"""scripts/bench measures what it is to measure. How fast anything is, no test can tell."""

import re
import subprocess

from machines import TOP

MEASURED = [
    ("Delete 1,000 files in 20 folders, Linux", "bare call"),
    ("Delete 1,000 files in 20 folders, Linux", "`rm -rf`"),
    ("Processor time of that", "bare call"),
    ("Delete 1,000 files in one folder, Linux", "bare call"),
    ("Delete 1,000 files in one folder, Linux", "`rm -rf`"),
    ("Processor time of that", "bare call"),
    ("Peak memory of that", "bare call"),
    ("Delete 200 files in 20 folders, Wine", "bare call"),
    ("Delete 200 files in 20 folders, Wine", "`rd /s /q`"),
    ("Start `--version`, Linux", "hello-world"),
    ("Start `--version`, Linux", "bare call for nothing"),
    ("Start `--version`, Wine", "hello-world"),
    ("Start `--version`, Wine", "bare call for nothing"),
    ("Log lines, Linux", "appending directly"),
    ("Log lines, Wine", "appending directly"),
    ("Size of the executable, Linux", "hello-world"),
    ("Size of the executable, Windows", "hello-world"),
]


def test_prints_a_ratio_for_each_yardstick_and_leaves_the_document_alone_in_a_quick_run():
    document = TOP / "docs" / "performance.md"
    figures = document.read_bytes()

    run = subprocess.run([TOP / "scripts" / "bench", "--quick"], capture_output=True, text=True)

    header, line, *rows = [text.strip("| ").split(" | ") for text in run.stdout.splitlines()]
    assert run.returncode == 0, run.stderr
    assert header == ["Measured", "Orvex Cleaner", "Yardstick", "", "Ratio", "Spread"]
    assert [(row[0], row[2]) for row in rows] == MEASURED
    assert [row for row in rows if float(row[4].strip("*")) <= 0] == []
    assert document.read_bytes() == figures


def test_the_document_has_a_row_for_each_yardstick():
    document = (TOP / "docs" / "performance.md").read_text()
    _, _, *rows = [line.strip("| ").split(" | ") for line in document.splitlines() if line.startswith("| ")]

    assert [without_amounts(row[0], row[2]) for row in rows] == [without_amounts(*texts) for texts in MEASURED]


def without_amounts(*texts: str) -> list[str]:
    return [re.sub(r"[\d,]+ (files|folders)", r"\1", text) for text in texts]

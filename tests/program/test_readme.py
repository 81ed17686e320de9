"""The runs that the README shows are what the program does."""

import re
import subprocess

import pytest

from machines import STAMP, TOP, Windows, wine_environment


def shown_runs() -> list[str]:
    return re.findall(r"```console\n(.*?)```", (TOP / "README.md").read_text(), re.DOTALL)


@pytest.mark.parametrize("arguments, shown", zip([["--clean=Content"], []], shown_runs(), strict=True))
def test_the_sample_installation_is_cleaned_as_the_readme_shows(windows, arguments, shown):
    Windows.has_uninstall_entries = True
    subprocess.run([TOP / "scripts/support/install-sample-products", windows.c], env=wine_environment(), check=True)
    answers = re.findall(r"^Y/n\? (.*\n)", shown, re.MULTILINE)

    run = windows.run(*arguments, answers="".join(answers) + "\n")

    expected = re.sub(r"(?<=^Y/n\? ).*\n", "", STAMP.sub("[time]", shown), flags=re.MULTILINE)
    assert run.console == expected.replace("C:\\users\\you\\", f"C:\\users\\{windows.home.name}\\")
    assert run.errors == ""
    assert run.exit_code == 0

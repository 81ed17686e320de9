"""The program on a machine that is made as in a container, in the tests that depend most on how a machine is made."""

import os

import pytest

from machines import Container
from test_deleting import (
    test_fails_at_an_undeletable_file_in_the_folders_place_and_does_not_show_its_log_file,
    test_removes_the_rest_of_a_tree_around_a_file_that_cannot_be_deleted,
)
from test_elevation import test_refuses_everything_without_administrator_rights
from test_faults import (
    test_fills_the_disk_with_the_log_and_goes_on_without_it,
    test_has_every_line_in_the_log_file_when_it_is_killed_at_a_prompt,
    test_shares_the_log_file_with_a_copy_that_runs_while_it_waits,
)

TRIED = [
    test_fails_at_an_undeletable_file_in_the_folders_place_and_does_not_show_its_log_file,
    test_fills_the_disk_with_the_log_and_goes_on_without_it,
    test_has_every_line_in_the_log_file_when_it_is_killed_at_a_prompt,
    test_refuses_everything_without_administrator_rights,
    test_removes_the_rest_of_a_tree_around_a_file_that_cannot_be_deleted,
    test_shares_the_log_file_with_a_copy_that_runs_while_it_waits,
]


@pytest.fixture(params=["native"])
def machine(tmp_path):
    if os.geteuid() != 0:
        pytest.skip("only root can change the root folder")

    return Container(tmp_path)


@pytest.fixture
def linux(machine):
    return machine

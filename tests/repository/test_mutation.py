"""The changes that scripts/mutate tries, and the excuses for those that no test notices."""

import sys
from collections import Counter

from project import TOP

sys.path.append(str(TOP / "tests" / "mutation"))

from changes import all_changes, changes_of, excuses  # noqa: E402

CODE = """\
#include "Table.h"

// A comment with "text", 1 + 1 and !
static bool isSmall (const Entry (&entries)[20])
{
    const auto size = sizeof (entries);
    log (Info, "Counted" + name);

    if (size <= 10 && ! isOpen())
        return true;

    return isKnown ? isOpen() : false;
}

void close() { shut(); }
"""


def test_changes_one_small_place_at_a_time():
    described = [(change.line_number, change.description) for change in changes_of("src/app/Table.cpp", CODE)]

    assert described == [
        (4, "20 becomes 21"),
        (6, "sizeof (entries) becomes sizeof (entries) / 32"),
        (7, 'left out: log (Info, "Counted" + name);'),
        (7, "Info becomes Warning"),
        (7, '"Counted" becomes "Counted~"'),
        (9, "the condition is negated"),
        (9, "<= becomes <"),
        (9, "10 becomes 11"),
        (9, "&& becomes ||"),
        (9, "! becomes nothing"),
        (10, "left out: return true;"),
        (10, "true becomes false"),
        (12, "? becomes == false ?"),
        (12, "false becomes true"),
        (15, "left out: shut();"),
    ]


def test_leaves_everything_else_unchanged():
    results = {change.description: change.result for change in changes_of("src/app/Table.cpp", CODE)}

    assert results["10 becomes 11"] == CODE.replace("10", "11")
    assert results["left out: shut();"] == CODE.replace("shut();", ";")
    assert results["the condition is negated"] == CODE.replace(
        "if (size <= 10 && ! isOpen())", "if (! (size <= 10 && ! isOpen()))"
    )


def test_each_excuse_fits_one_change_and_gives_a_reason():
    fitting = Counter(change.key for change in all_changes())

    assert [excuse for excuse, reason in excuses().items() if fitting[excuse] != 1 or not reason] == []

"""What rows of operations are made of.

A statement finds the lengths m and n of its size, the subscripts i, j, k, l and v, a number. What its case gives
runs before it, once for each contender with its own new(), which makes an array of a nested list.
"""

import collections

from timing import Statement
from values import new_array, new_floor, new_list, new_numpy, new_quarna

SIZES = {"small": (2, 3), "medium": (100, 100), "large": (1000, 1000), "any": (2, 3)}

Row = collections.namedtuple("Row", "words cases")
Case = collections.namedtuple("Case", "words given new statement peers")
Peer = collections.namedtuple("Peer", "words new statement goals")


def at(small=None, medium=None, large=None):
    """Goals for sizes, as ratios ours / peer."""
    goals = {"small": small, "medium": medium, "large": large}
    return {size: goal for size, goal in goals.items() if goal is not None}


def large(goal):
    return at(large=goal)


def any_size(goal):
    """A goal for what has no size."""
    return {"any": goal}


def as_statement(text):
    return Statement(text) if isinstance(text, str) else text


def peer(new, words):
    """Makes peers of one kind. Without a statement of its own a peer does what we do."""

    def with_goals(goals, statement=None, words=words):
        goals = goals if isinstance(goals, dict) else at(goals, goals, goals)
        return Peer(words, new, statement and as_statement(statement), goals)

    return with_goals


numpy = peer(new_numpy, "NumPy")
floor = peer(new_floor, "floor")
flat_array = peer(new_array, "`array.array`")
nested_list = peer(new_list, "nested lists")


def case(words, given, ours, *peers):
    ours = as_statement(ours)
    return Case(
        words, given, new_quarna, ours, [one._replace(statement=one.statement or ours) for one in peers]
    )


def row(words, *cases):
    """A row of several cases, or of one, which then is given by what follows its words."""
    return Row(words, cases if isinstance(cases[0], Case) else [case("", *cases)])

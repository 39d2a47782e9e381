"""Random programs, run line by line on the module and on the model; a failure prints the program."""

from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import model
from helpers import compare

NUMBER = st.one_of(
    st.integers(0, 9), st.integers(0, 9), st.sampled_from([True, -1, 300, 1.5, -0.5, 2j, 1 + 2.5j, "x"])
)
LENGTHS = st.lists(st.sampled_from([1, 2, 3, 2, 3, 0]), min_size=1, max_size=4).map(tuple)


def line(text, *parts):
    return st.tuples(*parts).map(lambda drawn: text.format(*drawn))


@st.composite
def nests(draw, lengths=LENGTHS):
    """A nest with equal branches, as a rule: in some of them a branch is another one."""
    odd, numbers = draw(st.integers(0, 40)), draw(st.lists(NUMBER, min_size=1, max_size=3))
    count = iter(range(10**6))

    def level(lengths):
        number = next(count)
        if number == odd or not lengths:
            return [[], [1], [[1]], 1][number % 4] if lengths else numbers[number % len(numbers)]
        return [level(lengths[1:]) for _ in range(lengths[0])]

    return repr(level(draw(lengths)))


NAME, FLAG = st.sampled_from("abc"), st.sampled_from(["", "", ", is_complex=True"])
CLASS = st.sampled_from([row.name for row in model.ROWS] + ["int8", "double"])
BOUND = st.one_of(st.just(""), st.integers(-4, 4))
KEY = st.one_of(st.integers(-4, 4), line("{}:{}:{}", BOUND, BOUND, st.sampled_from(["", 1, 2, -1, -2])))
PART = line("{}{}", NAME, st.lists(line("[{}]", KEY), max_size=3).map("".join))
RIGHT = st.one_of(
    PART, NUMBER.map(repr), nests(), nests(st.sampled_from([(2,), (3,), (1, 2), (2, 2), (2, 3), (6,)]))
)
LINE = st.one_of(
    line("{} = {}({}{})", NAME, CLASS, st.one_of(nests(), PART), FLAG),
    line("{} = {}.clone()", NAME, PART),
    line("{} = {}({}, size={}{})", NAME, CLASS, st.one_of(nests(), st.none()), LENGTHS, FLAG),
    line("{} = {}", NAME, PART),
    line("{}[{}] = {}", PART, KEY, RIGHT),
    line("{}[{}] = {}", PART, KEY, RIGHT),
    line("{} == {}", PART, PART),
    PART,
    line("{}.reshape{}", NAME, st.permutations([1, 2, 3]).map(tuple)),
    line("{}.reshape({}, {})", NAME, *[st.integers(0, 6)] * 2),
)


@settings(max_examples=200, deadline=None, suppress_health_check=list(HealthCheck))
@given(st.lists(LINE, min_size=1, max_size=12))
def test_programs(program):
    compare(
        [
            "a = int8([[1, 2, 3], [4, 5, 6]])",
            "b = a[0:1]",
            "c = double([[[1, 2], [3, 4], [5, 6]]], is_complex=True)",
        ]
        + program
    )

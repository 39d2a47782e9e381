"""Random programs, run line by line on the module and on the model; a failure prints the program."""

from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import model
from helpers import codes, drawn
from two_sides import compare

NUMBER = st.one_of(
    st.integers(0, 9), st.integers(0, 9), st.sampled_from([True, -1, 300, 1.5, -0.5, 2j, 1 + 2.5j, "x"])
)
LENGTHS = st.lists(st.sampled_from([1, 2, 3, 2, 3, 0]), min_size=1, max_size=4).map(tuple)


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


PARTS = dict(
    name=st.sampled_from("abcd"),
    view=st.sampled_from("vw"),
    flag=st.sampled_from(["", "", ", is_complex=True"]),
    kind=st.sampled_from([row.name for row in model.ROWS] + ["int8", "double"]),
    bound=st.one_of(st.just(""), st.integers(-4, 4)),
    step=st.sampled_from(["", 1, 2, -1, -2]),
    index=st.integers(-4, 4),
    bit=st.integers(0, 1),
    length=st.integers(0, 6),
    size=st.one_of(LENGTHS, st.none()),
    shape=st.sampled_from([(3, 2), (2, 3), (1, 6), (6, 1), (1, 2, 3), (3, 2, 1), (12, 1), (3, 0)]),
    nest=nests(),
    fitting=nests(st.sampled_from([(2,), (3,), (1, 2), (2, 2), (2, 3), (6,)])),
    number=NUMBER.map(repr),
)
PARTS["key"] = drawn("{index} | {bound}:{bound}:{step}", **PARTS)
PARTS["part"] = drawn("{name} | {name}[{key}] | {name}[{key}][{key}] | {name}[{key}][{key}][{key}]", **PARTS)
PARTS["right"] = drawn("{part} | {number} | {nest} | {fitting}", **PARTS)
PARTS["family"] = drawn("""
int16([[1, 2, 3], [4, 5, 6]]) | double(range(12), size=(3, 2, 2)) | logical([1, 0, 1, 1, 0, 0])
int16(size=(0, 3)) | double([[1j, 2], [3, 4j], [5, 6]], is_complex=True)
handed('int16', (2, 3), [1, 2, 3, 4, 5, 6]) | handed('logical', (3, 1, 2), [1, 0, 0, 1, 1, 1])
handed('double', (3, 1), [1, 2, 3])
""")
LINE = drawn(
    """
{name} = {kind}({nest}{flag}) | {name} = {kind}({part}{flag}) | {name} = {kind}({nest}, size={size}{flag})
{name} = {kind}(None, size={size}{flag}) | {name} = {family} | {name} = {family} | {name} = {part}
{name} = {name}.clone() | {name} = {part}.clone() | {name} = parts({name}) | {part} | {part} == {part}
{part}[{key}] = {right} | {part}[{key}] = {right} | {part}[{key}] = {right} | {name}[{bit}][{bit}] = {number}
{view} = export({part}) | {view} = bare({part}) | {view} = () | handle({name}) | handle({name})
poke({name}, {length}, {bit}) | poke({name}, {length}, {bit}) | {name}.reshape{shape} | {name}.reshape{shape}
{name}.reshape({length}, {length}) | {name} = () | collect()
""",
    **PARTS,
)
BEGIN = codes("""
a = int16([[1, 2, 3], [4, 5, 6]]) | b = double([[1j, 2], [3, 4j], [5, 6]], is_complex=True) | c = a[1]
d = a.clone() | v = export(b)
""")


@settings(max_examples=500, deadline=None, suppress_health_check=list(HealthCheck))
@given(st.lists(LINE, min_size=1, max_size=20))
def test_programs(program):
    compare(BEGIN + program)

"""What Python and native code see of one array, line by line: its elements, exports, handles, clones."""

import ctypes
import itertools
import re
import struct

import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

from helpers import NAMES, OPERATIONS, codes, drawn, handle_contents, handle_of_array, outcome
from two_sides import Run

NUMBER = st.sampled_from([0, 1, 1, 2, 7, True, 2j, 0.5])
PARTS = dict(
    name=st.sampled_from("abcd"),
    view=st.sampled_from("vw"),
    index=st.integers(-2, 2),
    bound=st.one_of(st.just(""), st.integers(-3, 3)),
    step=st.sampled_from(["", 1, 2, -1]),
    number=NUMBER,
    numbers=st.lists(NUMBER, min_size=1, max_size=3),
    place=st.integers(0, 5),
    bit=st.integers(0, 1),
    shape=st.sampled_from([(3, 2), (2, 3), (1, 6), (6, 1), (1, 2, 3), (12, 1), (3, 0)]),
)
PARTS["key"] = drawn("{index} | {bound}:{bound}:{step}", **PARTS)
PARTS["part"] = drawn("{name} | {name}[{key}] | {name}[{key}][{key}]", **PARTS)
PARTS["right"] = drawn("{number} | {part} | {numbers} | [[3, 4], [5, 6]]", **PARTS)
PARTS["family"] = drawn("""
int16([[1, 2, 3], [4, 5, 6]]) | double(range(12), size=(3, 2, 2)) | logical([1, 0, 1, 1, 0, 0])
int16(size=(0, 3)) | double([[1j, 2], [3, 4j], [5, 6]], is_complex=True)
handed('int16', (2, 3), [1, 2, 3, 4, 5, 6]) | handed('logical', (3, 1, 2), [1, 0, 0, 1, 1, 1])
handed('double', (3, 1), [1, 2, 3])
""")
LINE = drawn(
    """
{name} = {family} | {name} = {part} | {name} = {name}.clone() | {name} = {part}.clone()
{name} = parts({name}) | {part}[{key}] = {right} | {part}[{key}] = {right} | {name}[{bit}][{bit}] = {number}
{view} = export({part}) | {view} = () | handle({name}) | handle({name}) | poke({name}, {place}, {bit})
poke({name}, {place}, {bit}) | {name}.reshape{shape} | {name}.reshape{shape} | {name} = () | collect()
""",
    **PARTS,
)
BEGIN = codes("""
a = int16([[1, 2, 3], [4, 5, 6]]) | b = double([[1j, 2], [3, 4j], [5, 6]], is_complex=True)
c = a[1] | d = a.clone() | v = export(b)
""")


@settings(max_examples=300, deadline=None, suppress_health_check=list(HealthCheck))
@given(st.lists(LINE, min_size=6, max_size=20))
def test_programs(program):
    Run(BEGIN + program)


# Each begins with a = [[1, 2], [3, 4]]. At its end the names read as told, the elements in nested order.
CASES = """
a handle leaves under an export: v = export(a) | handle(a) | a[0][0] = 7 | handle(a) -> a 7234
a foreign write under exports: v = export(a) | handle(a) | w = export(a[1]) | poke(a, 0, 9) -> a 1234
a foreign write, then Python's: poke(a, 0, 9) | a[0][1] = 7 | d = parts(a) -> a 1734, d 9374
a foreign write before a reshape: poke(a, 0, 9) | a[0][1] = 7 | a.reshape(1, 4) | handle(a) -> a 9374
a foreign write before a clone: poke(a, 0, 9) | b = a.clone() | a.reshape(4, 1) -> a 9324, b 1234
a part's handle keeps its time: p = a[1] | handle(p) | a[1][0] = 7 | handle(p) | b = p.clone() -> p 74, b 34
a part's clone, then its handle: p = a[0] | b = p.clone() | a[0][0] = 7 | handle(p) | b[1] = 8 -> p 72, b 18
a handle that a part keeps: handle(a) | p = a[0] | a = () | p[1] = 7 | d = parts(p) -> p 17, d 1374
a handle that an export keeps: handle(a) | v = export(a[0]) | a = () | collect()
clones, both lent: b = a.clone() | v = export(a) | w = export(b) | a[0][0] = 7 | b[1][1] = 8 -> a 7234, b 1238
export, clone, write the original: v = export(a) | b = a.clone() | a[0][0] = 7 | handle(a) -> a 7234, b 1234
the clone dies: v = export(a) | b = a.clone() | b[0][0] = 7 | b = () | collect() | a[1][1] = 8 -> a 1238
the original dies: b = a.clone() | v = export(b) | a = () | collect() | b[0][0] = 7 | handle(b) -> b 7234
the original dies, but not its export: v = export(a) | b = a.clone() | a = () | b[0][0] = 7 -> b 7234
the handle of an orphan: b = a.clone() | handle(b) | a = () | b[1][1] = 7 | handle(b) -> b 1237
a clone of a clone, the others dead: b = a.clone() | c = b.clone() | b = () | a = () | c[0][0] = 7 -> c 7234
remembered over a reshape: a.clone() | a.reshape(1, 4) | b = a.clone() | c = a[:].clone() -> b 1234, c 1324
remembered by a stale part: p = a[0] | handle(p) | a.reshape(4, 1) | handle(p) | b = p.clone() -> a 1324, b 12
a clone is reshaped: b = a.clone() | b.reshape(4, 1) | b[0][0] = 7 | c = a.clone() -> a 1234, b 7324, c 1234
a refused write to a clone: b = a.clone() | v = export(b) | b[0] = [7, 8, 9] | b[0] = [7, 8] -> a 1234, b 7834
"""
STARTS = {
    "int16": "int16([[1, 2], [3, 4]])",
    "double": "double([[1, 2], [3, 4]])",
    "complex": "double([[1, 2], [3, 4]], is_complex=True)",
    "handed in": "handed('int16', (2, 2), [1, 3, 2, 4])",
}


def table(text):
    """Rows of a name, lines, and what comes after the arrow."""
    rows = [re.fullmatch("(.*?): (.*?)(?: -> (.*))?", row).groups() for row in text.strip().splitlines()]
    return [pytest.param(codes(lines), end or "", id=name) for name, lines, end in rows]


def digits(array):
    items = (digits(item) if hasattr(item, "size") else str(int(item.real)) for item in array)
    return "".join(items)


@pytest.mark.parametrize("start", STARTS.values(), ids=list(STARTS))
@pytest.mark.parametrize("lines, end", table(CASES))
def test_cases(lines, end, start):
    names = Run(["a = " + start] + lines).ours
    for read in filter(None, end.split(", ")):
        assert digits(names[read[0]]) == read[2:]


# An operation refused in the line after the arrow, and what stays as it was.
REFUSED = """
a handle leaves: v = export(a) | b = a.clone() -> handle(a)
a handle of a part leaves: v = export(a) | handle(a) | p = a[0] -> handle(p)
a clone is taken: v = export(a) | handle(a) -> b = a.clone()
a clone of a part is taken: v = export(a) | p = a[0:1] -> b = p.clone()
a second clone is taken: v = export(a) | b = a.clone() | a[0][0] = 7 -> c = a.clone()
the handle of a clone leaves: b = a.clone() | v = export(b) -> handle(b)
a cloned array is written: b = a.clone() | v = export(a) | handle(b) -> a[0][0] = 7
a clone is written: b = a.clone() | w = export(a) -> b[0] = [7, 8]
a clone with a handle is written: b = a.clone() | handle(b) | v = export(b) -> b[0:] = [[7, 8], [9, 9]]
an array with a handle is written: handle(a) | b = a.clone() | v = export(a) -> a[0:1][0] = [7, 8]
a cloned array is exported: b = a.clone() -> v = export(a)
a clone is exported: b = a.clone() | handle(a) -> v = export(b[0])
an array is reshaped: b = a.clone() -> a.reshape(1, 4)
a clone is reshaped: b = a.clone() | v = export(a) -> b.reshape(1, 4)
an array is reshaped after foreign writes: p = a[0] | handle(p) | poke(a, 0, 9) -> a.reshape(4, 1)
parts are taken: v = export(a) | poke(a, 0, 9) -> d = parts(a)
"""
FALLIBLE = sorted(set(OPERATIONS) - {"get_element_count"})
REFUSALS = (("OutOfMemory", "MemoryError"), ("DataTypeMismatch", "RuntimeError"))


@pytest.mark.parametrize("start", STARTS.values(), ids=list(STARTS))
@pytest.mark.parametrize("lines, act", table(REFUSED))
def test_refused_in_the_middle(lines, act, start, script):
    refused = 0
    for operation, (code, kind), after in itertools.product(FALLIBLE, REFUSALS, range(4)):
        run = Run(["a = " + start] + lines)
        script.fail(operation, code, after)
        answer = outcome(act, run.ours)
        script.reset()
        run.lines.append("{} | {} answers {} after {} calls: {}".format(act, operation, code, after, answer))
        if answer and answer[0] in (kind, "MemoryError"):
            refused += 1
            run.check()
            run.step(act)
        else:
            run.same(act, answer, outcome(act, run.theirs))
            run.check()
    assert refused or act != "handle(p)"  # there the library has to make something


def fill_freed_memory():
    """Writes to whatever was freed lately, so that it no longer shows what it held."""
    return [NAMES["double"]([[5] * 8] * 8) for _ in range(50)] + [b"\5" * size for size in range(500, 700)]


def test_a_handle_lasts_as_long_as_an_iterator():
    a = NAMES["double"](range(64), size=(8, 8))
    start, walk = handle_of_array(a), iter(a)
    a[0][0] = 7
    del a
    kept = fill_freed_memory()
    assert handle_contents(start, 8)[:2] == ((8, 8), struct.pack("64d", 7, *range(1, 64))) and kept
    assert list(next(walk)) == [7] + list(range(8, 64, 8))


def test_the_handle_of_a_part_is_not_that_of_its_clone():
    part = NAMES["int16"]([[1, 2], [3, 4]])[0]
    clone = part.clone()
    ctypes.memmove(handle_contents(handle_of_array(part), 2)[2], bytes(4), 4)
    assert str(clone) == "[1,2]" and str(part.clone()) == "[0,0]"


# NumPy's constructor gives the export back at once and keeps the address. a is 8 by 8: 0 to 63, as stored.
RESHAPED = """
once: s = bare(a) | a.reshape(4, 16) | a[0][0] = 7
twice: s = bare(a) | a.reshape(4, 16) | a.reshape(16, 4) | a[0][0] = 7
written before: s = bare(a) | a[0][0] = 7 | a.reshape(4, 16)
through a part: s = bare(a[1]) | a.reshape(64, 1) | a[0] = [7]
"""
CLONED = """
the original is written: s = bare(a) | b = a.clone() | a[0][0] = 7
the clone dies: s = bare(a) | b = a.clone() | a[0][0] = 7 | b = ()
the clone is written: s = bare(a) | b = a.clone() | b[0][0] = 7 | b = ()
taken after the clone: b = a.clone() | s = bare(a) | a[0][0] = 7 | b = ()
taken of the clone: b = a.clone() | s = bare(b) | b[0][0] = 7 | a = ()
taken of the clone, the original written: b = a.clone() | s = bare(b) | a[0][0] = 7 | a = ()
no clone, but a handle and a reshape: handle(a) | s = bare(a) | a.reshape(4, 16) | a[0][0] = 7
its place is used again: handle(a) | s = bare(a) | a.reshape(4, 16) | a[0][0] = 7 | handle(a)
"""


def first_of_bare(lines):
    """Runs the lines; the first element behind s, where all the others are as they were."""
    numpy = pytest.importorskip("numpy")
    names = {"a": NAMES["double"](range(64), size=(8, 8)), "kept": []}
    names["handle"], names["bare"] = handle_of_array, lambda array: numpy.ndarray(64, "d", buffer=array)
    for code in lines:
        exec(code, names)
        names["kept"] += fill_freed_memory()
    assert names["s"].tolist()[1:] == list(range(1, 64))
    return names["s"][0]


@pytest.mark.parametrize("lines, end", table(RESHAPED))
def test_a_bare_pointer_after_a_reshape(lines, end):
    assert first_of_bare(lines) == 7


@pytest.mark.parametrize("lines, end", table(CLONED))
def test_a_bare_pointer_after_a_clone_or_a_handle(lines, end):
    assert first_of_bare(lines) in (0, 7)  # before the write or after it, but nobody else's


def test_what_a_native_consumer_sees_is_never_what_a_clone_reads():
    part = NAMES["double"]([[1, 2], [3, 4]])[1]
    handle, clone = handle_of_array(part), part.clone()
    for reader in (clone, clone.clone(), part.clone()):
        reader.reshape(2, 1)
        ctypes.c_double.from_address(handle_contents(handle, 8)[2]).value += 10
        assert list(map(list, reader)) in ([[3], [4]], [[13], [4]])
    assert str(clone) == "[[3.0],[4.0]]"


@pytest.mark.parametrize(
    "refused", ["", "adopt_buffer_in_order", "create_buffer", "begin_fast", "get_address"]
)
def test_an_address_stays_good_through_reshapes_and_handles(refused, script):
    array = NAMES["double"]([range(30)])
    handle_of_array(array)
    address = array.buffer_info()[0]
    for shape in ((30, 1), (1, 30), (5, 6)):
        array.reshape(shape)
        if refused:
            script.fail(refused, "OutOfMemory")
            with pytest.raises(MemoryError):
                handle_of_array(array)
            script.reset()
        handle_of_array(array)
        part, clone = array[0], array.clone()
        part[0:1] = [shape[0]]
        del clone
        assert struct.unpack("30d", ctypes.string_at(address, 240)) == (shape[0],) + tuple(range(1, 30))
        assert array.buffer_info()[0] == address

"""What Python and native code see of one array, line by line: its elements, exports, handles, clones."""

import itertools
import re

import pytest

from helpers import OPERATIONS, codes, outcome
from two_sides import Run

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
a handle that an iterator keeps: handle(a) | w = iter(a) | a[0][0] = 7 | a = () | collect() | p = next(w) -> p 72
a part's handle is not its clone's: p = a[0] | b = p.clone() | poke(p, 0, 9) | c = p.clone() -> b 12, c 92
a clone of what a part's handle shows: p = a[1] | handle(p) | b = p.clone() | c = b.clone() | poke(c, 0, 9)
each clone of it for itself: p = a[1] | handle(p) | b = p.clone() | poke(b, 0, 9) | b.reshape(2, 1) -> b 94, p 34
its clone is reshaped: p = a[1] | handle(p) | b = p.clone() | b.reshape(2, 1) | poke(b, 0, 9) | c = b.clone()
an address, two reshapes: s = bare(a) | a.reshape(4, 1) | a.reshape(1, 4) | a[0][0] = 7
an address of a part, a reshape: s = bare(a[1]) | a.reshape(4, 1) | a[0] = [7]
an address, a clone: s = bare(a) | b = a.clone() | a[0][0] = 7 | b[1][1] = 8 | b = () -> a 7234
a clone, an address of it: b = a.clone() | s = bare(b) | b[0][0] = 7 | a[0][0] = 8 | a = () -> b 7234
an address between handle and reshape: handle(a) | s = bare(a) | a.reshape(4, 1) | a[0][0] = 7 | handle(a) | b = a.clone()
"""
STARTS = codes("""
int16([[1, 2], [3, 4]]) | double([[1, 2], [3, 4]]) | double([[1, 2], [3, 4]], is_complex=True)
handed('int16', (2, 2), [1, 3, 2, 4])
""")


def table(text):
    """Rows of a name, lines, and what comes after the arrow."""
    rows = [re.fullmatch("(.*?): (.*?)(?: -> (.*))?", row).groups() for row in text.strip().splitlines()]
    return [pytest.param(codes(lines), end or "", id=name) for name, lines, end in rows]


def digits(array):
    items = (digits(item) if hasattr(item, "size") else str(int(item.real)) for item in array)
    return "".join(items)


@pytest.mark.parametrize("start", STARTS)
@pytest.mark.parametrize("lines, end", table(CASES))
def test_cases(lines, end, start):
    names = Run(["a = " + start] + lines).ours
    for read in filter(None, end.split(", ")):
        assert digits(names[read[0]]) == read[2:]


# An operation refused in each line after the arrow, and what stays as it was.
REFUSED = """
a handle leaves: v = export(a) | b = a.clone() -> handle(a)
a handle of a part leaves: v = export(a) | handle(a) | p = a[0] -> handle(p)
a clone is taken: v = export(a) | handle(a) -> b = a.clone()
a second clone is taken: v = export(a) | b = a.clone() | a[0][0] = 7 -> c = a.clone()
the handle of a clone leaves: b = a.clone() | v = export(b) -> handle(b)
a cloned array is written: b = a.clone() | v = export(a) | handle(b) -> a[0][0] = 7
a clone is written: b = a.clone() | w = export(a) -> b[0] = [7, 8]
a clone with a handle is written: b = a.clone() | handle(b) | v = export(b) -> b[0:] = [[7, 8], [9, 9]]
an array with a handle is written: handle(a) | b = a.clone() | v = export(a) -> a[0:1][0] = [7, 8]
a cloned array is exported: b = a.clone() -> v = export(a)
an array is reshaped: b = a.clone() -> a.reshape(1, 4)
a clone is reshaped: b = a.clone() | v = export(a) -> b.reshape(1, 4)
an array is reshaped after foreign writes: p = a[0] | handle(p) | poke(a, 0, 9) -> a.reshape(4, 1)
an array with an address is reshaped: s = bare(a) | handle(a) -> a.reshape(4, 1)
a handle leaves after a reshape: s = bare(a) | handle(a) | a.reshape(4, 1) | a[0][0] = 7 -> handle(a)
parts are taken: v = export(a) | poke(a, 0, 9) -> d = parts(a)
something new: v = export(a) -> b = double([[1, 2], [3, 4]]) | b = single(size=(2, 2)) | b = int8([1j], is_complex=True)
an array is read: v = export(a) -> str(a) | list(a) | a == a | b = double(a)
"""
FALLIBLE = sorted(set(OPERATIONS) - {"get_element_count"})
REFUSALS = dict(OutOfMemory="MemoryError", TooManyElements="MemoryError", DataTypeMismatch="RuntimeError")


@pytest.mark.parametrize("start", STARTS)
@pytest.mark.parametrize("lines, acts", table(REFUSED))
def test_refused_in_the_middle(lines, acts, start, script):
    """Each operation, from each of its calls on, until the act needs no more of them."""
    refused = 0
    for act, operation, code in itertools.product(codes(acts), FALLIBLE, REFUSALS):
        for after in itertools.count():
            run = Run(["a = " + start] + lines)
            script.fail(operation, code, after)
            answer = outcome(act, run.ours)
            script.reset()
            run.lines.append("{}: {} answers {} after {} calls".format(act, operation, code, after))
            if not answer or answer[0] not in (REFUSALS[code], "MemoryError"):
                break
            refused += 1
            run.check()
            run.step(act)
        run.same(act, answer, outcome(act, run.theirs))
        run.check()
    assert refused or acts != "handle(p)"  # there the library has to make something

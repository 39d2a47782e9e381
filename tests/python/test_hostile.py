"""Input that lies, breaks off, changes under the walk, has no end or no size that fits: an error and nothing worse."""

import array
import copy
import itertools
import os
import pickle

import pytest

import model
from helpers import NAMES, agrees, outcome, refuses

SIZE_ITEM = "Item %s could not be retrieved from the value associated with the 'size' keyword."
NO_MEMORY = "unable to allocate memory for array with number of elements = %d; type = %s"


class Sequence:
    """A sequence that does as it is told: length() and item(i) are called for each question."""

    def __init__(self, length, item=lambda i: 1):
        self.length, self.item = length, item

    def __len__(self):
        return self.length() if callable(self.length) else self.length

    def __getitem__(self, i):
        return self.item(i)


def raising(kind, at=0):
    """A function that raises when called with this number or a higher one, and otherwise answers 1."""
    return lambda i=0: exec("raise kind", {"kind": kind}) if i >= at else 1


@pytest.mark.parametrize(
    "length, item, kind, gone",
    [
        (3, raising(IndexError, 2), IndexError, 2),
        (3, raising(IndexError), IndexError, 0),
        (3, raising(ZeroDivisionError, 1), ZeroDivisionError, 1),
        (3, raising(KeyboardInterrupt, 1), KeyboardInterrupt, 1),
        (raising(KeyError), None, KeyError, None),
        (-1, None, ValueError, None),
        (2**64, None, OverflowError, None),
        (None, None, TypeError, None),
    ],
)
def test_sequences_that_break_off(length, item, kind, gone):
    names = dict(s=Sequence(length, item), a=NAMES["int8"]([[1, 1, 1], [2, 2, 2]]))
    for code in ("int8(s)", "int8([s, s])", "int8(s, size=(1, 3))", "a[0] = s", "a[1:] = s", "a[0][:] = s"):
        refuses(code, kind, **names)
    for code, text in (("int8(vector=s)", "item %s could not be retrieved."), ("int8(size=s)", SIZE_ITEM)):
        refuses(code, *(kind,) if gone is None else (RuntimeError, text % gone), **names)
    assert str(names["a"]) == "[[1,1,1],[2,2,2]]"


def test_sequences_that_change_while_they_are_walked():
    double = NAMES["double"]
    for lengths, nest in itertools.product(
        itertools.product(range(3), repeat=4), ("[s, s]", "[[s], [s]]", "s", "[[1], s]")
    ):
        changes = list(lengths)
        liar = Sequence(lambda: changes.pop() if len(changes) > 1 else changes[0])
        try:
            made = double(eval(nest, {"s": liar}))
        except ValueError:
            continue
        assert str(double(eval(str(made)), size=made.size)) == str(made)


def test_nests_without_an_end():
    itself = []
    itself.append(itself)
    deep, tower, target = 1, (), NAMES["double"]([[1, 2]])
    for _ in range(100000):
        deep, tower = [deep], (tower,)
    for nest in (itself, [itself, itself], deep, tower, Sequence(1, lambda i: Sequence(1, lambda j: itself))):
        for code in ("double(s)", "logical(s, size=(1, 1))", "a[0] = s", "a[0:] = s", "a[0][0:1] = s"):
            refuses(code, RecursionError, s=nest, a=target)
    refuses("double(vector=s)", TypeError, "value of 'vector' must be an unnested sequence.", s=deep)
    assert str(target) == "[[1.0,2.0]]"


def test_sizes_that_fit_nowhere():
    for size, count, name in (
        ((2**62,), 2**62, "int16"),
        ((2**61, 1), 2**61, "double"),
        ((2**62, 2), 2**64 - 1, "int8"),
        ((2**32, 2**32), 2**64 - 1, "uint16"),
        ((2**62,) * 3, 2**64 - 1, "logical"),
    ):
        refuses("cls(size=size)", MemoryError, NO_MEMORY % (count, name), cls=NAMES[name], size=size)
    refuses("double(vector=s)", MemoryError, NO_MEMORY % (2**61, "double"), s=Sequence(2**61))


def test_no_elements_beside_lengths_of_any_size():
    for size, strides in (
        ((2**62, 0), (8, 0)),
        ((0, 2**62, 2**62), (8, 0, 0)),
        ((2**62, 2**62, 0), (8, 0, 0)),
        ((2**62, 0, 2**62), (8, 0, 0)),
        ((2**59, 0, 5), (8, 2**62, 0)),
    ):
        for empty in (
            NAMES["double"](size=size),
            NAMES["double"]().reshape(size),
            NAMES["double"]([], size=size),
        ):
            assert empty.size == size and empty.get_bytewise_strides() == strides == memoryview(empty).strides
            assert (
                memoryview(empty).nbytes == 0 == empty.noncomplex().size[0]
                and empty.clone().size == (0,) + size[1:]
            )
            agrees(empty)
            if size[0]:
                assert empty[2**59 - 1].size == empty[-1].size == size[1:]
                refuses("str(a)", MemoryError, a=empty)
                refuses("a.reshape(2, 3)", NAMES["ShapeError"], a=empty)


def test_elements_in_memory_of_any_alignment():
    for typecode in "bBhHiIqQfd":
        elements = array.array(typecode, [1, 2, 3])
        for start in range(elements.itemsize):
            memory = bytearray(start) + elements.tobytes()
            view = memoryview(memory)[start:].cast(typecode)
            for row in model.ROWS:
                for code in ("f(s)", "f(s, is_complex=True)", "f(vector=s)", "f([s, s])"):
                    names = dict(f=NAMES[row.name], s=view)
                    assert outcome(code, names) == outcome(code, dict(names, s=elements))


def test_ten_thousand_dimensions():
    lengths = (1,) * 9999 + (2,)
    array = part = NAMES["int16"]([3, 4], size=lengths)
    assert array.size == lengths
    for _ in range(9999):
        part = part[0]
    assert str(part) == "[3,4]" and part[1] == 4 and part.clone().size == part.size == (2,)
    assert array.reshape(*reversed(lengths)).size == (2, 1) and array.reshape(lengths).size == lengths
    array[0:1] = [5, 6]
    for action in (
        str,
        repr,
        copy.copy,
        pickle.dumps,
        NAMES["double"],
        memoryview,
        lambda a: a == a,
        lambda a: a.clone(),
        lambda a: a.toarray(),
        lambda a: next(iter(a)),
        lambda a: a.__setitem__(0, a[0]),
    ):
        try:
            action(array)
        except RecursionError:
            pass
        except (RuntimeError, ValueError) as refusal:
            assert "number of dimensions" in str(refusal) or "toarray() can be called only" in str(refusal)
    assert array.reshape(1, 2)[0][1] == 6


@pytest.mark.parametrize("half", [5 * 10**7, 2**31 + 5])
def test_large_arrays(half):
    if os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_AVPHYS_PAGES") < 6 * half:
        pytest.skip("takes much more memory than there is")
    array = NAMES["uint8"](size=(2, half))
    array[1][-1] = 200
    assert array.buffer_info()[1] == 2 * half == memoryview(array).nbytes
    assert (
        array[1][half - 1] == 200
        and list(array[1][half - 5 :]) == [0, 0, 0, 0, 200]
        and array[0][half - 1] == 0
    )

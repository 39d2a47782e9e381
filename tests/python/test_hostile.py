"""Input that lies, breaks off, changes under the walk, has no end or no size that fits: an error and nothing worse."""

import copy
import itertools
import os
import pickle

import pytest

from helpers import NAMES, Sequence, agrees, codes, each_code, each_row, raising, refuses, rows

SIZE_ITEM = "Item %s could not be retrieved from the value associated with the 'size' keyword."
NO_MEMORY = "unable to allocate memory for array with number of elements = %d; type = %s"


# A length, an item, what is raised, and the item that then could not be retrieved.
@each_code("""
3, raising(IndexError, 2), IndexError, 2 | 3, raising(IndexError), IndexError, 0 | None, None, TypeError, None
3, raising(ZeroDivisionError, 1), ZeroDivisionError, 1
3, raising(KeyboardInterrupt, 1), KeyboardInterrupt, 1 | raising(KeyError), None, KeyError, None
-1, None, ValueError, None | 2 ** 64, None, OverflowError, None
""")
def test_sequences_that_break_off(code):
    length, item, kind, gone = eval(code, {"raising": raising})
    names = dict(s=Sequence(length, item), a=NAMES["int8"]([[1, 1, 1], [2, 2, 2]]))
    for code in codes("int8(s) | int8([s, s]) | int8(s, size=(1, 3)) | a[0] = s | a[1:] = s | a[0][:] = s"):
        refuses(code, kind, **names)
    for code, text in (("int8(vector=s)", "item %s could not be retrieved."), ("int8(size=s)", SIZE_ITEM)):
        refuses(code, *(kind,) if gone is None else (RuntimeError, text % gone), **names)
    assert str(names["a"]) == "[[1,1,1],[2,2,2]]"


def test_sequences_that_change_while_they_are_walked():
    double = NAMES["double"]
    answers, nests = itertools.product(range(3), repeat=4), codes("[s, s] | [[s], [s]] | s | [[1], s]")
    for lengths, nest in itertools.product(answers, nests):
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
    for code, end in rows("""
    int16(size=(2 ** 62,)) -> 2 ** 62 | double(size=(2 ** 61, 1)) -> 2 ** 61
    int8(size=(2 ** 62, 2)) -> 2 ** 64 - 1 | uint16(size=(2 ** 32,) * 2) -> 2 ** 64 - 1
    logical(size=(2 ** 62,) * 3) -> 2 ** 64 - 1 | double(vector=s) -> 2 ** 61
    """):
        refuses(code, MemoryError, NO_MEMORY % (eval(end), code.split("(")[0]), s=Sequence(2**61))


@each_row("""
(2 ** 62, 0) -> (8, 0) | (0, 2 ** 62, 2 ** 62) -> (8, 0, 0) | (2 ** 62, 2 ** 62, 0) -> (8, 0, 0)
(2 ** 62, 0, 2 ** 62) -> (8, 0, 0) | (2 ** 59, 0, 5) -> (8, 2 ** 62, 0)
(2 ** 40, 2 ** 40, 0) -> (8, 2 ** 43, 0)
""")
def test_no_elements_beside_lengths_of_any_size(code, end):
    double, size = NAMES["double"], eval(code)
    for empty in (double(size=size), double().reshape(size), double([], size=size)):
        view = memoryview(empty)
        assert empty.size == size and empty.get_bytewise_strides() == eval(end) == view.strides
        assert view.nbytes == 0 == empty.noncomplex().size[0] and empty.clone().size == (0,) + size[1:]
        agrees(empty)
        if size[0]:
            assert empty[size[0] - 1].size == empty[-1].size == size[1:]
        if size[0] == 2**62:  # below it, a sanitizer's heap would end the process
            refuses("str(a)", MemoryError, a=empty)
        part = empty
        while len(part.size) > 1 and len(part):
            part = part[-1]
        assert str(part[:0]) == "[]" and part[-1:].size[0] == 0


def test_ten_thousand_dimensions():
    lengths = (1,) * 9999 + (2,)
    array = part = NAMES["int16"]([3, 4], size=lengths)
    assert array.size == lengths
    for _ in range(9999):
        part = part[0]
    assert str(part) == "[3,4]" and part[1] == 4 and part.clone().size == part.size == (2,)
    assert array.reshape(*reversed(lengths)).size == (2, 1) and array.reshape(lengths).size == lengths
    array[0:1] = [5, 6]
    for code in codes("""
    str(a) | repr(a) | copy.copy(a) | pickle.dumps(a) | double(a) | memoryview(a) | a == a | a.clone()
    a.toarray() | next(iter(a)) | a.__setitem__(0, a[0])
    """):
        try:
            eval(code, dict(NAMES, a=array, copy=copy, pickle=pickle))
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
    assert list(array[1][half - 5 :]) == [0, 0, 0, 0, 200] and array[0][half - 1] == 0


@each_row("""
OutOfMemory -> | TooManyElements -> | DataTypeMismatch -> Data type mismatch. | SystemError -> System Error.
""")
def test_only_exhausted_memory_is_a_memory_error(code, end, script):
    for call in codes("""
    double([1, 2]) | double([[1], [2]]) | double(vector=[1, 2]) | double([1, 2], size=(2, 1)) | double(size=(2, 1))
    """):
        script.fail("create_array" if call == "double(size=(2, 1))" else "create_buffer", code)
        refuses(call, RuntimeError if end else MemoryError, end or NO_MEMORY % (2, "double"))
        script.reset()

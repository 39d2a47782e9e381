"""Writing through subscripts: which right sides fit, what a refusal says, and what it leaves written."""

import itertools

import pytest

from helpers import CLASSES, NAMES, agrees, array_of_handle, codes, compare, new_handle, refuses

SETUP = ["a = int16([[1, 2, 3], [4, 5, 6]])", "v = int16(range(10))", "x = int16([1])", "c = int16([[1], [2]])",
         "z = int16(size=(2, 0))", "d = double(size=(1, 2))", "w = v[0][2:4].clone()", "l = logical([0, 0])",
         "b = int16([[[1, 2, 3, 4]] * 3] * 2)"]


@pytest.mark.parametrize("code", codes("""
a[0][1] = 9 | a[-1][-1] = True | a[0] = (7, 8, 9) | a[0] = b'abc' | a[0] = a[1] | a[:] = a[::-1] | a[1] = a[1][::-1]
a[0][0:2] = [7, 8] | a[0][::-1] = [7, 8, 9] | a[0][1:1] = [] | a[0][3:1] = () | a[0:2] = [[7, 8, 9], [1, 2, 3]]
a[0:2] = [7, 8, 9, 1, 2, 3] | a[0:2] = [[[7], [8]], [[9], [1]], [[2], [3]]] | a[::-1] = [7, 8, 9, 1, 2, 3] | a[0:1] = [7, 8, 9]
a[0:0] = [] | a[0:0] = [[], []] | b[1] = [[5, 6, 7, 8]] * 3 | b[1][2] = [5, 6, 7, 8] | b[0][1:] = range(8) | b[1:][:] = range(12)
c[0] = [5] | x[0:1] = 7 | z[0] = [] | z[0][:] = [] | z[1:1] = [] | w[1] = 5 | w[::-1] = [5, 6] | w[0:1] = [1] | d[0] = [0.5, True]
l[0] = [2, 0] | v[0:1][0] = range(9, -1, -1) | a[1:][0:2] = [7, 8, 9] | a[0:2:1][0:2:2] = [7, 8, 9] | v[0][0:9:2 ** 62] = [-1]
a[2] = 0 | a[-3] = 0 | a[0][3] = 'x' | a[::0] = 0 | a[0][1] = [5] | a[0][1] = a | a[0][1] = 2 ** 15 | a[0] = [7, 8] | a[0] = 5
a[0] = [[7, 8, 9]] | a[0] = [7, 8, 1.5] | a[0] = 'abc' | a[0:] = [[7, 8, 9], [1, 2]] | a[:] = [[[], []], [[1], [2]]]
a[0][0:2] = [7] | a[0][0:2] = 7 | a[0][0:1] = 7 | a[0][0:2] = [[7, 8]] | a[0:2] = [] | a[0:0] = [1] | a[0:1][1:2] = [7, 8, 9]
a[0:2] = [7, 8, 9] | a[::-1] = [7, 8, 9, 0] | a[0:1] = [7, 8, 9, 1] | a[::-1][0:1] = [1, 2, 3] | a[0:2][::-1] = [1, 2, 3]
a[1:1][0] = [1, 2, 3] | a[1:1][0:1] = [1, 2, 3] | v[0][2:8][10] = 5 | v[0][2:8][:] = range(6) | b[1] = range(12) | c[0] = 5
z[0:1] = [] | z[0:1] = [1] | z[0] = 1 | w[0] = [1] | w[2] = 1 | w[0:2] = [1] | l[0][0] = 2.5 | l[0] = [1, 1j] | l[0:] = [1.0, 0]
"""))
def test_writes_as_the_model(code):
    compare(SETUP + [code])


@pytest.mark.parametrize("code, after", [
    # an integer after a slice is normalised against the dimension and then counted in the slice
    ("v[2:8][1] = -1", [0, 1, 2, -1, 4, 5, 6, 7, 8, 9]),
    ("v[2:8][-7] = -1", [0, 1, 2, 3, 4, -1, 6, 7, 8, 9]),
    ("v[::-1][0] = -1", [0, 1, 2, 3, 4, 5, 6, 7, 8, -1]),
    ("v[2:8][7] = 5", "unable to index into slice."),
    ("v[2:8][-1] = 5", "unable to index into slice."),
    # a slice after a slice counts for itself in the last dimension
    ("v[2:8][1:3] = [-1, -2]", [0, -1, -2, 3, 4, 5, 6, 7, 8, 9]),
    ("v[::-1][:2] = [-1, -2]", [-1, -2, 2, 3, 4, 5, 6, 7, 8, 9]),
])
def test_what_surprises(code, after):
    v = NAMES["int16"](range(10))[0]
    if isinstance(after, str):
        refuses(code, RuntimeError, after, v=v)
        after = list(range(10))
    else:
        exec(code, {"v": v})
    assert list(v) == after


def test_refusals_in_the_words_of_cpython():
    array = NAMES["int16"]([[1, 2], [3, 4]])
    for code, kind, text in (("a[2 ** 64] = 0", OverflowError, None), ("a['x':] = 0", TypeError, None),
                             ("a[0, 1] = 0", RuntimeError, "index is not an integer or slice."),
                             ("a[0][::0] = 0", ValueError, "slice step cannot be zero."),
                             ("a[0][0] = None", TypeError, "value must not be 'None'.")):
        refuses(code, kind, text, a=array)
    assert str(array) == "[[1,2],[3,4]]"


def test_a_bare_number_is_one_by_one():
    block = array_of_handle(new_handle(7, (2, 1, 1)))
    block[0], block[1] = 5, [[6]]
    assert str(block) == "[[[5]],[[6]]]"


@pytest.mark.parametrize("cls", CLASSES)
def test_a_write_is_seen_by_the_family_at_once_and_by_nobody_else(cls):
    for flag in ({}, {"is_complex": True})[:1 + (cls is not NAMES["logical"])]:
        array = cls([[0, 1, 0], [1, 0, 1]], **flag)
        row, walk, address = array[1], iter(array[1]), array.buffer_info()[0]
        copies = [array.clone(), cls(array, **flag), row.clone()]
        before = list(map(str, copies))
        next(walk)
        array[1][0], row[1:] = 0, [1, 0]
        array[0:1] = [1, 0, 1]
        assert list(row) == [0, 1, 0] == [row[0]] + list(walk) and list(array[0]) == [1, 0, 1]
        assert array.buffer_info()[0] == address and list(map(str, copies)) == before
        agrees(array)


def test_writes_ask_once_for_storage_and_survive_its_refusals(script):
    array = NAMES["double"](size=(100, 100))
    before = script.scripted_calls(55)
    array[:], array[3], array[4][2:50] = range(10000), range(100), range(48)
    assert script.scripted_calls(55) <= before + 3
    refused = 0
    for number, statement in itertools.product((53, 55, 57, 71, 114), (
            "a[0][0] = -1", "a[0] = range(1, 101)", "a[1:3] = range(200)", "a[0][5:7] = [-1, -2]")):
        shown = str(array)
        script.scripted_fail(number, 19, 0)
        try:
            exec(statement, {"a": array})
        except (MemoryError, RuntimeError):
            refused += 1
            assert str(array) == shown
        script.scripted_fail(number, 0, 0)
        agrees(array)
    assert refused >= 4

"""Reading through subscripts: integers, slices, slices of slices, length and iteration."""

import itertools

import pytest

from helpers import NAMES, codes, each_code, each_row, outcome
from model import selection
from two_sides import compare

SETUP = codes("""
a = int16([[[i + j + k for k in range(4)] for j in (0, 10, 20)] for i in (0, 100)]) | v = int16(range(10))
e = int16(size=(2, 0)) | d = int16(range(64), size=(2, 1, 2, 2, 2, 1, 1, 2, 2))
""")


@each_code("""
d[1][0][0][1] | d[1][0][0][1][1][0][0][1:] | d[1][-1][0][1][0][0][0][1] | d[1][0][1][0][1][0][0][1][0:2][1:]
d[0:2][1:][0][0] | v[0][::2][::2 ** 62] | a[-1][2] | a[True] | a[-2][-3][-4] | a[1:][-1] | a[::-1][0]
a[1][::-2][1] | a[1][2][3:0:-2] | a[1][2][1:3][-2] | a[5:9] | a[2:2][::-1] | a[0][2:2][5:] | a[-9:-5:-1]
e[1][::-1] | v[0][2:8][-1] | v[0:1][0][9] | v[0][0:10:3][2] | v[0][-2 ** 70:2 ** 70] | v[0][3::2 ** 62]
v[0][:9:2 ** 62][:9:2 ** 62] | v[0][::2 ** 70][0:1:2 ** 63 - 1] | v[0][:3:-2 ** 70] | a[0:0][0:0] | a[2]
a[-3] | a[0][0][4] | a[1:][1] | a[2:2][0] | e[0][-1] | v[0][2:8][-7] | a[1, 2] | a[1.0] | a[None] | a['x']
a[::0] | a[0:1][::0] | a[::-1][0:1] | a[0:2][::-1] | v[0][5::-1][::-1] | a[0:0][::-1] | a[::-1][3:]
""")
def test_reads_as_the_model(code):
    compare(SETUP + ["x = " + code, code])


# A slice of a slice is what both select, in the numbers of the dimension; an integer counts in the slice.
@each_row("""
v[2:8][1:3] -> [2] | v[2:8][-2:] -> [4, 5] | v[6:9][0:2] -> [] | v[0:10:2][0:5:2] -> [0, 4] | [v[2:8][1]] -> [3]
v[one:4][:] -> [1, 2] | [v[I(1)]] -> [1] | v[2 ** 63] -> OverflowError | v[-2 ** 64] -> OverflowError
v[1.5:] -> TypeError | v.__setitem__(2 ** 64, 0) -> OverflowError | v[::'x'] -> slice step cannot be zero.
v[one] -> index is not an integer or slice. | v.__setitem__(slice('x'), [0]) -> TypeError
v[1.5::0] -> slice step cannot be zero.
""")
def test_slices_of_slices(code, end):
    one, v = type("One", (), {"__index__": lambda self: 1})(), NAMES["int16"](range(10))[0]
    answer = outcome("list(%s)" % code, dict(v=v, one=one, I=type("I", (int,), {})))
    assert answer == end or end in answer


def test_every_slice_of_five_and_every_slice_of_that():
    row, five, bounds = NAMES["int8"](range(5))[0], list(range(5)), [None] + list(range(-6, 7))
    for key in itertools.starmap(slice, itertools.product(bounds, bounds, (-3, -1, 1, 2))):
        assert list(row[key]) == five[key]
        for again in itertools.starmap(slice, itertools.product(bounds[::2], bounds, (1, 2))):
            if key.step > 0 and five[key]:
                assert list(row[key][again]) == list(selection(range(*key.indices(5)), again, len(five[key])))


def test_parts_and_walks_share_with_their_array_and_outlive_it():
    array = NAMES["int8"]([[1, 2, 3], [4, 5, 6]])
    row, walk, rows = array[1], iter(array[0]), iter(array[::-1])
    assert iter(walk) is walk and next(walk) == 1
    row[2], array[0][2] = 7, 8
    assert array[1][2] == 7 and list(walk) == [2, 8]
    array[1][0] = 9
    del array
    assert list(row) == [9, 5, 7] and [list(each) for each in rows] == [[9, 5, 7], [1, 2, 8]]
    for ended in (walk, rows, walk, iter(NAMES["int8"](size=(0, 2**40))), iter(row[1:1])):
        with pytest.raises(StopIteration):
            next(ended)
    empty = NAMES["int8"](size=(2, 0))
    assert row and empty and not row[3:] and not empty[1]  # truth is length

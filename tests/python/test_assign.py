"""Writing through subscripts: which right sides fit, what a refusal says, and what it leaves written."""

from helpers import NAMES, OPERATIONS, agrees, array_of_handle, codes, each_class, each_code, new_handle
from two_sides import compare

SETUP = codes("""
a = int16([[1, 2, 3], [4, 5, 6]]) | v = int16(range(10)) | x = int16([1]) | c = int16([[1], [2]])
z = int16(size=(2, 0)) | d = double(size=(1, 2)) | w = v[0][2:4].clone() | l = logical([0, 0])
b = int16([[[1, 2, 3, 4]] * 3] * 2) | r = v[0]
""")


@each_code("""
a[0][1] = 9 | a[-1][-1] = True | a[0] = (7, 8, 9) | a[0] = b'abc' | a[0] = a[1] | a[:] = a[::-1]
a[1] = a[1][::-1] | a[0][::-1] = [7, 8, 9] | a[0][1:1] = [] | a[0][3:1] = () | a[0:2] = [7, 8, 9, 1, 2, 3]
a[0:2] = [[[7], [8]], [[9], [1]], [[2], [3]]] | a[::-1] = [7, 8, 9, 1, 2, 3] | a[0:0] = [] | a[0:0] = [[], []]
b[1] = [[5, 6, 7, 8]] * 3 | b[1][2] = [5, 6, 7, 8] | b[0][1:] = range(8) | c[0] = [5] | x[0:1] = 7 | z[0] = []
z[0][:] = [] | w[1] = 5 | w[::-1] = [5, 6] | w[0:1] = [1] | d[0] = [0.5, True] | l[0] = [2, 0] | a[0][1] = a
v[0:1][0] = range(9, -1, -1) | r[0:9:2 ** 62] = [-1] | b[1:][:] = range(12) | a[1:][0:2] = [7, 8, 9]
a[0][0] = 'x' | a[0][0] = b'a' | a[2] = 0 | a[-3] = 0 | a[0][3] = 'x' | a[::0] = 0 | a[0][1] = [5]
a[0][1] = 2 ** 15 | a[0] = [7, 8] | a[0] = 5 | a[0] = [[7, 8, 9]] | a[0] = [7, 8, 1.5] | a[0] = 'abc'
a[0:] = [[7, 8, 9], [1, 2]] | a[:] = [[[], []], [[1], [2]]] | a[0][0:2] = [7] | a[0][0:2] = 7 | a[0][0:1] = 7
a[0][0:2] = [[7, 8]] | a[0:2] = [] | a[0:0] = [1] | a[0:1][1:2] = [7, 8, 9] | a[0:2] = [7, 8, 9]
a[0:1] = [7, 8, 9, 1] | a[0:2][::-1] = [1, 2, 3] | a[1:1][0] = [1, 2, 3] | a[1:1][0:1] = [1, 2, 3]
r[2:8][10] = 5 | r[2:8][:] = range(6) | b[1] = range(12) | c[0] = 5 | r[2:8][1] = -1 | r[2:8][-7] = -1
r[2:8][7] = 5 | r[2:8][1:3] = [-1, -2] | r[::-1][:2] = [-1, -2] | r[0, 1] = 0 | r[1.0] = 0 | z[0:1] = []
z[0:1] = [1] | z[0] = 1 | w[2] = 1 | w[0:2] = [1] | l[0][0] = 2.5 | l[0] = [1, 1j] | l[0:] = [1.0, 0]
""")
def test_writes_as_the_model(code):
    compare(SETUP + [code])


@each_class
def test_a_write_is_seen_by_the_family_at_once_and_by_nobody_else(row):
    for flag in ({}, {"is_complex": True})[: 1 + (row.name != "logical")]:
        array = NAMES[row.name]([[0, 1, 0], [1, 0, 1]], **flag)
        part, walk, address = array[1], iter(array[1]), array.buffer_info()[0]
        copies = [array.clone(), NAMES[row.name](array, **flag), part.clone()]
        before = list(map(str, copies))
        next(walk)
        array[1][0], part[1:] = 0, [1, 0]
        array[0:1] = [1, 0, 1]
        assert list(part) == [0, 1, 0] == [part[0]] + list(walk) and list(array[0]) == [1, 0, 1]
        assert array.buffer_info()[0] == address and list(map(str, copies)) == before
        agrees(array)


def test_a_write_asks_once_for_storage_and_a_reshape_never(script):
    array = NAMES["double"](size=(100, 100))
    for code in codes("a[:] = range(10000) | a[3] = range(100) | a[4][2:50] = range(48)"):
        script.fail("unshare", "OutOfMemory", after=1)
        exec(code, {"a": array})
    script.reset()
    clone = array.clone()
    for name in OPERATIONS:
        script.fail(name, "OutOfMemory")
    assert array.reshape(50, 200).size == clone.reshape(20, 500).reshape(50, 200).size


def test_a_bare_number_is_one_by_one():
    block = array_of_handle(new_handle("INT16", (2, 1, 1)))
    block[0], block[1] = 5, [[6]]
    assert str(block) == "[[[5]],[[6]]]"

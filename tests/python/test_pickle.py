"""Copies through pickle, copy and other processes."""

import copy
import multiprocessing
import pickle

import pytest

from helpers import CLASSES, NAMES, agrees, each_code, each_row


@each_code("""
double([[1, 2.5], [nan, -0.0]]) | single([0.1, inf]) | logical([[True], [False]]) | int8([[[1, 2]], [[3, 4]]])
int64([2 ** 63 - 1, -2 ** 63]) | double([1j, complex(nan, 2)], is_complex=True) | int8([[1, 2], [3, 4]])[::-1]
uint16([[1, 2], [3, 4]], is_complex=True) | int8([[1, 2], [3, 4]])[0:1]
""")
def test_copies(code):
    array = eval(code, dict(NAMES, nan=float("nan"), inf=float("inf")))
    pickles = [lambda it, n=n: pickle.loads(pickle.dumps(it, n)) for n in range(pickle.HIGHEST_PROTOCOL + 1)]
    for way in [copy.copy, copy.deepcopy] + pickles:
        made = way(array)
        assert type(made) is type(array) and repr(made) == repr(array) and made.size == array.size
        agrees(made)
        made[0][0] = made[-1][-1]
        assert repr(array) == repr(way(array))


# The last as protocol 0 has it, by hand.
@each_row("""
a[1] -> int8([4, 5, 6]) | a[1][::-2] -> int8([6, 4]) | a[2:] -> int8() | int8(size=(0, 3)) -> int8()
int8(size=(2, 0, 5)) -> int8([[], []])
loads(b'cquarna\\nint8\\n((d(l(lI1\\naI2\\naa(lI3\\naI4\\naatR.') -> int8([[1, 2], [3, 4]])
""")
def test_what_comes_back(code, end):
    names = dict(NAMES, a=NAMES["int8"]([[1, 2, 3], [4, 5, 6]]), loads=pickle.loads)
    made, same = copy.copy(eval(code, names)), eval(end, names)
    assert made == same and made.size == same.size


@pytest.mark.parametrize("method", ["spawn", "fork"])
def test_other_processes(method):
    arrays = [cls([[1, 0], [0, 1], [1, 1]]) for cls in CLASSES]
    arrays.append(NAMES["double"]([[1j], [2]], is_complex=True))
    with multiprocessing.get_context(method).Pool(1) as pool:
        assert pool.map(copy.deepcopy, arrays) == arrays

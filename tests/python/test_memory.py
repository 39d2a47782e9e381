"""Each call, good or failing, made ten thousand times leaves memory and counts where they were."""

import contextlib
import copy
import ctypes
import gc
import itertools
import pickle
import sys

from helpers import NAMES, OPERATIONS, Sequence, array_of_handle, codes, each_code, handle_of_array
from helpers import library, new_handle, raising, scripted

GOOD = """
double() | double([[1, 2], [3, 4]]) | double([1, 2, 3, 4], size=(2, 2)) | logical(vector=[1, 0])
int8(size=(3, 3)) | double(b) | double({'is_complex': True}, [1j]) | int8(b[1]) | b[1] | b[1:][0] | b[1][2]
b[::-1] | b[0:2][0:1] | len(b[0]) | bool(b) | list(b) | next(iter(b)) | list(b[0]) | str(b) | repr(c) | b == a
b != c | c == c | b == 5 | b[0:1].size | b.itemsize | b.buffer_info() | b.get_bytewise_strides()
memoryview(b) | b[0].tomemoryview() | b.clone() | b[0].clone() | b[2:].clone() | c.real() | c._imag
b.noncomplex() | b[0].toarray() | b.reshape(2, 3) | b.reshape([2, 3, 1]) | b.__setitem__(0, b[1])
b[0].__setitem__(1, 5) | b[0].__setitem__(slice(2), [1, 2]) | b.__setitem__(slice(1), [7, 8, 9])
c[0].__setitem__(0, 5) | b.__reduce__() | copy.copy(b) | copy.deepcopy(c) | pickle.loads(pickle.dumps(b))
take(handle('INT16')) | give(b) | give(b[0][1:]) | next(iter(d[0][0][0][0][0][0][0][0][0][1:]))
"""
BAD = """
double('x') | double([[1, 2], [3]]) | double([[[1]], [2]]) | int8([1, 2, 300]) | int8([1.5])
double([1, None]) | double(1, 2) | double([1], is_complex=1) | double([1], vector=[1])
double([1, 2], size=(3, 1)) | double([[1], [2]], size=(1, 2)) | b['x':] | double(size=5)
double(size=(1, -1)) | double(size=(2 ** 62,)) | double(vector=[1, 'a']) | int8(vector=[1, 300]) | b[2 ** 64]
double(holed) | double([[1], holed]) | int8(vector=holed) | int8(size=holed) | double({}, 1, 2, 3, 4, 5)
b[7] | b[0][7] | b[1, 2] | b[::0] | b[::-1][::-1] | b.__delitem__(0) | b.__setitem__(0, 5)
b.__setitem__(0, [1, 2, 2 ** 20]) | b[0].__setitem__(0, 'x') | b.__setitem__(slice(2), [1, 2])
b[0].__setitem__(slice(2), [1]) | b[0:1].__setitem__(1, 5) | b < b | hash(b) | b.real() | c.noncomplex()
c.toarray() | memoryview(c) | b.reshape() | b.reshape(1, 2) | b.reshape(2, -3) | b[0].reshape(2, 3)
b.reshape(2, 3, x=1) | b.reshape(holed) | take(None) | take(handle('CHAR')) | held.reshape(3, 2) | stale[0]
str(stale) | stale == stale | stale.clone() | list(stale) | stale.__setitem__(0, 1) | give(stale)
stale.__reduce__() | next(walk) | b.clone(1) | large.clone()
"""


def arrays():
    names = dict(NAMES, copy=copy, pickle=pickle, take=array_of_handle, give=handle_of_array)
    exec("a, b, held = (int16([[1, 2, 3], [4, 5, 6]]) for _ in range(3))", names)
    exec("stale, walk, _, view = held[0], iter(held), held.reshape(3, 2), memoryview(held)", names)
    names["d"] = NAMES["int8"]([1, 2], size=(1,) * 9 + (2,))
    exec("c, large = double([[1j, 2]], is_complex=True), uint64([2.0**63], is_complex=True).real()", names)
    return dict(names, handle=new_handle, holed=Sequence(3, raising(IndexError, 2)))


class Usage(ctypes.Structure):
    _fields_ = [(name, ctypes.c_size_t) for name in "abcdefghij"]


def memory():
    """Live objects of the library, blocks of the interpreter, all references, 64 bytes of the C library."""
    gc.collect()
    libc, live = ctypes.CDLL(None), library.scripted_live_objects() if scripted else 0
    counts = [live, sys.getallocatedblocks(), getattr(sys, "gettotalrefcount", int)()]
    if hasattr(libc, "mallinfo2"):
        libc.mallinfo2.restype = Usage
        counts.append(libc.mallinfo2().h // 64)
    return counts


@each_code(GOOD.strip() + BAD)
def test_ten_thousand_times(code):
    names, compiled, good = arrays(), compile(code, code, "eval"), code in codes(GOOD)

    def run(times):
        for _ in range(times):
            try:
                eval(compiled, names)
            except Exception:
                assert not good
            else:
                assert good

    run(300)
    before = memory()
    run(10000)
    growth = [after - start for after, start in zip(memory(), before)]
    assert growth[0] == 0 and max(growth) < 1000, growth


def test_a_handle_that_is_refused_is_freed(script):
    for operation, after in itertools.product(OPERATIONS, range(3)):
        handle = new_handle("INT16", (2, 2))
        script.fail(operation, "OutOfMemory", after)
        with contextlib.suppress(MemoryError):
            array_of_handle(handle)
        script.reset()

"""The module as it is imported: names, classes, documentation, the two exceptions, and the functions of the capsule."""

import ctypes

import pytest
import quarna
import quarnamultidimarrayforpython as module

from helpers import CLASSES, NAMES, agrees, array_of_handle, handle_contents, handle_of_array, new_handle, refuses
from model import ROWS

ATTRIBUTES = {
    "size": "dimensions",
    "_size": "dimensions",
    "itemsize": "size of an element in bytes",
    "_real": "real part of elements; equivalent to real()",
    "_imag": "imaginary part of elements; equivalent to imag()",
    "_data": "elements in storage order; equivalent to noncomplex()",
    "_is_complex": "whether array is complex",
}
METHODS = {
    "reshape": "reshape changes the dimensions of an N-dimensional array while preserving the values",
    "buffer_info": "buffer_info returns a two-element tuple containing the address of the buffer and the number of elements",
    "get_bytewise_strides": "get_bytewise_strides returns a tuple containing the bytewise strides",
    "clone": "clone returns an independent copy of the input object",
    "real": "real returns the real part of the input object as a 1-by-N array",
    "imag": "imag returns the imaginary part of the input object as a 1-by-N array",
    "noncomplex": "noncomplex returns the the input object (which must be noncomplex) as a 1-by-N array",
    "toarray": "toarray returns an array.array initialized from the input object",
    "tomemoryview": "tomemoryview returns a memoryview initialized from the input object",
    "__reduce__": "__reduce__ pickles the input object",
}


def test_names_in_their_order():
    own = [name for name in vars(module) if not name.startswith("__")]
    assert own == [row.name for row in ROWS] + ["QCPyIter", "ShapeError", "SizeError", "_capi"]
    assert module.__name__ == module.__doc__ == "quarnamultidimarrayforpython"
    assert all(getattr(quarna, name) is getattr(module, name) for name in own[:11] + ["ShapeError", "SizeError"])


@pytest.mark.parametrize("cls, name", [(cls, row.name) for cls, row in zip(CLASSES, ROWS)])
def test_a_class(cls, name):
    assert (cls.__module__, cls.__qualname__, cls.__doc__) == ("quarna", name, name)
    assert repr(cls) == "<class 'quarna.%s'>" % name and cls.__base__ is object and cls.__hash__ is None
    own = [key for key in vars(cls) if key in ATTRIBUTES or key in METHODS]
    assert {key: getattr(cls, key).__doc__ for key in own} == dict(ATTRIBUTES, **METHODS)
    assert [key for key in own if key in METHODS] == list(METHODS) and [key for key in own if key in ATTRIBUTES] == list(ATTRIBUTES)
    made = cls([1])
    refuses("class Heir(cls): pass", TypeError, cls=cls)
    refuses("hash(made)", TypeError, "unhashable type: 'quarna.%s'" % name, made=made)
    for key in list(ATTRIBUTES) + ["extra"]:
        refuses("made.%s = 1" % key, AttributeError, made=made)
    for code in ("del made[0]", "del made[0][0]", "del made[0:1]", "made[0].__delitem__(0)"):
        refuses(code, TypeError, "array elements cannot be deleted.", made=made)


def test_the_iterator_class_and_the_exceptions():
    walker = module.QCPyIter
    assert (walker.__name__, walker.__doc__) == ("QCPyIter", "Internal iterator object")
    assert type(iter(module.double([1]))) is walker
    for code in ("walker()", "class Heir(walker): pass"):
        refuses(code, TypeError, walker=walker)
    for name in ("ShapeError", "SizeError"):
        kind = getattr(module, name)
        assert (kind.__name__, kind.__module__, kind.__bases__) == (name, "qnexceptions", (Exception,))


def test_handles_come_in_as_arrays():
    for row, number in zip(ROWS, [3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0]):
        for kind in (number, number + 10)[:1 + (row.name != "logical")]:
            start = new_handle(kind, (2, 3, 1))
            made = array_of_handle(start)
            assert type(made) is NAMES[row.name] and made._is_complex is (kind > 12) and made.size == (2, 3, 1)
            agrees(made)
            made[1][2][0] = 1
            assert made[1][2][0] == 1 and handle_of_array(made) == start
            agrees(made)
    refuses("take(start)", RuntimeError, "invalid type.", take=array_of_handle, start=new_handle(1))
    refuses("take(None)", RuntimeError, "null data pointer.", take=array_of_handle)
    give_nothing = ctypes.PYFUNCTYPE(ctypes.c_void_p, ctypes.c_void_p)(ctypes.cast(handle_of_array, ctypes.c_void_p).value)
    refuses("give(None)", RuntimeError, "object not initialized.", give=give_nothing)


def test_handles_go_out():
    a = NAMES["int8"]([[1, 2, 3, 4], [5, 6, 7, 8], [9, 10, 11, 12]])
    for code, dimensions, contents in (
            ("a", (3, 4), [1, 5, 9, 2, 6, 10, 3, 7, 11, 4, 8, 12]), ("a[1]", (1, 4), [5, 6, 7, 8]),
            ("a[1][0:2]", (1, 2), [5, 6]), ("a[::-2]", (2, 4), [9, 1, 10, 2, 11, 3, 12, 4]),
            ("a[1][2:3]", (1, 1), [7]), ("a[5:]", (0, 4), []), ("a[1][4:]", (0, 4), [])):
        part = eval(code)
        assert handle_contents(handle_of_array(part), 1) == (dimensions, bytes(contents))
        assert handle_of_array(part) == handle_of_array(part)
    row = a[1]
    start = handle_of_array(row)
    a[1][0] = 50
    assert handle_of_array(row) == start and handle_contents(start, 1)[1] == bytes([5, 6, 7, 8])
    again = a[1]
    assert handle_of_array(again) != start and handle_contents(handle_of_array(again), 1)[1] == bytes([50, 6, 7, 8])


def test_arrays_of_one_dimension_come_in():
    row = array_of_handle(new_handle(5, (3,)))
    row[:] = [7, 8, 0]
    assert row.size == (3,) and str(row) == "[7,8,0]" and row[-2] == 8 == row[1:][0] and row == row.clone()
    assert list(row.noncomplex()) == [7, 8, 0] == row.toarray().tolist() and memoryview(row).shape == (3,)
    agrees(row)
    assert row.reshape(3, 1).size == (3, 1)

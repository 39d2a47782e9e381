"""The buffer protocol, each request by itself, and who sees what through an export."""

import ctypes
import gc
import sys
from ctypes import POINTER, byref, c_char_p, c_int, c_ssize_t, c_void_p

import pytest

from helpers import NAMES, each_class, refuses


class View(ctypes.Structure):
    _fields_ = [
        ("buf", c_void_p),
        ("obj", c_void_p),
        ("len", c_ssize_t),
        ("itemsize", c_ssize_t),
        ("readonly", c_int),
        ("ndim", c_int),
        ("format", c_char_p),
        ("shape", POINTER(c_ssize_t)),
        ("strides", POINTER(c_ssize_t)),
        ("suboffsets", c_void_p),
        ("internal", c_void_p),
    ]


def export(array, view, flags):
    return ctypes.pythonapi.PyObject_GetBuffer(ctypes.py_object(array), byref(view), flags)


WRITABLE, FORMAT = "underlying buffer is not writable.", "format field is null."
ORDER = "underlying buffer not C-contiguous."


@pytest.mark.parametrize(
    "flags, real, of_complex",
    [
        # each flag by itself, then those that go together; the refusal of a real array and of a complex one
        (0x000, None, None),
        (0x001, WRITABLE, WRITABLE),
        (0x004, None, FORMAT),
        (0x008, None, None),
        (0x018, None, None),
        (0x038, ORDER, ORDER),
        (0x058, None, None),
        (0x098, None, None),
        (0x118, None, None),
        (0x020, None, None),
        (0x009, WRITABLE, WRITABLE),
        (0x039, WRITABLE, WRITABLE),
        (0x11D, WRITABLE, WRITABLE),
        (0x03C, ORDER, FORMAT),
        (0x01C, None, FORMAT),
        (0x11C, None, FORMAT),
        (0x1DE, None, FORMAT),
    ],
)
def test_requests(flags, real, of_complex):
    whole = NAMES["int16"]([[1, 2, 3], [4, 5, 6]])
    for array, refusal, itemsize in (
        (whole, real, 2),
        (whole[1], real, 2),
        (NAMES["int16"](whole, is_complex=True), of_complex, 4),
    ):
        view, held = View(obj=1), sys.getrefcount(array)
        if refusal:
            refuses(
                "export(array, view, flags)",
                ValueError,
                refusal,
                export=export,
                array=array,
                view=view,
                flags=flags,
            )
            gc.collect()  # the frames that the refusal went through
            assert view.obj is None and sys.getrefcount(array) == held
            continue
        export(array, view, flags)
        assert view.obj == id(array) and sys.getrefcount(array) == held + 1
        assert (view.buf, view.len, view.itemsize, view.readonly) == (
            array.buffer_info()[0],
            6 * itemsize,
            itemsize,
            1,
        )
        assert (view.shape[: view.ndim], tuple(view.strides[:2])) == ([2, 3], array.get_bytewise_strides())
        assert view.format == (b"h" if flags & 4 else None) and not view.suboffsets
        ctypes.pythonapi.PyBuffer_Release(byref(view))
        assert sys.getrefcount(array) == held


@each_class
def test_memoryviews(row):
    array = NAMES[row.name]([[1, 0, 1], [0, 1, 1]])
    for view in (memoryview(array), array.tomemoryview(), memoryview(array[1]), memoryview(array[::-1])):
        assert view.readonly and view.f_contiguous and not view.c_contiguous
        assert (view.format, view.itemsize, view.shape) == (row.format, row.bytes, (2, 3))
        assert view.strides == (row.bytes, 2 * row.bytes) == array.get_bytewise_strides()
        array[0][1] = 1 - array[0][1]
        assert view[0, 1] == array[0][1] and view.tolist()[1] == [0, 1, 1]
    for code in ("memoryview(a)", "a.tomemoryview()", "memoryview(a[0])"):
        if row.name != "logical":
            refuses(code, ValueError, FORMAT, a=NAMES[row.name]([1], is_complex=True))
    view = memoryview(NAMES[row.name](size=(0, 3)))  # the view alone keeps the array
    assert (view.nbytes, view.shape, view.tolist(), view.obj.size) == (0, (0, 3), [], (0, 3))


def test_numpy_takes_arrays_as_they_are():
    numpy = pytest.importorskip("numpy")
    array = NAMES["single"]([[1, 2, 3], [4, 5, 6]])
    shared = numpy.asarray(array)
    array[1][0] = 40
    assert shared.dtype == numpy.float32 and shared.flags.f_contiguous and not shared.flags.writeable
    assert shared.tolist() == [[1, 2, 3], [40, 5, 6]] and shared.ctypes.data == array.buffer_info()[0]

"""The buffer protocol, each request by itself, and who sees what through an export."""

import ctypes
import gc
import sys
from ctypes import byref


from helpers import NAMES, View, codes, each_class, each_row, export, refuses, words

WORDS = words("""
writable -> underlying buffer is not writable. | order -> underlying buffer not C-contiguous.
format -> format field is null.
""")


# Each flag by itself, then those that go together; the refusal of a real array, and that of a complex one.
@each_row("""
0x000 -> - - | 0x001 -> writable writable | 0x004 -> - format | 0x008 -> - - | 0x018 -> - -
0x038 -> order order | 0x058 -> - - | 0x098 -> - - | 0x118 -> - - | 0x020 -> - - | 0x009 -> writable writable
0x039 -> writable writable | 0x11d -> writable writable | 0x03c -> order format | 0x01c -> - format
0x11c -> - format | 0x1de -> - format
""")
def test_requests(code, end):
    whole, flags = NAMES["int16"]([[1, 2, 3], [4, 5, 6]]), int(code, 16)
    for array, width in ((whole, 1), (whole[1], 1), (NAMES["int16"](whole, is_complex=True), 2)):
        view, held, refusal = View(obj=1), sys.getrefcount(array), WORDS.get(end.split()[width - 1])
        if refusal:
            refuses("e(a, v, f)", ValueError, refusal, e=export, a=array, v=view, f=flags)
            gc.collect()  # the frames that the refusal went through
            assert view.obj is None and sys.getrefcount(array) == held
            continue
        export(array, view, flags)
        assert view.obj == id(array) and sys.getrefcount(array) == held + 1
        assert (view.buf, view.len, view.itemsize) == (array.buffer_info()[0], 12 * width, 2 * width)
        assert (view.shape[: view.ndim], tuple(view.strides[:2])) == ([2, 3], array.get_bytewise_strides())
        assert view.format == (b"h" if flags & 4 else None) and not view.suboffsets and view.readonly == 1
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
    if row.name != "logical":
        for code in codes("memoryview(a) | a.tomemoryview() | memoryview(a[0])"):
            refuses(code, ValueError, WORDS["format"], a=NAMES[row.name]([1], is_complex=True))
    view = memoryview(NAMES[row.name](size=(0, 3)))  # the view alone keeps the array
    assert (view.nbytes, view.shape, view.tolist(), view.obj.size) == (0, (0, 3), [], (0, 3))

"""Attributes and methods: of whole arrays, of parts, of complex arrays."""

import array

from helpers import NAMES, agrees, codes, each_class, each_code, each_row, handle_contents, handle_of_array
from helpers import refuses
from two_sides import compare

TOO_LARGE = "Python int too large to convert to C long"
SETUP = codes("""
a = int16([[[1, 2, 3, 4], [5, 6, 7, 8], [9, 10, 11, 12]]] * 2) | v = int16(range(10)) | e = int16(size=(2, 0))
""")


@each_class
def test_parts_of_complex_arrays(row):
    cls = NAMES[row.name]
    whole = cls([[1, 2, 3], [4, 5, 0]])
    assert list(whole.noncomplex()) == list(whole[1:]._data) == list(cls([1, 4, 2, 5, 3, 0])[0])
    for code in codes("a.real() | a.imag() | a[0].real() | a._real | a._imag"):
        refuses(code, ValueError, "real() and imag() can be called only on a complex array.", a=whole)
    if row.name == "logical":
        return
    pairs = cls([[1 + 2j, 3], [5j, 7 + 8j]], is_complex=True)
    for source in (pairs, pairs[1], pairs[::-1]):
        for part, numbers in ((source.real(), [1, 0, 3, 7]), (source._imag, [2, 5, 0, 8])):
            assert type(part) is cls and part._is_complex is False and part.itemsize == row.bytes
            assert part.size == (4,) and list(part) == numbers and memoryview(part).shape == (1, 4)
            part[0] = 9
            assert part[0] == 9 and pairs[0][0] == 1 + 2j
        for code in ("a.noncomplex()", "a._data"):
            refuses(code, ValueError, "noncomplex() must not be called on a complex array.", a=source)
    assert cls(is_complex=True).real().size == cls(is_complex=True)._imag.size == (0,)


def test_64_bits_come_through_parts_and_not_through_complex_numbers():
    exact = NAMES["int64"]([2**53 + 1], is_complex=True)
    assert exact.real()[0] == 2**53 + 1 and exact.clone().real()[0] == 2**53 and exact[0][0] == 2.0**53
    large = NAMES["uint64"]([2.0**63], is_complex=True)
    assert large.real()[0] == 2**63 and large.clone() == large
    for code in codes("a.clone() | give(a) | uint64(a) | uint64(*a.__reduce__()[1])"):
        refuses(code, OverflowError, TOO_LARGE, a=large.real(), give=handle_of_array)


@each_code("""
a | a[1] | a[1][2] | a[0:1] | a[::-1] | a[1][0:2] | a[1][2][1:3] | a[1][2][1:2] | a[2:2] | a[1][2:2]
a[1][2][2:2] | e | v[0][::-3]
""")
def test_clones_and_wholes_of_parts(code):
    lines = """
    p = {0} | q = p.clone() | a[1] = a[0][::-1] | v[0] = range(1, 11) | p = p.clone() | r = {0}.clone()
    r.itemsize | r._is_complex
    """
    compare(SETUP + codes(lines.format(code)))
    names = dict(NAMES)
    exec("\n".join(SETUP), names)
    part, whole = eval(code, names), names[code[0]]
    assert part.buffer_info() == whole.buffer_info() and part._size == part.size
    assert part.get_bytewise_strides() == whole.get_bytewise_strides() == memoryview(part).strides
    assert repr(part.__reduce__()) == repr((type(part), ({}, eval(str(part)))))
    clone = part.clone()
    assert clone.buffer_info()[0] != whole.buffer_info()[0]
    if part is not whole:  # the first copy is kept
        assert handle_contents(handle_of_array(part), 2)[0] == clone.size
    agrees(clone)


def test_reduce_says_what_is_complex():
    made = NAMES["single"]([[1, 2j]], is_complex=True)
    assert made.__reduce__() == (NAMES["single"], ({"is_complex": True}, [[1 + 0j, 2j]]))
    assert repr(NAMES["logical"]([True]).__reduce__()[1]) == "({}, [[True]])"


@each_row("""
double([[1, 2.5]])[0] -> d [1.0, 2.5] | single([1])[0] -> f [1.0] | uint64([5, 6])[0][::-1] -> L [6, 5]
int64([[5], [6]]).noncomplex() -> l [5, 6] | logical([True, False])[0] -> B [1, 0] | int32() -> i []
int8([1, 2])[0].clone() -> b [1, 2] | uint8([1j, 2], is_complex=True).imag() -> B [1, 0]
uint32(size=(0, 3, 4)) -> I [] | double(is_complex=True) -> d [] | int8([1]) -> | int8([[1], [2]]) ->
int8([1, 2])[0:1] -> | int8([1j], is_complex=True)[0] ->
""")
def test_toarray(code, end):
    if end:
        made = eval(code, dict(NAMES)).toarray()
        assert isinstance(made, array.array) and made.typecode + " " + str(made.tolist()) == end
    else:
        text = "toarray() can be called only on a one-dimensional sequence."
        refuses("(%s).toarray()" % code, RuntimeError, text)

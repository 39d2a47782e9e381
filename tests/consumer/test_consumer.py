"""A native module over the public headers alone: examples/consumer, which the native tests built beside the tree."""

import os
import sys

import pytest
import quarna
import quarnamultidimarrayforpython as module

from helpers import agrees, codes, each_code, each_row, refuses

sys.path.append(os.path.join(os.path.dirname(module.__file__), os.pardir, "consumer"))
import atmosphere  # noqa: E402

# As the standard's own tables have them: kilometres, kelvin, pascal.
PUBLISHED = codes("""
0 288.15 101325 | 11 216.65 22632.06 | 20 216.65 5474.889 | 32 228.65 868.0187 | 47 270.65 110.9063
51 270.65 66.93887 | 71 214.65 3.956420
""")


def test_it_makes_arrays():
    table = atmosphere.profile(72, 1000)
    fresh = quarna.double()
    assert type(table) is quarna.double and table.size == (3, 72)
    assert sys.getrefcount(table) == sys.getrefcount(fresh)  # CPython 3.14 lends a variable uncounted
    for kilometres, *state in (map(float, row.split()) for row in PUBLISHED):
        found = [row[int(kilometres)] for row in table]
        assert found == pytest.approx([kilometres * 1000] + state, rel=1e-6)
    table[0][71] = -1
    agrees(table)


@each_row("""
a -> 3.5 | a[1] -> 5.0 | a[1][1:] -> 5.5 | a[:1] -> 2.0 | a[0][2:3] -> 3.0 | double([[7]]) -> 7.0
double() -> nan | atmosphere.profile(12, 1000)[0] -> 5500.0 | a[5:] -> nan
""")
def test_it_reads_arrays(code, end):
    array = eval(code, dict(vars(quarna), atmosphere=atmosphere, a=quarna.double([[1, 2, 3], [4, 5, 6]])))
    counted = sys.getrefcount(array)
    for _ in range(2):  # what a partial array has gathered is read again
        assert str(atmosphere.mean(array)) == end
    assert sys.getrefcount(array) == counted


@each_row("""
None -> an array of quarna, not NoneType | 1.0 -> an array of quarna, not float
double -> an array of quarna, not type | iter(double([1])) -> an array of quarna, not QCPyIter
single([1]) -> elements of type DOUBLE, not SINGLE | logical([True]) -> elements of type DOUBLE, not LOGICAL
uint64([1])[0][:0] -> elements of type DOUBLE, not UINT64
double([1j], is_complex=True)[0] -> elements of type DOUBLE, not COMPLEX_DOUBLE
""")
def test_it_refuses_what_it_cannot_read(code, end):
    refuses("mean(%s)" % code, TypeError, "expected %s." % end, mean=atmosphere.mean)


def test_it_refuses_a_part_that_outlived_a_reshape():
    a = quarna.double([[1, 2], [3, 4]])
    row, _ = a[0], a.reshape(1, 4)
    with pytest.raises(RuntimeError, match="reshaped since"):
        atmosphere.mean(row)


@each_code("create_factory | create_buffer | adopt_buffer | get_reference | get_part_addresses")
def test_what_the_library_refuses_is_raised(code, script):
    array = quarna.double([1, 2])
    for refusal, kind in (("OutOfMemory", MemoryError), ("DataTypeMismatch", RuntimeError)):
        script.fail(code, refusal)
        with pytest.raises(kind):
            atmosphere.mean(array), atmosphere.profile(3, 1)

"""Comparing arrays."""

import pytest

from helpers import NAMES, codes, refuses

EQUAL = codes("""
double([1, 2]) == double([1, 2]) | double([1.0]) == double([1], is_complex=True)
double([-0.0]) == double([0.0]) | a == a[0:2] | int64([2 ** 53]) == int64([2 ** 53 + 1], is_complex=True)
double() == double(size=(0, 3)) | a[0] == a[0] | a.clone() == a
double(size=(2, 0)) == double(size=(2, 0, 5)) | a[::-1] == int8([[3, 4], [1, 2]])
a[0][::-1] == int8([2, 1])[0] | a[2:] == int8() | a[0:1] == int8([1, 2]) | nans[0][0:1] == nans[0][0:1]
""")
DIFFERENT = codes("""
double([1, 2]) == double([1, 3]) | double([1, 2]) == double([1, 2, 3]) | double([1, 2]) == double([[1], [2]])
a == a[::-1] | double([1, 2]) == single([1, 2]) | int8([1]) == uint8([1]) | uint8([1]) == logical([True])
a[0] == int8([1, 2]) | a == 5 | double([1]) == double([1 + 1j], is_complex=True)
int64([2 ** 53 + 1]) == int64([2 ** 53 + 1], is_complex=True) | a == None
double(size=(2, 0)) == double(size=(0, 2)) | a == [[1, 2], [3, 4]] | a[0][0:0] == a | nans == nans
int64([2 ** 63 - 1]) == int64([2 ** 63 - 1], is_complex=True)
""")


@pytest.mark.parametrize("code", EQUAL + DIFFERENT)
def test_equal(code):
    names = dict(NAMES, a=NAMES["int8"]([[1, 2], [3, 4]]), nans=NAMES["single"]([1, float("nan")]))
    left, right = (eval(side, names) for side in code.split(" == "))
    assert (left == right) is (right == left) is (code in EQUAL)
    assert (left != right) is (right != left) is (code in DIFFERENT)
    for code in codes("a < a | a <= 5 | a > None | a >= object() | a[0] < a"):
        refuses(code, NotImplementedError, "inequality operators not supported.", **names)

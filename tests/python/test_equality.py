"""Comparing arrays."""

import pytest

from helpers import NAMES, codes, refuses

EQUAL = """
double([1, 2]) == double([1, 2]) | double([1.0]) == double([1], is_complex=True) | double([-0.0]) == double([0.0]) | a == a[0:2]
int64([2 ** 53]) == int64([2 ** 53 + 1], is_complex=True) | double() == double(size=(0, 3)) | a[0] == a[0] | a[0:1] == int8([1, 2])
double(size=(2, 0)) == double(size=(2, 0, 5)) | a[::-1] == int8([[3, 4], [1, 2]]) | a[0][::-1] == int8([2, 1])[0] | a[2:] == int8()
a.clone() == a | nans[0][0:1] == nans[0][0:1]
"""
DIFFERENT = """
double([1, 2]) == double([1, 3]) | double([1, 2]) == double([1, 2, 3]) | double([1, 2]) == double([[1], [2]]) | a == a[::-1]
double([1, 2]) == single([1, 2]) | int8([1]) == uint8([1]) | uint8([1]) == logical([True]) | a[0] == int8([1, 2]) | nans == nans
double([1]) == double([1 + 1j], is_complex=True) | int64([2 ** 53 + 1]) == int64([2 ** 53 + 1], is_complex=True) | a == None
double(size=(2, 0)) == double(size=(0, 2)) | a == [[1, 2], [3, 4]] | a[0][0:0] == a | a == 5
"""


@pytest.mark.parametrize("code, equal", [(code, table is EQUAL) for table in (EQUAL, DIFFERENT) for code in codes(table)])
def test_equal(code, equal):
    names = dict(NAMES, a=NAMES["int8"]([[1, 2], [3, 4]]), nans=NAMES["single"]([1, float("nan")]))
    left, right = (eval(side, names) for side in code.split(" == "))
    assert (left == right) is (right == left) is equal
    assert (left != right) is (right != left) is not equal


def test_no_order():
    for other in ("a", "5", "None", "object()"):
        for sign in ("<", "<=", ">", ">="):
            refuses("a %s %s" % (sign, other), NotImplementedError, "inequality operators not supported.",
                    a=NAMES["double"]([1]))

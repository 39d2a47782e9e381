"""What str and repr show."""

import pytest

from helpers import NAMES, codes, compare


@pytest.mark.parametrize("code, text", [
    ("double([[1, 2.5], [3, -0.0]])", "quarna.double([[1.0,2.5],[3.0,-0.0]])"),
    ("double([nan, inf, -inf])", "quarna.double([[nan,inf,-inf]])"),
    ("single([0.1])", "quarna.single([[0.10000000149011612]])"),
    ("uint64([2 ** 63 - 1])", "quarna.uint64([[9223372036854775807]])"),
    ("uint64([1.5e19], is_complex=True).real()", "quarna.uint64([15000000000000000000])"),
    ("logical([[True], [False]])", "quarna.logical([[True],[False]])"),
    ("double([1 + 2j, 3j, -1.5], is_complex=True)", "quarna.double([[(1+2j),3j,(-1.5+0j)]], is_complex=True)"),
    ("double([complex(nan, -inf)], is_complex=True)", "quarna.double([[(nan-infj)]], is_complex=True)"),
    ("int8([1], is_complex=True)", "quarna.int8([[(1+0j)]], is_complex=True)"),
    ("double()", "quarna.double([])"),
    ("double(size=(0, 3))", "quarna.double([])"),
    ("double(size=(2, 0))", "quarna.double([[],[]])"),
    ("int8([[1, 2, 3], [4, 5, 6]])[0:1]", "quarna.int8([[1,2,3]])"),
    ("int8([[1, 2, 3], [4, 5, 6]])[1][::-2]", "quarna.int8([6,4])"),
    ("int8([[1, 2, 3], [4, 5, 6]])[5:]", "quarna.int8([])"),
])
def test_text(code, text):
    array = eval(code, dict(NAMES, nan=float("nan"), inf=float("inf")))
    assert repr(array) == text
    assert str(array) == text[text.index("(") + 1:].replace(", is_complex=True", "")[:-1]


@pytest.mark.parametrize("code", codes("""
double([[1, 2.5], [3, -0.0]]) | single([0.1, 1e-40]) | logical([[[True]], [[False]]]) | int64([-2 ** 63]) | double([[], []])
double([1 + 2j, 3j, -1.5], is_complex=True) | int8([[1], [2]], is_complex=True) | int8([[1, 2], [3, 4]])[::-1]
"""))
def test_repr_reads_back(code):
    array = eval(code, dict(NAMES))
    again = eval(repr(array).replace("quarna.", ""), dict(NAMES))
    assert again == array and again.size == array.size and again._is_complex is array._is_complex


def test_text_is_never_cut():
    array = NAMES["uint16"](size=(1000, 300))
    assert str(array) == "[" + ",".join(["[" + ",".join("0" * 300) + "]"] * 1000) + "]"

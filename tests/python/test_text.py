"""What str and repr show."""

import random
import struct
from array import array

from helpers import NAMES, each_row


@each_row("""
double([[1, 2.5], [3, -0.0]]) -> double([[1.0,2.5],[3.0,-0.0]])
double([nan, inf, -inf]) -> double([[nan,inf,-inf]]) | single([0.1]) -> single([[0.10000000149011612]])
uint64([2 ** 63 - 1]) -> uint64([[9223372036854775807]])
uint64([1.5e19], is_complex=True).real() -> uint64([15000000000000000000]) | double() -> double([])
logical([[True], [False]]) -> logical([[True],[False]]) | double(size=(0, 3)) -> double([])
double([1 + 2j, 3j, -1.5], is_complex=True) -> double([[(1+2j),3j,(-1.5+0j)]], is_complex=True)
double([nan - inf * 1j, complex(-0.0, 2)], is_complex=True) -> double([[(nan-infj),(-0+2j)]], is_complex=True)
int8([1], is_complex=True) -> int8([[(1+0j)]], is_complex=True) | double(size=(2, 0)) -> double([[],[]])
int8([[1, 2, 3], [4, 5, 6]])[0:1] -> int8([[1,2,3]]) | int8([[1, 2, 3], [4, 5, 6]])[1][::-2] -> int8([6,4])
int8([[1, 2, 3], [4, 5, 6]])[5:] -> int8([])
""")
def test_text(code, end):
    array = eval(code, dict(NAMES, nan=float("nan"), inf=float("inf")))
    assert repr(array) == "quarna." + end
    assert str(array) == end[end.index("(") + 1 :].replace(", is_complex=True", "")[:-1]
    if "nan" not in end and "[[" in end:  # finite and full: the text builds the array again
        again = eval(end, dict(NAMES))
        assert again == array and again.size == array.size and again._is_complex is array._is_complex


def test_floats_have_the_digits_of_repr():
    bits = random.Random(1)
    numbers = [10.0**power for power in range(-310, 309)] + [2.0**power for power in range(-1074, 1024)]
    numbers += [round(bits.uniform(-(10**6), 10**6), digits) for digits in range(8) for _ in range(1000)]
    numbers += struct.unpack("20000d", bits.getrandbits(64 * 20000).to_bytes(8 * 20000, "little"))
    assert str(NAMES["double"](array("d", numbers))) == str([numbers]).replace(" ", "")
    pairs = list(map(complex, numbers, reversed(numbers)))
    assert str(NAMES["double"](pairs, is_complex=True)) == str([pairs]).replace(" ", "")

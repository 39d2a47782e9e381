"""What becomes of one Python number in each class, by each of the three roads that a number takes."""

import decimal
import fractions
import math

import pytest

from helpers import CLASSES, NAMES, each_code, refuses, rows, words
from model import RANGES


class Number(float):
    def __float__(self):
        raise AssertionError("a number is read, not asked")


class Willing:
    __int__ = __index__ = lambda self: 1
    __float__, __complex__ = lambda self: 1.0, lambda self: 1j


def beyond(number):
    text = "%g" % number if isinstance(number, float) else str(number)
    return "value (%s) cannot be stored in a variable of type %%s." % text


WORDS = words("""
LONG -> Python int too large to convert to C long | NONE -> value must not be 'None'.
OTHER -> type does not match.
COMPLEX -> quarna.%s does not accept complex values if 'is_complex' is not set to 'True'.
FLOAT -> quarna.%s does not accept floating-point values.
""")
WORDS.update(decimal=decimal.Decimal(1), fraction=fractions.Fraction(1), Number=Number, Willing=Willing)
WORDS.update(beyond=beyond, INF=math.inf, NAN=math.nan, LAST=3.4028234663852886e38)  # LAST: of 32 bits
# A class, with a c for complex arrays: values, and what each reads back as or the words of its refusal.
TABLE = """
double: 1 -> 1.0 | True -> 1.0 | -0.0 -> -0.0 | INF -> INF | NAN -> NAN | Number(2.5) -> 2.5 | 1j -> COMPLEX
double: 2 ** 53 + 1 -> 2.0 ** 53 | -2 ** 63 -> -2.0 ** 63 | 2 ** 63 -> LONG | -2 ** 63 - 1 -> LONG | None -> NONE
double: object() -> OTHER | {} -> OTHER | Willing() -> OTHER | decimal -> OTHER | fraction -> OTHER
single: 0.1 -> 0.10000000149011612 | 2 ** 24 + 1 -> 2.0 ** 24 | 2 ** 60 + 2 ** 36 + 1 -> 2.0 ** 60 + 2.0 ** 37
single: 1e300 -> INF | -1e300 -> -INF | -INF -> -INF | NAN -> NAN | 2 ** 64 -> INF | -2 ** 64 -> -INF | 1j -> COMPLEX
single: 1e-50 -> 0.0 | LAST -> LAST | 3.4028235e38 -> INF | -3.4028235e38 -> -INF | Willing() -> OTHER
int32: True -> 1 | 1.0 -> FLOAT | NAN -> FLOAT | 1j -> COMPLEX | None -> NONE | Willing() -> OTHER
int64: 2 ** 63 - 1 -> 2 ** 63 - 1 | -2 ** 63 -> -2 ** 63 | 2 ** 63 -> LONG | 1.0 -> FLOAT
uint64: 2 ** 63 - 1 -> 2 ** 63 - 1 | 2 ** 63 -> LONG | -1 -> beyond(-1) | -2 ** 64 -> LONG
logical: True -> True | 0 -> False | -3 -> True | 2 ** 62 -> True | 2 ** 64 -> LONG | None -> NONE | Willing() -> OTHER
double c: 1 -> 1 + 0j | 2.5 -> 2.5 + 0j | complex(NAN, -0.0) -> complex(NAN, -0.0) | 2 ** 63 -> LONG | None -> NONE
single c: 0.1j -> 0.10000000149011612j | complex(1e300, -1e300) -> complex(INF, -INF) | 2 ** 64 -> complex(INF, 0)
single c: -2 ** 64 -> complex(-INF, 0) | Willing() -> OTHER
int8 c: 1.9 -> 1 + 0j | -128.9 + 127.9j -> -128 + 127j | 128.0 -> beyond(128) | 1 - 129j -> beyond(-129)
int8 c: NAN -> beyond(NAN) | -NAN -> beyond(NAN) | -INF -> beyond(-INF) | INF -> beyond(INF) | 1e20 -> beyond(1e20)
int8 c: complex(0, NAN) -> beyond(NAN) | complex(200, 300.5) -> beyond(200) | complex(1, 300.5) -> beyond(300.5)
int8 c: 300 -> beyond(300) | decimal -> OTHER
uint8 c: -0.5 -> 0j | -1.0 -> beyond(-1) | 255.9j -> 255j | 256j -> beyond(256)
int64 c: 2 ** 53 + 1 -> 2.0 ** 53 + 0j | 2.0 ** 63 -> beyond(2.0 ** 63) | -2.0 ** 63 -> beyond(-2.0 ** 63)
int64 c: -2.0 ** 62 -> -2.0 ** 62 + 0j | 2 ** 63 -> LONG
uint64 c: -1 -> beyond(-1) | 1.5e19 -> 1.5e19 + 0j | 2.0 ** 64 -> beyond(2.0 ** 64) | -0.5j -> 0j
"""
BOUNDS = """{0}: {1} -> {1} | {2} -> {2} | {1} - 1 -> beyond({1} - 1) | {2} + 1 -> beyond({2} + 1)
{0} c: {1} - 0.9 -> {1} + 0j | {2} + 0.9 -> {2} + 0j | {1} - 1.0 -> beyond({1} - 1.0) | {2} + 1.0 -> beyond({2} + 1.0)
"""
TABLE += "".join(BOUNDS.format(name, *bounds) for name, bounds in RANGES.items() if "64" not in name)


@each_code("cls([value], **flag) | cls(vector=[value], **flag) | made[0].__setitem__(0, value)")
@pytest.mark.parametrize("row", TABLE.strip().splitlines())
def test_numbers(code, row):
    (name, *is_complex), pairs = row.split(": ")[0].split(), rows(row.split(": ")[1])
    cls, flag = NAMES[name], {"is_complex": True} if is_complex else {}
    for value, result in ((eval(cell, WORDS) for cell in pair) for pair in pairs):
        names = dict(cls=cls, flag=flag, value=value, made=cls([0], **flag))
        if isinstance(result, str):
            overflows = "too large" in result or "stored" in result
            kind = ValueError if "vector" in code else OverflowError if overflows else TypeError
            refuses(code, kind, result % name if "%s" in result else result, **names)
            result = cls([0], **flag)[0][0]
        else:
            names["made"] = eval(code, names) or names["made"]
        assert repr(names["made"][0][0]) == repr(result)


def test_numpy_numbers_count_only_as_what_they_derive_from():
    numpy = pytest.importorskip("numpy")
    assert NAMES["double"](numpy.array([[1.5, 2], [3, 4]])) == NAMES["double"]([[1.5, 2], [3, 4]])
    for number in (numpy.float32(1), numpy.int64(1), numpy.bool_(True)):
        for cls in CLASSES:
            refuses("cls([number])", TypeError, WORDS["OTHER"], cls=cls, number=number)

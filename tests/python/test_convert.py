"""What becomes of one Python number in each class, by each of the three roads that a number takes."""

import decimal
import fractions
import math

import pytest

from helpers import CLASSES, NAMES, refuses
from model import RANGES

INF, NAN, LARGEST = math.inf, math.nan, 3.4028234663852886e38  # the last among the 32-bit floats
LONG = "Python int too large to convert to C long"
FLOAT = "quarna.%s does not accept floating-point values."
COMPLEX = "quarna.%s does not accept complex values if 'is_complex' is not set to 'True'."
NONE, OTHER = "value must not be 'None'.", "type does not match."


class Number(float):
    def __float__(self):
        raise AssertionError("a number is read, not asked")


class Willing:
    __int__ = __index__ = lambda self: 1
    __float__, __complex__ = lambda self: 1.0, lambda self: 1j


def beyond(number):
    return "value (%s) cannot be stored in a variable of type %%s." % (
        "%g" % number if isinstance(number, float) else number
    )


NARROW = [(name,) + bounds for name, bounds in RANGES.items() if "64" not in name]
TABLE = (
    [
        # class (with a c, a complex array), and pairs: a value, and what it reads back as or the words of its refusal
        (
            "double",
            [
                (1, 1.0),
                (True, 1.0),
                (-0.0, -0.0),
                (INF, INF),
                (NAN, NAN),
                (Number(2.5), 2.5),
                (2**53 + 1, 2.0**53),
                (-(2**63), -(2.0**63)),
                (2**63, LONG),
                (-(2**63) - 1, LONG),
                (1j, COMPLEX),
                (None, NONE),
                (object(), OTHER),
                ({}, OTHER),
                (Willing(), OTHER),
                (decimal.Decimal(1), OTHER),
                (fractions.Fraction(1), OTHER),
            ],
        ),
        (
            "single",
            [
                (0.1, 0.10000000149011612),
                (2**24 + 1, 2.0**24),
                (2**60 + 2**36 + 1, 2.0**60 + 2.0**37),
                (1e300, INF),
                (-1e300, -INF),
                (-INF, -INF),
                (NAN, NAN),
                (2**64, INF),
                (-(2**64), -INF),
                (1e-50, 0.0),
                (LARGEST, LARGEST),
                (3.4028235e38, INF),
                (-3.4028235e38, -INF),
                (1j, COMPLEX),
                (Willing(), OTHER),
            ],
        ),
        ("int32", [(True, 1), (1.0, FLOAT), (NAN, FLOAT), (1j, COMPLEX), (None, NONE), (Willing(), OTHER)]),
        ("int64", [(2**63 - 1, 2**63 - 1), (-(2**63), -(2**63)), (2**63, LONG), (1.0, FLOAT)]),
        ("uint64", [(2**63 - 1, 2**63 - 1), (2**63, LONG), (-1, beyond(-1)), (-(2**64), LONG)]),
        (
            "logical",
            [
                (True, True),
                (0, False),
                (-3, True),
                (2**62, True),
                (2**64, LONG),
                (None, NONE),
                (Willing(), OTHER),
            ],
        ),
        (
            "double c",
            [
                (1, 1 + 0j),
                (2.5, 2.5 + 0j),
                (complex(NAN, -0.0), complex(NAN, -0.0)),
                (2**63, LONG),
                (None, NONE),
            ],
        ),
        (
            "single c",
            [
                (0.1j, 0.10000000149011612j),
                (complex(1e300, -1e300), complex(INF, -INF)),
                (2**64, complex(INF, 0)),
                (-(2**64), complex(-INF, 0)),
                (Willing(), OTHER),
            ],
        ),
        (
            "int8 c",
            [
                (1.9, 1 + 0j),
                (-128.9 + 127.9j, -128 + 127j),
                (128.0, beyond(128)),
                (1 - 129j, beyond(-129)),
                (300, beyond(300)),
                (NAN, beyond(NAN)),
                (-NAN, beyond(NAN)),
                (-INF, beyond(-INF)),
                (INF, beyond(INF)),
                (complex(0, NAN), beyond(NAN)),
                (1e20, beyond(1e20)),
                (complex(200, 300.5), beyond(200)),
                (complex(1, 300.5), beyond(300.5)),
                (decimal.Decimal(1), OTHER),
            ],
        ),
        ("uint8 c", [(-0.5, 0j), (-1.0, beyond(-1)), (255.9j, 255j), (256j, beyond(256))]),
        (
            "int64 c",
            [
                (2**53 + 1, 2.0**53 + 0j),
                (2.0**63, beyond(2.0**63)),
                (-(2.0**63), beyond(-(2.0**63))),
                (-(2.0**62), -(2.0**62) + 0j),
                (2**63, LONG),
            ],
        ),
        ("uint64 c", [(-1, beyond(-1)), (1.5e19, 1.5e19 + 0j), (2.0**64, beyond(2.0**64)), (-0.5j, 0j)]),
    ]
    + [
        (name, [(low, low), (high, high), (low - 1, beyond(low - 1)), (high + 1, beyond(high + 1))])
        for name, low, high in NARROW
    ]
    + [
        (
            name + " c",
            [
                (low - 0.9, low + 0j),
                (high + 0.9, high + 0j),
                (low - 1.0, beyond(low - 1.0)),
                (high + 1.0, beyond(high + 1.0)),
            ],
        )
        for name, low, high in NARROW
    ]
)


@pytest.mark.parametrize(
    "code", ["cls([value], **flag)", "cls(vector=[value], **flag)", "made[0].__setitem__(0, value)"]
)
@pytest.mark.parametrize("name, pairs", TABLE)
def test_numbers(code, name, pairs):
    cls, flag = NAMES[name.split()[0]], {"is_complex": True} if " " in name else {}
    for value, result in pairs:
        names = dict(cls=cls, flag=flag, value=value, made=cls([0], **flag))
        if isinstance(result, str):
            kind = (
                ValueError
                if "vector" in code
                else OverflowError
                if result is LONG or "stored" in result
                else TypeError
            )
            refuses(code, kind, result % name.split()[0] if "%s" in result else result, **names)
            result = cls([0], **flag)[0][0]
        elif "made" not in code:
            names["made"] = eval(code, names)
        else:
            eval(code, names)
        assert repr(names["made"][0][0]) == repr(result)


def test_logical_takes_any_number_when_built_but_only_whole_ones_when_assigned():
    numbers = [0.0, 2.5, 0j, 1j, NAN, complex(0, NAN), -0.0]
    for made in (NAMES["logical"](numbers), NAMES["logical"](vector=numbers)):
        assert list(made[0]) == [False, True, False, True, True, True, False]
        for code, text in (("2.5", FLOAT), ("1j", COMPLEX)):
            refuses("made[0][1] = " + code, TypeError, text % "logical", made=made)
            refuses("made[0][0:1] = [%s]" % code, TypeError, text % "logical", made=made)


def test_numpy_numbers_count_only_as_what_they_derive_from():
    numpy = pytest.importorskip("numpy")
    assert NAMES["double"](numpy.array([[1.5, 2], [3, 4]])) == NAMES["double"]([[1.5, 2], [3, 4]])
    for number in (numpy.float32(1), numpy.int64(1), numpy.bool_(True)):
        for cls in CLASSES:
            refuses("cls([number])", TypeError, OTHER, cls=cls, number=number)

"""Numbers come by fast roads where nothing can run Python code, and by a walk elsewhere: nobody can tell which."""

import array
import random
import signal

import pytest

from helpers import CLASSES, NAMES, outcome
from model import product


class Walked(list):
    """A list that is walked: only exact lists and tuples are taken at once."""


def walked(nest):
    return Walked(map(walked, nest)) if isinstance(nest, (list, tuple, range, array.array)) else nest


FLOATS = [0.0, -0.0, 1.5, 1e300, -3.4028235e38, float("inf"), float("nan"), 5e-324, 127.5, -128.0, 2.0**63]
INTS = [0, 1, -1, 127, 128, -128, -129, 255, 65536, 2**30, -(2**31), 2**32, 2**63 - 1, -(2**63), 2**63]
KINDS = [
    FLOATS,
    INTS,
    [True, False],
    [1j, 2 - 0.0j, complex(1e300, 2), complex("nan")],
    INTS[:4] + [True, 1.5],
]
ODD = [None, "1", [], [1], (1.0,), 2**64, b"1", float]


def nest(chance, shape, kinds):
    """A nest of that shape, or one with a single fault in it."""
    if not shape:
        return chance.choice(ODD) if chance.random() < 0.004 else chance.choice(kinds)
    length = shape[0] + (chance.random() < 0.01)
    return chance.choice([list, list, tuple])(nest(chance, shape[1:], kinds) for _ in range(length))


def made(cls, is_complex, values, **options):
    return outcome("cls(values, is_complex=is_complex, **options)", dict(locals()))


@pytest.mark.parametrize("seed", range(60))
def test_whole_nests_are_as_walked_ones(seed):
    chance = random.Random(seed)
    for cls in CLASSES:
        shape = [chance.choice([1, 1, 2, 3, 7, 8, 9, 17]) for _ in range(chance.randrange(1, 5))]
        kind = chance.choice(KINDS)
        values = nest(chance, shape, kind if chance.random() < 0.5 else [chance.choice(kind)])
        is_complex = cls is not NAMES["logical"] and chance.random() < 0.5
        options = chance.choice([{}, {}, {"size": shape}, {"size": (product(shape), 1)}, {"size": (3, 2)}])
        assert made(cls, is_complex, values, **options) == made(cls, is_complex, walked(values), **options)
        code = "cls(vector=values, **options)"
        at_once, one_by_one = (dict(cls=cls, values=v, options=options) for v in (values, walked(values)))
        assert outcome(code, at_once) == outcome(code, one_by_one)


@pytest.mark.parametrize("code", "bBhHiIqQfd")
def test_memory_is_as_its_numbers(code):
    """Of arrays of Python's and of ours, whole or in steps, into every class."""
    extreme = {"f": [1.5, -0.0, 3e38], "d": FLOATS}.get(code)
    bits = 8 * array.array(code).itemsize
    limits = (
        [0, 2**bits - 1, 2 ** (bits - 1)] if code.isupper() else [-1, 2 ** (bits - 1) - 1, -(2 ** (bits - 1))]
    )
    for values in [[1, 0, 1, 1, 0, 1], [1, 2, 3, 4, 5, 6], (extreme or limits) * 6]:
        source = array.array(code, values)
        for cls in CLASSES:
            expected = made(cls, False, walked(source.tolist()))
            assert made(cls, False, source) == made(cls, False, memoryview(source)) == expected
            assert made(cls, False, memoryview(source)[::-2]) == made(
                cls, False, walked(source.tolist()[::-2])
            )
    for values in [
        [[1, 0, 2], [5, 3, 4]],
        [[1.5, -0.0, 3e38], FLOATS[:3]],
        [[True, False, True]],
        [KINDS[3]],
    ]:
        for ours in [cls(values) for cls in CLASSES if made(cls, False, values)[0] == "["]:
            for part in [ours, ours[0], ours[::-1], ours[0][::2]]:
                for cls in CLASSES:
                    assert made(cls, False, part) == made(cls, False, walked(part.__reduce__()[1][1]))


@pytest.mark.parametrize(
    "numbers", [range(5), range(-3, 200, 7), range(9, -9, -2), range(2**62, 2**63 + 9, 2**61)]
)
def test_a_range_is_as_its_numbers(numbers):
    for cls in CLASSES:
        assert made(cls, False, numbers) == made(cls, False, walked(numbers))
        assert made(cls, False, [numbers] * 3) == made(cls, False, walked([numbers] * 3))


MANY = 3000000
LONG_WORK = """
double(flat) | double(rows) | int64(vector=flat_ints) | double(walked) | int32(ours) | double(range(20 * MANY))
target.__setitem__(slice(0, 2), rows) | target.__setitem__(slice(0, 2), other)
"""


@pytest.mark.parametrize(
    "code", [row.strip() for row in LONG_WORK.replace("\n", " | ").split(" | ") if row.strip()]
)
def test_long_work_looks_for_signals(code):
    """And goes on with what the handler has left."""
    names = dict(
        NAMES, MANY=MANY, flat=[1.5] * MANY, flat_ints=[7] * MANY, walked=Walked([1.5] * (MANY // 4))
    )
    names["rows"] = [[0.5] * (MANY // 2), [1.5] * (MANY // 2)]
    names["ours"] = NAMES["int64"](size=(2, 10 * MANY))
    names["target"], names["other"] = (NAMES["double"](size=(2, size)) for size in (MANY // 2, MANY // 2))
    handled = []

    def handle(*_):
        handled.append(len(handled))
        if len(handled) == 3:
            raise KeyboardInterrupt

    before = signal.signal(signal.SIGALRM, handle)
    try:
        with pytest.raises(KeyboardInterrupt):
            signal.setitimer(signal.ITIMER_REAL, 0.0005, 0.0005)
            for _ in range(20):
                handled.clear()
                eval(code, names)
    finally:
        signal.setitimer(signal.ITIMER_REAL, 0)
        signal.signal(signal.SIGALRM, before)

"""What the statements of the benchmarks start from: lists of numbers, and who makes arrays of them."""

import array
import functools
import random

import numpy as np
import quarna
import quarna_floors as floors


def floats(count):
    return cached("random()", count)


def decimals(count):
    return cached("round(1000 * random(), 2)", count)


def small_integers(count):
    return cached("randrange(-128, 128)", count)


def integers(count):
    return list(range(count))


def long_integers(count):
    return cached("randrange(2**40, 2**60)", count)


def truths(count):
    return cached("random() < 0.5", count)


def complexes(count):
    return cached("complex(random(), random())", count)


def mixed(count):
    return cached("choice((random(), randrange(100), random() < 0.5))", count)


@functools.lru_cache(maxsize=4)
def cached(number, count):
    source = random.Random(count)
    names = {name: getattr(source, name) for name in ("random", "randrange", "choice")}
    return eval("[{} for _ in range({})]".format(number, count), names)


def nest(numbers, *lengths):
    """A nested list of these lengths, filled row by row."""
    count = 1
    for length in lengths:
        count *= length
    level = list(numbers(count))
    for length in reversed(lengths[1:]):
        level = [level[start : start + length] for start in range(0, len(level), length)]
    return level


# How each contender makes an array of a nested list: statements know it as new(x, kind). All are stored alike,
# column by column, but for the nested list, which is a copy, and array.array, which has one dimension.


def new_quarna(x, kind="double"):
    return quarna.double(x, is_complex=True) if kind == "complex" else getattr(quarna, kind)(x)


def new_numpy(x, kind="double"):
    return np.array(x, {"logical": "bool"}.get(kind, kind), order="F")


def new_floor(x, kind="double"):
    return floors.store([[float(number) for number in row] for row in x])


def new_array(x, kind="double"):
    return array.array("d", [number for row in x for number in row])


def new_list(x, kind="double"):
    return [row[:] for row in x]

"""A tour of quarna: the velocity of light, as Michelson measured it a hundred times in 1879."""

import cmath
import csv
import os

import quarna

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data", "michelson-1879.csv")
DEFINED = 299792.458  # km/s in vacuum, by definition since 1983


def read_series():
    """Five lists of twenty numbers, in km/s less 299000."""
    series = {}
    with open(DATA, newline="") as file:
        for row in csv.DictReader(file):
            series.setdefault(row["series"], []).append(int(row["km_per_s_minus_299000"]))
    return list(series.values())


def show(label, value):
    print("  {:<36} {}".format(label, value))


def mean(numbers):
    return sum(numbers) / len(numbers)


def construction():
    """Building arrays"""
    series = read_series()
    table = quarna.int16(series)
    show("five series of twenty, from lists", table.size)
    show("an element takes", "{} bytes".format(table.itemsize))

    flat = [value for one in series for value in one]
    show("the same values, filled by columns", quarna.int16(None, (20, 5), flat).size)
    show("the same values, rows from a flat list", quarna.int16(flat, size=(5, 20)) == table)
    show("one row", quarna.double(vector=flat).size)
    show("zeros to begin with", quarna.single(size=(2, 3)))
    return table


def refusals():
    """What does not fit is refused"""
    for build in (
        lambda: quarna.int8([299852]),
        lambda: quarna.int32([299852.4]),
        lambda: quarna.double([[850, 740], [900]]),
        lambda: quarna.double(["850"]),
    ):
        try:
            build()
        except (TypeError, ValueError, OverflowError, quarna.ShapeError, quarna.SizeError) as error:
            show(type(error).__name__, error)


def subscripts():
    """Subscripts, one dimension at a time"""
    table = quarna.int16(read_series())
    show("the first determination", table[0][0])
    show("the last of the last series", table[-1][-1])
    show("the third series has", "{} values".format(len(table[2])))
    show("its first five", table[2][:5])
    show("the first two of the last two series", [str(one[:2]) for one in table[3:]])


def iteration():
    """Iteration"""
    table = quarna.int16(read_series())
    for number, one in enumerate(table, 1):
        show("series {}: mean in km/s".format(number), 299000 + mean(one))
    overall = 299000 + mean([value for one in table for value in one])
    show("all hundred (air)", overall)
    show("as defined since 1983 (vacuum)", DEFINED)
    show("difference", "{:+.1f} km/s".format(overall - DEFINED))

    above = quarna.logical([[299000 + value > DEFINED for value in one] for one in table])
    show("determinations above the definition", sum(value for one in above for value in one))


def complex_values():
    """Complex arrays"""
    drift = [value - 852.4 for value in read_series()[0]]
    count = len(drift)
    spectrum = quarna.single(
        [
            sum(value * cmath.exp(-2j * cmath.pi * wave * place / count) for place, value in enumerate(drift)) / count
            for wave in range(4)
        ],
        is_complex=True,
    )
    for wave, amplitude in enumerate(spectrum[0]):
        show("first series, {} waves".format(wave), "{:.1f}".format(amplitude))


def text():
    """Text that reads back"""
    first = quarna.int16(read_series())[0][:3]
    show("str", first)
    show("repr", repr(first))
    show("eval(repr(a))", eval(repr(first)).size)


def main():
    for number, chapter in enumerate((construction, refusals, subscripts, iteration, complex_values, text), 1):
        print("{}. {}".format(number, chapter.__doc__))
        chapter()
        print()


if __name__ == "__main__":
    main()

"""A tour of quarna: the velocity of light, as Michelson measured it a hundred times in 1879."""

import cmath
import csv
import os
import pickle

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
    print("  {:<40} {}".format(label, value))


def show_refusals(*actions):
    for action in actions:
        try:
            action()
        except Exception as error:
            show(type(error).__name__, error)
        else:
            raise SystemExit("The tour expected a refusal here.")


def mean(numbers):
    return sum(numbers) / len(numbers)


def construction():
    """Building arrays"""
    series = read_series()
    table = quarna.int16(series)
    show("five series of twenty, from lists", table.size)
    show("bytes in an element", table.itemsize)
    flat = [value for one in series for value in one]
    show("a flat list fills column by column", quarna.int16(flat, size=(20, 5)).size)
    show("a vector is one row", quarna.double(vector=flat).size)
    show("zeros", quarna.single(size=(2, 3)))
    show_refusals(
        lambda: quarna.int8([299852]),
        lambda: quarna.int32([299852.4]),
        lambda: quarna.double([[850, 740], [900]]),
        lambda: quarna.double(["850"]),
    )


def subscripts():
    """Subscripts, one dimension at a time"""
    table = quarna.int16(read_series())
    show("the first determination", table[0][0])
    show("the last of the last series", table[-1][-1])
    show("how many the third series has", len(table[2]))
    show("its first five", table[2][:5])
    show("every fifth of the first", table[0][::5])
    show_refusals(lambda: table[5], lambda: table[0, 0])


def iteration():
    """Iteration"""
    table = quarna.int16(read_series())
    for number, one in enumerate(table, 1):
        show("mean of series {} in km/s".format(number), 299000 + mean(one))
    overall = 299000 + mean([value for one in table for value in one])
    show("mean of all, in air", overall)
    show("in vacuum, as defined since 1983", DEFINED)
    show("difference", "{:+.1f} km/s".format(overall - DEFINED))
    above = quarna.logical([[299000 + value > DEFINED for value in one] for one in table])
    show("determinations above the definition", sum(value for one in above for value in one))


def assignment():
    """Assignment, and who shares with whom"""
    table = quarna.int16(read_series())
    first, kept = table[0], table.clone()
    table[0][0] = 852
    table[0][1:4] = [740, 900, 1000]
    table[4] = [0] * 20
    show("the whole shows it", table[4][:5])
    show("and so does a part taken earlier", first[:5])
    show("a clone does not", kept[0][:5])
    show("is the clone still as it was read", kept == quarna.int16(read_series()))
    show_refusals(lambda: first.__setitem__(0, 850.5), lambda: first.__setitem__(slice(0, 2), [1, 2, 3]))
    show("after the refusals", first[:5])


def shapes():
    """Other shapes of the same elements"""
    series = read_series()
    days = quarna.int16([value for one in series for value in one], size=(20, 5))
    show("column 2 is series 2", [days[place][1] for place in range(5)])
    show("reshaped in place, elements as stored", days.reshape(10, 2, 5).size)
    show("second half of series 2", [days[place][1][1] for place in range(5)])
    show_refusals(lambda: days.reshape(7, 7))


def complex_values():
    """Complex arrays"""
    drift = [value - 852.4 for value in read_series()[0]]
    turns = [[cmath.exp(-2j * cmath.pi * wave * place / 20) for place in range(20)] for wave in range(5)]
    waves = [sum(value * turn for value, turn in zip(drift, one)) / 20 for one in turns]
    spectrum = quarna.single(vector=waves, is_complex=True)
    for name, part in (("cosines", spectrum.real()), ("sines", spectrum.imag())):
        show("{} in the first series".format(name), " ".join("{:+.1f}".format(number) for number in part))
    show("one element", "{:.1f}".format(spectrum[0][1]))
    show_refusals(lambda: quarna.single(waves))


def exchange():
    """To other consumers, and back"""
    table = quarna.int16(read_series())
    view = memoryview(table)
    show("memoryview: shape, strides, format", (view.shape, view.strides, view.format))
    table[0][1] = 741
    show("what is written shows in the view", view[0, 1])
    show_refusals(lambda: table.reshape(20, 5))
    view.release()
    show("array.array of a row", table[1][:4].toarray())
    show("is the pickle the same", pickle.loads(pickle.dumps(table)) == table)
    try:
        import numpy
    except ImportError:
        show("NumPy", "not at hand")
    else:
        show("NumPy, nothing copied: median by series", numpy.median(numpy.asarray(table), axis=1))


def text():
    """Text that reads back"""
    row = quarna.int16(read_series())[0][:3]
    show("str", row)
    show("repr", repr(row))
    show("read back", eval(repr(row))[0] == row)


CHAPTERS = (construction, subscripts, iteration, assignment, shapes, complex_values, exchange, text)


def main():
    for number, chapter in enumerate(CHAPTERS, 1):
        print("{}. {}".format(number, chapter.__doc__))
        chapter()
        print()


if __name__ == "__main__":
    main()

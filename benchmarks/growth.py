"""How cost grows with the elements, the dimensions, and the objects alive. Each point has a process of its own."""

import array
import collections
import concurrent.futures
import gc
import math
import multiprocessing
import statistics

import numpy as np
import quarna
import quarna_floors as floors

import report
from timing import Statement, compared, medians, seconds_in_turns

ELEMENTS = [10**power for power in range(3, 9)]
DIMENSIONS = [1, 2, 3, 5, 10, 20, 30]
ALIVE = [10**3, 10**6]

# What is measured at each x; `bytes` is what an element takes at most, what it is made from included.
Series = collections.namedtuple("Series", "words xs given statement bytes goal")
Result = collections.namedtuple("Result", "series xs seconds growth")

# Processes may find the machine busier or less so. What a fixed piece of work takes in the same rounds tells.
FIXED = Statement("sum(numbers)")

RANDOM = "a = quarna.double(array.array('d', np.random.random(x).tobytes()), (m, n))\n"
ZEROS = "a = quarna.double(size=(m, n))\n"

LINEAR = [
    Series("a copy of as much memory", ELEMENTS, "a = np.ones(x)", "a.copy()", 16, None),
    Series(
        "construction from a nested list",
        ELEMENTS,
        "rows = np.random.random((m, n)).tolist()",
        "quarna.double(rows)",
        56,
        1.1,
    ),
    Series(
        "construction from `array.array`",
        ELEMENTS,
        "numbers = array.array('d', np.ones(x).tobytes())",
        "quarna.double(numbers, (m, n))",
        32,
        1.1,
    ),
    Series("clone that is written to", ELEMENTS, RANDOM, "b = a.clone()\nb[0][0] = 1.5", 32, 1.1),
    Series("clone of all rows", ELEMENTS, RANDOM, "a[:].clone()", 32, 1.1),
    Series("equality", ELEMENTS, RANDOM + "b = quarna.double(a)", "a == b", 32, 1.1),
    Series("text", ELEMENTS, RANDOM, "str(a)", 56, 1.1),
]

CONSTANT = [
    Series("`a[i][j]`", ELEMENTS, ZEROS, "a[7][9]", 0, 0.05),
    Series("`a[i][j] = v`", ELEMENTS, ZEROS, "a[7][9] = 1.5", 0, 0.05),
    Series("`a[i]`", ELEMENTS, ZEROS, "a[7]", 0, 0.05),
    Series("`a[i:j]`", ELEMENTS, ZEROS, "a[2:7]", 0, 0.05),
    Series("`len(a)`", ELEMENTS, ZEROS, "len(a)", 0, 0.05),
    Series("`reshape`", ELEMENTS, ZEROS, "a.reshape(m, n)", 0, 0.05),
    Series(
        "`==` where the first differs",
        ELEMENTS,
        ZEROS + "b = quarna.double(size=(m, n))\nb[0][0] = 1.5",
        "a == b",
        16,
        0.05,
    ),
]

CHAIN = [
    Series(
        "a chain through all dimensions",
        DIMENSIONS,
        "a = quarna.double(size=[2] * (x > 1) + [1] * (x - 2) + [2])[0 if x == 1 else slice(None)]",
        "a{subscripts}",
        0,
        1.3,
    )
]

SMALL = "([[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]])"
ALIVE_AT_ONCE = [
    Series("arrays", ALIVE, "", "quarna.double(size=(2, 3))", 0, 1.5),
    Series("views", ALIVE, "a = quarna.double" + SMALL, "a[0]", 0, 1.5),
    Series("iterators", ALIVE, "a = quarna.double" + SMALL, "iter(a)", 0, 1.5),
]


def names_for(given, x):
    """With m by n as close to a square as powers of ten allow."""
    m = 10 ** (len(str(x)) // 2)
    names = {"quarna": quarna, "np": np, "array": array, "floors": floors, "x": x, "m": m, "n": x // m}
    exec(given, names)
    return {name: value for name, value in names.items() if not name.startswith("__")}


def seconds_at(series, x):
    """How long the statement takes at x, and how many times as long as a fixed piece of work."""
    statement = Statement(series.statement.format(subscripts="[0]" * x))
    contenders = [(statement, names_for(series.given, x)), (FIXED, {"numbers": range(1000)})]
    return compared(contenders, rounds=9 if x < 10**7 else 3)


def seconds_alive(series, count):
    """For each of so many objects, from when the first of them is made until the last is gone; and how many times
    as long as for as many small objects of bare C++."""
    turns = []
    for given, item in ((series.given, series.statement), ("a = floors.store" + SMALL, "a[0]")):
        text = "for i in range(loops): made[i] = {}\nmade.clear()".format(item)
        turn = Statement(text, before="made = [None] * loops").turn(names_for(given, count))
        turns.append((turn, count))
    gc.disable()
    return medians(seconds_in_turns(turns, rounds=9))


def in_own_process(function, *arguments):
    context = multiprocessing.get_context("spawn")
    with concurrent.futures.ProcessPoolExecutor(1, mp_context=context) as executor:
        return executor.submit(function, *arguments).result()


def available_bytes():
    with open("/proc/meminfo") as meminfo:
        return next(1024 * int(line.split()[1]) for line in meminfo if line.startswith("MemAvailable:"))


def exponent(xs, costs):
    """The slope of the line of least squares through the logarithms."""
    logs = [(math.log(x), math.log(one)) for x, one in zip(xs, costs)]
    middle_x, middle_y = (statistics.mean(numbers) for numbers in zip(*logs))
    return sum((x - middle_x) * (y - middle_y) for x, y in logs) / sum((x - middle_x) ** 2 for x, _ in logs)


def last_to_first(xs, costs):
    return costs[-1] / costs[0]


def result_of(series, cost, growth):
    """The series as far as the memory reaches."""
    xs = [x for x in series.xs if series.bytes * x < 0.8 * available_bytes()]
    if xs != series.xs:
        print("Not enough memory: {} ends at {:,}.".format(series.words, xs[-1]))
    points = [in_own_process(cost, series, x) for x in xs]
    return Result(
        series, xs, [point.seconds for point in points], growth(xs, [point.ratios[0] for point in points])
    )


def results(is_wanted):
    """The results with their goals. Nothing linear can grow less than the copying of memory does."""
    memory = 0
    for series in LINEAR + CONSTANT + CHAIN:
        if is_wanted(series.words):
            result = result_of(series, seconds_at, exponent)
            memory = result.growth if series is LINEAR[0] else memory
            yield result, max(series.goal, memory) if series in LINEAR[1:] else series.goal
    for series in ALIVE_AT_ONCE:
        if is_wanted(series.words):
            yield result_of(series, seconds_alive, last_to_first), series.goal


def power_of_ten(x):
    return "10^{}".format(len(str(x)) - 1) if x >= 1000 else str(x)


def measure(is_wanted):
    """Prints the table; returns it with its results."""
    table = report.Table(
        ("What", 40), ("At", -11), ("Microseconds", -18), ("Growth", -8), ("Goal", -5), ("Verdict", 7)
    )
    kept = []
    for result, goal in results(is_wanted):
        ends = [0, -1]
        table.add(
            result.series.words,
            " – ".join(power_of_ten(result.xs[end]) for end in ends),
            " – ".join(report.shown(1e6 * result.seconds[end]) for end in ends),
            ("× {:.2f}" if result.series in ALIVE_AT_ONCE else "^ {:.2f}").format(result.growth),
            "" if goal is None else "{:.3g}".format(goal),
            "" if goal is None else table.verdict(result.growth, goal),
        )
        kept.append(result)
    table.close()
    return table, kept


def panels(results):
    """What a picture of them shows: titles, the results under each, and what grows."""
    return [
        ("with the elements", [one for one in results if one.series in LINEAR], "elements"),
        ("not with the elements", [one for one in results if one.series in CONSTANT], "elements"),
        ("with the dimensions", [one for one in results if one.series in CHAIN], "dimensions"),
    ]

"""How much memory arrays take, beside NumPy and the goals.

Each statement runs in a process of its own, since what one array frees another would find. Counted is what
becomes resident while it runs: what of it is kept at its end, and the peak on the way. What is there before
does not count, for example the list that an array is made from.
"""

import array
import collections
import gc
import importlib
import json
import random
import resource
import statistics
import subprocess
import sys
import time

import report

COUNT, MANY, FEWER = 10**7, 200000, 20000
BUDGET = 10**9  # bytes at which a statement is stopped: none needs as many
NONE_TOUCHED = 1.0  # megabyte: the system counts resident pages in batches

# What is measured: words, what runs before, a statement for each contender, the figures to show.
Point = collections.namedtuple("Point", "words given ours theirs figures")
# A column of Measured, what to divide it by, its unit, and the goal, None where there is none
Figure = collections.namedtuple("Figure", "column per unit goal")
Measured = collections.namedtuple("Measured", "kept peak seconds is_stopped")
Result = collections.namedtuple("Result", "words figure quarna numpy goal")


def an_element(**goals):
    return [Figure(column, COUNT, column + ", bytes an element", goal) for column, goal in goals.items()]


def each(many, goal):
    return [Figure("kept", many, "bytes in all", goal)]


def zeros(time_goal, touched_goal):
    return [
        Figure("seconds", 1e-6, "time, µs", time_goal),
        Figure("peak", 1e6, "memory touched, MB", touched_goal),
    ]


MATRIX = "size = (10**4, 10**3)"
NUMBERS = MATRIX + "; numbers = array.array('d', bytes(8 * 10**7))"
ARRAY = NUMBERS + "; a = new(numbers, size)"
RANDOM = ARRAY.replace("bytes(8 * 10**7)", "(random.random() for _ in range(10**7))")
PARTS = "a = new(array.array('d', [1, 2, 3, 4, 5, 6]), (2, 3)); made = [None] * {}".format(MANY)


def filled(item):
    """A statement that makes as many of an item as there is room for."""
    return "for i in range(len(made)): made[i] = " + item


POINTS = [
    Point(
        "doubles, built from a nested list",
        "rows = [[1.5] * 10**3 for _ in range(10**4)]",
        "a = quarna.double(rows)",
        "a = numpy.array(rows, order='F')",
        an_element(kept=8.2, peak=8.6),
    ),
    Point("a clone", ARRAY, "b = a.clone()", "b = a.copy('F')", an_element(kept=8.2, peak=8.6)),
    Point(
        "`str` (19.3 bytes of text)", RANDOM, "text = str(a)", "text = str(a.tolist())", an_element(peak=45)
    ),
    Point(
        "array of 6 doubles",
        "rows = [[1, 2, 3], [4, 5, 6]]; made = [None] * {}".format(MANY),
        filled("quarna.double(rows)"),
        filled("numpy.array(rows, 'd', order='F')"),
        each(MANY, 400),
    ),
    Point(
        "array of 1000 doubles",
        "numbers = array.array('d', [1.5] * 1000); made = [None] * {}".format(FEWER),
        filled("quarna.double(numbers)"),
        filled("numpy.array(numbers)"),
        each(FEWER, 8400),
    ),
    Point("live partial array, a row", PARTS, filled("a[0]"), filled("a[0]"), each(MANY, 144)),
    Point("live partial array, a slice", PARTS, filled("a[0:1]"), filled("a[0:1]"), each(MANY, 144)),
    Point(
        "80 MB of zeros",
        "",
        "a = quarna.double(size=(1, 10**7))",
        "a = numpy.zeros((1, 10**7))",
        zeros(15, NONE_TOUCHED),
    ),
    Point(
        "8 GB of zeros",
        "",
        "a = quarna.double(size=(1, 10**9))",
        "a = numpy.zeros((1, 10**9))",
        zeros(1000, NONE_TOUCHED),
    ),
    Point(
        "doubles, by size",
        MATRIX,
        "a = quarna.double(size=size)",
        "a = numpy.zeros(size, order='F')",
        an_element(kept=8.2, peak=8.6),
    ),
    Point(
        "doubles, built from a flat list",
        MATRIX + "; flat = [1.5] * 10**7",
        "a = quarna.double(flat, size=size)",
        "a = numpy.array(flat).reshape(size, order='F')",
        an_element(kept=8.2, peak=8.6),
    ),
    Point(
        "doubles, built from `array.array`",
        NUMBERS,
        "a = quarna.double(numbers, size=size)",
        "a = numpy.array(numbers).reshape(size, order='F')",
        an_element(kept=8.2, peak=8.6),
    ),
    Point(
        "a clone that is written to",
        ARRAY,
        "b = a.clone()\nb[7][9] = 1.5",
        "b = a.copy('F')\nb[7][9] = 1.5",
        an_element(kept=8.2, peak=8.6),
    ),
]


def resident(process="self"):
    with open("/proc/{}/statm".format(process)) as statm:
        return int(statm.read().split()[1]) * resource.getpagesize()


def start_peak_anew():
    """Whether the system lets us: else the peak is that of the whole process so far."""
    try:
        with open("/proc/self/clear_refs", "w") as references:
            references.write("5")
    except OSError:
        return False
    return True


def peak(is_anew):
    if is_anew:
        with open("/proc/self/status") as status:
            for line in status:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1]) * 1024
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024


def names_of(contender):
    module = importlib.import_module(contender)
    new = {
        "quarna": lambda numbers, size: module.double(numbers, size),
        "numpy": lambda numbers, size: module.array(numbers).reshape(size, order="F"),
    }
    return {contender: module, "new": new[contender], "array": array, "random": random}


def median_seconds(statement, names):
    """Of a few times, each without what the time before has left."""
    before, seconds = dict(names), []
    for _ in range(9):
        names.clear()
        names.update(before)
        start = time.process_time()
        exec(statement, names)
        seconds.append(time.process_time() - start)
    return statistics.median(seconds)


def child(contender, given, statement, is_timed):
    """Prints what is resident before a statement, then what the statement takes."""
    names = names_of(contender)
    exec(given, names)
    compiled, before = compile(statement, "statement", "exec"), dict(names)
    gc.collect()
    is_anew, start = start_peak_anew(), resident()
    print(start, flush=True)
    exec(compiled, names)
    kept = resident()
    figures = [kept - start, max(peak(is_anew), kept) - start]
    names.clear()
    print(json.dumps(figures + [median_seconds(compiled, before) if is_timed else 0.0]), flush=True)


def measured(contender, given, statement, is_timed):
    """What a statement takes, or had taken when it was stopped at the budget; None if it was refused."""
    command = [sys.executable, __file__, contender, given, statement, "timed" if is_timed else ""]
    with subprocess.Popen(command, stdout=subprocess.PIPE, universal_newlines=True) as process:
        first = process.stdout.readline()
        clock, start = time.perf_counter(), int(first or 0)
        while first and process.poll() is None:
            taken = resident(process.pid) - start
            if taken > BUDGET:
                process.kill()
                return Measured(taken, taken, time.perf_counter() - clock, True)
            time.sleep(0.005)
        last = process.stdout.readline()
    return Measured(*json.loads(last), is_stopped=False) if last else None


def results_of(point):
    is_timed = any(figure.column == "seconds" for figure in point.figures)
    both = [
        measured(contender, point.given, statement, is_timed)
        for contender, statement in (("quarna", point.ours), ("numpy", point.theirs))
    ]
    for figure in point.figures:
        numbers = [one and getattr(one, figure.column) / figure.per for one in both]
        yield Result(point.words, figure.unit, *numbers, goal=figure.goal), both


def shown(number, result):
    if number is None:
        return "refused"
    return ("> " if result.is_stopped else "") + ("{:,.0f}" if number >= 100 else "{:.1f}").format(number)


def measure(is_wanted):
    """Prints the table; returns it with its results."""
    table = report.Table(
        ("What", 34), ("Figure", 22), ("quarna", -8), ("NumPy", -8), ("Goal", -6), ("Verdict", 7)
    )
    results = []
    for point in POINTS:
        for result, both in results_of(point) if is_wanted(point.words) else ():
            numbers = map(shown, (result.quarna, result.numpy), both)
            verdict = table.verdict(None if both[0] and both[0].is_stopped else result.quarna, result.goal)
            table.add(result.words, result.figure, *numbers, "{:,g}".format(result.goal), verdict)
            results.append(result)
    table.close()
    return table, results


if __name__ == "__main__":
    child(*sys.argv[1:])

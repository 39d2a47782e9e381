"""How much memory arrays take, beside NumPy (where it is at hand) and the goals that we have set ourselves.

Each statement runs in a process of its own, since what one array frees another would find. Counted is what
becomes resident while it runs: what of it is kept at its end, and the peak on the way. What is there before
does not count, for example the list that an array is made from.
"""

import array
import gc
import importlib
import json
import platform
import resource
import subprocess
import sys
import time
from collections import namedtuple

try:
    import numpy
except ImportError:
    numpy = None

COUNT, MANY, FEWER = 10**7, 200000, 20000
MEGABYTE = 10**6
BUDGET = 10**9  # bytes at which a statement is stopped: none needs as many
NONE_TOUCHED = 1  # megabyte: the system counts resident pages in batches

Measured = namedtuple("Measured", "kept peak milliseconds")
# A column of Measured, the count or size to divide it by, and the goal, None where there is none
Figure = namedtuple("Figure", "column per unit goal")


def large(kept, peak):
    return [Figure("kept", COUNT, "bytes an element", kept), Figure("peak", COUNT, "bytes an element", peak)]


def small(many, goal):
    return [Figure("kept", many, "bytes each", goal)]


def zeros(milliseconds, megabytes):
    return [Figure("milliseconds", 1, "", milliseconds), Figure("peak", MEGABYTE, "megabytes", megabytes)]


MATRIX = "size = (10**4, 10**3)"
NUMBERS = MATRIX + "; numbers = array.array('d', bytes(8 * 10**7))"
ARRAY = NUMBERS + "; a = new(numbers, size)"
PARTS = "a = new(array.array('d', [1, 2, 3, 4, 5, 6]), (2, 3)); made = [None] * {}".format(MANY)

# What comes before, a statement for each contender, the figures to show.
POINTS = {
    "by size": (
        MATRIX,
        "a = quarna.double(size=size)",
        "a = numpy.zeros(size, order='F')",
        large(8.2, 8.6),
    ),
    "from nested lists": (
        "rows = [[1.5] * 10**3 for _ in range(10**4)]",
        "a = quarna.double(rows)",
        "a = numpy.array(rows, order='F')",
        large(8.2, 16.6),
    ),
    "from a flat list": (
        MATRIX + "; flat = [1.5] * 10**7",
        "a = quarna.double(flat, size=size)",
        "a = numpy.array(flat).reshape(size, order='F')",
        large(8.2, None),
    ),
    "from array.array": (
        NUMBERS,
        "a = quarna.double(numbers, size=size)",
        "a = numpy.array(numbers).reshape(size, order='F')",
        large(8.2, 8.6),
    ),
    "a clone": (ARRAY, "b = a.clone()", "b = a.copy('F')", large(8.2, 8.6)),
    "a clone that is written to": (
        ARRAY,
        "b = a.clone()\nb[7][9] = 1.5",
        "b = a.copy('F')\nb[7][9] = 1.5",
        large(8.2, 8.6),
    ),
    "its text": (ARRAY, "text = str(a)", "text = str(a.tolist())", large(None, None)),
    "a 2-by-3 array": (
        "rows = [[1, 2, 3], [4, 5, 6]]; made = [None] * {}".format(MANY),
        "for i in range(len(made)): made[i] = quarna.double(rows)",
        "for i in range(len(made)): made[i] = numpy.array(rows, 'd', order='F')",
        small(MANY, 400),
    ),
    "an array of 1000": (
        "numbers = array.array('d', [1.5] * 1000); made = [None] * {}".format(FEWER),
        "for i in range(len(made)): made[i] = quarna.double(numbers)",
        "for i in range(len(made)): made[i] = numpy.array(numbers)",
        small(FEWER, 8400),
    ),
    "a row, a[0]": (
        PARTS,
        "for i in range(len(made)): made[i] = a[0]",
        "for i in range(len(made)): made[i] = a[0]",
        small(MANY, 144),
    ),
    "a slice, a[0:1]": (
        PARTS,
        "for i in range(len(made)): made[i] = a[0:1]",
        "for i in range(len(made)): made[i] = a[0:1]",
        small(MANY, 144),
    ),
    "80 MB of zeros": (
        "",
        "a = quarna.double(size=(1, 10**7))",
        "a = numpy.zeros((1, 10**7))",
        zeros(None, None),
    ),
    "8 GB of zeros": (
        "",
        "a = quarna.double(size=(1, 10**9))",
        "a = numpy.zeros((1, 10**9))",
        zeros(1, NONE_TOUCHED),
    ),
}


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


def child(contender, before, statement):
    """Prints what is resident before a statement, then what the statement took."""
    module = importlib.import_module(contender)
    names = {contender: module, "array": array}
    if contender == "quarna":
        names["new"] = module.double
    else:
        names["new"] = lambda numbers, size: module.array(numbers).reshape(size, order="F")
    exec(before, names)
    compiled = compile(statement, "statement", "exec")
    gc.collect()
    is_anew, start = start_peak_anew(), resident()
    print(start, flush=True)
    clock = time.perf_counter()
    exec(compiled, names)
    seconds = time.perf_counter() - clock
    kept = resident()
    print(json.dumps([kept - start, max(peak(is_anew), kept) - start, seconds * 1e3]), flush=True)


def measure(contender, before, statement):
    """What a statement takes and whether it was stopped at the budget; None if it was refused."""
    command = [sys.executable, __file__, contender, before, statement]
    with subprocess.Popen(command, stdout=subprocess.PIPE, universal_newlines=True) as process:
        first = process.stdout.readline()
        clock, start = time.perf_counter(), int(first or 0)
        while first and process.poll() is None:
            taken = resident(process.pid) - start
            if taken > BUDGET:
                process.kill()
                return Measured(taken, taken, (time.perf_counter() - clock) * 1e3), True
            time.sleep(0.005)
        last = process.stdout.readline()
    return (Measured(*json.loads(last)), False) if last else None


def shown(number, per):
    number /= per
    return "{:,.0f}".format(number) if number >= 100 else "{:.1f}".format(number)


def main():
    print("\nCPython {}, NumPy {}\n".format(platform.python_version(), numpy and numpy.__version__))
    line = "| {:<26} | {:<22} |" + " {:>8} |" * 3 + " {:<7} |"
    print(line.format("What", "Figure", "quarna", "NumPy", "Goal", "Verdict"))
    print(line.format("-" * 26, "-" * 22, *["-" * 7 + ":"] * 3 + ["-" * 7]))
    verdicts = []
    for what, (before, ours, theirs, figures) in POINTS.items():
        results = [measure("quarna", before, ours), numpy and measure("numpy", before, theirs)]
        for column, per, unit, goal in figures:
            cells, figure = [], " ".join(filter(None, [column, unit]))
            for result in results:
                number = result and shown(getattr(result[0], column), per)
                cells.append("" if not number else "> " + number if result[1] else number)
            met = results[0] and not results[0][1] and getattr(results[0][0], column) <= (goal or 0) * per
            verdict = "" if goal is None else "met" if met else "missed"
            verdicts += [verdict] * (goal is not None)
            print(
                line.format(what, figure, *cells + ["" if goal is None else shown(goal, 1), verdict]),
                flush=True,
            )
    print("\n{} of {} goals met".format(verdicts.count("met"), len(verdicts)))


if __name__ == "__main__":
    child(*sys.argv[1:]) if len(sys.argv) > 1 else main()

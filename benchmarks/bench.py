"""How long the common operations take, beside NumPy (where it is at hand), array.array and nested lists.

The contenders of an operation take turns, the garbage collector off (as timeit has it), and of each the best turn
counts, in processor time. A ratio is how many times as long as the other quarna takes: below 1 quarna is faster.
"""

import array
import pickle
import platform
import time
import timeit

import quarna

try:
    import numpy
except ImportError:
    numpy = None

CONTENDERS = ("quarna", "NumPy", "array", "lists")
ROUNDS = 9
TURN = 0.005  # seconds that a turn takes at least

SIDE = 500
rows = [[row + column / SIDE for column in range(SIDE)] for row in range(SIDE)]
block, row = rows[:100], rows[0]
flat = [element for one in rows for element in one]
data = bytes(range(250)) * 2 * SIDE
numbers = array.array("d", flat)
made = {"quarna": quarna.double(rows), "array": numbers, "lists": rows}
if numpy:
    made["NumPy"] = numpy.array(rows, order="F")

# A statement for each contender, None where it has no such thing. a and b are its own 500 by 500 elements, twice;
# array.array has them in one dimension. Through pickle, as copied lists would share their numbers.
OPERATIONS = {
    "build from nested lists": (
        "quarna.double(rows)",
        "numpy.array(rows, order='F')",
        "array.array('d', flat)",
        "[one[:] for one in rows]",
    ),
    "build from a flat list": (
        "quarna.double(size=(SIDE, SIDE), vector=flat)",
        "numpy.array(flat).reshape((SIDE, SIDE), order='F')",
        "array.array('d', flat)",
        "flat[:]",
    ),
    "build from array.array": (
        "quarna.double(numbers)",
        "numpy.array(numbers)",
        "numbers[:]",
        "list(numbers)",
    ),
    "build from bytes": (
        "quarna.uint8(data)",
        "numpy.frombuffer(data, 'u1').copy()",
        "array.array('B', data)",
        "list(data)",
    ),
    "build zeros": (
        "quarna.double(size=(SIDE, SIDE))",
        "numpy.zeros((SIDE, SIDE))",
        "array.array('d', bytes(8 * SIDE * SIDE))",
        "[[0.0] * SIDE for _ in range(SIDE)]",
    ),
    "read an element": ("a[7][9]", "a[7][9]", "a[3509]", "a[7][9]"),
    "take a row": ("a[7]", "a[7]", "a[3500:4000]", "a[7]"),
    "take a slice of rows": ("a[100:400:2]", "a[100:400:2]", None, "a[100:400:2]"),
    "iterate over all elements": (
        "for one in a:\n for element in one: pass",
        "for one in a:\n for element in one: pass",
        "for element in a: pass",
        "for one in a:\n for element in one: pass",
    ),
    "assign an element": ("a[7][9] = 1.5", "a[7][9] = 1.5", "a[3509] = 1.5", "a[7][9] = 1.5"),
    "assign a row, from a list": (
        "a[7] = row",
        "a[7] = row",
        "a[3500:4000] = array.array('d', row)",
        "a[7] = row[:]",
    ),
    "assign a row, from an array": (
        "a[7] = b[8]",
        "a[7] = b[8]",
        "a[3500:4000] = b[4000:4500]",
        "a[7] = b[8][:]",
    ),
    "assign 100 rows, from lists": (
        "a[100:200] = block",
        "a[100:200] = block",
        None,
        "a[100:200] = [one[:] for one in block]",
    ),
    "assign 100 rows, from an array": (
        "a[100:200] = b[:100]",
        "a[100:200] = b[:100]",
        "a[50000:100000] = b[:50000]",
        "a[100:200] = [one[:] for one in b[:100]]",
    ),
    "compare equal arrays": ("a == b", "numpy.array_equal(a, b)", "a == b", "a == b"),
    "text of a row": ("str(a[7])", "str(a[7].tolist())", "str(a[3500:4000])", "str(a[7])"),
    "clone": ("a[:].clone()", "a.copy('F')", "a[:]", "[one[:] for one in a]"),
    "reshape": ("a.reshape(SIDE, SIDE)", "a.reshape((SIDE, SIDE), order='F')", None, None),
    "pickle and load": ("pickle.loads(pickle.dumps(a, 4))",) * 4,
    "export (memoryview)": ("memoryview(a)", "memoryview(a)", "memoryview(a)", None),
}


def timers(statements):
    """A timer and its number of loops for each contender that has a statement."""
    for contender, statement in zip(CONTENDERS, statements):
        if contender in made and statement:
            a, b = (pickle.loads(pickle.dumps(made[contender])) for _ in range(2))
            timer = timeit.Timer(statement, timer=time.process_time, globals=dict(globals(), a=a, b=b))
            loops = 1
            while timer.timeit(loops) < TURN:
                loops *= 2
            yield contender, timer, loops


def best(statements):
    """Seconds that one operation takes, by contender."""
    runs = list(timers(statements))
    rounds = [
        {contender: timer.timeit(loops) / loops for contender, timer, loops in runs} for _ in range(ROUNDS)
    ]
    return {contender: min(one[contender] for one in rounds) for contender, _, _ in runs}


def shown(number):
    return (
        "{:,.0f}".format(number)
        if number >= 10
        else "{:.1f}".format(number)
        if number >= 1
        else "{:.2f}".format(number)
    )


def main():
    print("CPython {}, NumPy {}\n".format(platform.python_version(), numpy and numpy.__version__))
    line = "| {:<30} | {:>12} |" + " {:>7} |" * 3
    print(line.format("Operation", "Microseconds", "/ NumPy", "/ array", "/ lists"))
    print(line.format("-" * 30, "-" * 11 + ":", *["-" * 6 + ":"] * 3))
    for what, statements in OPERATIONS.items():
        seconds = best(statements)
        ratios = [
            shown(seconds["quarna"] / seconds[other]) if other in seconds else "" for other in CONTENDERS[1:]
        ]
        print(line.format(what, shown(seconds["quarna"] * 1e6), *ratios), flush=True)


if __name__ == "__main__":
    main()

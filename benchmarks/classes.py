"""Whether every class is as fast as its siblings, and every source of numbers nearly as fast as the plain one."""

import collections
import statistics

import quarna

import report
from rows import at, case, numpy, row
from timing import Statement, measured
from values import nest

CLASSES = ("double", "single") + tuple(
    "{}int{}".format(u, bits) for bits in (8, 16, 32, 64) for u in ("", "u")
)
LENGTHS = (100, 100)
SIBLING_GOAL = 2  # times as long as the fastest class of the same width
CLIFF = 3  # times the goal of the plain source

OPERATIONS = {
    "build from a nested list": "new(x, is_complex=is_complex)",
    "read all elements": "[list(r) for r in a]",
    "write all elements": "a[0:100] = x",
    "compare": "a == b",
    "text": "str(a)",
}

# Forms of the same class: what an element takes, whether it is complex
Form = collections.namedtuple("Form", "name is_complex")
Result = collections.namedtuple("Result", "operation form bytes microseconds ratio")


def element(form, number):
    """The number as the class gives it back."""
    if form.name == "logical":
        return number < 50
    if form.is_complex:
        return complex(number, 99 - number)
    return float(number) if form.name in ("double", "single") else number


def names_for(form):
    names = {"new": getattr(quarna, form.name), "is_complex": form.is_complex}
    names["x"] = nest(lambda count: [element(form, 7 * i % 100) for i in range(count)], *LENGTHS)
    names["a"], names["b"] = (names["new"](names["x"], is_complex=form.is_complex) for _ in range(2))
    return names


def families():
    """The forms that are compared with each other: of one width, all real or all complex."""
    found = collections.OrderedDict()
    for is_complex in (False, True):
        for name in CLASSES + (() if is_complex else ("logical",)):
            width = getattr(quarna, name)(is_complex=is_complex).itemsize
            found.setdefault((width, is_complex), []).append(Form(name, is_complex))
    return found


def results_of(operation, width, forms):
    statement = Statement(OPERATIONS[operation])
    seconds = measured([(statement, names_for(form)) for form in forms])
    medians = [statistics.median(one) for one in seconds]
    for form, median in zip(forms, medians):
        yield Result(operation, form, width, median * 1e6, median / min(medians))


def measure(is_wanted):
    """Prints the table; returns it with its results."""
    table = report.Table(
        ("Operation", 24),
        ("Class", 15),
        ("Bytes", -5),
        ("Microseconds", -12),
        ("/ best sibling", -14),
        ("Goal", -4),
        ("Verdict", 7),
    )
    results = []
    for operation in filter(is_wanted, OPERATIONS):
        for (width, _), forms in families().items():
            for result in results_of(operation, width, forms):
                table.add(
                    result.operation,
                    result.form.name + (" complex" if result.form.is_complex else ""),
                    str(result.bytes),
                    report.shown(result.microseconds),
                    report.shown(result.ratio),
                    str(SIBLING_GOAL),
                    table.verdict(result.ratio, SIBLING_GOAL),
                )
                results.append(result)
    table.close()
    return table, results


def cliff(*plain):
    return at(*[goal and CLIFF * goal for goal in plain])


NESTED, MEMORY = cliff(0.75, 0.06, 0.15), cliff(1.0, 1.3, 1.3)

# Sources that are not the plain one: they may take three times as long as that is allowed to.
CLIFFS = [
    row(
        "nested list of int, float and bool",
        "x = nest(mixed, m, n)",
        "quarna.double(x)",
        numpy(NESTED, "np.array(x, 'd')"),
    ),
    row(
        "nested list of ints beyond one digit",
        case("int64", "x = nest(long_integers, m, n)", "quarna.int64(x)", numpy(NESTED, "np.array(x, 'i8')")),
        case(
            "double", "x = nest(long_integers, m, n)", "quarna.double(x)", numpy(NESTED, "np.array(x, 'd')")
        ),
    ),
    row(
        "tuples in a list",
        "x = list(map(tuple, nest(floats, m, n)))",
        "quarna.double(x)",
        numpy(NESTED, "np.array(x, 'd')"),
    ),
    row(
        "single-precision source",
        case(
            "`array.array('f')`",
            "numbers = array.array('f', floats(m * n))",
            "quarna.double(numbers)",
            numpy(MEMORY, "np.array(numbers, 'd')"),
        ),
        case(
            "our own",
            "a = new(nest(floats, m, n), 'single')",
            "quarna.double(a)",
            numpy(MEMORY, "a.astype('d')"),
        ),
    ),
    row(
        "strided source",
        case(
            "`memoryview`",
            "view = memoryview(array.array('d', floats(2 * m * n)))[::2]",
            "quarna.double(view)",
            numpy(MEMORY, "np.array(view)"),
        ),
        case(
            "our own",
            "a = new(nest(floats, 2 * m, n))[::2]",
            "quarna.double(a)",
            numpy(MEMORY, "np.array(a)"),
        ),
    ),
]

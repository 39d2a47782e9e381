"""How long the common operations take: each is timed alone, and the best of five rounds counts."""

import timeit

import quarna

SIDE = 1000
NAMES = {
    "quarna": quarna,
    "rows": [[float(row * SIDE + column) for column in range(SIDE)] for row in range(SIDE)],
    "flat": [float(number) for number in range(SIDE * SIDE)],
    "shape": (SIDE, SIDE),
}
NAMES["matrix"] = quarna.double(NAMES["rows"])

BENCHMARKS = [
    ("10^6 elements from nested lists", "quarna.double(rows)"),
    ("10^6 elements, row by row", "quarna.double(flat, shape)"),
    ("10^6 elements, column by column", "quarna.double(size=shape, vector=flat)"),
    ("10^6 zeros", "quarna.double(size=shape)"),
    ("a partial array by integer", "matrix[500]"),
    ("a partial array by slice", "matrix[100:900:2]"),
    ("an element", "matrix[500][500]"),
    ("iteration over 10^6 elements", "for row in matrix:\n    for element in row: pass"),
    ("text of 1000 elements", "str(matrix[500])"),
]


def main():
    for what, statement in BENCHMARKS:
        timer = timeit.Timer(statement, globals=NAMES)
        loops, _ = timer.autorange()
        best = min(timer.repeat(5, loops)) / loops
        print("{:<36} {:>14,.2f} us".format(what, best * 1e6))


if __name__ == "__main__":
    main()

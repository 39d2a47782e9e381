"""Measures how fast quarna is and how much memory it takes, beside others and beside its goals.

Without arguments: the goals of speed and of memory.
"""

import argparse
import os
import platform
import sys

try:
    import numpy
except ImportError:
    sys.exit("The benchmarks compare with NumPy, which is missing; make bench brings it.")

import classes
import document
import goals
import growth
import memory
import operations

# What is measured: a function that prints a table and returns it with its results.
PARTS = {
    "goals": lambda is_wanted: goals.measure(operations.GOALS, is_wanted),
    "memory": memory.measure,
    "classes": classes.measure,
    "cliffs": lambda is_wanted: goals.measure(classes.CLIFFS, is_wanted),
    "growth": growth.measure,
}


def arguments():
    parser = argparse.ArgumentParser(
        prog="make bench ARGS=...", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--all-classes", action="store_true", help="all classes, and unusual sources instead")
    parser.add_argument("--growth", action="store_true", help="what cost does with size instead")
    parser.add_argument("--everything", action="store_true", help="all of these")
    parser.add_argument("--only", metavar="WORDS", default="", help="only what has these words in its name")
    parser.add_argument("--write", action="store_true", help="bring tables and pictures into docs/")
    chosen = parser.parse_args()
    if chosen.only and chosen.write:
        parser.error("what is written is the whole")
    return chosen


def parts_of(chosen):
    if chosen.everything:
        return list(PARTS)
    parts = ["classes", "cliffs"] * chosen.all_classes + ["growth"] * chosen.growth
    return parts or ["goals", "memory"]


def machine():
    return "CPython {}, NumPy {}, {} processors".format(
        platform.python_version(), numpy.__version__, os.cpu_count()
    )


def write(part, table, results):
    import pictures  # matplotlib is needed for nothing else

    document.write(part, ["Measured under {}.".format(machine()), ""] + table.lines)
    if part == "goals":
        document.write("standing", goals.standing(results))
        pictures.ratios(results)
    elif part == "memory":
        pictures.memory(results)
    elif part == "growth":
        pictures.growth(growth.panels(results))


def main():
    chosen = arguments()
    print(machine())
    for part in parts_of(chosen):
        print()
        table, results = PARTS[part](lambda words: chosen.only in words)
        if chosen.write:
            write(part, table, results)


if __name__ == "__main__":
    main()

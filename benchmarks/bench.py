"""Measures how fast quarna is and how much memory it takes, beside others and beside its goals."""

import argparse
import platform
import sys

try:
    import numpy
except ImportError:
    sys.exit("The benchmarks compare with NumPy, which is missing: make bench brings it.")

import goals
import memory
import report
from operations import GOALS


def arguments():
    parser = argparse.ArgumentParser(prog="make bench ARGS=...", description=__doc__)
    parser.add_argument("--only", metavar="WORDS", default="", help="what has these words in its name")
    return parser.parse_args()


def main():
    wanted = arguments()
    print("CPython {}, NumPy {}\n".format(platform.python_version(), numpy.__version__))
    report.goals_table(goals.measure(GOALS, lambda words: wanted.only in words))
    if not wanted.only:
        memory.main()


if __name__ == "__main__":
    main()

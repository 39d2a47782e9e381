"""How long statements take beside each other: in turns, each as long as the clock needs, round after round."""

import collections
import gc
import statistics
import subprocess
import sys
import textwrap
import time

ROUNDS, FEWER_ROUNDS = 9, 5
TURN = 0.003  # seconds that a turn takes at least
LONG = 1.0  # seconds from which on a round is long, and there are fewer
ROOM = 2**27  # bytes that all arrays prepared for one turn may take

Comparison = collections.namedtuple("Comparison", "seconds ratios")


class Statement:
    """A statement that is repeated; with `before` one that handles `loops` pieces which that has prepared."""

    def __init__(self, text, before=""):
        self.text, self.before = text, before

    def turn(self, names):
        """A function from a number of loops to the seconds that they take. All names are local to it."""
        repeated = self.text if self.before else "for _ in range(loops):\n" + textwrap.indent(self.text, " ")
        source = "{}\nstart = clock()\n{}\nreturn clock() - start".format(self.before, repeated)
        arguments = ", ".join("{0}={0}".format(name) for name in names)
        local = dict(names, clock=time.process_time)
        exec("def turn(loops, clock=clock, {}):\n{}".format(arguments, textwrap.indent(source, " ")), local)
        return local["turn"]

    def most(self, size_in_bytes):
        return max(ROOM // size_in_bytes, 4) if self.before else None


class FirstImport:
    """The first import of a module in a process, one each time, where Python's own modules are there already."""

    def __init__(self, module):
        self.program = (
            "import array, time; start = time.process_time(); import {}; "
            "print(time.process_time() - start)".format(module)
        )

    def once(self):
        return float(subprocess.check_output([sys.executable, "-c", self.program]))

    def turn(self, names):
        return lambda loops: sum(self.once() for _ in range(loops))

    def most(self, size_in_bytes):
        return 4


def enough_loops(turn, most):
    loops = 1
    while (most is None or loops < most) and turn(loops) < TURN:
        loops *= 2
    return loops


def seconds_in_turns(turns, rounds):
    """For each (turn, loops) the seconds of a loop in every round. Every other round goes the other way."""
    seconds = [[] for _ in turns]
    places = list(range(len(turns)))
    start = time.perf_counter()
    while len(seconds[0]) < rounds:
        for place in places:
            turn, loops = turns[place]
            seconds[place].append(turn(loops) / loops)
        places.reverse()
        if time.perf_counter() - start > LONG * len(seconds[0]):
            rounds = min(rounds, FEWER_ROUNDS)
    return seconds


def measured(contenders, size_in_bytes=1, rounds=ROUNDS):
    """Seconds in every round for each contender, a pair of a statement and the names that it uses."""
    gc.collect()
    gc.disable()
    try:
        turns = []
        for statement, names in contenders:
            turn = statement.turn(names)
            turns.append((turn, enough_loops(turn, statement.most(size_in_bytes))))
        return seconds_in_turns(turns, rounds)
    finally:
        gc.enable()


def medians(seconds):
    """The median seconds of the first contender, and the median ratios of it to each of the others."""
    first, *others = seconds
    ratios = [statistics.median(a / b for a, b in zip(first, other)) for other in others]
    return Comparison(statistics.median(first), ratios)


def compared(contenders, **options):
    return medians(measured(contenders, **options))

"""Exits of the interpreter while a daemon thread is inside a call: daemon_exits.py DEED COUNT.

Each exit is that of a forked child. Prints how many there were, and stops at the first that a signal ended.
"""

import os
import random
import sys
import threading
import time

import quarna


class Slow:
    """A sequence whose items take their time, and whose going does, too: both let go of the GIL."""

    def __len__(self):
        return 3

    def __getitem__(self, i):
        time.sleep(0)
        return Last(i)


class Last(int):
    def __del__(self):
        time.sleep(0)


class Bound:
    def __index__(self):
        time.sleep(0)
        return 0


ARRAY = quarna.int16([[1, 2, 3], [4, 5, 6]])
DEEDS = {
    "construct": lambda: (quarna.int16([Slow(), Slow()]), quarna.int16(None, (3, Last(1)), Slow())),
    "assign": lambda: (
        ARRAY.__setitem__(0, Slow()),
        ARRAY.__setitem__(slice(Bound(), None), [Slow(), Slow()]),
    ),
    "render": lambda: (str(ARRAY[Bound.__index__(Bound()) :]), repr(ARRAY[slice(Bound(), None)])),
    "compare": lambda: ARRAY == quarna.int16([Slow(), Slow()]),
    "iterate": lambda: [list(row) for row in quarna.int16([Slow(), Slow()])[slice(Bound(), None)]],
    "drop": lambda: quarna.int16({"initializer": Slow(), "size": (Last(1), Last(3)), "vector": None}),
}


def repeat(deed):
    while True:
        deed()


def main(deed, count):
    for done in range(count):
        child = os.fork()
        if child == 0:
            for _ in range(2):
                threading.Thread(target=repeat, args=(DEEDS[deed],), daemon=True).start()
            time.sleep(random.uniform(0, 0.004))
            return
        status = os.waitpid(child, 0)[1]
        if status != 0:
            sys.exit("exit %d while %sing ended with status %d" % (done, deed, status))
    print(count)


main(sys.argv[1], int(sys.argv[2]))

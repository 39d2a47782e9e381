"""Exits of the interpreter while a daemon thread is inside a call: daemon_exits.py CODE COUNT.

Each exit is that of a forked child. Prints how many there were, and stops at the first that a signal ended.
"""

import os
import random
import sys
import threading
import time

from quarna import int16  # noqa: F401


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


a = int16([[1, 2, 3], [4, 5, 6]])


def repeat(code):
    deed = compile(code, code, "eval")
    while True:
        eval(deed)


def main(code, count):
    for done in range(count):
        child = os.fork()
        if child == 0:
            for _ in range(2):
                threading.Thread(target=repeat, args=(code,), daemon=True).start()
            time.sleep(random.uniform(0, 0.004))
            return
        status = os.waitpid(child, 0)[1]
        if status != 0:
            sys.exit("exit %d inside %s ended with status %d" % (done, code, status))
    print(count)


main(sys.argv[1], int(sys.argv[2]))

"""A construction in which one allocation of the interpreter after the other fails: no_memory.py CODE.

Prints what comes of it otherwise, and stops at the first failure that is answered by anything but MemoryError.
"""

import sys

import _testcapi
import quarna

CODE = compile(sys.argv[1], "CODE", "eval")


def outcome(start, stop):
    try:
        _testcapi.set_nomemory(start, stop)
        try:
            return eval(CODE, vars(quarna)).size
        finally:
            _testcapi.remove_mem_hooks()
    except SystemError as failure:  # where CPython itself had no memory for the traceback of a refusal
        return TypeError if str(failure) == "error return without exception set" else failure
    except Exception as failure:
        return MemoryError if str(failure) == "unable to initialize C object." else type(failure)


expected = outcome(10**6, 10**6 + 1)
for first in range(40):
    assert outcome(first, first + 1) in (expected, MemoryError), first
print(expected)

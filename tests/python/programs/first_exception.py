"""The first C++ exception of a thread in a process that has no memory for it: first_exception.py.

The heap in front of the process's own refuses small blocks when it is told to. Prints what was raised on the main
thread, on one that had called the module before, and on one that had not.
"""

import ctypes
import threading

import quarna

limit = ctypes.c_size_t.in_dll(ctypes.CDLL(None), "failing_malloc_limit")


def throw(first_call=None):
    if first_call:
        first_call([1])
    text = "nothing was raised"
    limit.value = 1024
    try:
        quarna.double(size=(2**40, 2**20))
    except Exception as failure:
        limit.value = 0
        text = type(failure).__name__
    limit.value = 0
    print(text, flush=True)


throw()
for first_call in (quarna.double, None):
    thread = threading.Thread(target=throw, args=(first_call,))
    thread.start()
    thread.join()

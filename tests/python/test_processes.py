"""What only a process of its own shows: memory that runs out, threads, and the end of the interpreter."""

import os
import subprocess
import sys

import pytest

from helpers import each_code, each_row, scripted

HERE = os.path.dirname(os.path.abspath(__file__))
EXITS = int(os.environ.get("QUARNA_EXITS", 12))


def run(program, *arguments, **environment):
    """What a program of the folder prints; it must end well."""
    command = [sys.executable, os.path.join(HERE, "programs", program + ".py")] + list(arguments)
    pipes = dict(stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    process = subprocess.run(command, env=dict(os.environ, **environment), **pipes)
    assert process.returncode == 0, process.stdout.decode()
    return process.stdout.decode().split()


@each_code("""
int16([Slow(), Slow()]), int16(None, (3, Last(1)), Slow())
str(a[Bound.__index__(Bound()) :]), repr(a[Bound() :])
a.__setitem__(0, Slow()), a.__setitem__(slice(Bound(), None), [Slow(), Slow()]) | a == int16([Slow(), Slow()])
[list(row) for row in int16([Slow(), Slow()])[Bound() :]]
int16({"initializer": Slow(), "size": (Last(1), Last(3)), "vector": None})
""")
def test_exits_with_daemon_threads_inside_a_call(code):
    # The last word: the address sanitizer stumbles over its own notes of a stack that was unwound by force.
    assert run("daemon_exits", code, str(EXITS))[-1] == str(EXITS)


@pytest.mark.skipif(not scripted, reason="the failing heap is built with the scripted library")
def test_the_first_exception_of_a_thread_when_there_is_no_memory():
    if "libasan" in os.environ.get("LD_PRELOAD", ""):
        pytest.skip("the sanitizer's heap is in front")
    assert run("first_exception", LD_PRELOAD="libfailing_malloc.so") == ["MemoryError"] * 3


@pytest.mark.skipif(
    hasattr(sys, "gettotalrefcount") and sys.version_info < (3, 12),
    reason="no traceback may lack memory there",
)
@each_row("""
double(size=(2, 3)) -> (2, 3) | double([[1, 2]], is_complex=True) -> (1, 2)
double({"size": (2, 3)}) -> (2, 3) | int8(vector=[1, 2, 3], size=(3, 1)) -> (3, 1)
double(shape=(2, 3)) -> <class 'TypeError'> | double([1], initializer=[1]) -> <class 'TypeError'>
double(1, 2, 3, 4, 5) -> <class 'TypeError'>
""")
def test_each_allocation_of_a_construction_that_fails(code, end):
    pytest.importorskip("_testcapi")
    assert " ".join(run("no_memory", code)) == end

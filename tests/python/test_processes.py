"""What only a process of its own shows: memory that runs out, threads, and the end of the interpreter."""

import os
import subprocess
import sys

import pytest

from helpers import scripted

HERE = os.path.dirname(os.path.abspath(__file__))
EXITS = int(os.environ.get("QUARNA_EXITS", 12))


def run(program, *arguments, **environment):
    """What a program of the folder prints; it must end well."""
    command = [sys.executable, os.path.join(HERE, "programs", program + ".py")] + list(arguments)
    pipes = dict(stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    process = subprocess.run(command, env=dict(os.environ, **environment), **pipes)
    assert process.returncode == 0, process.stdout.decode()
    return process.stdout.decode().split()


@pytest.mark.parametrize("deed", "construct assign render compare iterate drop".split())
def test_exits_with_daemon_threads_inside_a_call(deed):
    # The last word: the address sanitizer stumbles over its own notes of a stack that was unwound by force.
    assert run("daemon_exits", deed, str(EXITS))[-1] == str(EXITS)


@pytest.mark.skipif(not scripted, reason="the failing heap is built with the scripted library")
def test_the_first_exception_of_a_thread_when_there_is_no_memory():
    if "libasan" in os.environ.get("LD_PRELOAD", ""):
        pytest.skip("the sanitizer's heap is in front")
    assert run("first_exception", LD_PRELOAD="libfailing_malloc.so") == ["MemoryError"] * 3


@pytest.mark.skipif(
    hasattr(sys, "gettotalrefcount") and sys.version_info < (3, 12),
    reason="such a CPython asserts that no traceback lacks memory",
)
def test_each_allocation_of_a_construction_that_fails():
    pytest.importorskip("_testcapi")
    assert run("no_memory") == ["well"]

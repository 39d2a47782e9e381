"""Every test is a leak test: the library has as many live objects after it as before."""

import gc
import types

import pytest

from helpers import fail, library, scripted


def pytest_collection_finish():
    gc.collect()
    gc.freeze()  # what is there by now stays: no collection needs to look at it


@pytest.fixture(autouse=True)
def no_leaks(request):
    before, failed = scripted and library.scripted_live_objects(), request.session.testsfailed
    yield
    gc.collect()
    if scripted and request.session.testsfailed == failed:  # a failure keeps what its traceback shows
        assert library.scripted_live_objects() <= before, "objects of the library that nobody freed"


@pytest.fixture
def script():
    """The controls of the scripted library; what it was told ends with the test."""
    if not scripted:
        pytest.skip("the library is not the scripted one")
    library.scripted_reset()
    yield types.SimpleNamespace(fail=fail, reset=library.scripted_reset)
    library.scripted_reset()

"""Constructions in which one allocation of the interpreter after the other fails: either a refusal or the array."""

import _testcapi

import quarna

FORMS = [
    (lambda: quarna.double(size=(2, 3)), (2, 3)),
    (lambda: quarna.double([[1, 2]], is_complex=True), (1, 2)),
    (lambda: quarna.double({"size": (2, 3)}), (2, 3)),
    (lambda: quarna.int8(vector=[1, 2, 3], size=(3, 1)), (3, 1)),
    (lambda: quarna.double(shape=(2, 3)), "TypeError"),
    (lambda: quarna.double([1], initializer=[1]), "TypeError"),
    (lambda: quarna.double(1, 2, 3, 4, 5), "TypeError"),
]


def outcome(form):
    try:
        return form().size
    except (TypeError, MemoryError) as failure:
        return type(failure).__name__
    except RuntimeError as failure:
        return "MemoryError" if str(failure) == "unable to initialize C object." else str(failure)


def outcome_without(form, first):
    _testcapi.set_nomemory(first, first + 1)
    try:
        return outcome(form)
    except MemoryError:
        return "MemoryError"
    except SystemError as failure:  # where CPython itself had no memory for the traceback of a refusal
        return "TypeError" if str(failure) == "error return without exception set" else str(failure)
    finally:
        _testcapi.remove_mem_hooks()


for form, expected in FORMS:
    assert outcome(form) == expected
    for first in range(40):
        found = outcome_without(form, first)
        assert found in (expected, "MemoryError"), (expected, first, found)
print("well")

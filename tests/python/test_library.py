"""The library through its one import, where the module does not lead: refusals, odd shapes, null arguments."""

import ctypes
import os
import struct
from ctypes import POINTER, byref, c_size_t, c_void_p, string_at

import pytest

from helpers import ELEMENT_TYPES, ERROR_CODES, call, each_code, each_row
from model import product

Free = ctypes.CFUNCTYPE(None, c_void_p)
NAMES = dict(ELEMENT_TYPES, LARGEST=2**64 - 1)


@pytest.fixture
def factory():
    made = c_void_p()
    assert call.create_factory(byref(made)) == 0
    yield made
    call.destroy_factory(made)


def create(factory, kind, shape):
    """What a library answers, and the array."""
    array = c_void_p(1)
    return call.create_array(factory, kind, (c_size_t * len(shape))(*shape), len(shape), byref(array)), array


@each_code("() | (5,) | (1, 1) | (2, 3, 4) | (0, LARGEST, LARGEST) | (3, 0) | (1,) * 10000")
def test_shapes_come_back_as_created_and_elements_are_zero(code, factory):
    shape = eval(code, NAMES)
    created, array = create(factory, NAMES["DOUBLE"], shape)
    count, lengths, block, deleter = c_size_t(), POINTER(c_size_t)(), c_void_p(1), c_void_p(1)
    assert created == call.get_dimensions(array, byref(count), byref(lengths)) == 0
    assert tuple(lengths[: count.value]) == shape and call.get_element_count(array) == product(shape)
    assert call.release_buffer(array, True, byref(block), byref(deleter)) == 0
    assert string_at(block.value, 8 * product(shape)) == bytes(8 * product(shape))
    Free(deleter.value)(block)
    left = call.release_buffer(array, True, byref(block), byref(deleter))
    assert left == ERROR_CODES["SystemError"] and not block and not deleter
    for sole_holder in (False, True):  # there is nothing to write to
        unshared = c_void_p(1)
        assert call.unshare(array, sole_holder, byref(unshared)) and not unshared
    assert call.get_element_count(array) == 0
    call.destroy_array(array)


@each_row("""
DOUBLE, 2 ** 61 -> TooManyElements | COMPLEX_UINT64, 2 ** 60 -> TooManyElements | 2, 1 -> SystemError
DOUBLE, 2 ** 60 -> TooManyElements | INT8, 2 ** 63 -> TooManyElements | INT8, 2 ** 63 - 1 -> OutOfMemory
DOUBLE, 2 ** 59 -> OutOfMemory | COMPLEX_UINT64, 2 ** 59 - 1 -> OutOfMemory | -1, 1 -> SystemError
COMPLEX_UINT64 + 1, 1 -> SystemError
""")
def test_what_it_cannot_hold(code, end, factory):
    (kind, count), block, deleter = eval(code, NAMES), c_void_p(1), c_void_p(1)
    answer, array = create(factory, kind, (1, count))
    assert answer == ERROR_CODES[end] and not array
    assert call.create_buffer(factory, byref(block), byref(deleter), kind, count) == answer
    assert not block and not deleter


def test_shapes_that_nothing_holds(factory):
    assert create(factory, NAMES["DOUBLE"], (2**32, 2**32))[0] == ERROR_CODES["TooManyElements"]
    if "libasan" in os.environ.get("LD_PRELOAD", ""):
        pytest.skip("the sanitizer's operator new never throws, but ends the process")
    for count in (2**45, 2**60, 2**64 - 1):
        answer = call.create_array(factory, NAMES["DOUBLE"], byref(c_size_t(1)), count, byref(c_void_p()))
        assert answer == ERROR_CODES["OutOfMemory"]


@each_row("""
DOUBLE, 2, 0 -> | DOUBLE, 2, 1 -> | DOUBLE, 2, 2 -> MemoryLayoutMismatch | 2, 2, 0 -> SystemError
DOUBLE, LARGEST, 0 -> TooManyElements | DOUBLE, 2 ** 60, 0 -> TooManyElements
""")
def test_an_adopted_block_is_freed_once_whatever_the_outcome(code, end, factory):
    (kind, length, layout), freed, block, array = eval(code, NAMES), [], 0x1000, c_void_p(1)
    free = Free(freed.append)
    given = byref(c_size_t(length)), 1, block, ctypes.cast(free, c_void_p), byref(array), layout
    assert call.adopt_buffer_in_order(factory, kind, *given) == ERROR_CODES.get(end, 0)
    assert bool(array) is not bool(end) and freed == ([block] if end else [])
    call.destroy_array(array)
    assert freed == [block]


def test_references_reach_parts_and_refuse_other_types_and_the_place_past_the_last(factory):
    _, array = create(factory, NAMES["COMPLEX_SINGLE"], (2,))
    reference, real, imaginary = c_void_p(), c_void_p(), c_void_p()
    parts = [byref(ctypes.c_float(part)) for part in (1.5, -2.5)]
    mismatch, no_place = ERROR_CODES["DataTypeMismatch"], ERROR_CODES["InvalidArrayIndex"]
    assert call.get_reference(array, 2, byref(reference)) == no_place
    assert call.get_reference(array, 1, byref(reference)) == 0
    assert call.set_complex(reference, NAMES["COMPLEX_SINGLE"], *parts) == 0
    assert call.set_complex(reference, NAMES["SINGLE"], *parts) == mismatch
    assert call.get_part_addresses(reference, byref(real), byref(imaginary)) == 0
    assert string_at(real.value, 8) == struct.pack("2f", 1.5, -2.5) and imaginary.value == real.value + 4
    call.destroy_reference(reference)
    end = call.end(array, True)
    assert call.get_address(end, byref(real)) == mismatch and call.dereference(end, byref(reference)) == 0
    assert call.set_complex(reference, NAMES["COMPLEX_SINGLE"], *parts) == no_place
    call.destroy_reference(reference), call.destroy_iterator(end), call.destroy_array(array)


def test_a_block_of_no_elements_is_a_block(factory):
    block, deleter = c_void_p(), c_void_p()
    assert call.create_buffer(factory, byref(block), byref(deleter), NAMES["INT8"], 0) == 0 and block
    Free(deleter.value)(block)


def test_null_for_every_argument_is_refused():
    for function in filter(lambda function: function.argtypes, vars(call).values()):
        answer = function(*[0] * len(function.argtypes))
        assert function.restype is not ctypes.c_int or answer == ERROR_CODES["SystemError"]

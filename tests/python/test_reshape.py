"""Reshaping, and all that outlives it or gets in its way."""

import copy

import pytest

from helpers import NAMES, agrees, codes, handle_of_array, refuses
from test_hostile import Sequence

BAD = "reshape() must be passed a nonempty sequence of nonnegative integers."
COUNT = "number of elements specified by arguments to reshape() (%d) does not match current number (6)."
PARTIAL = "reshape() not supported for a partial array."


def six():
    return NAMES["int8"]([[1, 2, 3], [4, 5, 6]])


@pytest.mark.parametrize("dimensions, size, text", [
    ("3, 2", (3, 2), "[[1,5],[4,3],[2,6]]"),
    ("(3, 2)", (3, 2), "[[1,5],[4,3],[2,6]]"),
    ("[6, True, 1, 1]", (6, 1), "[[1],[4],[2],[5],[3],[6]]"),
    ("1, 6", (1, 6), "[[1,4,2,5,3,6]]"),
    ("1, 3, 1, 2", (1, 3, 1, 2), "[[[[1,5]],[[4,3]],[[2,6]]]]"),
    ("range(2, 4)", (2, 3), "[[1,2,3],[4,5,6]]"),
])
def test_new_shapes(dimensions, size, text):
    array, paired = six(), NAMES["double"](six(), is_complex=True)
    copy = array.clone()
    assert eval("array.reshape(%s)" % dimensions) is array
    assert array.size == size and str(array) == text and copy == six()
    assert eval("paired.reshape(%s)" % dimensions) == NAMES["double"](array)
    assert memoryview(array).shape == size and array.buffer_info()[1] == 6
    agrees(array)
    agrees(paired)


def test_empty_arrays_take_any_empty_shape():
    array = NAMES["double"](size=(0, 3))
    for size in ((5, 0), (0, 0), (0, 2, 7), (2, 0, 2 ** 40)):
        assert array.reshape(size).size == size
        agrees(array)


@pytest.mark.parametrize("kind, text, table", [
    (RuntimeError, PARTIAL, "a[0].reshape(2, 3) | a[0:1].reshape() | a[2:].reshape(0, 0)"),
    (ValueError, BAD, "a.reshape() | a.reshape(order=1) | a.reshape(None) | a.reshape(6) | a.reshape([6]) | a.reshape(())"),
    (ValueError, BAD, "a.reshape({2, 3}) | a.reshape('23') | a.reshape(2.0, 3) | a.reshape(2, -3) | a.reshape(-2, -3)"),
    (ValueError, BAD, "a.reshape(2, 2 ** 64) | a.reshape((2, 3), (2, 3)) | a.reshape([2, None])"),
    (RuntimeError, "Item 1 could not be retrieved from the value passed to reshape().", "a.reshape(s)"),
    (NAMES["ShapeError"], COUNT % 4, "a.reshape(2, 2) | a.reshape(2, 2, order=1)"),
    (NAMES["ShapeError"], COUNT % 0, "a.reshape(0, 2 ** 62, 2 ** 62)"),
    (NAMES["ShapeError"], COUNT % (2 ** 63 - 1), "a.reshape(2 ** 32, 2 ** 32) | a.reshape(2 ** 31, 2 ** 31, 2, 3)"),
    (ValueError, "reshape() does not accept keyword arguments.", "a.reshape(3, 2, order=1)"),
    (BufferError, None, "a.reshape(3, 2)"),
])
def test_refusals(kind, text, table):
    array = six()
    view = memoryview(array[1])     # comes into play last, after every other refusal
    for code in codes(table):
        refuses(code, kind, text, a=array, s=Sequence(2, [2].__getitem__))
        assert array == six() and view.tolist() == [[1, 2, 3], [4, 5, 6]]
    agrees(array)
    view.release()
    assert array.reshape(3, 2).size == (3, 2)


@pytest.mark.parametrize("code", [
    "part[0]", "part[0:1]", "part[0] = 1", "part[0:1] = [1]", "len(part)", "bool(part)", "list(part)", "str(part)",
    "repr(part)", "part == part", "part != a", "a[0:] == part", "part.clone()", "part.__reduce__()", "copy.copy(part)",
    "int8(part)", "a[0] = part", "a[0:] = [part]", "give(part)", "part.size", "next(walk)", "list(walk)", "next(whole)"])
def test_what_outlives_a_reshape_is_refused(code):
    for old, new in (((2, 3), (3, 2)), ((2, 3), (1, 6)), ((2, 3), (2, 3)), ((1, 6), (1, 1, 6))):
        for key in (0, slice(0, 1), slice(None, None, -1), slice(0, 0))[:3 if "walk" in code else 4]:
            array = six().reshape(old)
            names = dict(NAMES, a=array, part=array[key], walk=iter(array[key]), whole=iter(array), copy=copy,
                         give=handle_of_array)
            array.reshape(new)
            with pytest.raises(RuntimeError, match="reshaped"):
                exec(code, names)
            assert names["part"].buffer_info() == array.buffer_info()
            assert list(array[0]) and array.reshape(2, 3) == six()


@pytest.mark.parametrize("code", ["a[0] = s", "a[0:] = s", "a[0][0:] = s", "row[0:1] = s", "row[:] = s"])
def test_a_target_reshaped_while_its_right_side_is_read(code):
    array = six()
    names = dict(a=array, row=array[1], s=Sequence(1, lambda i: array.reshape(3, 2) and 1))
    with pytest.raises(RuntimeError, match="reshaped"):
        exec(code, names)
    assert array == six().reshape(3, 2)
    agrees(array)


@pytest.mark.parametrize("act", ["a.reshape(3, 2)", "kept.append(memoryview(a))", "a[0:1] = [7, 8, 9]", "str(a), a == a",
                                 "kept.append(a.clone())", "del a"])
@pytest.mark.parametrize("code", [
    "a[0] = s", "a[0:] = s", "a[0][0:] = s", "a[1:][0] = s", "a[0][1] = s[0]", "a[i:] = s", "a[0][i:] = s", "a[i:]",
    "a[1][:i]", "a[::-1][i:]", "int8([a[0], s, a[1]])", "int8(s)", "int8(vector=s)", "int8(s, size=s)", "a.reshape(s)"])
def test_python_code_in_the_middle_of_a_call(code, act):
    """At each moment when a sequence, a number or a bound of a slice gets to run, one of them acts."""
    for moment in range(12):
        array = six()
        names = dict(NAMES, a=array, kept=[])
        moments = iter([None] * moment + [act])

        def meddle(answer=None):
            try:
                exec(next(moments, None) or "", names)
            except (BufferError, RuntimeError, ValueError, NameError):
                pass
            return answer

        number = type("Number", (int,), {"__del__": meddle})
        names["i"] = type("Index", (), {"__index__": lambda self: meddle(1)})()
        names["s"] = Sequence(lambda: meddle(3), lambda i: meddle(number(2)))
        try:
            exec(code, names)
        except (RuntimeError, ValueError, NameError, BufferError, NAMES["ShapeError"], NAMES["SizeError"]):
            pass
        agrees(array)
        assert str(array)
        moments = iter([])


def test_a_reshape_that_the_library_refuses_changes_nothing(script):
    array = six()
    for number in (60, 11, 110, 14, 53, 51, 59):
        for after in range(3):
            array.reshape(2, 3)
            part = array[1]
            script.scripted_fail(number, 19, after)
            try:
                array.reshape(3, 2)
            except MemoryError:
                script.scripted_fail(number, 0, 0)
                assert array.size == (2, 3) and list(part) == [4, 5, 6]
            script.scripted_fail(number, 0, 0)
            agrees(array)
            array[0][0] = 1
            agrees(array)
    assert array.reshape(2, 3) == six()

"""Reshaping, and all that outlives it or gets in its way."""

import copy

import pytest

import model
from helpers import NAMES, Sequence, agrees, codes, each_code, each_refusal, handle_of_array, outcome, raising
from two_sides import compare

BAD = "reshape() must be passed a nonempty sequence of nonnegative integers."


def six():
    return NAMES["int8"]([[1, 2, 3], [4, 5, 6]])


@each_code("3, 2 | 6, True | 2, 3, 1, 1 | 1, 6 | 1, 3, 1, 2 | 1, 1, 6")
def test_new_shapes(code):
    lines = """
    a = int8([[1, 2, 3], [4, 5, 6]]) | c = a.clone() | b = a.reshape({0}) | a[0][0] = 9 | p = a[-1:]
    d = double([[1, 2j, 3], [4, 5, 6j]], is_complex=True) | d.reshape({0}) | q = d.clone()
    e = double(size=(0, 3)) | e.reshape(5, 0) | e.reshape(0, 2, 7) | e.reshape(0, 0)
    """
    compare(codes(lines.format(code)))
    array, lengths = six(), eval(code)
    assert array.reshape(lengths) is array is array.reshape([3, 2]).reshape(range(2, 4)).reshape(*lengths)
    assert memoryview(array).shape == array.size and array.buffer_info()[1] == 6


# In the order in which they are found out; the last because of a view of the array.
@each_refusal("""
RuntimeError: reshape() not supported for a partial array. -> a[0].reshape(2, 3) | a[0:1].reshape() | a[2:].reshape(0, 0)
ValueError: BAD -> a.reshape() | a.reshape(order=1) | a.reshape(None) | a.reshape(6) | a.reshape([6]) | a.reshape(())
ValueError: BAD -> a.reshape({2, 3}) | a.reshape('23') | a.reshape(2.0, 3) | a.reshape(2, -3) | a.reshape(-2, -3)
ValueError: BAD -> a.reshape(2, 2 ** 64) | a.reshape((2, 3), (2, 3)) | a.reshape([2, None])
RuntimeError: Item 1 could not be retrieved from the value passed to reshape(). -> a.reshape(s)
ShapeError: COUNT 4 -> a.reshape(2, 2) | a.reshape(2, 2, order=1)
ShapeError: COUNT 0 -> a.reshape(0, 2 ** 62, 2 ** 62) | a.reshape(2 ** 62, 0) | a.reshape(2 ** 62, 2 ** 62, 0)
ShapeError: COUNT 9223372036854775807 -> a.reshape(2 ** 32, 2 ** 32) | a.reshape(2 ** 31, 2 ** 31, 2, 3)
ShapeError: COUNT 4611686018427387904 -> a.reshape(2 ** 31, 2 ** 31)
ValueError: reshape() does not accept keyword arguments. -> a.reshape(3, 2, order=1)
BufferError: existing exports of data: the array cannot be reshaped. -> a.reshape(3, 2)
""")
def test_refusals(kind, text, table):
    array = six()
    text = model.COUNTS % (int(text[5:]), 6) if "COUNT" in text else text.replace("BAD", BAD)
    names = dict(NAMES, a=array, view=memoryview(array[1]), s=Sequence(2, raising(OSError, 1)))
    for code in codes(table):
        assert (code, outcome(code, names)) == (code, (kind, text))
        assert array == six() and names["view"].tolist() == [[1, 2, 3], [4, 5, 6]]
    agrees(array)
    names["view"].release()
    assert array.reshape(3, 2).size == (3, 2)


@each_code("""
part[0] | part[0:1] | part[0] = 1 | part[0:1] = [1] | len(part) | bool(part) | list(part) | str(part)
repr(part) | part == part | part != a | a[0:] == part | part.clone() | part.__reduce__() | copy.copy(part)
int8(part) | a[0] = part | a[0:] = [part] | give(part) | part.size | next(walk) | list(walk) | next(whole)
""")
def test_what_outlives_a_reshape_is_refused(code):
    for old, new in (((2, 3), (3, 2)), ((2, 3), (1, 6)), ((2, 3), (2, 3)), ((1, 6), (1, 1, 6))):
        for key in (0, slice(0, 1), slice(None, None, -1), slice(0, 0))[: 3 if "walk" in code else 4]:
            array = six().reshape(old)
            names = dict(NAMES, a=array, part=array[key], walk=iter(array[key]), whole=iter(array), copy=copy)
            names["give"] = handle_of_array
            array.reshape(new)
            with pytest.raises(RuntimeError, match="reshaped"):
                exec(code, names)
            assert names["part"].buffer_info() == array.buffer_info()
            assert list(array[0]) and array.reshape(2, 3) == six()


@each_code("""
a[0] = s | a[0:] = s | a[0][0:] = s | row[0:1] = s | row[:] = s | row[i:] = [9, 9] | row[:i] | part[i:]
part[i:] = [9, 9, 9]
""")
def test_a_target_reshaped_while_its_subscript_or_its_right_side_is_read(code):
    array = six()
    bound = type("Bound", (), {"__index__": lambda self: array.reshape(3, 2) and 1})()
    names = dict(a=array, row=array[1], part=array[0:], s=Sequence(1, lambda i: bound.__index__()), i=bound)
    with pytest.raises(RuntimeError, match="reshaped"):
        exec(code, names)
    assert array == six().reshape(3, 2)
    agrees(array)


ACTS = codes("""
a.reshape(3, 2) | kept.append(memoryview(a)) | a[0:1] = [7, 8, 9] | str(a), a == a | kept.append(a.clone())
del a
""")


@pytest.mark.parametrize("act", ACTS)
@each_code("""
a[0] = s | a[0:] = s | a[0][0:] = s | a[1:][0] = s | a[0][1] = s[0] | a[i:] = s | a[0][i:] = s | a[i:]
a[1][:i] | a[::-1][i:] | int8([a[0], s, a[1]]) | int8(s) | int8(vector=s) | int8(s, size=s) | a.reshape(s)
""")
def test_python_code_in_the_middle_of_a_call(code, act):
    """At each moment when a sequence, a number or a bound of a slice gets to run, one of them acts."""
    for moment in range(12):
        array = six()
        names, moments = dict(NAMES, a=array, kept=[]), iter([None] * moment + [act])

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

"""Building arrays: what each form of the call makes, and what it refuses."""

import array
import ctypes
import itertools

import pytest

from helpers import NAMES, Sequence, agrees, codes, each_class, each_code, each_refusal, each_row
from helpers import outcome, refuses
from model import ROWS
from two_sides import compare


@each_code("""
double() | double(None) | double(is_complex=True) | int8(size=(2, 2)) | single(size=[1, 2], is_complex=True)
logical(size=(2,)) | int8(size=(2, 1, 1, 1)) | int8(size=(1, 1, 2)) | int8(size=(True, 2))
int8(size=(2, 0, 1)) | int8(None, range(1, 3)) | double(5) | int8(True) | double([5]) | double([])
double([[]]) | double([[], []]) | double([1, 2]) | double([[1], [2]]) | double(((1, 2), [3, 4]))
double([[[1, 2], [3, 4]]]) | double([[[[1]]]]) | double([[[], []], [[], []]])
double([1 + 2j, 3], is_complex=True) | logical([[1, 0], [0, 2.5]], is_complex=False) | int16(b'ab')
int16([bytearray(b'ab'), b'cd']) | double(int8([[1, 2], [3, 4]])[1]) | int8([single([1])])
int8([logical([True]), uint8([7])]) | int8(double([1j], is_complex=True)) | double(range(8), (2, 2, 2))
double([[1, 2], [3, 4]], size=(2, 2, 1)) | double([[1, 2]], size=None) | double([1, 2], size=(2,))
int8([1, 2], size=(2, 1)) | double(5, size=(1, 1)) | double([5], size=(1,)) | double([], size=(0, 3))
double([[], []], size=(0, 5)) | double([1, 2, 3, 4], size=(2, 3)) | double(5, size=(2, 2))
double([], size=(2, 2)) | double([[1, 2, 3], [4, 5, 6]], size=(3, 2, 1)) | double([[1], [2]], size=(2,))
double(['ab', 'cd']) | double([[1], ['a']]) | double(['a', 1]) | double([[1, 2], [3]]) | double([[1, 2], 3])
double([1, [2]]) | double([[[1, 2], [3, 4]], [[5, 6, 7], [8, 9, 10]]]) | double([[[1]], [2]])
double([[[1]], [2j]]) | double([[[], []], [[1], [2]]])
logical([0.0, 2.5, 0j, 1j, 1e999 - 1e999, complex(0, 1e999 - 1e999), -0.0]) | double([[[1], [2]], [[], []]])
double([[[]], [[1]]]) | logical(5, is_complex=True) | uint8([[1], [-1]])
""")
def test_builds_and_refuses_as_the_model(code):
    compare(["a = " + code])


@each_row("""
double(None, None, None) -> double() | double(vector=[1, 2]) -> double([1, 2])
double(vector=[]) -> double([[]]) | double(None, (2, 2), [1, 3, 2, 4]) -> double([[1, 2], [3, 4]])
double(vector=[7], size=(1, 1, 1)) -> double([7]) | double(vector=[], size=(3, 0)) -> double([[], [], []])
int8(vector=b'ab', size=(2, 1)) -> int8([[97], [98]])
int8(vector=[1j], is_complex=True) -> int8([1j], is_complex=True)
int16(memoryview(b'ab')) -> int16([97, 98]) | logical(vector=[2.5, 0j]) -> logical([True, False])
int16(array('i', [-1, 1])) -> int16([-1, 1]) | double({}) -> double()
double({'size': (1, 2)}) -> double([0, 0]) | double({}, [1, 2]) -> double([1, 2])
double({'is_complex': True}, [[1, 2]]) -> double([1, 2], is_complex=True)
double(Options(size=(1, 1))) -> double([0])
double({'vector': [1, 3, 2, 4]}, None, (2, 2)) -> double([[1, 2], [3, 4]])
double({'size': (1, 2)}, **{}) -> double([0, 0]) | double({}, [1], **{}) -> double([1])
""")
def test_other_roads_to_the_same_array(code, end):
    names = dict(NAMES, array=array.array, Options=type("Options", (dict,), {}))
    assert outcome(code, names) == outcome(end, names)
    agrees(eval(code, names))


class Fives(bytes):
    def __getitem__(self, i):
        return 5


def elements_at_an_odd_address(typecode):
    return memoryview(b"x" + array.array(typecode, [1, 2]).tobytes())[1:].cast(typecode)


MEMORY = codes("""
b'' | b'ab' | bytearray(b'ab') | Fives(b'ab') | array('d', [1.5, -0.0]) | array('f', [0.1])
array('b', [-1, 44]) | array('Q', [2 ** 64 - 1]) | array('q', [-2 ** 63]) | array('d')[:]
memoryview(b'abcd')[::-2] | [memoryview(b''), [1]] | memoryview(array('d', [1, 2, 3]))[1:]
memoryview(b'ab').cast('c') | memoryview(b'\\x00\\x02').cast('?') | memoryview(b'abcd').cast('B', [2, 2])
memoryview(b'abcdefgh').cast('n') | memoryview(b'abcdefgh').cast('P') | odd('h') | odd('i') | odd('q')
odd('f') | odd('d') | memoryview(b'a').cast('B', []) | int8([[1, 2], [3, -4]])[::-1]
int64([2 ** 53 + 1], is_complex=True) | uint64([2.0 ** 63, 5], is_complex=True).real()
double([1e300, -1e300]) | single(size=(2, 0, 3)) | logical([True]) | [int8([1, 2])[0], (3, 4)]
[int8(size=(2, 0)), [[1], [2]]] | [[[1], [2]], int8(size=(2, 0))]
""")
NUMBERS = codes("""
None | 'x' | [] | [1] | 2 ** 63 | -2 ** 63 | 2 ** 64 | 300 | -1 | 1e300 | float('nan') | 2.5 | -0.0 | True
1j | complex(1e300, -1) | Half(0.5) | Seven(7) | int8([[1]])[0] | -1e300
""")


@pytest.mark.parametrize("code", MEMORY + ["[1, %s]" % code for code in NUMBERS])
def test_sequences_that_are_not_walked_read_as_those_that_are(code):
    names = dict(NAMES, array=array.array, odd=elements_at_an_odd_address, Fives=Fives)
    names.update({name: type(name, (base,), {}) for name, base in (("Half", float), ("Seven", int))})
    forms = codes("{}(s{}) | {}(vector=s{}) | {}(s, size=(2, 1){}) | assigned({}(size=(2, 2){}), s)")
    names["assigned"] = lambda array, value: array.__setitem__(0, value) or array
    for made in (code, "[%s, %s]" % (code, code)):
        for row, flag, form in itertools.product(ROWS, ("", ", is_complex=True"), forms):
            unwalked, call = eval(made, names), form.format(row.name, flag)
            walked = Sequence(lambda: len(unwalked), lambda i: unwalked[i])
            expected = call, outcome(call, dict(names, s=walked))
            for read in (unwalked, tuple(unwalked) if isinstance(unwalked, list) else unwalked):
                assert (call, outcome(call, dict(names, s=read))) == expected


def pythons_own(*args, **kwds):
    """What CPython's parser says of arguments for the same four names."""
    parse, unread = ctypes.pythonapi.PyArg_ParseTupleAndKeywords, [ctypes.py_object() for _ in range(4)]
    names = (ctypes.c_char_p * 5)(b"initializer", b"size", b"vector", b"is_complex", None)
    parse.argtypes = [ctypes.py_object] * 2 + [ctypes.c_char_p] + [ctypes.c_void_p] * 5
    parse(args, kwds, b"|OOOO", names, *map(ctypes.addressof, unread))


class Equal(str):
    """A string that equals whatever it is compared with."""

    __hash__ = str.__hash__

    def __eq__(self, other):
        return True


@each_code("""
1, 2, 3, 4, 5 | 1, 2, 3, 4, size=5 | [1], initializer=[1] | 1, 2, size=3, vector=4 | [1], shape=5
Size=5, initialiser=3 | *[1] * 7 | vector=1, **{'siz\\xe9': 2} | **{'a': 1, 'b': 2, 'c': 3, 'd': 4, 'e': 5}
1, 2, 3, True, is_complex=True
""")
def test_arguments_are_refused_in_the_words_of_python(code):
    with pytest.raises(TypeError) as ours:
        eval("double(%s)" % code, NAMES)
    with pytest.raises(TypeError) as theirs:
        eval("f(%s)" % code, dict(f=pythons_own))
    assert str(ours.value) == str(theirs.value)


@each_row("""
{1: 2} -> keywords must be strings | {None: 1, 'size': (1, 2)} -> keywords must be strings
{Equal('other'): 5} -> 'other' | {Equal('size'): (1, 2), 'vector': [3, 4]} -> [[3.0,4.0]]
{Other('size'): (2, 1), 'size': (1, 2)} -> keywords must be strings
""")
def test_a_leading_dictionary_of_odd_keys(code, end):
    names = dict(NAMES, Equal=Equal, Other=type("Other", (str,), {"__hash__": lambda self: 1}))
    found = str(outcome("str(double(%s))" % code, names))
    assert end in found and ("[[" in end or "TypeError" in found)


@each_code("size | vector | initializer | is_complex | other")
def test_a_leading_dictionary_that_its_own_keys_empty(code):
    class Emptying(str):
        __hash__ = str.__hash__

        def __eq__(self, other):
            options.clear()
            return str(self) == other

    options = {}
    options[Emptying(code)] = bytearray(10**6)
    options.update({name: bytearray(10**6) for name in ("size", "vector", "initializer")})
    for _ in range(3):
        assert outcome("double(options)", dict(NAMES, options=options))


@each_code("""
[[1, 2], [3, 4]] | [[1], [2]] | [[1, 2, 3], [4, 5, 6]] | [1, 2] | [[[1]], [[2]]] | [[], []] | 5
""")
def test_an_array_in_a_nest_is_taken_and_refused_as_its_list(code):
    nests = codes("[%s, x] | [x, %s] | [[%s], [x]] | [[x, x], [%s, x]] | [[%s], [x, x]]")
    for place, nest in itertools.product(range(5), nests):
        call, listed = "int8(%s)" % nest % code, [[1, 2], [3, 4]]
        if place < 4:
            listed[place // 2][place % 2] = 300
        made = NAMES["int16"](listed)
        for step in (1, -1):
            expected = outcome(call, dict(NAMES, x=listed[::step]))
            assert (call, expected) == (call, outcome(call, dict(NAMES, x=made[::step])))


def test_only_the_length_of_what_could_be_alike_is_asked():
    shy = type("Shy", (list,), {"__len__": None})()
    for code in codes("double([1, shy]) | double([[1], 2, shy])"):
        refuses(code, ValueError, "elements of array are of different lengths or types.", shy=shy)
    refuses("double([[1], shy, 2])", TypeError, shy=shy)


@each_refusal("""
TypeError: value passed to 'is_complex' must be a bool. -> double([1], is_complex=1) | double([1], is_complex=None)
TypeError: logical arrays must not be complex. -> logical('x', is_complex=True)
TypeError: initializer and 'vector' must not both be specified. -> double([1], vector=[2], size=5)
TypeError: more than two positional arguments must not be specified. A third will be treated as 'vector', \
which must not be specified when an initializer is specified. -> double([1], None, [2]) | double([1], 5, [2], is_complex=True)
TypeError: value of 'size' must be a sequence. -> double('x', size=5) | double(size={2, 3})
ValueError: sequence passed to 'size' must not be empty. -> double(size=()) | double(vector='ab', size=())
TypeError: dimensions must be nonnegative integers. -> double(size='ab') | double(size=(2.0, -3))
ValueError: size cannot contain negative dimensions. Use nonnegative integers for dimensions. \
-> double(size=(-1, 2.0)) | double(size=(2 ** 70, 1))
ValueError: value passed to initializer must be numeric. -> double('abc') | double([[1], ['a']])
TypeError: value must not be 'None'. -> double([[[1]], [None]])
TypeError: type does not match. -> double({1, 2}) | double(x for x in [1]) | double([{}]) | double({}, size=(2, 3))
ValueError: value of 'vector' must be a sequence. -> double(vector=5)
ValueError: value passed to 'vector' must be numeric. -> double(vector='ab')
TypeError: value of 'vector' must be an unnested sequence. -> double(vector=[[1]]) | double(vector=['a'])
ValueError: value must not be 'None'. -> double(vector=[None])
ShapeError: dimensions of initializer (3) do not match dimensions specified by 'size' (2, 2). -> double(None, (2, 2), b'abc')
""")
def test_refusals(kind, text, table):
    for code in codes(table):
        assert (code, outcome(code, dict(NAMES))) == (code, (kind, text))


# Blocks of rows and columns, several dimensions between the first and the last, some of length 1.
@each_row("""
(40, 20) -> int8 | (17, 3, 33) -> int16 | (2, 3, 4, 5) -> single | (3, 4, 1, 2, 3, 2) -> double
(1, 33, 1, 17) -> int64 | (5, 2, 3) -> double c | (18, 17) -> single c | (2, 5, 3, 2) -> int8 c
""")
def test_nested_order_becomes_storage_order(code, end):
    count = itertools.count()

    def nest(lengths):
        return [nest(lengths[1:]) for _ in range(lengths[0])] if lengths else next(count) % 101

    compare(["a = %s(%s%s)" % (end.split()[0], nest(eval(code)), ", is_complex=True" if " c" in end else "")])


@each_class
def test_every_class_and_its_complex_form(row):
    lines = """
    a = {0}([[1, 0, 1], [0, 1, 1]]) | b = {0}([[1, 2j], [3, 4 + 5j]], is_complex=True) | c = a[1]
    a[0] = [1, 1, 0] | a[1][0] = 1 | a[0:] = a[::-1] | b[1] = [5 + 6j, 7] | b[0][1] = 1j | a.itemsize
    a._is_complex | b.itemsize | b._is_complex
    """
    compare(codes(lines.format(row.name)))

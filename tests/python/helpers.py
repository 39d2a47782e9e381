"""What the tests share: rows of code, run on module and model; and the native side of an array."""

import ctypes
import os
import re
import types
from ctypes import POINTER, byref, c_char_p, c_int, c_size_t, c_ssize_t, c_void_p

import pytest
import quarna  # before the module: only the package says where it is
import quarnamultidimarrayforpython as module
from hypothesis import strategies as st

import model

CLASSES = [getattr(quarna, row.name) for row in model.ROWS]
NAMES = {name: value for name, value in vars(module).items() if not name.startswith("_")}
each_class = pytest.mark.parametrize("row", model.ROWS, ids=lambda row: row.name)


def codes(table):
    """The rows of a table of code, several to a line."""
    return [code.strip() for line in table.strip().splitlines() for code in line.split(" | ")]


def rows(table):
    """The rows of a table, several to a line, each parted by an arrow into code and what is said of it."""
    return [tuple(part.strip() for part in row.split(" ->")) for row in codes(table)]


def words(table):
    """The rows of such a table as a dictionary."""
    return dict(rows(table))


def each_code(table):
    return pytest.mark.parametrize("code", codes(table))


def each_row(table):
    return pytest.mark.parametrize("code, end", rows(table))


def each_refusal(table):
    """One test for a line of a kind of exception, its words, and an arrow to all that is refused so."""
    found = [re.fullmatch("(.*?): (.*) -> (.*)", row).groups() for row in table.strip().splitlines()]
    return pytest.mark.parametrize("kind, text, table", found)


def drawn(table, **parts):
    """One of the lines of a table, in which a name in braces stands for what its strategy draws."""

    def line(text):
        names = re.findall(r"{(\w+)}", text)
        empty = re.sub(r"{\w+}", "{}", text)
        return st.tuples(*[parts[name] for name in names]).map(lambda values: empty.format(*values))

    return st.one_of([line(text) for text in codes(table)])


class Sequence:
    """A sequence that does as it is told: length() and item(i) are called for each question."""

    def __init__(self, length, item=lambda i: 1):
        self.length, self.item = length, item

    def __len__(self):
        return self.length() if callable(self.length) else self.length

    def __getitem__(self, i):
        return self.item(i)


def raising(kind, at=0):
    """A function that raises when called with this number or a higher one, and otherwise answers 1."""
    return lambda i=0: exec("raise kind", {"kind": kind}) if i >= at else 1


def refuses(code, kind, text=None, **names):
    """Runs a line that must raise exactly this kind, with exactly this text unless the words are CPython's."""
    with pytest.raises(kind) as caught:
        exec(code, dict(NAMES, **names))
    assert type(caught.value) is kind and text in (None, str(caught.value))


def outcome(code, names):
    """What a line gives: a text in which 1, 1.0 and True differ, or the kind and the words of its refusal."""
    try:
        if " = " in code:
            return exec(code, names)
        value = eval(code, names)
        is_array = hasattr(value, "size")
        return repr([value, value.size, len(value), list(map(str, value))] if is_array else value)
    except Exception as failure:
        return "stale" if "reshaped since" in str(failure) else (type(failure).__name__, str(failure))


def rows_of(table):
    """Number, name and the rest of each row of a table of the library."""
    path = os.path.join(os.path.dirname(__file__), "../../library/include/quarna_data_array", table + ".def")
    with open(path) as file:
        found = re.findall(r"^QUARNA_\w+\( *(\d+), (\w+),(.*)\)$", file.read(), re.MULTILINE)
    return [(int(number), name, rest) for number, name, rest in found]


ELEMENT_TYPES = {name: number for number, name, _ in rows_of("element_types")}
ERROR_CODES = {name: number for number, name, _ in rows_of("error_codes")}
OPERATIONS = {name: number for number, name, _ in rows_of("operations")}

# The library that the module uses: one of that name is in the process already.
library = ctypes.CDLL("libQuarnaDataArray.so")
library.get_function_ptr.restype = c_void_p
scripted = hasattr(library, "scripted_live_objects")
if scripted:
    native_side = ctypes.CDLL("libnative_side.so")
    library.scripted_live_objects.restype = ctypes.c_long

_pointer = ctypes.pythonapi.PyCapsule_GetPointer
_pointer.restype, _pointer.argtypes = c_void_p, [ctypes.py_object, ctypes.c_char_p]
_entries = (c_void_p * 2).from_address(_pointer(module._capi, b"quarnamultidimarrayforpython._capi"))
array_of_handle = ctypes.PYFUNCTYPE(ctypes.py_object, c_void_p)(_entries[0])
handle_of_array = ctypes.PYFUNCTYPE(c_void_p, ctypes.py_object)(_entries[1])


def dump(array):
    """The lines of the native dump of an array."""
    text, library = ctypes.create_string_buffer(10000), ctypes.CDLL(module.__file__)
    native = c_void_p.from_address(id(array) + object.__basicsize__)  # the field behind the object's head
    write = library._ZNK11QCppPyArray14writeToOstreamERSo
    native_side.native_side_dump(write, native, text, c_size_t(len(text)))
    return text.value.decode("latin1").splitlines()


KINDS = {"void": None, "int": c_int, "int32_t": ctypes.c_int32, "size_t": c_size_t, "bool": ctypes.c_bool}


def operation(number, row):
    """The function of a row of operations, which takes and gives pointers as addresses."""
    result, arguments = re.match(r"\s*\w+,\s*([^,\s]+),\s*\((.*)\)", row).groups()
    kinds = [result] + re.findall(r"(\S+) \w+(?:,|$)", arguments)
    prototype = ctypes.CFUNCTYPE(*[KINDS.get(kind, c_void_p) for kind in kinds])
    return prototype(library.get_function_ptr(number) or 0)


call = types.SimpleNamespace(**{name: operation(number, row) for number, name, row in rows_of("operations")})


class View(ctypes.Structure):
    _fields_ = [("buf", c_void_p), ("obj", c_void_p), ("len", c_ssize_t), ("itemsize", c_ssize_t)]
    _fields_ += [("readonly", c_int), ("ndim", c_int), ("format", c_char_p), ("shape", POINTER(c_ssize_t))]
    _fields_ += [("strides", POINTER(c_ssize_t)), ("suboffsets", c_void_p), ("internal", c_void_p)]


def export(array, view, flags):
    return ctypes.pythonapi.PyObject_GetBuffer(ctypes.py_object(array), byref(view), flags)


def fail(name, code, after=0):
    """All calls of the operation but `after` more answer with the error code."""
    library.scripted_fail(OPERATIONS[name], ERROR_CODES[code], after)


def new_handle(kind, lengths=(1, 1)):
    """A new array of the library, of an element type, with unknown elements; whoever takes it owns it."""
    factory, made, dimensions = c_void_p(), c_void_p(), (c_size_t * len(lengths))(*lengths)
    call.create_factory(byref(factory))
    call.create_array(factory, ELEMENT_TYPES[kind], dimensions, len(lengths), byref(made))
    call.destroy_factory(factory)
    return made.value


def handle_contents(handle, itemsize):
    """Dimensions, bytes in storage order and their address, of the array behind a handle of the library."""
    count, lengths, reference, address = c_size_t(), POINTER(c_size_t)(), c_void_p(), c_void_p()
    call.get_dimensions(handle, byref(count), byref(lengths))
    dimensions = tuple(lengths[: count.value])
    size = model.product(dimensions) * itemsize
    if size:
        assert call.get_reference(handle, 0, byref(reference)) == 0
        call.get_part_addresses(reference, byref(address), byref(c_void_p()))
        call.destroy_reference(reference)
    return dimensions, ctypes.string_at(address.value, size), address.value


def agrees(array):
    """The data array of a full array and the block that Python reads are the same, in shape and in bytes."""
    address, count = array.buffer_info()
    seen = array.size, ctypes.string_at(address, count * array.itemsize)
    assert handle_contents(handle_of_array(array), array.itemsize)[:2] == seen

"""What the tests share: rows of code, run on module and model; and the native side of an array."""

import ctypes

import pytest
import quarna  # before the module: only the package says where it is
import quarnamultidimarrayforpython as module

import model

CLASSES = [getattr(quarna, row.name) for row in model.ROWS]
NAMES = {name: value for name, value in vars(module).items() if not name.startswith("_")}


def codes(table):
    """The rows of a table of code, several to a line."""
    return [code.strip() for line in table.strip().splitlines() for code in line.split(" | ")]


def refuses(code, kind, text=None, **names):
    """Runs a line that must raise exactly this kind, with exactly this text unless the words are CPython's."""
    with pytest.raises(kind) as caught:
        exec(code, dict(NAMES, **names))
    assert type(caught.value) is kind
    assert text is None or str(caught.value) == text


def outcome(code, names):
    """What a line gives: a text in which 1, 1.0 and True differ, or the kind and the words of its refusal."""
    try:
        if " = " in code:
            return exec(code, names)
        value = eval(code, names)
        return repr([value, value.size, len(value), [str(item) for item in value]] if hasattr(value, "size") else value)
    except Exception as failure:
        if "reshaped since" in str(failure):
            return "stale"
        return type(failure).__name__, str(failure)


def compare(program):
    """Runs the lines on the module and on the model, and looks at every array after each of them."""
    ours, theirs = dict(NAMES), dict(model.NAMESPACE)
    for code in program:
        assert outcome(code, ours) == outcome(code, theirs), (code, program)
        for name in set(theirs) - set(model.NAMESPACE) - {"__builtins__"}:
            assert outcome(name, ours) == outcome(name, theirs), (code, name, program)
            if isinstance(theirs[name], model.Array) and not theirs[name].integers and theirs[name].held is None:
                agrees(ours[name])


# The library that the module uses: one of that name is in the process already.
library = ctypes.CDLL("libQuarnaDataArray.so")
scripted = hasattr(library, "scripted_live_objects")
if scripted:
    library.scripted_live_objects.restype = library.scripted_calls.restype = ctypes.c_long
library.get_function_ptr.restype = ctypes.c_void_p

_pointer = ctypes.pythonapi.PyCapsule_GetPointer
_pointer.restype, _pointer.argtypes = ctypes.c_void_p, [ctypes.py_object, ctypes.c_char_p]
_entries = (ctypes.c_void_p * 2).from_address(_pointer(module._capi, b"quarnamultidimarrayforpython._capi"))
array_of_handle = ctypes.PYFUNCTYPE(ctypes.py_object, ctypes.c_void_p)(_entries[0])
handle_of_array = ctypes.PYFUNCTYPE(ctypes.c_void_p, ctypes.py_object)(_entries[1])


def operation(number, result, *kinds):
    return ctypes.CFUNCTYPE(result, *kinds)(library.get_function_ptr(number))


def new_handle(kind, lengths=(1, 1)):
    """A new array of the library, of a type number, with unknown elements; whoever takes it owns it."""
    factory, made, dimensions = ctypes.c_void_p(), ctypes.c_void_p(), (ctypes.c_size_t * len(lengths))(*lengths)
    operation(14, ctypes.c_int, ctypes.c_void_p)(ctypes.byref(factory))
    create = operation(1, ctypes.c_int, *[ctypes.c_void_p, ctypes.c_int32, ctypes.c_void_p, ctypes.c_size_t, ctypes.c_void_p])
    create(factory, kind, dimensions, len(lengths), ctypes.byref(made))
    operation(15, None, ctypes.c_void_p)(factory)
    return made.value


def handle_contents(handle, itemsize):
    """Dimensions and bytes, in storage order, of the array behind a handle of the library."""
    count, lengths, address = ctypes.c_size_t(), ctypes.POINTER(ctypes.c_size_t)(), ctypes.c_void_p()
    operation(51, ctypes.c_int, *[ctypes.c_void_p] * 3)(handle, ctypes.byref(count), ctypes.byref(lengths))
    begin = operation(57, ctypes.c_void_p, ctypes.c_void_p, ctypes.c_bool)(handle, False)
    for number in (71, 113):    # real elements answer to the one, complex ones to the other
        if not operation(number, ctypes.c_int, *[ctypes.c_void_p] * 2)(begin, ctypes.byref(address)):
            break
    operation(64, None, ctypes.c_void_p)(begin)
    dimensions = tuple(lengths[:count.value])
    return dimensions, ctypes.string_at(address.value, model.product(dimensions) * itemsize)


def agrees(array):
    """The data array of a full array and the block that Python reads are the same, in shape and in bytes."""
    address, count = array.buffer_info()
    seen = array.size, ctypes.string_at(address, count * array.itemsize)
    assert handle_contents(handle_of_array(array), array.itemsize) == seen

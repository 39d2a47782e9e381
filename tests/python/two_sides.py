"""Runs programs on module and model that tell what Python sees of an array from what native code sees."""

import ctypes
import gc
import struct

import model
from helpers import NAMES, View, array_of_handle, export, handle_contents, handle_of_array
from helpers import new_handle, outcome

ROWS = {row.name: row for row in model.ROWS}
STRIDES = 0x18  # what a request asks for: complex arrays have no format to give
ASKED = "asked for, not seen yet"


def packed(row, is_complex, elements):
    """The bytes of elements as they are stored."""
    parts = [part for one in elements for part in ((one.real, one.imag) if is_complex else (one,))]
    kind = float if row.format in "df" else int
    return struct.pack("={}{}".format(len(parts), row.format), *map(kind, parts))


def release(view):
    ctypes.pythonapi.PyBuffer_Release(ctypes.byref(view))


class Ours:
    """What programs call beside the classes, for the module. An export lasts as long as it has a name."""

    class export:
        def __init__(self, array):
            self.array, self.view = array, View()
            export(array, self.view, STRIDES)

        def __del__(self):
            release(self.view)

    class bare(export):
        """An export that is given back at once, while its address is kept."""

        def __init__(self, array):
            super().__init__(array)
            release(self.view)

    def handle(array):
        assert handle_of_array(array) == handle_of_array(array)

    def handed(name, shape, elements):
        """A new array over a handle from outside."""
        start, row = new_handle(name.upper(), shape), ROWS[name]
        address = handle_contents(start, row.bytes)[2]
        ctypes.memmove(address, packed(row, False, elements), row.bytes * len(elements))
        made = array_of_handle(start)
        assert handle_of_array(made) == start
        return made

    def poke(array, place, number):
        """Writes an element behind the handle of an array, as native code that holds it may."""
        address = handle_contents(handle_of_array(array), array.itemsize)[2]
        element = packed(ROWS[type(array).__name__], array._is_complex, [number])
        ctypes.memmove(address + place * array.itemsize, element, array.itemsize)

    def parts(array):
        return array.real() if array._is_complex else array.noncomplex()

    def collect():
        gc.collect()


class Skip(Exception):
    """The model's answer to a line that native code must not do, or that means nothing."""


def is_full(array):
    return not array.integers and array.held is None


def needs_array(function):
    def checked(array, *rest):
        if not isinstance(array, model.Array):
            raise Skip
        return function(array, *rest)

    return checked


class ModelExport:
    count = 1

    def __init__(self, array):
        self.array, self.store = array, array.store
        self.store.exports += self.count

    def __del__(self):
        self.store.exports -= self.count


class ModelAddress(ModelExport):
    count = 0


class Theirs:
    """The same for the model, where a `handle` is None until native code knows it."""

    export, bare = needs_array(ModelExport), needs_array(ModelAddress)

    @needs_array
    def handle(array):
        if not is_full(array):
            array.gather(as_row=True)
        owner = array.store if is_full(array) else array
        owner.handle = owner.handle or ASKED

    def handed(name, shape, elements):
        made = model.Array(ROWS[name], elements, shape)
        made.store.handle = ASKED
        return made

    @needs_array
    def poke(array, place, number):
        selected, lengths = model.flatten(array.tolist(), lambda element: element)
        # A part is told in nested order, which must be that of its storage.
        if place >= len(selected) or not is_full(array) and sum(length > 1 for length in lengths) > 1:
            raise Skip
        Theirs.handle(array)
        elements = array.store.data if is_full(array) else array.cache[1]
        elements[place] = array.element(True, number)

    @needs_array
    def parts(array):
        return array.parts(lambda element: element.real if array.is_complex else element)

    def collect():
        pass


def functions(side):
    return {name: getattr(side, name) for name in vars(side) if not name.startswith("_")}


class Run:
    """A program as far as it has come, on the module and on the model."""

    def __init__(self, lines):
        self.ours, self.theirs = dict(NAMES, **functions(Ours)), dict(model.NAMESPACE, **functions(Theirs))
        self.lines = []
        for code in lines:
            self.step(code)

    def step(self, code):
        self.lines.append(code)
        expected = outcome(code, self.theirs)
        if expected != ("Skip", ""):
            self.same(code, outcome(code, self.ours), expected)
            self.check()

    def same(self, what, ours, theirs):
        assert ours == theirs, "\n".join(self.lines + ["    {}: {!r}, not {!r}".format(what, ours, theirs)])

    def check(self):
        """Whether all that has a name is what the model says."""
        for name, value in list(self.theirs.items()):
            if isinstance(value, ModelExport):
                view, (shape, elements) = self.ours[name].view, stored(value.array, value.store, "elements")
                seen = self.ours[name].array.buffer_info()[0], ctypes.string_at(view.buf, view.len)
                self.same(name, seen, (view.buf, elements))
                self.same("shape of " + name, tuple(view.shape[: view.ndim]) if value.count else shape, shape)
                self.check_handle(name, value.array, value.store)
            elif isinstance(value, model.Array):
                self.same(name, outcome(name, self.ours), outcome(name, self.theirs))
                for owner in (value.store, value):
                    if owner.handle and (owner is value or is_full(value)):
                        again = handle_of_array(self.ours[name])
                        owner.handle = again if owner.handle is ASKED else owner.handle
                        self.same("handle of " + name, again, owner.handle)
                    self.check_handle(name, value, owner)

    def check_handle(self, name, array, owner):
        """What native code sees, as long as anything of the family lives."""
        if owner.handle not in (None, ASKED):
            store = owner if owner is array.store else array.gather()
            seen = handle_contents(owner.handle, len(packed(array.row, array.is_complex, [0])))[:2]
            self.same("behind the handle of " + name, seen, stored(array, store, "data"))


def stored(array, store, side):
    return tuple(store.shape), packed(array.row, array.is_complex, getattr(store, side))


def compare(program):
    """Runs a program, then gives a handle of each full array to native code, too."""
    run = Run(program)
    for name, value in list(run.theirs.items()):
        if isinstance(value, model.Array) and is_full(value):
            run.step("handle(%s)" % name)

"""A model of the arrays, slow and plain: elements in one list, subscripts as ranges, each rule told anew."""

import functools
import itertools
import operator
import struct
from collections import namedtuple

# the class, array.array's character, the buffer format; and the bytes of a real element
Row = namedtuple("Row", "name typecode format bytes")
ROWS = """
double d d | single f f | int8 b b | uint8 B B | int16 h h | uint16 H H | int32 i i | uint32 I I | int64 l q
uint64 L Q | logical B ?
"""
ROWS = [
    Row(*row.split(), struct.calcsize("=" + row[-1]))
    for row in ROWS.strip().replace("\n", " | ").split(" | ")
]
HALVES = {row.name: 2 ** (8 * row.bytes - 1) for row in ROWS if "int" in row.name}
RANGES = {name: (0, 2 * half - 1) if name[0] == "u" else (-half, half - 1) for name, half in HALVES.items()}
UNLIKE = "unable to perform assignment because the left and right sides have a different shape."
OVERFLOW = "value (%g) cannot be stored in a variable of type %s."
MISMATCH = "dimensions of initializer (%s) do not match dimensions specified by 'size' (%s)."
COUNTS = "number of elements specified by arguments to reshape() (%d) does not match current number (%d)."
ShapeError, SizeError = type("ShapeError", (Exception,), {}), type("SizeError", (Exception,), {})


def product(lengths):
    return functools.reduce(operator.mul, lengths, 1)


def trimmed(lengths):
    lengths = tuple(map(int, lengths))
    return trimmed(lengths[:-1]) if len(lengths) > 2 and lengths[-1] == 1 else lengths


def convert(row, is_complex, coerce, value):
    """The number that a small int, float or complex reads back as; coerce lets logical take any number."""
    if row.name in RANGES and (is_complex or isinstance(value, int)):
        low, high = RANGES[row.name]
        for part in (value.real, value.imag):
            if not low - 1 < part < high + 1:
                raise OverflowError(OVERFLOW % (part, row.name))
        value = value if isinstance(value, int) else complex(int(value.real), int(value.imag))
    kind = float if row.name in ("double", "single") else bool if row.name == "logical" else int
    if is_complex or isinstance(value, int) or kind is float is type(value) or kind is bool and coerce:
        return complex(value) if is_complex else kind(value)
    words = ("complex values if 'is_complex' is not set to 'True'", "floating-point values")
    raise TypeError("quarna.%s does not accept %s." % (row.name, words[isinstance(value, float)]))


def flatten(value, element):
    """The elements of a nest in its own order and the lengths of its levels; element() converts one."""
    elements, lengths, depths = [], [], []

    def walk(node, depth):
        if not hasattr(node, "__len__"):
            elements.append(element(node))
            depths.append(depth)
            if depth != depths[0]:
                raise ValueError("arrays must be rectangular.")
            return
        if isinstance(node, str):
            raise ValueError("value passed to initializer must be numeric.")
        if len({len(item) if hasattr(item, "__len__") else None for item in node}) > 1:
            raise ValueError("elements of array are of different lengths or types.")
        lengths[depth:] = lengths[depth:] or [0]
        for item in node:
            walk(item, depth + 1)
        lengths[depth] = lengths[depth] or len(node)
        if lengths[depth] != len(node):
            raise ValueError("arrays must be rectangular.")

    walk(value, 0)
    if lengths and product(lengths) != len(elements):
        raise ValueError("arrays must be rectangular.")
    return elements, tuple(lengths or (1, 1))


def selection(held, key, length):
    """The indices that a slice selects; a slice of a slice is what both select, in the dimension's numbers."""
    if type(key) is not slice:
        raise RuntimeError("index is not an integer or slice.")
    if key.step == 0:
        raise ValueError("slice step cannot be zero.")
    new = range(*key.indices(length)) or range(0)
    if held is None:
        return new
    if held.step < 0 or new.step < 0:
        raise ValueError("successive slices must both have a positive step size.")
    return range(max(held.start, new.start), min(held.stop, new.stop), held.step * new.step) or range(0)


class Store:
    """What the arrays of a family share: a shape, and the elements with the first index running fastest. `data` is
    what native code sees: it writes there alone, and Python sees what it wrote only after a reshape."""

    exports, handle = 0, None  # handle: of the data array, where native code has one

    def __init__(self, shape, elements, flat=False):
        self.shape, self.elements, self.data, self.reshapes = tuple(shape), list(elements), list(elements), 0
        if not flat:
            self.write(itertools.product(*map(range, shape)), elements)

    def offset(self, position):
        return sum(index * product(self.shape[:k]) for k, index in enumerate(position))

    def write(self, positions, elements):
        for position, element in zip(positions, elements):
            self.elements[self.offset(position)] = self.data[self.offset(position)] = element


class Array:
    handle = None  # of a partial array's copy, where native code has one
    cache = None  # what the first gather found
    itemsize = property(lambda self: self.row.bytes * (2 if self.is_complex else 1))
    _is_complex = property(lambda self: self.is_complex)

    def __init__(
        self, row, initializer=None, size=None, is_complex=False, store=None, integers=(), held=None
    ):
        if is_complex and row.name == "logical":
            raise TypeError("logical arrays must not be complex.")
        self.row, self.is_complex, self.integers, self.held = row, is_complex, integers, held
        self.element = functools.partial(convert, row, is_complex)
        size = trimmed((1,) * (2 - len(size)) + tuple(size)) if size else ()
        self.store = store or self.build(initializer, size)
        self.reshapes = self.store.reshapes

    def build(self, initializer, size):
        if initializer is None:
            return Store(size or (0, 0), [self.element(True, 0)] * product(size or (0, 0)), flat=True)
        elements, lengths = flatten(initializer, functools.partial(self.element, True))
        flat, shape = len(lengths) == 1, trimmed(lengths)
        if size and size != shape and (product(size) != len(elements) or not flat and elements):
            kind = SizeError if product(size) == len(elements) else ShapeError
            raise kind(MISMATCH % tuple(str(list(side))[1:-1] for side in (shape, size)))
        own = shape if not flat else (1,) + shape if elements else (0, 0)
        return Store(size or own, elements, flat)

    def part(self, integers, held=None):
        """The array that is left at these subscripts, or the element where they are complete."""
        if len(integers) == len(self.store.shape):
            return self.store.elements[self.store.offset(integers)]
        return Array(self.row, None, None, self.is_complex, self.store, integers, held)

    def active(self):
        """The indices of the dimension that the next subscript applies to."""
        if (self.integers or self.held is not None) and self.reshapes != self.store.reshapes:
            raise RuntimeError("reshaped since")
        return range(self.store.shape[len(self.integers)]) if self.held is None else self.held

    def __len__(self):
        return len(self.active())

    def __getitem__(self, key):
        active = self.active()
        if isinstance(key, int):
            if not -len(active) <= key < len(active):
                raise IndexError("index has an invalid value: %d" % key)
            return self.part(self.integers + (active[key],))
        return self.part(self.integers, selection(self.held, key, len(active)))

    def __setitem__(self, key, value):
        self.active()
        length, *rest = self.store.shape[len(self.integers) :]
        single = isinstance(key, int)
        if single:
            if not -length <= key < length:
                raise IndexError("index has an invalid value: %d" % key)
            if self.held is not None and key % length >= len(self.held):
                raise RuntimeError("unable to index into slice.")
            if not rest and hasattr(value, "__len__"):
                words = ("sequence passed when scalar was expected.", "value is not numeric.")
                raise TypeError(words[isinstance(value, str)])
        selected = [(self.held or range(length))[key % length]] if single else selection(None, key, length)
        elements, lengths = flatten(value, functools.partial(self.element, False))
        if single == bool(rest) and lengths != (tuple(rest) if single else (len(selected),)):
            raise ValueError(UNLIKE)
        if not single and rest and elements:
            selected = selected and selection(self.held, key, length)
            if not selected:
                raise ValueError("slice is empty, but number of elements assigned is greater than zero.")
        elif not single and rest and selected:
            raise ValueError("slice is nonempty but values are empty.")
        targets = [self.integers + place for place in itertools.product(selected, *map(range, rest))]
        self.store.write(targets, elements)
        if len(targets) != len(elements):
            raise ValueError("length of slice does not match number of elements.")

    def tolist(self):
        return [item.tolist() if isinstance(item, Array) else item for item in self]

    @property
    def size(self):
        return (len(self),) + self.store.shape[len(self.integers) + 1 :]

    def reshape(self, *lengths):
        if self.integers or self.held is not None:
            raise RuntimeError("reshape() not supported for a partial array.")
        if product(lengths) != len(self.store.elements):
            raise ShapeError(COUNTS % (product(lengths), len(self.store.elements)))
        if self.store.exports:
            raise BufferError("existing exports of data: the array cannot be reshaped.")
        self.store.shape, self.store.reshapes = trimmed(lengths), self.store.reshapes + 1
        self.store.elements, self.store.handle = list(self.store.data), None
        return self

    def gather(self, as_row=False):
        """A copy of what the first gather found, in the shape that it asked for."""
        if self.cache is None:
            elements, lengths = flatten(self.tolist(), lambda element: element)
            lengths = (1,) + lengths if as_row and len(lengths) == 1 else lengths
            self.cache = lengths if elements else (0,) + self.store.shape[1:], elements
        return Store(*self.cache)

    def clone(self):
        return Array(self.row, None, None, self.is_complex, self.gather())

    def parts(self, take):
        """A row of what is taken from each element, as native code sees them."""
        elements = [take(element) for element in self.store.data]
        if self.row.name in RANGES:
            elements = list(map(int, elements))
        return Array(self.row, store=Store((1, len(elements)), elements, flat=True), integers=(0,))

    def __eq__(self, other):
        return isinstance(other, Array) and self.row == other.row and self.tolist() == other.tolist()

    def __repr__(self):
        return "quarna.%s(%s%s)" % (self.row.name, self, ", is_complex=True" if self.is_complex else "")

    def __str__(self):
        return str(self.tolist()).replace(" ", "")


NAMESPACE = {row.name: functools.partial(Array, row) for row in ROWS}

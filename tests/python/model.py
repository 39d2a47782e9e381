"""A model of the arrays, slow and plain: elements in one list, subscripts as ranges, each rule told anew."""

import functools
import itertools
from collections import namedtuple

# the class, array.array's character, the buffer format, the bytes of a real element
Row = namedtuple("Row", "name typecode format bytes")
ROWS = [Row(*row) for row in zip(
    "double single int8 uint8 int16 uint16 int32 uint32 int64 uint64 logical".split(), "dfbBhHiIlLB", "dfbBhHiIqQ?",
    (8, 4, 1, 1, 2, 2, 4, 4, 8, 8, 1))]
RANGES = {row.name: (-2 ** (8 * row.bytes - 1), 2 ** (8 * row.bytes - 1) - 1) if row.name[0] == "i" else
          (0, 2 ** (8 * row.bytes) - 1) for row in ROWS if "int" in row.name}
DIFFERENT = "unable to perform assignment because the left and right sides have a different shape."
EMPTY = "slice is empty, but number of elements assigned is greater than zero."


ShapeError, SizeError = type("ShapeError", (Exception,), {}), type("SizeError", (Exception,), {})


def product(lengths):
    return functools.reduce(lambda left, right: left * right, lengths, 1)


def trimmed(lengths):
    lengths = tuple(lengths)
    return trimmed(lengths[:-1]) if len(lengths) > 2 and lengths[-1] == 1 else lengths


def convert(row, is_complex, coerce, value):
    """The number that a small int, float or complex reads back as; coerce lets logical take any number."""
    if row.name in RANGES and (is_complex or isinstance(value, int)):
        low, high = RANGES[row.name]
        for part in (value.real, value.imag):
            if not low - 1 < part < high + 1:
                raise OverflowError("value (%g) cannot be stored in a variable of type %s." % (part, row.name))
        value = value if isinstance(value, int) else complex(int(value.real), int(value.imag))
    if is_complex:
        return complex(value)
    if row.name == "logical" and (coerce or isinstance(value, int)):
        return bool(value)
    if isinstance(value, complex):
        raise TypeError("quarna.%s does not accept complex values if 'is_complex' is not set to 'True'." % row.name)
    if row.name in ("double", "single"):
        return float(value)
    if isinstance(value, float):
        raise TypeError("quarna.%s does not accept floating-point values." % row.name)
    return int(value)


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
    if key.step == 0:
        raise ValueError("slice step cannot be zero.")
    new = range(*key.indices(length))
    new = new if len(new) else range(0)
    if held is None:
        return new
    if held.step < 0 or new.step < 0:
        raise ValueError("successive slices must both have a positive step size.")
    both = range(max(held.start, new.start), min(held.stop, new.stop), held.step * new.step)
    return both if len(both) else range(0)


class Store:
    """What the arrays of a family share: a shape, and the elements with the first index running fastest."""

    def __init__(self, shape, elements, flat=False):
        self.shape, self.elements, self.reshapes = tuple(shape), list(elements), 0
        if not flat:
            for position, element in zip(itertools.product(*map(range, shape)), elements):
                self.elements[self.offset(position)] = element

    def offset(self, position):
        return sum(index * product(self.shape[:k]) for k, index in enumerate(position))


class Array:
    def __init__(self, row, initializer=None, size=None, is_complex=False, store=None, integers=(), held=None):
        if is_complex and row.name == "logical":
            raise TypeError("logical arrays must not be complex.")
        self.row, self.is_complex, self.integers, self.held, self.cache = row, is_complex, integers, held, None
        self.store = store or self.build(initializer, trimmed((1,) * (2 - len(size)) + tuple(size)) if size else ())
        self.reshapes = self.store.reshapes

    def build(self, initializer, size):
        element = functools.partial(convert, self.row, self.is_complex, True)
        if initializer is None:
            return Store(size or (0, 0), [element(0)] * product(size or (0, 0)), flat=True)
        elements, lengths = flatten(initializer, element)
        flat, shape = len(lengths) == 1, trimmed(lengths)
        if size and size != shape and (product(size) != len(elements) or not flat and elements):
            raise (SizeError if product(size) == len(elements) else ShapeError)(
                "dimensions of initializer (%s) do not match dimensions specified by 'size' (%s)."
                % tuple(str(list(side))[1:-1] for side in (shape, size)))
        if flat and not size:
            size = (1,) + shape if elements else (0, 0)
        return Store(size or shape, elements, flat)

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
        if type(key) is not slice:
            raise RuntimeError("index is not an integer or slice.")
        return self.part(self.integers, selection(self.held, key, len(active)))

    def __setitem__(self, key, value):
        self.active()
        depth, (length, *rest) = len(self.integers), self.store.shape[len(self.integers):]
        element = functools.partial(convert, self.row, self.is_complex, False)
        if isinstance(key, int):
            if not -length <= key < length:
                raise IndexError("index has an invalid value: %d" % key)
            if self.held is not None and key % length >= len(self.held):
                raise RuntimeError("unable to index into slice.")
            selected = [key % length if self.held is None else self.held[key % length]]
            if not rest and hasattr(value, "__len__"):
                raise TypeError("sequence passed when scalar was expected.")
            elements, lengths = flatten(value, element) if rest else ([element(value)], ())
            fits = lengths == tuple(rest)
        else:
            selected = selection(None, key, length)
            elements, lengths = flatten(value, element)
            fits = bool(rest) or lengths == (len(selected),)
            if rest and not elements:
                if selected:
                    raise ValueError("slice is nonempty but values are empty.")
            elif rest:
                selected = selected and selection(self.held, key, length)
                if not selected:
                    raise ValueError(EMPTY)
        if not fits:
            raise ValueError(DIFFERENT)
        targets = [self.integers + place for place in itertools.product(selected, *map(range, rest))]
        for position, element in zip(targets, elements):
            self.store.elements[self.store.offset(position)] = element
        if len(targets) != len(elements):
            raise ValueError("length of slice does not match number of elements.")

    def tolist(self):
        return [item.tolist() if isinstance(item, Array) else item for item in self]

    @property
    def size(self):
        return (len(self),) + self.store.shape[len(self.integers) + 1:]

    def reshape(self, *lengths):
        if self.integers or self.held is not None:
            raise RuntimeError("reshape() not supported for a partial array.")
        if product(lengths) != len(self.store.elements):
            raise ShapeError("number of elements specified by arguments to reshape() (%d) does not match "
                             "current number (%d)." % (product(lengths), len(self.store.elements)))
        self.store.shape, self.store.reshapes = trimmed(lengths), self.store.reshapes + 1
        return self

    def clone(self):
        """A copy of what the first clone found."""
        if self.cache is None:
            elements, lengths = flatten(self.tolist(), lambda element: element)
            self.cache = lengths if elements else (0,) + self.store.shape[1:], elements
        return Array(self.row, None, None, self.is_complex, Store(*self.cache))

    def __eq__(self, other):
        return isinstance(other, Array) and self.row == other.row and self.tolist() == other.tolist()

    def __str__(self):
        return str(self.tolist()).replace(" ", "")

    def __repr__(self):
        return "quarna.%s(%s%s)" % (self.row.name, self, ", is_complex=True" if self.is_complex else "")


NAMESPACE = dict({row.name: functools.partial(Array, row) for row in ROWS}, ShapeError=ShapeError, SizeError=SizeError)

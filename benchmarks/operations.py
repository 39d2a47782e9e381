"""The operations that are measured, whom they are compared with, and the goals: ratios ours / peer."""

from rows import any_size, at, case, flat_array, floor, large, nested_list, numpy, row
from timing import FirstImport, Statement

ARRAY = "a = new(nest(floats, m, n))\n"
ROW = ARRAY + "r = a[i]"
TWO = ARRAY + "b = new(nest(floats, m, n))\n"
NEST = "x = nest(floats, m, n)\n"
FLAT = "flat = floats(m * n)\n"
NUMBERS = FLAT + "numbers = array.array('d', flat)\n"
COMPLEX = "a = new(nest(complexes, m, n), 'complex')"
RESHAPE = ("a.reshape((m, n), order='F')", "NumPy's reshape of a view")
TO_BYTES = ("array.array('d', r.tobytes())", "bytes from NumPy")


def equality(kind, numbers, goals, floor_goal=None):
    """What a case of equality is made of, from what it is given on."""
    given = "x = nest({0}, m, n); a, b = new(x, '{1}'), new(x, '{1}')".format(numbers, kind)
    memcmp = [floor(floor_goal, words="floor `memcmp`")] if floor_goal else []
    return [given, "a == b", numpy(goals, "(a == b).all()", "`(a == b).all()`")] + memcmp


def text(kind, numbers, function, goals, floor_goal=None):
    """The same for text."""
    given = "a = new(nest({}, m, n), '{}')".format(numbers, kind)
    digits = [floor(floor_goal, "floors.text(a)")] if floor_goal else []
    return [given, function + "(a)", numpy(goals, "str(a.tolist())", "`str(np.tolist())`")] + digits


GOALS = [
    row(
        "nested list, double",
        NEST,
        "quarna.double(x)",
        numpy(at(0.75, 0.06, 0.15), "np.array(x, 'd')", "`np.array(x, dtype)`"),
        floor(large(1.3), "floors.store_twice(x)", "floor, storing twice"),
    ),
    row(
        "nested list, int8",
        "x = nest(small_integers, m, n)",
        "quarna.int8(x)",
        numpy(at(0.75, 0.06, 0.12), "np.array(x, 'int8')", "`np.array`"),
    ),
    row(
        "nested list, uint64",
        "x = nest(integers, m, n)",
        "quarna.uint64(x)",
        numpy(at(0.75, 0.23, 0.32), "np.array(x, 'uint64')", "`np.array`"),
    ),
    row(
        "nested list, logical",
        "x = nest(truths, m, n)",
        "quarna.logical(x)",
        numpy(at(0.75, 0.05, 0.06), "np.array(x, 'bool')", "`np.array`"),
    ),
    row(
        "nested list, complex double",
        "x = nest(complexes, m, n)",
        "quarna.double(x, is_complex=True)",
        numpy(at(0.75, 0.07, 0.17), "np.array(x, 'D')", "`np.array`"),
    ),
    row(
        "nested list, four dimensions",
        "x = nest(floats, *{6: (2, 1, 1, 3), 10**4: (10,) * 4, 10**6: (25, 40, 25, 40)}[m * n])",
        "quarna.double(x)",
        numpy(at(0.4, 0.12, 0.2), "np.array(x, 'd')", "`np.array`"),
    ),
    row(
        "nested tuples",
        "x = tuple(map(tuple, nest(floats, m, n)))",
        "quarna.double(x)",
        numpy(at(0.75, 0.06, 0.15), "np.array(x, 'd')", "`np.array`"),
    ),
    row(
        "one column, N lists of one",
        "x = nest(floats, m * n, 1)",
        "quarna.double(x)",
        numpy(at(0.75, 0.06, 0.06), "np.array(x, 'd')", "`np.array`"),
    ),
    row(
        "flat list with `size`",
        FLAT,
        "quarna.double(flat, (m, n))",
        numpy(at(0.6, 0.05, 0.12), "np.array(flat, 'd').reshape((m, n), order='F')", "`np.array` + reshape"),
        flat_array(at(3, 0.08, 0.2), "array.array('d', flat)"),
    ),
    row(
        "flat list as `vector`",
        FLAT,
        "quarna.double(vector=flat)",
        numpy(at(1.1, 0.05, 0.12), "np.array(flat, 'd')", "`np.array`"),
    ),
    row(
        "`range` into int64",
        "",
        "quarna.int64(range(m * n))",
        numpy(at(0.4, 0.04, 0.04), "np.array(range(m * n))", "`np.array(range)`"),
    ),
    row(
        "`bytes` into uint8",
        "data = bytes(i % 256 for i in range(m * n))",
        "quarna.uint8(data)",
        numpy(at(1.0, 1.3, 1.3), "np.frombuffer(data, 'u1').copy()", "`np.frombuffer().copy()`"),
    ),
    row(
        "`array.array('d')` into double",
        NUMBERS,
        "quarna.double(numbers)",
        numpy(at(1.0, 1.3, 1.3), "np.array(numbers)", "`np.array(buffer)`"),
    ),
    row(
        "one of our own, same class",
        ARRAY,
        "quarna.double(a)",
        numpy(1.3, "np.array(a)", "`np.array(a)`"),
    ),
    row(
        "one of our own, int8 into double",
        "a = new(nest(small_integers, m, n), 'int8')",
        "quarna.double(a)",
        numpy(at(1.2, 1.3, 1.3), "a.astype('d')", "`astype`"),
    ),
    row(
        "zeros by `size`",
        "",
        "quarna.double(size=(m, n))",
        numpy(at(2.5, 1.3, 1.3), "np.zeros((m, n))", "`np.zeros`"),
    ),
    row(
        "`double()`",
        "",
        "quarna.double()",
        numpy(any_size(2.5), "np.zeros((0, 0))", "`np.zeros((0, 0))`"),
    ),
    row(
        "`a[i][j]`",
        ARRAY,
        "a[i][j]",
        numpy(0.45, words="`np a[i][j]`"),
        numpy(0.75, "a[i, j]", "`np a[i, j]`"),
    ),
    row(
        "`r[j]`, `r[-1]`",
        case("`r[j]`", ROW, "r[j]", numpy(0.45), floor(1.5)),
        case("`r[-1]`", ROW, "r[-1]", numpy(0.5), floor(1.5)),
    ),
    row(
        "`a[i][j][k]`",
        "a = new(nest(floats, m, n, 2)); k = 1",
        "a[i][j][k]",
        numpy(0.45),
    ),
    row(
        "`a[i][j] = v`",
        ARRAY,
        "a[i][j] = v",
        numpy(0.5, words="`np a[i][j]`"),
        numpy(0.9, "a[i, j] = v", "`np a[i, j]`"),
        floor(1.8),
    ),
    row(
        "`r[j] = v`",
        ROW,
        "r[j] = v",
        numpy(0.6),
        flat_array(1.0, "a[j] = v"),
        floor(2.2),
    ),
    row(
        "every element by `a[i][j] = v` in a loop",
        ARRAY,
        "for i in range(m):\n for j in range(n):\n  a[i][j] = v",
        numpy(0.6),
        nested_list(2.2),
    ),
    row(
        "`len(a)`, `a.size`",
        case("`len(a)`", ARRAY, "len(a)", numpy(1.3)),
        case("`a.size`", ARRAY, "a.size", numpy(1.3, "a.shape")),
    ),
    row(
        "refusing a bad index, a ragged nest",
        case("a bad index", ARRAY, "try: a[m]\nexcept IndexError: pass", numpy(0.7)),
        case(
            "a ragged nest",
            NEST + "x[-1] = x[-1][1:]",
            "try: quarna.double(x)\nexcept ValueError: pass",
            numpy(large(0.01), "try: np.array(x, 'd')\nexcept ValueError: pass"),
        ),
    ),
    row(
        "`a[i]`, `a[i:j]`, `a[i:j][k:l]`, `a[::-1][0]`",
        case("`a[i]`", ARRAY, "a[i]", numpy(0.5)),
        case("`a[i:j]`", ARRAY, "a[i:j]", numpy(0.6)),
        case("`a[i:j][k:l]`", ARRAY, "a[i:j][k:l]", numpy(0.6)),
        case("`a[::-1][0]`", ARRAY, "a[::-1][0]", numpy(0.6)),
    ),
    row(
        "iterate rows",
        ARRAY,
        "for row in a: pass",
        numpy(at(0.5, 0.42, 0.42)),
    ),
    row(
        "iterate all elements",
        ARRAY,
        "for row in a:\n for element in row: pass",
        numpy(0.45, words="NumPy rows"),
        numpy(0.6, "for element in a.flat: pass", "`np.flat`"),
    ),
    row(
        "`[list(r) for r in a]`",
        ARRAY,
        "[list(r) for r in a]",
        numpy(0.55, words="NumPy the same"),
    ),
    row(
        "the nested list of `__reduce__`",
        ARRAY,
        "a.__reduce__()",
        numpy(1.05, "a.tolist()", "`tolist`"),
        floor(1.15, "floors.nested_list(a)"),
    ),
    row("`a[0:r] = nested list`", ARRAY + NEST, "a[0:m] = x", numpy(at(0.5, 0.09, 0.2))),
    row("`a[0:r] = own array`", TWO, "a[0:m] = b", numpy(at(1.2, 1.3, 1.3))),
    row(
        "`a[i] = list`, `a[i][0:c] = list`",
        case("`a[i] = list`", ARRAY + "row = floats(n)", "a[i] = row", numpy(at(0.6, 0.2, 0.3))),
        case("`a[i][0:c] = list`", ARRAY + "row = floats(n)", "a[i][0:n] = row", numpy(at(0.6, 0.2, 0.3))),
    ),
    row(
        "`a[i] = own row`, `a[i][0:c] = own row`",
        case("`a[i] = own row`", TWO + "r = b[i]", "a[i] = r", numpy(at(1.0, 1.3, 1.6))),
        case("`a[i][0:c] = own row`", TWO + "r = b[i]", "a[i][0:n] = r", numpy(at(1.0, 1.3, 1.6))),
    ),
    row("`==` on equal doubles", *equality("double", "floats", at(0.1, 0.65, 0.8), floor_goal=1.4)),
    row("`==` on equal int64", *equality("int64", "integers", at(0.1, 0.5, 0.8), floor_goal=1.3)),
    row(
        "`==` on equal complex, logical",
        case("complex", *equality("complex", "complexes", at(0.1, 0.3, 0.7))),
        case("logical", *equality("logical", "truths", at(0.1, 0.3, 0.7))),
    ),
    row(
        "`==` where the first differs; other shapes; rows",
        case(
            "the first differs",
            ARRAY + NEST + "x[0][0] = 2.0; b = new(x)",
            "a == b",
            numpy(large(0.002), "(a == b).all()"),
        ),
        case(
            "other shapes",
            ARRAY + "b = new(nest(floats, m + 1, n))",
            "a == b",
            numpy(0.35, "np.array_equal(a, b)"),
        ),
        case("rows", NEST + "r, s = new(x)[i], new(x)[i]", "r == s", numpy(0.8, "(r == s).all()")),
    ),
    row("`str` double", *text("double", "floats", "str", at(0.3, 0.17, 0.17), floor_goal=1.25)),
    row(
        "`str` double with two decimals",
        *text("double", "decimals", "str", at(0.4, 0.16, 0.16), floor_goal=1.25),
    ),
    row(
        "`str` int64, logical, complex",
        case("int64", *text("int64", "integers", "str", large(0.27))),
        case("logical", *text("logical", "truths", "str", large(0.1))),
        case("complex", *text("complex", "complexes", "str", large(0.16))),
    ),
    row("`repr` double", *text("double", "floats", "repr", at(0.35, 0.17, 0.17), floor_goal=1.25)),
    row(
        "clone of a full array, first and later ones",
        case(
            "the first",
            ARRAY,
            Statement(
                "for one in made: one.clone()", "made = [quarna.double(size=(m, n)) for _ in range(loops)]"
            ),
            numpy(at(1.3, 0.3, 0.02), "a.copy('F')", "`copy()`"),
        ),
        case(
            "later ones",
            ARRAY,
            "a.clone()",
            numpy(at(1.3, 0.3, 0.02), "a.copy('F')", "`copy()`"),
        ),
    ),
    row(
        "clone and write one element",
        ARRAY,
        "b = a.clone()\nb[i][j] = v",
        numpy(1.3, "b = a.copy('F')\nb[i][j] = v", "the same with `copy()`"),
    ),
    row(
        "clone of a row, of rows, of every second row",
        case("of a row", ARRAY, "a[i].clone()", numpy(1.3, "a[i].copy()", "`copy()`")),
        case("of rows", ARRAY, "a[i:j].clone()", numpy(1.1, "a[i:j].copy('F')", "`copy()`")),
        case("of every second row", ARRAY, "a[::2].clone()", numpy(1.1, "a[::2].copy('F')", "`copy()`")),
    ),
    row(
        "`reshape` in place",
        case("", ARRAY, "a.reshape(m, n)", numpy(2.5, *RESHAPE)),
        case(
            "10^7 elements",
            "m, n = 1000, 10000\n" + ARRAY,
            "a.reshape(m, n)",
            numpy(any_size(2.5), *RESHAPE),
        ),
    ),
    row(
        "`real`, `imag`; `noncomplex`",
        case("`real`", COMPLEX, "a.real()", numpy(1.0, "a.real.copy('F')")),
        case("`imag`", COMPLEX, "a.imag()", numpy(1.0, "a.imag.copy('F')")),
        case("`noncomplex`", ARRAY, "a.noncomplex()", numpy(1.3, "a.flatten('F')")),
    ),
    row(
        "`toarray` of a row, of a strided row",
        case("of a row", ROW, "r.toarray()", numpy(1.1, *TO_BYTES)),
        case("of a strided row", ROW + "[::2]", "r.toarray()", numpy(1.2, *TO_BYTES)),
    ),
    row(
        "`memoryview(a)`, `np.asarray(a)`",
        case("`memoryview(a)`", ARRAY, "memoryview(a)", numpy(0.9)),
        case("`np.asarray(a)`", ARRAY, "np.asarray(a)", numpy(1.1, "np.asarray(memoryview(a))")),
    ),
    row(
        "pickle and load",
        ARRAY,
        "pickle.loads(pickle.dumps(a, 4))",
        nested_list(1.4, words="the nested list of floats"),
    ),
    row(
        "`copy.copy`, `copy.deepcopy`",
        case("`copy.copy`", ARRAY, "copy.copy(a)", numpy(large(1.4), "a.tolist()", "`tolist`")),
        case(
            "`copy.deepcopy`",
            ARRAY,
            "copy.deepcopy(a)",
            nested_list(large(1.15), words="the nested list"),
        ),
    ),
    row(
        "dropping an array",
        NUMBERS,
        Statement("made.clear()", "made = [quarna.double(numbers) for _ in range(loops)]"),
        numpy(
            at(2.0, 1.5, 1.5),
            Statement("made.clear()", "made = [np.array(numbers) for _ in range(loops)]"),
        ),
    ),
    row(
        "`import`",
        "",
        FirstImport("quarnamultidimarrayforpython"),
        floor(any_size(1.6), FirstImport("quarna_floors"), "a bare C++ extension"),
    ),
]

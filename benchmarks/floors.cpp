// The cheapest C++ that does the unavoidable part of what the benchmarks measure, as an extension module without
// any comfort: doubles in one or two dimensions, column by column, from exact lists of exact floats.
#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <sys/mman.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr Py_ssize_t group = 8;                     // rows whose elements share cache lines of a column
constexpr std::size_t huge = std::size_t{4} << 20;  // bytes from which on huge pages pay

struct Free {
    void operator()(double* elements) const { std::free(elements); }
};

using Elements = std::unique_ptr<double[], Free>;

Elements allocate(Py_ssize_t count)
{
    std::size_t const bytes = static_cast<std::size_t>(std::max<Py_ssize_t>(count, 1)) * sizeof(double);
    auto* const elements = static_cast<double*>(std::malloc(bytes));
    if (elements != nullptr && bytes >= huge) {
        auto const page = reinterpret_cast<std::uintptr_t>(elements) & ~std::uintptr_t{4095};
        madvise(reinterpret_cast<void*>(page + 4096), bytes - 4096, MADV_HUGEPAGE);
    }
    return Elements(elements);
}

struct Block {
    Elements elements;
    Elements again;
};

// What a subscript has to make at least: an object from the allocator with one shared pointer.
struct View {
    PyObject_HEAD std::shared_ptr<Block> block;
    double* first;
    Py_ssize_t rows;  // -1 in a row
    Py_ssize_t columns;
    Py_ssize_t step;  // from one column to the next
};

View* asView(PyObject* object)
{
    return reinterpret_cast<View*>(object);
}

extern PyTypeObject viewType;

PyObject* newView(std::shared_ptr<Block> block, double* first, Py_ssize_t rows, Py_ssize_t columns,
                  Py_ssize_t step)
{
    View* const view = PyObject_New(View, &viewType);
    if (view != nullptr) {
        new (&view->block) std::shared_ptr<Block>(std::move(block));
        view->first = first;
        view->rows = rows;
        view->columns = columns;
        view->step = step;
    }
    return reinterpret_cast<PyObject*>(view);
}

void dropView(PyObject* self)
{
    asView(self)->block.~shared_ptr();
    PyObject_Free(self);
}

Py_ssize_t length(PyObject* self)
{
    return asView(self)->rows >= 0 ? asView(self)->rows : asView(self)->columns;
}

// The index from 0, or -1 with an error set.
Py_ssize_t indexWithin(PyObject* self, PyObject* subscript)
{
    Py_ssize_t const index = PyLong_AsSsize_t(subscript);
    Py_ssize_t const fromStart = index < 0 ? index + length(self) : index;
    if (fromStart >= 0 && fromStart < length(self)) {
        return fromStart;
    }
    if (PyErr_Occurred() == nullptr) {
        PyErr_SetString(PyExc_IndexError, "index out of range");
    }
    return -1;
}

PyObject* subscript(PyObject* self, PyObject* subscript)
{
    Py_ssize_t const index = indexWithin(self, subscript);
    if (index < 0) {
        return nullptr;
    }
    View const& view = *asView(self);
    return view.rows < 0 ? PyFloat_FromDouble(view.first[index * view.step])
                         : newView(view.block, view.first + index, -1, view.columns, view.step);
}

int assign(PyObject* self, PyObject* subscript, PyObject* value)
{
    Py_ssize_t const index = indexWithin(self, subscript);
    if (index < 0) {
        return -1;
    }
    View const& view = *asView(self);
    if (view.rows >= 0 || value == nullptr || !PyFloat_CheckExact(value)) {
        PyErr_SetString(PyExc_TypeError, "one float, and one element of a row to write it to");
        return -1;
    }
    view.first[index * view.step] = PyFloat_AS_DOUBLE(value);
    return 0;
}

PyObject* compare(PyObject* left, PyObject* right, int operation)
{
    View const& one = *asView(left);
    if (operation != Py_EQ || Py_TYPE(right) != &viewType || one.rows < 0 ||
        asView(right)->rows != one.rows || asView(right)->columns != one.columns) {
        Py_RETURN_NOTIMPLEMENTED;
    }
    auto const bytes = static_cast<std::size_t>(one.rows * one.columns) * sizeof(double);
    return PyBool_FromLong(std::memcmp(one.first, asView(right)->first, bytes) == 0);
}

// Stores a group of rows; whether all are lists of the same number of exact floats.
template <bool twice>
bool storeGroup(PyObject* const* rows, Py_ssize_t count, Block const& block, Py_ssize_t first,
                Py_ssize_t step, Py_ssize_t columns)
{
    PyObject** items[group];
    for (Py_ssize_t row = 0; row < count; ++row) {
        if (!PyList_CheckExact(rows[row]) || PyList_GET_SIZE(rows[row]) != columns) {
            return false;
        }
        items[row] = reinterpret_cast<PyListObject*>(rows[row])->ob_item;
    }
    for (Py_ssize_t column = 0; column < columns; ++column) {
        for (Py_ssize_t row = 0; row < count; ++row) {
            PyObject* const item = items[row][column];
            if (!PyFloat_CheckExact(item)) {
                return false;
            }
            block.elements[first + row + column * step] = PyFloat_AS_DOUBLE(item);
            if constexpr (twice) {
                block.again[first + row + column * step] = PyFloat_AS_DOUBLE(item);
            }
        }
    }
    return true;
}

// store(nest): a view of a list of lists of floats; store_twice(nest): the same with a copy of all elements.
template <bool twice>
PyObject* store(PyObject*, PyObject* nest)
{
    if (!PyList_CheckExact(nest) || PyList_GET_SIZE(nest) == 0 ||
        !PyList_CheckExact(PyList_GET_ITEM(nest, 0))) {
        PyErr_SetString(PyExc_TypeError, "a list of lists of floats is needed");
        return nullptr;
    }
    Py_ssize_t const rows = PyList_GET_SIZE(nest);
    Py_ssize_t const columns = PyList_GET_SIZE(PyList_GET_ITEM(nest, 0));
    auto const block = std::make_shared<Block>(
        Block{allocate(rows * columns), twice ? allocate(rows * columns) : Elements()});
    if (block->elements == nullptr || (twice && block->again == nullptr)) {
        return PyErr_NoMemory();
    }
    PyObject* const* const items = reinterpret_cast<PyListObject*>(nest)->ob_item;
    for (Py_ssize_t row = 0; row < rows; row += group) {
        if (!storeGroup<twice>(items + row, std::min(group, rows - row), *block, row, rows, columns)) {
            PyErr_SetString(PyExc_ValueError, "lists of as many floats are needed");
            return nullptr;
        }
    }
    return newView(block, block->elements.get(), rows, columns, rows);
}

// A list of lists without items, to be filled.
PyObject* emptyNest(Py_ssize_t rows, Py_ssize_t columns)
{
    PyObject* const nest = PyList_New(rows);
    for (Py_ssize_t row = 0; nest != nullptr && row < rows; ++row) {
        PyObject* const list = PyList_New(columns);
        if (list == nullptr) {
            Py_DECREF(nest);
            return nullptr;
        }
        PyList_SET_ITEM(nest, row, list);
    }
    return nest;
}

// nested_list(view)
PyObject* nestedList(PyObject*, PyObject* object)
{
    View const& view = *asView(object);
    PyObject* const nest = emptyNest(view.rows, view.columns);
    for (Py_ssize_t first = 0; nest != nullptr && first < view.rows; first += group) {
        Py_ssize_t const end = std::min(first + group, view.rows);
        for (Py_ssize_t column = 0; column < view.columns; ++column) {
            for (Py_ssize_t row = first; row < end; ++row) {
                PyObject* const number = PyFloat_FromDouble(view.first[row + column * view.step]);
                if (number == nullptr) {
                    Py_DECREF(nest);
                    return nullptr;
                }
                PyList_SET_ITEM(PyList_GET_ITEM(nest, row), column, number);
            }
        }
    }
    return nest;
}

// Writes the nested list as text and returns its end.
char* write(View const& view, char* text)
{
    constexpr std::ptrdiff_t longest = 32;
    *text++ = '[';
    for (Py_ssize_t row = 0; row < view.rows; ++row) {
        *text++ = '[';
        for (Py_ssize_t column = 0; column < view.columns; ++column) {
            text = std::to_chars(text, text + longest, view.first[row + column * view.step]).ptr;
            *text++ = ',';
        }
        text[-1] = ']';
        *text++ = ',';
    }
    text[-1] = ']';
    return text;
}

// text(view): the shortest digits of all elements, as a nested list is written.
PyObject* text(PyObject*, PyObject* object)
{
    View const& view = *asView(object);
    constexpr Py_ssize_t longest = 25;  // "-2.2250738585072014e-308,"
    PyObject* text = PyUnicode_New(longest * (view.rows * view.columns + 2 * view.rows) + 40, 127);
    if (text == nullptr) {
        return nullptr;
    }
    auto* const start = static_cast<char*>(PyUnicode_DATA(text));
    PyUnicode_Resize(&text, write(view, start) - start);
    return text;
}

PyMappingMethods mapping = {length, subscript, assign};

PyTypeObject makeViewType()
{
    PyVarObject const heads[] = {PyVarObject_HEAD_INIT(nullptr, 0)};
    PyTypeObject type{};
    type.ob_base = heads[0];
    type.tp_name = "quarna_floors.View";
    type.tp_basicsize = sizeof(View);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_dealloc = dropView;
    type.tp_as_mapping = &mapping;
    type.tp_richcompare = compare;
    return type;
}

PyTypeObject viewType = makeViewType();

PyMethodDef functions[] = {
    {"store", store<false>, METH_O, nullptr},
    {"store_twice", store<true>, METH_O, nullptr},
    {"nested_list", nestedList, METH_O, nullptr},
    {"text", text, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "quarna_floors", nullptr, -1, functions, nullptr, nullptr, nullptr, nullptr};

}  // namespace

PyMODINIT_FUNC PyInit_quarna_floors()
{
    return PyType_Ready(&viewType) == 0 ? PyModule_Create(&definition) : nullptr;
}

// The elements of a right side, stored where a subscript points.
#include "assignment/storing.h"

#include "construction/memory_elements.h"
#include "elements/element_load.h"
#include "vocabulary/quarna_py_array.h"
#include "vocabulary/signals.h"
#include "wrapper/qd_array_wrapper.h"

#include <algorithm>
#include <complex>
#include <cstdint>
#include <span>

namespace quarna {

namespace {

/// The places to write to, found anew whenever Python code may have run.
template <class T>
class Target {
public:
    explicit Target(QCppPyArray const& array)
        : m_array(array), m_reshapes(array.getQDAWrapper()->reshapeCount()),
          m_elements(array.getQDAWrapper()->writableElements<T>())
    {}

    WritableElements<T> const& elements() const { return m_elements; }

    /// How many elements may be stored before passed() is told.
    long left() const { return m_watch.left(); }

    /// False with an exception set.
    bool passed(long count)
    {
        if (!m_watch.passed(count) || !m_array.requireReshapeCount(m_reshapes)) {
            return false;
        }
        m_elements = m_array.getQDAWrapper()->writableElements<T>();
        return true;
    }

private:
    QCppPyArray const& m_array;
    unsigned long m_reshapes;
    WritableElements<T> m_elements;
    SignalWatch m_watch;
};

/// Elements in the order of the walk.
template <class T>
bool storeInOrder(QCppPyArray const& array, StridedView const& view, WalkOrder order,
                  std::span<T const> elements)
{
    Target<T> target(array);
    bool goesOn = true;
    walkRuns(view, order, [&](long offset, long length, long stride) {
        length = std::min(length, static_cast<long>(elements.size()));
        while (goesOn && length > 0) {
            long const count = std::min(length, target.left());
            target.elements().setRun(offset, stride, elements.first(static_cast<std::size_t>(count)));
            elements = elements.subspan(static_cast<std::size_t>(count));
            offset += count * stride;
            length -= count;
            goesOn = target.passed(count);
        }
        return goesOn && !elements.empty();
    });
    return goesOn;
}

/// The runs of two selections of one shape. False with an exception set.
template <class T>
bool copyRuns(QCppPyArray const& array, StridedView const& view, MemoryElements& source)
{
    // This may leave other arrays alone with what was shared, so the source is looked at afterwards.
    Target<T> target(array);
    bool goesOn = source.refresh();
    RunCursor from(source.source()->view, WalkOrder::Stored);
    walkRuns(view, WalkOrder::Stored, [&](long offset, long length, long stride) {
        for (long done = 0; goesOn && done < length;) {
            long const count = std::min(length - done, target.left());
            target.elements().copyRun(source.source()->block, from.offset() + done * from.run().stride,
                                      from.run().stride, offset + done * stride, stride, count);
            done += count;
            goesOn = target.passed(count) && source.refresh();
        }
        from.advance();
        return goesOn;
    });
    return goesOn;
}

}  // namespace

bool haveSameShape(StridedDimensions const& dimensions, std::vector<long> const& lengths)
{
    return std::equal(dimensions.begin(), dimensions.end(), lengths.begin(), lengths.end(),
                      [](StridedDimension dimension, long length) { return dimension.length == length; });
}

template <class T>
bool store(QCppPyArray const& array, StridedView const& target, NestReader<T>& rightSide)
{
    if (rightSide.elements().empty() || target.count() == 0) {
        return true;
    }
    bool const nestAlike = haveSameShape(target.dimensions, rightSide.dims());
    if (nestAlike && rightSide.order() == WalkOrder::Stored) {
        return storeInOrder(array, target, WalkOrder::Stored, rightSide.elements());
    }
    return storeInOrder(array, target, WalkOrder::Nested, rightSide.elementsInNestedOrder());
}

template <class T>
Road copyArray(QCppPyArray const& array, StridedView const& view, PyObject* value)
{
    bool const isOther = QCPyArray_Check(value) && getQCPyArrayFromPyObject(value)->array != nullptr &&
                         getQCPyArrayFromPyObject(value)->array->getQDAWrapper() != array.getQDAWrapper();
    if (!isOther || !survivesPythonNumber<T>) {
        return Road::Declined;
    }
    MemoryElements source(value);
    bool const isAlike =
        source.source() && source.source()->type == data::arrayTypeOf<T> &&
        std::equal(view.dimensions.begin(), view.dimensions.end(), source.source()->view.dimensions.begin(),
                   source.source()->view.dimensions.end(),
                   [](StridedDimension left, StridedDimension right) { return left.length == right.length; });
    if (!isAlike || view.count() == 0) {
        return Road::Declined;
    }
    return copyRuns<T>(array, view, source) ? Road::Taken : Road::Failed;
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                                \
    template bool store<element>(QCppPyArray const&, StridedView const&, NestReader<element>&); \
    template Road copyArray<element>(QCppPyArray const&, StridedView const&, PyObject*);
#include "data/array_types.def"

}  // namespace quarna

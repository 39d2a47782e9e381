// Giving an array new dimensions.
#include "wrapper/apply_numeric_visitor.h"
#include "wrapper/layout.h"
#include "wrapper/mirror.h"
#include "wrapper/qd_array_wrapper.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace {

struct ReshapeVisitor {
    std::vector<long> const& dims;
    quarna::data::ArrayFactory& factory;
    quarna::data::MemoryLayout layout;

    // The wrapper keeps its own handle meanwhile, so release() yields a copy of the storage and a failure of the
    // factory, which consumes that copy, leaves the array whole.
    template <class T>
    quarna::data::Array operator()(quarna::data::TypedArray<T> array) const
    {
        std::vector<std::size_t> const lengths(dims.begin(), dims.end());
        return factory.createArrayFromBuffer<T>(lengths, array.release(), layout);
    }
};

}  // namespace

void QDArrayWrapper::reshape(std::vector<long> const& dims, quarna::data::ArrayFactory& factory, char order,
                             quarna::data::MemoryLayout layout)
{
    std::vector<long> shape = dims;
    std::vector<long> strides = quarna::contiguousStrides(dims, m_elemSizeInBytes, order);
    quarna::data::Array array =
        quarna::data::apply_numeric_visitor(std::as_const(m_array), ReshapeVisitor{dims, factory, layout});
    quarna::MirrorBlock mirror = quarna::makeMirror(array, m_bufferSizeInBytes);
    // Nothing from here on can fail.
    m_array = std::move(array);
    m_shape.swap(shape);
    m_bytewiseStrides.swap(strides);
    m_order = order;
    m_buf.swap(mirror);
    ++m_reshapes;
}

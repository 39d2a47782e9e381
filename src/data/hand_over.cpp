// A filled buffer becomes a data array.
#include "data/hand_over.h"

#include "elements/arithmetic.h"
#include "elements/storage_order.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace quarna::data {

template <class T>
TypedArray<T> makeTypedArrayFromBuf(ElementBuffer<T>&& buffer, bool inStorageOrder, ArrayFactory& factory,
                                    std::span<long const> dims)
{
    std::vector<std::size_t> const lengths(dims.begin(), dims.end());
    if (inStorageOrder || hasOneOrderOnly(dims)) {
        return factory.createArrayFromBuffer<T>(lengths, std::move(buffer));
    }
    auto reordered = factory.createBuffer<T>(static_cast<std::size_t>(*checkedProduct(dims)));
    convertRowMajorToColumnMajor(buffer.get(), reordered.get(), dims, sizeof(T));
    buffer.reset();
    return factory.createArrayFromBuffer<T>(lengths, std::move(reordered));
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                                \
    template TypedArray<element> makeTypedArrayFromBuf<element>(ElementBuffer<element>&&, bool, \
                                                                ArrayFactory&, std::span<long const>);
#include "data/array_types.def"

}  // namespace quarna::data

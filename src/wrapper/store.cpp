// One place in which the elements of an array lie.
#include "wrapper/store.h"

#include <utility>

namespace quarna {

Store::Store(data::Array array, data::ArrayType type)
    : m_array(std::move(array)), m_elements(m_array.address(type))
{}

// The library copies what has more than one holder, as the array has here.
Store Store::copy(data::ArrayType type) const
{
    data::Array other = m_array;
    other.makeUnshared();
    return {std::move(other), type};
}

}  // namespace quarna

// One place in which the elements of an array lie.
#pragma once

#include "data/array.h"

#include <vector>

namespace quarna {

/// A share of a data array, and where its elements are. Who reads them by another shape than that of the data array
/// keeps that shape himself. What throws here changes nothing.
class Store {
public:
    /// The type is that of the array.
    Store(data::Array array, data::ArrayType type);

    data::Array const& array() const { return m_array; }
    void* elements() const { return m_elements; }
    bool isShared() const { return !m_array.isSoleHolder(); }

    /// The same elements in a data array of its own.
    Store copy(data::ArrayType type) const;

    /// Leaves this store alone with its elements, which lie elsewhere then if others shared them.
    void makeOwn(data::ArrayType type)
    {
        if (isShared()) {
            *this = copy(type);
        }
    }

private:
    data::Array m_array;
    void* m_elements;
};

/// An array without a wrapper yet: elements in storage order, and the shape in which they are to be read.
struct LooseArray {
    data::Array array;
    data::ArrayType type;
    std::vector<long> shape;
};

}  // namespace quarna

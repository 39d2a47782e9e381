// Assignment to one element.
#include "assignment/single_element.h"

#include "numbers/element_conversion.h"
#include "numbers/plain_number.h"
#include "vocabulary/errors.h"
#include "wrapper/qd_array_wrapper.h"

#include <boost/container/small_vector.hpp>

#include <complex>
#include <cstddef>
#include <cstdint>

namespace quarna {

namespace {

/// Any value: converted or refused.
template <class T>
int setConverted(QCppPyArray const& array, long index, PyObject* value)
{
    auto const result = GetCValueFromPyObjFunctor<T>{}(value, false);
    if (!result.value) {
        return refuse(result.exceptionType, result.message.c_str());
    }
    boost::container::small_vector<long, 8> position;
    for (long place = 0; place < array.getNumberOfIntegerIndicesSoFar(); ++place) {
        position.push_back(array.integerAt(static_cast<std::size_t>(place)));
    }
    position.push_back(index);
    bool const isSet =
        array.getQDAWrapper()->setElementFromIndices<T>({position.data(), position.size()}, *result.value);
    return isSet ? 0 : -1;
}

}  // namespace

template <class T>
int setItemViaFinalIntegerIndex(QCppPyArray const& array, long index, PyObject* value)
{
    auto const plain = plainElement<T>(value, false);
    if (!plain.isPlain) {
        return setConverted<T>(array, index, value);
    }
    array.getQDAWrapper()->writableElements<T>().set(array.byteOffsetOf(index) / long{sizeof(T)},
                                                     plain.value);
    return 0;
}

#define QUARNA_ARRAY_TYPE(number, name, element) \
    template int setItemViaFinalIntegerIndex<element>(QCppPyArray const&, long, PyObject*);
#include "data/array_types.def"

}  // namespace quarna

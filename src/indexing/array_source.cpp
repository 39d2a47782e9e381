// The elements of an array object as the source of another array.
#include "indexing/array_source.h"

#include "indexing/qcpp_py_array.h"
#include "vocabulary/quarna_py_array.h"

namespace quarna {

std::optional<ElementSource> elementsOfArray(PyObject* object)
{
    QCppPyArray const* const array =
        QCPyArray_Check(object) ? getQCPyArrayFromPyObject(object)->array : nullptr;
    if (array == nullptr || !array->isUsable()) {
        return std::nullopt;
    }
    QDArrayWrapper const& wrapper = *array->getQDAWrapper();
    return ElementSource{wrapper.type(), wrapper.buf(), array->selection()};
}

}  // namespace quarna

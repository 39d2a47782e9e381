// Real and imaginary parts, and the plain elements, as new arrays of one row.
#include "wrapper/apply_numeric_visitor.h"
#include "wrapper/qd_array_wrapper.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

using QDArrayWrapperVisitors::OutputEnum;

namespace {

[[noreturn]] void throwInvalidOutput(const char* kind, OutputEnum output)
{
    throw std::runtime_error(std::string("Invalid enum for ") + kind +
                             " array: " + std::to_string(static_cast<int>(output)) + "\n");
}

struct NonComplexVisitor {
    quarna::data::ArrayFactory& factory;
    OutputEnum output;

    template <class T>
    quarna::data::Array operator()(quarna::data::TypedArray<T> const& array) const
    {
        using Real = quarna::RealPartOf<T>;
        std::size_t const count = array.elementCount();
        auto buffer = factory.createBuffer<Real>(count);
        T const* const elements = array.elements();
        if constexpr (quarna::Complex<T>) {
            extractPart(elements, elements + count, buffer.get());
        } else {
            if (output != OutputEnum::NONCOMPLEX) {
                throwInvalidOutput("noncomplex", output);
            }
            std::copy(elements, elements + count, buffer.get());
        }
        return factory.createArrayFromBuffer<Real>({1, count}, std::move(buffer));
    }

    template <class T, class Real>
    void extractPart(T const* first, T const* last, Real* part) const
    {
        if (output == OutputEnum::REAL) {
            std::transform(first, last, part, [](T const& element) { return element.real(); });
        } else if (output == OutputEnum::IMAG) {
            std::transform(first, last, part, [](T const& element) { return element.imag(); });
        } else {
            throwInvalidOutput("complex", output);
        }
    }
};

}  // namespace

quarna::data::Array QDArrayWrapper::extractContents(quarna::data::ArrayFactory& factory,
                                                    OutputEnum output) const
{
    return quarna::data::apply_numeric_visitor(m_array, NonComplexVisitor{factory, output});
}

quarna::data::Array QDArrayWrapper::noncomplex(quarna::data::ArrayFactory& factory) const
{
    return extractContents(factory, OutputEnum::NONCOMPLEX);
}

quarna::data::Array QDArrayWrapper::real(quarna::data::ArrayFactory& factory) const
{
    return extractContents(factory, OutputEnum::REAL);
}

quarna::data::Array QDArrayWrapper::imag(quarna::data::ArrayFactory& factory) const
{
    return extractContents(factory, OutputEnum::IMAG);
}

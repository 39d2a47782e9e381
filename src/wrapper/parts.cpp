// Real and imaginary parts, and the plain elements, as new arrays of one row.
#include "wrapper/apply_numeric_visitor.h"
#include "wrapper/element_object.h"
#include "wrapper/qd_array_wrapper.h"

#include <complex>
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
        auto const count = static_cast<long>(array.elementCount());
        auto buffer = factory.createBuffer<Real>(array.elementCount());
        if constexpr (quarna::Complex<T>) {
            extractPart(array.elements(), count, buffer.get());
        } else {
            if (output != OutputEnum::NONCOMPLEX) {
                throwInvalidOutput("noncomplex", output);
            }
            quarna::loadRun(array.elements(), 0, count, 1, buffer.get());
        }
        return factory.createArrayFromBuffer<Real>({1, array.elementCount()}, std::move(buffer));
    }

    // A complex element is two real ones, side by side.
    template <class Real>
    void extractPart(std::complex<Real> const* elements, long count, Real* part) const
    {
        if (output != OutputEnum::REAL && output != OutputEnum::IMAG) {
            throwInvalidOutput("complex", output);
        }
        long const first = output == OutputEnum::IMAG ? 1 : 0;
        quarna::loadRun(static_cast<void const*>(elements), first, count, 2, part);
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

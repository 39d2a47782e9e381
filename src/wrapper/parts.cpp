// Real and imaginary parts, and the plain elements, as new arrays of one row.
#include "data/array_factory.h"
#include "data/element_dispatch.h"
#include "elements/element_load.h"
#include "wrapper/qd_array_wrapper.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

using namespace quarna;
using QDArrayWrapperVisitors::OutputEnum;

namespace {

[[noreturn]] void throwInvalidOutput(const char* kind, OutputEnum output)
{
    throw std::runtime_error(std::string("Invalid enum for ") + kind +
                             " array: " + std::to_string(static_cast<int>(output)) + "\n");
}

void requireOutput(bool isComplex, OutputEnum output)
{
    if (isComplex && output != OutputEnum::REAL && output != OutputEnum::IMAG) {
        throwInvalidOutput("complex", output);
    }
    if (!isComplex && output != OutputEnum::NONCOMPLEX) {
        throwInvalidOutput("noncomplex", output);
    }
}

}  // namespace

// A complex element is two real ones, side by side.
LooseArray QDArrayWrapper::extractContents(OutputEnum output) const
{
    return data::visitElementType(type(), [&]<class T>(std::type_identity<T>) -> LooseArray {
        using Real = RealPartOf<T>;
        requireOutput(Complex<T>, output);
        long const count = getNumberOfElements();
        data::ArrayFactory factory;
        auto buffer = factory.createBuffer<Real>(static_cast<std::size_t>(count));
        loadRun(seenStore().elements(), output == OutputEnum::IMAG ? 1 : 0, count, Complex<T> ? 2 : 1,
                buffer.get());
        return {factory.createArrayFromBuffer<Real>({1, static_cast<std::size_t>(count)}, std::move(buffer)),
                data::arrayTypeOf<Real>,
                {1, count}};
    });
}

LooseArray QDArrayWrapper::noncomplex() const
{
    return extractContents(OutputEnum::NONCOMPLEX);
}

LooseArray QDArrayWrapper::real() const
{
    return extractContents(OutputEnum::REAL);
}

LooseArray QDArrayWrapper::imag() const
{
    return extractContents(OutputEnum::IMAG);
}

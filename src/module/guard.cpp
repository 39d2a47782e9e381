// What a thrown exception becomes in Python.
#include "module/guard.h"

#include "data/exceptions.h"
#include "vocabulary/errors.h"

#include <exception>
#include <new>

namespace quarna {

void setErrorOfCaughtException()
{
    using data::ExceptionType;
    using data::detail::DataException;
    if (PyErr_Occurred()) {
        return;
    }
    try {
        throw;
    } catch (std::bad_alloc const&) {
        PyErr_NoMemory();
    } catch (DataException<ExceptionType::OutOfMemory> const& exception) {
        setError(PyExc_MemoryError, exception.what());
    } catch (DataException<ExceptionType::TooManyElements> const& exception) {
        setError(PyExc_MemoryError, exception.what());
    } catch (std::exception const& exception) {
        setError(PyExc_RuntimeError, exception.what());
    } catch (...) {
        setError(PyExc_RuntimeError, "unknown exception.");
    }
}

}  // namespace quarna

// A libQuarnaDataArray.so for tests: the real operations, counted, and on request missing or failing.
// QUARNA_SCRIPT_OMIT in the environment names operations that it does not have, as in "begin_fast,end_fast".
#include "scripted_data_array.h"

#include "function_table.h"
#include "quarna_data_array/c_abi.h"

#include <cstdlib>
#include <map>
#include <string>
#include <type_traits>

namespace {

struct Script {
    quarna_error_code code = QUARNA_SUCCESS;
    int good_calls_left = 0;

    bool refuses() { return code != QUARNA_SUCCESS && good_calls_left-- <= 0; }
};

long live = 0;
std::map<quarna_operation, Script>& scripts =
    *new std::map<quarna_operation, Script>;  // never destroyed: calls come until the very end
quarna_deleter real_deleter = nullptr;

void delete_counted(void* block)
{
    --live;
    real_deleter(block);
}

// After a call that went well: counts what it put into its out-arguments. A block is counted by its deleter.
template <class Argument>
void count_made(Argument)
{}

template <class Made>
void count_made(Made** made)
{
    if constexpr (std::is_class_v<Made>) {
        live += made != nullptr && *made != nullptr;
    }
}

void count_made(quarna_deleter* deleter)
{
    if (deleter != nullptr && *deleter != nullptr && *deleter != &delete_counted) {
        real_deleter = *deleter;
        *deleter = &delete_counted;
        ++live;
    }
}

template <quarna_operation operation, class Function>
struct Scripted;

template <quarna_operation operation, class Result, class... Arguments>
struct Scripted<operation, Result (*)(Arguments...)> {
    static inline Result (*real)(Arguments...) = nullptr;

    static Result call(Arguments... arguments)
    {
        if constexpr (std::is_void_v<Result>) {
            live -= (... && (arguments != nullptr));
            real(arguments...);
        } else if (Script& script = scripts[operation]; script.refuses()) {
            return refuse(script.code, arguments...);
        } else {
            Result result = real(arguments...);
            (count_made(arguments), ...);
            count_made(&result);
            return result;
        }
    }

    // Without its first argument the real operation does all that a failed one does: it frees the block that it
    // was given and nulls its out-arguments.
    template <class First, class... Rest>
    static Result refuse(quarna_error_code code, First, Rest... rest)
    {
        [[maybe_unused]] Result const result = real(First(), rest...);
        if constexpr (std::is_same_v<Result, int>) {
            return code;
        } else {
            return result;
        }
    }

    static Result refuse(quarna_error_code) { return Result(); }
};

template <quarna_operation operation, class Function>
void* scripted(void* real)
{
    Scripted<operation, Function>::real = reinterpret_cast<Function>(real);
    return reinterpret_cast<void*>(&Scripted<operation, Function>::call);
}

bool is_omitted(const char* operation)
{
    const char* const list = std::getenv("QUARNA_SCRIPT_OMIT");
    std::string const omitted = list != nullptr ? std::string(",") + list + "," : "";
    return omitted.find(std::string(",") + operation + ",") != std::string::npos;
}

}  // namespace

extern "C" {

void* get_function_ptr(int id)
{
    void* real = quarna::library::findOperation(id);
    switch (id) {
#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    case number:                                                    \
        return is_omitted(#name) ? nullptr                          \
                                 : scripted<QUARNA_OPERATION_##name, quarna_##name##_function>(real);
#include "quarna_data_array/operations.def"
    default:
        return nullptr;
    }
}

long scripted_live_objects()
{
    return live;
}

void scripted_fail(quarna_operation operation, quarna_error_code code, int after)
{
    scripts[operation] = {code, after};
}

void scripted_reset()
{
    scripts.clear();
}
}

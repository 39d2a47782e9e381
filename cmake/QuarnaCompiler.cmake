# How every target is compiled: language, warnings, visibility, optimisation, sanitizers.

set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_compile_options(-Wall -Wextra -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Once all is inlined, g++ 12 takes the small vectors of Boost and the strings of its own for overrun.
    add_compile_options(-Wno-stringop-overflow -Wno-stringop-overread)
    add_link_options(-Wno-stringop-overflow -Wno-stringop-overread)
endif()
if(QUARNA_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

if(QUARNA_SANITIZE)
    # A cast from float to an integer that cannot hold it is what this code must never do, and
    # g++ leaves that check out of "undefined".
    string(REGEX REPLACE "undefined" "undefined,float-cast-overflow" sanitizers "${QUARNA_SANITIZE}")
    add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${sanitizers})
else()
    include(CheckIPOSupported)
    check_ipo_supported(RESULT CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE OUTPUT reason LANGUAGES CXX)
endif()

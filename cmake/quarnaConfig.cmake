# find_package(quarna): what native code needs to exchange arrays with the Python package of that name.
#
#     find_package(quarna REQUIRED)
#     target_link_libraries(your_module PRIVATE quarna::quarna)
#
# CMake finds it in the package itself, installed or in a build's importable tree:
#
#     cmake -Dquarna_ROOT="$(python -c 'import quarna, os; print(os.path.dirname(quarna.__file__))')" ...
#
# The target brings the headers and libQuarnaDataArray.so; Python's headers are the consumer's to find. The
# library lies beside the package, so INSTALL_RPATH "$ORIGIN" lets a module that is installed there find it.

if(NOT TARGET quarna::quarna)
    get_filename_component(quarna_site "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)
    add_library(quarna::quarna SHARED IMPORTED)
    set_target_properties(quarna::quarna PROPERTIES
        IMPORTED_LOCATION "${quarna_site}/libQuarnaDataArray.so"
        IMPORTED_SONAME libQuarnaDataArray.so
        INTERFACE_INCLUDE_DIRECTORIES "${quarna_site}/quarna/include")
    unset(quarna_site)
endif()

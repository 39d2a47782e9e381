# The interpreter that the module is built for: -DPython3_EXECUTABLE= chooses it.

find_package(Python3 3.7 REQUIRED COMPONENTS Interpreter Development.Module)

# A debug interpreter's headers are links to those of the plain one, beside a pyconfig.h of their own. g++ would
# follow the links and read the plain one's.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fno-canonical-system-headers>)

# The interpreter itself says what its extension modules are called.
execute_process(
    COMMAND "${Python3_EXECUTABLE}" -c "import sysconfig; print(sysconfig.get_config_var('EXT_SUFFIX'))"
    OUTPUT_VARIABLE QUARNA_EXTENSION_SUFFIX
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)

# Where the importable tree grows.
set(QUARNA_PYTHON_TREE "${PROJECT_BINARY_DIR}/python")

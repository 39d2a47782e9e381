# What native consumers build with: headers and CMake files, inside the Python package. One set of rules fills
# the wheel and, through quarna_package, the importable tree, so that a consumer finds the same in both.
include(CMakePackageConfigHelpers)

set(quarna_version_file "${PROJECT_BINARY_DIR}/cmake/quarnaConfigVersion.cmake")
write_basic_package_version_file("${quarna_version_file}" COMPATIBILITY SameMajorVersion)

install(DIRECTORY include/ library/include/
    DESTINATION quarna/include COMPONENT consumer)
install(FILES cmake/quarnaConfig.cmake "${quarna_version_file}"
    DESTINATION quarna/cmake COMPONENT consumer)

# The kinds of target of this project. A folder states in one call what it is made of and whom it may call.

# quarna_call(<target> <callee>...): lets a target call rooms (by their short names) and libraries.
# A callee must exist already, so calls go down only and a misspelt name is an error.
function(quarna_call target)
    foreach(callee IN LISTS ARGN)
        if(TARGET quarna_${callee})
            set(callee quarna_${callee})
        elseif(NOT TARGET ${callee})
            message(FATAL_ERROR "${target} calls ${callee}, which does not stand below it.")
        endif()
        get_target_property(kind ${target} TYPE)
        if(kind STREQUAL "INTERFACE_LIBRARY")
            target_link_libraries(${target} INTERFACE ${callee})
        else()
            target_link_libraries(${target} PRIVATE ${callee})
        endif()
    endforeach()
endfunction()

# quarna_add_room(<name> [SOURCES <file>...] [CALLS <room or library>...]): one folder of src/, as the
# static library quarna_<name>; without sources a room of headers. What a room calls stays its own
# affair: its callers see none of the include folders behind it.
function(quarna_add_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;CALLS")
    set(target quarna_${name})
    if(room_SOURCES)
        add_library(${target} STATIC ${room_SOURCES})
        target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    else()
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE "${PROJECT_SOURCE_DIR}/src")
    endif()
    quarna_call(${target} ${room_CALLS})
endfunction()

# quarna_add_module(<name> SOURCES <file>... CALLS <room or library>... EXPORTS <symbol>...): the extension
# module, in the importable tree and in the wheel. It finds its library beside itself; DT_RUNPATH rather
# than DT_RPATH, so that LD_LIBRARY_PATH can put another library in front.
function(quarna_add_module name)
    cmake_parse_arguments(PARSE_ARGV 1 module "" "" "SOURCES;CALLS;EXPORTS")
    add_library(${name} MODULE ${module_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/include")
    quarna_call(${name} ${module_CALLS})
    quarna_export_only(${name} ${module_EXPORTS})
    target_link_options(${name} PRIVATE LINKER:--enable-new-dtags)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        SUFFIX "${QUARNA_EXTENSION_SUFFIX}"
        LIBRARY_OUTPUT_DIRECTORY "${QUARNA_PYTHON_TREE}"
        BUILD_WITH_INSTALL_RPATH ON
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} LIBRARY DESTINATION .)
endfunction()

# quarna_export_only(<target> <symbol>...): these symbols leave the shared object and no others,
# not even the template instantiations of the standard library, which hidden visibility lets through.
function(quarna_export_only target)
    list(JOIN ARGN "; " symbols)
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
    file(CONFIGURE OUTPUT "${script}" CONTENT "{ global: ${symbols}; local: *; };\n")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

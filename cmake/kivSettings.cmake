# What every target of the project shares: language level, warnings, sanitizers, visibility.

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(KIV_CCACHE ccache)
if(PROJECT_IS_TOP_LEVEL AND KIV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${KIV_CCACHE}")
endif()

# Everything is found again after a move of the build or the install folder.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# kiv_require(OPTION PACKAGE CONSEQUENCE): turns OPTION off, with a line saying so, when PACKAGE is
# not installed.
macro(kiv_require option package consequence)
    if(${option})
        find_package(${package} QUIET)
        if(NOT ${package}_FOUND)
            message(STATUS "kiv: ${package} was not found, ${consequence}")
            set(${option} OFF)
        endif()
    endif()
endmacro()

# kiv_precompile(TARGET KIND HEADERS...): compiles HEADERS once for all targets of the same KIND.
function(kiv_precompile target kind)
    if(NOT KIV_PRECOMPILE)
        return()
    endif()
    set(owner kiv_precompiled_${kind})
    get_property(known GLOBAL PROPERTY ${owner})
    if(known)
        target_precompile_headers(${target} REUSE_FROM ${known})
    else()
        set_property(GLOBAL PROPERTY ${owner} ${target})
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# kiv_unity(TARGET...): compiles the sources of the targets a dozen at a time, which takes a third of the work: most of
# it goes into headers. Names in their unnamed namespaces must differ within a library.
function(kiv_unity)
    if(KIV_UNITY)
        set_target_properties(${ARGV} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
    endif()
endfunction()

# kiv_unoptimized(TARGET): for a program that runs for less time than the optimiser would need for it.
function(kiv_unoptimized target)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
endfunction()

# kiv_settings(TARGET): the house rules for one target. A folder that calls kiv_precompile for its libraries itself
# sets KIV_OWN_PRECOMPILED.
function(kiv_settings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        DEFINE_SYMBOL "" # or no two libraries could share what is compiled once
        POSITION_INDEPENDENT_CODE ON)
    # A library's calls of its own functions are not up for replacement, so they may be inlined.
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -fno-semantic-interposition)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Wrong about strings put together with + (GCC bug 105651), the more so when the standard library's
        # headers are precompiled.
        target_compile_options(${target} PRIVATE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
    endif()
    if(KIV_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(KIV_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${KIV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${KIV_SANITIZE})
    endif()
    get_target_property(type ${target} TYPE)
    if(KIV_COVERAGE AND NOT type STREQUAL "MODULE_LIBRARY") # what counts in a plug-in leaks when that is unloaded
        target_compile_options(${target} PRIVATE -fprofile-instr-generate -fcoverage-mapping)
        target_link_options(${target} PRIVATE -fprofile-instr-generate)
    endif()
    if(type MATCHES "^(SHARED|STATIC)_LIBRARY$" AND NOT KIV_OWN_PRECOMPILED)
        kiv_precompile(${target} library <algorithm> <cstddef> <cstdint> <functional> <list> <memory>
            <optional> <stdexcept> <string> <string_view> <unordered_map> <utility> <vector>)
    endif()
endfunction()

# kiv_library(NAME EXPORTED_AS SOURCES...): a shared library of the project with the headers of the
# include/ folder beside its CMakeLists.txt (or of the project's own for the core), exported as
# kiv::EXPORTED_AS.
function(kiv_library name exported_as includes)
    add_library(${name} SHARED ${ARGN})
    add_library(kiv::${exported_as} ALIAS ${name})
    kiv_settings(${name})
    if(KIV_BUILD_FUZZERS)
        target_compile_options(${name} PRIVATE
            -fsanitize-coverage=inline-8bit-counters,pc-table)
    endif()
    if(UNIX AND NOT APPLE)
        set(exported ${kiv_SOURCE_DIR}/cmake/exported.map)
        target_link_options(${name} PRIVATE LINKER:--version-script=${exported})
        set_property(TARGET ${name} PROPERTY LINK_DEPENDS ${exported})
    endif()
    target_compile_features(${name} INTERFACE cxx_std_17)
    target_include_directories(${name}
        PUBLIC $<BUILD_INTERFACE:${includes}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(${name} PROPERTIES
        EXPORT_NAME ${exported_as}
        VERSION ${kiv_VERSION}
        SOVERSION ${kiv_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN")
    if(NOT DEFINED KIV_LIBRARY_COMPONENT)
        set(KIV_LIBRARY_COMPONENT libraries)
    endif()
    set_property(GLOBAL APPEND PROPERTY kiv_library_folders ${CMAKE_CURRENT_BINARY_DIR})
    install(TARGETS ${name} EXPORT kivTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${KIV_LIBRARY_COMPONENT}
                NAMELINK_COMPONENT development)
    install(DIRECTORY ${includes}/kiv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()

# What a build of this project can be asked for, and the flags that every target shares.

include(CheckCXXCompilerFlag)

# Whoever adds this project to their own wants the library alone.
if(PROJECT_IS_TOP_LEVEL)
    find_package(Qt6 6.2 QUIET COMPONENTS Widgets)
endif()
if(Qt6_FOUND)
    option(ZORVANE_BUILD_APP "Build the windowed program (needs Qt 6)" ON)
else()
    option(ZORVANE_BUILD_APP "Build the windowed program (needs Qt 6)" OFF)
endif()
option(ZORVANE_BUILD_TESTS "Build the tests (needs GoogleTest)" ${PROJECT_IS_TOP_LEVEL})
option(ZORVANE_BUILD_BENCH "Build the benchmarks (needs Boost; other peers where found)" OFF)
option(ZORVANE_INSTALL "Let `cmake --install` install the library" ${PROJECT_IS_TOP_LEVEL})
option(BUILD_SHARED_LIBS "Make the library one shared library instead of an archive per floor" OFF)
option(ZORVANE_WERROR "Treat warnings as errors" OFF)
option(ZORVANE_PRECOMPILE "Read the headers of others once for each program and library" OFF)
option(ZORVANE_HARDEN "Harden what is built, as distributions do" OFF)
set(ZORVANE_SANITIZE "" CACHE STRING "Sanitizers for every target, e.g. address,undefined")

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(zorvane_flags INTERFACE)
foreach(flag -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
        -Woverloaded-virtual -Wcast-align -Wformat=2 -Wno-missing-field-initializers)
    # Who takes these is known; every other compiler is asked.
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang|AppleClang)$")
        string(MAKE_C_IDENTIFIER "ZORVANE_TAKES${flag}" taken)
        check_cxx_compiler_flag(${flag} ${taken})
        if(NOT ${taken})
            continue()
        endif()
    endif()
    target_compile_options(zorvane_flags INTERFACE ${flag})
endforeach()
# GCC 12 sees an overlap in `"x" + std::string` that is not there (mended in 13).
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(zorvane_flags INTERFACE -Wno-restrict)
endif()
if(ZORVANE_WERROR)
    target_compile_options(zorvane_flags INTERFACE -Werror)
endif()
if(ZORVANE_SANITIZE)
    target_compile_options(zorvane_flags INTERFACE
        -fsanitize=${ZORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zorvane_flags INTERFACE -fsanitize=${ZORVANE_SANITIZE})
    target_compile_definitions(zorvane_flags INTERFACE _GLIBCXX_ASSERTIONS)
endif()

# What costs in hot loops is left out: the standard library's assertions and, for the floors of the
# library, guards of the stack, which made hashed additions and look-ups take 4 % more instructions
# (all the rest together: 1 %).
if(ZORVANE_HARDEN)
    include(CheckCXXCompilerFlag)
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "ZORVANE_HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has} AND flag STREQUAL -fstack-protector-strong)
            target_compile_options(zorvane_flags INTERFACE
                $<$<NOT:$<BOOL:$<TARGET_PROPERTY:ZORVANE_FLOOR>>>:${flag}>)
        elseif(${has})
            target_compile_options(zorvane_flags INTERFACE ${flag})
        endif()
    endforeach()
    target_compile_options(zorvane_flags INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    foreach(word IN ITEMS relro now)
        check_linker_flag(CXX LINKER:-z,${word} ZORVANE_HAS_${word})
        if(ZORVANE_HAS_${word})
            target_link_options(zorvane_flags INTERFACE LINKER:-z,${word})
        endif()
    endforeach()
endif()

# zorvane_precompile(<target> <kind> <header>...)
#
# Most of what a file of tests or of windows takes to compile is the headers of others: they are read
# once for all targets of a kind, which are compiled by the same flags. No header of ours is among
# them, so nothing is built too often; builds without it see to it that every file includes what it
# uses.
function(zorvane_precompile target kind)
    if(NOT ZORVANE_PRECOMPILE)
        return()
    endif()
    get_property(first GLOBAL PROPERTY ZORVANE_PRECOMPILED_${kind})
    if(first)
        target_precompile_headers(${target} REUSE_FROM ${first})
    else()
        set_property(GLOBAL PROPERTY ZORVANE_PRECOMPILED_${kind} ${target})
        target_precompile_headers(${target} PRIVATE ${ARGN} <algorithm> <array> <functional> <map>
            <memory> <optional> <ranges> <span> <string> <utility> <vector>)
    endif()
endfunction()

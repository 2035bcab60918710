# What a build of this project can be asked for, and the flags that every target shares.

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
set(ZORVANE_SANITIZE "" CACHE STRING "Sanitizers for every target, e.g. address,undefined")

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(zorvane_flags INTERFACE)
target_compile_options(zorvane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wformat=2 -Wno-missing-field-initializers)
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

# zorvane_library(<floor> SOURCES <file>... [USES <floor>...] [TOOLKIT <target>...])
#
# One static library per folder. What a floor may see is what its USES line names: includes are
# rooted at the project, and tools/check_layers holds the same rule for headers.
function(zorvane_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;TOOLKIT" ${ARGN})
    add_library(zorvane_${name} STATIC ${ARG_SOURCES})
    target_include_directories(zorvane_${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(zorvane_${name} PUBLIC cxx_std_20)
    target_link_libraries(zorvane_${name} PRIVATE $<BUILD_INTERFACE:zorvane_flags>)
    foreach(floor IN LISTS ARG_USES)
        target_link_libraries(zorvane_${name} PUBLIC zorvane_${floor})
    endforeach()
    target_link_libraries(zorvane_${name} PUBLIC ${ARG_TOOLKIT})
    if(ARG_TOOLKIT)
        set_target_properties(zorvane_${name} PROPERTIES AUTOMOC ON AUTORCC ON)
        zorvane_precompile(zorvane_${name} toolkit
            <QApplication> <QHBoxLayout> <QHeaderView> <QLabel> <QPainter> <QPushButton>)
    else()
        # A shared library of someone else may hold this one, and does not export it.
        set_target_properties(zorvane_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON ZORVANE_FLOOR ON
            CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
        zorvane_precompile(zorvane_${name} floor <cmath> <limits> <stdexcept>)
    endif()
endfunction()

# zorvane_as_archives(<floor>...): each floor is a library of its own for whoever links it, and
# zorvane::zorvane is all of them.
function(zorvane_as_archives)
    add_library(zorvane INTERFACE)
    foreach(floor IN LISTS ARGN)
        add_library(zorvane::${floor} ALIAS zorvane_${floor})
        set_target_properties(zorvane_${floor} PROPERTIES EXPORT_NAME ${floor})
        target_link_libraries(zorvane INTERFACE zorvane_${floor})
    endforeach()
endfunction()

# zorvane_as_shared(<floor>...): all of them are one shared library, whichever is asked for. The
# archives stay for what is tested within; nobody else links them.
function(zorvane_as_shared)
    add_library(zorvane SHARED)
    target_include_directories(zorvane PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(zorvane PUBLIC cxx_std_20)
    target_compile_definitions(zorvane INTERFACE ZORVANE_SHARED)
    target_link_libraries(zorvane PRIVATE $<BUILD_INTERFACE:zorvane_flags>)
    # Layouts are compiled into programs, and a minor version may change them.
    set_target_properties(zorvane PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    foreach(floor IN LISTS ARGN)
        target_compile_definitions(zorvane_${floor} PRIVATE ZORVANE_BUILDING_SHARED)
        target_sources(zorvane PRIVATE $<TARGET_OBJECTS:zorvane_${floor}>)
        add_library(zorvane_shared_${floor} INTERFACE)
        target_link_libraries(zorvane_shared_${floor} INTERFACE zorvane)
        set_target_properties(zorvane_shared_${floor} PROPERTIES EXPORT_NAME ${floor})
        add_library(zorvane::${floor} ALIAS zorvane_shared_${floor})
    endforeach()
    # Hidden visibility does not reach what the standard library's templates made, which would
    # come before a program's own.
    set(script ${PROJECT_SOURCE_DIR}/zorvane/exported.map)
    check_linker_flag(CXX LINKER:--version-script=${script} ZORVANE_VERSION_SCRIPT)
    if(ZORVANE_VERSION_SCRIPT AND NOT WIN32)
        target_link_options(zorvane PRIVATE LINKER:--version-script=${script})
        set_target_properties(zorvane PROPERTIES LINK_DEPENDS ${script})
    endif()
    # Calls among the floors take no detour through what a program might put in their place.
    check_linker_flag(CXX LINKER:-Bsymbolic-functions ZORVANE_SYMBOLIC)
    if(ZORVANE_SYMBOLIC AND NOT WIN32)
        target_link_options(zorvane PRIVATE LINKER:-Bsymbolic-functions)
        foreach(floor IN LISTS ARGN)
            target_compile_options(zorvane_${floor} PRIVATE -fno-semantic-interposition)
        endforeach()
    endif()
endfunction()

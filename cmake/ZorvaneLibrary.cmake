# zorvane_library(<floor> SOURCES <file>... [USES <floor>...] [TOOLKIT <target>...])
#
# One static library per folder. What a floor may see is what its USES line names: includes are
# rooted at the project, and tools/check_layers holds the same rule for headers.
function(zorvane_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;TOOLKIT" ${ARGN})
    add_library(zorvane_${name} STATIC ${ARG_SOURCES})
    add_library(zorvane::${name} ALIAS zorvane_${name})
    target_include_directories(zorvane_${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(zorvane_${name} PUBLIC cxx_std_20)
    target_link_libraries(zorvane_${name} PRIVATE $<BUILD_INTERFACE:zorvane_flags>)
    foreach(floor IN LISTS ARG_USES)
        target_link_libraries(zorvane_${name} PUBLIC zorvane::${floor})
    endforeach()
    target_link_libraries(zorvane_${name} PUBLIC ${ARG_TOOLKIT})
    if(ARG_TOOLKIT)
        set_target_properties(zorvane_${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    else()
        # A shared library of someone else may hold this one, and does not export it.
        set_target_properties(zorvane_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON
            CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    endif()
endfunction()

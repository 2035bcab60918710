# What `cmake --install` puts where: headers below zorvane/, one archive per floor or one shared
# library, and what find_package and pkg-config ask for. Components: library, viewer, program, and
# portable, which only a request by name installs.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zorvane)

# zorvane_headers_behind(<variable> <header>...): the headers and all that they include of the
# project, by their names below the project.
function(zorvane_headers_behind result)
    set(found "")
    set(rest ${ARGN})
    while(rest)
        list(POP_FRONT rest header)
        if(header IN_LIST found)
            continue()
        endif()
        list(APPEND found ${header})
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
        file(STRINGS ${PROJECT_SOURCE_DIR}/${header} lines REGEX "^#include \"zorvane/")
        string(REGEX MATCHALL "zorvane/[A-Za-z0-9_/]+\\.h" includes "${lines}")
        list(APPEND rest ${includes})
    endwhile()
    set(${result} ${found} PARENT_SCOPE)
endfunction()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS zorvane/headers.txt)
file(STRINGS ${PROJECT_SOURCE_DIR}/zorvane/headers.txt public REGEX "\\.h$")
list(TRANSFORM public PREPEND zorvane/)
zorvane_headers_behind(headers ${public})
foreach(header IN LISTS headers)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/${header}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT library)
endforeach()

if(BUILD_SHARED_LIBS)
    set(targets zorvane)
    foreach(floor IN LISTS ZORVANE_FLOORS)
        list(APPEND targets zorvane_shared_${floor})
    endforeach()
else()
    list(TRANSFORM ZORVANE_FLOORS PREPEND zorvane_ OUTPUT_VARIABLE targets)
    list(APPEND targets zorvane)
endif()
install(TARGETS ${targets} EXPORT Zorvane
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library)

# These names serve who asks for Zorvane and who asks for zorvane.
install(EXPORT Zorvane NAMESPACE zorvane:: FILE zorvane-targets.cmake
    DESTINATION ${package_dir} COMPONENT library)
list(JOIN ZORVANE_FLOORS " " floor_names)
configure_package_config_file(${PROJECT_SOURCE_DIR}/packaging/zorvane-config.cmake.in
    ${PROJECT_BINARY_DIR}/zorvane-config.cmake INSTALL_DESTINATION ${package_dir}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zorvane-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zorvane-config.cmake
    ${PROJECT_BINARY_DIR}/zorvane-config-version.cmake
    DESTINATION ${package_dir} COMPONENT library)

# The file finds its prefix from where it lies, so that an installed tree may be moved; but not
# where a folder of its own was asked for.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH up ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
    string(REGEX REPLACE "/$" "" up "${up}")
    set(pc_prefix "\${pcfiledir}/${up}")
endif()
set(pc_libdir "\${prefix}")
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})  # which, if absolute, takes its place
set(pc_includedir "\${prefix}")
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
if(BUILD_SHARED_LIBS)
    set(pc_flags " -DZORVANE_SHARED")
    set(pc_libraries -lzorvane)
else()
    # Whoever uses another stands in front of it.
    list(TRANSFORM ZORVANE_FLOORS PREPEND -lzorvane_ OUTPUT_VARIABLE pc_libraries)
    list(REVERSE pc_libraries)
    list(JOIN pc_libraries " " pc_libraries)
endif()
configure_file(${PROJECT_SOURCE_DIR}/packaging/zorvane.pc.in ${PROJECT_BINARY_DIR}/zorvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zorvane.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT library)

# For debuggers; gdb loads what lies below its auto-load folder by the shared library's own name.
install(FILES packaging/debug/zorvane-gdb.py packaging/debug/zorvane.natvis
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zorvane COMPONENT library)
if(BUILD_SHARED_LIBS AND NOT WIN32)
    install(FILES packaging/debug/zorvane-gdb.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}
        RENAME libzorvane.so.${PROJECT_VERSION}-gdb.py COMPONENT library)
endif()

set(desktop ${PROJECT_SOURCE_DIR}/packaging/desktop)
if(TARGET zorvane_bag)
    install(TARGETS zorvane_bag RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT viewer)
    install(FILES ${desktop}/zorvane-bag.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT viewer)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/completion/zorvane-bag
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT viewer)
endif()

# The program for all users of a machine: each one's state is in a folder of theirs.
if(TARGET zorvane_program)
    install(TARGETS zorvane_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    install(FILES ${desktop}/zorvane.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
    foreach(file IN ITEMS packaging/completion/zorvane:bash-completion/completions
            packaging/desktop/per-user:zorvane
            packaging/desktop/zorvane.desktop:applications
            packaging/desktop/zorvane.svg:icons/hicolor/scalable/apps
            packaging/desktop/org.example.zorvane.metainfo.xml:metainfo)
        string(REPLACE : ";" file ${file})
        list(POP_FRONT file source)
        install(FILES ${PROJECT_SOURCE_DIR}/${source}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/${file} COMPONENT program)
    endforeach()
endif()

# The program that keeps its state beside itself, so it lives in a folder of its user's.
if(TARGET zorvane_program AND TARGET zorvane_bag)
    set(portable COMPONENT portable EXCLUDE_FROM_ALL)
    install(TARGETS zorvane_program zorvane_bag RUNTIME DESTINATION . ${portable})
    install(PROGRAMS packaging/portable/add-to-menu DESTINATION . ${portable})
    install(FILES packaging/portable/README LICENSE DESTINATION . ${portable})
    install(FILES ${desktop}/zorvane.desktop DESTINATION share/applications ${portable})
    install(FILES ${desktop}/zorvane.svg DESTINATION share/icons/hicolor/scalable/apps ${portable})
    install(FILES ${desktop}/org.example.zorvane.metainfo.xml DESTINATION share/metainfo ${portable})
    install(FILES ${desktop}/zorvane.1 ${desktop}/zorvane-bag.1 DESTINATION share/man/man1 ${portable})
endif()

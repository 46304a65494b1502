# The Debian packages: one for each install component, for "cpack -G DEB". scripts/package runs it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libglobals)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_COMPONENTS_ALL runtime development widgets widgets_development tools documentation)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Made for this Debian, whose Qt and Crypto++ it needs.
cmake_host_system_information(RESULT debian_codename QUERY DISTRIB_VERSION_CODENAME)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1~${debian_codename}1)
set(CPACK_DEBIAN_PACKAGE_SOURCE libglobals)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "libglobals developers <libglobals@example.org>")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Dependencies on our own libraries are those between components.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/globals ${PROJECT_BINARY_DIR}/widgets)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libglobals${qt_suffix}${qt_soname_separator}${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "support library of a desktop 3D room planner (${qt})
The library knows where each file of the application lies and how its last
run ended, keeps settings and presets, shows values in the units of the user,
writes logs, and reads protected data files and archives.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libglobals${qt_suffix}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${qt_packages})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libglobals-doc)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "support library of a desktop 3D room planner (development files, ${qt})
Headers of the library, and what CMake and pkg-config need to find it: programs
link it as globals::globals. The guide is in libglobals-doc.")

set(CPACK_DEBIAN_WIDGETS_PACKAGE_NAME libglobals-widgets${qt_suffix}${qt_soname_separator}${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_WIDGETS_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_WIDGETS_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
set(CPACK_COMPONENT_WIDGETS_DEPENDS runtime)
set(CPACK_DEBIAN_WIDGETS_DESCRIPTION "ready-made widgets of a desktop 3D room planner (${qt})
Windows on top of the support library: the progress of long work, the log, the
choice of a unit, the table of presets.")

set(CPACK_DEBIAN_WIDGETS_DEVELOPMENT_PACKAGE_NAME libglobals-widgets${qt_suffix}-dev)
set(CPACK_DEBIAN_WIDGETS_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_WIDGETS_DEVELOPMENT_DEPENDS widgets development)
set(CPACK_DEBIAN_WIDGETS_DEVELOPMENT_DESCRIPTION
    "ready-made widgets of a desktop 3D room planner (development files, ${qt})
Headers of the widgets, and what CMake and pkg-config need to find them:
programs link them as globals::widgets. The guide is in libglobals-doc.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME globalsctl)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "look after the files of a desktop 3D room planner
The command-line tool shows where the room planner keeps its files and how its
last run ended, changes its settings, checks preset files, and converts units
and colours as the room planner does.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME libglobals-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION "support library of a desktop 3D room planner (documentation)
The guide: how the parts of the library meet, how to write preset files, and
the format of protected data files.")

# What Debian wants to lie beside each package, under the package's own name.
find_program(GZIP gzip REQUIRED)
execute_process(COMMAND date --utc --rfc-email --date ${GLOBALS_RELEASE_DATE}
    OUTPUT_VARIABLE release_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(debian ${PROJECT_BINARY_DIR}/debian)
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${debian}/changelog.Debian @ONLY)
execute_process(COMMAND ${GZIP} -9nf ${debian}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    install(FILES ${debian}/changelog.Debian.gz ${CMAKE_CURRENT_LIST_DIR}/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
        COMPONENT ${component})
    set(overrides ${CMAKE_CURRENT_LIST_DIR}/debian/${component}.lintian-overrides)
    if(EXISTS ${overrides})
        install(FILES ${overrides}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
            RENAME ${package}
            COMPONENT ${component})
    endif()
endforeach()

include(CPack)

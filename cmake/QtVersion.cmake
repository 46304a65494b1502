# The one place that knows which Qt is built with: 5.15 or 6. Elsewhere it is ${qt}::Core, and so on.
#
# An application that has found one gets that one. On their own all build with Qt 5 where there is one, or with what
# GLOBALS_QT says. What a later configuration finds may differ, so nothing is cached but the user's word.

if(NOT GLOBALS_QT)
    if(NOT TARGET Qt5::Core AND NOT TARGET Qt6::Core)
        find_package(Qt5 5.15 QUIET COMPONENTS Core)
    endif()
    set(GLOBALS_QT 6)
    if(TARGET Qt5::Core)
        set(GLOBALS_QT 5)
    endif()
endif()

set(qt Qt${GLOBALS_QT})
if(GLOBALS_QT EQUAL 5)
    set(qt_minimum 5.15)
    set(qt_public Core Gui XmlPatterns) # of which our headers include some
    set(xml_messages 5) # whose interface of them the library has
    if(WIN32) # where many builds of Qt have no XmlPatterns
        list(REMOVE_ITEM qt_public XmlPatterns)
        set(xml_messages 6)
    endif()
    set(qt_packages "qtbase5-dev (>= 5.15)" "libqt5xmlpatterns5-dev (>= 5.15)")
    set(qt_suffix "") # of libraries, packages and .pc files
    set(qt_soname_separator "")
    set(globals_include_dir ${CMAKE_INSTALL_INCLUDEDIR})
elseif(GLOBALS_QT EQUAL 6)
    set(qt_minimum 6.4)
    set(qt_public Core Gui)
    set(xml_messages 6)
    set(qt_packages "qt6-base-dev (>= 6.4)")
    set(qt_suffix -qt6)
    set(qt_soname_separator -) # before the number, as Debian calls packages of libraries whose names end in one
    set(globals_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/globals-qt6) # so that both can be installed
else()
    message(FATAL_ERROR "GLOBALS_QT is the version of Qt to build with, 5 or 6, not \"${GLOBALS_QT}\".")
endif()
list(TRANSFORM qt_public PREPEND ${qt}:: OUTPUT_VARIABLE qt_public_libraries)
list(TRANSFORM qt_public PREPEND ${qt} OUTPUT_VARIABLE qt_public_modules) # as pkg-config calls them
list(JOIN qt_public_modules " " qt_public_modules)
list(JOIN qt_public " " qt_public_components)

find_package(${qt} ${qt_minimum} REQUIRED COMPONENTS ${qt_public} LinguistTools Widgets)

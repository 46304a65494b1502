# Installs the .pc file NAME, with the suffix of its Qt, as a part of COMPONENT. The file finds its prefix from where it
# lies, so that an installed tree can be moved, unless the libraries' folder was given as an absolute path.
function(globals_install_pc name component)
    if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
        set(pc_prefix ${CMAKE_INSTALL_PREFIX})
    else()
        file(RELATIVE_PATH pc_up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
        set(pc_prefix "\${pcfiledir}/${pc_up}")
    endif()
    cmake_path(APPEND pc_libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
    cmake_path(APPEND pc_includedir "\${prefix}" ${globals_include_dir})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${name}${qt_suffix}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}${qt_suffix}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT ${component})
endfunction()

# Tests of the pages. An example is the code of all "cpp" blocks of a page, and prints its "output" block.

function(globals_docs_example page)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${page}.cpp)
    set(text ${CMAKE_CURRENT_SOURCE_DIR}/${page}.md)
    set(blocks ${CMAKE_CURRENT_SOURCE_DIR}/check/blocks)
    add_custom_command(OUTPUT ${source} COMMAND ${blocks} cpp ${text} > ${source} DEPENDS ${text} ${blocks} VERBATIM)
    add_executable(docs_${page} ${source})
    target_link_libraries(docs_${page} PRIVATE globals::globals globals_build_flags ${ARGN})
    # As an application may be compiled: with Qt's convenience casts.
    target_compile_options(docs_${page} PRIVATE -UQT_NO_CAST_FROM_ASCII -UQT_NO_CAST_TO_ASCII)
    set_target_properties(docs_${page} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${page})
    add_test(NAME docs_${page} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/check/example $<TARGET_FILE:docs_${page}> ${text}
        ${PROJECT_SOURCE_DIR}/examples/startup/data/presets.dat)
endfunction()

# Against a library without sanitizers and coverage only, and with the password of the example's presets: the
# pages show what users get.
if(GLOBALS_SANITIZE OR GLOBALS_COVERAGE OR NOT GLOBALS_PRESET_PASSWORD STREQUAL "globals-demo-presets")
    return()
endif()

foreach(page auto-save data-files ending logs paths porting presets progress qt-update receivers settings start-up translations
        two-processes units)
    globals_docs_example(${page})
endforeach()

if(GLOBALS_BUILD_WIDGETS)
    globals_docs_example(log-window globals::widgets)
    globals_docs_example(widgets globals::widgets)
endif()

set_target_properties(docs_tables PROPERTIES EXCLUDE_FROM_ALL OFF)
add_test(NAME docs_tables COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/check/tables $<TARGET_FILE:docs_tables>)

if(GLOBALS_BUILD_TOOLS)
    add_test(NAME docs_commands COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/check/commands $<TARGET_FILE_DIR:globalsctl>)
endif()

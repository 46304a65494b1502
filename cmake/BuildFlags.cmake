# How our own sources are compiled. Linked privately and never exported: users compile as they like.
add_library(globals_build_flags INTERFACE)
target_compile_features(globals_build_flags INTERFACE cxx_std_17)
target_compile_options(globals_build_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
# clang's -Wpedantic would not have QSKIP() of Qt 5.
target_compile_options(globals_build_flags INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
# The older unit of 32-bit processors computes with more digits than a double has: 29 of 100 would be 29 %, not 28.
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86|i.86|AMD64)")
    target_compile_options(globals_build_flags INTERFACE -msse2 -mfpmath=sse)
endif()
if(GLOBALS_STRICT)
    target_compile_definitions(globals_build_flags INTERFACE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DEPRECATED_WARNINGS
        QT_DISABLE_DEPRECATED_BEFORE=0x060000)
    target_compile_options(globals_build_flags INTERFACE -Wshadow -Wold-style-cast)
endif()
if(GLOBALS_SANITIZE)
    target_compile_options(globals_build_flags INTERFACE
        -fsanitize=${GLOBALS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(globals_build_flags INTERFACE -fsanitize=${GLOBALS_SANITIZE})
endif()
if(GLOBALS_COVERAGE)
    target_compile_options(globals_build_flags INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(globals_build_flags INTERFACE --coverage)
endif()
if(CMAKE_CXX_CLANG_TIDY)
    # What moc writes is not ours to tidy; one harmless check, because clang-tidy refuses to run none.
    file(WRITE ${PROJECT_BINARY_DIR}/.clang-tidy "Checks: '-*,llvm-twine-local'\n")
endif()

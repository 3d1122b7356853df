# How every target of this project is compiled: language, warnings, sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# No form files here; headers such as ui_window.h would be taken for their output.
set(CMAKE_AUTOUIC OFF)

find_program(ZELKAM_CCACHE ccache)
if(ZELKAM_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${ZELKAM_CCACHE})
endif()

add_library(zelkam_build INTERFACE)
target_compile_options(zelkam_build INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
    -Woverloaded-virtual -Wnull-dereference -Wimplicit-fallthrough -Wextra-semi
    $<$<BOOL:${ZELKAM_WERROR}>:-Werror>)
# GCC 12's optimiser sees null pointers in the standard library's own shared_ptr.
target_compile_options(zelkam_build INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo>:-Wno-null-dereference>)
target_compile_definitions(zelkam_build INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH
    QT_STRICT_ITERATORS QT_NO_JAVA_STYLE_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(ZELKAM_SANITIZE)
    add_compile_options(-fsanitize=${ZELKAM_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZELKAM_SANITIZE})
    if(ZELKAM_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

if(ZELKAM_BUILD_FUZZ)
    # The libraries tell the fuzzer which of their branches an input has reached.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

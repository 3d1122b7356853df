# zelkam_add_library(<name> SOURCES ... PUBLIC_HEADERS ... [DEPENDS ...] [PRIVATE_DEPENDS ...])
#
# Adds the static library zelkam_<name> with the alias Zelkam::<name>. Headers are included by
# their path below src/, in the tree ("toast/toast.h") and installed (<zelkam/toast/toast.h>).
# PUBLIC_HEADERS is the list of what is installed: everything else is nobody else's business.
function(zelkam_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC_HEADERS;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
    string(TOLOWER ${name} lower)
    set(target zelkam_${lower})
    add_library(${target} STATIC ${ARG_SOURCES} ${ARG_PUBLIC_HEADERS})
    add_library(Zelkam::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES AUTOMOC ON EXPORT_NAME ${name})
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zelkam>)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_link_libraries(${target} PUBLIC ${ARG_DEPENDS}
        PRIVATE ${ARG_PRIVATE_DEPENDS} $<BUILD_INTERFACE:zelkam_build>)
    install(TARGETS ${target} EXPORT ZelkamTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
    foreach(header IN LISTS ARG_PUBLIC_HEADERS)
        cmake_path(ABSOLUTE_PATH header BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
        cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE below)
        cmake_path(GET below PARENT_PATH folder)
        install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelkam/${folder})
    endforeach()
endfunction()

# zelkam_add_test(<name> SOURCES ... LIBRARIES ... [LABELS ...] [TIMEOUT <seconds>] [ENVIRONMENT ...])
#
# Adds the Qt Test program tst_<name>, run on the offscreen platform. The label "threads" marks
# the tests that also run under the thread sanitizer.
function(zelkam_add_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    set(target tst_${name})
    add_executable(${target} ${ARG_SOURCES})
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${target} PRIVATE ${ARG_LIBRARIES} Qt6::Test zelkam_build)
    add_test(NAME ${name} COMMAND ${target})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${ARG_TIMEOUT}
        LABELS "${ARG_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_FORCE_STDERR_LOGGING=1;${ARG_ENVIRONMENT}")
endfunction()

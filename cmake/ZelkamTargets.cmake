# zelkam_add_library(<name> SOURCES ... PUBLIC_HEADERS ... [DEPENDS ...] [PRIVATE_DEPENDS ...])
#
# Adds the static library zelkam_<name> with the alias Zelkam::<name>. Headers are included by
# their path below src/, in the tree ("toast/toast.h") and installed (<zelkam/toast/toast.h>).
# PUBLIC_HEADERS is the list of what is installed: everything else is nobody else's business.
#
# Each library is an install component and a package component of its name, with an export file of
# its own: who takes one library needs what that one depends on and nothing else.
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
    set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Zelkam)
    install(TARGETS ${target} EXPORT Zelkam${name}Targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${name})
    install(EXPORT Zelkam${name}Targets NAMESPACE Zelkam:: DESTINATION ${package_dir}
        COMPONENT ${name})
    zelkam_write_dependencies(${name} ${ARG_DEPENDS} ${ARG_PRIVATE_DEPENDS})
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/Zelkam${name}Dependencies.cmake
        DESTINATION ${package_dir} COMPONENT ${name})
    foreach(header IN LISTS ARG_PUBLIC_HEADERS)
        cmake_path(ABSOLUTE_PATH header BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
        cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE below)
        cmake_path(GET below PARENT_PATH folder)
        install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelkam/${folder}
            COMPONENT ${name})
    endforeach()
endfunction()

# Writes the file by which the installed package finds what the library <name> links to: packages
# for imported targets, other components for Zelkam's own. A static library needs its private
# dependencies too.
function(zelkam_write_dependencies name)
    set(lines "")
    foreach(dependency IN LISTS ARGN)
        if(dependency MATCHES "^Zelkam::(.+)$")
            string(APPEND lines "zelkam_component(${CMAKE_MATCH_1})\n")
        elseif(dependency MATCHES "^Qt6::(.+)$")
            string(APPEND lines "find_dependency(Qt6 6.4 COMPONENTS ${CMAKE_MATCH_1})\n")
        elseif(dependency MATCHES "^(.+)::.+$")
            string(APPEND lines "find_dependency(${CMAKE_MATCH_1})\n")
        elseif(dependency STREQUAL "heif")
            string(APPEND lines "find_dependency(libheif)\n")
        elseif(dependency MATCHES "^(de265|lcms2)$")
            # They have no packages; the linker finds them.
        else()
            message(FATAL_ERROR "No package is known that has the target ${dependency}.")
        endif()
    endforeach()
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/Zelkam${name}Dependencies.cmake "${lines}")
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

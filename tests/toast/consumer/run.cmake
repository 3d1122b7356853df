# Installs the toast library alone, builds the consumer against it and runs it.
# Needs BUILD_DIR, SOURCE_DIR, WORK_DIR, GENERATOR, COMPILER, FLAGS and READELF.

function(step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nended with ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
foreach(component Toast Package)
    step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
        --component ${component})
endforeach()

# The packages that the rest of the product needs count as missing.
set(withoutTheRest "")
foreach(package CURL ZLIB libheif Qt6Network Qt6WebEngineCore Qt6Pdf Qt6Multimedia)
    list(APPEND withoutTheRest -DCMAKE_DISABLE_FIND_PACKAGE_${package}=TRUE)
endforeach()
step(${CMAKE_COMMAND} -G ${GENERATOR} -S ${SOURCE_DIR} -B ${WORK_DIR}/build
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS}
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix ${withoutTheRest})
step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
step(${WORK_DIR}/build/toast_consumer)

# Qt Gui brings the GL libraries along.
step(${READELF} -d ${WORK_DIR}/build/toast_consumer)
string(REGEX MATCHALL "NEEDED[^\n]*\\[[^\n]*\\]" needed "${output}")
foreach(line IN LISTS needed)
    string(REGEX REPLACE ".*\\[(.*)\\]" "\\1" library "${line}")
    if(NOT library MATCHES "^lib(Qt6(Core|Gui|Widgets)|stdc\\+\\+|m|gcc_s|c|asan|ubsan|GLX|OpenGL)\\.so|^ld-")
        message(FATAL_ERROR "The toast library needs ${library}.")
    endif()
endforeach()
if(NOT needed MATCHES "libQt6Widgets")
    message(FATAL_ERROR "The list of libraries could not be read:\n${output}")
endif()

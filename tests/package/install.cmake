# Installs the framework into a fresh prefix, moves that, and sees that nothing in it names the place where it was built
# or first installed.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")

set(first "${WORK_DIR}/prefix")
file(REMOVE_RECURSE "${first}" "${PREFIX}")
run("installing" "${CMAKE_COMMAND}" --install "${BINARY_DIR}" --prefix "${first}")
file(RENAME "${first}" "${PREFIX}")

file(GLOB_RECURSE package_files "${PREFIX}/*.cmake")
list(LENGTH package_files count)
if(count LESS 3)
    message(FATAL_ERROR "the package files are missing below ${PREFIX}")
endif()
foreach(file IN LISTS package_files)
    file(READ "${file}" text)
    foreach(place IN ITEMS "${SOURCE_DIR}/" "${BINARY_DIR}/" "${first}/")
        string(FIND "${text}" "${place}" position)
        if(NOT position EQUAL -1)
            message(FATAL_ERROR "${file} names ${place}")
        endif()
    endforeach()
endforeach()

file(GLOB_RECURSE private_headers "${PREFIX}/include/*Assertion.h" "${PREFIX}/include/*_p.h" "${PREFIX}/include/*LogFile.h")
if(private_headers)
    message(FATAL_ERROR "private headers were installed: ${private_headers}")
endif()

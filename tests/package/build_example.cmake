# Copies the example host NAME, builds it against the installed framework as a host author would, and runs it.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")

set(source "${WORK_DIR}/${NAME}")
file(REMOVE_RECURSE "${source}")
file(COPY "${SOURCE_DIR}/examples/${NAME}" DESTINATION "${WORK_DIR}")
build_against_prefix("${source}")

# The program must find the libraries of the prefix, not those of the build.
execute_process(COMMAND ldd "${source}-build/${NAME}" OUTPUT_VARIABLE libraries)
foreach(library IN ITEMS tq_hk pkBaseQt pkBase tq_utl)
    string(FIND "${libraries}" "=> ${PREFIX}/${LIBDIR}/lib${library}.so" position)
    string(FIND "${libraries}" "${BINARY_DIR}/lib" in_the_build)
    if(NOT libraries MATCHES "lib${library}[.]so" OR position EQUAL -1 OR NOT in_the_build EQUAL -1)
        message(FATAL_ERROR "lib${library} is not that of the prefix:\n${libraries}")
    endif()
endforeach()

set(PROGRAM "${source}-build/${NAME}")
set(HOME "${WORK_DIR}/installed-${NAME}-home")
include("${CMAKE_CURRENT_LIST_DIR}/run_${NAME}.cmake")

# Lets the installed tq-hk-new write a class of every kind, as a host author would, builds them against the prefix and
# runs their tests.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")

set(source "${WORK_DIR}/new host")
file(REMOVE_RECURSE "${source}" "${WORK_DIR}/own host")
function(new)
    run("tq-hk-new ${ARGN}" "${PREFIX}/bin/tq-hk-new" ${ARGN})
endfunction()

new(command AddWell --into "${source}")
new(document Survey --into "${source}" --namespace field::survey)
new(controller WellsController --into "${source}")
new(presentation WellsView --into "${source}" --namespace field)
new(panel Wells --into "${source}")
new(preferences WellPreferences --into "${source}")
build_against_prefix("${source}")

execute_process(COMMAND "${CMAKE_CTEST_COMMAND}" --test-dir "${source}-build" --output-on-failure
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "the tests of the new classes failed:\n${output}")
endif()
foreach(class IN ITEMS AddWell Survey WellsController WellsView Wells WellPreferences)
    if(NOT output MATCHES " ${class}(Test)?[.]")
        message(FATAL_ERROR "${class} was not tested:\n${output}")
    endif()
endforeach()

# In a project of the author's own nothing is changed.
file(WRITE "${WORK_DIR}/own host/CMakeLists.txt" "project(own)\n")
new(panel Wells --into "${WORK_DIR}/own host")
file(READ "${WORK_DIR}/own host/CMakeLists.txt" text)
if(NOT text STREQUAL "project(own)\n" OR NOT EXISTS "${WORK_DIR}/own host/Wells.cpp")
    message(FATAL_ERROR "CMakeLists.txt of a project of its own:\n${text}")
endif()

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
new(command RenameSurvey --into "${source}" --document Survey)
new(command CloseSurvey --into "${source}" --document Survey --namespace field)
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
foreach(class IN ITEMS AddWell Survey RenameSurvey CloseSurvey WellsController WellsView Wells WellPreferences)
    if(NOT output MATCHES " ${class}(Test)?[.]")
        message(FATAL_ERROR "${class} was not tested:\n${output}")
    endif()
endforeach()

# expect_namespace(<class> <namespace>): a command is where its document is, unless it is told where to be.
function(expect_namespace class namespace)
    file(READ "${source}/${class}.h" text)
    if(NOT text MATCHES "\nnamespace ${namespace} {\n" OR NOT text MATCHES "Survey& document,")
        message(FATAL_ERROR "${class} is not in ${namespace}, or takes no Survey:\n${text}")
    endif()
endfunction()
expect_namespace(RenameSurvey field::survey)
expect_namespace(CloseSurvey field)

# In a project of the author's own nothing is changed.
file(WRITE "${WORK_DIR}/own host/CMakeLists.txt" "project(own)\n")
new(panel Wells --into "${WORK_DIR}/own host")
file(READ "${WORK_DIR}/own host/CMakeLists.txt" text)
if(NOT text STREQUAL "project(own)\n" OR NOT EXISTS "${WORK_DIR}/own host/Wells.cpp")
    message(FATAL_ERROR "CMakeLists.txt of a project of its own:\n${text}")
endif()

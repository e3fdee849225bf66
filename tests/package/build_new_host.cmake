# Lets the installed tq-hk-new write a host, adds classes to it as its author would, builds it against the prefix, runs its
# tests, and uses the program.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/example.cmake")

set(folder "${WORK_DIR}/new hosts")
set(source "${folder}/survey") # of its name, in the current folder
file(REMOVE_RECURSE "${folder}")
file(MAKE_DIRECTORY "${folder}")
function(new)
    execute_process(COMMAND "${PREFIX}/bin/tq-hk-new" ${ARGN} WORKING_DIRECTORY "${folder}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "tq-hk-new ${ARGN} failed:\n${output}")
    endif()
endfunction()

new(host survey)
new(command AddWell --document Survey --into survey)
new(presentation WellsView --into survey)
new(controller WellsController --into survey)
new(preferences WellPreferences --into survey)

# The program with a user in it, who begins when its main loop does.
file(APPEND "${source}/CMakeLists.txt" "
find_package(Qt5 REQUIRED COMPONENTS Test)
add_executable(survey_used main.cpp \"${CMAKE_CURRENT_LIST_DIR}/new_host/User.cpp\")
target_link_libraries(survey_used PRIVATE classes tarqa::tq_hk_testkit Qt5::Test)
")
build_against_prefix("${source}")
if(NOT EXISTS "${source}-build/survey")
    message(FATAL_ERROR "there is no program survey")
endif()

execute_process(COMMAND "${CMAKE_CTEST_COMMAND}" --test-dir "${source}-build" --output-on-failure
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "the tests of the new host failed:\n${output}")
endif()
foreach(class IN ITEMS MainWindow Survey ChangeText HistoryPanel AddWell WellsView WellsController WellPreferences)
    if(NOT output MATCHES " ${class}(Test)?[.]")
        message(FATAL_ERROR "${class} was not tested:\n${output}")
    endif()
endforeach()

set(PROGRAM "${source}-build/survey_used")
set(HOME "${WORK_DIR}/new-host-home")
run_example("&File: &Preferences…, -, &Quit
&Edit: &Undo, &Redo, -
&Tools: &Change Text…, Wells View
&Help: Error &Log…
tool bar: &Undo, &Redo, -, &Change Text…, Wells View
started: no text, 0 steps
changed: north, 1 steps
changed: south, 2 steps
undone: north, 1 steps
redone: south, 2 steps
status bar: Wells View: Document 1
preferences: Well Preferences
")
expect_log(Survey "Background rendering" "Background rendering is ON
DO>\tChange Text: north - Succeeded.
DO>\tChange Text: south - Succeeded.
UNDO>\tChange Text: south - Succeeded.
DO>\tChange Text: south - Succeeded.
************** END OF ERROR LOG ***************
")

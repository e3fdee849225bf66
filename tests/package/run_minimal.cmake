# Runs the smallest host, PROGRAM, in a fresh HOME and checks its output, its exit code and what it left in the error log.
cmake_policy(VERSION 3.25)

file(REMOVE_RECURSE "${HOME}")
file(MAKE_DIRECTORY "${HOME}")
execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env "HOME=${HOME}" "XDG_CONFIG_HOME=${HOME}/config" "TMPDIR=${HOME}" "${PROGRAM}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}:\n${output}${errors}")
endif()

set(expected "Document 1 of type Notes
done: [buy a compass] [walk north]
undone: [buy a compass]
redone: [buy a compass] [walk north]
")
if(NOT output STREQUAL expected OR NOT errors STREQUAL "")
    message(FATAL_ERROR "expected:\n${expected}printed:\n${output}${errors}")
endif()

file(READ "${HOME}/config/tarqa/Minimal_1.log" log)
set(expected_end "************ ERROR LOG BEGIN  ************ 
DO>\tAdd note: buy a compass - Succeeded.
DO>\tAdd note: walk north - Succeeded.
UNDO>\tAdd note: walk north - Succeeded.
DO>\tAdd note: walk north - Succeeded.
************** END OF ERROR LOG ***************
")
string(FIND "${log}" "************ ERROR LOG BEGIN" begin)
string(SUBSTRING "${log}" "${begin}" -1 end)
if(NOT end STREQUAL expected_end)
    message(FATAL_ERROR "the error log should end with:\n${expected_end}it is:\n${log}")
endif()

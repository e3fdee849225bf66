# Included by the scripts that run an example host, PROGRAM.
cmake_policy(VERSION 3.25)

# run_example(<output> [<arguments>...]): runs it in a fresh HOME, without a display. It must end with 0, print exactly
# what is expected, and nothing to the standard error stream.
function(run_example expected)
    file(REMOVE_RECURSE "${HOME}")
    file(MAKE_DIRECTORY "${HOME}")
    file(CHMOD "${HOME}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE) # Qt complains of a runtime folder that others read
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -E env --unset=DISPLAY "HOME=${HOME}" "XDG_CONFIG_HOME=${HOME}/config"
            "XDG_RUNTIME_DIR=${HOME}" "TMPDIR=${HOME}" QT_QPA_PLATFORM=offscreen "${PROGRAM}" ${ARGN}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${PROGRAM} ended with ${result}:\n${output}${errors}")
    endif()
    if(NOT output STREQUAL expected OR NOT errors STREQUAL "")
        message(FATAL_ERROR "expected:\n${expected}printed:\n${output}${errors}")
    endif()
endfunction()

# expect_log(<product> <begin> <text>): what it left in its error log, from the line that begins with <begin>.
function(expect_log product begin expected)
    file(READ "${HOME}/config/tarqa/${product}_1.log" log)
    string(FIND "${log}" "${begin}" position)
    string(SUBSTRING "${log}" "${position}" -1 end)
    if(position EQUAL -1 OR NOT end STREQUAL expected)
        message(FATAL_ERROR "the error log should end with:\n${expected}it is:\n${log}")
    endif()
endfunction()

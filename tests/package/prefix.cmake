# Included by the scripts of this folder.
cmake_policy(VERSION 3.25)

# Where install.cmake leaves the installed framework; the blanks are there on purpose.
set(PREFIX "${WORK_DIR}/moved prefix")

# run(<what> <command>...): runs a command; the script fails with its output if the command does.
function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${what} failed (${result}):\n${output}")
    endif()
endfunction()

# build_against_prefix(<source folder>): configures and builds a project in <source folder>-build with the compiler of
# this build, knowing nothing but the prefix.
function(build_against_prefix source)
    file(REMOVE_RECURSE "${source}-build")
    set(flags "")
    if(SANITIZE)
        set(flags "-fsanitize=${SANITIZE}")
    endif()
    run("configuring ${source}" "${CMAKE_COMMAND}" -S "${source}" -B "${source}-build" -G "${GENERATOR}"
        -D "CMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}" -D "CMAKE_CXX_COMPILER=${COMPILER}"
        -D "CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}" -D "CMAKE_BUILD_TYPE=${BUILD_TYPE}"
        -D "CMAKE_CXX_FLAGS=${flags}" -D "CMAKE_PREFIX_PATH=${PREFIX}")
    run("building ${source}" "${CMAKE_COMMAND}" --build "${source}-build" --parallel 2)
endfunction()

# What tq-hk-new refuses: it says why, and writes nothing.
cmake_policy(VERSION 3.25)

set(folder "${WORK_DIR}/refused")

# expect_refusal(<reason> <arguments>...)
function(expect_refusal reason)
    execute_process(COMMAND "${SOURCE_DIR}/scaffolding/tq-hk-new" ${ARGN}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    string(FIND "${output}" "${reason}; nothing was written" position)
    if(result EQUAL 0 OR position EQUAL -1 OR output MATCHES "CMake")
        message(FATAL_ERROR "tq-hk-new ${ARGN} (${result}) should say '${reason}', and says:\n${output}")
    endif()
    file(GLOB written "${folder}/*")
    if(NOT written STREQUAL "${folder}/Wells.h")
        message(FATAL_ERROR "tq-hk-new ${ARGN} wrote ${written}")
    endif()
endfunction()

file(REMOVE_RECURSE "${folder}")
file(WRITE "${folder}/Wells.h" "mine")
expect_refusal("there is no kind 'widget'" widget Wells --into "${folder}")
expect_refusal("there is no kind 'extra'" panel Wells extra --into "${folder}")
expect_refusal("there is no kind '--into'" panel Wells --into)
expect_refusal("'' is no name for a class: a capital letter, then letters and digits" panel)
foreach(name IN ITEMS wells 3Wells Two-Wells "Two Wells" ../Wells Wells::All Wälle)
    expect_refusal("'${name}' is no name for a class: a capital letter, then letters and digits"
        panel "${name}" --into "${folder}")
endforeach()
foreach(namespace IN ITEMS 9wells Field "a b" "a::" "a:b")
    expect_refusal("'${namespace}' is no namespace: small letters, as in field::survey"
        panel Wells --into "${folder}" --namespace "${namespace}")
endforeach()
expect_refusal("${folder}/Wells.h is there already" panel Wells --into "${folder}")
file(READ "${folder}/Wells.h" text)
if(NOT text STREQUAL "mine")
    message(FATAL_ERROR "a file that was there was overwritten:\n${text}")
endif()

execute_process(COMMAND "${SOURCE_DIR}/scaffolding/tq-hk-new" --help RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0 OR NOT output MATCHES "^usage: tq-hk-new KIND NAME")
    message(FATAL_ERROR "--help (${result}):\n${output}")
endif()

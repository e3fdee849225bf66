# What tq-hk-new refuses: it says why, and writes nothing.
cmake_policy(VERSION 3.25)

set(folder "${WORK_DIR}/refused")

# expect_refusal(<reason> <arguments>...)
function(expect_refusal reason)
    execute_process(COMMAND "${SOURCE_DIR}/scaffolding/tq-hk-new" ${ARGN}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    string(FIND "${output}" "${reason}; nothing was written" position)
    if(result EQUAL 0 OR position EQUAL -1 OR output MATCHES "CMake (Error|Warning)")
        message(FATAL_ERROR "tq-hk-new ${ARGN} (${result}) should say '${reason}', and says:\n${output}")
    endif()
    file(GLOB written "${folder}/*")
    if(NOT written STREQUAL there)
        message(FATAL_ERROR "tq-hk-new ${ARGN} wrote ${written}, where there was ${there}")
    endif()
endfunction()

file(REMOVE_RECURSE "${folder}")
file(WRITE "${folder}/Wells.h" "mine")
set(there "${folder}/Wells.h")
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

# A document that a command is to change: there, with a text, and for commands only.
expect_refusal("there is no ${folder}/Survey.h" command AddWell --document Survey --into "${folder}")
expect_refusal("'../Survey' is no name for a class: a capital letter, then letters and digits"
    command AddWell --document ../Survey --into "${folder}")
expect_refusal("${folder}/Wells.h has no Wells with a text(), as tq-hk-new document writes it"
    command AddWell --document Wells --into "${folder}")
foreach(kind IN ITEMS document controller presentation panel preferences)
    expect_refusal("only a command takes --document" ${kind} NewWells --document Wells --into "${folder}")
endforeach()
expect_refusal("only a command takes --document" host survey --document Wells --into "${folder}")
expect_refusal("there is no kind '--document'" command AddWell --document)

# A host is called after its program, and has a folder of its own.
expect_refusal("'' is no name for a host: small letters and digits, as in survey or field-survey" host)
foreach(name IN ITEMS Survey 3survey "my survey" ../survey -survey survey- my--survey survey.app wälle)
    expect_refusal("'${name}' is no name for a host: small letters and digits, as in survey or field-survey"
        host "${name}" --into "${folder}")
endforeach()
foreach(name IN ITEMS test host_tests classes)
    expect_refusal("'${name}' is no name for a host: the build needs it" host ${name} --into "${folder}")
endforeach()
foreach(class IN ITEMS MainWindow ChangeText TestMain HistoryPanel)
    string(REGEX REPLACE "(.)([A-Z])" "\\1-\\2" name "${class}")
    string(TOLOWER "${name}" name)
    expect_refusal("'${name}' cannot be the name: ${class}.cpp would be two files" host ${name} --into "${folder}")
endforeach()
expect_refusal("'TestMain' cannot be the name: TestMain.cpp would be two files" document TestMain --into "${folder}")
file(WRITE "${folder}/MainWindow.h" "mine")
list(PREPEND there "${folder}/MainWindow.h")
expect_refusal("${folder}/MainWindow.h is there already" host survey --into "${folder}")
file(WRITE "${folder}/CMakeLists.txt" "project(own)")
list(PREPEND there "${folder}/CMakeLists.txt")
expect_refusal("${folder}/CMakeLists.txt is there already" host survey --into "${folder}")

execute_process(COMMAND "${SOURCE_DIR}/scaffolding/tq-hk-new" --help RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0 OR NOT output MATCHES "^usage: tq-hk-new KIND NAME")
    message(FATAL_ERROR "--help (${result}):\n${output}")
endif()

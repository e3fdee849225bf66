# Writes a new class of a host with its test, or a whole small host, from the templates beside this file:
#
#     cmake -D KIND=command -D NAME=AddWell [-D DOCUMENT=Survey] [-D NAMESPACE=host] [-D INTO=<folder>] -P new.cmake
#
# A folder without CMakeLists.txt gets one, which makes a project of its own; in one that was made so the class is added
# to its lists. Nothing that exists is overwritten.
cmake_minimum_required(VERSION 3.16)

set(kinds host command document controller presentation panel preferences)
set(templates "${CMAKE_CURRENT_LIST_DIR}/templates")
set(usage "usage: tq-hk-new KIND NAME [--document DOCUMENT] [--namespace NAMESPACE] [--into FOLDER]

  KIND       host, command, document, controller, presentation, panel or preferences. A host is a whole program: a window
             that shows a document, with a command that changes it, undo and redo, and a panel
  NAME       the class, in CamelCase: AddWell; of a host the program, in small letters: survey
  DOCUMENT   the class that a command changes, as \"tq-hk-new document\" has written it into the folder; default: any text
  NAMESPACE  of the class; default: that of DOCUMENT, or host
  FOLDER     where it is written; default: the current one, for a host a new one of its name. Without a CMakeLists.txt it
             gets one, of a project that builds the classes and runs their tests against the installed framework

Nothing that exists is overwritten; CMakeLists.txt gets lines for the new files.")

function(fail)
    list(JOIN ARGN "" text)
    message("tq-hk-new: ${text}; nothing was written. tq-hk-new --help tells more")
    message(FATAL_ERROR)
endfunction()

if(KIND STREQUAL "help" OR KIND STREQUAL "--help" OR KIND STREQUAL "-h")
    message("${usage}")
    return()
endif()

# --- what is asked for

# What could not be a target beside the others, or is one of CMake's own.
set(taken_names all classes clean depend edit_cache help host_tests install package package_source rebuild_cache test)

if(NOT KIND IN_LIST kinds)
    fail("there is no kind '${KIND}'")
endif()
if(KIND STREQUAL "host")
    if(NOT NAME MATCHES "^[a-z][a-z0-9]*([-_][a-z0-9]+)*$")
        fail("'${NAME}' is no name for a host: small letters and digits, as in survey or field-survey")
    endif()
    if(NAME IN_LIST taken_names)
        fail("'${NAME}' is no name for a host: the build needs it")
    endif()
elseif(NOT NAME MATCHES "^[A-Z][A-Za-z0-9]*$")
    fail("'${NAME}' is no name for a class: a capital letter, then letters and digits")
endif()
if(NAMESPACE AND NOT NAMESPACE MATCHES "^[a-z][a-z0-9_]*(::[a-z][a-z0-9_]*)*$")
    fail("'${NAMESPACE}' is no namespace: small letters, as in field::survey")
endif()

# The folder as the user writes it: in the current one unless it is named.
if(NOT INTO)
    set(INTO .)
    if(KIND STREQUAL "host")
        set(INTO "${NAME}")
    endif()
endif()
get_filename_component(INTO "${INTO}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")

# The document of a command: where it is and in which namespace is read in its header.
set(DOCUMENT_NAMESPACE "${NAMESPACE}")
if(DOCUMENT)
    if(NOT KIND STREQUAL "command")
        fail("only a command takes --document")
    endif()
    if(NOT DOCUMENT MATCHES "^[A-Z][A-Za-z0-9]*$")
        fail("'${DOCUMENT}' is no name for a class: a capital letter, then letters and digits")
    endif()
    if(NOT EXISTS "${INTO}/${DOCUMENT}.h")
        fail("there is no ${INTO}/${DOCUMENT}.h")
    endif()
    file(READ "${INTO}/${DOCUMENT}.h" header)
    if(NOT header MATCHES "class ${DOCUMENT} [^;]*{" OR NOT header MATCHES "std::string& text\\(\\)")
        fail("${INTO}/${DOCUMENT}.h has no ${DOCUMENT} with a text(), as tq-hk-new document writes it")
    endif()
    string(REGEX MATCH "namespace ([a-z0-9_:]+) {[^{}]*class ${DOCUMENT} [^;]*{" found "${header}")
    set(DOCUMENT_NAMESPACE "${CMAKE_MATCH_1}")
    if(NOT DOCUMENT_NAMESPACE)
        fail("${INTO}/${DOCUMENT}.h does not have ${DOCUMENT} in a namespace")
    endif()
    if(NOT NAMESPACE)
        set(NAMESPACE "${DOCUMENT_NAMESPACE}")
    endif()
endif()
if(NOT NAMESPACE)
    set(NAMESPACE host)
    set(DOCUMENT_NAMESPACE host)
endif()

# --- what is to be written: a list of files, and beside it of their templates and classes

set(planned)
set(planned_templates)
set(planned_classes)

# plan(<folder of templates> <class>)
function(plan folder class)
    file(GLOB files RELATIVE "${templates}" "${templates}/${folder}/*.in")
    foreach(file IN LISTS files)
        get_filename_component(written "${file}" NAME)
        string(REGEX REPLACE "\\.in$" "" written "${written}")
        string(REPLACE "Name" "${class}" written "${written}")
        if(EXISTS "${INTO}/${written}")
            fail("${INTO}/${written} is there already")
        endif()
        if(written IN_LIST planned OR written STREQUAL "TestMain.cpp")
            fail("'${NAME}' cannot be the name: ${written} would be two files")
        endif()
        list(APPEND planned "${written}")
        list(APPEND planned_templates "${file}")
        list(APPEND planned_classes "${class}")
    endforeach()
    set(planned "${planned}" PARENT_SCOPE)
    set(planned_templates "${planned_templates}" PARENT_SCOPE)
    set(planned_classes "${planned_classes}" PARENT_SCOPE)
endfunction()

# title_of(<out> <class>): the user reads AddWell as "Add Well".
function(title_of out class)
    string(REGEX REPLACE "([a-z0-9])([A-Z])" "\\1 \\2" title "${class}")
    set(${out} "${title}" PARENT_SCOPE)
endfunction()

set(PROJECT host)
set(PROGRAM "# Your program:\n# add_executable(host main.cpp)\n# target_link_libraries(host PRIVATE classes)")
if(KIND STREQUAL "host")
    if(EXISTS "${INTO}/CMakeLists.txt")
        fail("${INTO}/CMakeLists.txt is there already")
    endif()
    set(HOST "${NAME}")
    set(PROJECT "${NAME}")
    set(PROGRAM "add_executable(${NAME} main.cpp)\ntarget_link_libraries(${NAME} PRIVATE classes)")
    # field-survey has a FieldSurvey.
    set(HOST_CLASS "")
    string(REGEX MATCHALL "[a-z0-9]+" words "${NAME}")
    foreach(word IN LISTS words)
        string(SUBSTRING "${word}" 0 1 first)
        string(SUBSTRING "${word}" 1 -1 rest)
        string(TOUPPER "${first}" first)
        string(APPEND HOST_CLASS "${first}${rest}")
    endforeach()
    title_of(HOST_TITLE "${HOST_CLASS}")
    set(DOCUMENT "${HOST_CLASS}")
    set(COMMAND ChangeText)
    title_of(COMMAND_TITLE "${COMMAND}")
    set(PANEL HistoryPanel)
    plan(document "${DOCUMENT}")
    plan(document_command "${COMMAND}")
    plan(panel "${PANEL}")
    plan(host "${HOST_CLASS}")
elseif(KIND STREQUAL "command" AND DOCUMENT)
    plan(document_command "${NAME}")
else()
    plan("${KIND}" "${NAME}")
endif()
set(DOCUMENT_CLASS "${DOCUMENT}")
if(NOT DOCUMENT_NAMESPACE STREQUAL NAMESPACE)
    set(DOCUMENT_CLASS "::${DOCUMENT_NAMESPACE}::${DOCUMENT}")
endif()

# --- writing it

# write(<template> <file> <class>): the variables below are what the templates call it.
function(write template file NAME)
    title_of(TITLE "${NAME}")
    string(REPLACE " " "_" KEY "${TITLE}") # settings have AddWell as "add_well"
    string(TOLOWER "${KEY}" KEY)
    if(template MATCHES "^panel/" AND TITLE MATCHES "^(.+) Panel$") # which the user sees it is
        set(TITLE "${CMAKE_MATCH_1}")
    endif()
    # The controller that is shown by a presentation.
    string(REGEX REPLACE "(Presentation|View)$" "" CONTROLLER "${NAME}")
    string(APPEND CONTROLLER "Controller")
    configure_file("${templates}/${template}" "${INTO}/${file}" @ONLY NEWLINE_STYLE UNIX)
    message("${INTO}/${file}")
endfunction()

set(sources)
set(tests)
foreach(file IN LISTS planned)
    list(POP_FRONT planned_templates template)
    list(POP_FRONT planned_classes class)
    write("${template}" "${file}" "${class}")
    if(file MATCHES "Test\\.cpp$")
        list(APPEND tests "${file}")
    elseif(NOT file STREQUAL "main.cpp") # the program's own
        list(APPEND sources "${file}")
    endif()
endforeach()
list(SORT sources)
list(SORT tests)

# A project around it, unless there is one.
set(project_is_new FALSE)
if(NOT EXISTS "${INTO}/CMakeLists.txt")
    set(project_is_new TRUE)
    write(CMakeLists.txt.in CMakeLists.txt "${NAME}")
    if(NOT EXISTS "${INTO}/TestMain.cpp")
        write(TestMain.cpp.in TestMain.cpp "${NAME}")
    endif()
endif()

# add_to_list(<marker> <files...>): puts the files in front of the marker's line. Sets ${marker}_is_there.
file(READ "${INTO}/CMakeLists.txt" project)
function(add_to_list marker)
    string(FIND "${project}" "    # ${marker}: tq-hk-new" position)
    if(position EQUAL -1)
        set(lists_are_there FALSE PARENT_SCOPE)
        return()
    endif()
    set(lines "")
    foreach(file IN LISTS ARGN)
        string(APPEND lines "    ${file}\n")
    endforeach()
    string(REPLACE "    # ${marker}: tq-hk-new" "${lines}    # ${marker}: tq-hk-new" project "${project}")
    set(project "${project}" PARENT_SCOPE)
endfunction()

set(lists_are_there TRUE)
add_to_list(classes ${sources})
add_to_list(tests ${tests})
if(lists_are_there)
    file(WRITE "${INTO}/CMakeLists.txt" "${project}")
else()
    list(JOIN sources " " sources)
    list(JOIN tests " " tests)
    message("\nYour CMakeLists.txt has no lists of tq-hk-new. Add to your program or object library (a static library would\n"
        "drop factories):  ${sources}\nand to your tests, which link tarqa::tq_hk_testkit:  ${tests}")
endif()

# --- what comes next

if(project_is_new)
    message("\nTo build and test, with the folder where the framework is installed, unless that is the system's own:\n"
        "  cmake -S ${INTO} -B ${INTO}/build -D CMAKE_PREFIX_PATH=<prefix>\n"
        "  cmake --build ${INTO}/build && ctest --test-dir ${INTO}/build --output-on-failure")
endif()
if(KIND STREQUAL "host")
    message("\nTo run it:  ${INTO}/build/${NAME}")
elseif(KIND STREQUAL "panel")
    message("\nYour main window adds it before it reads its settings:  addPanel(new ${NAME}, QString());")
elseif(KIND STREQUAL "presentation")
    string(REGEX REPLACE "(Presentation|View)$" "" controller "${NAME}")
    message("\nIt can be chosen when there is the controller that it shows:  tq-hk-new controller ${controller}Controller")
elseif(KIND STREQUAL "command" AND DOCUMENT)
    message("\nTo run it:  CommandManager::instance().insert(boost::make_shared<${NAME}>(document, ...), false);")
elseif(KIND STREQUAL "command")
    message("\nTo run it:  CommandManager::instance().insert(boost::make_shared<${NAME}>(...), false);")
endif()

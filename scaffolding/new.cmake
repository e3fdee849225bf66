# Writes a new class of a host with its test, from the templates beside this file:
#
#     cmake -D KIND=command -D NAME=AddWell [-D NAMESPACE=host] [-D INTO=<folder>] -P new.cmake
#
# A folder without CMakeLists.txt gets one, which makes a project of its own; in one that was made so the class is added
# to its lists. Nothing that exists is overwritten.
cmake_minimum_required(VERSION 3.16)

set(kinds command document controller presentation panel preferences)
set(templates "${CMAKE_CURRENT_LIST_DIR}/templates")
set(usage "usage: tq-hk-new KIND NAME [--namespace NAMESPACE] [--into FOLDER]

  KIND       command, document, controller, presentation, panel or preferences
  NAME       the class, in CamelCase: AddWell
  NAMESPACE  of the class; default: host
  FOLDER     where it is written; default: the current one. Without a CMakeLists.txt it gets one, of a project that builds
             the classes and runs their tests against the installed framework

Nothing that exists is overwritten; CMakeLists.txt gets lines for the new files.")

function(fail)
    list(JOIN ARGN "" text)
    message("tq-hk-new: ${text}; nothing was written. tq-hk-new --help tells more")
    message(FATAL_ERROR)
endfunction()

# The folder as the user writes it: in the current one unless it is named.
if(NOT INTO)
    set(INTO .)
endif()
get_filename_component(INTO "${INTO}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
if(NOT NAMESPACE)
    set(NAMESPACE host)
endif()

if(KIND STREQUAL "help" OR KIND STREQUAL "--help" OR KIND STREQUAL "-h")
    message("${usage}")
    return()
endif()
if(NOT KIND IN_LIST kinds)
    fail("there is no kind '${KIND}'")
endif()
if(NOT NAME MATCHES "^[A-Z][A-Za-z0-9]*$")
    fail("'${NAME}' is no name for a class: a capital letter, then letters and digits")
endif()
if(NOT NAMESPACE MATCHES "^[a-z][a-z0-9_]*(::[a-z][a-z0-9_]*)*$")
    fail("'${NAMESPACE}' is no namespace: small letters, as in field::survey")
endif()

# What the templates call it. The user reads AddWell as "Add Well", and settings have it as "add_well".
string(REGEX REPLACE "([a-z0-9])([A-Z])" "\\1 \\2" TITLE "${NAME}")
string(REPLACE " " "_" KEY "${TITLE}")
string(TOLOWER "${KEY}" KEY)
# The controller that is shown by a presentation.
string(REGEX REPLACE "(Presentation|View)$" "" CONTROLLER "${NAME}")
string(APPEND CONTROLLER "Controller")

file(GLOB files RELATIVE "${templates}/${KIND}" "${templates}/${KIND}/*.in")
set(sources)
set(tests)
foreach(file IN LISTS files)
    string(REGEX REPLACE "\\.in$" "" written "${file}")
    string(REPLACE "Name" "${NAME}" written "${written}")
    if(EXISTS "${INTO}/${written}")
        fail("${INTO}/${written} is there already")
    endif()
    if(written MATCHES "Test\\.cpp$")
        list(APPEND tests "${written}")
    else()
        list(APPEND sources "${written}")
    endif()
endforeach()

# write(<template> <file>)
function(write template file)
    configure_file("${templates}/${template}" "${INTO}/${file}" @ONLY NEWLINE_STYLE UNIX)
    message("${INTO}/${file}")
endfunction()

foreach(file IN LISTS files)
    string(REGEX REPLACE "\\.in$" "" written "${file}")
    string(REPLACE "Name" "${NAME}" written "${written}")
    write("${KIND}/${file}" "${written}")
endforeach()

# A project around it, unless there is one.
set(project_is_new FALSE)
if(NOT EXISTS "${INTO}/CMakeLists.txt")
    set(project_is_new TRUE)
    write(CMakeLists.txt.in CMakeLists.txt)
    if(NOT EXISTS "${INTO}/TestMain.cpp")
        write(TestMain.cpp.in TestMain.cpp)
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

if(project_is_new)
    message("\nTo build and test, with the folder where the framework is installed, unless that is the system's own:\n"
        "  cmake -S ${INTO} -B ${INTO}/build -D CMAKE_PREFIX_PATH=<prefix>\n"
        "  cmake --build ${INTO}/build && ctest --test-dir ${INTO}/build --output-on-failure")
endif()
if(KIND STREQUAL "panel")
    message("\nYour main window adds it before it reads its settings:  addPanel(new ${NAME}, QString());")
elseif(KIND STREQUAL "command")
    message("\nTo run it:  CommandManager::instance().insert(boost::make_shared<${NAME}>(...), false);")
endif()

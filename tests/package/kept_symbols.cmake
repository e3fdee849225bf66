# No symbol that hosts may be linked with is lost as long as the ABI version stays. symbols.txt beside this file has those that
# there were; with UPDATE it is written anew from the libraries in LIBRARIES:  ./dev package --update-symbols
cmake_policy(VERSION 3.25)

set(kept_file "${CMAKE_CURRENT_LIST_DIR}/symbols.txt")
set(heading "# What the libraries export, written by ./dev package --update-symbols. ABI version")

# Functions and data that are no templates' or inline ones, and the tables of classes: the same with all compilers.
set(text "")
foreach(library IN ITEMS pkBase tq_utl pkBaseQt tq_hk)
    execute_process(COMMAND "${NM}" --dynamic --defined-only --demangle "${LIBRARIES}/lib${library}.so"
        COMMAND sed --quiet --regexp-extended
            -e "/typeinfo for .* [(]/d"
            -e "s/^[0-9a-f]* (T|[DBR]|[VDBR] (vtable|typeinfo) for) ((tarqa|pkBase)::.*)$/${library}: \\1 \\3/; t found"
            -e "d; :found; s/: [A-Z] /: /; p"
        COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C sort --unique
        OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    if(symbols STREQUAL "")
        message(FATAL_ERROR "${LIBRARIES}/lib${library}.so exports nothing")
    endif()
    string(APPEND text "${symbols}")
endforeach()

file(REAL_PATH "${LIBRARIES}/libtq_hk.so" library)
string(REGEX REPLACE ".*[.]so[.]([0-9]+[.][0-9]+).*" "\\1" abi "${library}")
if(UPDATE)
    file(WRITE "${kept_file}" "${heading} ${abi}\n${text}")
    return()
endif()

file(READ "${kept_file}" kept)
string(REGEX MATCHALL "[^\n]+" lines "${kept}")
list(POP_FRONT lines first)
if(NOT first STREQUAL "${heading} ${abi}")
    message(FATAL_ERROR "the ABI version is ${abi}, but tests/package/symbols.txt begins with\n${first}\n"
        "./dev package --update-symbols writes it anew")
endif()
list(LENGTH lines count)
if(count LESS 1000)
    message(FATAL_ERROR "tests/package/symbols.txt has only ${count} symbols")
endif()
set(lost)
foreach(line IN LISTS lines)
    string(FIND "\n${text}" "\n${line}\n" position)
    if(position EQUAL -1)
        list(APPEND lost "${line}")
    endif()
endforeach()
if(lost)
    list(JOIN lost "\n" lost)
    message(FATAL_ERROR "programs that use one of these cannot run with these libraries, though the ABI version is still ${abi}; "
        "see docs/packaging.md:\n${lost}")
endif()

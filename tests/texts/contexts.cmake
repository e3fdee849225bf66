# Collects the texts of a catalogue again and looks at what lupdate says: a text whose class it does not find would be
# kept under another context than the one the program asks for, and never be translated.
file(REMOVE "${WORK_DIR}/${NAME}.ts")
execute_process(
    COMMAND "${LUPDATE}" -no-obsolete -locations none ${FOLDERS} "@${FILES}" -ts "${WORK_DIR}/${NAME}.ts"
    OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT said MATCHES "Found ([0-9]+) source text")
    message(FATAL_ERROR "no texts were found:\n${said}")
endif()
if(CMAKE_MATCH_1 LESS LEAST)
    message(FATAL_ERROR "only ${CMAKE_MATCH_1} texts were found, and there are at least ${LEAST}")
endif()
string(REGEX REPLACE "(Scanning|Updating) [^\n]*\n|[ \t]*Found [^\n]*\n" "" complaints "${said}")
string(STRIP "${complaints}" complaints)
if(complaints)
    message(FATAL_ERROR "${complaints}")
endif()

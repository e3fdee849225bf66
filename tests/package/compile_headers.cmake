# Compiles every installed header as the first and only one of a source file, twice in a row, with the warnings of a
# careful host and nothing but the package to find it.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")

set(source "${WORK_DIR}/headers")
file(REMOVE_RECURSE "${source}")

file(GLOB_RECURSE headers RELATIVE "${PREFIX}/include" "${PREFIX}/include/*.h")
list(LENGTH headers count)
if(count LESS 40)
    message(FATAL_ERROR "there are only ${count} headers below ${PREFIX}/include")
endif()
set(sources "")
foreach(header IN LISTS headers)
    string(MAKE_C_IDENTIFIER "${header}" name)
    file(WRITE "${source}/${name}.cpp" "#include <${header}>\n#include <${header}>\n")
    string(APPEND sources "    ${name}.cpp\n")
endforeach()

file(WRITE "${source}/CMakeLists.txt" "cmake_minimum_required(VERSION 3.16)
project(headers LANGUAGES CXX)
find_package(tq_hk REQUIRED)
add_library(headers OBJECT\n${sources})
target_link_libraries(headers PRIVATE tarqa::tq_hk)
target_compile_options(headers PRIVATE -Wall -Wextra -Werror)
set_target_properties(headers PROPERTIES NO_SYSTEM_FROM_IMPORTED ON)
")
set(BUILD_TYPE "") # nothing is kept of it
build_against_prefix("${source}")

# CMake finds the framework in the packages both by /usr/lib and by /lib, which is a link to it: the folder in which it looks
# first depends on the PATH.
include("${CMAKE_CURRENT_LIST_DIR}/debs.cmake")

set(root "${WORK_DIR}/found")
file(REMOVE_RECURSE "${root}" "${root}-project")
extract(${RUNTIME} "${root}")
extract(${DEVELOPMENT} "${root}")
file(CREATE_LINK usr/lib "${root}/lib" SYMBOLIC)
file(WRITE "${root}-project/CMakeLists.txt" [[
cmake_minimum_required(VERSION 3.16)
project(found LANGUAGES CXX)
find_package(tq_hk REQUIRED COMPONENTS testkit)
get_target_property(folders tarqa::tq_hk INTERFACE_INCLUDE_DIRECTORIES)
if(tq_hk_folder OR NOT folders STREQUAL "${EXPECTED}")
    message(FATAL_ERROR "the headers of ${tq_hk_DIR} are in ${folders}, not in ${EXPECTED}")
endif()
]])

foreach(prefix IN ITEMS "${root}/usr" "${root}")
    file(REMOVE_RECURSE "${root}-project/build")
    run("finding the framework in ${prefix}" "${CMAKE_COMMAND}" -S "${root}-project" -B "${root}-project/build"
        -G "${GENERATOR}" -D "CMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}" -D "CMAKE_CXX_COMPILER=${COMPILER}"
        -D "CMAKE_PREFIX_PATH=${prefix}" -D "EXPECTED=${root}/usr/include")
endforeach()
file(REMOVE_RECURSE "${root}" "${root}-project")

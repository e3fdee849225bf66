# Runs the host with boreholes, PROGRAM: what it does to its document is seen in the table and in the error log, and
# --picture leaves a picture of the window.
include("${CMAKE_CURRENT_LIST_DIR}/example.cmake")

run_example("opened: 7 boreholes, 7 rows
added: 8 boreholes, 8 rows
undone: 7 boreholes, 7 rows
redone: 8 boreholes, 8 rows
deleted: 7 boreholes, 7 rows
undone: 8 boreholes, 8 rows
read again: 8 boreholes, 8 rows
" --check)
expect_log(Boreholes "Background rendering" "Background rendering is ON
DO>\tAdd Borehole: Hill - Succeeded.
UNDO>\tAdd Borehole: Hill - Succeeded.
DO>\tAdd Borehole: Hill - Succeeded.
DO>\tDelete Borehole: North 1 - Succeeded.
UNDO>\tDelete Borehole: North 1 - Succeeded.
************** END OF ERROR LOG ***************
")

run_example("" --picture "${HOME}/window.png")
file(READ "${HOME}/window.png" begin LIMIT 8 HEX)
file(SIZE "${HOME}/window.png" size)
if(NOT begin STREQUAL "89504e470d0a1a0a" OR size LESS 10000)
    message(FATAL_ERROR "${HOME}/window.png is no picture of a window: ${size} bytes, beginning with ${begin}")
endif()
expect_log(Boreholes "Background rendering" "Background rendering is ON
DO>\tAdd Borehole: Hill - Succeeded.
************** END OF ERROR LOG ***************
")

# Runs the smallest host, PROGRAM, in a fresh HOME and checks its output, its exit code and what it left in the error log.
include("${CMAKE_CURRENT_LIST_DIR}/example.cmake")

run_example("Document 1 of type Notes
done: [buy a compass] [walk north]
undone: [buy a compass]
redone: [buy a compass] [walk north]
")
expect_log(Minimal "************ ERROR LOG BEGIN" "************ ERROR LOG BEGIN  ************ 
DO>\tAdd note: buy a compass - Succeeded.
DO>\tAdd note: walk north - Succeeded.
UNDO>\tAdd note: walk north - Succeeded.
DO>\tAdd note: walk north - Succeeded.
************** END OF ERROR LOG ***************
")

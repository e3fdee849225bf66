# terrain_find_build_facts(): sets terrain_build_number, terrain_branch and terrain_build_date, from the version control
# where there is one.
function(terrain_find_build_facts)
    set(build_number 0)
    set(branch "")
    find_package(Git QUIET)
    if(GIT_FOUND)
        execute_process(COMMAND "${GIT_EXECUTABLE}" rev-list --count HEAD
            WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
            OUTPUT_VARIABLE count OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
        if(count MATCHES "^[0-9]+$")
            set(build_number "${count}")
        endif()
        execute_process(COMMAND "${GIT_EXECUTABLE}" symbolic-ref --short HEAD
            WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
            OUTPUT_VARIABLE branch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
    string(TIMESTAMP date "%Y-%m-%d" UTC) # that of SOURCE_DATE_EPOCH where it is set
    set(terrain_build_number "${build_number}" PARENT_SCOPE)
    set(terrain_branch "${branch}" PARENT_SCOPE)
    set(terrain_build_date "${date}" PARENT_SCOPE)
endfunction()

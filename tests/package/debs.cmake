# Included by the scripts that look at the Debian packages.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")

# Where build_debs.cmake leaves them.
set(DEBS_DIR "${WORK_DIR}/debs")

string(REGEX MATCH "^[0-9]+[.][0-9]+" ABI "${VERSION}")
set(RUNTIME "libtq-hk${ABI}")
set(DEVELOPMENT libtq-hk-dev)
set(PACKAGES ${RUNTIME} ${DEVELOPMENT})
if(HAS_TERRAIN)
    list(APPEND PACKAGES tarq-terrain)
endif()

# deb_of(<out> <package>)
function(deb_of out package)
    file(GLOB deb "${DEBS_DIR}/${package}_*.deb")
    if(NOT deb)
        message(FATAL_ERROR "there is no package ${package} in ${DEBS_DIR}")
    endif()
    set(${out} "${deb}" PARENT_SCOPE)
endfunction()

# extract(<package> <folder>): unpacks what it installs, below the folder.
function(extract package folder)
    deb_of(deb ${package})
    run("unpacking ${deb}" dpkg-deb --extract "${deb}" "${folder}")
endfunction()

# files_of(<out> <package>): what the package installs, without folders and the "/usr/" in front.
function(files_of out package)
    deb_of(deb ${package})
    execute_process(COMMAND dpkg-deb --fsys-tarfile "${deb}" COMMAND tar --list --file=-
        OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" lines "${text}")
    set(files)
    foreach(line IN LISTS lines)
        if(line MATCHES "^[.]/usr/(.*[^/])$")
            list(APPEND files "${CMAKE_MATCH_1}")
        elseif(NOT line MATCHES "/$")
            message(FATAL_ERROR "${package} holds ${line}, which is not below /usr")
        endif()
    endforeach()
    set(${out} "${files}" PARENT_SCOPE)
endfunction()

# expect_equal(<what> <is> <should be>)
function(expect_equal what is should_be)
    if(NOT is STREQUAL should_be)
        message(FATAL_ERROR "${what} is\n    ${is}\nand should be\n    ${should_be}")
    endif()
endfunction()

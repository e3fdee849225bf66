# Installs the packages below a folder, runs the host there as a user, and removes them again: nothing of theirs is left, and
# everything that is the user's. Only root may do that with dpkg; for others the packages are unpacked to run the host.
include("${CMAKE_CURRENT_LIST_DIR}/debs.cmake")

set(root "${WORK_DIR}/root")
set(HOME "${root}/home/ada")
set(scratch "${WORK_DIR}/root-scratch")
file(REMOVE_RECURSE "${root}" "${scratch}")
file(MAKE_DIRECTORY "${HOME}" "${scratch}")
set(debs)
foreach(package IN LISTS PACKAGES)
    deb_of(deb ${package})
    list(APPEND debs "${deb}")
endforeach()
# What they depend on is on this system, not below the folder.
set(dpkg dpkg "--root=${root}" "--log=${scratch}/dpkg.log" --force-depends)

# expect_states(<of each package>)
function(expect_states state)
    execute_process(COMMAND dpkg-query "--admindir=${root}/var/lib/dpkg" --show "--showformat=\${db:Status-Abbrev}"
        OUTPUT_VARIABLE states ERROR_QUIET) # it is an error that there are none
    list(TRANSFORM PACKAGES REPLACE ".+" "${state}" OUTPUT_VARIABLE expected)
    string(REPLACE ";" "" expected "${expected}")
    expect_equal("The state of the packages" "${states}" "${expected}")
endfunction()

# contents_of_home(<out>): the files, and what is in them.
function(contents_of_home out)
    file(GLOB_RECURSE files RELATIVE "${HOME}" "${HOME}/*")
    set(contents)
    foreach(file IN LISTS files)
        file(SHA256 "${HOME}/${file}" sum)
        list(APPEND contents "${file} ${sum}")
    endforeach()
    set(${out} "${contents}" PARENT_SCOPE)
endfunction()

# take_away(<option of dpkg>): nothing is left but dpkg's own folder, and the user's files as they were.
function(take_away option)
    contents_of_home(before)
    run("dpkg ${option}" ${dpkg} ${option} ${PACKAGES})
    expect_states("")
    # Every package has its list of files in this folder of dpkg's.
    file(GLOB left LIST_DIRECTORIES TRUE RELATIVE "${root}" "${root}/*" "${root}/var/*" "${root}/var/lib/*"
        "${root}/var/lib/dpkg/info/*.*")
    expect_equal("What is left after ${option}" "${left}" "home;var;var/lib;var/lib/dpkg")
    contents_of_home(after)
    expect_equal("What the user has after ${option}" "${after}" "${before}")
endfunction()

execute_process(COMMAND id --user OUTPUT_VARIABLE user OUTPUT_STRIP_TRAILING_WHITESPACE)
if(user EQUAL 0)
    file(MAKE_DIRECTORY "${root}/var/lib/dpkg/updates" "${root}/var/lib/dpkg/info")
    file(TOUCH "${root}/var/lib/dpkg/status")
    run("installing" ${dpkg} --install ${debs})
    expect_states("ii ")
else()
    foreach(package IN LISTS PACKAGES)
        extract(${package} "${root}")
    endforeach()
endif()

if(HAS_TERRAIN)
    set(program "${root}/usr/bin/tarq-terrain")
    # It finds the libraries of its own package, not those of the build.
    execute_process(COMMAND ldd "${program}" OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
    foreach(library IN ITEMS tq_hk pkBaseQt pkBase tq_utl)
        string(FIND "${libraries}" "lib${library}.so.${ABI} => ${root}/usr/bin/../${LIBDIR}/lib${library}.so.${ABI} " position)
        if(position EQUAL -1)
            message(FATAL_ERROR "lib${library} is not that of the package:\n${libraries}")
        endif()
    endforeach()

    # run_host(<out> <arguments>...)
    function(run_host out)
        execute_process(
            COMMAND "${CMAKE_COMMAND}" -E env --unset=DISPLAY --unset=LD_LIBRARY_PATH
                --unset=XDG_CONFIG_HOME "HOME=${HOME}" "TMPDIR=${scratch}" LANGUAGE=en LC_ALL=C.UTF-8 "${program}" ${ARGN}
            RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
        if(NOT result EQUAL 0 OR NOT errors STREQUAL "")
            message(FATAL_ERROR "${program} ${ARGN} ended with ${result}:\n${output}${errors}")
        endif()
        set(${out} "${output}" PARENT_SCOPE)
    endfunction()

    run_host(output --version)
    expect_equal("What --version prints" "${output}" "Tarq Terrain ${VERSION}\n")

    file(WRITE "${HOME}/heights.asc"
        "ncols 3\nnrows 3\nxllcorner 0\nyllcorner 0\ncellsize 10\n9 9 9\n9 1 9\n9 9 9\n")
    file(WRITE "${HOME}/script" "fill-sinks\nexport ${HOME}/filled.asc\n")
    run_host(output --batch "${HOME}/script" "${HOME}/heights.asc")
    file(READ "${HOME}/filled.asc" filled)
    if(NOT filled MATCHES "\n *9[.0]* 9[.0]* 9[.0]* *\n *9[.0]* 9[.0]* 9[.0]* *\n *9[.0]* 9[.0]* 9[.0]* *\n")
        message(FATAL_ERROR "the hollow was not filled:\n${output}${filled}")
    endif()
    if(NOT EXISTS "${HOME}/.config/tarqa/TarqTerrain_1.log")
        message(FATAL_ERROR "there is no error log:\n${output}")
    endif()
endif()

if(user EQUAL 0)
    take_away(--remove) # the same as below: there are no settings of the system's
    run("installing again" ${dpkg} --install ${debs})
    run("installing over itself" ${dpkg} --install ${debs})
    expect_states("ii ")
    take_away(--purge)
endif()
file(REMOVE_RECURSE "${root}" "${scratch}")

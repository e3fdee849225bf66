# Installs the packages below a folder, runs the host there, and removes them again. Only root may do that with dpkg; for
# others the packages are unpacked to run the host.
include("${CMAKE_CURRENT_LIST_DIR}/debs.cmake")

set(root "${WORK_DIR}/root")
set(HOME "${WORK_DIR}/root-home")
file(REMOVE_RECURSE "${root}" "${HOME}")
file(MAKE_DIRECTORY "${root}" "${HOME}")
set(debs)
foreach(package IN LISTS PACKAGES)
    deb_of(deb ${package})
    list(APPEND debs "${deb}")
endforeach()

execute_process(COMMAND id --user OUTPUT_VARIABLE user OUTPUT_STRIP_TRAILING_WHITESPACE)
if(user EQUAL 0)
    file(MAKE_DIRECTORY "${root}/var/lib/dpkg/updates" "${root}/var/lib/dpkg/info")
    file(TOUCH "${root}/var/lib/dpkg/status")
    # What they depend on is on this system, not below the folder.
    set(dpkg dpkg "--root=${root}" "--log=${HOME}/dpkg.log" --force-depends)
    run("installing" ${dpkg} --install ${debs})
    execute_process(COMMAND dpkg-query "--admindir=${root}/var/lib/dpkg" --show "--showformat=\${db:Status-Abbrev}"
        OUTPUT_VARIABLE states COMMAND_ERROR_IS_FATAL ANY)
    list(TRANSFORM PACKAGES REPLACE ".+" "ii " OUTPUT_VARIABLE expected)
    string(REPLACE ";" "" expected "${expected}")
    expect_equal("The state of the packages" "${states}" "${expected}")
else()
    foreach(deb IN LISTS debs)
        run("unpacking" dpkg-deb --extract "${deb}" "${root}")
    endforeach()
endif()

if(HAS_TERRAIN)
    set(program "${root}/usr/bin/tarq-terrain")
    # It finds the libraries of its own package, not those of the build.
    execute_process(COMMAND ldd "${program}" OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
    foreach(library IN ITEMS tq_hk pkBaseQt pkBase tq_utl)
        string(FIND "${libraries}" "lib${library}.so.${ABI} => ${root}/usr/bin/../lib/lib${library}.so.${ABI} " position)
        if(position EQUAL -1)
            message(FATAL_ERROR "lib${library} is not that of the package:\n${libraries}")
        endif()
    endforeach()

    # run_host(<out> <arguments>...)
    function(run_host out)
        execute_process(
            COMMAND "${CMAKE_COMMAND}" -E env --unset=DISPLAY --unset=LD_LIBRARY_PATH "HOME=${HOME}"
                "XDG_CONFIG_HOME=${HOME}/config" "TMPDIR=${HOME}" LANGUAGE=en LC_ALL=C.UTF-8 "${program}" ${ARGN}
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
endif()

if(user EQUAL 0)
    run("removing" ${dpkg} --purge ${PACKAGES})
    # Every package has its list of files in this folder of dpkg's.
    file(GLOB left LIST_DIRECTORIES TRUE "${root}/*" "${root}/var/lib/dpkg/info/*.*")
    expect_equal("What is left" "${left}" "${root}/var")
endif()
file(REMOVE_RECURSE "${root}")

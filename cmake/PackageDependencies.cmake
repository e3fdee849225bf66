# Read by cpack before it makes the packages: adds to each the packages of the libraries that its binaries are linked with.
#
# What cpack itself does for that would bring scripts that call ldconfig along, in place of the trigger, and would pass over
# libraries of which it is not known what package they come from.

find_program(HK_SHLIBDEPS dpkg-shlibdeps)
if(NOT HK_SHLIBDEPS)
    message(FATAL_ERROR "dpkg-shlibdeps is missing; it comes with the Debian package dpkg-dev")
endif()

# hk_add_dependencies(<component> <binaries>...)
function(hk_add_dependencies component)
    # It reads which packages are made, and looks there for the libraries of their own.
    set(folder "${CPACK_PACKAGE_DIRECTORY}/_CPack_Packages/dependencies")
    file(WRITE "${folder}/debian/control" "")
    execute_process(
        COMMAND "${HK_SHLIBDEPS}" "-L${CPACK_HK_SHLIBS}" "-x${CPACK_HK_RUNTIME_PACKAGE}" -O ${ARGN}
        WORKING_DIRECTORY "${folder}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT result EQUAL 0 OR NOT output MATCHES "^shlibs:Depends=(.+)")
        message(FATAL_ERROR "dpkg-shlibdeps failed (${result}):\n${output}\n${errors}")
    endif()
    set(depends "${CMAKE_MATCH_1}")
    if(CPACK_DEBIAN_${component}_PACKAGE_DEPENDS)
        string(PREPEND depends "${CPACK_DEBIAN_${component}_PACKAGE_DEPENDS}, ")
    endif()
    set(CPACK_DEBIAN_${component}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
endfunction()

foreach(component IN ITEMS RUNTIME DEVELOPMENT TERRAIN)
    if(CPACK_HK_${component}_BINARIES)
        hk_add_dependencies(${component} ${CPACK_HK_${component}_BINARIES})
    endif()
endforeach()

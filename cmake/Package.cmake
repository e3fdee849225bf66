# Debian packages, made by cpack from what is installed; the COMPONENT of each install() says which holds it:
#
#   runtime      libtq-hk<MAJOR>.<MINOR>  the shared libraries; those of two ABI versions can be installed together
#   development  libtq-hk-dev             headers, package files, links for the linker: what a host is built with
#   terrain      tarq-terrain             the terrain host
#
# The target "packages" builds what they hold and leaves them in build/packages.

set(HK_MAINTAINER "Tarq <packages@tarq.invalid>")
set(HK_RUNTIME_PACKAGE "libtq-hk${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")

# hk_gzip(<file> <compressed file>): as Debian wants manual pages and changelogs.
function(hk_gzip file compressed)
    execute_process(COMMAND gzip -9 --no-name --stdout "${file}" OUTPUT_FILE "${compressed}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# hk_install_manual_page(<component> <page>): of a program; <page>.in is its text, in the language of the man macros.
function(hk_install_manual_page component page)
    if(WIN32)
        return()
    endif()
    string(REGEX MATCH "[0-9]$" section "${page}")
    set(written "${CMAKE_CURRENT_BINARY_DIR}/man/${page}")
    configure_file("${page}.in" "${written}" @ONLY)
    hk_gzip("${written}" "${written}.gz")
    install(FILES "${written}.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}" COMPONENT ${component})
endfunction()

# hk_install_package_documents(<component> <package>): what each Debian package has to hold about itself.
function(hk_install_package_documents component package)
    set(folder "${PROJECT_BINARY_DIR}/package")
    install(FILES "${PROJECT_SOURCE_DIR}/cmake/package/copyright" "${folder}/changelog.gz" "${folder}/CHANGELOG.md.gz"
        DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}" COMPONENT ${component})
    # What lintian finds in the package and is as it has to be, with the reasons.
    set(overrides "${PROJECT_SOURCE_DIR}/cmake/package/${package}.lintian-overrides")
    if(EXISTS "${overrides}")
        install(FILES "${overrides}" DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides"
            RENAME ${package} COMPONENT ${component})
    endif()
endfunction()

# hk_write_shlibs(<file> <package> <libraries>...): their names as dpkg-shlibdeps wants them, for packages of hosts: patches
# keep the ABI, see docs/packaging.md.
function(hk_write_shlibs file package)
    set(lines)
    foreach(target IN LISTS ARGN)
        get_target_property(abi ${target} SOVERSION)
        string(APPEND lines "lib${target} ${abi} ${package} (>= ${PROJECT_VERSION})\n")
    endforeach()
    file(WRITE "${file}" "${lines}")
endfunction()

# Called last, when all that is installed is known.
function(hk_add_packages)
    set(folder "${PROJECT_BINARY_DIR}/package")
    file(MAKE_DIRECTORY "${folder}")
    hk_gzip("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${folder}/CHANGELOG.md.gz")
    set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
    # Debian's tools read one of another form.
    string(TIMESTAMP HK_DATE "%a, %d %b %Y 00:00:00 +0000" UTC) # that of SOURCE_DATE_EPOCH where it is set
    configure_file("${PROJECT_SOURCE_DIR}/cmake/package/changelog.in" "${folder}/changelog" @ONLY)
    hk_gzip("${folder}/changelog" "${folder}/changelog.gz")
    hk_install_package_documents(runtime "${HK_RUNTIME_PACKAGE}")
    hk_install_package_documents(development libtq-hk-dev)

    set(libraries tq_utl pkBase pkBaseQt tq_hk)
    hk_write_shlibs("${folder}/runtime/shlibs" ${HK_RUNTIME_PACKAGE} ${libraries})
    get_property(installed GLOBAL PROPERTY HK_INSTALLED_TARGETS)
    list(APPEND installed ${libraries})
    list(REMOVE_DUPLICATES installed)

    set(CPACK_GENERATOR DEB)
    set(CPACK_COMPONENTS_ALL runtime development)
    set(CPACK_VERBATIM_VARIABLES TRUE)
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # or it comes before the first line of each package's own
    set(CPACK_STRIP_FILES TRUE)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
        OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/cmake/PackageDependencies.cmake")
    set(CPACK_PACKAGE_DIRECTORY "${folder}")
    set(CPACK_DEB_COMPONENT_INSTALL TRUE)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${HK_MAINTAINER}")
    set(CPACK_DEBIAN_PACKAGE_SOURCE housekeeping)
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
    set(CPACK_HK_RUNTIME_PACKAGE "${HK_RUNTIME_PACKAGE}")
    set(CPACK_HK_SHLIBS "${folder}/runtime/shlibs")

    set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${HK_RUNTIME_PACKAGE}")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "application framework for geoscientific modelling - libraries
Documents, undoable commands, controllers, messages, an error log, quick
help and the shell of the main window for desktop applications with Qt 5.
These are the shared libraries, which programs that are built on the
framework need to run.")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/package/triggers;${folder}/runtime/shlibs")
    list(TRANSFORM libraries REPLACE "(.+)" "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/lib\\1.so.${PROJECT_VERSION}"
        OUTPUT_VARIABLE CPACK_HK_RUNTIME_BINARIES)

    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtq-hk-dev)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "application framework for geoscientific modelling - development files
Headers, and the files by which CMake and pkg-config find them and the
libraries: what is needed to build a program on the framework.")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${HK_RUNTIME_PACKAGE} (= ${PROJECT_VERSION}), qtbase5-dev (>= 5.15), \
libqt5webkit5-dev, libboost-dev (>= 1.74)")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "cmake, pkgconf, libgtest-dev") # the last for tests from templates
    if(TARGET tq_hk_testkit)
        hk_write_shlibs("${folder}/development/shlibs" libtq-hk-dev tq_hk_testkit)
        set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_CONTROL_EXTRA
            "${PROJECT_SOURCE_DIR}/cmake/package/triggers;${folder}/development/shlibs")
        set(CPACK_HK_DEVELOPMENT_BINARIES "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/libtq_hk_testkit.so.${PROJECT_VERSION}")
    endif()

    if(TARGET tarq-terrain)
        hk_install_package_documents(terrain tarq-terrain)
        list(APPEND CPACK_COMPONENTS_ALL terrain)
        list(APPEND installed tarq-terrain)
        set(CPACK_DEBIAN_TERRAIN_PACKAGE_NAME tarq-terrain)
        set(CPACK_DEBIAN_TERRAIN_PACKAGE_SECTION science)
        set(CPACK_DEBIAN_TERRAIN_DESCRIPTION "modeller of rasters of heights
Shows rasters of heights as shaded relief, as contour lines and in three
dimensions, smooths, cuts, corrects and triangulates them with commands
that can be undone, and runs scripts without a display. Reads every format
of rasters that GDAL reads.")
        # The scenes import QtQuick, which no library tells.
        set(CPACK_DEBIAN_TERRAIN_PACKAGE_DEPENDS "${HK_RUNTIME_PACKAGE} (= ${PROJECT_VERSION}), qml-module-qtquick2")
        set(CPACK_HK_TERRAIN_BINARIES "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tarq-terrain")
    endif()
    include(CPack)

    add_custom_target(packages
        COMMAND "${CMAKE_CPACK_COMMAND}" --config "${PROJECT_BINARY_DIR}/CPackConfig.cmake" -G DEB -C $<CONFIG>
            -B "${PROJECT_SOURCE_DIR}/build/packages"
        COMMAND "${CMAKE_COMMAND}" -E rm -rf "${PROJECT_SOURCE_DIR}/build/packages/_CPack_Packages"
        COMMENT "Making Debian packages in build/packages"
        USES_TERMINAL
        VERBATIM)
    add_dependencies(packages ${installed})
endfunction()

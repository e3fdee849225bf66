# The rules that the shared libraries have in common: alias, export header, version, installation.
#
# What is installed belongs to a component, "runtime", "development" or "terrain"; Package.cmake makes a package of each.
include(GenerateExportHeader)
include(CMakePackageConfigHelpers)

# Calls inside a library need no detour by the table of what others may replace; Qt's libraries are built so, too. Not in
# debug builds, whose tests do replace, nor under sanitizers.
include(CheckLinkerFlag)
check_linker_flag(CXX -Wl,-Bsymbolic-functions HK_LINKER_BINDS_FUNCTIONS)
if(HK_LINKER_BINDS_FUNCTIONS AND NOT HK_SANITIZE)
    set(HK_BINDS_OWN_FUNCTIONS TRUE)
else()
    set(HK_BINDS_OWN_FUNCTIONS FALSE)
endif()

set(HK_PACKAGE tq_hk)
set(HK_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/${HK_PACKAGE}")

# hk_add_library(<target> EXPORT_DIR <include folder of the generated export header>
#                INCLUDE <public include folders> SOURCES <files> [COMPONENT <of the library; default: runtime>])
function(hk_add_library target)
    cmake_parse_arguments(ARG "" "EXPORT_DIR;COMPONENT" "INCLUDE;SOURCES" ${ARGN})
    if(NOT ARG_COMPONENT)
        set(ARG_COMPONENT runtime)
    endif()
    add_library(${target} SHARED ${ARG_SOURCES})
    add_library(tarqa::${target} ALIAS ${target})
    hk_enable_warnings(${target})
    hk_enable_sanitizers(${target})
    target_compile_features(${target} PUBLIC cxx_std_17)
    if(HK_BINDS_OWN_FUNCTIONS)
        target_link_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-Wl,-Bsymbolic-functions>)
    endif()

    set(generated "${CMAKE_CURRENT_BINARY_DIR}/generated")
    generate_export_header(${target} EXPORT_FILE_NAME "${generated}/${ARG_EXPORT_DIR}/${target}_export.h")
    target_include_directories(${target} PUBLIC
        "$<BUILD_INTERFACE:${generated}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    foreach(folder IN LISTS ARG_INCLUDE)
        target_include_directories(${target} PUBLIC "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/${folder}>")
        install(DIRECTORY "${folder}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
            FILES_MATCHING PATTERN "*.h")
    endforeach()
    install(DIRECTORY "${generated}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
        FILES_MATCHING PATTERN "*.h")

    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT ${HK_PACKAGE}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${ARG_COMPONENT} NAMELINK_COMPONENT development
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${ARG_COMPONENT})
    set_property(GLOBAL APPEND PROPERTY HK_INSTALLED_TARGETS ${target})
endfunction()

# Writes and installs the package files: find_package(tq_hk), and pkg-config for hosts that are built by something else,
# give tarqa::tq_hk and the three libraries below it.
function(hk_install_package)
    install(EXPORT ${HK_PACKAGE}Targets NAMESPACE tarqa:: DESTINATION "${HK_PACKAGE_DIR}" COMPONENT development)
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${HK_PACKAGE}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/${HK_PACKAGE}Config.cmake" INSTALL_DESTINATION "${HK_PACKAGE_DIR}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/${HK_PACKAGE}ConfigVersion.cmake"
        COMPATIBILITY SameMinorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/${HK_PACKAGE}Config.cmake"
        "${PROJECT_BINARY_DIR}/${HK_PACKAGE}ConfigVersion.cmake" DESTINATION "${HK_PACKAGE_DIR}"
        COMPONENT development)

    set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
    file(RELATIVE_PATH prefix_from_pkgconfig "/prefix/${pkgconfig_dir}" "/prefix")
    string(REGEX REPLACE "/$" "" prefix_from_pkgconfig "${prefix_from_pkgconfig}")
    set(names ${HK_PACKAGE})
    if(TARGET ${HK_PACKAGE}_testkit)
        list(APPEND names ${HK_PACKAGE}_testkit)
    endif()
    foreach(name IN LISTS names)
        configure_file("${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
        install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${pkgconfig_dir}" COMPONENT development)
    endforeach()
endfunction()

# The rules that the four shared libraries have in common: alias, export header, version, installation.
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
#                INCLUDE <public include folders> SOURCES <files>)
function(hk_add_library target)
    cmake_parse_arguments(ARG "" "EXPORT_DIR" "INCLUDE;SOURCES" ${ARGN})
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
        install(DIRECTORY "${folder}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
    endforeach()
    install(DIRECTORY "${generated}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")

    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT ${HK_PACKAGE}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endfunction()

# Writes and installs the package files: find_package(tq_hk) gives tarqa::tq_hk and the three libraries below it.
function(hk_install_package)
    install(EXPORT ${HK_PACKAGE}Targets NAMESPACE tarqa:: DESTINATION "${HK_PACKAGE_DIR}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${HK_PACKAGE}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/${HK_PACKAGE}Config.cmake" INSTALL_DESTINATION "${HK_PACKAGE_DIR}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/${HK_PACKAGE}ConfigVersion.cmake"
        COMPATIBILITY SameMinorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/${HK_PACKAGE}Config.cmake"
        "${PROJECT_BINARY_DIR}/${HK_PACKAGE}ConfigVersion.cmake" DESTINATION "${HK_PACKAGE_DIR}")
endfunction()

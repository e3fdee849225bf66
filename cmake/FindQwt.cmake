# Finds Qwt, the plots of technical programs, as it is built for Qt 5: the imported target Qwt::Qwt. Distributions
# install it under several names, and none brings a package file for CMake.
find_path(Qwt_INCLUDE_DIR qwt_plot.h PATH_SUFFIXES qwt qwt-qt5 qt5/qwt qwt6 qwt6-qt5)
find_library(Qwt_LIBRARY NAMES qwt-qt5 qwt6-qt5 qwt)
mark_as_advanced(Qwt_INCLUDE_DIR Qwt_LIBRARY)

if(Qwt_INCLUDE_DIR AND EXISTS "${Qwt_INCLUDE_DIR}/qwt_global.h")
    file(STRINGS "${Qwt_INCLUDE_DIR}/qwt_global.h" version_line REGEX "define +QWT_VERSION_STR")
    string(REGEX REPLACE ".*\"([0-9.]+)\".*" "\\1" Qwt_VERSION "${version_line}")
    unset(version_line)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt REQUIRED_VARS Qwt_LIBRARY Qwt_INCLUDE_DIR VERSION_VAR Qwt_VERSION)

if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
    find_package(Qt5 REQUIRED COMPONENTS Widgets)
    add_library(Qwt::Qwt UNKNOWN IMPORTED)
    set_target_properties(Qwt::Qwt PROPERTIES
        IMPORTED_LOCATION "${Qwt_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Qwt_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES Qt5::Widgets)
endif()

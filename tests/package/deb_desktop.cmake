# The desktop shows the terrain host in its menu, with its icon, and offers it for the files that it opens.
include("${CMAKE_CURRENT_LIST_DIR}/debs.cmake")

files_of(files tarq-terrain)
extract(tarq-terrain "${WORK_DIR}/desktop")
file(READ "${WORK_DIR}/desktop/usr/share/applications/tarq-terrain.desktop" entry)
file(READ "${WORK_DIR}/desktop/usr/share/mime/packages/tarq-terrain.xml" types)
file(REMOVE_RECURSE "${WORK_DIR}/desktop")

# value_of(<out> <key>)
function(value_of out key)
    if(NOT entry MATCHES "\n${key}=([^\n]+)\n")
        message(FATAL_ERROR "the entry has no ${key}:\n${entry}")
    endif()
    set(${out} "${CMAKE_MATCH_1}" PARENT_SCOPE)
endfunction()

if(NOT entry MATCHES "^[[]Desktop Entry[]]\n")
    message(FATAL_ERROR "the entry begins in another way:\n${entry}")
endif()
foreach(expected IN ITEMS "Type=Application" "Name=Tarq Terrain" "Exec=tarq-terrain %F" "TryExec=tarq-terrain"
        "Terminal=false" "StartupWMClass=TarqTerrain") # the last is how its windows are recognised
    string(REGEX MATCH "^([A-Za-z]+)=(.+)$" expected "${expected}")
    set(should_be "${CMAKE_MATCH_2}")
    value_of(is ${CMAKE_MATCH_1})
    expect_equal("${expected}: it" "${is}" "${should_be}")
endforeach()
value_of(categories Categories)
if(NOT categories MATCHES "(^|;)Science;")
    message(FATAL_ERROR "it is shown among ${categories}")
endif()

value_of(icon Icon)
foreach(size_and_type IN ITEMS "16x16;png" "64x64;png" "scalable;svg")
    list(GET size_and_type 0 size)
    list(GET size_and_type 1 type)
    if(NOT "share/icons/hicolor/${size}/apps/${icon}.${type}" IN_LIST files)
        message(FATAL_ERROR "there is no icon ${icon} of the size ${size}")
    endif()
endforeach()

# The desktop knows the first kind itself; what is the package's own must be described in the package.
value_of(kinds MimeType)
expect_equal("What it opens" "${kinds}" "image/tiff;application/x-ascii-grid;")
if(NOT types MATCHES "<mime-type type=\"application/x-ascii-grid\">.*<glob pattern=\"[*][.]asc\"/>")
    message(FATAL_ERROR "ASCII grids are not described:\n${types}")
endif()

# Puts the navigation into each HTML page of the folder FOLDER, in the place of the line @NAVIGATION@, and marks the page
# that one is on. The text of the navigation is the file NAVIGATION. Run with cmake -P.
cmake_minimum_required(VERSION 3.25)

file(READ "${NAVIGATION}" navigation)
file(GLOB pages RELATIVE "${FOLDER}" "${FOLDER}/*.html")
foreach(page IN LISTS pages)
    file(READ "${FOLDER}/${page}" text)
    string(REPLACE "<li><a href=\"${page}\">" "<li class=\"current\"><a href=\"${page}\">" own "${navigation}")
    string(REPLACE "@NAVIGATION@\n" "${own}" text "${text}")
    file(WRITE "${FOLDER}/${page}" "${text}")
endforeach()

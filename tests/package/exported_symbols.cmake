# The framework's library exports the classes that are marked for it, and neither its private ones nor what stands in
# anonymous namespaces.
include("${CMAKE_CURRENT_LIST_DIR}/prefix.cmake")

file(GLOB_RECURSE library "${PREFIX}/lib*/libtq_hk.so")
execute_process(COMMAND "${NM}" --dynamic --defined-only --demangle "${library}"
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)

foreach(name IN ITEMS "CommandManager::insert(" "DocumentManager::create_document(" "ErrorProtocol::log_message(")
    string(FIND "${symbols}" " T tarqa::housekeeping::${name}" position)
    if(position EQUAL -1)
        message(FATAL_ERROR "${library} does not export ${name}")
    endif()
endforeach()
foreach(name IN ITEMS "tarqa::housekeeping::log_file::" "tarqa::housekeeping::LogHolder::" "(anonymous namespace)")
    string(FIND "${symbols}" "${name}" position)
    if(NOT position EQUAL -1)
        message(FATAL_ERROR "${library} exports ${name}")
    endif()
endforeach()

# hk_add_test(<name> SOURCES <files> [LIBS <libraries>])
#
# One test executable. Every test case runs in a process of its own, so that registries, singletons and static counters
# start fresh, and all may run in parallel.
include(GoogleTest)

function(hk_add_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;DEFINITIONS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    hk_enable_warnings(${name})
    # Functions and lines are enough for the stacks of tests, and their objects are most of the build.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-g1>)
    hk_enable_sanitizers(${name})
    target_link_libraries(${name} PRIVATE hk_test_main ${ARG_LIBS})
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINITIONS})
    set(seconds 120)
    if(HK_SANITIZE) # which take several times as long
        set(seconds 600)
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT ${seconds} PROPERTIES TIMEOUT ${seconds})
endfunction()

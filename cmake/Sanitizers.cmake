# hk_enable_sanitizers(<target>): compiles and links the target with the sanitizers named in HK_SANITIZE.
function(hk_enable_sanitizers target)
    if(HK_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${HK_SANITIZE} -fno-omit-frame-pointer -g)
        target_link_options(${target} PRIVATE -fsanitize=${HK_SANITIZE})
        if(HK_BUILD_FUZZERS) # a fuzzer has to end where something is wrong, or the input is lost
            target_compile_options(${target} PRIVATE -fno-sanitize-recover=all)
        endif()
        get_target_property(type ${target} TYPE)
        if(type STREQUAL EXECUTABLE AND HK_SANITIZE MATCHES address)
            target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/KeepLoaded.cpp)
        endif()
    endif()
endfunction()

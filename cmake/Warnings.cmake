# hk_enable_warnings(<target>): the warnings of the house, as errors where HK_WERROR says so.
function(hk_enable_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Woverloaded-virtual -Wshadow
        $<$<BOOL:${HK_WERROR}>:-Werror>)
endfunction()

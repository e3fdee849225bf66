# ccache and mold make a rebuild several times faster; both are optional.
find_program(HK_CCACHE ccache)
if(HK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${HK_CCACHE}")
endif()

find_program(HK_MOLD mold)
if(HK_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

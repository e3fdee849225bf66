// Part of programs that are built with AddressSanitizer: libraries that are closed stay loaded. A graphics
// driver that is unloaded takes along what points to its memory, and its name, by which its leaks are told
// from ours. OpenSceneGraph's plug-ins are closed as ever: they keep nothing, and the end of the main loop
// is there to close them.

#include <cstring>
#include <dlfcn.h>
#include <link.h>

extern "C" __attribute__((visibility("default"))) int dlclose(void* p_library)
{
    using Close = int (*)(void*);
    link_map* p_map = nullptr;
    if (dlinfo(p_library, RTLD_DI_LINKMAP, &p_map) != 0 || !std::strstr(p_map->l_name, "osgPlugins"))
        return 0;
    static const auto s_close = reinterpret_cast<Close>(dlsym(RTLD_NEXT, "dlclose"));
    return s_close(p_library);
}

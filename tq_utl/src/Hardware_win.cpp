#include "platform.h"

#include "WideText_win.h"

#include <algorithm>
#include <bitset>

#include <windows.h>

namespace tarqa::utilities::platform {

std::string processor()
{
    wchar_t name[256] = {};
    DWORD size = sizeof name; // in bytes
    const LSTATUS status
        = RegGetValueW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
            L"ProcessorNameString", RRF_RT_REG_SZ, nullptr, name, &size);
    return status == ERROR_SUCCESS ? QString::fromWCharArray(name).trimmed().toStdString() : std::string();
}

unsigned int processor_count()
{
    DWORD_PTR allowed = 0;
    DWORD_PTR present = 0;
    GetProcessAffinityMask(GetCurrentProcess(), &allowed, &present);
    if (allowed != 0) {
        return static_cast<unsigned int>(std::bitset<8 * sizeof allowed>(allowed).count());
    }
    // No mask: the process's threads are spread over several processor groups.
    return (std::max)(1u, static_cast<unsigned int>(GetActiveProcessorCount(ALL_PROCESSOR_GROUPS)));
}

unsigned long long physical_memory()
{
    MEMORYSTATUSEX memory = {};
    memory.dwLength = sizeof memory;
    return GlobalMemoryStatusEx(&memory) ? memory.ullTotalPhys : 0;
}

} // namespace tarqa::utilities::platform

#include <tarqa/utilities/UserName.h>

#include "WideText_win.h"

#include <iterator>

#include <windows.h>

#include <lmcons.h>

namespace tarqa::utilities {

std::string user_name()
{
    wchar_t name[UNLEN + 1] = {};
    DWORD size = static_cast<DWORD>(std::size(name));
    if (GetUserNameW(name, &size) && size > 1) { // the size counts the closing null
        return from_wide(name);
    }
    size = GetEnvironmentVariableW(L"USERNAME", name, static_cast<DWORD>(std::size(name)));
    if (size > 0 && size < std::size(name)) {
        return from_wide(name);
    }
    return "unknown";
}

} // namespace tarqa::utilities

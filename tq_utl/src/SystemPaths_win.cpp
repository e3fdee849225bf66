#include "platform.h"

#include "WideText_win.h"

#include <algorithm>
#include <vector>

#include <windows.h>

#include <shlobj.h>

namespace tarqa::utilities::platform {

namespace {

const std::size_t s_longest_path = 32768; // of the system, with the closing null

std::string with_slashes(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

} // namespace

std::string executable_file()
{
    std::vector<wchar_t> buffer(s_longest_path);
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0 || length >= buffer.size()) {
        return {};
    }
    return with_slashes(from_wide(std::wstring(buffer.data(), length)));
}

std::string user_configuration_directory()
{
    PWSTR p_path = nullptr; // to be freed in any case
    const HRESULT result
        = SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_DONT_VERIFY, nullptr, &p_path);
    const std::string path
        = SUCCEEDED(result) && p_path ? with_slashes(from_wide(p_path)) : temporary_directory();
    CoTaskMemFree(p_path);
    return path;
}

std::string temporary_directory()
{
    std::vector<wchar_t> buffer(s_longest_path);
    const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size()) {
        return "C:/Windows/Temp";
    }
    return with_slashes(from_wide(std::wstring(buffer.data(), length)));
}

} // namespace tarqa::utilities::platform

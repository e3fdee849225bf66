#include "TemporaryDirectoryLock.h"

#include "WideText_win.h"

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

#include <windows.h>

#include <aclapi.h>

namespace tarqa::utilities {

namespace {

const int s_attempts = 100;
const int s_suffix_length = 6;

// The hold is an open handle that does not share deletion: whoever asks for the right to delete while it is
// open is refused. The same handle renames and deletes the directory. Attributes are needed to see links,
// READ_CONTROL the owner.
const DWORD s_access = FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | READ_CONTROL | DELETE | SYNCHRONIZE;
const DWORD s_sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
const DWORD s_flags
    = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT; // a directory; no link is followed

struct CloseHandleOf
{
    void operator()(void* handle) const { CloseHandle(handle); }
};

struct FreeLocal
{
    void operator()(void* p_memory) const { LocalFree(p_memory); }
};

HANDLE native(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

[[noreturn]] void fail(DWORD reason)
{
    throw std::system_error(static_cast<int>(reason), std::system_category());
}

HANDLE open_directory(const std::string& path)
{
    return CreateFileW(to_wide(path).c_str(), s_access, s_sharing, nullptr, OPEN_EXISTING, s_flags, nullptr);
}

std::string random_suffix()
{
    const std::string characters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::random_device device;
    std::uniform_int_distribution<std::size_t> choice(0, characters.size() - 1);
    std::string suffix;
    for (int i = 0; i < s_suffix_length; ++i) {
        suffix += characters[choice(device)];
    }
    return suffix;
}

/// Renames the open directory unless something is called @p to already; gives ERROR_SUCCESS or the reason.
DWORD rename_to_free_name(HANDLE directory, const std::string& to)
{
    std::wstring name = to_wide(to);
    for (wchar_t& c : name) {
        c = c == L'/' ? L'\\' : c;
    }
    const std::size_t bytes = name.size() * sizeof(wchar_t);
    const std::size_t size = sizeof(FILE_RENAME_INFO) + bytes; // room for the name and its closing null
    std::vector<std::max_align_t> buffer(size / sizeof(std::max_align_t) + 1);
    auto* const p_info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    p_info->ReplaceIfExists = FALSE;
    p_info->RootDirectory = nullptr;
    p_info->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(p_info->FileName, name.c_str(), bytes + sizeof(wchar_t));
    const bool done = SetFileInformationByHandle(directory, FileRenameInfo, p_info, static_cast<DWORD>(size));
    return done ? ERROR_SUCCESS : GetLastError();
}

void mark_for_deletion(HANDLE directory)
{
    FILE_DISPOSITION_INFO disposition = {};
    disposition.DeleteFile = TRUE; // takes effect when the handle is closed, and only on an empty directory
    SetFileInformationByHandle(directory, FileDispositionInfo, &disposition, sizeof disposition);
}

bool is_real_directory(HANDLE directory)
{
    BY_HANDLE_FILE_INFORMATION facts = {};
    return GetFileInformationByHandle(directory, &facts)
        && (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0
        && (facts.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

/// What the token of this process says; empty if it does not tell.
std::vector<std::max_align_t> token_information(TOKEN_INFORMATION_CLASS kind)
{
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) {
        return {};
    }
    const std::unique_ptr<void, CloseHandleOf> token(opened);
    DWORD size = 0;
    GetTokenInformation(opened, kind, nullptr, 0, &size);
    std::vector<std::max_align_t> buffer(size / sizeof(std::max_align_t) + 1);
    return size != 0 && GetTokenInformation(opened, kind, buffer.data(), size, &size)
        ? buffer
        : std::vector<std::max_align_t>();
}

bool belongs_to_this_user(HANDLE directory)
{
    PSID owner = nullptr; // points into the descriptor
    PSECURITY_DESCRIPTOR p_descriptor = nullptr;
    const DWORD error = GetSecurityInfo(directory, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
        nullptr, nullptr, nullptr, &p_descriptor);
    if (error != ERROR_SUCCESS) {
        return false;
    }
    const std::unique_ptr<void, FreeLocal> descriptor(p_descriptor);
    const std::vector<std::max_align_t> user = token_information(TokenUser);
    if (!user.empty() && EqualSid(owner, reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid)) {
        return true;
    }
    // What an elevated process makes may belong to the administrators instead of the user.
    const std::vector<std::max_align_t> group = token_information(TokenOwner);
    return !group.empty() && EqualSid(owner, reinterpret_cast<const TOKEN_OWNER*>(group.data())->Owner);
}

} // namespace

TemporaryDirectoryLock::TemporaryDirectoryLock(const std::string& path, std::intptr_t handle)
    : m_path(path)
    , m_handle(handle)
    , m_process(GetCurrentProcessId())
{ }

TemporaryDirectoryLock::~TemporaryDirectoryLock()
{
    CloseHandle(native(m_handle));
}

std::unique_ptr<TemporaryDirectoryLock> TemporaryDirectoryLock::create(
    const std::string& parent, const std::string& kind)
{
    const std::string start = kind + '-' + std::to_string(GetCurrentProcessId()) + '-';
    for (int attempt = 0; attempt < s_attempts; ++attempt) {
        const std::string name = start + random_suffix();
        // Made under a name that no clean-up looks at, because it cannot be made and held in one step. The
        // rights are inherited: the user's temporary directory is private to the user.
        const std::string hidden = parent + half_made + name;
        if (!CreateDirectoryW(to_wide(hidden).c_str(), nullptr)) {
            const DWORD reason = GetLastError();
            if (reason == ERROR_ALREADY_EXISTS) {
                continue;
            }
            fail(reason);
        }
        const HANDLE directory = open_directory(hidden);
        if (directory == INVALID_HANDLE_VALUE) {
            const DWORD reason = GetLastError();
            RemoveDirectoryW(to_wide(hidden).c_str());
            fail(reason);
        }
        std::unique_ptr<TemporaryDirectoryLock> lock(
            new TemporaryDirectoryLock(hidden, reinterpret_cast<std::intptr_t>(directory)));
        const DWORD reason = rename_to_free_name(directory, parent + name);
        if (reason == ERROR_SUCCESS) {
            lock->m_path = parent + name;
            return lock;
        }
        mark_for_deletion(directory);
        if (reason != ERROR_ALREADY_EXISTS) {
            fail(reason);
        }
    }
    fail(ERROR_ALREADY_EXISTS);
}

std::unique_ptr<TemporaryDirectoryLock> TemporaryDirectoryLock::take(const std::string& path)
{
    const HANDLE directory = open_directory(path);
    if (directory == INVALID_HANDLE_VALUE) { // most often ERROR_SHARING_VIOLATION: somebody lives there
        return nullptr;
    }
    std::unique_ptr<TemporaryDirectoryLock> lock(
        new TemporaryDirectoryLock(path, reinterpret_cast<std::intptr_t>(directory)));
    return is_real_directory(directory) && belongs_to_this_user(directory) ? std::move(lock) : nullptr;
}

void TemporaryDirectoryLock::remove()
{
    namespace fs = std::filesystem;
    if (m_process != static_cast<long long>(GetCurrentProcessId())) {
        return;
    }
    std::vector<fs::path> contents; // collected first: deleting while listing may skip entries
    std::error_code error;
    fs::directory_iterator entry(fs::u8path(m_path), error);
    while (!error && entry != fs::directory_iterator()) {
        contents.push_back(entry->path());
        entry.increment(error);
    }
    for (const fs::path& path : contents) {
        fs::remove_all(path, error);
    }
    mark_for_deletion(native(m_handle));
}

} // namespace tarqa::utilities

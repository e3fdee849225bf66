#include "LogFile.h"

#include <QtCore/QDir>
#include <QtCore/QString>

#include <windows.h>

namespace tarqa::housekeeping::log_file {

namespace {

constexpr long long s_ticks_to_nanoseconds = 100;
constexpr long long s_ticks_before_epoch = 116444736000000000LL; // from 1601 to 1970

std::wstring wide(const std::string& text)
{
    return QDir::toNativeSeparators(QString::fromStdString(text)).toStdWString();
}

long long to_nanoseconds(const FILETIME& time)
{
    const long long ticks = (static_cast<long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return (ticks - s_ticks_before_epoch) * s_ticks_to_nanoseconds;
}

bool write_and_close(HANDLE file, std::string_view text)
{
    DWORD written = 0;
    const bool complete = WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr)
        && written == text.size();
    return CloseHandle(file) && complete;
}

HANDLE open(const std::string& file, DWORD access, DWORD disposition)
{
    return CreateFileW(wide(file).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

bool write(const std::string& file, std::string_view text, bool empty_first)
{
    const HANDLE handle
        = empty_first ? open(file, GENERIC_WRITE, CREATE_ALWAYS) : open(file, FILE_APPEND_DATA, OPEN_ALWAYS);
    return handle != INVALID_HANDLE_VALUE && write_and_close(handle, text);
}

bool make_directory(const std::string& directory)
{
    return QDir().mkpath(QString::fromStdString(directory));
}

/// The user's folders are closed to others already.
bool claim_directory(const std::string&)
{
    return true;
}

bool is_own(const std::string& file)
{
    const DWORD attributes = GetFileAttributesW(wide(file).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES
        && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0;
}

bool create_new(const std::string& file, std::string_view text)
{
    const HANDLE handle = open(file, GENERIC_WRITE, CREATE_NEW);
    if (handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    write_and_close(handle, text);
    return true;
}

bool last_modified(const std::string& file, long long& nanoseconds)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(wide(file).c_str(), GetFileExInfoStandard, &data)) {
        return false;
    }
    nanoseconds = to_nanoseconds(data.ftLastWriteTime);
    return true;
}

long long now()
{
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    return to_nanoseconds(time);
}

DirectoryLock::DirectoryLock(const std::string& directory)
{
    // A mutex of the login session, named after the directory.
    const QString name
        = "tarq-log-" + QString::fromStdString(directory).toLower().replace('/', '_').replace('\\', '_');
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, name.right(MAX_PATH - 1).toStdWString().c_str());
    if (mutex) {
        m_handle = reinterpret_cast<long long>(mutex);
        WaitForSingleObject(mutex, INFINITE);
    }
}

DirectoryLock::~DirectoryLock()
{
    if (m_handle != -1) {
        const HANDLE mutex = reinterpret_cast<HANDLE>(m_handle);
        ReleaseMutex(mutex);
        CloseHandle(mutex);
    }
}

} // namespace tarqa::housekeeping::log_file

#include <tarqa/utilities/TemporaryDirectory.h>

#include <tarqa/utilities/SystemPaths.h>
#include <tarqa/utilities/Url.h>

#include "TemporaryDirectoryLock.h"

#include <QtCore/QObject>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <vector>

template class tarqa::ExceptionTemplate<tarqa::Exception, tarqa::utilities::TemporaryDirectoryTag>;

namespace tarqa::utilities {

namespace {

namespace fs = std::filesystem;

const char* const s_file = "tq_utl/src/TemporaryDirectory";
const unsigned int s_not_made = 2001;
const std::size_t s_suffix_length = 6;
const std::chrono::hours s_half_made_age(24);

// Independent of the locale, unlike the standard functions.

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool is_letter_or_digit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || is_digit(c);
}

/// The kind as it stands in names. It holds no '-', so no kind's names are another kind's.
std::string name_of(std::string kind)
{
    std::replace_if(
        kind.begin(), kind.end(), [](char c) { return !is_letter_or_digit(c) && c != '.' && c != '_'; }, '_');
    return kind.empty() ? "_" : kind;
}

/// True if @p name is @p start, a process number, '-' and the suffix.
bool matches(const std::string& name, const std::string& start)
{
    if (name.compare(0, start.size(), start) != 0) {
        return false;
    }
    const auto number = name.begin() + static_cast<std::ptrdiff_t>(start.size());
    const auto dash = std::find_if_not(number, name.end(), is_digit);
    if (dash == number || dash == name.end() || *dash != '-') {
        return false;
    }
    return static_cast<std::size_t>(name.end() - dash) == 1 + s_suffix_length
        && std::all_of(dash + 1, name.end(), is_letter_or_digit);
}

/// With a slash at its end.
std::string parent_directory()
{
    return url_to_filesystem(SystemPaths::temporary_path());
}

/// The entries of the temporary directory whose names begin with @p start, as paths.
std::vector<fs::path> candidates(const std::string& start)
{
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator entry(fs::u8path(parent_directory()), error);
    while (!error && entry != fs::directory_iterator()) {
        if (matches(entry->path().filename().u8string(), start)) {
            found.push_back(entry->path());
        }
        entry.increment(error);
    }
    return found;
}

std::vector<fs::path> directories_of(const std::string& kind)
{
    return candidates(name_of(kind) + '-');
}

/// What a process left that was killed while it made a directory. A young one may become a directory yet.
std::vector<fs::path> half_made_directories_of(const std::string& kind)
{
    std::vector<fs::path> found = candidates(TemporaryDirectoryLock::half_made + name_of(kind) + '-');
    const auto young = [](const fs::path& path) {
        std::error_code error;
        const fs::file_time_type changed = fs::last_write_time(path, error);
        return error || changed > fs::file_time_type::clock::now() - s_half_made_age;
    };
    found.erase(std::remove_if(found.begin(), found.end(), young), found.end());
    return found;
}

void remove_unless_lived_in(const std::vector<fs::path>& directories)
{
    for (const fs::path& directory : directories) {
        if (const auto lock = TemporaryDirectoryLock::take(directory.u8string())) {
            lock->remove();
        }
    }
}

QString text_of(const std::system_error& error, const std::string& parent)
{
    return QObject::tr("No temporary directory can be made in %1: %2")
        .arg(QString::fromStdString(parent), QString::fromLocal8Bit(error.code().message().c_str()));
}

} // namespace

TemporaryDirectory::TemporaryDirectory(const std::string& kind)
{
    const std::string parent = parent_directory();
    try {
        m_lock = TemporaryDirectoryLock::create(parent, name_of(kind));
    } catch (const std::system_error& e) {
        throw TemporaryDirectoryException(s_not_made, text_of(e, parent), s_file, __LINE__);
    }
    m_path = m_lock->path();
}

TemporaryDirectory::~TemporaryDirectory()
{
    try {
        m_lock->remove();
    } catch (...) {
        // Out of memory: the directory stays for the next clean-up.
    }
}

bool temporary_directories_exist(const std::string& kind)
{
    const auto any_can_be_had = [](const std::vector<fs::path>& directories) {
        return std::any_of(directories.begin(), directories.end(), [](const fs::path& directory) {
            return TemporaryDirectoryLock::take(directory.u8string()) != nullptr;
        });
    };
    return any_can_be_had(directories_of(kind)) || any_can_be_had(half_made_directories_of(kind));
}

void clear_existing_temp_directories(const std::string& kind)
{
    try {
        remove_unless_lived_in(directories_of(kind));
        remove_unless_lived_in(half_made_directories_of(kind));
    } catch (...) {
        // Out of memory: what is left stays for the next clean-up.
    }
}

} // namespace tarqa::utilities

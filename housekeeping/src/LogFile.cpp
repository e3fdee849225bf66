#include "LogFile.h"

namespace tarqa::housekeeping::log_file {

namespace {

constexpr int s_attempts = 3;

std::string name_of(const std::string& base, int number)
{
    return base + "_" + std::to_string(number) + ".log";
}

/// The number of the least recently modified log of this user's, the lowest among equals; the first one if
/// none is older than now.
int oldest(const std::string& base)
{
    int number_of_oldest = 0;
    long long time_of_oldest = now();
    for (int number = 1; number <= s_max_files; ++number) {
        const std::string file = name_of(base, number);
        long long time = 0;
        if (!is_own(file) || !last_modified(file, time)) {
            continue;
        }
        if (number_of_oldest == 0) {
            number_of_oldest = number;
        }
        if (time < time_of_oldest) {
            time_of_oldest = time;
            number_of_oldest = number;
        }
    }
    return number_of_oldest == 0 ? 1 : number_of_oldest; // none at all: nothing will be written
}

enum class Claim
{
    Made,
    Taken,
    Impossible ///< free, and yet not to be had: nothing can be written here, whatever the number
};

Claim claim(const std::string& file, const std::string& head)
{
    long long ignored = 0;
    for (int attempt = 0; attempt < s_attempts; ++attempt) {
        if (create_new(file, head)) {
            return Claim::Made;
        }
        if (last_modified(file, ignored)) {
            return Claim::Taken;
        }
        // Somebody may have deleted it in between.
    }
    return Claim::Impossible;
}

std::string directory_of(const std::string& base)
{
    const std::size_t slash = base.rfind('/');
    return slash == std::string::npos ? std::string(".") : base.substr(0, slash + 1);
}

} // namespace

std::string choose(const std::string& base, const std::string& head)
{
    if (!make_directory(directory_of(base))) {
        return name_of(base, 1);
    }
    if (!claim_directory(directory_of(base))) {
        return std::string();
    }
    for (int number = 1; number <= s_max_files; ++number) {
        const std::string file = name_of(base, number);
        if (claim(file, head) != Claim::Taken) {
            return file;
        }
    }
    // All are taken. Under the lock, a second process finds the file that the first one chose to be the
    // newest.
    const DirectoryLock lock(directory_of(base));
    const std::string file = name_of(base, oldest(base));
    write(file, head, true);
    return file;
}

} // namespace tarqa::housekeeping::log_file

#pragma once

#include <exception>
#include <functional>

namespace terrain {

/// Told in the thread that reads or writes a file how far it has come, from 0 to 1; at every few rows. False
/// stops it.
typedef std::function<bool(double share)> FileProgress;

/// Reading or writing was stopped by its FileProgress. What was there before is there still.
class FileCancelled : public std::exception
{
public:
    const char* what() const noexcept override { return "cancelled"; }
};

/// Reports. @param progress may be empty @throws FileCancelled if it says no
inline void report(const FileProgress& progress, double share)
{
    if (progress && !progress(share)) {
        throw FileCancelled();
    }
}

} // namespace terrain

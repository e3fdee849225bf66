#pragma once

#include <QtCore/QString>

#include <filesystem>
#include <string>

namespace terrain {

class GdalMessages;

/**
 * A file that appears whole or not at all. It is written under another name beside its place and moved there
 * at the end, with what GDAL puts beside it; so whatever was there before stays if anything goes wrong.
 *
 * Lives on the stack, around the writing. The destructor deletes what was not moved.
 */
class NewFile
{
public:
    /// @param path the file, UTF-8; its directory must exist. A symbolic link is followed.
    /// @throws housekeeping::InvalidPath if something stands in the way
    explicit NewFile(const std::string& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Where to write. The name ends as that of the file does, and is short.
    const std::string& temporary() const { return m_temporary; }
    /// Puts what was written in its place, with the permissions of the file that it replaces.
    /// @throws housekeeping::InvalidPath if that fails
    void put_in_place() const;

    /// @throws housekeeping::InvalidPath always: "Cannot write …" and the reason
    [[noreturn]] void fail(const QString& reason, const char* source, unsigned int line) const;
    [[noreturn]] void fail(const GdalMessages& messages, const char* source, unsigned int line) const;

private:
    void check();

    std::string m_path; // as it was asked for
    std::filesystem::path m_target; // behind symbolic links
    std::string m_temporary;
};

} // namespace terrain

#pragma once

#include <tarqa/housekeeping/HousekeepingException.h>

#include <string>

namespace tarqa::housekeeping {

/// A file or directory that cannot be used; carries the faulty path. A plain value, as its base.
class TQ_HK_EXPORT InvalidPath : public HousekeepingException
{
public:
    /// As HousekeepingException; @p path is the faulty path, UTF-8.
    InvalidPath(unsigned int code, const std::string& message, const char* file, unsigned int line,
        const std::string& path);
    InvalidPath(unsigned int code, const QString& message, const char* file, unsigned int line,
        const std::string& path);
    InvalidPath(
        unsigned int code, const char* message, const char* file, unsigned int line, const std::string& path);
    InvalidPath(const InvalidPath&);
    InvalidPath& operator=(const InvalidPath&);

    ~InvalidPath() override;
    /// The base's text, then a line with the path in double quotes.
    void log_information(std::ostream& stream) const override;
    /// The message, without the path.
    const char* what() const override;

    /// The path that cannot be used, UTF-8.
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace tarqa::housekeeping

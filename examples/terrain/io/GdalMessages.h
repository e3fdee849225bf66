#pragma once

#include <string>
#include <vector>

namespace terrain {

/**
 * Takes in what GDAL has to say in this thread while the object lives, instead of letting it go to the
 * standard error stream. Errors are kept to be quoted; the destructor writes the warnings to the error log.
 *
 * Lives on the stack, around the calls it is for; those inside one another take the innermost one's messages.
 */
class GdalMessages
{
public:
    /// Also makes sure that GDAL's drivers are registered.
    GdalMessages();
    ~GdalMessages();
    GdalMessages(const GdalMessages&) = delete;
    GdalMessages& operator=(const GdalMessages&) = delete;

    /// True if there was an error, not only warnings. Some of GDAL's calls, closing a file above all, tell by
    /// the message alone.
    bool failed() const { return !m_errors.empty(); }
    /// The errors, for people.
    std::string text() const;

private:
    friend struct GdalMessageSink;

    std::vector<std::string> m_errors;
    std::vector<std::string> m_warnings;
};

} // namespace terrain

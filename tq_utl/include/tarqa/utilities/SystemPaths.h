#pragma once

#include <tarqa/utilities/tq_utl_export.h>

#include <iosfwd>
#include <string>

namespace tarqa::utilities {

/**
 * The directories of the program and of its user, as "file://" URLs that end with one slash.
 *
 * Linux: the user's preferences are where the XDG base directories say ($XDG_CONFIG_HOME if it is an absolute
 * path, else ".config" in the home directory), in the maker's folder "tarqa". Nothing here creates a
 * directory or looks whether there is one. Any thread.
 */
class TQ_UTL_EXPORT SystemPaths
{
public:
    SystemPaths() = delete;

    /// Where the program is installed: the parent of the folder "bin" that holds the executable, else the
    /// executable's own folder.
    static std::string installation_root_path();

    /// Where the preferences and the error logs of this user live; it may not exist yet.
    static std::string user_preferences_path();

    /// Where temporary directories are made ($TMPDIR if it is an absolute path, else the system's).
    static std::string temporary_path();

    /// Writes one "name: value" line per path, as file-system paths, to @p stream.
    static void write_to_log(std::ostream& stream);
};

} // namespace tarqa::utilities

#pragma once

#include <tarqa/utilities/tq_utl_export.h>

#include <string>

namespace tarqa::utilities {

/// The "file://" URL of a file-system path. A relative path is made absolute first; a path with a drive
/// letter ("C:/data/a.dat") counts as absolute and gives "file:///C:/data/a.dat" (backslashes after a drive
/// letter become slashes). Bytes outside the characters that a URL path may hold are percent-encoded one by
/// one, so every path, also one that is no valid UTF-8, comes back unchanged. "" gives "".
TQ_UTL_EXPORT std::string filesystem_to_url(const std::string& path);

/// The way back: the file-system path of a "file://" URL, with the slash before a drive letter stripped. The
/// machine's own name "localhost" is left out, any other machine's stands behind two slashes
/// ("//server/share/a.dat"). A "%" without two hexadecimal digits stands for itself. Any other text is
/// returned as it stands.
TQ_UTL_EXPORT std::string url_to_filesystem(const std::string& url);

/// The file name, with its directories, that a document's URL or display key stands for: a "file://" URL
/// gives its path, any other text stands for itself.
TQ_UTL_EXPORT std::string file_from_url(const std::string& url);

} // namespace tarqa::utilities

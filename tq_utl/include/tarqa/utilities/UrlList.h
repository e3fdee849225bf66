#pragma once

#include <string>
#include <vector>

namespace tarqa::utilities {

/// URLs of files, as text.
typedef std::vector<std::string> UrlList;

} // namespace tarqa::utilities

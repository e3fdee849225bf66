#pragma once

#include <string>

class QSettings;

namespace fuzz {

/// Makes @p bytes the file of @p settings, which its next user reads.
void put_settings_file(const QSettings& settings, const std::string& bytes);

/// Lets the next user of @p settings read the file again, not what this process remembers of it.
void forget_settings(const QSettings& settings);

} // namespace fuzz

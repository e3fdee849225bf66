#pragma once

#include <tarqa/housekeeping/ApplicationManager.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// The stored settings, one row each. Values are texts, as they stand in the file.
struct Setting
{
    std::string group;
    std::string key;
    std::string initial; ///< with nothing stored
    std::vector<std::string> others; ///< further values
    std::function<std::string(const tarqa::housekeeping::ApplicationManager&)> get;
    std::function<void(tarqa::housekeeping::ApplicationManager&, const std::string&)> set;
    bool read_back = true; ///< whether the next start knows what was stored

    std::string path() const { return group + "/" + key; }
};

/// Names a row in the list of tests.
inline std::ostream& operator<<(std::ostream& stream, const Setting& setting)
{
    return stream << setting.key;
}

/// All rows.
const std::vector<Setting>& settings_table();

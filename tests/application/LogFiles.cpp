#include "LogFiles.h"

#include "support/PrivateHome.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/Hardware.h>
#include <tarqa/utilities/SystemPaths.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace log_files {

std::string path(int number)
{
    return support::PrivateHome::log_directory() + "/Tarq_" + std::to_string(number) + ".log";
}

bool exists(int number)
{
    return std::filesystem::exists(path(number));
}

std::string read(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void make(int number, int age_in_minutes, const std::string& text)
{
    std::filesystem::create_directories(support::PrivateHome::log_directory());
    std::ofstream(path(number), std::ios::binary) << text;
    std::filesystem::last_write_time(
        path(number), std::filesystem::file_time_type::clock::now() - std::chrono::minutes(age_in_minutes));
}

std::vector<std::string> names()
{
    std::vector<std::string> names;
    std::error_code ignored;
    for (const auto& entry :
        std::filesystem::directory_iterator(support::PrivateHome::log_directory(), ignored)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void remove_all()
{
    for (const std::string& name : names()) {
        std::filesystem::remove_all(support::PrivateHome::log_directory() + "/" + name);
    }
}

std::string head()
{
    std::ostringstream head;
    head << "************ ERROR LOG OPENED ************ \n\n"
         << "SYSTEM INFROMATION\n";
    pkBase::pkProductInfo::const_instance().write_to_log(head);
    tarqa::utilities::Hardware::write_to_log(head);
    tarqa::utilities::SystemPaths::write_to_log(head);
    head << "************ ERROR LOG BEGIN  ************ \n";
    return head.str();
}

} // namespace log_files

#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <string>

namespace tarqa::housekeeping {

/// One program run that saved a document's file: which program and version, who, and when. A plain value
/// without locks; the texts are UTF-8.
class TQ_HK_EXPORT DocumentHistory
{
public:
    /// @param program the program's name, for users
    /// @param version its version or number of the build
    /// @param user the login name
    /// @param name the user's name
    /// @param date when, as text
    DocumentHistory(const std::string& program, const std::string& version, const std::string& user,
        const std::string& name, const std::string& date);
    DocumentHistory(const DocumentHistory&);
    DocumentHistory& operator=(const DocumentHistory&);
    ~DocumentHistory();

    /// The program's name.
    const std::string& program() const { return m_program; }
    /// Its version or number of the build.
    const std::string& version() const { return m_version; }
    /// The login name.
    const std::string& user() const { return m_user; }
    /// The user's name.
    const std::string& name() const { return m_name; }
    /// When, as text.
    const std::string& date() const { return m_date; }

    /// For example "Tarq Terrain 12 on 2021-3-7 9:5:12 by anna".
    std::string description() const;

private:
    std::string m_program;
    std::string m_version;
    std::string m_user;
    std::string m_name;
    std::string m_date;
};

} // namespace tarqa::housekeeping

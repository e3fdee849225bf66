#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <string>

namespace tarqa::housekeeping {

/// One program run that saved a document's file: which program and version, who, and when. A plain value.
class TQ_HK_EXPORT DocumentHistory
{
public:
    DocumentHistory(const std::string& program, const std::string& version, const std::string& user,
        const std::string& name, const std::string& date);
    DocumentHistory(const DocumentHistory&);
    DocumentHistory& operator=(const DocumentHistory&);
    ~DocumentHistory();

    const std::string& program() const { return m_program; }
    const std::string& version() const { return m_version; }
    const std::string& user() const { return m_user; }
    const std::string& name() const { return m_name; }
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

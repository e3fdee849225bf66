#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtGui/QIcon>

#include <string>

namespace tarqa::housekeeping {

/// How a command shows itself in the undo and redo lists. A plain value; the texts are UTF-8.
class TQ_HK_EXPORT CommandDetails
{
public:
    CommandDetails();
    CommandDetails(const std::string& name, const std::string& description, const QIcon& icon);
    CommandDetails(const CommandDetails&);
    CommandDetails& operator=(const CommandDetails&);
    ~CommandDetails();

    const std::string& name() const { return m_name; }
    const std::string& description() const { return m_description; }
    const QIcon& icon() const { return m_icon; }

    void setName(const std::string& name) { m_name = name; }
    void setDescription(const std::string& description) { m_description = description; }
    void setIcon(const QIcon& icon) { m_icon = icon; }

private:
    std::string m_name;
    std::string m_description;
    QIcon m_icon;
};

} // namespace tarqa::housekeeping

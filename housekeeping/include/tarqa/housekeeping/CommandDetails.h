#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtGui/QIcon>

#include <string>

namespace tarqa::housekeeping {

/// How a command shows itself in the undo and redo lists. A plain value
/// without locks; the texts are UTF-8.
class TQ_HK_EXPORT CommandDetails
{
public:
    CommandDetails();
    /// @param name the text in the list @param description what more there is to say @param icon before the
    /// name; may be null
    CommandDetails(const std::string& name, const std::string& description, const QIcon& icon);
    CommandDetails(const CommandDetails&);
    CommandDetails& operator=(const CommandDetails&);
    ~CommandDetails();

    /// The text in the list.
    const std::string& name() const { return m_name; }
    /// The text behind the name; empty for none.
    const std::string& description() const { return m_description; }
    /// The picture before the name; null for none.
    const QIcon& icon() const { return m_icon; }

    /// Sets name().
    void setName(const std::string& name) { m_name = name; }
    /// Sets description().
    void setDescription(const std::string& description) { m_description = description; }
    /// Sets icon().
    void setIcon(const QIcon& icon) { m_icon = icon; }

private:
    std::string m_name;
    std::string m_description;
    QIcon m_icon;
};

} // namespace tarqa::housekeeping

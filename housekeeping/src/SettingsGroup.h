#pragma once

#include <QtCore/QSettings>

namespace tarqa::housekeeping {

/// Enters a group of the stored settings and leaves it again at the end of the scope.
class SettingsGroup
{
public:
    SettingsGroup(QSettings& settings, const QString& group)
        : m_settings(settings)
    {
        m_settings.beginGroup(group);
    }
    ~SettingsGroup() { m_settings.endGroup(); }
    SettingsGroup(const SettingsGroup&) = delete;
    SettingsGroup& operator=(const SettingsGroup&) = delete;

private:
    QSettings& m_settings; // not owned
};

} // namespace tarqa::housekeeping

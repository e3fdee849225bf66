#pragma once

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryFile>

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

/// Whether a change of the settings may be stored without loss of what they hold. Qt takes a file that cannot
/// be read for an empty one, and puts a new file in its place also when the disk was too full to write it.
inline bool may_be_stored(const QSettings& settings)
{
    constexpr int room_for_change = 16384; // bytes
    QFile file(settings.fileName());
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) {
        return true; // which Qt notices itself
    }
    const QByteArray content = file.readAll();
    if (file.error() != QFile::NoError || (content.contains('=') && settings.allKeys().isEmpty())) {
        return false;
    }
    QTemporaryFile trial(settings.fileName() + ".XXXXXX");
    const QByteArray as_much(content.size() + room_for_change, ' ');
    return !QFileInfo(QFileInfo(file).path()).isWritable()
        || (trial.open() && trial.write(as_much) == as_much.size() && trial.flush());
}

} // namespace tarqa::housekeeping

#include "SettingsChange.h"

#include "Platform.h"

#include <QtCore/QFile>

namespace tarqa::housekeeping {

namespace {

/// Whether Qt found what the file holds; what is not there holds nothing.
bool is_readable(const QSettings& settings, const QString& name)
{
    QFile file(name);
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) {
        return true; // which Qt notices itself
    }
    const QByteArray content = file.readAll();
    return file.error() == QFile::NoError && !(content.contains('=') && settings.allKeys().isEmpty());
}

/// Whether the settings hold something themselves, apart from what Qt looks up elsewhere.
bool holds_values(QSettings& settings)
{
    const bool looks_elsewhere = settings.fallbacksEnabled();
    settings.setFallbacksEnabled(false);
    const bool holds_some = !settings.allKeys().isEmpty();
    settings.setFallbacksEnabled(looks_elsewhere);
    return holds_some;
}

} // namespace

SettingsChange::SettingsChange(QSettings& settings)
    : m_settings(settings)
    , m_file(settings.fileName())
{
    if (m_settings.status() == QSettings::AccessError) {
        return; // there is no place for them
    }
    make_settings_file(m_file);
    m_may_begin = is_readable(m_settings, m_file);
    m_was_kept = m_may_begin && keep_settings_file(m_file);
}

bool SettingsChange::store()
{
    m_settings.sync();
    const bool is_whole = end_of_settings_change(m_file, m_was_kept, holds_values(m_settings));
    return is_whole && m_may_begin && m_settings.status() != QSettings::AccessError;
}

} // namespace tarqa::housekeeping

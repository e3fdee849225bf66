#pragma once

#include <QtCore/QSettings>
#include <QtCore/QString>

namespace tarqa::housekeeping {

/**
 * A change of the stored settings that loses nothing of what they hold. Qt takes a file that cannot be read
 * for an empty one, and puts a new file in its place also when the disk was too full to write it. So the old
 * file is kept beside it meanwhile, and comes back.
 *
 *     SettingsChange change(settings);
 *     if (change.may_begin()) { settings.setValue(...); }
 *     const bool is_stored = change.store();
 *
 * Makes the file, for this user only, if there is none. Where settings are in no file nothing is kept.
 */
class SettingsChange
{
public:
    /// @param settings must outlive it; no group entered
    explicit SettingsChange(QSettings& settings);
    SettingsChange(const SettingsChange&) = delete;
    SettingsChange& operator=(const SettingsChange&) = delete;

    /// Whether values may be set: not when what is stored cannot be read.
    bool may_begin() const { return m_may_begin; }
    /// Stores what was set. To be called once, whatever may_begin() said. @return whether that is in the
    /// file; if not, what was there before is there again
    bool store();

private:
    QSettings& m_settings;
    QString m_file;
    bool m_may_begin = true;
    bool m_was_kept = false;
};

} // namespace tarqa::housekeeping

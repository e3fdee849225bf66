#include "Check.h"
#include "FuzzApplication.h"
#include "LogWatch.h"
#include "SettingsFile.h"
#include "Targets.h"

#include "application/SettingsTable.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QSettings>
#include <QtCore/QVariant>

#include <map>

namespace fuzz {

using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::TestAccess;

namespace {

typedef std::map<std::string, std::string> Values;

/// Reads the file, and gives every preference.
Values loaded(ApplicationManager& manager)
{
    forget_settings(QSettings());
    TestAccess::load_settings(manager);
    Values values;
    for (const Setting& setting : settings_table()) {
        values[setting.key] = setting.get(manager);
    }
    return values;
}

/// Lets Qt write the file in its own way, which may spell odd names and values differently.
void rewrite()
{
    {
        QSettings settings;
        settings.setValue("rewritten", true);
    }
    forget_settings(QSettings());
}

/// What is stored besides the preferences.
std::map<QString, QVariant> other_entries()
{
    const QSettings settings;
    std::map<QString, QVariant> entries;
    for (const QString& key : settings.allKeys()) {
        entries[key] = settings.value(key);
    }
    for (const Setting& setting : settings_table()) {
        entries.erase(QString::fromStdString(setting.path()));
    }
    return entries;
}

void check_values(const ApplicationManager& manager)
{
    check(manager.mouseMode() >= 0 && manager.mouseMode() <= 2, "there is no such mouse mode");
    check(manager.seismicRenderQuality() >= 0 && manager.seismicRenderQuality() <= 2,
        "there is no such seismic quality");
    check(manager.useShaderRendering() || manager.seismicRenderQuality() == 0,
        "seismic quality without shader rendering");
    check(manager.viewBackgroundColour().isValid() && manager.viewHighlightColour().isValid(),
        "a colour is none");
    check(manager.createUniqueObjectNames(), "unique object names are off at a start");
}

} // namespace

void settings(const std::string& input)
{
    make_application();
    ApplicationManager& manager = ApplicationManager::instance();
    const LogWatch log;
    put_settings_file(QSettings(), input);
    const Values values = loaded(manager);
    check_values(manager);

    rewrite();
    const std::map<QString, QVariant> others = other_entries();
    for (const Setting& setting : settings_table()) {
        setting.set(manager, values.at(setting.key));
        check(setting.get(manager) == values.at(setting.key), "a setter changes " + setting.key);
    }
    const Values again = loaded(manager);
    for (const Setting& setting : settings_table()) {
        check(again.at(setting.key) == values.at(setting.key), "stored and read differently: " + setting.key);
        check(QSettings().contains(QString::fromStdString(setting.path())), "not stored: " + setting.key);
    }
    check(other_entries() == others, "storing the preferences changes something else");
    log.check_assertions({});
}

} // namespace fuzz

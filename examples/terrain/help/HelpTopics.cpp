#include "help/HelpTopics.h"

#include <algorithm>

namespace terrain {

const std::vector<HelpTopic>& help_topics()
{
    // The first three keys are the library's.
    static const std::vector<HelpTopic> s_topics = {
        {Topic::Contents, "TARQ_CONTENTS", "index.html"},
        {Topic::KeyboardShortcuts, "TARQ_KEYBOARD_SHORTCUTS", "keyboard-shortcuts.html"},
        {Topic::Preferences, "TARQ_FILE_MENU_PREFERENCES", "preferences.html"},
        {Topic::Map, "TERRAIN_MAP", "map.html"},
        {Topic::Scene, "TERRAIN_SCENE", "scene.html"},
        {Topic::HomePanel, "TERRAIN_HOME_PANEL", "home-panel.html"},
        {Topic::QuickHelpPanel, "TERRAIN_QUICK_HELP_PANEL", "quick-help-panel.html"},
        {Topic::HistoryPanel, "TERRAIN_HISTORY_PANEL", "history-panel.html"},
        {Topic::StatisticsPanel, "TERRAIN_STATISTICS_PANEL", "statistics-panel.html"},
        {Topic::LayersPanel, "TERRAIN_LAYERS_PANEL", "layers-panel.html"},
        {Topic::Files, "TERRAIN_FILES", "files.html"},
        {Topic::Undo, "TERRAIN_UNDO", "undo.html"},
        {Topic::Problems, "TERRAIN_PROBLEMS", "problems.html"},
        {Topic::Smooth, "TERRAIN_SMOOTH", "smooth.html"},
        {Topic::FillSinks, "TERRAIN_FILL_SINKS", "fill-sinks.html"},
        {Topic::Clamp, "TERRAIN_CLAMP", "clamp.html"},
        {Topic::Scale, "TERRAIN_SCALE", "scale.html"},
        {Topic::Crop, "TERRAIN_CROP", "crop.html"},
        {Topic::Resample, "TERRAIN_RESAMPLE", "resample.html"},
        {Topic::Triangulate, "TERRAIN_TRIANGULATE", "triangulate.html"},
        {Topic::CleanUp, "TERRAIN_CLEAN_UP", "clean-up.html"},
        {Topic::Brush, "TERRAIN_BRUSH", "brush.html"},
        {Topic::Flatten, "TERRAIN_FLATTEN", "flatten.html"},
    };
    return s_topics;
}

QString help_key(Topic topic)
{
    return help_topics()[static_cast<std::size_t>(topic)].key;
}

QString help_page(const QString& key_or_page)
{
    const auto iter = std::find_if(help_topics().begin(), help_topics().end(),
        [&](const HelpTopic& entry) { return entry.key == key_or_page || entry.page == key_or_page; });
    return iter == help_topics().end() ? QString() : iter->page;
}

} // namespace terrain

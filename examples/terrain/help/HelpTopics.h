#pragma once

#include <QtCore/QString>

#include <vector>

namespace terrain {

/// What the help has a page about.
enum class Topic
{
    Contents,
    KeyboardShortcuts,
    Preferences,
    Map,
    Scene,
    HomePanel,
    QuickHelpPanel,
    HistoryPanel,
    StatisticsPanel,
    LayersPanel,
    Files,
    Undo,
    Problems,
    Smooth,
    FillSinks,
    Clamp,
    Scale,
    Crop,
    Resample,
    Triangulate,
    CleanUp,
    Brush,
    Flatten
};

/// A page of the help, and the key under which the program asks for it.
struct HelpTopic
{
    Topic topic;
    QString key;
    QString page; ///< file name in the folder of the help
};

/// One for each topic, in the order of the enumeration: the only place that knows which key stands for which
/// page. Main thread.
const std::vector<HelpTopic>& help_topics();

QString help_key(Topic topic);
/// The file name of a page, from a key of the table or a file name; empty for a key that is not in it.
QString help_page(const QString& key_or_page);

} // namespace terrain
